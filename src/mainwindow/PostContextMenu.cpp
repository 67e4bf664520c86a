#include "mainwindow/PostContextMenu.h"

#include "app/PostCopier.h"
#include "mainwindow/ZLPostListViewControllerDelegate.h"
#include "platform/ZLLog.h"
#include "widgets/ZLFavicon.h"
#include "widgets/ZLPlainText.h"

#include <QPointer>

PostContextMenu::PostContextMenu(
    AppEnvironment &environment, CurrentBlog &currentBlog, const LocalPostPtr &post, QWidget *parent)
    : QMenu(tr("Contextual Menu"), parent)
    , m_environment(environment)
    , m_currentBlog(currentBlog)
    , m_post(post)
{
    connect(addAction(tr("New Post")), &QAction::triggered, this, &PostContextMenu::newPost);
    addSeparator();
    addPostItems();
    addSeparator();
    addCopyToBlog();
    addLinkItems();
}

QString PostContextMenu::saveTitle(const ZLLocalPostRepresentation &post, bool linkedToEvernote)
{
    if (post.published)
        return linkedToEvernote ? tr("Move to Evernote") : tr("Move to drafts");
    const bool isStored = post.status == ZLLocalPostRepresentation::Draft
        || post.status == ZLLocalPostRepresentation::Modified || post.status == ZLLocalPostRepresentation::EvernoteNote;
    if (isStored) // the blank at the end is part of the title
        return linkedToEvernote ? tr("Update to Evernote ") : tr("Update Draft");
    return linkedToEvernote ? tr("Save to Evernote") : tr("Save as Draft");
}

void PostContextMenu::addPostItems()
{
    const PostActions offered = actionsOfRow(*m_post);
    const auto addItem = [this, offered](const QString &title, PostAction action) {
        if (offered.testFlag(action))
            connect(addAction(title), &QAction::triggered, this, [this, action] { Q_EMIT this->action(action); });
    };
    const AccountPtr account = m_currentBlog.selectedAccount();
    const QString save = saveTitle(*m_post, account && account->evernote);
    addItem(m_post->published ? tr("Update") : tr("Publish"), PostAction::Publish);
    addItem(tr("Publish as a New Post"), PostAction::PublishAsNew);
    addItem(tr("Delete"), PostAction::Delete);
    addItem(save, PostAction::Save);
    addItem(save, PostAction::MoveToDrafts);
}

void PostContextMenu::addCopyToBlog()
{
    const QList<AccountPtr> accounts = m_currentBlog.accountsCanReceivePostCopy();
    if (accounts.isEmpty())
        return;
    QMenu *blogs = addMenu(tr("Copy to Blog"));
    for (const AccountPtr &account : accounts) {
        const QString favicon = m_environment.platform.files.faviconPathWithBlogName(account->alias());
        QAction *item = blogs->addAction(ZLFavicon::icon(favicon), ZLPlainText::menuTitle(account->alias()));
        connect(item, &QAction::triggered, this, [this, account] { copyToBlog(account); });
    }
}

void PostContextMenu::copyToBlog(const AccountPtr &account)
{
    const QPointer<PostContextMenu> self(this);
    const Result<QUrl> file = PostCopier(m_environment.platform.files, m_environment.documents, m_currentBlog)
                                  .copyPostToBlog(m_post, account);
    if (!self)
        return;
    if (file)
        Q_EMIT copied(*file);
    else
        Q_EMIT didFailToCopy(file.error());
}

void PostContextMenu::addLinkItems()
{
    QAction *view = addAction(tr("View on Browser"));
    connect(view, &QAction::triggered, this, [this] { m_environment.platform.workspace.openURL(m_post->postURL); });
    QAction *link = addAction(tr("Get Link"));
    connect(link, &QAction::triggered, this, &PostContextMenu::getLink);
    for (QAction *item : {view, link})
        item->setEnabled(!m_post->postURL.isEmpty());
}

void PostContextMenu::getLink()
{
    if (!m_environment.platform.workspace.copyLink(m_post->postURL)) {
        ZLLog(u"error seting object on pasteboard"_qs);
        return;
    }
    m_environment.platform.notificationCenter.deliver({tr("Successfully copied link to clipboard."), {}, {}});
}

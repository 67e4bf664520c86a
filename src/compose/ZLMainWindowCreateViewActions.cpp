// What is done with the post on the screen, by whichever button, key or menu.

#include "compose/ZLMainWindowCreateViewController.h"

#include <QPointer>

PostActions ZLMainWindowCreateViewController::actions() const
{
    if (!m_host.selectedAccount() || m_overlay.isShowing() || m_awaitsOutcome || m_delete.isBeingDeleted())
        return PostAction::None;
    PostActions allowed = actionsOfPost(*m_screen.post(), m_screen.currentDocument().get());
    allowed.setFlag(PostAction::TakeBlogVersion, m_blogVersion != nullptr);
    return m_screen.isGoneFromBlog() ? allowed | PostAction::PublishAsNew : allowed;
}

bool ZLMainWindowCreateViewController::mayBegin(PostAction action) const
{
    return !*m_isBusy && actions().testFlag(action) && !m_page.isShowingImageEditor();
}

QCoro::Task<void> ZLMainWindowCreateViewController::doActionForCurrentPost(PostAction action)
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    if (action == PostAction::Publish)
        Q_EMIT m_host.notifications().didPressPublishButton();
    if (action == PostAction::None || !mayBegin(action))
        co_return;
    const auto guard = busy();
    hidePopupWindows();
    if (!m_screen.isInConflict()) {
        co_return co_await perform(action);
    }
    const bool isAnswered = co_await m_conflict.ask();
    if (self && isAnswered)
        readAgain();
}

QCoro::Task<void> ZLMainWindowCreateViewController::perform(PostAction action)
{
    switch (action) {
    case PostAction::Publish:
        return m_send.publish();
    case PostAction::Save:
        return m_send.save();
    case PostAction::MoveToDrafts:
        return m_send.moveToDrafts();
    case PostAction::PublishAsNew:
        return publishAsNewPost();
    case PostAction::Revert:
        return revertToBlogVersion();
    case PostAction::TakeBlogVersion:
        return takeBlogVersion();
    case PostAction::Delete:
        m_delete.ask();
        break;
    case PostAction::AnswerConflict: // there is none any more
    case PostAction::Edit:
    case PostAction::None:
        break;
    }
    return []() -> QCoro::Task<void> { co_return; }();
}

/// Waits until the page has told all that was typed. False: this or the post on the screen is gone.
QCoro::Task<bool> ZLMainWindowCreateViewController::isReported()
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    const int generation = m_screen.generation();
    (void)co_await m_page.getBodyContent();
    co_return self &&generation == m_screen.generation();
}

QCoro::Task<bool> ZLMainWindowCreateViewController::mayGiveUpChanges(QString question, QString button)
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    const int generation = m_screen.generation();
    QCoro::Task<int> asking = m_prompts.ask(question,
        QStringLiteral("What you have changed in this post since it last came from the blog is given up."),
        {button, QStringLiteral("Cancel")}, 1);
    const int answer = co_await asking;
    if (!self || answer != 0 || generation != m_screen.generation())
        co_return false;
    QCoro::Task<bool> reporting = isReported(); // a last key would be typed into the blog's version
    const bool isThere = co_await reporting;
    co_return isThere;
}

QCoro::Task<void> ZLMainWindowCreateViewController::revertToBlogVersion()
{
    QCoro::Task<bool> asking =
        mayGiveUpChanges(QStringLiteral("Revert to the blog's version?"), QStringLiteral("Revert"));
    const bool may = co_await asking;
    if (!may)
        co_return;
    if (const Result<void> reverted = m_screen.currentDocument()->revertToSyncedVersion(); !reverted)
        m_prompts.alertWithError(reverted.error());
    m_host.loadLocalPosts();
    readAgain();
}

QCoro::Task<void> ZLMainWindowCreateViewController::takeBlogVersion()
{
    bool may = co_await isReported();
    if (!may)
        co_return;
    const DocumentPtr document = m_screen.currentDocument();
    if (!document->fileInfo.status.isEmpty()) {
        QCoro::Task<bool> asking =
            mayGiveUpChanges(QStringLiteral("Take the blog's version?"), QStringLiteral("Take It"));
        may = co_await asking;
    }
    if (!may || !m_blogVersion)
        co_return;
    document->setRecentlySyncedWordpressPost(*std::exchange(m_blogVersion, nullptr));
    std::ignore = document->saveDocument(); // a failure is said by the document controller
    m_host.loadLocalPosts();
    readAgain();
}

QCoro::Task<void> ZLMainWindowCreateViewController::publishAsNewPost()
{
    const bool isThere = co_await isReported();
    if (!isThere)
        co_return;
    const bool wasDraft = m_screen.post()->status == ZLWordpressPost::Draft;
    if (const Result<void> made = m_screen.becomeNewPost(); !made)
        co_return m_prompts.alertWithError(made.error());
    m_screen.setGoneFromBlog(false);
    readAgain();
    if (wasDraft)
        co_await m_send.save();
    else
        co_await m_send.publish();
}

// The part of the compose controller that brings a post on the screen.

#include "compose/AwaitingAction.h"
#include "compose/ZLMainWindowCreateViewController.h"
#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "text/BlankContent.h"

#include <QFileInfo>
#include <QPointer>

namespace {
QDateTime withSecondsAtZero(const QDateTime &date)
{
    const QTime time = date.time();
    return QDateTime(date.date(), QTime(time.hour(), time.minute()), date.timeSpec());
}
} // namespace

void ZLMainWindowCreateViewController::loadPost(const LocalPostPtr &row)
{
    loadLocalPostAndDoAction(row, AwaitingAction::None);
}

void ZLMainWindowCreateViewController::loadLocalPostAndDoAction(const LocalPostPtr &row, int action)
{
    hidePopupWindows();
    load(row, action);
}

void ZLMainWindowCreateViewController::loadLocalPost(const LocalPostPtr &row)
{
    load(row, AwaitingAction::None);
}

QCoro::Task<void> ZLMainWindowCreateViewController::load(LocalPostPtr row, int action)
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    const LocalPostPtr shown = m_screen.post()->localPost;
    const auto loading = shown && isSameFile(shown->localFile, row->localFile) ? ComposePage::Loading::SamePost
                                                                               : ComposePage::Loading::NewPost;
    QCoro::Task<bool> opening = m_screen.open(row);
    const bool opened = co_await opening;
    if (!self || !opened)
        co_return;
    loadPostFromDocument(loading);
    doActionForCurrentPost(action);
}

QCoro::Task<void> ZLMainWindowCreateViewController::reload(LocalPostPtr row)
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    QCoro::Task<PostOnScreen::Reopened> opening = m_screen.reopen(row);
    const PostOnScreen::Reopened reopened = co_await opening;
    if (!self || reopened == PostOnScreen::Reopened::No)
        co_return;
    if (reopened == PostOnScreen::Reopened::Changed)
        loadPostFromDocument(ComposePage::Loading::SamePost);
    else
        takePostFromDocument(); // and the cursor stays where it is
}

void ZLMainWindowCreateViewController::loadPostFromDocument(ComposePage::Loading loading)
{
    const PostPtr post = m_screen.post();
    m_overlay.follow(post);
    takePostFromDocument();
    m_view.setTitle(post->title);
    loadContent(loading);
    loadTokens();
    m_view.setSaveState({});
    Q_EMIT didLoadedPost(post);
}

void ZLMainWindowCreateViewController::takePostFromDocument()
{
    const PostPtr post = m_screen.post();
    const ZLDocument &document = *m_screen.currentDocument();
    m_buttons.setActionButtonsForPost(*post, m_host.now());
    if (document.postInfo.createdAt.isValid())
        post->createdAt = withSecondsAtZero(document.postInfo.createdAt);
    showNotice();
    updateActionsEnabled();
}

void ZLMainWindowCreateViewController::loadContent(ComposePage::Loading loading)
{
    const DocumentPtr document = m_screen.currentDocument();
    const PostPtr post = m_screen.post();
    const QString inMemory = post->storedContent.isNull() ? post->content : post->storedContent;
    const QString stored = document ? document->storedContent() : inMemory;
    if (BlankContent::is(stored))
        loadBlankPage(loading);
    else
        m_page.loadHTMLContent(m_host.postContentForZalmoEditor(stored), m_screen.generation(), loading);
}

void ZLMainWindowCreateViewController::loadBlankPage(ComposePage::Loading loading)
{
    m_page.loadHTMLContent(EditorBody(), m_screen.generation(), loading);
}

void ZLMainWindowCreateViewController::loadTokens()
{
    QStringList tokens;
    for (const ZLTaxonomy &taxonomy : std::as_const(m_screen.post()->taxonomies))
        tokens.append(taxonomy.keyword());
    m_view.setTokens(tokens);
}

void ZLMainWindowCreateViewController::showNotice()
{
    const DocumentPtr document = m_screen.currentDocument();
    const LocalPostPtr row = m_screen.post()->localPost;
    // The first key takes the mark from the file and the row, but the blog's version is still there.
    const bool isConflict = (row && row->status == ZLLocalPostRepresentation::Conflict)
        || (document
            && (document->fileInfo.status == QLatin1String("conflict")
                || QFileInfo::exists(PostSync::conflictPath(pathOfFileURL(document->fileURL())))));
    if (document && document->isDamaged())
        m_view.setNotice(QStringLiteral("The file of this post cannot be read. It is left as it is until you write."));
    else if (isConflict)
        m_view.setNotice(QStringLiteral("This post was changed both here and on the blog. Both versions are kept."));
    else
        m_view.setNotice({});
}

void ZLMainWindowCreateViewController::doActionForCurrentPost(int action)
{
    switch (action) {
    case AwaitingAction::Publish:
        return didPressedPublishButton();
    case AwaitingAction::Delete:
        return didPressedDeleteButton();
    case AwaitingAction::Save:
        return didPressedSaveButton();
    default:
        return;
    }
}

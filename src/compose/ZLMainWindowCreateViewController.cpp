#include "compose/ZLMainWindowCreateViewController.h"

#include "app/LoginTry.h"
#include "text/BlankContent.h"
#include "wordpress/ServiceFailures.h"

#include <QCoreApplication>
#include <QPointer>

namespace {
QDateTime withSecondsAtZero(const QDateTime &date)
{
    const QTime time = date.time();
    return QDateTime(date.date(), QTime(time.hour(), time.minute()), date.timeSpec());
}
} // namespace

ZLMainWindowCreateViewController::ZLMainWindowCreateViewController(
    ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_page(page)
    , m_view(view)
    , m_prompts(prompts)
    , m_screen(host)
    , m_overlay(view)
    , m_send(host, page, view, prompts, m_screen)
    , m_conflict(host, page, prompts, m_screen)
    , m_delete(host, view, prompts, m_screen)
    , m_media(host, page, view, prompts, m_screen)
    , m_links(host, page, view, prompts, m_screen)
{
    observeView();
    observePage();
    observeDocument();
    observeNotifications();
    observeFlows();
    if (QCoreApplication *app = QCoreApplication::instance())
        connect(app, &QCoreApplication::aboutToQuit, this, &ZLMainWindowCreateViewController::saveDocuments);
    newPost();
    makeTitleBecomeFirstResponder();
}

ZLMainWindowCreateViewController::~ZLMainWindowCreateViewController() = default;

void ZLMainWindowCreateViewController::observeView()
{
    using Self = ZLMainWindowCreateViewController;
    const auto runs = [this](PostAction action) { return [this, action] { doActionForCurrentPost(action); }; };
    connect(&m_view, &ComposeView::titleDidChange, this, [this] { m_screen.setTitle(m_view.title()); });
    connect(&m_view, &ComposeView::tokensDidChange, this, [this] { m_screen.setTokens(m_view.tokens()); });
    connect(&m_view, &ComposeView::fieldDidTakeFocus, this, &Self::hidePopupWindows);
    connect(&m_view, &ComposeView::insertTabInTitle, this, [this] { m_page.focus(); });
    connect(&m_view, &ComposeView::didPressedSaveButton, this, runs(PostAction::Save));
    connect(&m_view, &ComposeView::didPressedPublishButton, this, runs(PostAction::Publish));
    connect(&m_view, &ComposeView::didPressedDeleteButton, this, runs(PostAction::Delete));
    connect(&m_view, &ComposeView::didPressedNoticeAction, this, [this] { doActionForCurrentPost(m_notice.action); });
    connect(&m_view, &ComposeView::didPressedCancelUpload, &m_overlay, &UploadOverlay::cancel);
    connect(&m_view, &ComposeView::didPressedFormatButton, this, &Self::execCommand);
    connect(&m_view, &ComposeView::didPressedLinkButton, this, &Self::addLinkToCurrentSelection);
    connect(&m_view, &ComposeView::didPressedInsertMedia, this, &Self::insertMedia);
    connect(&m_view, &ComposeView::didResignMain, this, &Self::saveDocuments);
}

void ZLMainWindowCreateViewController::observePage()
{
    using Self = ZLMainWindowCreateViewController;
    connect(&m_page, &ComposePage::setPostContent, this, [this](const QString &html, int generation) {
        if (generation == m_screen.generation())
            m_screen.setContent(html);
        else
            m_screen.setContentOfPostBefore(generation, html);
    });
    connect(&m_page, &ComposePage::selectionChanged, this,
        [this](const QString &, const SelectionStyle &style) { m_view.setSelectionStyle(style); });
    connect(&m_page, &ComposePage::focusTitleRequested, this, &Self::makeTitleBecomeFirstResponder);
    connect(&m_page, &ComposePage::focusTokensRequested, this, [this] { m_view.focusTokens(); });
    connect(&m_page, &ComposePage::crashed, this, [this] { loadContent(ComposePage::Loading::NewPost); });
    connect(&m_page, &ComposePage::gaveUp, this, [this] {
        showNotice({QStringLiteral("The editor could not show this post. Choose another one, then this one again, to "
                                   "try once more. Its file is as it was.")});
    });
    connect(
        &m_page, &ComposePage::openAddLink, this, [this](const QString &url, const QString &tooltip, bool newWindow) {
            editBy([this, link = PageLink{url, tooltip, {}, newWindow, true}] { return m_links.edit(link); });
        });
    connect(&m_page, &ComposePage::picturesOffered, this,
        [this](const QList<QUrl> &files) { editBy([this, files] { return m_media.insertPictures(files); }); });
    connect(&m_page, &ComposePage::pictureOffered, this,
        [this](const QByteArray &png) { editBy([this, png] { return m_media.insertPicture(png); }); });
}

void ZLMainWindowCreateViewController::observeDocument()
{
    connect(
        &m_screen, &PostOnScreen::documentDidChange, this, [this] { m_view.setSaveState(QStringLiteral("Saving…")); });
    connect(&m_screen, &PostOnScreen::documentDidSave, this, [this] {
        m_view.setSaveState(QStringLiteral("Saved on this computer"));
        updateState();
    });
    // The alert is the application's; this line stays for as long as the text is in memory only.
    connect(&m_screen, &PostOnScreen::documentDidFailToSave, this, [this](const ZLError &error) {
        m_view.setSaveState(QStringLiteral("Not saved"));
        showNotice({error.description});
    });
    connect(&m_screen, &PostOnScreen::fileDidChange, this, [this] {
        if (m_screen.readAgain() == PostOnScreen::Came::SamePost)
            show(ComposePage::Loading::SamePost);
    });
}

void ZLMainWindowCreateViewController::observeNotifications()
{
    using Self = ZLMainWindowCreateViewController;
    ZLNotifications &notifications = m_host.notifications();
    connect(&notifications, &ZLNotifications::didUpdatePosts, &m_screen, &PostOnScreen::followRow);
    connect(&notifications, &ZLNotifications::didUpdatePost, this,
        [this](const PostPtr &, const UpdatedPostInfo &info) { didUpdatePost(info); });
    connect(&notifications, &ZLNotifications::didChangeBlog, this, &Self::updateState);
    connect(&notifications, &ZLNotifications::didConnectNewBlog, this, &Self::updateState);
}

void ZLMainWindowCreateViewController::observeFlows()
{
    using Self = ZLMainWindowCreateViewController;
    connect(&m_send, &SendFlow::didBegin, this, &Self::showOverlay);
    connect(&m_overlay, &UploadOverlay::ended, this, &Self::didEndUpload);
    connect(&m_delete, &DeleteFlow::cleanEditorForNewPost, this, &Self::newPost);
    connect(&m_delete, &DeleteFlow::didBegin, this, &Self::updateState);
    connect(&m_delete, &DeleteFlow::didEnd, this, &Self::updateState);
    connect(&m_view, &ComposeView::alertViewDidDismissWithButtonIndex, this, [this](int index) {
        if (index == 1 && m_screen.isInConflict()) // it came while the question was up
            doActionForCurrentPost(PostAction::AnswerConflict);
        else if (index == 1 && mayBegin(PostAction::Delete))
            m_delete.deletePost();
    });
}

// The post on the screen

void ZLMainWindowCreateViewController::loadPost(const LocalPostPtr &row, PostAction action)
{
    hidePopupWindows();
    load(row, action);
}

QCoro::Task<void> ZLMainWindowCreateViewController::load(LocalPostPtr row, PostAction action)
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    const PostOnScreen::Came came = co_await m_screen.open(row);
    if (!self || came == PostOnScreen::Came::No)
        co_return;
    if (came == PostOnScreen::Came::AsShown)
        updateState(); // and the cursor stays where it is
    else
        show(came == PostOnScreen::Came::Another ? ComposePage::Loading::NewPost : ComposePage::Loading::SamePost);
    Q_EMIT didLoadedPost(m_screen.post());
    if (m_screen.isInConflict())
        action = PostAction::AnswerConflict;
    if (action != PostAction::None)
        doActionForCurrentPost(action);
}

void ZLMainWindowCreateViewController::readAgain()
{
    if (!m_screen.currentDocument())
        return;
    m_awaitsOutcome = false;
    if (m_screen.readAgain() == PostOnScreen::Came::SamePost)
        show(ComposePage::Loading::SamePost);
    else
        updateState();
}

void ZLMainWindowCreateViewController::newPost()
{
    hidePopupWindows();
    const auto blank = std::make_shared<ZLWordpressPost>();
    blank->title = QLatin1String("");
    blank->content = BlankContent::paragraph;
    m_screen.setBlankPost(blank);
    updatePreferencesForNewPost();
    show(ComposePage::Loading::NewPost);
}

void ZLMainWindowCreateViewController::show(ComposePage::Loading loading)
{
    const PostPtr post = m_screen.post();
    if (loading == ComposePage::Loading::NewPost) {
        m_blogVersion = nullptr;
        m_awaitsOutcome = false;
        m_screen.setGoneFromBlog(false);
        m_view.forgetTypedToken();
    }
    m_view.setTitle(post->title);
    loadContent(loading);
    m_view.setTokens(post->taxonomiesArray());
    m_view.setSaveState({});
    const DocumentPtr document = m_screen.currentDocument();
    showOverlay(document ? m_host.uploadOfPost(document->fileURL()) : nullptr);
}

void ZLMainWindowCreateViewController::loadContent(ComposePage::Loading loading)
{
    const DocumentPtr document = m_screen.currentDocument();
    const QString stored = document ? document->storedContent() : QString();
    const EditorBody body = BlankContent::is(stored) ? EditorBody() : m_host.postContentForZalmoEditor(stored);
    m_page.loadHTMLContent(body, m_screen.generation(), loading);
}

void ZLMainWindowCreateViewController::showOverlay(Upload *upload)
{
    m_overlay.follow(upload, m_host.now());
    if (upload)
        m_send.follow(*upload);
    updateState();
}

void ZLMainWindowCreateViewController::updateState()
{
    const PostPtr post = m_screen.post();
    post->createdAt = withSecondsAtZero(post->createdAt);
    m_overlay.showDeletion(m_delete.isBeingDeleted(), post->type == ZLWordpressPost::Page);
    m_view.setButtons(PostButtons::of(*post, actions(), m_host.now()));
    m_view.setTokensShown(post->type != ZLWordpressPost::Page);
    const AccountPtr account = m_host.selectedAccount();
    m_view.setActionsEnabled(account != nullptr);
    m_page.setBlogURL(account ? QUrl(account->url) : QUrl());
    const bool isOnItsWay = m_overlay.isShowing() || m_awaitsOutcome;
    const PostNotice notice = PostNotice::of(*post, m_screen.currentDocument().get(), isOnItsWay);
    if (m_screen.isGoneFromBlog())
        showNotice(PostNotice::ofGonePost(*post));
    else
        showNotice(notice.text.isEmpty() && m_blogVersion ? PostNotice::ofOtherTextOnBlog() : notice);
    Q_EMIT actionsDidChange();
}

void ZLMainWindowCreateViewController::showNotice(const PostNotice &notice)
{
    m_notice = notice;
    m_view.setNotice(notice.text, notice.button, notice.icon);
}

void ZLMainWindowCreateViewController::updatePreferencesForNewPost()
{
    const PostPtr post = m_screen.post();
    const AccountPtr account = m_host.selectedAccount();
    if (post->status == ZLWordpressPost::New && account && account->preferences) {
        post->allowComments = account->preferences->allow_comments;
        post->allowPingback = account->preferences->allow_pingback;
        post->type = account->preferences->default_article_type == 1 ? ZLWordpressPost::Page : ZLWordpressPost::Post;
    }
    updateState(); // the launch says by this call that there is a blog
}

void ZLMainWindowCreateViewController::reloadCurrentPostAfterSyncingEngine(SyncEngine engine)
{
    m_screen.followRow();
    const int status = m_screen.post()->status;
    if (status == ZLWordpressPost::New || (status == ZLWordpressPost::Note) != (engine == SyncEngine::Evernote))
        return;
    readAgain(); // a conflict that it brought waits for the next press: nobody is asked in the midst of a sentence
}

QCoro::Task<bool> ZLMainWindowCreateViewController::canCreateNewPost()
{
    if (m_screen.post()->status != ZLWordpressPost::New || !m_view.title().isEmpty())
        co_return true;
    const std::optional<QString> content = co_await m_page.getBodyContent();
    co_return content && !BlankContent::is(*content);
}

void ZLMainWindowCreateViewController::didUpdatePost(const UpdatedPostInfo &info)
{
    if (!info.localPost || !m_screen.isFileOnScreen(info.localPost->localFile))
        return;
    m_screen.followRow();
    readAgain();
}

void ZLMainWindowCreateViewController::didEndUpload(const UploadOutcome &outcome)
{
    m_blogVersion = outcome.blogVersion;
    m_awaitsOutcome = outcome.kind == UploadOutcome::Updated || outcome.remote;
    m_screen.setGoneFromBlog(ServiceFailures::isGone(outcome.error));
    updateState();
    if (m_awaitsOutcome)
        return;
    m_view.setSaveState(QStringLiteral("Not sent to the blog"));
    if (outcome.kind == UploadOutcome::Unclear)
        showNotice(PostNotice::ofUnclearUpload());
    else if (outcome.kind == UploadOutcome::ConflictFound)
        doActionForCurrentPost(PostAction::AnswerConflict);
    else if (LoginTry::isRefusal(outcome.error))
        sendWithNewLogin();
}

QCoro::Task<void> ZLMainWindowCreateViewController::sendWithNewLogin()
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    const int generation = m_screen.generation();
    const bool isNew = co_await m_host.newLogin();
    if (!self || !isNew || generation != m_screen.generation() || m_screen.isInConflict()
        || !mayBegin(PostAction::Publish))
        co_return;
    const auto guard = busy();
    co_await m_send.sendAgain();
}

// The text

template <typename Flow>
QCoro::Task<void> ZLMainWindowCreateViewController::editBy(Flow flow)
{
    if (!mayBegin(PostAction::Edit))
        co_return;
    const auto guard = busy();
    co_await flow();
}

void ZLMainWindowCreateViewController::insertMedia()
{
    editBy([this] { return m_media.insertMedia(); });
}

void ZLMainWindowCreateViewController::addLinkToCurrentSelection()
{
    editBy([this] { return m_links.addLinkToCurrentSelection(); });
}

void ZLMainWindowCreateViewController::execCommand(const QString &command)
{
    if (mayBegin(PostAction::Edit))
        m_page.execCommand(command);
}

void ZLMainWindowCreateViewController::makeTitleBecomeFirstResponder()
{
    m_view.focusTitle();
}

void ZLMainWindowCreateViewController::cleanUndoStack()
{
    m_page.cleanUndoStack();
}

void ZLMainWindowCreateViewController::hidePopupWindows()
{
    m_view.hidePopupWindows();
    m_page.hidePopupWindows();
}

QCoro::Task<void> ZLMainWindowCreateViewController::commitEditing()
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    m_view.commitTokens();
    // The page answers behind the keys that it was given, and has reported what they changed before it does.
    (void)co_await m_page.getBodyContent();
    if (self)
        saveDocuments();
}

void ZLMainWindowCreateViewController::saveDocuments()
{
    m_host.documentController().saveAll();
}

#include "compose/ZLMainWindowCreateViewController.h"

#include "text/BlankContent.h"

#include <QCoreApplication>
#include <QPointer>

ZLMainWindowCreateViewController::ZLMainWindowCreateViewController(
    ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_page(page)
    , m_view(view)
    , m_prompts(prompts)
    , m_screen(host)
    , m_overlay(host, view)
    , m_buttons(view)
    , m_parts{host, page, view, prompts, m_screen, m_overlay}
    , m_save(m_parts)
    , m_publish(m_parts)
    , m_delete(m_parts)
    , m_media(m_parts)
    , m_links(m_parts)
    , m_outcome(m_parts, m_buttons)
{
    observeView();
    observePage();
    observeNotifications();
    observeScreen();
    connect(
        &m_delete, &DeleteFlow::cleanEditorForNewPost, this, &ZLMainWindowCreateViewController::cleanEditorForNewPost);
    connect(&m_media, &MediaInsertion::setPostContent, this,
        [this](const QString &html) { setPostContent(html, m_screen.generation()); });
    if (QCoreApplication *app = QCoreApplication::instance())
        connect(app, &QCoreApplication::aboutToQuit, this, &ZLMainWindowCreateViewController::saveDocuments);
    cleanEditorForNewPost();
    makeTitleBecomeFirstResponder();
}

ZLMainWindowCreateViewController::~ZLMainWindowCreateViewController() = default;

void ZLMainWindowCreateViewController::observeView()
{
    using Self = ZLMainWindowCreateViewController;
    connect(&m_view, &ComposeView::titleDidBeginEditing, this, &Self::promoteIfBlank);
    connect(&m_view, &ComposeView::titleDidChange, this, &Self::titleDidChange);
    connect(&m_view, &ComposeView::tokensDidChange, this, &Self::updateTaxonomiesAtLocalFile);
    connect(&m_view, &ComposeView::fieldDidTakeFocus, this, &Self::hidePopupWindows);
    connect(&m_view, &ComposeView::insertTabInTitle, this, [this] { m_page.focus(); });
    connect(&m_view, &ComposeView::didPressedSaveButton, this, &Self::didPressedSaveButton);
    connect(&m_view, &ComposeView::didPressedPublishButton, this, &Self::didPressedPublishButton);
    connect(&m_view, &ComposeView::didPressedDeleteButton, this, &Self::didPressedDeleteButton);
    connect(&m_view, &ComposeView::didPressedCancelUpload, this, [this] { m_overlay.cancel(m_screen.post()); });
    connect(&m_view, &ComposeView::didPressedFormatButton, this, &Self::execCommand);
    connect(&m_view, &ComposeView::didPressedLinkButton, this, &Self::addLinkToCurrentSelection);
    connect(&m_view, &ComposeView::didPressedInsertMedia, this, &Self::insertMedia);
    connect(&m_view, &ComposeView::didResignMain, this, &Self::saveDocuments);
}

void ZLMainWindowCreateViewController::observePage()
{
    using Self = ZLMainWindowCreateViewController;
    connect(&m_page, &ComposePage::setPostContent, this, &Self::setPostContent);
    connect(&m_page, &ComposePage::selectionChanged, this,
        [this](const QString &, const SelectionStyle &style) { m_view.setSelectionStyle(style); });
    connect(&m_page, &ComposePage::focusTitleRequested, this, &Self::makeTitleBecomeFirstResponder);
    connect(&m_page, &ComposePage::focusTokensRequested, this, [this] { m_view.focusTokens(); });
    connect(&m_page, &ComposePage::crashed, this, [this] { loadContent(ComposePage::Loading::NewPost); });
    connect(&m_page, &ComposePage::gaveUp, this, [this] {
        m_view.setNotice(QStringLiteral("The editor could not show this post. Choose another one, then this one again, "
                                        "to try once more. Its file is as it was."));
    });
}

void ZLMainWindowCreateViewController::observeScreen()
{
    connect(&m_screen, &PostOnScreen::didFailToPromote, this,
        [this](const ZLError &error) { m_prompts.alertWithError(error); });
    connect(
        &m_screen, &PostOnScreen::documentDidChange, this, [this] { m_view.setSaveState(QStringLiteral("Saving…")); });
    connect(&m_screen, &PostOnScreen::documentDidSave, this, [this] {
        m_view.setSaveState(QStringLiteral("Saved on this computer"));
        showNotice();
    });
    // The alert is the application's; this line stays for as long as the text is in memory only.
    connect(&m_screen, &PostOnScreen::documentDidFailToSave, this, [this](const ZLError &error) {
        m_view.setSaveState(QStringLiteral("Not saved"));
        m_view.setNotice(error.description);
    });
}

void ZLMainWindowCreateViewController::observeNotifications()
{
    using Self = ZLMainWindowCreateViewController;
    ZLNotifications &notifications = m_host.notifications();
    connect(&notifications, &ZLNotifications::didUpdatePosts, &m_screen, &PostOnScreen::followRow);
    connect(&notifications, &ZLNotifications::didChangeBlog, this, &Self::updateActionsEnabled);
    connect(&notifications, &ZLNotifications::didConnectNewBlog, this, &Self::updateActionsEnabled);
}

// The blank post

void ZLMainWindowCreateViewController::cleanEditorForNewPost()
{
    m_screen.setIsNewPostNotInList(true);
    newPost();
}

void ZLMainWindowCreateViewController::newPost()
{
    hidePopupWindows();
    const auto blank = std::make_shared<ZLWordpressPost>();
    blank->title = QLatin1String("");
    blank->content = BlankContent::paragraph;
    if (RowUpdates *rows = m_screen.rowUpdates())
        rows->selectRowWithoutLoad(-1); // the post of the row is not here any more
    m_screen.setBlankPost(blank);
    m_view.setTitle({});
    loadBlankPage(ComposePage::Loading::NewPost);
    m_view.setTokens({});
    m_view.setNotice({});
    m_view.setSaveState({});
    m_buttons.setScheduleImageStatusOn(false, blank->status);
    m_overlay.follow(blank);
    updatePreferencesForNewPost();
    m_buttons.setButtonsForBlankPost(blank->type);
}

void ZLMainWindowCreateViewController::updatePreferencesForNewPost()
{
    updateActionsEnabled(); // the launch says by this call that there is a blog
    const PostPtr post = m_screen.post();
    const AccountPtr account = m_host.selectedAccount();
    if (post->status != ZLWordpressPost::New || !account || !account->preferences)
        return;
    post->allowComments = account->preferences->allow_comments;
    post->allowPingback = account->preferences->allow_pingback;
    post->type = account->preferences->default_article_type == 1 ? ZLWordpressPost::Page : ZLWordpressPost::Post;
}

void ZLMainWindowCreateViewController::updateActionsEnabled()
{
    m_view.setActionsEnabled(m_host.selectedAccount() != nullptr);
}

QCoro::Task<bool> ZLMainWindowCreateViewController::canCreateNewPost()
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    const PostPtr post = m_screen.post();
    if (post->status != ZLWordpressPost::New)
        co_return true;
    post->title = m_view.title();
    QCoro::Task<std::optional<QString>> asking = m_page.getBodyContent();
    const std::optional<QString> content = co_await asking;
    if (!self)
        co_return false;
    if (content)
        post->content = *content;
    co_return !post->title.isEmpty() || !BlankContent::is(post->content);
}

bool ZLMainWindowCreateViewController::canSaveCurrentPost() const
{
    return m_screen.post()->status != ZLWordpressPost::Publish;
}

bool ZLMainWindowCreateViewController::isUploadingCurrentPost() const
{
    return m_overlay.isLoading(m_screen.post()->id);
}

// Editing

bool ZLMainWindowCreateViewController::promoteIfBlank()
{
    if (!m_host.selectedAccount())
        return false; // there is no blog yet whose list the post could join
    if (m_screen.isNewPostNotInList())
        m_screen.createNewPostOnList();
    return true;
}

void ZLMainWindowCreateViewController::titleDidChange()
{
    const QString title = m_view.title();
    if (!promoteIfBlank())
        return;
    m_screen.post()->title = title;
    m_screen.write(PostOnScreen::Mark::Always, [title](ZLDocument &document) { document.post.title = title; });
    if (RowUpdates *rows = m_screen.rowUpdates())
        rows->setTitleToSelectedPost(title);
}

void ZLMainWindowCreateViewController::setPostContent(const QString &html, int generation)
{
    const PostOnScreen::Edit edit = [html](ZLDocument &document) { document.post.content = html; };
    if (generation != m_screen.generation())
        return m_screen.writeToPostBefore(generation, PostOnScreen::Mark::Always, edit);
    if (!isChangedContent(html) || !promoteIfBlank())
        return;
    m_screen.write(PostOnScreen::Mark::Always, edit);
    if (RowUpdates *rows = m_screen.rowUpdates())
        rows->setContentToSelectedPost(html);
}

bool ZLMainWindowCreateViewController::isChangedContent(const QString &html) const
{
    if (m_screen.isNewPostNotInList())
        return !BlankContent::is(html);
    const DocumentPtr document = m_screen.currentDocument();
    if (!document)
        return true;
    const QString stored = document->storedContent();
    return html != stored && !(BlankContent::is(html) && BlankContent::is(stored));
}

void ZLMainWindowCreateViewController::updateTaxonomiesAtLocalFile()
{
    if (!promoteIfBlank())
        return;
    m_screen.write(PostOnScreen::Mark::OnlyWhenReopened,
        [tokens = m_view.tokens()](ZLDocument &document) { document.post.setTaxonomiesFromStringArray(tokens); });
}

// Buttons and commands

void ZLMainWindowCreateViewController::didPressedSaveButton()
{
    m_save.didPressedSaveButton();
}

void ZLMainWindowCreateViewController::didPressedPublishButton()
{
    m_publish.didPressedPublishButton();
}

void ZLMainWindowCreateViewController::didPressedDeleteButton()
{
    m_delete.didPressedDeleteButton();
}

void ZLMainWindowCreateViewController::insertMedia()
{
    m_media.insertMedia();
}

void ZLMainWindowCreateViewController::execCommand(const QString &command)
{
    if (!isUploadingCurrentPost())
        m_page.execCommand(command);
}

void ZLMainWindowCreateViewController::addLinkToCurrentSelection()
{
    m_links.addLinkToCurrentSelection();
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

// Outcomes

void ZLMainWindowCreateViewController::didSendBodyData(const PostPtr &post, float progress)
{
    m_overlay.didSendBodyData(post, progress, m_screen.post());
}

void ZLMainWindowCreateViewController::reloadCurrentPostAfterSyncingEngine(int engine)
{
    m_screen.followRow();
    const PostPtr post = m_screen.post();
    const LocalPostPtr row = post->localPost;
    const bool isNote = post->status == ZLWordpressPost::Note;
    if (post->status == ZLWordpressPost::New || !row || isNote != (engine == 1))
        return;
    const bool isListed = m_host.rowForFile(row->localFile) != nullptr;
    reload(isListed ? row : ZLLocalPostRepresentation::initWithContentsOfFileURL(row->localFile, m_host.now()));
}

QCoro::Task<void> ZLMainWindowCreateViewController::commitEditing()
{
    const QPointer<ZLMainWindowCreateViewController> self(this);
    m_view.commitTokens();
    // The page answers behind the keys that it was given, and has reported what they changed before it does.
    QCoro::Task<std::optional<QString>> asking = m_page.getBodyContent();
    (void)co_await asking;
    if (!self || !m_screen.post()->localPost)
        co_return;
    // An edit of a post whose file is not open is written when it has been opened.
    QCoro::Task<bool> opening = m_screen.becomeReady();
    (void)co_await opening;
}

void ZLMainWindowCreateViewController::saveDocuments()
{
    m_host.documentController().saveAll();
}

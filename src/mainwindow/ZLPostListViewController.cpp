#include "mainwindow/ZLPostListViewController.h"

#include "app/ZLAppDelegate.h"
#include "mainwindow/PostContextMenu.h"
#include "mainwindow/ZLPostListView.h"
#include "model/LocalFileURL.h"
#include "platform/ZLLog.h"
#include "text/ContentPasses.h"
#include "widgets/ZLIconButton.h"
#include "widgets/ZLSyncBar.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QScopedValueRollback>

ZLPostListViewController::ZLPostListViewController(ZLAppDelegate &app, Prompts &prompts, QWidget *parentView)
    : m_app(app)
    , m_prompts(prompts)
    , m_view(new ZLPostListView(&m_model, parentView))
{
    connectView();
    connectNotifications();
}

void ZLPostListViewController::connectView()
{
    QListView *table = m_view->tableView();
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_isSelecting)
            tableViewSelectionDidChange();
    });
    connect(table, &QWidget::customContextMenuRequested, this, &ZLPostListViewController::popUpMenu);
    connect(m_view->refreshButton(), &QAbstractButton::clicked, this, &ZLPostListViewController::refresh);
    connect(m_view->searchPostsField(), &QLineEdit::textChanged, this, &ZLPostListViewController::updatePosts);
    connect(m_view->syncingView(), &ZLSyncBar::stopped, this, [this] {
        m_app.rounds().stopSyncing();
        hideSyncingLoading();
    });
    connect(m_view, &ZLPostListView::tryAgainPressed, this, [this] { m_app.rounds().syncAllBlogs(); });
    connect(m_view, &ZLPostListView::deletePressed, this, [this] {
        if (const LocalPostPtr post = selectedLocalPost())
            selectPost(post, PostAction::Delete);
    });
    connect(m_view, &ZLPostListView::returnPressed, this, [this] {
        if (delegate && selectedLocalPost())
            delegate->makeTitleBecomeFirstResponder();
    });
}

void ZLPostListViewController::connectNotifications()
{
    ZLNotifications &notifications = m_app.notifications();
    connect(&notifications, &ZLNotifications::didChangeBlog, this, [this] {
        m_view->searchPostsField()->clear();
        selectRowWithoutLoad(none);
    });
    connect(&notifications, &ZLNotifications::didSyncPosts, this, &ZLPostListViewController::hideSyncingLoading);
    connect(&notifications, &ZLNotifications::openNewPost, this, &ZLPostListViewController::openNewPost);
    connect(&notifications, &ZLNotifications::didUpdatePosts, this, [this] {
        hideLoadingView();
        updatePosts();
    });
    m_model.setIsOnItsWay([this](const QUrl &file) {
        const ZLWordpressService *service = m_app.currentBlog().wordpressService();
        return service && service->uploadOfPost(file);
    });
    for (const auto step : {&ZLNotifications::syncingTaxonomiesPostStatus, &ZLNotifications::syncingImagesPostStatus,
             &ZLNotifications::syncingContentPostStatus, &ZLNotifications::didFailToUploadPost})
        connect(&notifications, step, &m_model, &ZLPostListModel::uploadsDidChange);
    connect(&notifications, &ZLNotifications::didUpdatePost, &m_model, &ZLPostListModel::uploadsDidChange);
}

// Selection

LocalPostPtr ZLPostListViewController::selectedLocalPost() const
{
    return m_model.post(m_model.rowOfFile(m_selectedLocalFile));
}

int ZLPostListViewController::selectedRowInTable() const
{
    const QModelIndexList rows = m_view->tableView()->selectionModel()->selectedIndexes();
    return rows.isEmpty() ? none : rows.first().row();
}

void ZLPostListViewController::selectInTable(int row)
{
    const QScopedValueRollback<bool> quiet(m_isSelecting, true);
    QListView *table = m_view->tableView();
    const QModelIndex index = m_model.index(row);
    if (!index.isValid()) {
        table->selectionModel()->clear();
        return;
    }
    table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    table->scrollTo(index);
}

void ZLPostListViewController::selectRow(int row)
{
    const bool isSelected = row == selectedRowInTable();
    selectInTable(row);
    if (!isSelected || m_awaitingAction != PostAction::None)
        tableViewSelectionDidChange();
}

void ZLPostListViewController::deselectRow()
{
    if (selectedRowInTable() == none && m_selectedLocalFile.isEmpty())
        return;
    selectInTable(none);
    tableViewSelectionDidChange();
}

void ZLPostListViewController::tableViewSelectionDidChange()
{
    m_selectedPostRow = selectedRowInTable();
    m_fileToLoad.clear();
    const LocalPostPtr post = m_model.post(m_selectedPostRow);
    if (post) {
        if (m_awaitingAction == PostAction::None && m_selectedLocalFile == post->localFile)
            return;
        // After the table has finished its own event.
        m_fileToLoad = post->localFile;
        QMetaObject::invokeMethod(
            this, [this, post] { loadSelectedPost(post); }, Qt::QueuedConnection);
        return;
    }
    m_selectedLocalFile.clear();
    if (!delegate)
        return;
    delegate->cleanEditorForNewPost();
    delegate->cleanUndoStack();
}

void ZLPostListViewController::loadSelectedPost(const LocalPostPtr &post)
{
    // Another row may have been selected meanwhile; its own turn comes, and the waiting action is meant for it.
    if (m_fileToLoad == post->localFile)
        load(post);
}

void ZLPostListViewController::load(const LocalPostPtr &post)
{
    m_fileToLoad.clear();
    const PostAction action = std::exchange(m_awaitingAction, PostAction::None);
    const bool isOther = std::exchange(m_selectedLocalFile, post->localFile) != post->localFile;
    if (!delegate)
        return;
    delegate->loadPost(post, action);
    if (isOther)
        delegate->cleanUndoStack();
}

void ZLPostListViewController::selectPost(const LocalPostPtr &post)
{
    m_selectedPostRow = none;
    m_selectedLocalFile = post ? post->localFile : QUrl();
    const int row = m_model.rowOfFile(m_selectedLocalFile); // after a rebuild the row is another object
    if (row != -1)
        selectRow(row);
    else if (const LocalPostPtr hidden = postOnScreen(); hidden && m_awaitingAction != PostAction::None)
        load(hidden); // a search leaves it out, and it is on the screen all the same
    else if (!hidden)
        deselectRow();
}

void ZLPostListViewController::selectPostWithoutLoad(const LocalPostPtr &post)
{
    selectPost(post); // the file is stored first, so that the row counts as loaded
}

void ZLPostListViewController::selectPost(const LocalPostPtr &post, PostAction action)
{
    m_awaitingAction = action;
    const int row = m_model.rowOfFile(post->localFile);
    if (row == -1) {
        m_awaitingAction = PostAction::None;
        return deselectRow();
    }
    // A post whose file could not be opened is selected, but another one is on the screen.
    const bool isLoaded =
        row == selectedRowInTable() && post->localFile == m_selectedLocalFile && delegate && delegate->isOnScreen(post);
    m_selectedLocalFile = post->localFile;
    if (!isLoaded)
        return selectRow(row);
    m_awaitingAction = PostAction::None;
    if (delegate)
        delegate->doActionForCurrentPost(action);
}

void ZLPostListViewController::selectRowWithoutLoad(int row)
{
    const LocalPostPtr post = m_app.posts().posts().value(row);
    selectFileWithoutLoad(post ? post->localFile : QUrl());
}

void ZLPostListViewController::selectFileWithoutLoad(const QUrl &file)
{
    m_fileToLoad.clear();
    m_selectedLocalFile = file;
    m_selectedPostRow = m_model.rowOfFile(m_selectedLocalFile); // none also where a search leaves it out
    m_model.reloadRow(m_selectedPostRow);
    selectInTable(m_selectedPostRow);
}

void ZLPostListViewController::selectPostFromLocalFileURL(const QUrl &url)
{
    const int row = m_model.rowOfFile(url);
    if (row != -1)
        selectRow(row);
}

// Updates

void ZLPostListViewController::setRows(const QList<LocalPostPtr> &posts)
{
    const QScopedValueRollback<bool> quiet(m_isSelecting, true);
    m_model.setPosts(posts);
    m_selectedPostRow = m_model.rowOfFile(m_fileToLoad.isEmpty() ? m_selectedLocalFile : m_fileToLoad);
    selectInTable(m_selectedPostRow);
}

/// A search stands for as long as its text does.
void ZLPostListViewController::updatePosts()
{
    const QString text = m_view->searchPostsField()->text();
    setRows(text.isEmpty() ? m_app.posts().posts() : m_app.posts().getPostsForSearch(text));
}

void ZLPostListViewController::updatePostsAndSelectPreviousPost()
{
    hideLoadingView();
    updatePosts();
    leaveVanishedPost();
}

/// A selected post whose file is gone takes the editor's content with it.
void ZLPostListViewController::leaveVanishedPost()
{
    if (m_selectedLocalFile.isEmpty() || m_selectedPostRow != none)
        return;
    if (!QFileInfo::exists(pathOfFileURL(m_selectedLocalFile)))
        deselectRow();
}

void ZLPostListViewController::reloadData()
{
    setRows(m_model.posts());
}

void ZLPostListViewController::didDeleteLocalPost(const LocalPostPtr &post)
{
    const bool wasSelected = post && post->localFile == m_selectedLocalFile;
    updatePosts();
    if (wasSelected)
        deselectRow();
}

void ZLPostListViewController::didUpdatePost(const PostPtr &, const LocalPostPtr &row, const QUrl &previousLocalURL)
{
    // The screen takes its own outcome; what is new here is only where the file lies.
    if (row && !previousLocalURL.isEmpty() && m_selectedLocalFile == previousLocalURL)
        m_selectedLocalFile = row->localFile;
    updatePosts();
    leaveVanishedPost();
}

bool ZLPostListViewController::keepsStatus(const ZLLocalPostRepresentation &post)
{
    return post.status == ZLLocalPostRepresentation::New || post.status == ZLLocalPostRepresentation::Conflict
        || post.status == ZLLocalPostRepresentation::ConflictSolved;
}

/// Its row follows what is typed, also while a search hides it.
LocalPostPtr ZLPostListViewController::postOnScreen() const
{
    const QList<LocalPostPtr> &posts = m_app.posts().posts();
    const auto isSelected = [this](const LocalPostPtr &post) { return post->localFile == m_selectedLocalFile; };
    const auto found = std::find_if(posts.cbegin(), posts.cend(), isSelected);
    return found == posts.cend() ? nullptr : *found;
}

void ZLPostListViewController::setTitleToSelectedPost(const QString &title)
{
    const LocalPostPtr post = postOnScreen();
    if (!post || post->title == title)
        return;
    post->title = title;
    if (!keepsStatus(*post))
        post->status = ZLLocalPostRepresentation::Modified;
    m_model.reloadRow(m_model.rowOfPost(post));
}

void ZLPostListViewController::setContentToSelectedPost(const QString &content)
{
    const LocalPostPtr post = postOnScreen();
    if (!post)
        return;
    // What the row shows of a text is at its beginning: a key deep in a long post changes nothing here.
    const QString extract = ZLLocalPostRepresentation::contentExtract(content);
    const bool statusChanges = !keepsStatus(*post) && post->status != ZLLocalPostRepresentation::Modified;
    if (!statusChanges && extract == post->content)
        return;
    post->content = extract;
    if (statusChanges)
        post->status = ZLLocalPostRepresentation::Modified;
    m_model.reloadRow(m_model.rowOfPost(post));
}

void ZLPostListViewController::setStatusToSelectedPost(int status)
{
    const LocalPostPtr post = postOnScreen();
    if (!post || post->status == status || keepsStatus(*post))
        return;
    post->status = status;
    m_model.reloadRow(m_model.rowOfPost(post));
}

// Actions

void ZLPostListViewController::refresh()
{
    m_app.rounds().refreshCurrentBlog();
}

void ZLPostListViewController::openNewPost()
{
    m_view->searchPostsField()->clear(); // its row is to be seen
    updatePosts();
    const LocalPostPtr post = m_model.post(0);
    if (!post)
        return;
    m_selectedLocalFile = post->localFile;
    m_fileToLoad.clear();
    m_selectedPostRow = 0;
    if (delegate) {
        delegate->loadPost(post, PostAction::None);
        delegate->makeTitleBecomeFirstResponder();
    }
    selectInTable(0);
}

void ZLPostListViewController::showLoadingView()
{
    setRows({});
    m_view->setLoading(true);
}

void ZLPostListViewController::hideLoadingView()
{
    m_view->setLoading(false);
}

void ZLPostListViewController::showSyncingLoading()
{
    m_view->syncingView()->slideIn();
}

void ZLPostListViewController::hideSyncingLoading()
{
    m_view->syncingView()->slideOut();
}

void ZLPostListViewController::showSyncFailure(const QString &text)
{
    m_view->setSyncFailure(text);
}

void ZLPostListViewController::hideSyncFailure()
{
    m_view->setSyncFailure({});
}

// Context menu

void ZLPostListViewController::popUpMenu(const QPoint &position)
{
    QListView *table = m_view->tableView();
    // The keyboard's menu key asks at the current row; the pointer at the row under it.
    QMenu *menu = menuForRow(table->indexAt(position).row());
    if (!menu)
        return;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(table->viewport()->mapToGlobal(position));
}

QMenu *ZLPostListViewController::menuForRow(int row)
{
    const LocalPostPtr post = m_model.post(row);
    if (!post)
        return nullptr;
    auto *menu = new PostContextMenu(m_app.environment(), m_app.currentBlog(), post, m_view);
    connect(menu, &PostContextMenu::newPost, this, &ZLPostListViewController::didClickOnNewPost);
    connect(menu, &PostContextMenu::action, this, [this, post](PostAction action) { selectPost(post, action); });
    connect(menu, &PostContextMenu::didFailToCopy, this,
        [this](const ZLError &error) { m_prompts.alert(tr("The post could not be copied."), error.description); });
    connect(menu, &PostContextMenu::copied, this, [this](const QUrl &file) { selectPostFromLocalFileURL(file); });
    return menu;
}

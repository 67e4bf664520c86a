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
        m_app.stopSyncing();
        hideSyncingLoading();
    });
    connect(m_view, &ZLPostListView::deletePressed, this, [this] {
        if (const LocalPostPtr post = selectedLocalPost())
            selectPost(post, AwaitingAction::Delete);
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
    if (!isSelected || m_awaitingAction != AwaitingAction::None)
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
        if (m_awaitingAction == AwaitingAction::None && m_selectedLocalFile == post->localFile)
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
    // Another row has been selected meanwhile; its own turn comes, and the waiting action is meant for it.
    const LocalPostPtr selected = m_model.post(selectedRowInTable());
    if (!selected || selected->localFile != post->localFile)
        return;
    load(post);
}

void ZLPostListViewController::load(const LocalPostPtr &post)
{
    m_fileToLoad.clear();
    const int action = std::exchange(m_awaitingAction, int(AwaitingAction::None));
    const bool isOther = std::exchange(m_selectedLocalFile, post->localFile) != post->localFile;
    if (!delegate)
        return;
    if (action == AwaitingAction::None || action == AwaitingAction::Reload)
        delegate->loadPost(post);
    else
        delegate->loadLocalPost(post, action);
    if (isOther && action != AwaitingAction::Reload)
        delegate->cleanUndoStack();
}

void ZLPostListViewController::selectPost(const LocalPostPtr &post)
{
    m_selectedPostRow = none;
    m_selectedLocalFile = post ? post->localFile : QUrl();
    const int row = m_model.rowOfFile(m_selectedLocalFile); // after a rebuild the row is another object
    if (row != -1)
        selectRow(row);
    else if (const LocalPostPtr hidden = postOnScreen(); hidden && m_awaitingAction != AwaitingAction::None)
        load(hidden); // a search leaves it out, and it is on the screen all the same
    else if (!hidden)
        deselectRow();
}

void ZLPostListViewController::selectPostWithoutLoad(const LocalPostPtr &post)
{
    selectPost(post); // the file is stored first, so that the row counts as loaded
}

void ZLPostListViewController::selectPost(const LocalPostPtr &post, int action)
{
    m_awaitingAction = action;
    const int row = m_model.rowOfFile(post->localFile);
    if (row == -1) {
        m_awaitingAction = AwaitingAction::None;
        return deselectRow();
    }
    // A post whose file could not be opened is selected, but another one is on the screen.
    const bool isLoaded =
        row == selectedRowInTable() && post->localFile == m_selectedLocalFile && delegate && delegate->isOnScreen(post);
    m_selectedLocalFile = post->localFile;
    if (!isLoaded)
        return selectRow(row);
    m_awaitingAction = AwaitingAction::None;
    if (delegate)
        delegate->doActionForCurrentPost(action);
}

void ZLPostListViewController::selectRowWithoutLoad(int row)
{
    m_fileToLoad.clear();
    const LocalPostPtr post = m_app.posts().value(row);
    m_selectedLocalFile = post ? post->localFile : QUrl();
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
    setRows(text.isEmpty() ? m_app.posts() : m_app.getPostsForSearch(text));
}

void ZLPostListViewController::updatePostsAndSelectRow(int row)
{
    m_view->searchPostsField()->clear();
    updatePosts();
    selectRow(row);
}

void ZLPostListViewController::updatePostsAndSelectPreviousPost()
{
    hideLoadingView();
    updatePosts();
    leaveVanishedPost();
}

/// A selected post whose file is gone takes the editor's content with it. A new post that was kept on the screen while
/// another blog was chosen is in no row either, but its file is there.
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
    // A new post that was kept on the screen while another blog was connected is in no selected row.
    const bool isKept = row && m_selectedLocalFile.isEmpty() && delegate && delegate->isOnScreen(row);
    const bool wasSelected = isKept || (!previousLocalURL.isEmpty() && m_selectedLocalFile == previousLocalURL);
    updatePosts();
    if (wasSelected && row) {
        m_awaitingAction = AwaitingAction::Reload;
        selectPost(row);
    } else {
        leaveVanishedPost();
    }
}

bool ZLPostListViewController::keepsStatus(const ZLLocalPostRepresentation &post)
{
    return post.status == ZLLocalPostRepresentation::New || post.status == ZLLocalPostRepresentation::ConflictSolved;
}

/// Its row follows what is typed, also while a search hides it.
LocalPostPtr ZLPostListViewController::postOnScreen() const
{
    const QList<LocalPostPtr> &posts = m_app.posts();
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
    QString before = ContentPasses::removeHTMLFromString(post->content);
    QString now = ContentPasses::removeHTMLFromString(content);
    constexpr int shownLength = 70;
    if (before.size() > shownLength && now.size() > shownLength) {
        before.truncate(shownLength);
        now.truncate(shownLength);
    }
    post->content = content;
    const bool statusChanges = !keepsStatus(*post) && post->status != ZLLocalPostRepresentation::Modified;
    if (statusChanges)
        post->status = ZLLocalPostRepresentation::Modified;
    // Spares a reload on each key press deep in a long post.
    if (statusChanges || before != now)
        m_model.reloadRow(m_model.rowOfPost(post));
}

void ZLPostListViewController::setStatusToSelectedPost(int status)
{
    const LocalPostPtr post = postOnScreen();
    if (!post || post->status == status)
        return;
    post->status = status;
    ZLLog(u"reload table view"_qs);
    m_model.reloadRow(m_model.rowOfPost(post));
}

// Actions

void ZLPostListViewController::refresh()
{
    if (m_app.numberOfConnectedAccounts() == 0)
        return;
    if (!m_app.isReachable()) {
        m_prompts.alert(tr("You're offline"), tr("You need to connect to the Internet to synchronize your posts."));
        return;
    }
    showSyncingLoading();
    m_app.refreshCurrentBlog();
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
        delegate->loadPost(post);
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
    auto *menu = new PostContextMenu(m_app, post, m_view);
    connect(menu, &PostContextMenu::newPost, this, &ZLPostListViewController::didClickOnNewPost);
    connect(menu, &PostContextMenu::action, this, [this, post](int action) { selectPost(post, action); });
    connect(menu, &PostContextMenu::didFailToCopy, this,
        [this](const ZLError &error) { m_prompts.alert(tr("The post could not be copied."), error.description); });
    connect(menu, &PostContextMenu::copied, this, [this](const QUrl &file) { selectPostFromLocalFileURL(file); });
    return menu;
}

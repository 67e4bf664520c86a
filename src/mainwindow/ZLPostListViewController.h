#pragma once

#include "app/PostList.h"
#include "compose/RowUpdates.h"
#include "mainwindow/ZLPostListModel.h"
#include "mainwindow/ZLPostListViewControllerDelegate.h"

class Prompts;
class QMenu;
class ZLAppDelegate;
class ZLPostListView;

/// The post list: a view of the application's rows, which it never sorts.
///
/// Selecting a row loads its post into the compose screen on the next turn of the event loop; an action that was asked
/// for on a row that is not loaded waits in `awaitingAction` until then. The selection is held in three places: the
/// table's selected row, `selectedPostRow` and `selectedLocalFile`. Each rebuild renumbers the rows, so the file is
/// its true identity, and rebuilding restores the selection from it without a word to the compose screen.
class ZLPostListViewController : public QObject, public PostList, public RowUpdates {
    Q_OBJECT
public:
    static constexpr int none = -1;

    ZLPostListViewController(ZLAppDelegate &app, Prompts &prompts, QWidget *parentView);

    ZLPostListViewControllerDelegate *delegate = nullptr;

    ZLPostListView *view() const { return m_view; }
    const QList<LocalPostPtr> &allPosts() const { return m_model.posts(); }
    LocalPostPtr selectedLocalPost() const;
    int selectedPostRow() const { return m_selectedPostRow; }
    QUrl selectedLocalFile() const { return m_selectedLocalFile; }
    PostAction awaitingAction() const { return m_awaitingAction; }

    // selection
    void selectRow(int row);
    void selectRowWithoutLoad(int row);
    void selectFileWithoutLoad(const QUrl &file) override;
    void selectPost(const LocalPostPtr &post);
    void selectPostWithoutLoad(const LocalPostPtr &post);
    void selectPost(const LocalPostPtr &post, PostAction action);
    void selectPostFromLocalFileURL(const QUrl &url) override;
    void deselectRow() override;

    // updates
    void updatePosts() override;
    void updatePostsAndSelectPreviousPost() override;
    void reloadData();
    void didDeleteLocalPost(const LocalPostPtr &post) override;
    void didUpdatePost(const PostPtr &post, const LocalPostPtr &row, const QUrl &previousLocalURL) override;
    void setTitleToSelectedPost(const QString &title) override;
    void setContentToSelectedPost(const QString &content) override;
    void setStatusToSelectedPost(int status) override;

    // actions
    void refresh(); ///< the button: asks the blog
    void openNewPost();
    void showLoadingView() override;
    void hideLoadingView() override;
    void showSyncingLoading() override;
    void hideSyncingLoading() override;
    void showSyncFailure(const QString &text) override;
    void hideSyncFailure() override;

    /// The menu of one row, selected or not. The caller deletes it.
    QMenu *menuForRow(int row);

Q_SIGNALS:
    void didClickOnNewPost();

private:
    void connectView();
    void connectNotifications();
    void tableViewSelectionDidChange();
    void loadSelectedPost(const LocalPostPtr &post);
    void load(const LocalPostPtr &post);
    void leaveVanishedPost();
    LocalPostPtr postOnScreen() const;
    void setRows(const QList<LocalPostPtr> &posts);
    void selectInTable(int row); ///< without telling anybody
    int selectedRowInTable() const;
    void popUpMenu(const QPoint &position);
    static bool keepsStatus(const ZLLocalPostRepresentation &post);

    ZLAppDelegate &m_app;
    Prompts &m_prompts;
    ZLPostListModel m_model;
    ZLPostListView *m_view;
    int m_selectedPostRow = none;
    QUrl m_selectedLocalFile;
    QUrl m_fileToLoad; ///< of the row that was selected just now; new rows must not take the selection from it
    PostAction m_awaitingAction = PostAction::None;
    bool m_isSelecting = false; ///< the selection is being set by the program
};

#pragma once

#include "app/PostList.h"

/// Notes what the list is told.
class FakePostList : public PostList {
public:
    struct Update {
        PostPtr post;
        LocalPostPtr row;
        QUrl previousLocalURL;
    };

    void updatePosts() override { ++updates; }
    void updatePostsAndSelectRow(int row) override { selectedRow = row; }
    void updatePostsAndSelectPreviousPost() override
    {
        ++updates;
        hideLoadingView();
    }
    void didDeleteLocalPost(const LocalPostPtr &post) override { deleted.append(post); }
    void didUpdatePost(const PostPtr &post, const LocalPostPtr &row, const QUrl &previousLocalURL) override
    {
        updated.append({post, row, previousLocalURL});
    }
    void deselectRow() override { selectedRow = -1; }
    void selectPostFromLocalFileURL(const QUrl &) override { }
    void showLoadingView() override
    {
        ++loadings;
        isLoading = true;
    }
    void hideLoadingView() override { isLoading = false; }
    void showSyncingLoading() override { isSyncing = true; }
    void hideSyncingLoading() override { isSyncing = false; }

    QList<Update> updated;
    QList<LocalPostPtr> deleted;
    int selectedRow = -1;
    int updates = 0;
    int loadings = 0;
    bool isLoading = false;
    bool isSyncing = false;
};

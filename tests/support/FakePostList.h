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
    void selectPostFromLocalFileURL(const QUrl &url) override { selectedFile = url; }
    void showLoadingView() override
    {
        ++loadings;
        isLoading = true;
    }
    void hideLoadingView() override { isLoading = false; }
    void showSyncingLoading() override { isSyncing = true; }
    void hideSyncingLoading() override { isSyncing = false; }
    void showSyncFailure(const QString &text) override { syncFailure = text; }
    void hideSyncFailure() override { syncFailure.clear(); }

    QList<Update> updated;
    QList<LocalPostPtr> deleted;
    int selectedRow = -1;
    QUrl selectedFile;
    QString syncFailure; ///< the quiet line
    int updates = 0;
    int loadings = 0;
    bool isLoading = false;
    bool isSyncing = false;
};

#pragma once

#include "model/ZLWordpressPost.h"

/// The post list as the controller sees it.
class PostList {
public:
    virtual ~PostList() = default;
    virtual void updatePosts() = 0;
    virtual void updatePostsAndSelectRow(int row) = 0;
    virtual void updatePostsAndSelectPreviousPost() = 0;
    virtual void didDeleteLocalPost(const LocalPostPtr &post) = 0;
    virtual void didUpdatePost(const PostPtr &post, const LocalPostPtr &row, const QUrl &previousLocalURL) = 0;
    virtual void deselectRow() = 0;
    virtual void selectPostFromLocalFileURL(const QUrl &url) = 0;
    virtual void showLoadingView() = 0; ///< instead of rows that are still being fetched
    virtual void hideLoadingView() = 0;
    virtual void showSyncingLoading() = 0;
    virtual void hideSyncingLoading() = 0;
};

#pragma once

#include "model/ZLWordpressPost.h"

/// The post list as the controller sees it.
class PostList {
public:
    virtual ~PostList() = default;
    virtual void updatePosts() = 0;
    virtual void updatePostsAndSelectPreviousPost() = 0;
    virtual void didDeleteLocalPost(const LocalPostPtr &post) = 0;
    virtual void didUpdatePost(const PostPtr &post, const LocalPostPtr &row, const QUrl &previousLocalURL) = 0;
    virtual void deselectRow() = 0;
    virtual void selectPostFromLocalFileURL(const QUrl &url) = 0;
    virtual void showLoadingView() = 0; ///< instead of rows that are still being fetched
    virtual void hideLoadingView() = 0;
    virtual void showSyncingLoading() = 0;
    virtual void hideSyncingLoading() = 0;
    /// A quiet line at the foot of the list, with "Try Again", which asks for a round of all blogs.
    virtual void showSyncFailure(const QString &text) = 0;
    virtual void hideSyncFailure() = 0;
};

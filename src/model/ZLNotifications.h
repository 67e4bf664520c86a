#pragma once

#include "model/ZLWordpressPost.h"

#include <QObject>

/// The details of a "didUpdatePost". The service posts it with none of them, outcomes with both.
struct UpdatedPostInfo {
    PostPtr originalPost;
    LocalPostPtr localPost;
};

/// The program's named notifications as typed signals, on one object that is handed down.
class ZLNotifications : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    // remote outcomes
    void didPublishPost(const PostPtr &post);
    void didUpdatePost(const PostPtr &post, const UpdatedPostInfo &info);
    void didFailToUploadPost(const PostPtr &post);
    // steps of an upload
    void syncingTaxonomiesPostStatus(const PostPtr &post);
    void syncingImagesPostStatus(const PostPtr &post);
    void syncingContentPostStatus(const PostPtr &post);
    // rows and blogs
    void didUpdatePosts();
    void didSyncPosts();
    void didDeletePost(); ///< asked for; the blog may still refuse
    /// The blog has deleted this post, or has not, perhaps since it refused the login.
    void deletionDidEnd(const QUrl &localFile, bool wasRefused = false);
    void openNewPost();
    void changingBlog();
    void didChangeBlog();
    void didConnectNewBlog();
    // windows
    void didPressPublishButton();
};

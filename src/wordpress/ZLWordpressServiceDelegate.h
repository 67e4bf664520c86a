#pragma once

#include "model/ZLWordpressPost.h"
#include "store/Account.h"
#include "xmlrpc/XMLRPCValue.h"

class ZLWordpressService;

/// Receives the outcomes of a service, on the main thread. Never owned. Comment outcomes come with the comments.
class ZLWordpressServiceDelegate {
public:
    virtual ~ZLWordpressServiceDelegate() = default;
    virtual void didReconnectAccount(ZLWordpressService *, const AccountPtr &) { }
    virtual void didGetTaxonomies(ZLWordpressService *, const QList<ZLTaxonomy> &) { }
    virtual void didSyncBlogWithName(ZLWordpressService *, const QString &) { }
    virtual void didFailToUploadPost(ZLWordpressService *, const PostPtr &) { }
    virtual void didFailToPerformRequest(ZLWordpressService *, int /*type*/, const ZLError &) { }
    virtual void didGetPosts(ZLWordpressService *, const QList<PostPtr> &) { }
    virtual void didPublishPost(ZLWordpressService *, const PostPtr & /*remote*/, const PostPtr & /*original*/) { }
    virtual void didUpdatePost(ZLWordpressService *, const PostPtr &) { }
    virtual void didPublishDraftPost(ZLWordpressService *, const PostPtr &) { }
    virtual void didDeletePost(ZLWordpressService *, const PostPtr &) { }
    /// After didFailToPerformRequest(), which does not name the post.
    virtual void didFailToDeletePost(ZLWordpressService *, const PostPtr &, const ZLError &) { }
    virtual void didUploadImage(ZLWordpressService *, const QUrl &) { }
    virtual void didCreateCategory(ZLWordpressService *, const QString &) { }
    virtual void didGetProfile(ZLWordpressService *, const XMLRPCValue &) { }
    virtual void didGetUserBlogs(ZLWordpressService *, const XMLRPCValue &) { }
    virtual void didGetBlogOptions(ZLWordpressService *, const XMLRPCValue &) { }
    virtual void makePreviewTemplateForPost(const PostPtr &) { }
    /// How far the upload of a post has come, from 0 to 1; for the overlay.
    virtual void didSendBodyData(ZLWordpressService *, const PostPtr &, float) { }
};

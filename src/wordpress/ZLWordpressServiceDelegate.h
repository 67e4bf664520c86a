#pragma once

#include "model/ZLWordpressPost.h"
#include "wordpress/ZLWordpressServiceRequestType.h"
#include "xmlrpc/XMLRPCValue.h"

class ZLWordpressService;

/// Receives the outcomes of a service, on the main thread. Never owned. Comment outcomes come with the comments.
class ZLWordpressServiceDelegate {
public:
    virtual ~ZLWordpressServiceDelegate() = default;
    /// The service's share of a round has ended, whatever failed.
    virtual void didSyncBlogWithName(ZLWordpressService *, const QString &) { }
    virtual void didFailToUploadPost(ZLWordpressService *, const PostPtr &) { }
    /// After didFailToUploadPost(): the post has changed on the blog, and that version lies beside the file now.
    virtual void didFindConflict(ZLWordpressService *, const PostPtr &) { }
    virtual void didFailToPerformRequest(ZLWordpressService *, ZLWordpressServiceRequestType, const ZLError &) { }
    virtual void didPublishPost(ZLWordpressService *, const PostPtr & /*remote*/, const PostPtr & /*original*/) { }
    virtual void didUpdatePost(ZLWordpressService *, const PostPtr &) { }
    virtual void didPublishDraftPost(ZLWordpressService *, const PostPtr &) { }
    virtual void didDeletePost(ZLWordpressService *, const PostPtr &) { }
    /// After didFailToPerformRequest(), which does not name the post.
    virtual void didFailToDeletePost(ZLWordpressService *, const PostPtr &, const ZLError &) { }
    virtual void didGetBlogOptions(ZLWordpressService *, const XMLRPCValue &) { }
    virtual void makePreviewTemplateForPost(const PostPtr &) { }
    /// How far the upload of a post has come, from 0 to 1; for the overlay.
    virtual void didSendBodyData(ZLWordpressService *, const PostPtr &, float) { }
};

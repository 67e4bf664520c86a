#pragma once

#include "wordpress/ZLWordpressXMLRPCRequest.h"

class BlogPostSync;
class PublishingPipeline;
class SyncGroup;
class TaxonomySync;
class ZLClock;
class ZLNotifications;
class ZLWordpressServiceDelegate;
struct ZLServiceEnvironment;

/// Takes every reply and failure of a service's calls to where its type belongs.
class ReplyDispatch : public ReplyReceiver {
public:
    struct Collaborators {
        PublishingPipeline &publishing;
        BlogPostSync &posts;
        TaxonomySync &taxonomies;
        SyncGroup &group;
    };
    ReplyDispatch(
        ZLWordpressService &service, const ZLServiceEnvironment &environment, const Collaborators &collaborators);

    void didReceiveResponse(const ZLWordpressXMLRPCRequest &call, const ResponsePtr &response) override;
    void didFailWithError(const ZLWordpressXMLRPCRequest &call, const ZLError &error) override;
    void didSendBodyData(const ZLWordpressXMLRPCRequest &call, float progress) override;

private:
    using Call = ZLWordpressXMLRPCRequest;
    using Handler = void (ReplyDispatch::*)(const Call &, const XMLRPCValue &);
    static Handler handlerForType(int type);

    void didReceiveFault(const Call &call, const XMLRPCResponse &response);
    void noteEdit(ZLWordpressPost &post, const QDateTime &answered) const;
    void tellFailure(const Call &call, const ZLError &error);
    void didFailToReadBack(const Call &call);
    ZLWordpressServiceDelegate &delegate() const;

    void getPosts(const Call &call, const XMLRPCValue &object);
    void getPost(const Call &call, const XMLRPCValue &object);
    void publishPost(const Call &call, const XMLRPCValue &object);
    void updatePost(const Call &call, const XMLRPCValue &object);
    void publishDraftPost(const Call &call, const XMLRPCValue &object);
    void deletePost(const Call &call, const XMLRPCValue &object);
    void getCategories(const Call &call, const XMLRPCValue &object);
    void getTags(const Call &call, const XMLRPCValue &object);
    void uploadImage(const Call &call, const XMLRPCValue &object);
    void uploadImageFromURL(const Call &call, const XMLRPCValue &object);
    void newCategory(const Call &call, const XMLRPCValue &object);
    void newCategoryForPost(const Call &call, const XMLRPCValue &object);
    void publishPostForPreview(const Call &call, const XMLRPCValue &object);
    void getPostForPreview(const Call &call, const XMLRPCValue &object);
    void deletePostForPreview(const Call &call, const XMLRPCValue &object);
    void getProfile(const Call &call, const XMLRPCValue &object);
    void getUserBlogs(const Call &call, const XMLRPCValue &object);
    void syncPosts(const Call &call, const XMLRPCValue &object);
    void getOptions(const Call &call, const XMLRPCValue &object);
    void reconnect(const Call &call, const XMLRPCValue &object);
    void syncCategories(const Call &call, const XMLRPCValue &object);
    void syncTags(const Call &call, const XMLRPCValue &object);

    ZLWordpressService &m_service;
    ZLNotifications &m_notifications;
    const ZLClock &m_clock;
    Collaborators m_to;
};

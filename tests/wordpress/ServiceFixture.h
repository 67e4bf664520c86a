#pragma once

#include "support/FakeBlog.h"
#include "support/TestEnvironment.h"
#include "support/XMLRPCDocuments.h"

/// Writes down what a service tells, one line for each call.
class RecordingDelegate : public ZLWordpressServiceDelegate {
public:
    QStringList journal;
    PostPtr remote; ///< of the last publication
    QList<PostPtr> posts;
    QList<ZLTaxonomy> taxonomies;
    XMLRPCValue struct_; ///< options, profile or blogs
    ZLError error;
    QList<float> progress;
    std::function<void()> onFailure; ///< run inside the failure calls

    void didReconnectAccount(ZLWordpressService *, const AccountPtr &account) override;
    void didGetTaxonomies(ZLWordpressService *, const QList<ZLTaxonomy> &list) override;
    void didSyncBlogWithName(ZLWordpressService *, const QString &name) override;
    void didFailToUploadPost(ZLWordpressService *, const PostPtr &post) override;
    void didFailToPerformRequest(ZLWordpressService *, int type, const ZLError &failure) override;
    void didGetPosts(ZLWordpressService *, const QList<PostPtr> &list) override;
    void didPublishPost(ZLWordpressService *, const PostPtr &post, const PostPtr &original) override;
    void didUpdatePost(ZLWordpressService *, const PostPtr &post) override;
    void didPublishDraftPost(ZLWordpressService *, const PostPtr &post) override;
    void didDeletePost(ZLWordpressService *, const PostPtr &post) override;
    void didUploadImage(ZLWordpressService *, const QUrl &url) override;
    void didCreateCategory(ZLWordpressService *, const QString &name) override;
    void didGetProfile(ZLWordpressService *, const XMLRPCValue &value) override;
    void didGetUserBlogs(ZLWordpressService *, const XMLRPCValue &value) override;
    void didGetBlogOptions(ZLWordpressService *, const XMLRPCValue &value) override;
    void makePreviewTemplateForPost(const PostPtr &post) override;
    void didSendBodyData(ZLWordpressService *, const PostPtr &, float fraction) override;
};

/// A pretended blog and a service connected to it, whose notifications go into the delegate's journal as well.
class ServiceFixture {
public:
    ServiceFixture();

    TestEnvironment environment;
    FakeBlog blog;
    AccountPtr account;
    RecordingDelegate delegate;
    ServicePtr service;

    ServicePtr makeService(const AccountPtr &of);
    QStringList &journal() { return delegate.journal; }
    /// The parameters of a call as one line.
    static QString parameters(const FakeBlog::Call &call) { return XMLRPCDocuments::described(call.parameters); }
    /// Lets everything that is under way happen, but for what the network holds back.
    void settle();

    static PostPtr post(const QString &title, const QString &content);
};

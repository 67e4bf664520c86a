#pragma once

#include "support/FakeBlog.h"
#include "support/TestClasses.h"
#include "support/TestEnvironment.h"
#include "support/XMLRPCDocuments.h"

/// Writes down what a service tells, one line for each call.
class RecordingDelegate : public ZLWordpressServiceDelegate {
public:
    QStringList journal;
    PostPtr remote; ///< of the last publication
    ZLError error; ///< of the last failure
    QList<float> progress;
    std::function<void()> onFailure = [] {}; ///< run inside the failure calls

    void note(const QString &what, const PostPtr &post)
    {
        journal.append(what + u' ' + (post ? post->title : u"nothing"_qs));
    }

    void didSyncBlogWithName(ZLWordpressService *, const QString &name) override
    {
        journal.append(u"synced "_qs + name);
    }
    void didFailToUploadPost(ZLWordpressService *, const PostPtr &post) override
    {
        note(u"upload failed:"_qs, post);
        onFailure();
    }
    void didFailToPerformRequest(
        ZLWordpressService *, ZLWordpressServiceRequestType type, const ZLError &failure) override
    {
        journal.append(u"request %1 failed: %2 %3"_qs.arg(type).arg(failure.domain).arg(failure.code));
        error = failure;
        onFailure();
    }
    void didPublishPost(ZLWordpressService *, const PostPtr &post, const PostPtr &original) override
    {
        remote = post;
        note(u"published"_qs, original);
    }
    void didUpdatePost(ZLWordpressService *, const PostPtr &post) override { note(u"updated"_qs, post); }
    void didPublishDraftPost(ZLWordpressService *, const PostPtr &post) override { note(u"published draft"_qs, post); }
    void didDeletePost(ZLWordpressService *, const PostPtr &post) override { note(u"deleted"_qs, post); }
    void didFindConflict(ZLWordpressService *, const PostPtr &post) override { note(u"conflict:"_qs, post); }
    void didGetBlogOptions(ZLWordpressService *, const XMLRPCValue &) override { journal.append(u"got options"_qs); }
    void makePreviewTemplateForPost(const PostPtr &post) override
    {
        remote = post;
        note(u"preview of"_qs, post);
    }
    void didSendBodyData(ZLWordpressService *, const PostPtr &, float fraction) override { progress.append(fraction); }
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
    void addTaxonomy(int type, const QString &name, const QString &id)
    {
        account->taxonomies.append(std::make_shared<Taxonomy>(Taxonomy{name, id, type}));
    }
    /// The parameters of a call as one line.
    static QString parameters(const FakeBlog::Call &call) { return XMLRPCDocuments::described(call.parameters); }
    /// Lets everything that is under way happen, but for what the network holds back.
    void settle();

    static PostPtr post(const QString &title, const QString &content);
};

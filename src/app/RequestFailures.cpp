#include "app/RequestFailures.h"

#include "app/BlogLogins.h"
#include "wordpress/ServiceFailures.h"

namespace {

/// The calls of a round. Nobody waits for their answer in front of the screen.
bool isOfRound(ZLWordpressServiceRequestType type)
{
    return type == ZLWordpressServiceRequestTypeSyncPosts || type == ZLWordpressServiceRequestTypeSyncCategories
        || type == ZLWordpressServiceRequestTypeSyncTags;
}

bool isPreview(ZLWordpressServiceRequestType type)
{
    return type == ZLWordpressServiceRequestTypePublishPostForPreview
        || type == ZLWordpressServiceRequestTypeGetPostForPreview
        || type == ZLWordpressServiceRequestTypeDeletePostForPreview;
}

QString whatFailed(ZLWordpressServiceRequestType type)
{
    switch (type) {
    case ZLWordpressServiceRequestTypePublishPost:
    case ZLWordpressServiceRequestTypeUpdatePost:
    case ZLWordpressServiceRequestTypePublishDraftPost:
    case ZLWordpressServiceRequestTypeUploadImageFromURL:
        return u"The post could not be sent to “%1”."_qs;
    case ZLWordpressServiceRequestTypeGetPost:
        return u"“%1” has the post, but did not give it back."_qs;
    case ZLWordpressServiceRequestTypeDeletePost:
        return u"The post could not be deleted on “%1”."_qs;
    default:
        return u"“%1” could not do what it was asked."_qs;
    }
}

} // namespace

RequestFailures::RequestFailures(AppEnvironment &environment, BlogLogins &logins, SyncRounds &rounds)
    : m_environment(environment)
    , m_logins(logins)
    , m_rounds(rounds)
{
}

void RequestFailures::didFailToPerformRequest(
    ZLWordpressService *service, ZLWordpressServiceRequestType type, const ZLError &error)
{
    ZLLog(u"request failed! %1"_qs.arg(error.description));
    ZLLog(u"requestType: %1"_qs.arg(type));
    ZLLog(u"error code is %1: "_qs.arg(error.code));
    if (isPreview(type))
        service->isGeneratingPreview = false;
    const ServicePtr living = service->shared_from_this();
    if (LoginTry::isRefusal(error))
        m_logins.didRefuse(living, [this, living, type, error] { tell(living, type, error); });
    else
        tell(living, type, error);
}

void RequestFailures::tell(const ServicePtr &service, ZLWordpressServiceRequestType type, const ZLError &error)
{
    if (isOfRound(type)) {
        m_rounds.didFail(*service, error);
        return;
    }
    if (type == ZLWordpressServiceRequestTypeDeletePost && ServiceFailures::isNotFound(error))
        return; // the offer to delete the copy here says it
    m_environment.windows.prompts->alert(whatFailed(type).arg(service->blogName),
        u"%1\n\nNothing is lost: the post is on this computer, and you can %2."_qs.arg(
            error.description, ServiceFailures::isGone(error) ? u"publish it as a new one"_qs : u"try again"_qs));
}

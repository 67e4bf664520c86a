#include "wordpress/SyncGroup.h"

#include "wordpress/ServiceCalls.h"
#include "wordpress/ZLWordpressService.h"

SyncGroup::SyncGroup(ZLWordpressService &service, ServiceCalls &calls)
    : m_service(service)
    , m_calls(calls)
{
}

void SyncGroup::finish(const RequestPtr &request)
{
    m_syncRequests.removeOne(request);
    // A late reply of an earlier round finds nothing to remove, and still says the end when nothing is under way.
    if (m_syncRequests.isEmpty())
        tellEnd();
}

void SyncGroup::didFailSyncPostsForRequest(const RequestPtr &request, const ZLError &error)
{
    if (error.code == 403 || error.code == 425)
        return;
    finish(request);
}

void SyncGroup::abandon()
{
    m_syncRequests.clear();
    tellEnd();
}

void SyncGroup::stop()
{
    m_calls.cancel(
        [this](const ZLWordpressXMLRPCRequest &call) { return m_syncRequests.contains(call.currentRequest); });
    abandon();
}

void SyncGroup::tellEnd()
{
    if (m_service.delegate)
        m_service.delegate->didSyncBlogWithName(&m_service, m_service.blogName);
}

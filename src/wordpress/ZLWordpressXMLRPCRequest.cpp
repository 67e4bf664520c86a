#include "wordpress/ZLWordpressXMLRPCRequest.h"

#include "wordpress/ServiceFailures.h"
#include "wordpress/ZLWordpressService.h"

ZLWordpressXMLRPCRequest::ZLWordpressXMLRPCRequest(
    RequestPtr request, ZLWordpressService &service, CallProgress progress)
    : m_request(std::move(request))
    , m_progress(std::move(progress))
    , m_service(&service)
{
}

void ZLWordpressXMLRPCRequest::spawnConnectionXMLRPCRequest(XMLRPCConnectionManager &connections)
{
    m_connections = &connections;
    const auto self = weak_from_this().lock();
    m_connectionIdentifier = connections.spawnConnectionWithXMLRPCRequest(m_request, self);
}

void ZLWordpressXMLRPCRequest::cancel()
{
    if (m_answered)
        return;
    const auto self = weak_from_this().lock();
    if (m_connections)
        m_connections->closeConnectionForIdentifier(m_connectionIdentifier);
    take(failure(ServiceFailures::cancelled()));
}

void ZLWordpressXMLRPCRequest::didReceiveResponse(const RequestPtr &, const ResponsePtr &response)
{
    take(response->isFault() ? CallAnswer(failure(ServiceFailures::ofFault(*response))) : CallAnswer(response));
}

void ZLWordpressXMLRPCRequest::didFailWithError(const RequestPtr &, const ZLError &error)
{
    take(failure(error));
}

void ZLWordpressXMLRPCRequest::didSendBodyData(const RequestPtr &, float progress)
{
    if (!m_answered && m_progress)
        m_progress(progress);
}

void ZLWordpressXMLRPCRequest::take(const CallAnswer &outcome)
{
    if (m_answered)
        return;
    m_answered = true;
    // A delegate may let go of the service: it lives until the answer is handled.
    const auto service = m_service ? m_service->weak_from_this().lock() : nullptr;
    answer.give(outcome);
}

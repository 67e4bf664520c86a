#include "wordpress/ZLWordpressXMLRPCRequest.h"

#include "platform/ZLLog.h"
#include "wordpress/ZLWordpressService.h"

ZLWordpressXMLRPCRequest::ZLWordpressXMLRPCRequest(
    const RequestPtr &request, int type, const CallInfo &info, ZLWordpressService &service, ReplyReceiver &receiver)
    : currentRequest(request)
    , currentRequestType(type)
    , additionalInfo(info)
    , m_service(&service)
    , m_receiver(receiver)
{
}

void ZLWordpressXMLRPCRequest::spawnConnectionXMLRPCRequest(XMLRPCConnectionManager &connections)
{
    m_connections = &connections;
    const std::shared_ptr<ZLWordpressXMLRPCRequest> self = weak_from_this().lock();
    m_connectionIdentifier = connections.spawnConnectionWithXMLRPCRequest(currentRequest, self);
}

void ZLWordpressXMLRPCRequest::cancel()
{
    m_answered = true;
    closeConnection();
}

bool ZLWordpressXMLRPCRequest::isForCurrentBlog() const
{
    return m_service && currentRequest->URL() == m_service->blogApiURL();
}

void ZLWordpressXMLRPCRequest::closeConnection()
{
    if (m_connections)
        m_connections->closeConnectionForIdentifier(m_connectionIdentifier);
}

void ZLWordpressXMLRPCRequest::didReceiveResponse(const RequestPtr &, const ResponsePtr &response)
{
    // A delegate may let go of the service, and closing may let go of this call: both live until the answer is handled.
    const auto self = weak_from_this().lock();
    if (m_answered || !m_service)
        return;
    m_answered = true;
    const auto service = m_service->weak_from_this().lock();
    m_receiver.didReceiveResponse(*this, response);
}

void ZLWordpressXMLRPCRequest::didFailWithError(const RequestPtr &, const ZLError &error)
{
    const auto self = weak_from_this().lock();
    if (m_answered)
        return;
    m_answered = true;
    ZLLog(QStringLiteral("didFailWithError"));
    ZLLog(QStringLiteral("requestTYpe: %1").arg(currentRequestType)); // spelt so on purpose: logs are searched for it
    closeConnection();
    if (!m_service)
        return;
    const auto service = m_service->weak_from_this().lock();
    m_receiver.didFailWithError(*this, error);
}

void ZLWordpressXMLRPCRequest::didSendBodyData(const RequestPtr &, float progress)
{
    if (m_answered || !m_service)
        return;
    const auto service = m_service->weak_from_this().lock();
    m_receiver.didSendBodyData(*this, progress);
}

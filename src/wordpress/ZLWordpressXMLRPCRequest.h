#pragma once

#include "wordpress/Later.h"
#include "xmlrpc/XMLRPCConnectionManager.h"

#include <QPointer>
#include <functional>

class ZLWordpressService;

/// What a call came to: the blog's answer, which has an object, or why there is none.
using CallAnswer = Result<ResponsePtr>;
using CallProgress = std::function<void(float)>; ///< from 0 to 1

/// One call of a service. Its connection keeps it alive. It is answered once, be it by cancel().
class ZLWordpressXMLRPCRequest : public XMLRPCConnectionDelegate,
                                 public std::enable_shared_from_this<ZLWordpressXMLRPCRequest> {
public:
    ZLWordpressXMLRPCRequest(RequestPtr request, ZLWordpressService &service, CallProgress progress);

    const Later<CallAnswer> answer;

    void spawnConnectionXMLRPCRequest(XMLRPCConnectionManager &connections);
    void cancel();
    bool isAnswered() const { return m_answered; }

    void didReceiveResponse(const RequestPtr &request, const ResponsePtr &response) override;
    void didFailWithError(const RequestPtr &request, const ZLError &error) override;
    void didSendBodyData(const RequestPtr &request, float progress) override;

private:
    void take(const CallAnswer &outcome);

    const RequestPtr m_request;
    CallProgress m_progress;
    QString m_connectionIdentifier;
    QPointer<XMLRPCConnectionManager> m_connections;
    QPointer<ZLWordpressService> m_service;
    bool m_answered = false;
};

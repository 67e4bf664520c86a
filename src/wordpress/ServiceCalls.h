#pragma once

#include "store/Account.h"
#include "wordpress/ZLWordpressXMLRPCRequest.h"

/// Builds the calls of one service, sends them and knows which are still unanswered.
class ServiceCalls {
public:
    ServiceCalls(ZLWordpressService &service, XMLRPCConnectionManager &connections);

    void setReceiver(ReplyReceiver *receiver) { m_receiver = receiver; }

    /// User name and password; the list ends at the first that is absent.
    XMLRPCArray authenticationParameters() const;
    /// A call whose parameters are "", user, pass and then `rest`.
    RequestPtr blogRequest(const QString &method, XMLRPCArray rest = {}) const;
    /// A call whose parameters are the post's id, user and pass.
    RequestPtr postFirstRequest(const QString &method, const QString &postId) const;
    /// A call with exactly these parameters.
    RequestPtr request(const QString &method, XMLRPCArray parameters) const;

    void spawn(const RequestPtr &request, int type, const CallInfo &info = {});

    using Predicate = std::function<bool(const ZLWordpressXMLRPCRequest &)>;
    QList<ServiceCallPtr> unanswered() const;
    bool isUnanswered(const Predicate &matches) const;
    /// Ends these calls; nothing that arrives for them is looked at.
    void cancel(const Predicate &matches);

private:
    XMLRPCArray authenticatedParameters(const QString &first, XMLRPCArray rest) const;

    ZLWordpressService &m_service;
    XMLRPCConnectionManager &m_connections;
    ReplyReceiver *m_receiver = nullptr;
    QList<std::weak_ptr<ZLWordpressXMLRPCRequest>> m_calls;
};

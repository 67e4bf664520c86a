#include "wordpress/ServiceCalls.h"

#include "wordpress/ZLWordpressService.h"

ServiceCalls::ServiceCalls(ZLWordpressService &service, XMLRPCConnectionManager &connections)
    : m_service(service)
    , m_connections(connections)
{
}

XMLRPCArray ServiceCalls::authenticationParameters() const
{
    XMLRPCArray parameters;
    if (m_service.username.isNull())
        return parameters;
    parameters.emplace_back(m_service.username);
    if (!m_service.password.isNull())
        parameters.emplace_back(m_service.password);
    return parameters;
}

RequestPtr ServiceCalls::request(const QString &method, XMLRPCArray parameters) const
{
    auto request = std::make_shared<XMLRPCRequest>(m_service.blogApiURL());
    request->setMethod(method, std::move(parameters));
    return request;
}

XMLRPCArray ServiceCalls::authenticatedParameters(const QString &first, XMLRPCArray rest) const
{
    XMLRPCArray parameters = authenticationParameters();
    parameters.insert(parameters.begin(), first);
    parameters.insert(parameters.end(), std::make_move_iterator(rest.begin()), std::make_move_iterator(rest.end()));
    return parameters;
}

RequestPtr ServiceCalls::blogRequest(const QString &method, XMLRPCArray rest) const
{
    // The blog's id comes first; no blog looks at it.
    return request(method, authenticatedParameters(QStringLiteral(""), std::move(rest)));
}

RequestPtr ServiceCalls::postFirstRequest(const QString &method, const QString &postId) const
{
    return request(method, authenticatedParameters(postId, {}));
}

void ServiceCalls::spawn(const RequestPtr &request, int type, const CallInfo &info)
{
    m_calls.removeIf([](const auto &call) { return call.expired() || call.lock()->isAnswered(); });
    CallInfo carried = info;
    carried.account = m_service.account;
    carried.blogName = m_service.blogName;
    const auto call = std::make_shared<ZLWordpressXMLRPCRequest>(request, type, carried, m_service, *m_receiver);
    m_calls.append(call);
    call->spawnConnectionXMLRPCRequest(m_connections);
}

QList<ServiceCallPtr> ServiceCalls::unanswered() const
{
    QList<ServiceCallPtr> calls;
    for (const auto &held : m_calls) {
        const ServiceCallPtr call = held.lock();
        if (call && !call->isAnswered())
            calls.append(call);
    }
    return calls;
}

bool ServiceCalls::isUnanswered(const Predicate &matches) const
{
    const QList<ServiceCallPtr> calls = unanswered();
    return std::any_of(calls.begin(), calls.end(), [&](const ServiceCallPtr &call) { return matches(*call); });
}

void ServiceCalls::cancel(const Predicate &matches)
{
    for (const ServiceCallPtr &call : unanswered()) {
        if (matches(*call))
            call->cancel();
    }
}

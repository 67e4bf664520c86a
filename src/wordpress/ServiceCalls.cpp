#include "wordpress/ServiceCalls.h"

#include "wordpress/ZLWordpressService.h"

#include <QThreadPool>
#include <QTimer>

ServiceCalls::ServiceCalls(ZLWordpressService &service, XMLRPCConnectionManager &connections)
    : m_service(service)
    , m_connections(connections)
{
}

ServiceCalls::~ServiceCalls()
{
    cancelAll();
}

RequestPtr ServiceCalls::request(const QString &method, const QString &first, XMLRPCArray rest) const
{
    XMLRPCArray parameters{first};
    // The credentials end at the first that is absent.
    if (!m_service.username.isNull()) {
        parameters.emplace_back(m_service.username);
        if (!m_service.password.isNull())
            parameters.emplace_back(m_service.password);
    }
    parameters.insert(parameters.end(), std::make_move_iterator(rest.begin()), std::make_move_iterator(rest.end()));
    auto request = std::make_shared<XMLRPCRequest>(m_service.blogApiURL());
    request->setMethod(method, std::move(parameters));
    return request;
}

RequestPtr ServiceCalls::blogRequest(const QString &method, XMLRPCArray rest) const
{
    // The blog's id comes first; no blog looks at it.
    return request(method, QStringLiteral(""), std::move(rest));
}

RequestPtr ServiceCalls::postFirstRequest(const QString &method, const QString &postId) const
{
    return request(method, postId, {});
}

Later<CallAnswer> ServiceCalls::send(const RequestPtr &request, CallProgress progress)
{
    const auto call = std::make_shared<ZLWordpressXMLRPCRequest>(request, m_service, std::move(progress));
    m_waits.remove_if([](const Wait &earlier) { return earlier.hasEnded(); });
    m_waits.push_back({[answer = call->answer] { return answer.isGiven(); },
        [held = std::weak_ptr(call)] {
            if (const auto call = held.lock())
                call->cancel();
        }});
    call->spawnConnectionXMLRPCRequest(m_connections);
    return call->answer;
}

Later<Result<bool>> ServiceCalls::nextTurn()
{
    const Later<Result<bool>> turn;
    note(turn);
    QTimer::singleShot(0, &m_context, [this, turn] {
        const auto service = heldService();
        turn.give(true);
    });
    return turn;
}

void ServiceCalls::cancelAll()
{
    const std::list<Wait> waits = std::exchange(m_waits, {});
    for (const Wait &wait : waits)
        wait.cancel();
}

void ServiceCalls::run(std::function<void()> job)
{
    QThreadPool::globalInstance()->start(std::move(job));
}

std::shared_ptr<ZLWordpressService> ServiceCalls::heldService() const
{
    return m_service.weak_from_this().lock();
}

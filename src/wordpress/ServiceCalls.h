#pragma once

#include "wordpress/ServiceFailures.h"
#include "wordpress/ZLWordpressXMLRPCRequest.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QFuture>
#include <QPointer>
#include <QPromise>
#include <list>

/// What one task of a service (an upload, a round's share) waits for: calls, and work on other threads. It ends
/// together: a flow that waits when all is cancelled, be it by the end of this object, goes on at once with a failure
/// that ServiceFailures::isCancelled(), and has to end without looking at anything.
class ServiceCalls {
public:
    ServiceCalls(ZLWordpressService &service, XMLRPCConnectionManager &connections);
    ~ServiceCalls();
    ServiceCalls(const ServiceCalls &) = delete;
    ServiceCalls &operator=(const ServiceCalls &) = delete;

    /// A call whose parameters are "", user, pass and then `rest`.
    RequestPtr blogRequest(const QString &method, XMLRPCArray rest = {}) const;
    /// A call whose parameters are the post's id, user and pass.
    RequestPtr postFirstRequest(const QString &method, const QString &postId) const;

    Later<CallAnswer> send(const RequestPtr &request, CallProgress progress = {});
    /// Runs the function on a worker. It may use only what it holds.
    template <class T>
    Later<Result<T>> work(std::function<Result<T>()> function);
    /// Gives the event loop its turn.
    Later<Result<bool>> nextTurn();
    void cancelAll();

private:
    RequestPtr request(const QString &method, const QString &first, XMLRPCArray rest) const;
    template <class T>
    void note(const Later<Result<T>> &wait);
    void run(std::function<void()> job);
    std::shared_ptr<ZLWordpressService> heldService() const;

    struct Wait {
        std::function<bool()> hasEnded;
        std::function<void()> cancel;
    };
    ZLWordpressService &m_service;
    XMLRPCConnectionManager &m_connections;
    std::list<Wait> m_waits;
    QObject m_context; ///< ends what workers have not delivered yet
};

template <class T>
void ServiceCalls::note(const Later<Result<T>> &wait)
{
    m_waits.remove_if([](const Wait &earlier) { return earlier.hasEnded(); });
    m_waits.push_back(
        {[wait] { return wait.isGiven(); }, [wait] { wait.give(failure(ServiceFailures::cancelled())); }});
}

template <class T>
Later<Result<T>> ServiceCalls::work(std::function<Result<T>()> function)
{
    const Later<Result<T>> done;
    note(done);
    const auto promise = std::make_shared<QPromise<Result<T>>>();
    // The context is one that lives: a future must not meet a context that has gone.
    const QPointer<QObject> self(&m_context);
    promise->future().then(QCoreApplication::instance(), [this, self, done](const Result<T> &result) {
        if (!self)
            return;
        const auto service = heldService(); // a delegate may let go of it
        done.give(result);
    });
    promise->start();
    run([promise, function = std::move(function)] {
        promise->addResult(function());
        promise->finish();
    });
    return done;
}

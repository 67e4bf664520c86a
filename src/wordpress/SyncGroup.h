#pragma once

#include "platform/ZLError.h"
#include "xmlrpc/XMLRPCRequest.h"

class ServiceCalls;
class ZLWordpressService;

/// The calls of a sync round that are not answered yet, compared by identity. A round ends when the list becomes empty.
class SyncGroup {
public:
    SyncGroup(ZLWordpressService &service, ServiceCalls &calls);

    void add(const RequestPtr &request) { m_syncRequests.append(request); }
    void clear() { m_syncRequests.clear(); }
    bool isEmpty() const { return m_syncRequests.isEmpty(); }

    /// A reply has been absorbed: takes the call out, and ends the round when it was the last.
    void finish(const RequestPtr &request);
    /// A call was refused. A login in doubt (403, 425) leaves it in the list: the login sheet ends that wait.
    void didFailSyncPostsForRequest(const RequestPtr &request, const ZLError &error);
    /// Gives up on the round and says that it has ended.
    void abandon();
    /// As abandon(), and ends the calls too.
    void stop();

private:
    void tellEnd();

    ZLWordpressService &m_service;
    ServiceCalls &m_calls;
    QList<RequestPtr> m_syncRequests;
};

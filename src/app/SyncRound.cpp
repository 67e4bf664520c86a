#include "app/SyncRound.h"

void SyncRound::add(const ServicePtr &service)
{
    if (m_waitingFor.contains(service))
        return;
    m_waitingFor.append(service);
    service->syncBlogPosts();
    service->syncBlogTaxonomies();
}

void SyncRound::didSync(const ZLWordpressService *service)
{
    const auto removed = m_waitingFor.removeIf([service](const ServicePtr &entry) { return entry.get() == service; });
    if (removed && isOver())
        Q_EMIT ended();
}

void SyncRound::stop()
{
    for (const ServicePtr &service : QList<ServicePtr>(m_waitingFor)) {
        service->stopSync();
        didSync(service.get()); // if it had nothing left to report
    }
}

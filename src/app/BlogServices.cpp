#include "app/BlogServices.h"

#include <QPointer>

BlogServices::BlogServices(AppEnvironment &environment, AccountStore &store, ZLWordpressServiceDelegate &delegate)
    : m_connections(environment.platform.network)
    , m_serviceEnvironment{m_connections, environment.platform.keychain, environment.platform.files,
          environment.notifications, environment.platform.clock, environment.documents,
          [&store] { return store.managedObjectContext(); }}
    , m_delegate(delegate)
{
}

BlogServices::~BlogServices()
{
    // Before the connections that they stand on.
    qDeleteAll(findChildren<ZLWordpressService *>(Qt::FindDirectChildrenOnly));
}

ServicePtr BlogServices::serviceOf(const AccountPtr &account)
{
    if (!account)
        return nullptr;
    for (const ServicePtr &service : std::as_const(m_services)) {
        if (service->account == account)
            return service;
    }
    m_services.append(own(new ZLWordpressService(account, m_serviceEnvironment, this)));
    return m_services.last();
}

QStringList BlogServices::postsOnTheirWay() const
{
    QStringList titles;
    for (const ServicePtr &service : m_services) {
        for (const PostUpload *upload : service->uploads())
            titles.append(upload->post()->title);
    }
    return titles;
}

void BlogServices::forget(const AccountPtr &account)
{
    const auto found = std::find_if(
        m_services.begin(), m_services.end(), [&](const ServicePtr &service) { return service->account == account; });
    if (found == m_services.end())
        return;
    const ServicePtr service = *found;
    m_services.erase(found);
    service->cancelUploads();
    service->stopSync();
    service->delegate = nullptr;
}

ServicePtr BlogServices::serviceForLogin(const QString &blogURL)
{
    return own(new ZLWordpressService(ZLWordpressService::apiURLOfBlog(blogURL), m_serviceEnvironment, this));
}

ServicePtr BlogServices::own(ZLWordpressService *service)
{
    service->delegate = &m_delegate;
    // The last reference is often dropped in a call that the service itself is making to its delegate.
    return ServicePtr(service, [alive = QPointer(service)](ZLWordpressService *) {
        if (!alive)
            return;
        alive->delegate = nullptr;
        alive->deleteLater();
    });
}

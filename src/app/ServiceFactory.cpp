#include "app/ServiceFactory.h"

#include <QPointer>

ServiceFactory::ServiceFactory(AppEnvironment &environment, AccountStore &store, ZLWordpressServiceDelegate &delegate)
    : m_connections(environment.platform.network)
    , m_serviceEnvironment{m_connections, environment.platform.keychain, environment.platform.files,
          environment.notifications, environment.platform.clock, [&store] { return store.managedObjectContext(); },
          [&environment] {
              return environment.windows.compose ? environment.windows.compose->currentDocument() : DocumentPtr();
          }}
    , m_delegate(delegate)
{
}

ServiceFactory::~ServiceFactory()
{
    // Before the connections that they stand on.
    qDeleteAll(living());
}

ServicePtr ServiceFactory::serviceForAccount(const AccountPtr &account)
{
    return own(new ZLWordpressService(account, m_serviceEnvironment, this));
}

ServicePtr ServiceFactory::serviceForURL(const QUrl &apiURL)
{
    return own(new ZLWordpressService(apiURL, m_serviceEnvironment, this));
}

ServicePtr ServiceFactory::own(ZLWordpressService *service)
{
    service->delegate = &m_delegate;
    // The last reference is often dropped in a call that the service itself is making to its delegate.
    return ServicePtr(service, [alive = QPointer(service)](ZLWordpressService *) {
        if (alive)
            alive->deleteLater();
    });
}

QList<ZLWordpressService *> ServiceFactory::living() const
{
    return findChildren<ZLWordpressService *>(Qt::FindDirectChildrenOnly);
}

void ServiceFactory::cancelUploadOfPost(const PostPtr &post)
{
    for (ZLWordpressService *service : living())
        service->cancelUploadOfPost(post);
}

void ServiceFactory::retire(const ServicePtr &service)
{
    m_retired.removeIf([](const ServicePtr &earlier) { return earlier->isIdle(); });
    if (service && !m_retired.contains(service))
        m_retired.append(service);
}

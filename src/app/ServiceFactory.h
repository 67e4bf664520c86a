#pragma once

#include "app/AccountStore.h"

class ZLWordpressServiceDelegate;

/// Makes the clients of blogs, all with the controller as their delegate.
class ServiceFactory : public QObject {
    Q_OBJECT
public:
    ServiceFactory(AppEnvironment &environment, AccountStore &store, ZLWordpressServiceDelegate &delegate);
    ~ServiceFactory() override;

    ServicePtr serviceForAccount(const AccountPtr &account);
    ServicePtr serviceForURL(const QUrl &apiURL);
    /// Keeps a service that is no longer the current one: answers to its calls may still come, and a post on its way
    /// up must find the way home. One that has nothing left to do is let go with the next that retires.
    void retire(const ServicePtr &service);
    /// The user gave up on this upload, whichever service has begun it.
    void cancelUploadOfPost(const PostPtr &post);

private:
    QList<ZLWordpressService *> living() const;
    ServicePtr own(ZLWordpressService *service);

    XMLRPCConnectionManager m_connections;
    ZLServiceEnvironment m_serviceEnvironment;
    ZLWordpressServiceDelegate &m_delegate;
    QList<ServicePtr> m_retired;
};

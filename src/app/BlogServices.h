#pragma once

#include "app/AccountStore.h"

class ZLWordpressServiceDelegate;

/// The clients of the connected blogs: one for each account, for as long as there is the account. All report to the
/// controller.
class BlogServices : public QObject {
    Q_OBJECT
public:
    BlogServices(AppEnvironment &environment, AccountStore &store, ZLWordpressServiceDelegate &delegate);
    ~BlogServices() override;

    /// The account's service, made when it is first asked for; null without an account.
    ServicePtr serviceOf(const AccountPtr &account);
    const QList<ServicePtr> &services() const { return m_services; }
    /// The titles of the posts that are on their way to a blog.
    QStringList postsOnTheirWay() const;
    /// The account is gone: ends what its service still has to do, and tells of uploads that they failed.
    void forget(const AccountPtr &account);

    /// A service that only tries a login. It belongs to whoever asked for it; with it goes all that it waits for.
    ServicePtr serviceForLogin(const QString &blogURL);

    /// The calls that belong to no account's service.
    XMLRPCConnectionManager &connections() { return m_connections; }

private:
    ServicePtr own(ZLWordpressService *service);

    XMLRPCConnectionManager m_connections;
    ZLServiceEnvironment m_serviceEnvironment;
    ZLWordpressServiceDelegate &m_delegate;
    QList<ServicePtr> m_services;
};

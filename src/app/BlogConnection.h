#pragma once

#include "app/AddressLookup.h"
#include "app/BlogAddress.h"
#include "app/BlogLogins.h"
#include "app/CurrentBlog.h"
#include "app/FirstRun.h"

/// From the address that a user types to a saved account with its first sync started, one blog at a time: the address
/// is asked for and looked at, then the login, and one wp.getOptions tells whether it holds. Whatever fails leads back
/// to the address. An address that is connected already only takes a new login.
class BlogConnection : public QObject {
    Q_OBJECT
public:
    BlogConnection(AppEnvironment &environment, CurrentBlogState &state, AccountStore &store, BlogServices &services,
        BlogLogins &logins, CurrentBlog &currentBlog, FaviconLookup &favicons);

    void newAccount();
    void connectToBlogURL(const QString &typed);

private:
    enum class Outcome { Connected, Cancelled, Failed };

    QCoro::Task<void> connectBlog(std::optional<QString> typed);
    QCoro::Task<std::optional<BlogAddress>> findBlog(BlogAddress address);
    QCoro::Task<Result<QString>> lookAt(QString url);
    QCoro::Task<Outcome> logIn(BlogAddress address);
    QCoro::Task<Result<XMLRPCValue>> tryLogin(QString url, Login login);

    void didLogInAgain(const AccountPtr &account, const QString &url, const Login &login);
    void didConnect(const QString &url, const Login &login, const XMLRPCValue &options);
    AccountPtr insertAccount(
        ZLManagedObjectContext &context, const QString &url, const QString &username, const XMLRPCValue &options);
    void tell(const QString &url, const ZLError &error);
    QCoro::Task<void> offerHelp(QString message, QString host, QString article);

    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    AccountStore &m_store;
    BlogServices &m_services;
    BlogLogins &m_logins;
    CurrentBlog &m_currentBlog;
    FaviconLookup &m_favicons;
    FirstRun m_firstRun;
    bool m_isUnderWay = false;
};

#pragma once

#include "app/CurrentBlog.h"
#include "app/FirstRun.h"

/// From the address that a user types to a saved account with its first sync started.
///
/// The intro asks for the address (connectToBlogURL), the login sheet for user and password
/// (didEntryUsernameAndPassword), and one wp.getOptions tells at once whether the address answers, is a WordPress and
/// takes the login (didGetBlogOptions). A refused login leads to the error sheet and from there back to the call; any
/// other failure back to the intro.
class BlogConnection {
public:
    BlogConnection(const BlogParts &parts, CurrentBlog &currentBlog, FaviconLookup &favicons);

    void newAccount();
    void connectToBlogURL(const QString &typed);
    void didEntryUsernameAndPassword(const QString &username, const QString &password);
    void didEntryUsernameAndPasswordFromWrongSheet(const QString &username, const QString &password);
    void didPressedCancelButtonFromWrongSheet();
    void cancelConnecting();
    /// The user cancelled a sheet of connecting: the selected account is the current blog again, with its service.
    void giveUp();

    /// Whether this service is the one of the connection under way.
    bool isConnectingWith(const ZLWordpressService *service) const;
    void didGetBlogOptions(ZLWordpressService *service, const XMLRPCValue &options);
    /// The call failed: the window waits no longer.
    void didStopWaiting();
    void showLoginErrorSheet();

    /// The first fetch of the current blog.
    void getBlogData();
    void showApiError();
    void showNoWordpressError();

private:
    void tryLogin(const QString &username, const QString &password);
    void connectWithLogin();
    void returnToSelectedAccount();
    AccountPtr insertAccount(ZLManagedObjectContext &context, const XMLRPCValue &options);
    void storePassword(const AccountPtr &account);
    void welcome(const AccountPtr &account, const ServicePtr &service);
    QCoro::Task<void> offerHelp(QString message, QUrl article);

    BlogParts m_parts;
    CurrentBlog &m_currentBlog;
    FaviconLookup &m_favicons;
    FirstRun m_firstRun;
    QString m_username; ///< what was typed last
    QString m_password;
    ServicePtr m_connecting; ///< the service whose options are awaited
    ServicePtr m_connected; ///< the service to return to when the user gives up
};

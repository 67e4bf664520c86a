#pragma once

#include "app/ServiceFactory.h"

/// The login sheet. With a service it logs in again to a blog that is known; without one it belongs to a blog that is
/// being connected.
class LoginSheet {
public:
    LoginSheet(AppEnvironment &environment, CurrentBlogState &state, ServiceFactory &services);

    void openForNewBlog(const QString &blogURL);
    void openLoginForService(ZLWordpressService *service);
    bool isVisible() const;
    void close();

    /// The login button, on a sheet that has a service.
    void reconnect(const QString &username, const QString &password);
    /// The cancel button, on either kind of sheet.
    void cancel();

private:
    void forgetPasswordOf(const ZLWordpressService &service);

    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    ServiceFactory &m_services;
    ServicePtr m_service;
};

#include "app/LoginSheet.h"

LoginSheet::LoginSheet(AppEnvironment &environment, CurrentBlogState &state, ServiceFactory &services)
    : m_environment(environment)
    , m_state(state)
    , m_services(services)
{
}

void LoginSheet::openForNewBlog(const QString &blogURL)
{
    m_service.reset();
    m_environment.windows.prompts->showLoginSheet(nullptr, {}, blogURL);
}

void LoginSheet::openLoginForService(ZLWordpressService *service)
{
    m_service = service->weak_from_this().lock();
    if (m_service)
        m_environment.windows.prompts->showLoginSheet(service, service->username, service->blogName);
}

bool LoginSheet::isVisible() const
{
    return m_environment.windows.prompts->isLoginSheetVisible();
}

void LoginSheet::close()
{
    m_environment.windows.prompts->closeLoginSheet();
    m_service.reset();
}

void LoginSheet::reconnect(const QString &username, const QString &password)
{
    const ServicePtr service = m_service;
    if (!service)
        return;
    // The sheet lets go of the service before its answer comes.
    if (!m_state.isCurrent(service.get()))
        m_services.retire(service);
    service->username = username;
    service->password = password;
    service->reconnect();
    close();
}

void LoginSheet::cancel()
{
    const ServicePtr service = m_service;
    if (service) {
        forgetPasswordOf(*service);
        service->didCancelReconnect();
    }
    close();
}

/// So that the next start asks again.
void LoginSheet::forgetPasswordOf(const ZLWordpressService &service)
{
    if (!service.account)
        return;
    const QString item = ZLWordpressService::keychainAccount(service.username, service.account->url);
    const auto deleted =
        m_environment.platform.keychain.deletePasswordForService(ZLWordpressService::keychainService(), item);
    if (!deleted)
        ZLLog(deleted.error().description);
}

#include "app/LoginTry.h"

LoginTry::LoginTry(BlogServices &services, const QString &blogURL, const Login &login)
    : m_service(services.serviceForLogin(blogURL))
    , m_living(m_service.get())
{
    m_answer.start();
    m_service->delegate = this;
    m_service->username = login.username;
    m_service->password = login.password;
    m_service->getOptions();
}

LoginTry::~LoginTry()
{
    cancel();
}

void LoginTry::cancel()
{
    finish(failure(u"ZLCancelled"_qs, 0, {}));
}

bool LoginTry::isRefusal(const ZLError &error)
{
    return error.domain == u"Response error" && (error.code == 403 || error.code == 425);
}

void LoginTry::finish(const Result<XMLRPCValue> &answer)
{
    if (std::exchange(m_isAnswered, true))
        return;
    if (m_living)
        m_living->delegate = nullptr;
    m_service.reset();
    m_answer.addResult(answer);
    m_answer.finish();
}

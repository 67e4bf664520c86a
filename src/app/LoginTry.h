#pragma once

#include "app/BlogServices.h"
#include "app/Prompts.h"

#include <QFuture>
#include <QPointer>
#include <QPromise>

/// One try of a login, on a service of its own: asks the blog for its options, which tells at once whether the address
/// answers, is a WordPress and takes the login.
class LoginTry : public ZLWordpressServiceDelegate {
public:
    LoginTry(BlogServices &services, const QString &blogURL, const Login &login);
    ~LoginTry() override;

    /// The options, once. Cancelled: a failure of the domain "ZLCancelled".
    QFuture<Result<XMLRPCValue>> options() { return m_answer.future(); }
    void cancel();

    static bool isCancelled(const ZLError &error) { return error.domain == u"ZLCancelled"; }
    /// The blog itself said that user name or password are wrong. A firewall's status 403 is no such answer.
    static bool isRefusal(const ZLError &error);

    void didGetBlogOptions(ZLWordpressService *, const XMLRPCValue &options) override { finish(options); }
    void didFailToPerformRequest(ZLWordpressService *, ZLWordpressServiceRequestType, const ZLError &error) override
    {
        finish(failure(error));
    }

private:
    void finish(const Result<XMLRPCValue> &answer);

    ServicePtr m_service;
    QPointer<ZLWordpressService> m_living; ///< the program may end before the answer comes
    bool m_isAnswered = false;
    QPromise<Result<XMLRPCValue>> m_answer;
};

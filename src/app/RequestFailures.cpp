#include "app/RequestFailures.h"

namespace {

constexpr int forbidden = 403;
constexpr int notFound = 404;
constexpr int badLogin = 425;
constexpr int hostNotFound = -1003;

FailureAnswer answerWhileConnecting(int code)
{
    switch (code) {
    case notFound:
        return FailureAnswer::NoWordpressThenIntro;
    case forbidden:
        return FailureAnswer::LoginErrorSheet;
    case badLogin:
        return FailureAnswer::AlertThenLoginErrorSheet;
    default:
        return FailureAnswer::AlertThenIntro;
    }
}

bool isPreview(int type)
{
    return type == ZLWordpressServiceRequestTypePublishPostForPreview
        || type == ZLWordpressServiceRequestTypeGetPostForPreview
        || type == ZLWordpressServiceRequestTypeDeletePostForPreview;
}

} // namespace

FailureAnswer answerToFailure(int requestType, int errorCode, bool isLoginSheetVisible)
{
    if (requestType == ZLWordpressServiceRequestTypeGetOptions)
        return answerWhileConnecting(errorCode);
    switch (errorCode) {
    case forbidden:
    case badLogin:
        return isLoginSheetVisible ? FailureAnswer::Nothing : FailureAnswer::AlertThenLogin;
    case notFound:
        return requestType == ZLWordpressServiceRequestTypeGetUserBlogs ? FailureAnswer::NoWordpressThenIntro
                                                                        : FailureAnswer::Alert;
    case hostNotFound:
        return FailureAnswer::AlertThenIntro;
    default:
        return FailureAnswer::Alert;
    }
}

RequestFailures::RequestFailures(AppEnvironment &environment, LoginSheet &login, BlogConnection &connection)
    : m_environment(environment)
    , m_login(login)
    , m_connection(connection)
{
}

void RequestFailures::didFailToPerformRequest(ZLWordpressService *service, int type, const ZLError &error)
{
    ZLLog(u"request failed! %1"_qs.arg(error.description));
    ZLLog(u"requestType: %1"_qs.arg(type));
    if (isPreview(type))
        service->isGeneratingPreview = false;
    if (type == ZLWordpressServiceRequestTypeGetOptions) {
        if (!m_connection.isConnectingWith(service))
            return; // the user has given up on it
        m_connection.didStopWaiting();
    } else {
        ZLLog(u"error code is %1: "_qs.arg(error.code));
    }

    if (type == ZLWordpressServiceRequestTypeDeletePost)
        Q_EMIT m_environment.notifications.deletionDidEnd();
    Prompts &prompts = *m_environment.windows.prompts;
    switch (answerToFailure(type, error.code, m_login.isVisible())) {
    case FailureAnswer::Nothing:
        if (error.code == badLogin)
            ZLLog(u"[wordpressConnectSheet isVisible]"_qs);
        break;
    case FailureAnswer::NoWordpressThenIntro:
        m_connection.showNoWordpressError();
        m_connection.newAccount();
        break;
    case FailureAnswer::LoginErrorSheet:
        m_connection.showLoginErrorSheet();
        break;
    case FailureAnswer::AlertThenLoginErrorSheet:
        prompts.alertWithError(error);
        m_connection.showLoginErrorSheet();
        break;
    case FailureAnswer::AlertThenIntro:
        prompts.alertWithError(error);
        m_connection.newAccount();
        break;
    case FailureAnswer::AlertThenLogin:
        prompts.alertWithError(error);
        m_login.openLoginForService(service);
        break;
    case FailureAnswer::Alert:
        prompts.alertWithError(error);
        break;
    }
}

#pragma once

#include "app/BlogConnection.h"

/// What the user gets to see of a failed call.
enum class FailureAnswer {
    Nothing,
    NoWordpressThenIntro, ///< the address is no WordPress blog
    LoginErrorSheet,
    AlertThenLoginErrorSheet,
    AlertThenIntro,
    AlertThenLogin,
    Alert,
};
/// The answer to an error code, by the type of the call. One failed sync of several must not stack up login sheets:
/// a visible one stops the others.
FailureAnswer answerToFailure(int requestType, int errorCode, bool isLoginSheetVisible);

/// Hears of every failed call.
class RequestFailures {
public:
    RequestFailures(AppEnvironment &environment, LoginSheet &login, BlogConnection &connection);

    void didFailToPerformRequest(ZLWordpressService *service, int type, const ZLError &error);

private:
    AppEnvironment &m_environment;
    LoginSheet &m_login;
    BlogConnection &m_connection;
};

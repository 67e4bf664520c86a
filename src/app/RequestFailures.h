#pragma once

#include "app/SyncRounds.h"

class BlogLogins;

/// Hears of every failed call of the connected blogs, and tells the user where it belongs: what a round could not do
/// in the quiet line of the list, a login that does not hold in the login sheet, all else in an alert.
class RequestFailures {
public:
    RequestFailures(AppEnvironment &environment, BlogLogins &logins, SyncRounds &rounds);

    void didFailToPerformRequest(ZLWordpressService *service, ZLWordpressServiceRequestType type, const ZLError &error);

private:
    void tell(const ServicePtr &service, ZLWordpressServiceRequestType type, const ZLError &error);

    AppEnvironment &m_environment;
    BlogLogins &m_logins;
    SyncRounds &m_rounds;
};

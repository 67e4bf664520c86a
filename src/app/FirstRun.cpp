#include "app/FirstRun.h"

#include <QTimer>
#include <chrono>

namespace {
constexpr auto announcementTime = std::chrono::seconds(1);
}

FirstRun::FirstRun(AppEnvironment &environment)
    : m_environment(environment)
{
}

void FirstRun::didConnectToBlogWithName(const QString &name)
{
    Q_EMIT m_environment.notifications.didConnectNewBlog();
    QTimer::singleShot(announcementTime, this, [this] { closeBlogIsConnectedSheet(); });
    m_environment.windows.prompts->showBlogIsConnectedSheet(name.isNull() ? u""_qs : name);
}

void FirstRun::closeBlogIsConnectedSheet()
{
    const QString launchedBefore = u"AppAlreadyBeenLaunched"_qs;
    m_environment.windows.prompts->closeBlogIsConnectedSheet();
    ZLDefaults &defaults = m_environment.platform.defaults;
    if (defaults.boolForKey(launchedBefore))
        return;
    defaults.setObjectForKey(true, launchedBefore);
    defaults.synchronize();
    m_environment.windows.prompts->showGetStartedPanel();
}

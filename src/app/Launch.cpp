#include "app/Launch.h"

#include "app/BlogNames.h"
#include "app/ZLAppDelegate.h"

#include <QAbstractNetworkCache>
#include <QCoreApplication>
#include <QLocale>
#include <QNetworkAccessManager>

namespace {

void emptyCache(const QNetworkAccessManager &network)
{
    if (QAbstractNetworkCache *cache = network.cache())
        cache->clear();
}

void countLaunch(ZLTelemetry &telemetry, qsizetype blogs)
{
    const QString key = u"BlogsConnected"_qs;
    telemetry.trackEvent(u"AppOpened"_qs);
    telemetry.incrementUserProperty(u"RunCount"_qs);
    telemetry.setUserProperty(u"AppVersion"_qs, QCoreApplication::applicationVersion());
    if (!telemetry.userProperty(key).isValid())
        telemetry.setUserProperty(key, blogs);
    telemetry.setUserProperty(u"Locale"_qs, QLocale::system().name());
    telemetry.setUserProperty(u"PreferredLanguage"_qs, QLocale::system().uiLanguages().value(0));
}

void copyTelemetryChoice(ZLAppDelegate &app)
{
    QObject::connect(
        &app.platform().defaults, &ZLDefaults::didChange, &app, [&app](const QString &key, const QVariant &value) {
            if (key == u"sendAnonymousData")
                app.telemetry().setUserProperty(key, value);
        });
}

/// What an account of an earlier version may lack.
void completeAccounts(const QList<AccountPtr> &accounts, AccountStore &store)
{
    bool isChanged = BlogNames::separate(accounts);
    for (const AccountPtr &account : accounts) {
        if (account->preferences)
            continue;
        account->preferences = std::make_shared<AccountPreferences>();
        isChanged = true;
    }
    if (isChanged)
        store.saveOrLog();
}

void showCurrentBlog(ZLAppDelegate &app)
{
    app.currentBlog().takeRecordedAccount();
    app.compose().updatePreferencesForNewPost();
    app.posts().loadLocalPosts();
    app.selector().showCurrentBlog();
    app.selector().refreshSelectorItemsWithAccounts();
    app.selector().selectItemOfAccount(app.currentBlog().selectedAccount());
    app.selector().showBlogSelector();
    app.openPosts().reopen();
}

void openNotifications(ZLAppDelegate &app)
{
    ZLWorkspace &workspace = app.platform().workspace;
    QObject::connect(&app.platform().notificationCenter, &ZLUserNotificationCenter::didActivateNotification, &app,
        [&workspace](const ZLUserNotification &notification) {
            if (!notification.URL.isEmpty())
                workspace.openURL(notification.URL);
        });
}

void loadPasswords(ZLAppDelegate &app)
{
    QObject::connect(&app.logins(), &BlogLogins::didGetPassword, &app, [&app](const AccountPtr &account) {
        if (account == app.currentBlog().selectedAccount())
            app.logins().askIfNeeded(account);
        app.rounds().syncAccount(account);
    });
    app.logins().loadAll();
}

} // namespace

void launch(ZLAppDelegate &app)
{
    emptyCache(app.platform().network);
    app.currentBlog().readAccounts();
    const QList<AccountPtr> accounts = app.currentBlog().accounts();
    countLaunch(app.telemetry(), accounts.size());
    copyTelemetryChoice(app);
    openNotifications(app);
    if (!accounts.isEmpty()) {
        completeAccounts(accounts, app.store());
        showCurrentBlog(app);
    }
}

void goOnline(ZLAppDelegate &app)
{
    app.rounds().testInternetConnection();
    loadPasswords(app);
}

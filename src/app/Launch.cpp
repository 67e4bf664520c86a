#include "app/Launch.h"

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

void countLaunch(ZLTelemetry &telemetry)
{
    if (!telemetry.isEnabled())
        return;
    telemetry.trackEvent(u"AppOpened"_qs);
    telemetry.incrementUserProperty(u"RunCount"_qs);
    telemetry.setUserProperty(u"AppVersion"_qs, QCoreApplication::applicationVersion());
}

void countBlogs(ZLTelemetry &telemetry, qsizetype count)
{
    const QString key = u"BlogsConnected"_qs;
    if (telemetry.isEnabled() && !telemetry.userProperty(key).isValid())
        telemetry.setUserProperty(key, count);
}

void tellLanguage(ZLTelemetry &telemetry)
{
    if (!telemetry.isEnabled())
        return;
    telemetry.setUserProperty(u"Locale"_qs, QLocale::system().name());
    telemetry.setUserProperty(u"PreferredLanguage"_qs, QLocale::system().uiLanguages().value(0));
}

void takeSelectedAccount(Collaborators &c)
{
    ZLManagedObjectContext *context = c.store.managedObjectContext();
    const QList<SelectedAccountPtr> selected = context ? context->selectedAccounts() : QList<SelectedAccountPtr>();
    const AccountPtr recorded = selected.isEmpty() ? AccountPtr() : selected.first()->account;
    c.currentBlog.take(recorded ? recorded : c.state.accounts.first());
    if (!recorded)
        c.currentBlog.setSelectedAccount(c.state.selectedAccount);
    c.environment.windows.compose->updatePreferencesForNewPost();
}

QStringList keychainItems(const QList<AccountPtr> &accounts)
{
    QStringList items;
    for (const AccountPtr &account : accounts)
        items.append(ZLWordpressService::keychainAccount(account->name, account->url));
    return items;
}

/// The keychain may wait for the user. Until it is open there is no password, but posts are opened with the service's
/// help, and what the user asks of the blog gets an answer.
ServicePtr serviceWithoutPassword(Collaborators &c)
{
    const AccountPtr account = c.state.selectedAccount;
    ServicePtr service = c.services.serviceForURL(ZLWordpressService::apiURLOfBlog(account->url));
    service->account = account;
    service->username = account->name;
    service->blogName = account->alias();
    return service;
}

/// The user may have gone to another blog meanwhile, or have logged in.
void takePassword(Collaborators &c, const ServicePtr &service)
{
    if (service->account == c.state.selectedAccount && service->password.isNull())
        service->readPassword(service->account);
    if (c.state.isCurrent(service.get()))
        c.currentBlog.syncTerms();
}

void showSelector(Collaborators &c)
{
    c.selector.showCurrentBlog();
    c.selector.refreshSelectorItemsWithAccounts();
    c.selector.selectItem(1); // whichever account was selected: the mark is not kept in step at launch
    c.selector.showBlogSelector();
}

void completePreferences(Collaborators &c)
{
    for (const AccountPtr &account : std::as_const(c.state.accounts)) {
        if (account->preferences)
            continue;
        account->preferences = std::make_shared<AccountPreferences>();
        c.store.saveOrLog();
    }
}

void openNotifications(Collaborators &c)
{
    ZLWorkspace &workspace = c.environment.platform.workspace;
    QObject::connect(&c.environment.platform.notificationCenter, &ZLUserNotificationCenter::didActivateNotification,
        &c.rounds, [&workspace](const ZLUserNotification &notification) {
            if (!notification.URL.isEmpty())
                workspace.openURL(notification.URL);
        });
}

void startFirstRound(Collaborators &c)
{
    if (!c.state.accounts.isEmpty() && c.currentBlog.needsLogin())
        c.currentBlog.askForLogin();
    c.rounds.oweRound();
    if (!c.state.accounts.isEmpty() && c.rounds.canReachAnyBlog())
        c.rounds.syncAllBlogs();
}

void copyTelemetryChoice(Collaborators &c)
{
    ZLTelemetry &telemetry = c.environment.telemetry;
    QObject::connect(&c.environment.platform.defaults, &ZLDefaults::didChange, &c.rounds,
        [&telemetry](const QString &key, const QVariant &value) {
            if (key == u"sendAnonymousData")
                telemetry.setUserProperty(key, value);
        });
}

} // namespace

QCoro::Task<void> launch(QPointer<QObject> controller, Collaborators &collaborators)
{
    Collaborators &c = collaborators;
    const ZLPlatform &platform = c.environment.platform;
    emptyCache(platform.network);
    c.rounds.testInternetConnection();
    countLaunch(c.environment.telemetry);

    c.state.accounts = c.store.accounts();
    countBlogs(c.environment.telemetry, c.state.accounts.size());
    if (!c.state.accounts.isEmpty()) {
        takeSelectedAccount(c);
        c.posts.loadLocalPosts();
        const ServicePtr service = serviceWithoutPassword(c);
        c.state.wordpressService = service;
        const QStringList items = keychainItems(c.state.accounts);
        co_await platform.keychain.load(ZLWordpressService::keychainService(), items);
        if (!controller)
            co_return;
        takePassword(c, service);
        showSelector(c);
        completePreferences(c);
    }
    openNotifications(c);
    startFirstRound(c);
    tellLanguage(c.environment.telemetry);
    copyTelemetryChoice(c);
}

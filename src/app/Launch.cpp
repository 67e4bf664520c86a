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
    // Whichever account was selected: the index is not kept in step at launch, and neither is the selector's mark.
    c.state.selectedIndex = 0;
}

QStringList keychainItems(const QList<AccountPtr> &accounts)
{
    QStringList items;
    for (const AccountPtr &account : accounts)
        items.append(ZLWordpressService::keychainAccount(account->name, account->url));
    return items;
}

void showSelector(Collaborators &c)
{
    c.selector.showCurrentBlog();
    c.selector.refreshSelectorItemsWithAccounts();
    c.selector.selectItem(1);
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
    if (!c.state.accounts.isEmpty())
        c.currentBlog.askForLoginIfNeeded();
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
        const QStringList items = keychainItems(c.state.accounts);
        co_await platform.keychain.load(ZLWordpressService::keychainService(), items);
        if (!controller)
            co_return;
        // The user may have connected another blog meanwhile.
        if (!c.state.wordpressService) {
            c.state.wordpressService = c.services.serviceForAccount(c.state.selectedAccount);
            c.currentBlog.syncTerms();
        }
        showSelector(c);
        completePreferences(c);
    }
    openNotifications(c);
    startFirstRound(c);
    tellLanguage(c.environment.telemetry);
    copyTelemetryChoice(c);
}

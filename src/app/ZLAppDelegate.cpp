#include "app/ZLAppDelegate.h"

#include "app/Launch.h"
#include "app/Termination.h"

// Resources of a static library are known only after this, which must stand outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(defaults);
}

struct ZLAppDelegate::Private : Collaborators {
    using Collaborators::Collaborators;
    bool isLaunched = false;
    bool isTerminating = false;
};

ZLAppDelegate::ZLAppDelegate(const ZLPlatform &platform, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(platform, *this))
{
    initResources();
    // Before the windows are made, which read some of them.
    platform.defaults.registerDefaultsFromFile(u":/defaultPrefs.json"_qs);
    connect(&platform.keychain, &ZLKeychain::becameUnavailable, this, [this] {
        d->environment.windows.prompts->alert(u"Zalmo cannot reach a keychain on this computer."_qs,
            u"Your password is kept for this session only, and Zalmo will ask for it at the next start. To have it "
            "remembered, set up your desktop's password service, such as GNOME Keyring or KWallet."_qs);
    });
}

ZLAppDelegate::~ZLAppDelegate() = default;

void ZLAppDelegate::setWindows(const ZLWindows &windows)
{
    d->environment.windows = windows;
}

// Launch and end

QCoro::Task<void> ZLAppDelegate::applicationDidFinishLaunching()
{
    if (std::exchange(d->isLaunched, true))
        co_return;
    co_await launch(this, *d);
}

QCoro::Task<bool> ZLAppDelegate::applicationShouldTerminate()
{
    if (std::exchange(d->isTerminating, true))
        co_return false; // the question is on the screen already
    const QPointer<ZLAppDelegate> self(this);
    const bool answer = co_await terminate(this, *d);
    if (self)
        d->isTerminating = false;
    co_return answer;
}

void ZLAppDelegate::showMainApplicationWindow()
{
    if (d->state.accounts.isEmpty())
        newAccount();
}

// State that others read

QList<AccountPtr> ZLAppDelegate::accounts() const
{
    return d->state.accounts;
}

AccountPtr ZLAppDelegate::selectedAccount() const
{
    return d->state.selectedAccount;
}

QString ZLAppDelegate::getBlogName() const
{
    return d->state.blogName;
}

QUrl ZLAppDelegate::blogURL() const
{
    return QUrl(d->state.blogURL);
}

const QList<LocalPostPtr> &ZLAppDelegate::posts() const
{
    return d->posts.posts();
}

void ZLAppDelegate::insertPost(int index, const LocalPostPtr &row)
{
    d->posts.insert(index, row);
}

void ZLAppDelegate::removePost(const LocalPostPtr &row)
{
    d->posts.remove(row);
}

ZLWordpressService *ZLAppDelegate::wordpressService() const
{
    return d->state.wordpressService.get();
}

ZLManagedObjectContext *ZLAppDelegate::managedObjectContext()
{
    return d->store.managedObjectContext();
}

ZLDocumentController &ZLAppDelegate::documentController()
{
    return d->environment.documents;
}

ZLNotifications &ZLAppDelegate::notifications()
{
    return d->environment.notifications;
}

const ZLPlatform &ZLAppDelegate::platform() const
{
    return d->environment.platform;
}

ZLTelemetry &ZLAppDelegate::telemetry()
{
    return d->environment.telemetry;
}

bool ZLAppDelegate::isReachable() const
{
    return d->environment.platform.reachability.isReachable(blogURL());
}

int ZLAppDelegate::numberOfConnectedAccounts() const
{
    return int(d->state.accounts.size());
}

QList<AccountPtr> ZLAppDelegate::accountsCanReceivePostCopy() const
{
    QList<AccountPtr> others = d->state.accounts;
    others.removeAll(d->state.selectedAccount);
    return others;
}

// The current blog

void ZLAppDelegate::selectorDidChange(int selectorIndex)
{
    d->currentBlog.selectorDidChange(selectorIndex);
}

void ZLAppDelegate::selectAccount(const AccountPtr &account)
{
    d->currentBlog.selectAccount(account);
}

void ZLAppDelegate::setSelectedAccount(const AccountPtr &account)
{
    d->currentBlog.setSelectedAccount(account);
}

void ZLAppDelegate::didChangeBlogAliasForAccount(const AccountPtr &account)
{
    d->currentBlog.didChangeBlogAliasForAccount(account);
}

// Catalogue and sync rounds

void ZLAppDelegate::loadLocalPosts()
{
    d->posts.loadLocalPosts();
}

void ZLAppDelegate::reloadPostsList()
{
    d->posts.loadLocalPosts();
}

void ZLAppDelegate::syncAllBlogs()
{
    d->rounds.syncAllBlogs();
}

void ZLAppDelegate::refreshCurrentBlog()
{
    d->rounds.refreshCurrentBlog();
}

void ZLAppDelegate::syncPosts()
{
    d->rounds.syncPosts();
}

void ZLAppDelegate::stopSyncing()
{
    d->rounds.stopSyncing();
}

QList<LocalPostPtr> ZLAppDelegate::getPostsForSearch(const QString &text) const
{
    return d->posts.getPostsForSearch(text);
}

QStringList ZLAppDelegate::getTaxonomiesForSearch(const QString &text) const
{
    return d->posts.getTaxonomiesForSearch(text);
}

void ZLAppDelegate::removeLocalPostFromList(const LocalPostPtr &row)
{
    d->posts.removeLocalPostFromList(row);
}

void ZLAppDelegate::removePostWithLocalFile(const QString &absoluteString)
{
    d->posts.removePostWithLocalFile(absoluteString);
}

// Connecting a blog

void ZLAppDelegate::newAccount()
{
    d->connection.newAccount();
}

void ZLAppDelegate::connectToBlogURL(const QString &typed)
{
    d->connection.connectToBlogURL(typed);
}

void ZLAppDelegate::didEntryUsernameAndPassword(const QString &username, const QString &password)
{
    d->connection.didEntryUsernameAndPassword(username, password);
}

void ZLAppDelegate::didReconnectFromLoginSheet(const QString &username, const QString &password)
{
    d->login.reconnect(username, password);
}

void ZLAppDelegate::didPressedCancelButton()
{
    d->login.cancel();
    d->connection.giveUp();
}

void ZLAppDelegate::didPressedCancelButtonFromIntro()
{
    d->connection.giveUp();
}

void ZLAppDelegate::didEntryUsernameAndPasswordFromWrongSheet(const QString &username, const QString &password)
{
    d->connection.didEntryUsernameAndPasswordFromWrongSheet(username, password);
}

void ZLAppDelegate::didPressedCancelButtonFromWrongSheet()
{
    d->connection.didPressedCancelButtonFromWrongSheet();
}

void ZLAppDelegate::cancelConnecting()
{
    d->connection.cancelConnecting();
}

void ZLAppDelegate::didRemoveAccount(const AccountPtr &)
{
    d->removal.didRemoveAccount();
}

// Posts

bool ZLAppDelegate::createNewPost()
{
    return d->posts.createNewPost();
}

void ZLAppDelegate::deletePostAtLocalURL(const QUrl &url)
{
    d->posts.deletePostAtLocalURL(url);
}

void ZLAppDelegate::cancelUploadOfPost(const PostPtr &post)
{
    d->services.cancelUploadOfPost(post);
    Q_EMIT notifications().didFailToUploadPost(post);
}

// Outcomes of the services

void ZLAppDelegate::didReconnectAccount(ZLWordpressService *service, const AccountPtr &account)
{
    // Sync rounds use services of their own: what one of them has learned, the current one must know as well.
    ZLWordpressService *current = wordpressService();
    if (!current || account != d->state.selectedAccount)
        return;
    current->username = service->username;
    current->password = service->password;
    d->currentBlog.syncTerms(); // which waited for the login
}

void ZLAppDelegate::didGetTaxonomies(ZLWordpressService *, const QList<ZLTaxonomy> &taxonomies)
{
    d->state.taxonomies = taxonomies;
}

void ZLAppDelegate::didSyncBlogWithName(ZLWordpressService *service, const QString &name)
{
    d->rounds.didSyncBlogWithName(service, name);
}

void ZLAppDelegate::didFailToUploadPost(ZLWordpressService *, const PostPtr &post)
{
    Q_EMIT notifications().didFailToUploadPost(post);
}

void ZLAppDelegate::didFailToPerformRequest(ZLWordpressService *service, int type, const ZLError &error)
{
    if (d->state.isCurrent(service))
        d->environment.windows.postList->hideLoadingView(); // what is awaited may never come
    d->failures.didFailToPerformRequest(service, type, error);
}

void ZLAppDelegate::didGetPosts(ZLWordpressService *service, const QList<PostPtr> &)
{
    if (d->state.isCurrent(service))
        d->posts.reloadPostsListAfterSync();
}

void ZLAppDelegate::didPublishPost(ZLWordpressService *service, const PostPtr &remote, const PostPtr &original)
{
    d->outcomes.didPublishPost(service, remote, original);
}

void ZLAppDelegate::didUpdatePost(ZLWordpressService *service, const PostPtr &post)
{
    d->outcomes.didUpdatePost(service, post);
}

void ZLAppDelegate::didPublishDraftPost(ZLWordpressService *service, const PostPtr &post)
{
    d->outcomes.didPublishDraftPost(service, post);
}

void ZLAppDelegate::didDeletePost(ZLWordpressService *, const PostPtr &post)
{
    d->outcomes.didDeletePost(post);
    Q_EMIT d->environment.notifications.deletionDidEnd();
}

void ZLAppDelegate::didFailToDeletePost(ZLWordpressService *, const PostPtr &post, const ZLError &error)
{
    // By its fault code and not by the status of a page that is missing: the blog itself says that there is none.
    if (error.domain == u"Response error" && error.code == 404)
        offerToDeleteCopy(post);
}

QCoro::Task<void> ZLAppDelegate::offerToDeleteCopy(PostPtr post)
{
    constexpr int deleteCopy = 0;
    constexpr int cancel = 1;
    const QPointer<ZLAppDelegate> self(this);
    QCoro::Task<int> asking = d->environment.windows.prompts->ask(u"Delete the copy on this computer?"_qs,
        u"The blog does not have “%1” any more."_qs.arg(post->title), {u"Delete"_qs, u"Cancel"_qs}, cancel);
    const int answer = co_await asking;
    if (self && answer == deleteCopy)
        d->outcomes.didDeletePost(post);
}

void ZLAppDelegate::didCreateCategory(ZLWordpressService *, const QString &name)
{
    ZLLog(u"did create category: %1"_qs.arg(name));
}

void ZLAppDelegate::didGetBlogOptions(ZLWordpressService *service, const XMLRPCValue &options)
{
    d->connection.didGetBlogOptions(service, options);
}

void ZLAppDelegate::didSendBodyData(ZLWordpressService *, const PostPtr &post, float progress)
{
    d->environment.windows.compose->didSendBodyData(post, progress);
}

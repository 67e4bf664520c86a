#include "app/BlogConnection.h"

#include "text/HTMLEntities.h"

#include <ZalmoServices.h>

namespace {

bool isAddress(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool isWeb = text.startsWith(u"http://") || text.startsWith(u"https://");
    return isWeb && url.isValid() && !url.host().isEmpty();
}

} // namespace

BlogConnection::BlogConnection(const BlogParts &parts, CurrentBlog &currentBlog, FaviconLookup &favicons)
    : m_parts(parts)
    , m_currentBlog(currentBlog)
    , m_favicons(favicons)
    , m_firstRun(parts.environment)
{
}

void BlogConnection::newAccount()
{
    Prompts &prompts = *m_parts.environment.windows.prompts;
    if (prompts.isShowingIntroWindow())
        return;
    prompts.clearLoginFields();
    prompts.showIntro();
}

void BlogConnection::connectToBlogURL(const QString &typed)
{
    if (typed.isEmpty()) {
        newAccount();
        return;
    }
    QString address = typed.trimmed();
    if (!address.startsWith(u"http://") && !address.startsWith(u"https://"))
        address.prepend(u"http://");
    if (!isAddress(address)) {
        // On purpose without a word: the user simply sees the first sheet again.
        newAccount();
        return;
    }
    m_parts.state.blogURL = address;
    m_parts.login.openForNewBlog(address);
}

void BlogConnection::didEntryUsernameAndPassword(const QString &username, const QString &password)
{
    // Closing makes the sheet forget its service. So a sheet that was opened for a known blog, but left with Return in
    // its password field, starts a new connection as well; meant was its reconnect.
    m_parts.login.close();
    tryLogin(username, password);
}

void BlogConnection::didEntryUsernameAndPasswordFromWrongSheet(const QString &username, const QString &password)
{
    m_parts.environment.windows.prompts->closeLoginErrorSheet();
    tryLogin(username, password);
}

void BlogConnection::tryLogin(const QString &username, const QString &password)
{
    m_username = username;
    m_password = password;
    if (username.isEmpty() || password.isEmpty())
        showLoginErrorSheet();
    else
        connectWithLogin();
}

void BlogConnection::didPressedCancelButtonFromWrongSheet()
{
    m_parts.environment.windows.prompts->closeLoginErrorSheet();
    giveUp();
}

void BlogConnection::giveUp()
{
    if (m_parts.state.accounts.isEmpty())
        m_parts.environment.windows.prompts->showIntro();
    else if (!m_connecting)
        returnToSelectedAccount();
}

void BlogConnection::showLoginErrorSheet()
{
    m_parts.environment.windows.prompts->showLoginErrorSheet(m_username, m_password, m_parts.state.blogURL);
}

void BlogConnection::connectWithLogin()
{
    if (m_connecting)
        m_connecting->delegate = nullptr; // a newer try takes its place
    if (m_parts.state.wordpressService && m_parts.state.wordpressService->account)
        m_connected = m_parts.state.wordpressService;
    // When this fails the new service stays the current one until the user tries again or gives up.
    m_connecting = m_parts.services.serviceForURL(ZLWordpressService::apiURLOfBlog(m_parts.state.blogURL));
    m_connecting->username = m_username;
    m_connecting->password = m_password;
    m_currentBlog.replaceService(m_connecting);
    m_parts.environment.windows.prompts->showConnecting(m_parts.state.blogURL);
    m_connecting->getOptions();
}

bool BlogConnection::isConnectingWith(const ZLWordpressService *service) const
{
    return m_connecting && m_connecting.get() == service;
}

void BlogConnection::didStopWaiting()
{
    m_connecting.reset();
    m_parts.environment.windows.prompts->hideConnecting();
}

void BlogConnection::cancelConnecting()
{
    if (!m_connecting)
        return;
    m_connecting->delegate = nullptr;
    returnToSelectedAccount();
    didStopWaiting();
    newAccount();
}

void BlogConnection::returnToSelectedAccount()
{
    const AccountPtr account = m_parts.state.selectedAccount;
    if (account)
        m_parts.state.blogURL = account->url;
    const ServicePtr current = m_parts.state.wordpressService;
    if (current && current->account)
        return; // no connection has taken its place
    if (account && (!m_connected || m_connected->account != account))
        m_connected = m_parts.services.serviceForAccount(account);
    m_currentBlog.replaceService(account ? m_connected : nullptr);
}

void BlogConnection::didGetBlogOptions(ZLWordpressService *service, const XMLRPCValue &options)
{
    if (!isConnectingWith(service))
        return;
    const ServicePtr answering = m_connecting;
    didStopWaiting();
    if (!options.isStruct()) {
        showApiError();
        newAccount();
        return;
    }
    if (m_parts.environment.telemetry.isEnabled()) {
        // The misspelling is what the collector knows.
        m_parts.environment.telemetry.trackEvent(u"AddBlog"_qs, {{u"engine"_qs, u"wordrpress"_qs}});
        m_parts.environment.telemetry.incrementUserProperty(u"BlogsConnected"_qs);
    }
    ZLManagedObjectContext *context = m_parts.store.managedObjectContext();
    if (!context)
        return;
    const AccountPtr account = insertAccount(*context, options);
    storePassword(account);
    m_favicons.getFavIconForAccount(account);
    m_currentBlog.take(account);
    if (m_parts.store.saveOrLog())
        welcome(account, answering);
}

AccountPtr BlogConnection::insertAccount(ZLManagedObjectContext &context, const XMLRPCValue &options)
{
    const auto value = [&options](QStringView key) -> const XMLRPCValue & { return options[key][u"value"]; };
    const auto has = [&options](QStringView key) { return !options[key].isAbsent(); };

    auto preferences = std::make_shared<AccountPreferences>();
    if (has(u"default_comment_status"))
        preferences->allow_comments = value(u"default_comment_status").string() == u"open";
    if (has(u"default_ping_status"))
        preferences->allow_pingback = value(u"default_ping_status").string() == u"open";
    // Any value will do, even one of false.
    if (has(u"post_thumbnail"))
        preferences->use_feature_image = !value(u"post_thumbnail").isAbsent();
    if (has(u"thumbnail_size_h"))
        preferences->feature_image_height = int(value(u"thumbnail_size_h").integer());
    if (has(u"thumbnail_size_w"))
        preferences->feature_image_width = int(value(u"thumbnail_size_w").integer());

    const AccountPtr account = context.insertAccount();
    account->preferences = preferences;
    account->name = m_username;
    // What the blog says of itself counts, not what the user typed.
    const QString address = value(u"blog_url").string();
    account->url = isAddress(address) ? address : m_parts.state.blogURL;
    // A title that cannot name the blog's folder leaves the alias to the user name.
    const QString title = HTMLEntities::stringByDecodingHTMLEntities(value(u"blog_title").string());
    if (ZLFileManager::isSafeAlias(title))
        account->blog_name = title;
    else
        ZLLog(u"refused a blog title that cannot name a folder: %1"_qs.arg(title));
    return account;
}

void BlogConnection::storePassword(const AccountPtr &account)
{
    const QString item = ZLWordpressService::keychainAccount(account->name, account->url);
    const auto stored =
        m_parts.environment.platform.keychain.setPassword(m_password, ZLWordpressService::keychainService(), item);
    if (!stored)
        ZLLog(u"error storing password - %1"_qs.arg(stored.error().description));
}

void BlogConnection::welcome(const AccountPtr &account, const ServicePtr &service)
{
    const bool isFirst = m_parts.state.accounts.isEmpty();
    m_parts.state.accounts = m_parts.store.accounts();
    if (isFirst)
        m_parts.selector.showBlogSelector();
    m_parts.selector.refreshSelectorItemsWithAccounts();
    m_parts.selector.selectItemOfAccount(account);
    m_parts.selector.showCurrentBlog();

    service->blogName = m_parts.state.blogName;
    service->account = account;
    // The user may have gone to another blog while this one was asked.
    if (!m_parts.state.isCurrent(service.get()))
        m_currentBlog.replaceService(service);
    m_parts.posts.loadLocalPosts(); // only the current blog has rows
    getBlogData();
    m_firstRun.didConnectToBlogWithName(m_parts.state.blogName);
    m_currentBlog.setSelectedAccount(account);
}

void BlogConnection::getBlogData()
{
    ZLNotifications &notifications = m_parts.environment.notifications;
    Q_EMIT notifications.changingBlog();
    if (const ServicePtr service = m_parts.state.wordpressService) {
        service->syncBlogPosts();
        service->syncBlogTaxonomies();
    }
    m_currentBlog.leavePostOfEarlierBlog();
    Q_EMIT notifications.didChangeBlog();
    if (m_parts.posts.posts().isEmpty() && m_parts.state.wordpressService)
        m_parts.environment.windows.postList->showLoadingView();
}

void BlogConnection::showApiError()
{
    offerHelp(u"Whoops! Sorry but something went wrong with the XML-RPC connection. Custom plugins or changes in the "
              u"PHP may affect your WordPress API. Contact our support and we will help you with that."_qs,
        QUrl(QString::fromUtf16(ZalmoServices::apiErrorArticle)));
}

void BlogConnection::showNoWordpressError()
{
    offerHelp(u"Ops! Sorry, we couldn't find a WordPress Blog using this URL. Zalmo is only supporting WordPress for "
              u"now but soon we'll give you more options."_qs,
        QUrl(QString::fromUtf16(ZalmoServices::noWordpressArticle)));
}

QCoro::Task<void> BlogConnection::offerHelp(QString message, QUrl article)
{
    constexpr int needHelp = 1;
    ZLWorkspace &workspace = m_parts.environment.platform.workspace; // outlives the controller
    const QStringList buttons{u"Ok"_qs, u"Need Help?"_qs};
    const int answer = co_await m_parts.environment.windows.prompts->ask(message, {}, buttons);
    if (answer == needHelp)
        workspace.openURL(article);
}

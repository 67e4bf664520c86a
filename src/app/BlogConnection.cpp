#include "app/BlogConnection.h"

#include "app/BlogNames.h"
#include "text/HTMLEntities.h"
#include "xmlrpc/TransferErrors.h"

#include <QCoroFuture>
#include <QPointer>
#include <ZalmoServices.h>

namespace {

bool isNoWordpress(const ZLError &error)
{
    return error.domain == u"ZLNoWordpress" || error.code == 404;
}

std::shared_ptr<AccountPreferences> preferencesFrom(const XMLRPCValue &options)
{
    const auto has = [&options](QStringView key) { return !options[key].isAbsent(); };
    const auto value = [&options](QStringView key) -> const XMLRPCValue & { return options[key][u"value"]; };
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
    return preferences;
}

} // namespace

BlogConnection::BlogConnection(AppEnvironment &environment, CurrentBlogState &state, AccountStore &store,
    BlogServices &services, BlogLogins &logins, CurrentBlog &currentBlog, FaviconLookup &favicons)
    : m_environment(environment)
    , m_state(state)
    , m_store(store)
    , m_services(services)
    , m_logins(logins)
    , m_currentBlog(currentBlog)
    , m_favicons(favicons)
    , m_firstRun(environment)
{
}

void BlogConnection::newAccount()
{
    connectBlog(std::nullopt);
}

void BlogConnection::connectToBlogURL(const QString &typed)
{
    connectBlog(typed);
}

QCoro::Task<void> BlogConnection::connectBlog(std::optional<QString> typed)
{
    if (std::exchange(m_isUnderWay, true))
        co_return; // its sheet is on the screen
    const QPointer<BlogConnection> self(this);
    Outcome outcome = Outcome::Failed;
    QString lastTyped;
    while (outcome != Outcome::Connected) {
        if (!typed) {
            typed = co_await m_environment.windows.prompts->askForBlogURL(lastTyped, !m_state.accounts.isEmpty());
            if (!self)
                co_return;
            if (!typed)
                break;
        }
        lastTyped = *std::exchange(typed, std::nullopt);
        const std::optional<BlogAddress> address = BlogAddress::typed(lastTyped);
        if (!address)
            continue; // on purpose without a word: the user simply sees the first sheet again
        const std::optional<BlogAddress> found = co_await findBlog(*address);
        if (!self)
            co_return;
        if (!found)
            continue;
        outcome = co_await logIn(*found);
        if (!self)
            co_return;
        if (outcome == Outcome::Cancelled && !m_state.accounts.isEmpty())
            break;
    }
    m_isUnderWay = false;
}

/// The address under which there is a WordPress. None: there is none, which has been told, or the user gave up.
QCoro::Task<std::optional<BlogAddress>> BlogConnection::findBlog(BlogAddress address)
{
    const AccountPtr known = BlogAddress::accountAt(address.url, m_state.accounts);
    if (known && !BlogAddress::isSafer(address.url, known->url))
        co_return address;
    const QPointer<BlogConnection> self(this);
    Result<QString> answer = co_await lookAt(address.url);
    if (!self)
        co_return std::nullopt;
    if (!answer && !address.hasScheme && TransferErrors::isSilence(answer.error())) {
        constexpr int useHttp = 0;
        constexpr int cancel = 1;
        const QString host = BlogAddress::host(address.url);
        auto asking = m_environment.windows.prompts->ask(u"“%1” does not answer over https. Try http?"_qs.arg(host),
            u"%1\n\nOver http, everyone on the way can read your password and your posts."_qs.arg(
                answer.error().description),
            {u"Try http"_qs, u"Cancel"_qs}, cancel);
        const int choice = co_await asking;
        if (!self || choice != useHttp)
            co_return std::nullopt;
        address.url = BlogAddress::overHttp(address.url);
        answer = co_await lookAt(address.url);
        if (!self)
            co_return std::nullopt;
    }
    if (answer) {
        address.url = *answer;
        co_return address;
    }
    tell(address.url, answer.error());
    co_return std::nullopt;
}

QCoro::Task<Result<QString>> BlogConnection::lookAt(QString url)
{
    const QPointer<BlogConnection> self(this);
    const auto lookup = AddressLookup::start(m_services.connections(), url);
    m_environment.windows.prompts->showConnecting(BlogAddress::host(url), [lookup] { lookup->cancel(); });
    const Result<QString> answer = co_await lookup->result();
    if (self)
        m_environment.windows.prompts->hideConnecting();
    co_return answer;
}

QCoro::Task<BlogConnection::Outcome> BlogConnection::logIn(BlogAddress address)
{
    const QPointer<BlogConnection> self(this);
    const AccountPtr known = BlogAddress::accountAt(address.url, m_state.accounts);
    const QString url = known && !BlogAddress::isSafer(address.url, known->url) ? known->url : address.url;
    LoginQuestion question{known ? known->alias() : QString(), BlogAddress::host(url),
        known && address.username.isEmpty() ? known->name : address.username, {}};
    for (;;) {
        const std::optional<Login> login = co_await m_environment.windows.prompts->askForLogin(question);
        if (!self || !login)
            co_return Outcome::Cancelled;
        question.username = login->username;
        question.password = login->password;
        question.reason = LoginQuestion::TypedRefused;
        if (!login->isComplete())
            continue;
        const Result<XMLRPCValue> options = co_await tryLogin(url, *login);
        if (!self)
            co_return Outcome::Cancelled;
        if (!options && LoginTry::isRefusal(options.error()))
            continue;
        if (!options) {
            tell(url, options.error());
            co_return Outcome::Failed;
        }
        if (m_state.accounts.contains(known))
            didLogInAgain(known, url, *login);
        else
            didConnect(url, *login, *options);
        co_return Outcome::Connected;
    }
}

/// Fails as well when the answer tells no options.
QCoro::Task<Result<XMLRPCValue>> BlogConnection::tryLogin(QString url, Login login)
{
    const QPointer<BlogConnection> self(this);
    const auto attempt = std::make_shared<LoginTry>(m_services, url, login);
    m_environment.windows.prompts->showConnecting(BlogAddress::host(url), [attempt] { attempt->cancel(); });
    const Result<XMLRPCValue> options = co_await attempt->options();
    if (self)
        m_environment.windows.prompts->hideConnecting();
    if (options && !options->isStruct())
        co_return failure(u"ZLNoOptions"_qs, 0, {});
    co_return options;
}

void BlogConnection::didLogInAgain(const AccountPtr &account, const QString &url, const Login &login)
{
    m_logins.changeAddress(account, url);
    m_logins.take(account, login);
    m_currentBlog.selectAccount(account);
    Q_EMIT m_logins.didLogIn(account);
}

void BlogConnection::didConnect(const QString &url, const Login &login, const XMLRPCValue &options)
{
    ZLTelemetry &telemetry = m_environment.telemetry;
    // The misspelling is what the collector knows.
    telemetry.trackEvent(u"AddBlog"_qs, {{u"engine"_qs, u"wordrpress"_qs}});
    telemetry.incrementUserProperty(u"BlogsConnected"_qs);
    ZLManagedObjectContext *context = m_store.managedObjectContext();
    if (!context)
        return; // which has been told
    const AccountPtr account = insertAccount(*context, url, login.username, options);
    if (!m_store.saveOrLog()) {
        context->deleteAccount(account);
        m_environment.windows.prompts->alert(u"The blog could not be saved."_qs,
            u"Make room on the disk, or see that you may write to “%1”, and connect the blog again."_qs.arg(
                m_environment.platform.files.applicationFilesDirectory()));
        return;
    }
    m_state.accounts = m_store.accounts();
    m_logins.take(account, login);
    m_favicons.getFavIconForAccount(account);
    m_currentBlog.showNewBlog(account);
    m_firstRun.didConnectToBlogWithName(account->alias());
}

AccountPtr BlogConnection::insertAccount(
    ZLManagedObjectContext &context, const QString &url, const QString &username, const XMLRPCValue &options)
{
    const auto value = [&options](QStringView key) { return options[key][u"value"].string(); };
    const AccountPtr account = context.insertAccount();
    account->preferences = preferencesFrom(options);
    account->name = username;
    account->url = BlogAddress::toldOrTyped(value(u"blog_url"), url, m_state.accounts);
    // A title that cannot name the blog's folder leaves the alias to the user name.
    const QString title = BlogNames::oneLine(HTMLEntities::stringByDecodingHTMLEntities(value(u"blog_title")));
    if (ZLFileManager::isSafeAlias(title))
        account->blog_name = title;
    else
        ZLLog(u"refused a blog title that cannot name a folder: %1"_qs.arg(title));
    const QString name = BlogNames::freeName(account->alias(), account, m_state.accounts);
    if (name != account->alias())
        account->blog_name = name;
    return account;
}

void BlogConnection::tell(const QString &url, const ZLError &error)
{
    const QString host = BlogAddress::host(url);
    if (LoginTry::isCancelled(error))
        return;
    if (isNoWordpress(error))
        offerHelp(u"Ops! Sorry, we couldn't find a WordPress Blog using this URL. Zalmo is only supporting WordPress "
                  "for now but soon we'll give you more options."_qs,
            host, QString::fromUtf16(ZalmoServices::noWordpressArticle));
    else if (error.domain == u"ZLNoOptions")
        offerHelp(u"Whoops! Sorry but something went wrong with the XML-RPC connection. Custom plugins or changes in "
                  "the PHP may affect your WordPress API. Contact our support and we will help you with that."_qs,
            host, QString::fromUtf16(ZalmoServices::apiErrorArticle));
    else
        m_environment.windows.prompts->alert(u"“%1” could not be connected."_qs.arg(host),
            u"%1\n\nLook whether the address is right, and try again."_qs.arg(error.description));
}

QCoro::Task<void> BlogConnection::offerHelp(QString message, QString host, QString article)
{
    constexpr int needHelp = 1;
    ZLWorkspace &workspace = m_environment.platform.workspace; // outlives the controller
    QStringList buttons{u"Ok"_qs};
    if (!article.isEmpty())
        buttons.append(u"Need Help?"_qs);
    const int answer = co_await m_environment.windows.prompts->ask(message, host, buttons);
    if (answer == needHelp)
        workspace.openURL(QUrl(article));
}

#include "app/BlogLogins.h"

#include "app/BlogAddress.h"

#include <QCoroFuture>
#include <QPointer>

namespace {

QString itemOf(const AccountPtr &account)
{
    return ZLWordpressService::keychainAccount(account->name, account->url);
}

QString formerItemOf(const AccountPtr &account, const AddressLogin &login)
{
    QUrl address(account->url);
    address.setUserName(login.user);
    address.setPassword(login.password);
    return ZLWordpressService::keychainAccount(account->name, address.toString());
}

} // namespace

BlogLogins::BlogLogins(
    AppEnvironment &environment, CurrentBlogState &state, AccountStore &store, BlogServices &services)
    : m_environment(environment)
    , m_state(state)
    , m_store(store)
    , m_services(services)
{
}

BlogLogins::~BlogLogins()
{
    for (const AccountPtr &account : m_unsettled.keys())
        settle(account, false);
}

void BlogLogins::loadAll()
{
    QHash<AccountPtr, QString> formerItems;
    if (ZLManagedObjectContext *context = m_store.managedObjectContext()) {
        for (const auto &[account, login] : context->takeStoredLogins())
            formerItems.insert(account, formerItemOf(account, login));
    }
    if (!formerItems.isEmpty())
        m_store.saveOrLog();
    for (const AccountPtr &account : QList<AccountPtr>(m_state.accounts))
        load(account, formerItems.value(account, itemOf(account)));
}

QCoro::Task<void> BlogLogins::load(AccountPtr account, QString formerItem)
{
    const QPointer<BlogLogins> self(this);
    m_loading.insert(account);
    const QStringList items{formerItem, itemOf(account)};
    co_await m_environment.platform.keychain.load(ZLWordpressService::keychainService(), items);
    if (!self)
        co_return;
    m_loading.remove(account);
    if (!isConnected(account))
        co_return;
    moveItem(account, formerItem, items.last());
    const ServicePtr service = m_services.serviceOf(account);
    if (service->password.isNull()) // the user may have logged in meanwhile
        service->readPassword(account);
    Q_EMIT didGetPassword(account);
}

void BlogLogins::moveItem(const AccountPtr &account, const QString &from, const QString &to)
{
    ZLKeychain &keychain = m_environment.platform.keychain;
    const QString service = ZLWordpressService::keychainService();
    const QString password = keychain.passwordForService(service, from);
    if (from == to || password.isNull())
        return;
    if (keychain.setPassword(password, service, to))
        erase(from, account);
}

void BlogLogins::askIfNeeded(const AccountPtr &account)
{
    const bool logsInByItself = account->preferences && account->preferences->login_automatically.value_or(false);
    const bool hasPassword = !m_services.serviceOf(account)->password.isEmpty();
    if (m_loading.contains(account) || (hasPassword && logsInByItself))
        return;
    ZLLog(u"No Password or !login_automatically"_qs);
    askForLogin(account);
}

bool BlogLogins::requirePassword(const AccountPtr &account)
{
    const bool hasPassword = !m_services.serviceOf(account)->password.isEmpty();
    if (!hasPassword)
        askForLogin(account);
    return hasPassword;
}

QFuture<bool> BlogLogins::newLogin(const AccountPtr &account)
{
    const auto unsettled = m_unsettled.constFind(account);
    return unsettled == m_unsettled.cend() ? QtFuture::makeReadyFuture(false) : (*unsettled)->future();
}

void BlogLogins::unsettle(const AccountPtr &account)
{
    auto &unsettled = m_unsettled[account];
    if (unsettled)
        return;
    unsettled = std::make_shared<QPromise<bool>>();
    unsettled->start();
}

void BlogLogins::settle(const AccountPtr &account, bool hasNewLogin)
{
    const auto settled = m_unsettled.take(account);
    if (!settled)
        return;
    settled->addResult(hasNewLogin);
    settled->finish();
}

QCoro::Task<void> BlogLogins::askForLogin(AccountPtr account, LoginQuestion::Reason reason)
{
    if (m_asking.contains(account))
        co_return;
    const QPointer<BlogLogins> self(this);
    m_asking.insert(account);
    unsettle(account);
    bool hasNewLogin = false;
    Prompts &prompts = *m_environment.windows.prompts;
    LoginQuestion question{account->alias(), BlogAddress::host(account->url), account->name, {}, reason};
    for (;;) {
        const std::optional<Login> login = co_await prompts.askForLogin(question);
        if (!self)
            co_return;
        if (!login || !isConnected(account))
            break;
        question.username = login->username;
        question.password = login->password;
        question.reason = login->isComplete() ? LoginQuestion::Wanted : LoginQuestion::TypedRefused;
        if (!login->isComplete())
            continue;
        const auto attempt = std::make_shared<LoginTry>(m_services, account->url, *login);
        prompts.showConnecting(question.host, [attempt] { attempt->cancel(); });
        const Result<XMLRPCValue> answer = co_await attempt->options();
        if (!self)
            co_return;
        prompts.hideConnecting();
        if (!isConnected(account))
            break;
        if (answer) {
            const bool isKept = account->preferences && account->preferences->login_automatically.value_or(false);
            take(account, *login, isKept);
            hasNewLogin = true;
            break;
        }
        if (LoginTry::isRefusal(answer.error()))
            question.reason = LoginQuestion::TypedRefused;
        else if (!LoginTry::isCancelled(answer.error()))
            prompts.alert(u"“%1” could not be asked whether the login holds."_qs.arg(account->alias()),
                answer.error().description);
    }
    m_asking.remove(account);
    settle(account, hasNewLogin);
    if (hasNewLogin)
        Q_EMIT didLogIn(account);
    else if (isConnected(account))
        Q_EMIT didNotLogIn(account);
}

void BlogLogins::didRefuse(const ServicePtr &service, const std::function<void()> &otherwise)
{
    const AccountPtr account = service->account;
    if (m_asking.contains(account))
        return; // the sheet is the answer
    if (service->password.isEmpty()) {
        askForLogin(account);
        return;
    }
    QList<std::function<void()>> &doubts = m_doubts[account];
    doubts.append(otherwise);
    unsettle(account);
    if (doubts.size() == 1)
        lookAtLogin(account, {service->username, service->password});
}

QCoro::Task<void> BlogLogins::lookAtLogin(AccountPtr account, Login login)
{
    const QPointer<BlogLogins> self(this);
    LoginTry attempt(m_services, account->url, login);
    const Result<XMLRPCValue> answer = co_await attempt.options();
    if (!self)
        co_return;
    const QList<std::function<void()>> otherwise = m_doubts.take(account);
    if (isConnected(account) && !answer && LoginTry::isRefusal(answer.error())) {
        askForLogin(account, LoginQuestion::StoredRefused);
        co_return;
    }
    if (!m_asking.contains(account))
        settle(account, false);
    if (!isConnected(account))
        co_return;
    for (const std::function<void()> &say : otherwise)
        say();
}

void BlogLogins::take(const AccountPtr &account, const Login &login, bool isKept)
{
    if (login.username != account->name) {
        erase(itemOf(account), account);
        account->blog_name = account->alias(); // which names the blog's folder, and may have been the user name
        account->name = login.username;
        m_store.saveOrLog();
    }
    const ServicePtr service = m_services.serviceOf(account);
    service->username = login.username;
    service->password = login.password;
    if (!isKept)
        return;
    const auto stored = m_environment.platform.keychain.setPassword(
        login.password, ZLWordpressService::keychainService(), itemOf(account));
    if (!stored)
        ZLLog(u"error storing password - %1"_qs.arg(stored.error().description));
}

void BlogLogins::changeAddress(const AccountPtr &account, const QString &url)
{
    const QString formerItem = itemOf(account);
    if (std::exchange(account->url, url) == url)
        return;
    m_store.saveOrLog();
    moveItem(account, formerItem, itemOf(account));
}

void BlogLogins::forget(const AccountPtr &account)
{
    erase(itemOf(account), account);
}

void BlogLogins::erase(const QString &item, const AccountPtr &account)
{
    const bool isShared = std::any_of(m_state.accounts.begin(), m_state.accounts.end(),
        [&](const AccountPtr &other) { return other != account && itemOf(other) == item; });
    if (isShared)
        return;
    const auto deleted =
        m_environment.platform.keychain.deletePasswordForService(ZLWordpressService::keychainService(), item);
    if (!deleted)
        ZLLog(deleted.error().description);
}

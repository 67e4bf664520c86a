#pragma once

#include "app/LoginTry.h"

#include <QHash>
#include <QSet>
#include <memory>

/// The logins of the connected blogs: brings their passwords from the keychain, asks for one anew that a blog refuses,
/// and keeps the keychain in step with the accounts.
class BlogLogins : public QObject {
    Q_OBJECT
public:
    BlogLogins(AppEnvironment &environment, CurrentBlogState &state, AccountStore &store, BlogServices &services);
    ~BlogLogins() override;

    /// Fetches the passwords, for each of which the keychain may have to ask the user; then didGetPassword(). One that
    /// an earlier version stored under an address with a login in it moves to the address without.
    void loadAll();
    /// Opens the login sheet when the account has no password, or shall not log in by itself. Not while the keychain
    /// may still give one.
    void askIfNeeded(const AccountPtr &account);
    /// Whether there is a password, without which no call can be right. If not, opens the login sheet.
    bool requirePassword(const AccountPtr &account);
    /// Opens the login sheet of this account. One for each account; several queue.
    QCoro::Task<void> askForLogin(AccountPtr account, LoginQuestion::Reason reason = LoginQuestion::Wanted);
    /// When all that is asked or doubted about the account's login is settled: whether there is a new one that holds.
    QFuture<bool> newLogin(const AccountPtr &account);
    /// A call was refused as a wrong login is, which may have other reasons: looks whether the login holds, and asks
    /// for it anew if not. If it does hold, `otherwise` says what else is the matter.
    void didRefuse(const ServicePtr &service, const std::function<void()> &otherwise);

    /// The login holds: it is the account's from now on.
    void take(const AccountPtr &account, const Login &login, bool isKept = true);
    /// A login held at this address of the account's blog: that is the account's from now on.
    void changeAddress(const AccountPtr &account, const QString &url);
    /// The account is gone, and its password goes with it.
    void forget(const AccountPtr &account);

Q_SIGNALS:
    void didGetPassword(const AccountPtr &account); ///< or there is none
    void didLogIn(const AccountPtr &account);
    void didNotLogIn(const AccountPtr &account); ///< the login sheet was cancelled

private:
    QCoro::Task<void> load(AccountPtr account, QString formerItem);
    QCoro::Task<void> lookAtLogin(AccountPtr account, Login login);
    void unsettle(const AccountPtr &account);
    void settle(const AccountPtr &account, bool hasNewLogin);
    bool isConnected(const AccountPtr &account) const { return m_state.accounts.contains(account); }
    void moveItem(const AccountPtr &account, const QString &from, const QString &to);
    /// Erases the item, unless another account has the same, as two of one address and user of an earlier version do.
    void erase(const QString &item, const AccountPtr &account);

    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    AccountStore &m_store;
    BlogServices &m_services;
    QSet<AccountPtr> m_loading;
    QSet<AccountPtr> m_asking;
    QHash<AccountPtr, QList<std::function<void()>>> m_doubts; ///< the login is being looked at
    QHash<AccountPtr, std::shared_ptr<QPromise<bool>>> m_unsettled; ///< it is asked for or being looked at
};

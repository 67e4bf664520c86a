#pragma once

#include "platform/ZLError.h"
#include "store/Account.h"

#include <QByteArray>
#include <QSqlDatabase>

/// The one context of the object store: objects in memory over the SQLite file "Zalmo.storedata". Used on the main
/// thread. Objects are changed in place; save() writes all of them in one transaction, and a failed save leaves the
/// changes in memory.
class ZLManagedObjectContext {
public:
    /// Opens or creates the store in `directory` (made with its parents) and migrates older schemas. Fails with
    /// "Expected a folder to store application data, found a file (%@)." (domain "YOUR_ERROR_DOMAIN", code 101), or
    /// with what the database says. A file that is no database stays untouched.
    [[nodiscard]] static Result<std::unique_ptr<ZLManagedObjectContext>> open(const QString &directory);
    ~ZLManagedObjectContext();
    ZLManagedObjectContext(const ZLManagedObjectContext &) = delete;
    ZLManagedObjectContext &operator=(const ZLManagedObjectContext &) = delete;

    /// All accounts in the order of their connection.
    QList<AccountPtr> accounts() const { return m_accounts; }
    QList<SelectedAccountPtr> selectedAccounts() const { return m_selected; }

    AccountPtr insertAccount();
    /// Takes the account out, with its preferences, link and taxonomies; its SelectedAccount loses it.
    void deleteAccount(const AccountPtr &account);
    SelectedAccountPtr insertSelectedAccount();
    void deleteSelectedAccount(const SelectedAccountPtr &selected);

    /// Whether memory differs from what was last read or saved.
    bool hasChanges() const;
    [[nodiscard]] Result<void> save();

private:
    explicit ZLManagedObjectContext(const QString &connectionName);
    QSqlDatabase database() const;
    QByteArray snapshot() const;

    QString m_connectionName;
    QList<AccountPtr> m_accounts;
    QList<SelectedAccountPtr> m_selected;
    QByteArray m_saved; ///< snapshot() of the last state that memory and file shared
};

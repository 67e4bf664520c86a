#pragma once

#include "platform/ZLError.h"
#include "store/AddressLogin.h"
#include "store/StoreRows.h"

#include <QObject>
#include <QSqlDatabase>
#include <functional>
#include <future>

/// The one context of the object store: objects in memory over the SQLite file "Zalmo.storedata", which is the user's
/// alone. Used on the main thread. Objects are changed in place; a save writes what differs from the file, in one
/// transaction, and a failed one leaves the changes in memory.
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

    /// Logins that an earlier version kept inside the addresses of accounts, once. They are out of the addresses
    /// already; who takes them saves, and then they are out of the file too.
    struct StoredLogin {
        AccountPtr account;
        AddressLogin login;
    };
    QList<StoredLogin> takeStoredLogins() { return std::exchange(m_storedLogins, {}); }

    /// Whether memory differs from what was last read or saved.
    bool hasChanges() const;
    /// Writes now, after what a thread is still writing.
    [[nodiscard]] Result<void> save();
    /// Takes what is in memory now and writes it on a thread: for lists of terms, which may be long. Several calls
    /// while one is writing become one more. `didFail` is called on the main thread.
    void saveSoon(const std::function<void(const ZLError &)> &didFail);

private:
    ZLManagedObjectContext(const QString &connectionName, const QString &file);
    QSqlDatabase database() const;
    void take(const StoreRows::Rows &rows);
    StoreRows::Rows rows() const;
    StoreRows::Rows rowsToSave();
    void startWriting();
    void finishWriting();

    QString m_connectionName;
    QString m_file;
    QList<AccountPtr> m_accounts;
    QList<SelectedAccountPtr> m_selected;
    QList<StoredLogin> m_storedLogins;
    StoreRows::Rows m_saved; ///< what the file holds

    std::future<Result<void>> m_written; ///< valid while a thread writes m_writing
    StoreRows::Rows m_writing;
    int m_writings = 0;
    bool m_writesAgain = false;
    std::function<void(const ZLError &)> m_didFail;
    QObject m_mainThread; ///< receives the end of the writing
};

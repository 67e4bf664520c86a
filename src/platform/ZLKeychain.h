#pragma once

#include "platform/ZLError.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QPair>
#include <memory>

/// Where secrets are kept: one per pair of service and account.
class ZLKeychainBackend {
public:
    virtual ~ZLKeychainBackend() = default;
    /// The secret; an empty string when there is none. Fails when the desktop has no secret service.
    virtual QCoro::Task<Result<QString>> read(QString service, QString account) = 0;
    virtual QCoro::Task<Result<void>> write(QString service, QString account, QString password) = 0;
    virtual QCoro::Task<Result<void>> remove(QString service, QString account) = 0;
};

/// The desktop's secret service through QtKeychain; never falls back on plain text.
std::unique_ptr<ZLKeychainBackend> makeSystemKeychain();

/// Passwords for the session, backed by the desktop's secret service. Reading is a look-up in memory, so that a
/// service can be made without waiting: load() fetches the accounts' items once at launch. Without a secret service
/// passwords last for the session, and becameUnavailable() is said once.
class ZLKeychain : public QObject {
    Q_OBJECT
public:
    explicit ZLKeychain(std::unique_ptr<ZLKeychainBackend> backend, QObject *parent = nullptr);
    ~ZLKeychain() override;

    /// Fetches the items of these accounts into memory, but for those that were set or deleted here since. An item that
    /// cannot be read does not stop the others.
    QCoro::Task<void> load(QString service, QStringList accounts);

    /// The password; null when there is none. An empty item gives null as well.
    QString passwordForService(const QString &service, const QString &account) const;
    /// Replaces the item. Fails with code -1001 for an empty service or account, else answers for the memory;
    /// a failure of the secret service is logged and said by becameUnavailable().
    Result<void> setPassword(const QString &password, const QString &service, const QString &account);
    Result<void> deletePasswordForService(const QString &service, const QString &account);

Q_SIGNALS:
    void becameUnavailable();

private:
    void reportFailure(QCoro::Task<Result<void>> &&task);
    void reportUnavailable(const ZLError &error);

    std::unique_ptr<ZLKeychainBackend> m_backend;
    QHash<QPair<QString, QString>, QString> m_items; ///< empty: there is none
    bool m_saidUnavailable = false;
};

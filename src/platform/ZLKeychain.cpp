#include "platform/ZLKeychain.h"

#include "platform/ZLLog.h"

#include <QPointer>

namespace {

Result<void> checkedNames(const QString &service, const QString &account)
{
    if (service.isEmpty() || account.isEmpty())
        return failure(
            QStringLiteral("ZLKeychain"), -1001, QStringLiteral("A password needs a service and an account."));
    return {};
}

} // namespace

ZLKeychain::ZLKeychain(std::unique_ptr<ZLKeychainBackend> backend, QObject *parent)
    : QObject(parent)
    , m_backend(std::move(backend))
{
}

ZLKeychain::~ZLKeychain() = default;

QCoro::Task<void> ZLKeychain::load(QString service, QStringList accounts)
{
    const QPointer<ZLKeychain> guard(this);
    std::optional<ZLError> failed;
    for (const QString &account : accounts) {
        const Result<QString> item = co_await m_backend->read(service, account);
        if (!guard)
            co_return;
        if (!item)
            failed = item.error();
        else if (!m_items.contains({service, account})) // what was set or deleted meanwhile is newer
            m_items.insert({service, account}, *item);
    }
    if (failed)
        reportUnavailable(*failed);
}

QString ZLKeychain::passwordForService(const QString &service, const QString &account) const
{
    const QString password = m_items.value({service, account});
    return password.isEmpty() ? QString() : password;
}

Result<void> ZLKeychain::setPassword(const QString &password, const QString &service, const QString &account)
{
    if (const auto names = checkedNames(service, account); !names)
        return names;
    m_items.insert({service, account}, password);
    reportFailure(m_backend->write(service, account, password));
    return {};
}

Result<void> ZLKeychain::deletePasswordForService(const QString &service, const QString &account)
{
    if (const auto names = checkedNames(service, account); !names)
        return names;
    m_items.insert({service, account}, {});
    reportFailure(m_backend->remove(service, account));
    return {};
}

void ZLKeychain::reportFailure(QCoro::Task<Result<void>> &&task)
{
    std::move(task).then([guard = QPointer(this)](Result<void> outcome) {
        if (guard && !outcome)
            guard->reportUnavailable(outcome.error());
    });
}

void ZLKeychain::reportUnavailable(const ZLError &error)
{
    ZLLog(QStringLiteral("keychain: %1").arg(error.description));
    if (!std::exchange(m_saidUnavailable, true))
        Q_EMIT becameUnavailable();
}

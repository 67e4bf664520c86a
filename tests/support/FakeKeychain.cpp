#include "support/FakeKeychain.h"

#include <QCoroTimer>

namespace {
ZLError unavailable()
{
    return {QStringLiteral("ZLKeychain"), 1, QStringLiteral("This desktop has no secret service.")};
}
} // namespace

FakeKeychain::FakeKeychain(std::shared_ptr<Items> items)
    : m_items(std::move(items))
{
}

QCoro::Task<Result<QString>> FakeKeychain::read(QString service, QString account)
{
    if (isLocked)
        co_await QCoro::sleepFor(std::chrono::milliseconds(20));
    if (isUnavailable)
        co_return failure(unavailable());
    co_return m_items->value({service, account});
}

QCoro::Task<Result<void>> FakeKeychain::write(QString service, QString account, QString password)
{
    if (isUnavailable)
        co_return failure(unavailable());
    m_items->insert({service, account}, password);
    co_return Result<void>();
}

QCoro::Task<Result<void>> FakeKeychain::remove(QString service, QString account)
{
    if (isUnavailable)
        co_return failure(unavailable());
    m_items->remove({service, account});
    co_return Result<void>();
}

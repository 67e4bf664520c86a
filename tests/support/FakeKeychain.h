#pragma once

#include "platform/ZLKeychain.h"

#include <QCoroTimer>

/// A secret service in memory. The items are shared, so that a second start of the program finds those of the first.
class FakeKeychain : public ZLKeychainBackend {
public:
    using Items = QHash<QPair<QString, QString>, QString>;
    explicit FakeKeychain(std::shared_ptr<Items> items = std::make_shared<Items>())
        : m_items(std::move(items))
    {
    }

    bool isUnavailable = false; ///< as on a desktop without a secret service
    QString damaged; ///< the account whose item cannot be read
    bool isLocked = false; ///< reading waits, as for a user who is asked to unlock it

    QCoro::Task<Result<QString>> read(QString service, QString account) override
    {
        const QString found = m_items->value({service, account});
        if (isLocked)
            co_await QCoro::sleepFor(std::chrono::milliseconds(20));
        if (isUnavailable || account == damaged)
            co_return failure(unavailable);
        co_return found;
    }
    QCoro::Task<Result<void>> write(QString service, QString account, QString password) override
    {
        if (isUnavailable)
            co_return failure(unavailable);
        m_items->insert({service, account}, password);
        co_return Result<void>();
    }
    QCoro::Task<Result<void>> remove(QString service, QString account) override
    {
        if (isUnavailable)
            co_return failure(unavailable);
        m_items->remove({service, account});
        co_return Result<void>();
    }

private:
    const ZLError unavailable{u"ZLKeychain"_qs, 1, u"This desktop has no secret service."_qs};
    std::shared_ptr<Items> m_items;
};

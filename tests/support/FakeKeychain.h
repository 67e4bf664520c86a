#pragma once

#include "platform/ZLKeychain.h"

/// A secret service in memory. The items are shared, so that a second start of the program finds those of the first.
class FakeKeychain : public ZLKeychainBackend {
public:
    using Items = QHash<QPair<QString, QString>, QString>;
    explicit FakeKeychain(std::shared_ptr<Items> items = std::make_shared<Items>());

    bool isUnavailable = false; ///< as on a desktop without a secret service
    bool isLocked = false; ///< reading waits, as for a user who is asked to unlock it

    QCoro::Task<Result<QString>> read(QString service, QString account) override;
    QCoro::Task<Result<void>> write(QString service, QString account, QString password) override;
    QCoro::Task<Result<void>> remove(QString service, QString account) override;

private:
    std::shared_ptr<Items> m_items;
};

#pragma once

#include "support/FakeBlog.h"
#include "support/FakeKeychain.h"
#include "support/FakeNotificationCenter.h"
#include "support/FakeReachability.h"
#include "support/FakeWorkspace.h"
#include "support/ManualClock.h"
#include "wordpress/ZLWordpressService.h"

#include <QTemporaryDir>

/// What the whole program stands on, in a private home and over a pretended network with one blog in it.
class FakePlatform {
public:
    FakePlatform();

    /// Puts an account into the store while no program has it open. A null password leaves the keychain without one.
    AccountPtr seedAccount(const QString &alias, const QString &url, const QString &password = u"secret"_qs);
    /// Works on the store while no program has it open.
    void changeStore(const std::function<void(ZLManagedObjectContext &)> &change);

    QTemporaryDir folder;
    ZLFileManager files;
    FakeNetwork network;
    FakeBlog blog;
    std::shared_ptr<FakeKeychain::Items> secrets = std::make_shared<FakeKeychain::Items>();
    FakeReachability reachability;
    FakeNotificationCenter notifications;
    FakeWorkspace workspace;
    ManualClock clock;
};

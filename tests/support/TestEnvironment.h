#pragma once

#include "support/FakeKeychain.h"
#include "support/FakeNetwork.h"
#include "wordpress/ZLWordpressService.h"

#include <QTemporaryDir>

/// All that a service or the application stands on, in a temporary folder and without a network. Everything but the
/// network and the keychain's backend is the program's own.
class TestEnvironment {
public:
    TestEnvironment();

    QTemporaryDir folder;
    ZLFileManager files;
    FakeNetwork network;
    XMLRPCConnectionManager connections;
    ZLKeychain keychain;
    ZLNotifications notifications;
    ZLClock clock;
    std::unique_ptr<ZLManagedObjectContext> context;
    ZLDocumentController documents;

    ZLServiceEnvironment serviceEnvironment();

    /// A connected blog: an account in the store and its password in the keychain.
    AccountPtr addAccount(const QString &name, const QString &password, const QString &url, const QString &alias = {});
    /// Writes a file into the cache folder; gives its address as a body names it.
    QString addCachedFile(const QString &name, const QByteArray &bytes);
};

#pragma once

#include "support/FakeKeychain.h"
#include "support/FakeNetwork.h"
#include "support/Files.h"
#include "wordpress/ZLWordpressService.h"

#include <QTemporaryDir>

/// All that a service or the application stands on, in a temporary folder and without a network. Everything but the
/// network and the keychain's backend is the program's own.
class TestEnvironment {
public:
    TestEnvironment()
    {
        auto opened = ZLManagedObjectContext::open(files.applicationFilesDirectory());
        if (!opened)
            qFatal("no store: %s", qUtf8Printable(opened.error().description));
        context = std::move(*opened);
    }

    QTemporaryDir folder;
    ZLFileManager files{folder.filePath("data"), folder.filePath("cache")};
    FakeNetwork network;
    XMLRPCConnectionManager connections{network};
    ZLKeychain keychain{std::make_unique<FakeKeychain>()};
    ZLNotifications notifications;
    ZLClock clock;
    std::unique_ptr<ZLManagedObjectContext> context;
    ZLDocumentController documents;

    ZLServiceEnvironment serviceEnvironment()
    {
        return {connections, keychain, files, notifications, clock, documents, [this] { return context.get(); }};
    }

    /// A connected blog: an account in the store and its password in the keychain.
    AccountPtr addAccount(const QString &name, const QString &password, const QString &url, const QString &alias = {})
    {
        const AccountPtr account = context->insertAccount();
        account->name = name;
        account->url = url;
        account->blog_name = alias;
        account->preferences = std::make_shared<AccountPreferences>();
        const Result<void> stored = keychain.setPassword(
            password, ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(name, url));
        if (!stored || !context->save())
            qFatal("the account could not be stored");
        return account;
    }
    /// Writes a file into the cache folder; gives its address as a body names it.
    QString addCachedFile(const QString &name, const QByteArray &bytes)
    {
        const QString path = files.cacheFolder() + '/' + name;
        writeFile(path, bytes);
        return "file://localhost" + path;
    }
};

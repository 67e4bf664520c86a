#include "support/TestEnvironment.h"

#include "support/Files.h"

TestEnvironment::TestEnvironment()
    : files(folder.filePath(u"data"_qs), folder.filePath(u"cache"_qs))
    , connections(network)
    , keychain(std::make_unique<FakeKeychain>())
{
    Result<std::unique_ptr<ZLManagedObjectContext>> opened =
        ZLManagedObjectContext::open(files.applicationFilesDirectory());
    if (!opened)
        qFatal("no store: %s", qUtf8Printable(opened.error().description));
    context = std::move(*opened);
}

ZLServiceEnvironment TestEnvironment::serviceEnvironment()
{
    return {connections, keychain, files, notifications, clock, documents, [this] { return context.get(); }};
}

AccountPtr TestEnvironment::addAccount(
    const QString &name, const QString &password, const QString &url, const QString &alias)
{
    const AccountPtr account = context->insertAccount();
    account->name = name;
    account->url = url;
    account->blog_name = alias;
    account->preferences = std::make_shared<AccountPreferences>();
    const Result<void> stored = keychain.setPassword(
        password, ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(name, url));
    const Result<void> saved = context->save();
    if (!stored || !saved)
        qFatal("the account could not be stored");
    return account;
}

QString TestEnvironment::addCachedFile(const QString &name, const QByteArray &bytes)
{
    const QString path = files.cacheFolder() + QLatin1Char('/') + name;
    writeFile(path, bytes);
    return u"file://localhost"_qs + path;
}

#include "support/TestEnvironment.h"

#include <QDirIterator>
#include <QFile>

TestEnvironment::TestEnvironment()
    : files(dataHome(), cacheHome())
    , connections(network)
    , secrets(std::make_shared<FakeKeychain::Items>())
    , keychainBackend(new FakeKeychain(secrets))
    , keychain(std::unique_ptr<ZLKeychainBackend>(keychainBackend))
{
    Result<std::unique_ptr<ZLManagedObjectContext>> opened =
        ZLManagedObjectContext::open(files.applicationFilesDirectory());
    if (!opened)
        qFatal("no store: %s", qUtf8Printable(opened.error().description));
    context = std::move(*opened);
}

TestEnvironment::~TestEnvironment() = default;

ZLServiceEnvironment TestEnvironment::serviceEnvironment()
{
    return {connections, keychain, files, notifications, [this] { return context.get(); },
        [this] { return currentDocument; }};
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
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(path));
    return QStringLiteral("file://localhost") + path;
}

QMap<QString, QByteArray> TestEnvironment::postFiles(const QString &alias) const
{
    const QDir posts(files.blogPath(alias) + QLatin1String("/posts"));
    QMap<QString, QByteArray> found;
    QDirIterator walk(posts.path(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        if (file.open(QIODevice::ReadOnly))
            found.insert(posts.relativeFilePath(file.fileName()), file.readAll());
    }
    return found;
}

#include "support/FakePlatform.h"

FakePlatform::FakePlatform()
    : files(folder.filePath(u"data"_qs), folder.filePath(u"cache"_qs))
{
    network.addHost(blog.host(), blog);
}

AccountPtr FakePlatform::seedAccount(const QString &alias, const QString &url, const QString &password)
{
    AccountPtr account;
    changeStore([&](ZLManagedObjectContext &context) {
        account = context.insertAccount();
        account->name = blog.user;
        account->url = url;
        account->blog_name = alias;
        account->preferences = std::make_shared<AccountPreferences>();
    });
    if (!password.isNull())
        secrets->insert(
            {ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(blog.user, url)}, password);
    return account;
}

void FakePlatform::changeStore(const std::function<void(ZLManagedObjectContext &)> &change)
{
    auto context = ZLManagedObjectContext::open(files.applicationFilesDirectory());
    if (!context)
        qFatal("no store: %s", qUtf8Printable(context.error().description));
    change(**context);
    if (!(*context)->save())
        qFatal("the store could not be saved");
}

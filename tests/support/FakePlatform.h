#pragma once

#include "platform/ZLUserNotificationCenter.h"
#include "platform/ZLWorkspace.h"
#include "support/FakeBlog.h"
#include "support/FakeKeychain.h"
#include "support/FakeReachability.h"
#include "support/ManualClock.h"
#include "wordpress/ZLWordpressService.h"

#include <QTemporaryDir>

/// Keeps the messages instead of showing them.
class FakeNotificationCenter : public ZLUserNotificationCenter {
    Q_OBJECT
public:
    void deliver(const ZLUserNotification &notification) override { delivered.append(notification); }

    QList<ZLUserNotification> delivered;
};

/// Notes what would be opened in the browser or put on the clipboard.
class FakeWorkspace : public ZLWorkspace {
public:
    void openURL(const QUrl &url) override { opened.append(url); }
    bool copyLink(const QUrl &url) override
    {
        if (clipboardWorks)
            copied.append(url);
        return clipboardWorks;
    }

    QList<QUrl> opened;
    QList<QUrl> copied;
    bool clipboardWorks = true;
};

/// What the whole program stands on, in a private home and over a pretended network with one blog in it.
class FakePlatform {
public:
    FakePlatform() { network.addHost(blog.host(), blog); }

    /// Puts an account into the store while no program has it open. A null password leaves the keychain without one.
    void seedAccount(const QString &alias, const QString &url, const QString &password = u"secret"_qs)
    {
        changeStore([&](ZLManagedObjectContext &context) {
            const AccountPtr account = context.insertAccount();
            account->name = blog.user;
            account->url = url;
            account->blog_name = alias;
            account->preferences = std::make_shared<AccountPreferences>();
        });
        if (!password.isNull())
            secrets->insert(
                {ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(blog.user, url)}, password);
    }
    /// Works on the store while no program has it open.
    void changeStore(const std::function<void(ZLManagedObjectContext &)> &change)
    {
        auto context = ZLManagedObjectContext::open(files.applicationFilesDirectory());
        if (!context)
            qFatal("no store: %s", qUtf8Printable(context.error().description));
        change(**context);
        if (!(*context)->save())
            qFatal("the store could not be saved");
    }

    QTemporaryDir folder;
    ZLFileManager files{folder.filePath("data"), folder.filePath("cache")};
    FakeNetwork network;
    FakeBlog blog;
    std::shared_ptr<FakeKeychain::Items> secrets = std::make_shared<FakeKeychain::Items>();
    FakeReachability reachability;
    FakeNotificationCenter notifications;
    FakeWorkspace workspace;
    ManualClock clock;
};

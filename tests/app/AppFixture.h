#pragma once

#include "app/ZLAppDelegate.h"
#include "support/FakeBlog.h"
#include "support/FakeComposeScreen.h"
#include "support/FakeKeychain.h"
#include "support/FakeNotificationCenter.h"
#include "support/FakePostList.h"
#include "support/FakePrompts.h"
#include "support/FakeReachability.h"
#include "support/FakeSelector.h"
#include "support/FakeWorkspace.h"
#include "support/ManualClock.h"

#include <QTemporaryDir>
#include <QTest>
#include <functional>

/// The host of icons: no icon for any blog, unless a test gives it one.
class FakeIcons : public FakeHost {
public:
    FakeAnswer answer(const FakeRequest &request) override
    {
        asked.append(request.request.url().toString());
        FakeAnswer answer;
        answer.status = icon.isEmpty() ? 404 : 200;
        answer.body = icon;
        return answer;
    }
    QStringList asked;
    QByteArray icon;
};

/// The real controller over pretended windows, a pretended network and a private home.
class AppFixture {
public:
    AppFixture();
    ~AppFixture();

    /// Puts accounts into the store before the program starts. A null password leaves the keychain without one.
    AccountPtr seedAccount(
        const QString &alias, const QString &url, const QString &password = QStringLiteral("secret"));
    /// Works on the store while no program has it open.
    void changeStore(const std::function<void(ZLManagedObjectContext &)> &change);
    QString storedSelection(); ///< the alias of the account that the store says is selected

    void launch();
    void quit();
    /// Types the address, the user and the password of the blog, and waits until it is connected.
    void connectBlog();

    /// Writes a new post the way the compose screen does; gives the working post.
    PostPtr writePost(const QString &title, const QString &content);
    /// The working post of a row.
    PostPtr postOf(const LocalPostPtr &row);
    LocalPostPtr rowTitled(const QString &title) const;

    QString postsFolder(const QString &alias) const;
    /// The post files of a blog, by their path below its folder of posts.
    QStringList postFiles(const QString &alias) const;
    QByteArray read(const QString &alias, const QString &file) const;
    ZLAppDelegate &app() { return *m_app; }

    QTemporaryDir folder;
    ZLFileManager files;
    FakeNetwork network;
    FakeBlog blog;
    FakeIcons icons;
    std::shared_ptr<FakeKeychain::Items> secrets = std::make_shared<FakeKeychain::Items>();
    bool hasSecretService = true;
    bool isKeychainLocked = false;
    FakeReachability reachability;
    FakeNotificationCenter notifications;
    FakeWorkspace workspace;
    ManualClock clock;
    FakePrompts prompts;
    FakeComposeScreen compose;
    FakePostList list;
    FakeSelector selector;
    std::unique_ptr<ZLDefaults> defaults;
    std::unique_ptr<ZLKeychain> keychain;

private:
    std::unique_ptr<ZLAppDelegate> m_app;
};

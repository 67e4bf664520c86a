#pragma once

#include "app/ZLAppDelegate.h"
#include "support/FakeComposeScreen.h"
#include "support/FakePlatform.h"
#include "support/FakePostList.h"
#include "support/FakePrompts.h"
#include "support/FakeSelector.h"

#include <QTest>

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

/// The real controller over pretended windows and a pretended platform.
class AppFixture : public FakePlatform {
public:
    AppFixture();
    ~AppFixture();

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

    FakeIcons icons;
    bool hasSecretService = true;
    bool isKeychainLocked = false;
    FakePrompts prompts;
    FakeComposeScreen compose;
    FakePostList list;
    FakeSelector selector;
    std::unique_ptr<ZLDefaults> defaults;
    std::unique_ptr<ZLKeychain> keychain;

private:
    std::unique_ptr<ZLAppDelegate> m_app;
};

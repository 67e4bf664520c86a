#pragma once

#include "app/ZLAppDelegate.h"
#include "support/FakeComposeScreen.h"
#include "support/FakePlatform.h"
#include "support/FakePostList.h"
#include "support/FakePrompts.h"
#include "support/FakeSelector.h"
#include "support/Files.h"
#include "support/TestClasses.h"

/// The real controller over pretended windows and a pretended platform.
class AppFixture : public FakePlatform {
public:
    AppFixture();

    QString storedSelection(); ///< the alias of the account that the store says is selected

    void launch();
    /// Launches with one account, "Blog", of the blog.
    void launchWithBlog(const QString &password = u"secret"_qs);
    void quit();
    /// Changes the store behind the program's back.
    void runOnStore(const QString &statement);
    /// Types the address, the user and the password.
    void logInto(const FakeBlog &blog);
    /// Takes the account away, as the preferences do.
    void removeAccount(AccountPtr account);
    /// Logs into the blog, and waits until it is connected.
    void connectBlog();

    /// Writes a new post the way the compose screen does; gives the working post.
    PostPtr writePost(const QString &title, const QString &content);
    /// The working post of a row.
    PostPtr postOf(const LocalPostPtr &row);
    LocalPostPtr rowTitled(const QString &title) const;

    QString postsFolder(const QString &alias) const;
    /// The post files of a blog, by their path below its folder of posts.
    QStringList postFiles(const QString &alias) const { return filesBelow(postsFolder(alias)); }
    QByteArray read(const QString &alias, const QString &file) const
    {
        return contentsOf(postsFolder(alias) + u'/' + file);
    }
    ZLAppDelegate &app() { return *m_app; }
    ZLWordpressService *service() { return m_app->currentBlog().wordpressService(); }
    const QList<AccountPtr> &accounts() { return m_app->currentBlog().accounts(); }
    const QList<LocalPostPtr> &rows() { return m_app->posts().posts(); }
    /// What the keychain holds for a user of a blog.
    QString secretOf(const QString &user, const QString &url) const
    {
        return secrets->value({ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(user, url)});
    }

    FakeBlog other{u"other.test"_qs}; ///< a second blog, without an account unless a test seeds one
    bool hasSecretService = true;
    bool isKeychainLocked = false;
    QString damagedItem; ///< of the keychain
    int timesInFront = 0; ///< how often the window was brought there
    FakePrompts prompts;
    FakeComposeScreen compose;
    FakePostList list;
    FakeSelector selector;
    std::unique_ptr<ZLDefaults> defaults;
    std::unique_ptr<ZLKeychain> keychain;

private:
    std::unique_ptr<ZLAppDelegate> m_app;
};

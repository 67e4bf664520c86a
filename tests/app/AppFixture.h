#pragma once

#include "app/ZLAppDelegate.h"
#include "support/FakePlatform.h"
#include "support/FakePrompts.h"
#include "support/FakeWindows.h"
#include "support/Files.h"
#include "support/TestClasses.h"

#include <QCoroTask>
#include <QSqlQuery>

/// The real controller over pretended windows and a pretended platform.
class AppFixture : public FakePlatform {
public:
    AppFixture()
    {
        network.addHost(other.host(), other);
        blog.now = clock.present; // the blog's clock and the program's agree
    }

    void launch()
    {
        defaults = std::make_unique<ZLDefaults>(folder.filePath("preferences.ini"));
        auto backend = std::make_unique<FakeKeychain>(secrets);
        backend->isUnavailable = !hasSecretService;
        backend->isLocked = isKeychainLocked;
        backend->damaged = damagedItem;
        keychain = std::make_unique<ZLKeychain>(std::move(backend));
        m_app = std::make_unique<ZLAppDelegate>(
            ZLPlatform{files, *defaults, *keychain, reachability, notifications, workspace, clock, network});
        m_app->setWindows({&compose, &list, &prompts, &selector, [this] { ++timesInFront; }});
        m_app->applicationDidFinishLaunching();
        m_app->goOnline();
    }
    /// Launches with one account, "Blog", of the blog.
    void launchWithBlog(const QString &password = "secret")
    {
        seedAccount("Blog", blog.url(), password);
        launch();
    }
    /// Launches so, or with a second account, "Other", too, and waits until the first round is over.
    void start(bool withOther = false)
    {
        seedAccount("Blog", blog.url());
        if (withOther)
            seedAccount("Other", other.url());
        launch();
        waitForRound();
    }
    void waitForRound() { QTRY_VERIFY(!list.isSyncing); }
    void quit()
    {
        compose.post.reset();
        compose.document.reset();
        m_app.reset();
    }
    /// Changes the store behind the program's back.
    void runOnStore(const QString &statement)
    {
        {
            QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "behind the back");
            database.setDatabaseName(files.applicationFilesDirectory() + "/Zalmo.storedata");
            QVERIFY(database.open());
            QVERIFY(QSqlQuery(database).exec(statement));
        }
        QSqlDatabase::removeDatabase("behind the back");
    }
    QString storedSelection() ///< the alias of the account that the store says is selected
    {
        QString alias;
        changeStore([&](ZLManagedObjectContext &context) {
            for (const SelectedAccountPtr &selected : context.selectedAccounts())
                alias += selected->account ? selected->account->alias() : "-";
        });
        return alias;
    }
    /// Types the address, the user and the password.
    void logInto(const FakeBlog &blog)
    {
        prompts.logins.append({blog.user, blog.password});
        if (prompts.intro.isShown())
            prompts.intro.answer(blog.url());
        else
            m_app->connection().connectToBlogURL(blog.url());
    }
    /// Logs into the blog, and waits until it is connected.
    void connectBlog()
    {
        logInto(blog);
        QTRY_VERIFY(prompts.journal.contains("connected: " + blog.title));
        waitForRound();
    }
    /// Takes the account away, as the preferences do.
    void removeAccount(AccountPtr account)
    {
        ZLManagedObjectContext *context = m_app->store().managedObjectContext();
        context->deleteAccount(account);
        QVERIFY(context->save().has_value());
        m_app->currentBlog().didRemoveAccount(account);
    }

    /// Writes a new post the way the compose screen does; gives the working post.
    PostPtr writePost(const QString &title, const QString &content, int status = ZLWordpressPost::Publish)
    {
        m_app->posts().createNewPost();
        const PostPtr post = postOf(rows().value(0));
        post->title = title;
        post->content = content;
        post->status = status;
        return post;
    }
    DocumentPtr documentOf(const QUrl &file)
    {
        return QCoro::waitFor(m_app->documentController().openDocumentWithContentsOfURL(file)).value();
    }
    /// The working post of a row.
    PostPtr postOf(const LocalPostPtr &row)
    {
        const PostPtr post = documentOf(row->localFile)->wordpressPost();
        post->localPost = row;
        return post;
    }
    LocalPostPtr rowTitled(const QString &title)
    {
        const auto found = std::find_if(
            rows().begin(), rows().end(), [&title](const LocalPostPtr &row) { return row->title == title; });
        return found == rows().end() ? nullptr : *found;
    }
    /// Sends a post with its texts in its file, as the compose screen does, and waits for the outcome.
    void send(const PostPtr &post, Upload::Kind kind = Upload::NewPost)
    {
        const qsizetype before = list.updated.size();
        sendLate(post, {}, kind);
        QTRY_COMPARE(list.updated.size(), before + 1);
    }
    /// Sends a post, and holds back the answer to one of its calls.
    void sendLate(const PostPtr &post, const QString &late, Upload::Kind kind = Upload::NewPost)
    {
        const DocumentPtr document = documentOf(post->localFile);
        document->post.title = post->title;
        document->post.content = post->storedContent = post->content;
        document->post.taxonomies = post->taxonomies;
        document->updateChangeCount();
        (void)document->saveDocument();
        if (!late.isEmpty())
            blog.answerLate(late);
        service()->syncCategoriesAndPublishPost(post, kind);
        QTRY_COMPARE(network.heldCount(), late.isEmpty() ? 0 : 1);
    }

    QString postsFolder(const QString &alias) const { return files.blogPath(alias) + "/posts"; }
    /// The post files of a blog, by their path below its folder of posts.
    QStringList postFiles(const QString &alias = "Blog") const { return filesBelow(postsFolder(alias)); }
    /// The post file of a number of the blog.
    QString textOf(const QString &id, const QString &name = "post") const
    {
        return contentsOf(postsFolder("Blog") + "/p" + id + '/' + name + ".zalmo");
    }
    ZLAppDelegate &app() { return *m_app; }
    CurrentBlog &current() { return m_app->currentBlog(); }
    ZLWordpressService *service() { return current().wordpressService(); }
    const QList<AccountPtr> &accounts() { return current().accounts(); }
    const QList<LocalPostPtr> &rows() { return m_app->posts().posts(); }
    /// What the keychain holds for a user of a blog.
    QString secretOf(const QString &user, const QString &url) const
    {
        return secrets->value({ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(user, url)});
    }
    QString titlesDelivered() const
    {
        QStringList titles;
        for (const ZLUserNotification &notification : notifications.delivered)
            titles.append(notification.title);
        return titles.join('|');
    }

    FakeBlog other{"other.test"}; ///< a second blog, without an account unless a test seeds one
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

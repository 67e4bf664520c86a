#include "AppFixture.h"

#include <QCoroTask>
#include <QSqlQuery>

AppFixture::AppFixture()
{
    network.addHost(other.host(), other);
}

QString AppFixture::storedSelection()
{
    QString alias;
    changeStore([&](ZLManagedObjectContext &context) {
        for (const SelectedAccountPtr &selected : context.selectedAccounts())
            alias += selected->account ? selected->account->alias() : u"-"_qs;
    });
    return alias;
}

void AppFixture::launch()
{
    defaults = std::make_unique<ZLDefaults>(folder.filePath(u"preferences.ini"_qs));
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

void AppFixture::launchWithBlog(const QString &password)
{
    seedAccount(u"Blog"_qs, blog.url(), password);
    launch();
}

void AppFixture::logInto(const FakeBlog &blog)
{
    prompts.logins.append({blog.user, blog.password});
    if (prompts.intro.isShown())
        prompts.intro.answer(blog.url());
    else
        m_app->connection().connectToBlogURL(blog.url());
}

void AppFixture::removeAccount(AccountPtr account)
{
    ZLManagedObjectContext *context = m_app->store().managedObjectContext();
    context->deleteAccount(account);
    QVERIFY(context->save().has_value());
    m_app->currentBlog().didRemoveAccount(account);
}

void AppFixture::quit()
{
    compose.post.reset();
    compose.document.reset();
    m_app.reset();
}

void AppFixture::runOnStore(const QString &statement)
{
    const QString connection = u"behind the back"_qs;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_qs, connection);
        database.setDatabaseName(files.applicationFilesDirectory() + u"/Zalmo.storedata"_qs);
        QVERIFY(database.open());
        QVERIFY(QSqlQuery(database).exec(statement));
    }
    QSqlDatabase::removeDatabase(connection);
}

void AppFixture::connectBlog()
{
    logInto(blog);
    QTRY_VERIFY(prompts.journal.contains(u"connected: "_qs + blog.title));
    QTRY_VERIFY(!list.isSyncing);
}

PostPtr AppFixture::writePost(const QString &title, const QString &content)
{
    m_app->posts().createNewPost();
    const LocalPostPtr row = m_app->posts().posts().value(0);
    const PostPtr post = postOf(row);
    if (!post)
        return nullptr;
    post->title = title;
    post->content = content;
    return post;
}

PostPtr AppFixture::postOf(const LocalPostPtr &row)
{
    const auto document = QCoro::waitFor(m_app->documentController().openDocumentWithContentsOfURL(row->localFile));
    if (!document)
        return nullptr;
    const PostPtr post = (*document)->wordpressPost();
    post->localPost = row;
    return post;
}

LocalPostPtr AppFixture::rowTitled(const QString &title) const
{
    for (const LocalPostPtr &row : m_app->posts().posts()) {
        if (row->title == title)
            return row;
    }
    return nullptr;
}

QString AppFixture::postsFolder(const QString &alias) const
{
    return files.blogPath(alias) + u"/posts"_qs;
}

#include "AppFixture.h"

#include <QCoroTask>

AppFixture::AppFixture()
{
    network.addHost(u"icons.test"_qs, icons);
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
    keychain = std::make_unique<ZLKeychain>(std::move(backend));
    m_app = std::make_unique<ZLAppDelegate>(ZLPlatform{
        files, *defaults, *keychain, reachability, notifications, workspace, clock, network, u"http://icons.test"_qs});
    m_app->setWindows({&compose, &list, &prompts, &selector});
    QCoro::waitFor(m_app->applicationDidFinishLaunching());
}

void AppFixture::launchWithBlog(const QString &password)
{
    seedAccount(u"Blog"_qs, blog.url(), password);
    launch();
}

void AppFixture::logInto(const FakeBlog &blog)
{
    m_app->connectToBlogURL(blog.url());
    m_app->didEntryUsernameAndPassword(blog.user, blog.password);
}

void AppFixture::removeAccount(const AccountPtr &account)
{
    m_app->managedObjectContext()->deleteAccount(account);
    QVERIFY(m_app->managedObjectContext()->save().has_value());
    m_app->didRemoveAccount(account);
}

void AppFixture::quit()
{
    compose.post.reset();
    compose.document.reset();
    m_app.reset();
}

void AppFixture::connectBlog()
{
    m_app->newAccount();
    prompts.closeIntro();
    logInto(blog);
    QTRY_VERIFY(prompts.journal.contains(u"connected: "_qs + blog.title));
    QTRY_VERIFY(!m_app->wordpressService()->isSyncing());
}

PostPtr AppFixture::writePost(const QString &title, const QString &content)
{
    m_app->createNewPost();
    const LocalPostPtr row = m_app->posts().value(0);
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
    for (const LocalPostPtr &row : m_app->posts()) {
        if (row->title == title)
            return row;
    }
    return nullptr;
}

QString AppFixture::postsFolder(const QString &alias) const
{
    return files.blogPath(alias) + u"/posts"_qs;
}

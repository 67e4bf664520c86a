#include "AppFixture.h"

#include <QCoroTask>
#include <QDirIterator>

AppFixture::AppFixture()
{
    network.addHost(u"icons.test"_qs, icons);
}

AppFixture::~AppFixture() = default;

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
    m_app->connectToBlogURL(blog.url());
    m_app->didEntryUsernameAndPassword(blog.user, blog.password);
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

QStringList AppFixture::postFiles(const QString &alias) const
{
    const QDir posts(postsFolder(alias));
    QStringList found;
    QDirIterator walk(posts.path(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        found.append(posts.relativeFilePath(walk.next()));
    found.sort();
    return found;
}

QByteArray AppFixture::read(const QString &alias, const QString &file) const
{
    QFile opened(postsFolder(alias) + u'/' + file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

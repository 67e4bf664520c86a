#include "app/AppComposeHost.h"

#include "model/LocalFileURL.h"

#include <QCoroFuture>

AppComposeHost::AppComposeHost(AppEnvironment &environment, CurrentBlog &currentBlog, LocalPosts &posts,
    BlogLogins &logins, const BlogServices &services)
    : m_environment(environment)
    , m_currentBlog(currentBlog)
    , m_posts(posts)
    , m_logins(logins)
    , m_services(services)
{
}

ZLDocumentController &AppComposeHost::documentController()
{
    return m_environment.documents;
}

ZLNotifications &AppComposeHost::notifications()
{
    return m_environment.notifications;
}

QDateTime AppComposeHost::now() const
{
    return m_environment.platform.clock.now();
}

bool AppComposeHost::boolForKey(const QString &key) const
{
    return m_environment.platform.defaults.boolForKey(key);
}

QString AppComposeHost::cacheFolder() const
{
    return m_environment.platform.files.cacheFolder();
}

AccountPtr AppComposeHost::selectedAccount() const
{
    return m_currentBlog.selectedAccount();
}

QString AppComposeHost::getBlogName() const
{
    return m_currentBlog.blogName();
}

bool AppComposeHost::isReachable() const
{
    return m_currentBlog.isReachable();
}

QCoro::Task<bool> AppComposeHost::logIn()
{
    const AccountPtr account = selectedAccount();
    if (account && m_logins.requirePassword(account))
        co_return true;
    const bool isLoggedIn = co_await newLogin();
    co_return isLoggedIn;
}

QCoro::Task<bool> AppComposeHost::newLogin()
{
    const bool isNew = co_await m_logins.newLogin(selectedAccount());
    co_return isNew;
}

QString AppComposeHost::postPath(const QString &blogName, const QString &id) const
{
    return m_environment.platform.files.postPath(blogName, id);
}

void AppComposeHost::loadLocalPosts()
{
    m_posts.loadLocalPosts();
}

LocalPostPtr AppComposeHost::rowForFile(const QUrl &localFile) const
{
    const QList<LocalPostPtr> &rows = m_posts.posts();
    const QString path = pathOfFileURL(localFile);
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const LocalPostPtr &candidate) {
        return candidate->localFile == localFile || candidate->localFile.path(QUrl::FullyDecoded) == path;
    });
    return row == rows.end() ? nullptr : *row;
}

QStringList AppComposeHost::getTaxonomiesForSearch(const QString &text) const
{
    return m_posts.getTaxonomiesForSearch(text);
}

void AppComposeHost::insertPost(int index, const LocalPostPtr &row)
{
    m_posts.insert(index, row);
}

void AppComposeHost::removeLocalPostFromList(const LocalPostPtr &row)
{
    m_posts.removeLocalPostFromList(row);
}

void AppComposeHost::deletePostAtLocalURL(const QUrl &url)
{
    m_posts.deletePostAtLocalURL(url);
}

EditorBody AppComposeHost::postContentForZalmoEditor(const QString &stored)
{
    if (ZLWordpressService *service = m_currentBlog.wordpressService())
        return service->postContentForZalmoEditor(stored);
    return ContentConversion::postContentForZalmoEditor(stored, m_environment.platform.files);
}

Upload *AppComposeHost::uploadOfPost(const QUrl &localFile) const
{
    for (const ServicePtr &service : m_services.services()) {
        if (PostUpload *upload = service->uploadOfPost(localFile))
            return upload;
    }
    return nullptr;
}

Upload *AppComposeHost::upload(const PostPtr &post, Upload::Kind kind)
{
    ZLWordpressService *service = m_currentBlog.wordpressService();
    return service ? service->syncCategoriesAndPublishPost(post, kind) : nullptr;
}

void AppComposeHost::deletePost(const PostPtr &post)
{
    if (ZLWordpressService *service = m_currentBlog.wordpressService())
        service->deletePost(post);
}

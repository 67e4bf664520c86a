#include "app/AppComposeHost.h"

#include "app/ZLAppDelegate.h"
#include "model/LocalFileURL.h"
#include "platform/ZLClock.h"
#include "platform/ZLDefaults.h"
#include "platform/ZLFileManager.h"

AppComposeHost::AppComposeHost(ZLAppDelegate &app)
    : m_app(app)
{
}

ZLDocumentController &AppComposeHost::documentController()
{
    return m_app.documentController();
}

ZLNotifications &AppComposeHost::notifications()
{
    return m_app.notifications();
}

QDateTime AppComposeHost::now() const
{
    return m_app.platform().clock.now();
}

bool AppComposeHost::boolForKey(const QString &key) const
{
    return m_app.platform().defaults.boolForKey(key);
}

QString AppComposeHost::cacheFolder() const
{
    return m_app.platform().files.cacheFolder();
}

AccountPtr AppComposeHost::selectedAccount() const
{
    return m_app.currentBlog().selectedAccount();
}

QString AppComposeHost::getBlogName() const
{
    return m_app.currentBlog().blogName();
}

bool AppComposeHost::isReachable() const
{
    return m_app.currentBlog().isReachable();
}

bool AppComposeHost::canLogIn()
{
    const AccountPtr account = selectedAccount();
    return account && m_app.logins().requirePassword(account);
}

QString AppComposeHost::postPath(const QString &blogName, const QString &id) const
{
    return m_app.platform().files.postPath(blogName, id);
}

void AppComposeHost::loadLocalPosts()
{
    m_app.posts().loadLocalPosts();
}

LocalPostPtr AppComposeHost::rowForFile(const QUrl &localFile) const
{
    const QList<LocalPostPtr> &rows = m_app.posts().posts();
    const QString path = pathOfFileURL(localFile);
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const LocalPostPtr &candidate) {
        return candidate->localFile == localFile || candidate->localFile.path(QUrl::FullyDecoded) == path;
    });
    return row == rows.end() ? nullptr : *row;
}

QStringList AppComposeHost::getTaxonomiesForSearch(const QString &text) const
{
    return m_app.posts().getTaxonomiesForSearch(text);
}

void AppComposeHost::insertPost(int index, const LocalPostPtr &row)
{
    m_app.posts().insert(index, row);
}

void AppComposeHost::removeLocalPostFromList(const LocalPostPtr &row)
{
    m_app.posts().removeLocalPostFromList(row);
}

void AppComposeHost::deletePostAtLocalURL(const QUrl &url)
{
    m_app.posts().deletePostAtLocalURL(url);
}

EditorBody AppComposeHost::postContentForZalmoEditor(const QString &stored)
{
    if (ZLWordpressService *service = m_app.currentBlog().wordpressService())
        return service->postContentForZalmoEditor(stored);
    return ContentConversion::postContentForZalmoEditor(stored, m_app.platform().files);
}

Upload *AppComposeHost::uploadOfPost(const QUrl &localFile) const
{
    for (const ServicePtr &service : m_app.services().services()) {
        if (PostUpload *upload = service->uploadOfPost(localFile))
            return upload;
    }
    return nullptr;
}

Upload *AppComposeHost::upload(const PostPtr &post, Upload::Kind kind)
{
    ZLWordpressService *service = m_app.currentBlog().wordpressService();
    return service ? service->syncCategoriesAndPublishPost(post, kind) : nullptr;
}

void AppComposeHost::deletePost(const PostPtr &post)
{
    if (ZLWordpressService *service = m_app.currentBlog().wordpressService())
        service->deletePost(post);
}

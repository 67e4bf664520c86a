#include "app/AppComposeHost.h"

#include "app/ZLAppDelegate.h"
#include "model/LocalFileURL.h"
#include "platform/ZLClock.h"
#include "platform/ZLDefaults.h"
#include "platform/ZLFileManager.h"

#include <algorithm>

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
    return m_app.selectedAccount();
}

QString AppComposeHost::getBlogName() const
{
    return m_app.getBlogName();
}

bool AppComposeHost::isReachable() const
{
    return m_app.isReachable();
}

QString AppComposeHost::postPathForPostId(const QString &id) const
{
    const ZLFileManager &files = m_app.platform().files;
    files.postPathForBlogURL(m_app.getBlogName(), id);
    return files.postPath(m_app.getBlogName(), id);
}

LocalPostPtr AppComposeHost::rowForFile(const QUrl &localFile) const
{
    const QList<LocalPostPtr> &rows = m_app.posts();
    const QString path = pathOfFileURL(localFile);
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const LocalPostPtr &candidate) {
        return candidate->localFile == localFile || candidate->localFile.path(QUrl::FullyDecoded) == path;
    });
    return row == rows.end() ? nullptr : *row;
}

QStringList AppComposeHost::getTaxonomiesForSearch(const QString &text) const
{
    return m_app.getTaxonomiesForSearch(text);
}

void AppComposeHost::insertPost(int index, const LocalPostPtr &row)
{
    m_app.insertPost(index, row);
}

void AppComposeHost::removeLocalPostFromList(const LocalPostPtr &row)
{
    m_app.removeLocalPostFromList(row);
}

void AppComposeHost::deletePostAtLocalURL(const QUrl &url)
{
    m_app.deletePostAtLocalURL(url);
}

EditorBody AppComposeHost::postContentForZalmoEditor(const QString &stored)
{
    if (ZLWordpressService *service = m_app.wordpressService())
        return service->postContentForZalmoEditor(stored);
    return ContentConversion::postContentForZalmoEditor(stored, m_app.platform().files);
}

void AppComposeHost::syncCategoriesAndPublishPost(const PostPtr &post, int kind)
{
    if (ZLWordpressService *service = m_app.wordpressService())
        service->syncCategoriesAndPublishPost(post, kind);
}

void AppComposeHost::cancelUploadOfPost(const PostPtr &post)
{
    m_app.cancelUploadOfPost(post);
}

void AppComposeHost::deletePost(const PostPtr &post)
{
    if (ZLWordpressService *service = m_app.wordpressService())
        service->deletePost(post);
}

#pragma once

#include "model/ZLDocumentController.h"
#include "model/ZLNotifications.h"
#include "store/Account.h"
#include "wordpress/ZLWordpressService.h"

#include <QCoroTask>

class Upload;

/// What the compose screen needs from the rest of the program: the current blog, its rows and its service.
class ComposeHost {
public:
    virtual ~ComposeHost() = default;

    virtual ZLDocumentController &documentController() = 0;
    virtual ZLNotifications &notifications() = 0;
    virtual QDateTime now() const = 0;
    virtual bool boolForKey(const QString &key) const = 0; ///< a setting of the user
    virtual QString cacheFolder() const = 0; ///< null when it cannot be made

    virtual AccountPtr selectedAccount() const = 0; ///< null while no blog is connected
    virtual QString getBlogName() const = 0;
    virtual bool isReachable() const = 0;
    /// Whether the blog can be called; without a password the login sheet comes first.
    virtual QCoro::Task<bool> logIn() = 0;
    /// After a call whose login was refused: whether the writer has given a new one that holds.
    virtual QCoro::Task<bool> newLogin() = 0;
    /// The folder of a post; not made here.
    virtual QString postPath(const QString &blogName, const QString &id) const = 0;
    virtual void loadLocalPosts() = 0; ///< rebuilds the list from the files
    virtual LocalPostPtr rowForFile(const QUrl &localFile) const = 0; ///< null when the list has no such row
    virtual QStringList getTaxonomiesForSearch(const QString &text) const = 0;
    virtual void insertPost(int index, const LocalPostPtr &row) = 0;
    virtual void removeLocalPostFromList(const LocalPostPtr &row) = 0;
    virtual void deletePostAtLocalURL(const QUrl &url) = 0;

    /// The upload of this post, to whichever blog it goes; null when it is not on its way.
    virtual Upload *uploadOfPost(const QUrl &localFile) const = 0;

    // the service of the current blog; without a blog there is nothing to call
    virtual EditorBody postContentForZalmoEditor(const QString &stored) = 0;
    /// The upload, which may have ended already; null without a blog.
    virtual Upload *upload(const PostPtr &post, Upload::Kind kind) = 0;
    virtual void deletePost(const PostPtr &post) = 0;
};

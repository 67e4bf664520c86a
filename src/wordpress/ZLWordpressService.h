#pragma once

#include "model/ZLDocumentController.h"
#include "model/ZLNotifications.h"
#include "platform/ZLClock.h"
#include "platform/ZLFileManager.h"
#include "platform/ZLKeychain.h"
#include "store/ZLManagedObjectContext.h"
#include "wordpress/ContentConversion.h"
#include "wordpress/ZLWordpressServiceDelegate.h"
#include "wordpress/ZLWordpressServiceRequestType.h"
#include "xmlrpc/XMLRPCConnectionManager.h"

#include <QObject>
#include <functional>

/// What a service stands on. All are owned by the application and outlive every service.
struct ZLServiceEnvironment {
    XMLRPCConnectionManager &connections;
    ZLKeychain &keychain;
    ZLFileManager &files;
    ZLNotifications &notifications;
    const ZLClock &clock;
    std::function<ZLManagedObjectContext *()> context; ///< null while there is no store
    std::function<DocumentPtr()> currentDocument; ///< the document on the screen, or null
};

/// The client of one blog. It builds the calls, keeps the state of uploads and sync rounds, and tells its delegate.
///
/// Publishing: syncCategoriesAndPublishPost() is the gate. It uploads every local picture that is not on the blog yet,
/// in parallel; each reply runs the gate again; the run that finds everything uploaded swaps the addresses and sends
/// the content: wp.newPost and a read-back for a new post (kind 0), one wp.editPost for an update (1) or a draft made
/// public (2). Sync: a group of up to four calls in `syncRequests`; didSyncBlogWithName() when the last is answered.
class ZLWordpressService : public QObject, public std::enable_shared_from_this<ZLWordpressService> {
    Q_OBJECT
public:
    enum PublishKind { NewPost = 0, Update = 1, PublishDraft = 2 };

    ZLWordpressService(const QUrl &apiURL, const ZLServiceEnvironment &environment, QObject *parent = nullptr);
    ZLWordpressService(const AccountPtr &account, const ZLServiceEnvironment &environment, QObject *parent = nullptr);
    ~ZLWordpressService() override;

    QString username;
    QString password; ///< null when there is none
    AccountPtr account; ///< null for a service made from a URL
    QString blogName;
    ZLWordpressServiceDelegate *delegate = nullptr;
    bool isGeneratingPreview = false;

    /// Where the blog of this address takes its calls.
    static QUrl apiURLOfBlog(const QString &blogURL);
    QUrl blogApiURL() const;
    /// Later calls go there. Posts whose pictures are still on their way to the earlier blog are not sent at all, which
    /// is told.
    void changeApiURL(const QUrl &url);
    /// Takes the password of this account from the keychain.
    void readPassword(const AccountPtr &account);
    void cleanData();
    /// The keychain's account string for a user name and a blog's address: "%@::%@".
    static QString keychainAccount(const QString &name, const QString &url);
    static QString keychainService(); ///< "com.zalmo.Zalmo"

    // login
    void getOptions();
    void reconnect();
    /// The login held: keeps the password if the user wants that, and starts a sync round.
    void didReconnect();
    void didCancelReconnect();
    void getProfile();
    void getUserBlogs();

    // publishing
    void syncCategoriesAndPublishPost(const PostPtr &post, int kind);
    void publishPost(const PostPtr &post);
    void updatePost(const PostPtr &post);
    void publishDraftPost(const PostPtr &post);
    void deletePost(const PostPtr &post);
    /// Reads a post by its number, and one that stands for `original`.
    void getPost(const QString &id);
    void getPost(const QString &id, const PostPtr &original);
    void newCategory(const QString &name);
    /// Makes a category and then publishes the post.
    void syncCategory(const QString &name, const PostPtr &post, int kind);
    /// Sends a picture, given in any common form, as JPEG.
    void uploadImage(const QByteArray &picture);
    void publishPostForPreview(const PostPtr &post);
    void deletePostForPreview(const PostPtr &post);
    /// The user gave up on this upload: ends the wait and frees its pictures, so that the next try sends them again.
    /// Answers that arrive later are dropped.
    void cancelUploadOfPost(const PostPtr &post);
    /// A local file that stands for a picture which is on the blog already.
    void addImageSrcForSyncedImages(const QString &source, const QString &file);

    // sync
    void syncBlogPosts();
    void syncBlogTaxonomies();
    void syncTaxonomiesAfterPublish(const PostPtr &post);
    void getPosts();
    void getTaxonomies();
    /// The user gave up on the round: empties `syncRequests` and tells didSyncBlogWithName().
    void stopSync();
    bool isSyncing() const;
    /// Nothing is asked, read or written any more.
    bool isIdle() const;

    /// A stored body in the editor's form, piece by piece; cached local copies stand in for pictures on the blog.
    EditorBody postContentForZalmoEditor(const QString &stored);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
using ServicePtr = std::shared_ptr<ZLWordpressService>;

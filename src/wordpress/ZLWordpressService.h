#pragma once

#include "model/ZLDocumentController.h"
#include "model/ZLNotifications.h"
#include "platform/ZLClock.h"
#include "platform/ZLFileManager.h"
#include "platform/ZLKeychain.h"
#include "store/ZLManagedObjectContext.h"
#include "wordpress/ContentConversion.h"
#include "wordpress/PostUpload.h"
#include "wordpress/ZLWordpressServiceDelegate.h"

/// What a service stands on. All are owned by the application and outlive every service.
struct ZLServiceEnvironment {
    XMLRPCConnectionManager &connections;
    ZLKeychain &keychain;
    ZLFileManager &files;
    ZLNotifications &notifications;
    const ZLClock &clock;
    ZLDocumentController &documents;
    std::function<ZLManagedObjectContext *()> context; ///< null while there is no store
};

/// The client of one blog, for the life of its account. Publishing makes a PostUpload; a round asks for this service's
/// share, whose end didSyncBlogWithName() tells.
class ZLWordpressService : public QObject, public std::enable_shared_from_this<ZLWordpressService> {
    Q_OBJECT
public:
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
    /// Takes the password of this account from the keychain.
    void readPassword(const AccountPtr &account);
    /// The keychain's account string for a user name and a blog's address: "%@::%@".
    static QString keychainAccount(const QString &name, const QString &url);
    static QString keychainService(); ///< "com.zalmo.Zalmo"

    /// What the blog says of itself, which proves the login.
    void getOptions();

    // publishing
    /// Sends the post to the blog. The upload may have ended already when this returns. A post that is on its way is
    /// not sent a second time: its upload is given.
    PostUpload *syncCategoriesAndPublishPost(const PostPtr &post, Upload::Kind kind);
    QList<PostUpload *> uploads() const; ///< under way
    /// The upload under way of the post with this file; null when there is none.
    PostUpload *uploadOfPost(const QUrl &localFile) const;
    /// The user gave up on this upload. Answers that arrive later are dropped.
    void cancelUploadOfPost(const PostPtr &post);
    void cancelUploads();
    /// A local file that stands for a picture which is on the blog already.
    void addImageSrcForSyncedImages(const QString &source, const QString &file);
    /// Asks the blog to delete the post, unless it has been asked and has not answered.
    void deletePost(const PostPtr &post);

    // preview
    void publishPostForPreview(const PostPtr &post);
    void deletePostForPreview(const PostPtr &post);

    // sync
    void syncBlogPosts();
    void syncBlogTaxonomies();
    void syncTaxonomiesAfterPublish(const PostPtr &post);
    /// The user gave up on the round: it ends at once.
    void stopSync();
    bool isSyncing() const;

    /// A stored body in the editor's form, piece by piece; cached local copies stand in for pictures on the blog.
    EditorBody postContentForZalmoEditor(const QString &stored);

private:
    QCoro::Task<void> askForOptions();
    QCoro::Task<void> askForDeletion(PostPtr post);
    QCoro::Task<void> makePreview(RequestPtr request);
    QCoro::Task<void> removePreview(PostPtr post);
    void tellFailure(ZLWordpressServiceRequestType type, const ZLError &error);

    struct Private;
    std::unique_ptr<Private> d;
};
using ServicePtr = std::shared_ptr<ZLWordpressService>;

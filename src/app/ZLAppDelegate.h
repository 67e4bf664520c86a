#pragma once

#include "app/BlogSelector.h"
#include "app/ComposeScreen.h"
#include "app/PostList.h"
#include "app/Prompts.h"
#include "app/ZLPlatform.h"
#include "app/ZLWindows.h"
#include "model/ZLDocumentController.h"
#include "model/ZLNotifications.h"
#include "platform/Reachability.h"
#include "platform/ZLClock.h"
#include "platform/ZLDefaults.h"
#include "platform/ZLFileManager.h"
#include "platform/ZLKeychain.h"
#include "platform/ZLTelemetry.h"
#include "platform/ZLUserNotificationCenter.h"
#include "platform/ZLWorkspace.h"
#include "store/ZLManagedObjectContext.h"
#include "wordpress/ZLWordpressService.h"

/// The one object that ties the program together: the current blog, the list of its posts, and the face behind which
/// launch, catalogue, sync rounds, connecting and outcomes live as collaborators of their own.
class ZLAppDelegate : public QObject, public ZLWordpressServiceDelegate {
    Q_OBJECT
public:
    explicit ZLAppDelegate(const ZLPlatform &platform, QObject *parent = nullptr);
    ~ZLAppDelegate() override;

    /// The windows exist now; they outlive every call of the controller.
    void setWindows(const ZLWindows &windows);

    // launch and end
    QCoro::Task<void> applicationDidFinishLaunching();
    /// Saves the open posts and the store. False: the user chose to stay, because something could not be saved.
    QCoro::Task<bool> applicationShouldTerminate();

    /// The window is in front: without any blog it asks for one.
    void showMainApplicationWindow();

    // state that others read
    QList<AccountPtr> accounts() const;
    AccountPtr selectedAccount() const;
    QString getBlogName() const;
    QUrl blogURL() const;
    const QList<LocalPostPtr> &posts() const; ///< the current blog's rows, newest first
    void insertPost(int index, const LocalPostPtr &row);
    void removePost(const LocalPostPtr &row);
    ZLWordpressService *wordpressService() const;
    ZLManagedObjectContext *managedObjectContext(); ///< null when the store could not be opened
    ZLDocumentController &documentController();
    ZLNotifications &notifications();
    const ZLPlatform &platform() const;
    ZLTelemetry &telemetry();
    bool isReachable() const; ///< for the current blog
    int numberOfConnectedAccounts() const;
    QList<AccountPtr> accountsCanReceivePostCopy() const;

    // the current blog
    void selectorDidChange(int selectorIndex); ///< item 0 is the empty item
    void selectAccount(const AccountPtr &account);
    void setSelectedAccount(const AccountPtr &account);
    void didChangeBlogAliasForAccount(const AccountPtr &account);

    // catalogue and sync rounds
    void loadLocalPosts();
    void reloadPostsList();
    void syncAllBlogs();
    /// The user asks for a sync of the current blog; the caller has looked whether it can be reached.
    void refreshCurrentBlog();
    void syncPosts();
    /// Ends the wait of a round that does not end by itself.
    void stopSyncing();
    QList<LocalPostPtr> getPostsForSearch(const QString &text) const;
    /// Completions for the tag field: tags for a text that begins with "#", else categories. Empty when none.
    QStringList getTaxonomiesForSearch(const QString &text) const;
    void removeLocalPostFromList(const LocalPostPtr &row);
    void removePostWithLocalFile(const QString &absoluteString);

    // connecting a blog
    void newAccount();
    void connectToBlogURL(const QString &typed);
    void didEntryUsernameAndPassword(const QString &username, const QString &password);
    void didReconnectFromLoginSheet(const QString &username, const QString &password); ///< its button, with a service
    void didPressedCancelButtonFromIntro();
    void didPressedCancelButton(); ///< login sheet, for a new blog or to log in again
    void didEntryUsernameAndPasswordFromWrongSheet(const QString &username, const QString &password);
    void didPressedCancelButtonFromWrongSheet();
    void cancelConnecting();
    void didRemoveAccount(const AccountPtr &account);

    // posts
    bool createNewPost(); ///< false: its file could not be written, which the user has been told
    void deletePostAtLocalURL(const QUrl &url);
    /// The user gave up on this upload: says didFailToUploadPost, even if no service knows of it any more.
    void cancelUploadOfPost(const PostPtr &post);

    // ZLWordpressServiceDelegate
    void didReconnectAccount(ZLWordpressService *, const AccountPtr &) override;
    void didGetTaxonomies(ZLWordpressService *, const QList<ZLTaxonomy> &) override;
    void didSyncBlogWithName(ZLWordpressService *, const QString &) override;
    void didFailToUploadPost(ZLWordpressService *, const PostPtr &) override;
    void didFailToPerformRequest(ZLWordpressService *, int type, const ZLError &) override;
    void didGetPosts(ZLWordpressService *, const QList<PostPtr> &) override;
    void didPublishPost(ZLWordpressService *, const PostPtr &remote, const PostPtr &original) override;
    void didUpdatePost(ZLWordpressService *, const PostPtr &) override;
    void didPublishDraftPost(ZLWordpressService *, const PostPtr &) override;
    void didDeletePost(ZLWordpressService *, const PostPtr &) override;
    void didFailToDeletePost(ZLWordpressService *, const PostPtr &, const ZLError &) override;
    void didCreateCategory(ZLWordpressService *, const QString &) override;
    void didGetBlogOptions(ZLWordpressService *, const XMLRPCValue &) override;
    void didSendBodyData(ZLWordpressService *, const PostPtr &, float) override;

private:
    QCoro::Task<void> offerToDeleteCopy(PostPtr post);

    struct Private;
    std::unique_ptr<Private> d;
};

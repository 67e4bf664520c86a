#pragma once

#include "app/LocalPosts.h"

/// Brings the local world in step with what happened on the blog. Each success has the same three stages: the row's
/// status and published flag; the desktop's message and the browser; then the post's file, which is opened as a
/// document on a later turn, takes the remote state, and moves to the folder of its new id. A document that the
/// compose screen holds open is the same object.
class PublicationOutcomes : public QObject {
    Q_OBJECT
public:
    PublicationOutcomes(AppEnvironment &environment, LocalPosts &posts, const CurrentBlogState &state);

    void didPublishPost(ZLWordpressService *service, const PostPtr &remote, const PostPtr &original);
    void didPublishDraftPost(ZLWordpressService *service, const PostPtr &post);
    void didUpdatePost(ZLWordpressService *service, const PostPtr &post);
    void didDeletePost(const PostPtr &post, const QString &blogName);
    /// The blog has no such post any more.
    QCoro::Task<void> offerToDeleteCopy(PostPtr post, QString blogName);

private:
    struct Finished {
        PostPtr post; ///< the remote state
        LocalPostPtr row;
        QString home; ///< folder that the file moves to; null: it stays
        PostFields sent; ///< with the texts that the file held then
    };

    LocalPostPtr rowOf(const ZLWordpressPost &post, const QString &blogName) const;
    void setRowStatus(ZLLocalPostRepresentation &row, const PostPtr &post) const;
    QVariantMap publishDimensions(const PostPtr &post) const;
    void notify(const ZLWordpressService &service, const QString &title, const QUrl &URL);
    void openInBrowserIfWanted(const PostPtr &post);
    /// Whether the row's file is one of this blog.
    bool isInFolderOf(const LocalPostPtr &row, const QString &alias) const;
    bool isInFuture(const PostPtr &post) const;

    QCoro::Task<void> storeRemoteState(Finished finished);
    void moveDocument(const DocumentPtr &document, const Finished &finished);
    void showOutcome(const Finished &finished, const QUrl &previousLocalURL);

    AppEnvironment &m_environment;
    LocalPosts &m_posts;
    const CurrentBlogState &m_state;
};

#pragma once

#include "wordpress/ImageUploads.h"

/// The road of a post to the blog: its local pictures, then its content, then for a new post the read-back of what the
/// blog stored. There is no object for a post on this road: its state lies in the marks of the uploads and in the
/// context of the calls under way.
class PublishingPipeline {
public:
    PublishingPipeline(ZLWordpressService &service, const ZLServiceEnvironment &environment, ServiceCalls &calls,
        ImageUploads &uploads);

    /// The gate: uploads what is missing, or goes on to the content. Each upload's reply runs it again.
    void syncImagesFromPost(const PostPtr &post, int kind);
    /// False when the blog has too often in a row not said where the picture is.
    bool didUploadImageFromURL(const QString &address, const ZLWordpressImage &image, const PostPtr &post, int kind);
    void publishPost(const PostPtr &post, bool termsByName = false);
    void updatePost(const PostPtr &post, bool termsByName = false);
    void publishDraftPost(const PostPtr &post, bool termsByName = false);
    void deletePost(const PostPtr &post);
    /// Reads back what the blog stored for `original`.
    void getPost(const QString &id, const PostPtr &original);
    /// A blog that has deleted a term refuses its id; the post must not be lost for that. Sends the call once more with
    /// every term by name, and answers whether it did.
    bool resentWithTermsByName(const ZLWordpressXMLRPCRequest &call, const ZLError &error);
    void cancelUploadOfPost(const PostPtr &post);
    /// Ends what has not come to the content call yet, and tells: the service goes to another blog, where the rest of
    /// these posts does not belong.
    void leaveBlog();
    void didSendBodyData(const ZLWordpressXMLRPCRequest &call, float progress);

    void publishPostForPreview(const PostPtr &post);
    void getPostForPreview(const QString &id);
    void deletePostForPreview(const PostPtr &post);

    // The step that makes a category before its post. No road starts it now, since posts name their new terms.
    void syncCategory(const QString &name, const PostPtr &post, int kind);
    void newCategory(const QString &name);
    void didCreateCategory(const QString &name, const PostPtr &post, int kind);

    void cleanData();

private:
    /// The addresses of the pictures that must be on the blog before the post's content goes, with repeats.
    QStringList localPictures(const ZLWordpressPost &post) const;
    /// Whether a body came with this local address from elsewhere, as a paste from another program leaves them on
    /// blogs: it goes back as it is.
    bool isForeign(const QString &address, const ZLWordpressPost &post) const;
    /// The local addresses in a body, wherever they stand, of pictures that are on the blog, with their addresses
    /// there.
    QHash<QString, QString> localAddressesOnTheBlog(const QString &content) const;
    void sendContent(const PostPtr &post, int kind);
    void editPost(const PostPtr &post, int type, bool termsByName);
    void spawnContentCall(const QString &method, XMLRPCArray leading, const PostPtr &post, int type, bool termsByName);

    ZLWordpressService &m_service;
    const ZLServiceEnvironment &m_environment;
    ServiceCalls &m_calls;
    ImageUploads &m_uploads;
    QSet<QString> m_syncingCategories;
    QSet<QString> m_syncedCategories;
};

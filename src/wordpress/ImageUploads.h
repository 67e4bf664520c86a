#pragma once

#include "model/ZLWordpressPost.h"
#include "platform/ZLError.h"
#include "wordpress/ServiceCalls.h"
#include "wordpress/ZLWordpressImage.h"

#include <QSet>

struct ZLServiceEnvironment;

/// The pictures of posts on their way to the blog. Each is read and written anew on a worker and then sent.
class ImageUploads {
public:
    ImageUploads(const ZLServiceEnvironment &environment, ServiceCalls &calls);

    QSet<QString> syncingImages; ///< addresses under way; a failed one stays here until it is freed
    QHash<QString, QString> syncedImages; ///< local or old address to that on the blog
    QHash<QString, ZLWordpressImage> syncedWPImages; ///< local address or that on the blog to the record

    void syncImage(const QString &address, const PostPtr &post, int kind);
    void uploadImage(const QByteArray &picture);
    /// Takes a reply in. An upload that answers without an address is tried again by the next run of the gate, but not
    /// for ever: false when it has failed too often in a row.
    bool didUpload(const QString &address, const ZLWordpressImage &image);
    /// Ends the uploads of this post and frees its marks, but for pictures that another post is sending.
    void cancel(const PostPtr &post, const QStringList &addresses);
    /// The posts whose pictures are being read or sent.
    QSet<PostPtr> posts() const;
    bool isEncoding() const { return !m_encoding.isEmpty(); }
    void cleanData();

    /// How far the uploads of a post have come together.
    void setProgress(const QString &address, float progress);
    float progress(const QStringList &addresses) const;

private:
    struct Encoding {
        PostPtr post;
        QString address;
        int kind;
        int ticket;
    };
    void uploadImageFromURL(const QString &address, const PostPtr &post, int kind);
    void didEncode(int ticket, const Result<QByteArray> &bits);
    void send(const Encoding &upload, const QByteArray &bits);
    bool isUnderWay(const QString &address) const;

    const ZLServiceEnvironment &m_environment;
    ServiceCalls &m_calls;
    QList<Encoding> m_encoding;
    QHash<QString, float> m_progress;
    QHash<QString, int> m_repliesWithoutAddress; ///< in a row
    int m_lastTicket = 0;
    QObject m_context; ///< ends what workers have not delivered yet
};

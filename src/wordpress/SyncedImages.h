#pragma once

#include <QHash>
#include <QString>

/// An upload record: where a picture lies on the blog.
struct ZLWordpressImage {
    QString url;
    QString id;
};

/// The pictures that are known to be on the blog, so that they are not sent again.
struct SyncedImages {
    QHash<QString, QString> syncedImages; ///< local or old address to that on the blog
    QHash<QString, ZLWordpressImage> syncedWPImages; ///< local address or that on the blog to the record

    void insert(const QString &address, const ZLWordpressImage &image)
    {
        for (const QString &key : {address, image.url}) {
            syncedImages.insert(key, image.url);
            syncedWPImages.insert(key, image);
        }
    }
};

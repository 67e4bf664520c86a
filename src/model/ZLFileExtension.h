#pragma once

#include <QByteArray>
#include <QVariantMap>

/// Writes the text of a post file: one line, elements in a fixed order, no declaration, no attributes.
class ZLFileExtension {
public:
    /// `post` has "title", "content" and "keywords" (a list of strings; anything else for none), `postInfo` the names
    /// of its elements, with "featured_image" a dictionary or anything else, `fileInfo` "status" and "app_version".
    /// A null `post` or `postInfo` leaves that block out; a null `fileInfo` gives a block with the version alone.
    static QByteArray generateXMLDataForPost(
        const QVariantMap *post, const QVariantMap *postInfo, const QVariantMap *fileInfo);
};

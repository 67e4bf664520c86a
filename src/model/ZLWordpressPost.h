#pragma once

#include "model/ZLAbstractPost.h"
#include "model/ZLFileInfo.h"
#include "model/ZLLocalPostRepresentation.h"
#include "platform/ZLError.h"

#include <memory>

class ZLDocument;

/// The working record that the editor and the services pass around. Shared: who holds the same object holds the post.
struct ZLWordpressPost : ZLAbstractPost {
    enum Status { Stub = -1, New = 0, Draft = 1, Publish = 2, Note = 3 };
    enum Type { Post = 0, Page = 1 };

    QString authorId;
    int status = New;
    int type = Post;
    LocalPostPtr localPost; ///< the row that stands for this post
    bool allowComments = true;
    bool allowPingback = true;
    QString slug;
    QString featuredImageId;
    QString featuredImageURL; ///< as it came, too
    /// The body as the blog or the file stored it, byte for byte; null when there is none to remember. `content` is
    /// what the editor made of it. What the writer has not touched goes back from here.
    QString storedContent;

    /// Turns `content` into the file form: read-more anchor, image classes and, but for bodies of the block editor,
    /// the paragraph builder.
    void replaceWPContentsForEditor();

    /// The post file's text, with the given file block or, without one, `<app_version>3</app_version>` alone. The body
    /// is `storedContent` while there is one, else `content`.
    QByteArray generateXMLDataFileInfo(const ZLFileInfo *fileInfo) const;
    /// Writes a post file; the file block follows from the path's end. Afterwards missing dates are set to now. The
    /// file carries updatedAt as its date. Fails with an error that names the file. `type` is not looked at.
    [[nodiscard]] Result<void> saveAtPath(const QString &path, const QString &type = QStringLiteral("zalmo"));
    /// Brings this remote post together with the file at `path`: overwrites it, keeps it, or puts a conflict.zalmo
    /// beside it. `currentDocument` is the document on the screen, if any: when it is this very path, it is taken
    /// with whatever is unsaved in it.
    [[nodiscard]] Result<void> syncWithPostAtPath(
        const QString &path, const QString &type, const std::shared_ptr<ZLDocument> &currentDocument);

private:
    QVariantMap infoDictionary() const;
};
using PostPtr = std::shared_ptr<ZLWordpressPost>;

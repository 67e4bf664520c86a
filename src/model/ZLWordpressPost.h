#pragma once

#include "model/ZLAbstractPost.h"
#include "model/ZLFileInfo.h"
#include "model/ZLLocalPostRepresentation.h"
#include "platform/ZLError.h"

#include <memory>

class ZLDocument;
class ZLDocumentController;

/// The working record that the editor and the services pass around. Shared: who holds the same object holds the post.
struct ZLWordpressPost : ZLAbstractPost {
    LocalPostPtr localPost; ///< the row that stands for this post
    /// The body as the blog or the file stored it, byte for byte; null when there is none to remember. `content` is
    /// what the editor made of it. What the writer has not touched goes back from here.
    QString storedContent;
    /// The version that the blog last gave, with title and content as it stores them: an update sends what differs. For
    /// a post without local changes that is what the file holds. Null when the blog does not know the post, or when
    /// that version is not known.
    std::shared_ptr<const ZLWordpressPost> synced;

    /// The post file's text, with the given file block or, without one, `<app_version>3</app_version>` alone. The body
    /// is `storedContent` while there is one, else `content`.
    QByteArray generateXMLDataFileInfo(const ZLFileInfo *fileInfo) const;
    /// Writes a post file; the file block follows from the path's end. Afterwards missing dates are set to now. The
    /// file carries updatedAt as its date. Fails with an error that names the file. `type` is not looked at.
    [[nodiscard]] Result<void> saveAtPath(const QString &path, const QString &type = QStringLiteral("zalmo"));
    /// Brings this remote post together with the file at `path`: overwrites it, keeps it, or puts a conflict.zalmo
    /// beside it. An open document of that file is taken with whatever is unsaved in it.
    [[nodiscard]] Result<void> syncWithPostAtPath(
        const QString &path, const QString &type, const ZLDocumentController &documents);
    /// Writes this remote post beside the document's file as its conflict.zalmo and marks the document, whatever the
    /// dates say: for a blog that refused an update, since the post has changed there.
    [[nodiscard]] Result<void> putConflictBeside(ZLDocument &document);

private:
    bool isSameAs(const ZLDocument &document) const;
};
using PostPtr = std::shared_ptr<ZLWordpressPost>;

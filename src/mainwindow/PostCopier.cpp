#include "mainwindow/PostCopier.h"

#include "app/ZLAppDelegate.h"
#include "model/PostSync.h"
#include "text/RandomString.h"

#include <QFile>

namespace {

Result<QUrl> copiedFile(const ZLAppDelegate &app, const LocalPostPtr &post, const QString &alias, const QString &id)
{
    const QString folder = app.platform().files.postPathForBlogURL(alias, id);
    if (folder.isNull())
        return failure(u"ZLFile"_qs, 0, u"The folder of the copy could not be made."_qs);
    const QString target = PostSync::postPath(folder);
    QFile source(post->localFile.toLocalFile());
    if (!source.copy(target))
        return failure(u"ZLFile"_qs, 0, u"%1: %2"_qs.arg(source.fileName(), source.errorString()));
    return QUrl::fromLocalFile(target);
}

/// What only the blog that has the original can make sense of. A picture on this computer goes up with the copy.
void forgetOtherBlog(ZLPostInfo &info)
{
    info.URL.clear();
    info.slug.clear();
    info.authorId.clear();
    info.createdAt = {};
    info.updatedAt = {};
    info.featuredImageId.clear();
    if (!info.featuredImageURL.startsWith(u"file:"))
        info.featuredImageURL.clear();
}

Result<void> makeNew(const QUrl &file, const QString &id)
{
    const Result<DocumentPtr> opened = ZLDocument::open(file);
    if (!opened)
        return failure(opened.error());
    const DocumentPtr &document = *opened;
    document->fileInfo.status = u"new"_qs;
    forgetOtherBlog(document->postInfo);
    document->postInfo.id = id;
    document->postInfo.status = u"new"_qs;
    document->updateChangeCount();
    const Result<void> saved = document->saveDocument();
    if (!saved)
        document->forgetChanges();
    document->close();
    return saved;
}

} // namespace

Result<QUrl> PostCopier::copyPostToBlog(ZLAppDelegate &app, const LocalPostPtr &post, const AccountPtr &account)
{
    // What is still unsaved of this post belongs into the copy as well.
    app.documentController().saveAll();
    const QString id = genRandString(8);
    const Result<QUrl> file = copiedFile(app, post, account->alias(), id);
    if (!file)
        return file;
    if (const Result<void> made = makeNew(*file, id); !made) {
        QFile::remove(file->toLocalFile()); // it would pass for a post that the other blog has
        return failure(made.error());
    }
    app.selectAccount(account);
    return file;
}

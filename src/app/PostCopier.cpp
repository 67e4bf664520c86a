#include "app/PostCopier.h"

#include "model/PostSync.h"
#include "text/RandomString.h"

#include <QFile>

namespace {

Result<QUrl> copiedFile(const ZLFileManager &files, const LocalPostPtr &post, const QString &alias, const QString &id)
{
    const QString folder = files.postPathForBlogURL(alias, id);
    if (folder.isNull())
        return failure(u"ZLFile"_qs, 0, u"The folder of the copy could not be made."_qs);
    const QString target = PostSync::postPath(folder);
    QFile source(post->localFile.toLocalFile());
    if (!source.copy(target))
        return failure(u"ZLFile"_qs, 0, u"%1: %2"_qs.arg(source.fileName(), source.errorString()));
    return QUrl::fromLocalFile(target);
}

/// What only the blog that has the original can make sense of. A picture on this computer goes up with the copy.
void forgetOtherBlog(PostFields &post, const QString &id)
{
    post.becomeNew(id);
    for (ZLTaxonomy &taxonomy : post.taxonomies)
        taxonomy.termId.clear();
    post.featuredImageId.clear();
    if (!post.featuredImageURL.startsWith(u"file:"))
        post.featuredImageURL.clear();
}

Result<void> makeNew(const QUrl &file, const QString &id)
{
    const Result<DocumentPtr> opened = ZLDocument::open(file);
    if (!opened)
        return failure(opened.error());
    const DocumentPtr &document = *opened;
    document->fileInfo.status = u"new"_qs;
    forgetOtherBlog(document->post, id);
    document->updateChangeCount();
    const Result<void> saved = document->saveDocument();
    if (!saved)
        document->forgetChanges();
    document->close();
    return saved;
}

} // namespace

PostCopier::PostCopier(const ZLFileManager &files, ZLDocumentController &documents, CurrentBlog &currentBlog)
    : m_files(files)
    , m_documents(documents)
    , m_currentBlog(currentBlog)
{
}

Result<QUrl> PostCopier::copyPostToBlog(const LocalPostPtr &post, const AccountPtr &account)
{
    // What is still unsaved of this post belongs into the copy as well.
    m_documents.saveAll();
    const QString id = genRandString(8);
    const Result<QUrl> file = copiedFile(m_files, post, account->alias(), id);
    if (!file)
        return file;
    if (const Result<void> made = makeNew(*file, id); !made) {
        QFile::remove(file->toLocalFile()); // it would pass for a post that the other blog has
        return failure(made.error());
    }
    m_currentBlog.selectAccount(account);
    return file;
}

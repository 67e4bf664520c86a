#include "mainwindow/PostCopier.h"

#include "app/ZLAppDelegate.h"
#include "model/PostSync.h"
#include "platform/ZLLog.h"
#include "text/RandomString.h"

#include <QFile>

/// The copy's file; null when it could not be made.
static QUrl copiedFile(ZLAppDelegate &app, const LocalPostPtr &post, const QString &alias, const QString &id)
{
    const QString folder = app.platform().files.postPathForBlogURL(alias, id);
    if (folder.isNull())
        return {};
    const QString target = PostSync::postPath(folder);
    QFile source(post->localFile.toLocalFile());
    if (!source.copy(target)) {
        ZLLog(source.errorString());
        return {};
    }
    return QUrl::fromLocalFile(target);
}

static bool makeNew(const QUrl &file, const QString &id)
{
    const Result<DocumentPtr> opened = ZLDocument::open(file);
    if (!opened) {
        ZLLog(opened.error().description);
        return false;
    }
    const DocumentPtr &document = *opened;
    document->fileInfo.status = u"new"_qs;
    document->postInfo.id = id;
    document->postInfo.status = u"new"_qs;
    document->updateChangeCount();
    const Result<void> saved = document->saveDocument();
    if (!saved)
        ZLLog(saved.error().description);
    document->close();
    return saved.has_value();
}

void PostCopier::copyPostToBlog(ZLAppDelegate &app, const LocalPostPtr &post, const AccountPtr &account,
    const std::function<void(const QUrl &)> &then)
{
    // What is still unsaved of this post belongs into the copy as well.
    app.documentController().saveAll();
    const QString id = genRandString(8);
    const QUrl file = copiedFile(app, post, account->alias(), id);
    if (file.isEmpty() || !makeNew(file, id))
        return;
    app.selectAccount(account);
    then(file);
}

#include "wordpress/ContentConversion.h"

#include "text/ContentPasses.h"
#include "text/KeptForms.h"
#include "wordpress/LocalPictures.h"

#include <QFileInfo>

EditorBody ContentConversion::postContentForZalmoEditor(const QString &stored, const ZLFileManager &files)
{
    EditorBody body;
    body.isBlockEditor = ContentPasses::isBlockEditorContent(stored);
    body.isTooLarge = BodyPieces::isTooLarge(stored);
    if (body.isTooLarge) {
        body.pieces = {{{}, stored, {}, {}}};
        return body;
    }
    KeptForms kept;
    body.pieces = BodyPieces::split(stored);
    for (BodyPiece &piece : body.pieces) {
        const QString html = ContentPasses::pieceForPage(piece.core, body.isBlockEditor, &kept);
        piece.html = postContentWithLocalImagesURL(html, files, body.localImages);
    }
    body.mark = kept.mark();
    body.kept = kept.texts();
    return body;
}

QString ContentConversion::postContentWithLocalImagesURL(
    const QString &content, const ZLFileManager &files, QHash<QString, QString> &localImages)
{
    const QString prefix = QStringLiteral("http://");
    const QStringList noted =
        ContentPasses::imageSources(content, prefix) + ContentPasses::linkedPictures(content, prefix);
    if (noted.isEmpty())
        return content;
    const QString folder = files.cacheFolder();
    QHash<QString, QString> swaps;
    for (const QString &remote : noted) {
        const QString name = LocalPictures::fileName(remote);
        if (!ZLFileManager::isPlainFileName(name) || !QFileInfo(folder + QLatin1Char('/') + name).isFile())
            continue;
        const QString local = LocalPictures::address(folder, name);
        if (localImages.value(local, remote) != remote) // a picture of that name from elsewhere has the file already
            continue;
        swaps.insert(remote, local);
        localImages.insert(local, remote);
    }
    return swaps.isEmpty() ? content : ContentPasses::replacePictureAddresses(content, swaps);
}

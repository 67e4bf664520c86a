#pragma once

#include "platform/ZLFileManager.h"
#include "text/EditorBody.h"

/// From a stored body to the form of the editor page.
namespace ContentConversion {
EditorBody postContentForZalmoEditor(const QString &stored, const ZLFileManager &files);
/// Puts cached local copies in the place of pictures on the blog, so that they show offline and edited ones keep their
/// file, and notes each in `localImages`. Only "http://" addresses are swapped, on purpose: the others show from the
/// web. Meant was both schemes.
QString postContentWithLocalImagesURL(
    const QString &content, const ZLFileManager &files, QHash<QString, QString> &localImages);
} // namespace ContentConversion

#pragma once

#include "model/PostFields.h"

#include <QByteArray>

struct ZLFileInfo;

/// Writes the text of a post file: one line, elements in a fixed order, no declaration, no attributes.
namespace ZLFileExtension {
/// Without `fileInfo` the file block tells the version alone; a null version in it is left out.
QByteArray generateXMLDataForPost(const PostFields &post, const ZLFileInfo *fileInfo);
} // namespace ZLFileExtension

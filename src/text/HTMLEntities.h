#pragma once

#include <QString>

/// Entities and plain text.
namespace HTMLEntities {
QString stringByDecodingHTMLEntities(const QString &text);
/// The words of a text of HTML: tags and comments go, runs of white space become one blank, entities are decoded.
QString stringByConvertingHTMLToPlainText(const QString &html);
} // namespace HTMLEntities

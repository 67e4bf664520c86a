#pragma once

#include <QString>

/// Entities and plain text.
namespace HTMLEntities {
QString stringByDecodingHTMLEntities(const QString &text);
QString stringByEscapingForHTML(const QString &text); ///< the short table, Unicode as it is
QString stringByEscapingForAsciiHTML(const QString &text); ///< the long table, the rest as &#n;
QString stringByConvertingHTMLToPlainText(const QString &html);
QString stringWithNewLinesAsBRs(const QString &text);
QString stringByRemovingNewLinesAndWhitespace(const QString &text);
QString stringByLinkifyingURLs(const QString &text);
QString stringByStrippingTags(const QString &html);
} // namespace HTMLEntities

#pragma once

#include <QString>

/// The passes as their patterns say it, by a pattern engine and step by step: slow, but plainly right. The real ones
/// are compared with these.
namespace ReferencePasses {
QString removeEmptyParagraphs(QString content);
QString paragraphs(const QString &content);
QString entitiesDecoded(const QString &text);
QString plainText(const QString &html);
} // namespace ReferencePasses

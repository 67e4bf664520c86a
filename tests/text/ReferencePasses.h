#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// The passes as their patterns say it, by a pattern engine and step by step: slow, but plainly right. The real ones
/// are compared with these.
namespace ReferencePasses {
struct Replacement {
    QString key;
    QString value;
};
/// Distinct keys in the order in which they appear.
using Replacements = QList<Replacement>;

Replacements imageClasses(const QString &content);
Replacements shortCodeTags(const QString &content);
Replacements videoURLTags(const QString &content);
Replacements headings(const QString &content);
Replacements embedTags(const QString &content);
/// Whether `result` comes out when all occurrences of one key after the other are replaced, in any order of the keys.
bool isResultOf(const Replacements &replacements, const QString &content, const QString &result);
QString longestFirst(Replacements replacements, QString content);

QString removeEmptyParagraphs(QString content);
QString paragraphs(const QString &content);
QString replaceYouTubeTags(QString content);
QStringList imageSources(const QString &content);
QString removeHTMLFromString(QString html);
QString linkified(QString text);
QString entitiesDecoded(const QString &text);
QString strippedTags(const QString &html);
QString plainText(const QString &html);
} // namespace ReferencePasses

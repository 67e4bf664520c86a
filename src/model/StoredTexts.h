#pragma once

#include <QByteArray>
#include <QString>

/// The title and content of a post file exactly as they were stored: entities decoded once and nothing else done, where
/// an XML parser would turn line ends into "\n" and refuse control characters.
struct StoredTexts {
    QString title;
    QString content;

    /// `original` is the file; `legal` the same bytes, place by place, with those replaced that XML forbids.
    static StoredTexts fromData(const QByteArray &original, const QByteArray &legal);
};

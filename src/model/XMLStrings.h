#pragma once

#include <QByteArrayView>
#include <QString>

/// Replaces & < > " ' by their entities.
QString XMLEncodedString(const QString &text);
/// Replaces, in this order, "&amp;", "&lt;", "&gt;", "&quot;", "&apos;" by their characters. Because "&amp;" goes
/// first, "&amp;lt;" gives "<" in one call; "&amp;amp;lt;" gives "&amp;lt;".
QString XMLDecodedString(const QString &text);
/// The predefined and numeric references of a text in UTF-8, each decoded once. Never null.
QString XMLDecodedOnce(QByteArrayView utf8);

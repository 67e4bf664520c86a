#pragma once

#include <QString>

/// Whether two texts are the same but for white space around them and for how their lines end: a blog that stores a
/// text cuts the one and may change the other.
bool sameStoredText(const QString &one, const QString &other);

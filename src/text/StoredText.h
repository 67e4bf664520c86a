#pragma once

#include <QString>

/// Whether two texts are the same but for what a blog that stores a text does to any: white space around it is cut, its
/// lines may end otherwise, and links with a target get a rel="noopener".
bool sameStoredText(const QString &one, const QString &other);

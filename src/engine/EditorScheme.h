#pragma once

#include <QUrl>

/// The program's own scheme, under which the editor page and the pictures of this computer are served.
namespace EditorScheme {
/// Makes the scheme known to the web engine. Call it before the first profile is made; a second call does nothing.
void registerScheme();
QUrl pageUrl(); ///< zalmo://editor/index.html
inline constexpr char name[] = "zalmo";
} // namespace EditorScheme

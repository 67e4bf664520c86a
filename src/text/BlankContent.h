#pragma once

#include <QString>

/// The content of a post in which nothing is written.
namespace BlankContent {
inline const QString paragraph = QStringLiteral("<p><br></p>");

inline bool is(const QString &html)
{
    return html.isEmpty() || html == paragraph;
}
} // namespace BlankContent

#pragma once

#include <QtGlobal>

/// The column of the page's text, as editor.css lays it out. The title stands over it.
namespace PageColumn {
constexpr int scrollBar = 12; ///< its room is kept free on both sides
constexpr int widest = 900; ///< with the margins in it

/// The distance between the text and either side of a page of this width.
inline int margin(int pageWidth)
{
    const int column = qMin(pageWidth - 2 * scrollBar, widest);
    return (pageWidth - column) / 2 + qBound(24, qRound(0.07 * pageWidth), 96);
}
} // namespace PageColumn

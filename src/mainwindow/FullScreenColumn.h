#pragma once

#include "widgets/ZLTheme.h"

#include <QtGlobal>

/// Where the window's content stands in full screen: a column in the middle, in which the post is as wide as in the
/// window. A screen that is narrower is filled.
class FullScreenColumn {
public:
    FullScreenColumn(int windowWidth, bool listIsOpen)
        : m_width(qMin(814 + ZLTheme::sideBarWidth + (listIsOpen ? ZLTheme::toolViewWidth : 0), windowWidth))
        , m_x((windowWidth - m_width) / 2)
    {
    }

    int x() const { return m_x; }
    int width() const { return m_width; }

private:
    int m_width;
    int m_x;
};

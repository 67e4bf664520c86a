#pragma once

#include "widgets/ZLTheme.h"

#include <QtGlobal>

/// Where the window's content stands in full screen: a column whose compose screen, without the side bar, is in the
/// middle. A screen that is narrower is filled.
class FullScreenColumn {
public:
    FullScreenColumn(int windowWidth, bool listIsOpen)
        : m_width(qMin(814 + (listIsOpen ? ZLTheme::toolViewWidth : 0), windowWidth))
        , m_x(qMax(0, int(windowWidth * 0.5 - m_width * 0.5 - ZLTheme::sideBarWidth * 0.5)))
    {
    }

    int x() const { return m_x; }
    int width() const { return m_width; }

private:
    int m_width;
    int m_x;
};

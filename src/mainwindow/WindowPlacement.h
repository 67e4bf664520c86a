#pragma once

#include <QRect>

/// Where the window may stand: all of it, with what the desktop draws around it, inside the screen.
namespace WindowPlacement {
/// `window`, made no larger than `room` and moved no further than it must be to lie inside.
inline QRect inside(const QRect &room, const QRect &window)
{
    QRect placed(window.topLeft(), window.size().boundedTo(room.size()));
    placed.moveRight(qMin(placed.right(), room.right()));
    placed.moveBottom(qMin(placed.bottom(), room.bottom()));
    placed.moveLeft(qMax(placed.left(), room.left()));
    placed.moveTop(qMax(placed.top(), room.top()));
    return placed;
}
} // namespace WindowPlacement

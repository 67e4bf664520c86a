#pragma once

class QWidget;

namespace ZLFocusRing {
/// Moves the focus to the next (or the previous) widget in `area` that takes it by Tab. From the last it goes to the
/// first, and never out of `area`.
void moveFocus(QWidget &area, bool next);
} // namespace ZLFocusRing

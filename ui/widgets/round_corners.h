// Round corners of the frameless windows. GUI thread.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

// In the constructor, before the window is made: smooth corners where the desktop blends windows.
void PrepareRoundCorners(QWidget& window);
// At each change of its size: elsewhere the corners are cut off.
void CutRoundCorners(QWidget& window);

}  // namespace zorvanelink::ui

// Round corners of the frameless windows. GUI thread.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

// As the desktop is now.
bool DesktopBlendsWindows();
// In the constructor, before the window is made: smooth corners where the desktop blends windows.
void PrepareRoundCorners(QWidget& window);
// At each change of its size: elsewhere the corners are cut off, and margins for a shadow.
void CutRoundCorners(QWidget& window);

}  // namespace zorvanelink::ui

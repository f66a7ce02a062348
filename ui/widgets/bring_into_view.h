// What the user must answer is no use behind a hidden or minimised window. GUI thread.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

// Shows and raises the widget's window when it is hidden or minimised; else, or with null, nothing.
void BringIntoView(QWidget* widget);
// Out of the tray or the task bar, to the front, with what is modal above it. Null: nothing.
void BringForward(QWidget* widget);

}  // namespace zorvanelink::ui

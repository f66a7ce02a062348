// What the user must answer is no use behind a hidden or minimised window. GUI thread.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

// Out of hiding or the task bar, to the front; one that is maximised stays so.
void BringToFront(QWidget& window);

// Does so with the widget's window when it is hidden or minimised; else, or with null, nothing.
void BringIntoView(QWidget* widget);

// Brings the widget's window to the front, with what is modal above it. Null: nothing.
void BringForward(QWidget* widget);

}  // namespace zorvanelink::ui

// What the user must answer is no use behind a hidden or minimised window. GUI thread.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

// Shows and raises the widget's window when it is hidden or minimised; else, or with null, nothing.
void BringIntoView(QWidget* widget);

}  // namespace zorvanelink::ui

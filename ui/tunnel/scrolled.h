// What a view shows where the window is too low for it. GUI thread.
#pragma once

#include <QScrollArea>

namespace zorvanelink::ui {

// Fills the view with a body that scrolls up and down; returns its area.
QScrollArea& Scroll(QWidget& body, QWidget& view);

}  // namespace zorvanelink::ui

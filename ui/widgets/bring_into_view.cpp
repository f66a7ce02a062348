#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {

void BringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void BringIntoView(QWidget* widget) {
    QWidget* const window = widget != nullptr ? widget->window() : nullptr;
    if (window != nullptr && (window->isHidden() || window->isMinimized())) {
        BringToFront(*window);
    }
}

}  // namespace zorvanelink::ui

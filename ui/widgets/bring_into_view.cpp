#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {

void BringIntoView(QWidget* widget) {
    QWidget* const window = widget != nullptr ? widget->window() : nullptr;
    if (window != nullptr && (window->isHidden() || window->isMinimized())) {
        window->raise();
        // Not showNormal: a maximised one stays so.
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->show();
        window->activateWindow();
    }
}

}  // namespace zorvanelink::ui

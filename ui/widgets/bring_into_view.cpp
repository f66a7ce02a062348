#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {

void BringIntoView(QWidget* widget) {
    QWidget* const window = widget != nullptr ? widget->window() : nullptr;
    if (window != nullptr && (window->isHidden() || window->isMinimized())) {
        window->raise();
        window->showNormal();
        window->activateWindow();
    }
}

}  // namespace zorvanelink::ui

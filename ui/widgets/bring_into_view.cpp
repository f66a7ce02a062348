#include "ui/widgets/bring_into_view.h"

#include <QApplication>

#include "app/environment/globals.h"

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

void BringForward(QWidget* widget) {
    if (widget == nullptr || g_quit) {
        return;
    }
    BringToFront(*widget->window());
    if (QWidget* const modal = QApplication::activeModalWidget()) {
        modal->raise();
        modal->activateWindow();
    }
}

}  // namespace zorvanelink::ui

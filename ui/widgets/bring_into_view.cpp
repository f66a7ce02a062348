#include "ui/widgets/bring_into_view.h"

#include <QApplication>

#include "app/environment/globals.h"

namespace zorvanelink::ui {

void BringIntoView(QWidget* widget) {
    QWidget* const window = widget != nullptr ? widget->window() : nullptr;
    if (window != nullptr && (window->isHidden() || window->isMinimized())) {
        window->raise();
        window->showNormal();
        window->activateWindow();
    }
}

void BringForward(QWidget* widget) {
    if (widget == nullptr || g_quit) {
        return;
    }
    QWidget* const window = widget->window();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    QWidget* const modal = QApplication::activeModalWidget();
    for (QWidget* const front : {window, modal}) {
        if (front != nullptr) {
            front->raise();
            front->activateWindow();
        }
    }
}

}  // namespace zorvanelink::ui

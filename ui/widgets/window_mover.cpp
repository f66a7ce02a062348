#include "ui/widgets/window_mover.h"

#include <QApplication>
#include <QWindow>

namespace zorvanelink::ui {

void WindowMover::Press(QWidget const& window, QMouseEvent const& event) {
    pressed_ = event.button() == Qt::LeftButton;
    following_ = false;
    offset_ = event.globalPos() - window.frameGeometry().topLeft();
}

void WindowMover::Move(QWidget& window, QMouseEvent const& event) {
    if (!pressed_ || !(event.buttons() & Qt::LeftButton)) {
        return;
    }
    QPoint const target = event.globalPos() - offset_;
    if (!following_) {
        QPoint const way = target - window.frameGeometry().topLeft();
        if (way.manhattanLength() < QApplication::startDragDistance()) {
            return;
        }
        if (window.windowHandle() != nullptr && window.windowHandle()->startSystemMove()) {
            pressed_ = false;
            return;
        }
        following_ = true;
    }
    window.move(target);
}

void WindowMover::Release() {
    pressed_ = false;
    following_ = false;
}

}  // namespace zorvanelink::ui

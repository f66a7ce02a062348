// Moving a frameless window by its title bar.
#pragma once

#include <QMouseEvent>
#include <QPoint>
#include <QWidget>

namespace zorvanelink::ui {

// Leaves the move to the window system where it can (Wayland can nothing else), and otherwise
// follows the pointer. The owner forwards its mouse events.
class WindowMover {
  public:
    void Press(QWidget const& window, QMouseEvent const& event);
    void Move(QWidget& window, QMouseEvent const& event);
    void Release();

  private:
    QPoint offset_;
    bool pressed_ = false;
    bool following_ = false;
};

}  // namespace zorvanelink::ui

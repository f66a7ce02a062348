// A main window that draws its own frame: round corners, edges to enlarge it by. GUI thread.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

class FramelessWindow : public QWidget {
    Q_OBJECT

  public:
    // At once: the window is on its way to the screen while its contents are still made, so that
    // the window manager works at the same time. It is painted when events are handled.
    enum class Opening { kByShow, kAtOnce };

  protected:
    // Pixels, before scaling; at most what the screen has.
    struct Size {
        QSize wanted;
        QSize smallest;
    };

    FramelessWindow(QString const& title, Size size, Opening opening, QWidget* parent);

    // To be called when the contents are made: those of a visible window must be shown.
    void ContentsMade();

    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
};

}  // namespace zorvanelink::ui

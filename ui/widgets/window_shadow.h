// The soft shadow of a window that draws its own frame. GUI thread.
#pragma once

#include <QPixmap>
#include <QWidget>

namespace zorvanelink::ui {

// Lies in margins that the window gets for it, outside what the window manager takes for the
// window: `_GTK_FRAME_EXTENTS` tells it, and clicks fall through. The margins stay for the life of
// the window; a maximised one, or one as high as its screen, paints nothing in them.
class WindowShadow : public QObject {
    Q_OBJECT

  public:
    // Before the window exists, after PrepareRoundCorners. Does nothing where windows are not
    // blended, or where the window manager would take the margins for a part of the window.
    static void Give(QWidget& window);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    explicit WindowShadow(QWidget& window);

    void tellExtents();
    void paint();

    QWidget& window_;
    QPixmap picture_;
    bool blended_ = true;
};

}  // namespace zorvanelink::ui

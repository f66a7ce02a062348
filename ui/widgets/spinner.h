// A turning arc that says "working".
#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QWidget>

namespace zorvanelink::ui {

// Painted, so sharp at every scale. Its timer runs only while the widget can be seen.
class Spinner : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor color MEMBER color_)  // set by the stylesheet: "qproperty-color: ..."

  public:
    // `diameter` and `thickness` in pixels.
    explicit Spinner(int diameter, int thickness, QWidget* parent = nullptr);

    bool IsRunning() const { return timer_.isActive(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    QBasicTimer timer_;
    QColor color_;
    int thickness_;
    int angle_ = 0;  // degrees, clockwise
};

}  // namespace zorvanelink::ui

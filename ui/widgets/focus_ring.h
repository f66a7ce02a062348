// Shows where the keyboard is: one ring of two tones, seen on any ground, around the control that
// has the focus. GUI thread.
#pragma once

#include <QColor>
#include <QPointer>
#include <QWidget>

class QPainter;

namespace zorvanelink::ui {

// Its colours come from the stylesheet of the window; without one it is not drawn. Cards and the
// heads of tables show the focus themselves.
class FocusRing : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor outer MEMBER outer_)
    Q_PROPERTY(QColor inner MEMBER inner_)

  public:
    explicit FocusRing(QWidget& control);

    // From now on, in every window: a control that the keyboard reaches has its ring, and a field
    // always. May be called again.
    static void Install();
    // Along the inside of a rectangle, for what shows its focus itself.
    static void Paint(QPainter& painter, QRectF const& around, QColor const& outer,
                      QColor const& inner);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void place();

    QPointer<QWidget> control_;
    QColor outer_;
    QColor inner_;
};

}  // namespace zorvanelink::ui

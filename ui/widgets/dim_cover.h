// The dark cover over a window that stands behind a modal one.
#pragma once

#include <QWidget>

namespace zorvanelink::ui {

// A raised child that fills its parent's rectangle while shown and swallows nothing: the parent is
// blocked anyway.
class DimCover : public QWidget {
    Q_OBJECT

  public:
    // `style` is the stylesheet text of the cover, such as "background-color:rgba(0,0,0,50%);".
    DimCover(QWidget* parent, QString const& style);

    void ToBack();   // the window goes to the back: cover it
    void ToFront();  // uncover it

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace zorvanelink::ui

// The button of message boxes and dialogs.
#pragma once

#include <QPushButton>

namespace zorvanelink::ui {

// A 32-pixel button, at least 80 wide, that answers Return as well as Space while it has the focus.
class QPushButtonExt : public QPushButton {
    Q_OBJECT

  public:
    explicit QPushButtonExt(QString const& text, QWidget* parent = nullptr);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace zorvanelink::ui

// The field for a password or PIN.
#pragma once

#include <QLineEdit>

#include "ui/widgets/field_button.h"

namespace zorvanelink::ui {

// A stored secret is never shown: asterisks stand for it, always selected as a whole, so that the
// first edit of any kind replaces them. What is typed can be looked at with the eye button. A line
// below says when Caps Lock turns the letters round.
class SecretEdit : public QLineEdit {
    Q_OBJECT

  public:
    // `maxLength` in characters; as many asterisks stand for a stored secret.
    SecretEdit(int maxLength, QWidget* parent);

    void ShowMask();
    // Whether the field still holds exactly the mask: the user left the stored value alone.
    bool HoldsMask() const;
    FieldButton* Eye() const { return eye_; }

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void keepMaskWhole();
    void updateEye();
    void reveal(bool shown);

    FieldButton* const eye_;
    bool masked_ = false;
};

}  // namespace zorvanelink::ui

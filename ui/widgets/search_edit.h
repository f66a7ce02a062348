// The field that narrows a list.
#pragma once

#include <QLineEdit>

#include "ui/widgets/field_button.h"

namespace zorvanelink::ui {

// Escape and a button at its end empty it.
class SearchEdit : public QLineEdit {
    Q_OBJECT

  public:
    // `placeholder` is its accessible name as well.
    SearchEdit(char const* name, QString const& placeholder, QWidget* parent);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    FieldButton* const clear_;
};

}  // namespace zorvanelink::ui

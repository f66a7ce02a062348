#include "ui/widgets/push_button_ext.h"

#include <QKeyEvent>

namespace zorvanelink::ui {

QPushButtonExt::QPushButtonExt(QString const& text, QWidget* parent) : QPushButton(text, parent) {
    setAutoDefault(false);
    setAccessibleName(text);
}

void QPushButtonExt::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

}  // namespace zorvanelink::ui

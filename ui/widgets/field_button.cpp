#include "ui/widgets/field_button.h"

#include <QKeyEvent>

#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

// Pixels.
constexpr int kSize = 26;
constexpr int kInset = 5;

}  // namespace

FieldButton::FieldButton(QLineEdit* field, QString const& icon, QString const& accessibleName)
    : QToolButton(field), field_(field) {
    setFixedSize(kSize, kSize);
    setIconSize(QSize(16, 16));
    setCursor(Qt::ArrowCursor);
    setFocusPolicy(Qt::TabFocus);
    SetImage(icon);
    SetName(accessibleName);
    field->installEventFilter(this);
    SetShown(true);
}

void FieldButton::SetImage(QString const& icon) {
    setIcon(LoadImage(icon));
}

void FieldButton::SetName(QString const& accessibleName) {
    setAccessibleName(accessibleName);
    setToolTip(accessibleName);
}

void FieldButton::SetShown(bool shown) {
    setVisible(shown);
    field_->setTextMargins(0, 0, shown ? kSize - kInset : 0, 0);
    place();
}

bool FieldButton::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        place();
    }
    return QToolButton::eventFilter(watched, event);
}

// Enter would otherwise go on to the dialog's default button.
void FieldButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QToolButton::keyPressEvent(event);
}

void FieldButton::place() {
    move(field_->width() - kSize - kInset, (field_->height() - kSize) / 2);
}

}  // namespace zorvanelink::ui

#include "ui/widgets/secret_edit.h"

#include <QKeyEvent>
#include <utility>

#include "ui/text/texts.h"
#include "ui/widgets/field_note.h"
#include "ui/widgets/secret_field.h"

namespace zorvanelink::ui {

SecretEdit::SecretEdit(int maxLength, QWidget* parent)
    : QLineEdit(parent), eye_(new FieldButton(this, QString(), QString())) {
    eye_->setObjectName(QStringLiteral("eye_button_"));
    setMaxLength(maxLength);
    reveal(false);
    updateEye();
    connect(eye_, &QToolButton::clicked, this, [this] { reveal(echoMode() == Password); });
    connect(this, &QLineEdit::textEdited, this, [this](QString const& typed) {
        if (std::exchange(masked_, false)) {
            setText(typed);  // undoing must not bring the asterisks back as if they were typed
        }
    });
    connect(this, &QLineEdit::textChanged, this, &SecretEdit::updateEye);
    connect(this, &QLineEdit::textEdited, this, &SecretEdit::updateEye);
    connect(this, &QLineEdit::selectionChanged, this, &SecretEdit::keepMaskWhole);
    connect(this, &QLineEdit::cursorPositionChanged, this, &SecretEdit::keepMaskWhole);
}

void SecretEdit::ShowMask() {
    masked_ = true;
    setText(QString(maxLength(), QLatin1Char('*')));
    keepMaskWhole();
}

bool SecretEdit::HoldsMask() const {
    return masked_ && text() == QString(maxLength(), QLatin1Char('*'));
}

void SecretEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    keepMaskWhole();
}

void SecretEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    SetFieldNote(*this, {}, NoteKind::kHint);
}

// The toolkit does not know the lock; a letter of the other case gives it away.
void SecretEdit::keyPressEvent(QKeyEvent* event) {
    QString const typed = event->text();
    if (typed.size() == 1 && typed[0].isLetter() && typed[0].toLower() != typed[0].toUpper()) {
        bool const locked = typed[0].isUpper() != event->modifiers().testFlag(Qt::ShiftModifier);
        SetFieldNote(*this,
                     locked ? Translate(QT_TRANSLATE_NOOP("ui", "Caps Lock is on")) : QString(),
                     NoteKind::kHint);
    } else if (event->key() == Qt::Key_CapsLock) {
        SetFieldNote(*this, {}, NoteKind::kHint);
    }
    QLineEdit::keyPressEvent(event);
}

void SecretEdit::keepMaskWhole() {
    if (hasFocus() && HoldsMask() && selectionLength() < maxLength()) {
        selectAll();
    }
}

void SecretEdit::updateEye() {
    bool const worth_seeing = !text().isEmpty() && !HoldsMask();
    eye_->SetShown(worth_seeing);
    reveal(worth_seeing && echoMode() == Normal);
}

void SecretEdit::reveal(bool shown) {
    SetSecretEcho(*this, shown ? Normal : Password);
    eye_->SetImage(shown ? QStringLiteral(":/assets/images/eye_off.png")
                         : QStringLiteral(":/assets/images/eye.png"));
    eye_->SetName(shown ? Translate(QT_TRANSLATE_NOOP("ui", "Hide what is typed"))
                        : Translate(QT_TRANSLATE_NOOP("ui", "Show what is typed")));
    // A dialog may have several.
    eye_->setAccessibleName(eye_->toolTip() + QLatin1Char(' ') + accessibleName());
}

}  // namespace zorvanelink::ui

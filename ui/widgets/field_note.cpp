#include "ui/widgets/field_note.h"

#include <QBoxLayout>
#include <QLabel>
#include <QStyle>
#include <memory>

namespace zorvanelink::ui {
namespace {

QBoxLayout* columnOf(QLayout* layout, QWidget* field) {
    if (layout == nullptr || layout->indexOf(field) >= 0) {
        return qobject_cast<QBoxLayout*>(layout);
    }
    for (int i = 0; i < layout->count(); ++i) {
        if (QLayout* const inner = layout->itemAt(i)->layout()) {
            if (QBoxLayout* const found = columnOf(inner, field)) {
                return found;
            }
        }
    }
    return nullptr;
}

void showRefused(QLineEdit& field, bool refused) {
    field.setProperty("refused", refused);
    field.style()->unpolish(&field);
    field.style()->polish(&field);
}

}  // namespace

void SetFieldNote(QLineEdit& field, QString const& text, NoteKind kind) {
    QString const role =
        kind == NoteKind::kFault ? QStringLiteral("error") : QStringLiteral("hint");
    QString const name = role + QStringLiteral("_of_") + field.objectName();
    auto* line = field.parentWidget()->findChild<QLabel*>(name, Qt::FindDirectChildrenOnly);
    if (line == nullptr && !text.isEmpty()) {
        line = new QLabel(field.parentWidget());
        line->setObjectName(name);
        line->setProperty("role", role);
        line->setTextFormat(Qt::PlainText);
        line->setWordWrap(true);
        if (QBoxLayout* const column = columnOf(field.parentWidget()->layout(), &field)) {
            column->insertWidget(column->indexOf(&field) + 1, line);
        }
    }
    if (line != nullptr) {
        line->setText(text);
        line->setVisible(!text.isEmpty());
    }
}

void MarkRefused(QLineEdit& field, QString const& reason) {
    showRefused(field, true);
    SetFieldNote(field, reason, NoteKind::kFault);
    auto const changed = std::make_shared<QMetaObject::Connection>();
    *changed = QObject::connect(&field, &QLineEdit::textChanged, &field,
                                [&field, changed, before = field.accessibleDescription()] {
                                    QObject::disconnect(*changed);
                                    showRefused(field, false);
                                    SetFieldNote(field, {}, NoteKind::kFault);
                                    field.setAccessibleDescription(before);
                                });
    field.setAccessibleDescription(reason);
}

}  // namespace zorvanelink::ui

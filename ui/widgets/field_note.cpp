#include "ui/widgets/field_note.h"

#include <QBoxLayout>
#include <QLabel>
#include <QStyle>

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

// A child of the field that is marked, and its description before that.
QString markName() {
    return QStringLiteral("refusal_mark_");
}
constexpr char kBefore[] = "before";

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
    TakeMark(field);
    auto* const mark = new QObject(&field);
    mark->setObjectName(markName());
    mark->setProperty(kBefore, field.accessibleDescription());
    QObject::connect(&field, &QLineEdit::textChanged, mark, [&field] { TakeMark(field); });
    showRefused(field, true);
    SetFieldNote(field, reason, NoteKind::kFault);
    field.setAccessibleDescription(reason);
}

void TakeMark(QLineEdit& field) {
    auto* const mark = field.findChild<QObject*>(markName(), Qt::FindDirectChildrenOnly);
    if (mark == nullptr) {
        return;
    }
    showRefused(field, false);
    SetFieldNote(field, {}, NoteKind::kFault);
    field.setAccessibleDescription(mark->property(kBefore).toString());
    QObject::disconnect(&field, nullptr, mark, nullptr);
    mark->setObjectName({});
    mark->deleteLater();
}

}  // namespace zorvanelink::ui

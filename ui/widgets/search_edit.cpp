#include "ui/widgets/search_edit.h"

#include <QKeyEvent>

#include "ui/text/texts.h"

namespace zorvanelink::ui {

SearchEdit::SearchEdit(char const* name, QString const& placeholder, QWidget* parent)
    : QLineEdit(parent),
      clear_(new FieldButton(this, QStringLiteral(":/assets/images/close.png"),
                             Translate(QT_TRANSLATE_NOOP("ui", "Clear the search")))) {
    setObjectName(QLatin1String(name));
    setProperty("compact", true);
    setPlaceholderText(placeholder);
    setAccessibleName(placeholder);
    clear_->setObjectName(QStringLiteral("clear_search_"));
    clear_->setIconSize({12, 12});
    clear_->SetShown(false);
    connect(clear_, &QToolButton::clicked, this, [this] {
        clear();
        setFocus();
    });
    connect(this, &QLineEdit::textChanged, clear_,
            [this](QString const& text) { clear_->SetShown(!text.isEmpty()); });
}

void SearchEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

}  // namespace zorvanelink::ui

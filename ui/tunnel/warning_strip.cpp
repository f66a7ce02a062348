#include "ui/tunnel/warning_strip.h"

#include <QHBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

WarningStrip::WarningStrip(QWidget* parent) : QFrame(parent), text_(new QLabel(this)) {
    setObjectName(QStringLiteral("warning_strip_"));
    auto* icon = new QLabel(this);
    icon->setObjectName(QStringLiteral("warning_icon_"));
    icon->setPixmap(LoadImage(QStringLiteral(":/assets/images/warning.png")));
    icon->setFixedSize(16, 20);
    icon->setAccessibleName(GetTrMsg(common::MsgCode::UI_WARNING));
    text_->setObjectName(QStringLiteral("warning_text_"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 8, 12, 8);
    row->setSpacing(8);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(text_, 1);
    hide();
}

void WarningStrip::SetText(QString const& text) {
    text_->setText(text);
    setVisible(!text.isEmpty());
}

QString WarningStrip::Text() const {
    return text_->text();
}

}  // namespace zorvanelink::ui

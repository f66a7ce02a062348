#include "ui/cards/user_guide.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

using common::MsgCode;

UserGuide::UserGuide(QWidget* parent) : QWidget(parent) {
    auto* shield = new QLabel(this);
    shield->setPixmap(LoadImage(QStringLiteral(":/assets/images/shield_guide.png")));
    auto* title = new QLabel(GetTrMsg(MsgCode::UI_TR_USER_GUIDE_TITLE), this);
    title->setObjectName(QStringLiteral("guide_title_"));
    auto* hint = new QLabel(
        Translate(QT_TRANSLATE_NOOP("ui", "Add the gateway that your administrator gave you.")),
        this);
    hint->setObjectName(QStringLiteral("guide_hint_"));
    hint->setWordWrap(true);
    hint->setAlignment(Qt::AlignCenter);
    auto* button = new QPushButton(GetTrMsg(MsgCode::UI_INFO_ADD_CONNECTION), this);
    button->setObjectName(QStringLiteral("guide_button_"));
    button->setProperty("primary", true);
    button->setAccessibleName(button->text());
    connect(button, &QPushButton::clicked, this, &UserGuide::UserGuideStartConnect);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 0, 24, 0);
    column->setSpacing(12);
    column->addStretch();
    column->addWidget(shield, 0, Qt::AlignHCenter);
    column->addWidget(title, 0, Qt::AlignHCenter);
    column->addWidget(hint);
    column->addWidget(button, 0, Qt::AlignHCenter);
    column->addStretch();
}

}  // namespace zorvanelink::ui

#include "ui/cards/user_guide.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/push_button_ext.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

using common::MsgCode;

UserGuide::UserGuide(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("user_guide_"));
    auto* shield = new QLabel(this);
    shield->setPixmap(LoadImage(QStringLiteral(":/assets/images/shield_guide.png")));
    auto* title = new QLabel(GetTrMsg(MsgCode::UI_TR_USER_GUIDE_TITLE), this);
    title->setProperty("role", QStringLiteral("title"));
    auto* hint = new QLabel(
        Translate(QT_TRANSLATE_NOOP("ui", "Add the gateway that your administrator gave you.")),
        this);
    hint->setObjectName(QStringLiteral("guide_hint_"));
    auto* button = new QPushButtonExt(GetTrMsg(MsgCode::UI_INFO_ADD_CONNECTION), this);
    button->setObjectName(QStringLiteral("guide_button_"));
    button->setProperty("primary", true);
    button->setProperty("wide", true);
    button_ = button;
    connect(button, &QPushButton::clicked, this, &UserGuide::UserGuideStartConnect);

    auto* column = new QVBoxLayout(this);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(shield, 0, Qt::AlignHCenter);
    column->addSpacing(16);
    column->addWidget(title, 0, Qt::AlignHCenter);
    column->addSpacing(8);
    column->addWidget(hint, 0, Qt::AlignHCenter);
    column->addSpacing(24);
    column->addWidget(button, 0, Qt::AlignHCenter);
    column->addStretch();
}

}  // namespace zorvanelink::ui

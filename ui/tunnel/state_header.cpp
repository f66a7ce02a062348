#include "ui/tunnel/state_header.h"

#include <QHBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

QString ShieldImage(ConnectStatus status, bool large) {
    static constexpr char const* kNames[] = {"disconnected", "connecting", "reconnecting",
                                             "reconnecting", "connected"};
    auto const index = static_cast<std::size_t>(status);
    char const* name = index < std::size(kNames) ? kNames[index] : kNames[0];
    return QStringLiteral(":/assets/images/shield_%1%2.png")
        .arg(QLatin1String(name), large ? QStringLiteral("_large") : QString());
}

StateHeader::StateHeader(QWidget* parent)
    : QWidget(parent),
      shield_(new QLabel(this)),
      title_(new QLabel(this)),
      detail_(new ElidedLabel({}, this)) {
    // Stays at the top when nothing stands below it.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    shield_->setFixedSize(56, 56);
    title_->setObjectName(QStringLiteral("state_title_"));
    detail_->setObjectName(QStringLiteral("state_detail_"));
    for (QLabel* label : std::initializer_list<QLabel*>{title_, detail_}) {
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addStretch();
    texts->addWidget(title_);
    texts->addWidget(detail_);
    texts->addStretch();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    row->addWidget(shield_);
    row->addLayout(texts, 1);
}

void StateHeader::SetState(ConnectStatus status, QString const& stateText,
                           QString const& profileName) {
    shield_->setPixmap(LoadImage(ShieldImage(status, false)));
    shield_->setAccessibleName(stateText);
    title_->setText(stateText);
    profile_ = profileName;
    refreshDetail();
}

void StateHeader::SetDuration(QString const& text) {
    duration_ = text;
    refreshDetail();
}

void StateHeader::refreshDetail() {
    QString const label = GetTrMsg(common::MsgCode::UI_TR_CONN_DURATION);
    detail_->SetFullText(profile_, duration_.isEmpty()
                                       ? QString()
                                       : QStringLiteral("  •  %1 %2").arg(label, duration_));
}

}  // namespace zorvanelink::ui

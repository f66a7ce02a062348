#include "ui/tunnel/state_header.h"

#include <QHBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

StateHeader::StateHeader(QWidget* parent)
    : QWidget(parent),
      shield_(new QLabel(this)),
      title_(new ElidedLabel({}, this)),
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

void StateHeader::SetState(Look look, QString const& stateText, QString const& profileName) {
    shield_->setPixmap(LoadImage(ShieldImage(look, false)));
    shield_->setAccessibleName(stateText);
    title_->SetFullText(stateText);
    profile_ = profileName;
    refreshDetail();
}

void StateHeader::SetDuration(QString const& text) {
    duration_ = text;
    refreshDetail();
}

void StateHeader::SetProgress(QString const& text) {
    progress_ = text;
    refreshDetail();
}

void StateHeader::refreshDetail() {
    QString const label = GetTrMsg(common::MsgCode::UI_TR_CONN_DURATION);
    QString const behind =
        duration_.isEmpty() ? progress_ : QStringLiteral("%1 %2").arg(label, duration_);
    detail_->SetFullText(profile_, behind.isEmpty() ? QString() : QStringLiteral("  •  ") + behind);
}

}  // namespace zorvanelink::ui

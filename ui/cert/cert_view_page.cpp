#include "ui/cert/cert_view_page.h"

#include <QMouseEvent>
#include <QStyle>

#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

constexpr int kIconSize = 16;  // pixels

}  // namespace

CertViewPage::CertViewPage(QWidget* parent)
    : QFrame(parent),
      column_(new QVBoxLayout(this)),
      pushButtonSelect(new CertLinesButton(this)),
      btnFold_(new QToolButton(this)) {
    setObjectName(QStringLiteral("cert_page_"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    pushButtonSelect->setObjectName(QStringLiteral("pushButtonSelect"));
    pushButtonSelect->setCheckable(true);
    pushButtonSelect->setAutoDefault(false);
    pushButtonSelect->setFixedHeight(kCertLinesHeight);
    pushButtonSelect->setIconSize({kIconSize, kIconSize});
    pushButtonSelect->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    btnFold_->setObjectName(QStringLiteral("btn_fold_"));
    btnFold_->setFixedSize(28, 28);
    btnFold_->setIconSize({12, 12});
    auto* head = new QHBoxLayout;
    head->setContentsMargins(0, 0, 6, 0);
    head->setSpacing(4);
    head->addWidget(pushButtonSelect, 1);
    head->addWidget(btnFold_);
    column_->setContentsMargins(1, 1, 1, 1);
    column_->setSpacing(0);
    column_->addLayout(head);
    connect(pushButtonSelect, &QPushButton::clicked, this,
            &CertViewPage::on_pushButtonSelect_clicked);
    connect(btnFold_, &QToolButton::clicked, this, &CertViewPage::onClickBtnFold);
    mark(false);
    setExpanded(false);
    SetTabStop(false);
}

void CertViewPage::addWidget(QString const& title, QWidget* widget) {
    body_ = widget;
    column_->addWidget(widget);
    SetLines({title.simplified(), {}});
}

// What folds says of which.
void CertViewPage::SetLines(CertLines const& lines) {
    pushButtonSelect->SetLines(lines);
    setExpanded(expanded_);
}

void CertViewPage::expand() {
    setExpanded(true);
}

void CertViewPage::collapse() {
    setExpanded(false);
}

void CertViewPage::setExpanded(bool expanded) {
    expanded_ = expanded;
    if (body_ != nullptr) {
        body_->setVisible(expanded);
    }
    btnFold_->setIcon(LoadImage(expanded ? QStringLiteral(":/assets/images/arrow_down.png")
                                         : QStringLiteral(":/assets/images/arrow_right.png")));
    QString const action = expanded ? Translate(QT_TRANSLATE_NOOP("ui", "Hide details"))
                                    : Translate(QT_TRANSLATE_NOOP("ui", "Show details"));
    btnFold_->setToolTip(action);
    btnFold_->setAccessibleName(action + QLatin1Char(' ') + pushButtonSelect->accessibleName());
}

void CertViewPage::SetTabStop(bool stop) {
    pushButtonSelect->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
    // Never none at all: Qt leaves such a widget out when the order of Tab is set.
    btnFold_->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
}

void CertViewPage::SetSelected() {
    mark(true);
}

void CertViewPage::SetUnselected() {
    mark(false);
}

void CertViewPage::mark(bool chosen) {
    pushButtonSelect->setChecked(chosen);
    pushButtonSelect->setIcon(LoadImage(chosen ? QStringLiteral(":/assets/images/radio.png")
                                               : QStringLiteral(":/assets/images/radio_off.png")));
    setProperty("chosen", chosen);
    style()->unpolish(this);
    style()->polish(this);
}

void CertViewPage::onClickBtnFold() {
    setExpanded(!expanded_);
}

void CertViewPage::on_pushButtonSelect_clicked() {
    Q_EMIT selected(this);
}

void CertViewPage::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pushButtonSelect->setFocus(Qt::MouseFocusReason);
        on_pushButtonSelect_clicked();
    }
}

}  // namespace zorvanelink::ui

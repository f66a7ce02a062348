#include "ui/tunnel/browser_login.h"

#include <QHBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/push_button_ext.h"

namespace zorvanelink::ui {

BrowserLogin::BrowserLogin(QWidget* parent)
    : QFrame(parent),
      detail_(new QLabel(this)),
      again_(new QPushButtonExt(Translate(QT_TRANSLATE_NOOP("ui", "Open the page again")), this)) {
    setObjectName(QStringLiteral("browser_login_"));
    setProperty("card", true);
    auto* heading = new QLabel(Translate(QT_TRANSLATE_NOOP("ui", "Continue in the browser")), this);
    heading->setProperty("role", QStringLiteral("heading"));
    detail_->setObjectName(QStringLiteral("browser_login_detail_"));
    detail_->setProperty("role", QStringLiteral("row"));
    detail_->setWordWrap(true);
    again_->setObjectName(QStringLiteral("browser_login_again_"));
    connect(again_, &QPushButton::clicked, this, &BrowserLogin::PageWanted, Qt::QueuedConnection);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(heading);
    texts->addWidget(detail_);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(20, 20, 20, 20);
    row->setSpacing(16);
    row->addLayout(texts, 1);
    row->addWidget(again_);
    hide();
}

void BrowserLogin::SetTimeLeft(QString const& text) {
    detail_->setText(
        Translate(QT_TRANSLATE_NOOP("ui", "Log in on the page that has been opened. %1"))
            .arg(text));
    setVisible(!text.isEmpty());
}

}  // namespace zorvanelink::ui

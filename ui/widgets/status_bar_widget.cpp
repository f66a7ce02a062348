#include "ui/widgets/status_bar_widget.h"

#include <QHBoxLayout>

#include "ui/widgets/style.h"

namespace zorvanelink::ui {

StatusBarWidget::StatusBarWidget(QWidget* parent)
    : QFrame(parent),
      spinner_(new Spinner(12, 2, this)),
      image_(new QLabel(this)),
      text_(new QLabel(this)),
      count_(new QLabel(this)) {
    setObjectName(QStringLiteral("status_bar_"));
    text_->setObjectName(QStringLiteral("status_text_"));
    text_->setTextFormat(Qt::PlainText);
    count_->setObjectName(QStringLiteral("status_count_"));
    count_->setTextFormat(Qt::PlainText);
    image_->setObjectName(QStringLiteral("status_icon_"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 1, 16, 0);
    row->setSpacing(8);
    row->addWidget(spinner_);
    row->addWidget(image_);
    row->addWidget(text_, 1);
    row->addWidget(count_);
    SetStatus({}, {});
}

void StatusBarWidget::SetStatus(QString const& text, QString const& icon) {
    bool const busy = icon.endsWith(QLatin1String(".gif")) && !text.isEmpty();
    spinner_->setVisible(busy);
    if (icon != icon_) {
        icon_ = icon;
        image_->setPixmap(icon.isEmpty() || busy ? QPixmap() : LoadImage(icon));
    }
    image_->setVisible(!busy && !icon.isEmpty() && !text.isEmpty());
    text_->setText(text);
}

void StatusBarWidget::SetCountText(QString const& text) {
    count_->setText(text);
}

QString StatusBarWidget::StatusText() const {
    return text_->text();
}

QString StatusBarWidget::CountText() const {
    return count_->text();
}

}  // namespace zorvanelink::ui

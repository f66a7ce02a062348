#include "ui/widgets/status_bar_widget.h"

#include <QAccessibleWidget>
#include <QHBoxLayout>

#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

// A screen reader finds a status bar by its role.
QAccessibleInterface* makeInterface(QString const& /*className*/, QObject* object) {
    auto* const bar = qobject_cast<StatusBarWidget*>(object);
    return bar == nullptr ? nullptr : new QAccessibleWidget(bar, QAccessible::StatusBar);
}

}  // namespace

StatusBarWidget::StatusBarWidget(QWidget* parent)
    : QFrame(parent),
      spinner_(new Spinner(12, 2, this)),
      image_(new QLabel(this)),
      text_(new QLabel(this)),
      count_(new QLabel(this)) {
    QAccessible::installFactory(makeInterface);
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
    tellChange();
}

void StatusBarWidget::SetCountText(QString const& text) {
    count_->setText(text);
    tellChange();
}

// The name's change is the event that a screen reader receives.
void StatusBarWidget::tellChange() {
    QString const spoken = QStringLiteral("%1 %2").arg(text_->text(), count_->text()).trimmed();
    if (spoken != accessibleName()) {
        setAccessibleName(spoken);
    }
}

QString StatusBarWidget::StatusText() const {
    return text_->text();
}

QString StatusBarWidget::CountText() const {
    return count_->text();
}

}  // namespace zorvanelink::ui

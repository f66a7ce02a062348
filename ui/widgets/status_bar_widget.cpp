#include "ui/widgets/status_bar_widget.h"

#include <QAccessibleWidget>
#include <QHBoxLayout>

#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

constexpr QChar kDivider(0x4E28);

QLabel* plainLabel(QString const& name, QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

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
      text_(plainLabel(QStringLiteral("status_text_"), this)),
      place_(plainLabel(QStringLiteral("status_place_"), this)),
      divider_(new QFrame(this)),
      count_(plainLabel(QStringLiteral("status_count_"), this)) {
    QAccessible::installFactory(makeInterface);
    setObjectName(QStringLiteral("status_bar_"));
    divider_->setObjectName(QStringLiteral("status_divider_"));
    image_->setObjectName(QStringLiteral("status_icon_"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 1, 16, 0);
    row->setSpacing(8);
    row->addWidget(spinner_);
    row->addWidget(image_);
    row->addWidget(text_, 1);
    row->addWidget(place_);
    row->addWidget(divider_);
    row->addWidget(count_);
    SetStatus({}, {});
    SetCountText({});
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

void StatusBarWidget::SetCountText(QString const& whole, bool countAlone) {
    QString const text = countAlone ? whole.section(kDivider, -1).trimmed() : whole;
    countText_ = text;
    // Drawn, not written: the letter would open a Chinese font of 20 MB in every language.
    int const divider = text.indexOf(kDivider);
    bool const divided = divider >= 0;
    place_->setText(text.left(divided ? divider : 0).trimmed());
    place_->setVisible(divided);
    divider_->setVisible(divided);
    count_->setText(text.mid(divider + 1).trimmed());
    tellChange();
}

// The name's change is the event that a screen reader receives.
void StatusBarWidget::tellChange() {
    QString const spoken = QStringLiteral("%1 %2").arg(text_->text(), countText_).trimmed();
    if (spoken != accessibleName()) {
        setAccessibleName(spoken);
    }
}

QString StatusBarWidget::StatusText() const {
    return text_->text();
}

}  // namespace zorvanelink::ui

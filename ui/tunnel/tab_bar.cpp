#include "ui/tunnel/tab_bar.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPushButton>

namespace zorvanelink::ui {
namespace {

// As wide as its bold text, so that it does not move its neighbours when it becomes active.
class Tab : public QPushButton {
  public:
    using QPushButton::QPushButton;

    QSize sizeHint() const override {
        QFont bold = font();
        bold.setWeight(QFont::DemiBold);
        return {QFontMetrics(bold).horizontalAdvance(text()) + 2, QPushButton::sizeHint().height()};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }
};

}  // namespace

TabBar::TabBar(Kind kind, int gap, QWidget* parent)
    : QFrame(parent), row_(new QHBoxLayout(this)), group_(new QButtonGroup(this)) {
    setObjectName(kind == Kind::kUnderlined ? QStringLiteral("tab_bar_underlined_")
                                            : QStringLiteral("tab_bar_plain_"));
    row_->setContentsMargins(0, 0, 0, 0);
    row_->setSpacing(gap);
    row_->addStretch();
    // Not idClicked: assistive programs toggle a tab without a click.
    connect(group_, &QButtonGroup::idToggled, this, [this](int index, bool checked) {
        if (checked) {
            Q_EMIT CurrentChanged(index);
        }
    });
}

int TabBar::AddTab(QString const& text, char const* objectName) {
    int const index = static_cast<int>(group_->buttons().size());
    auto* tab = new Tab(text, this);
    tab->setObjectName(QLatin1String(objectName));
    tab->setAccessibleName(text);
    tab->setCheckable(true);
    tab->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    tab->setAutoDefault(false);
    group_->addButton(tab, index);
    row_->insertWidget(index, tab);
    if (index == 0) {
        tab->setChecked(true);
    }
    return index;
}

void TabBar::SetTabVisible(int index, bool visible) {
    group_->button(index)->setVisible(visible);
}

bool TabBar::IsTabVisible(int index) const {
    return !group_->button(index)->isHidden();
}

void TabBar::SetCurrent(int index) {
    if (auto* tab = group_->button(index)) {
        tab->setChecked(true);
    }
}

int TabBar::Current() const {
    return group_->checkedId();
}

void TabBar::keyPressEvent(QKeyEvent* event) {
    int const step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    int next = Current() + step;
    while (step != 0 && group_->button(next) != nullptr && !IsTabVisible(next)) {
        next += step;
    }
    auto* tab = group_->button(next);
    if (step == 0 || tab == nullptr) {
        QFrame::keyPressEvent(event);
        return;
    }
    tab->setFocus();
    tab->click();
}

}  // namespace zorvanelink::ui

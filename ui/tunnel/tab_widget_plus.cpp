#include "ui/tunnel/tab_widget_plus.h"

#include <QVBoxLayout>

namespace zorvanelink::ui {

TabWidgetPlus::TabWidgetPlus(QWidget* parent)
    : QWidget(parent),
      bar_(new TabBar(TabBar::Kind::kUnderlined, 24, this)),
      pages_(new QStackedWidget(this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(16);
    column->addWidget(bar_);
    column->addWidget(pages_, 1);
    connect(bar_, &TabBar::CurrentChanged, pages_, &QStackedWidget::setCurrentIndex);
}

int TabWidgetPlus::addTab(QWidget* page, QString const& title, char const* objectName) {
    plusTabs_.push_back({title, page, true});
    bar_->AddTab(title, objectName);
    return pages_->addWidget(page);
}

void TabWidgetPlus::hideTab(int realIndex) {
    plusTabs_.at(static_cast<std::size_t>(realIndex)).shown = false;
    reloadPlusTabs();
}

void TabWidgetPlus::showTab(int realIndex) {
    plusTabs_.at(static_cast<std::size_t>(realIndex)).shown = true;
    reloadPlusTabs();
}

void TabWidgetPlus::reloadPlusTabs() {
    for (std::size_t i = 0; i < plusTabs_.size(); ++i) {
        bar_->SetTabVisible(static_cast<int>(i), plusTabs_[i].shown);
    }
    int const first = getRealIndex(0);
    pages_->setVisible(first >= 0);
    if (first >= 0 && !plusTabs_[static_cast<std::size_t>(currentIndex())].shown) {
        setCurrentIndex(first);
    }
}

int TabWidgetPlus::getRealIndex(int visibleIndex) const {
    int seen = 0;
    for (std::size_t i = 0; i < plusTabs_.size(); ++i) {
        if (plusTabs_[i].shown && seen++ == visibleIndex) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void TabWidgetPlus::setCurrentIndex(int realIndex) {
    bar_->SetCurrent(realIndex);
    pages_->setCurrentIndex(realIndex);
}

int TabWidgetPlus::currentIndex() const {
    return pages_->currentIndex();
}

}  // namespace zorvanelink::ui

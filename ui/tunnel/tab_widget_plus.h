// Tabs with pages, of which some can be hidden and shown again.
#pragma once

#include <QStackedWidget>
#include <QWidget>
#include <vector>

#include "ui/tunnel/tab_bar.h"

namespace zorvanelink::ui {

struct TabWidgetPlusTab {
    QString title;
    QWidget* page = nullptr;
    bool shown = true;
};

// Tabs are counted twice: the real index in the order of addTab, the visible one among those shown.
class TabWidgetPlus : public QWidget {
    Q_OBJECT

  public:
    explicit TabWidgetPlus(QWidget* parent = nullptr);

    int addTab(QWidget* page, QString const& title, char const* objectName);
    void hideTab(int realIndex);
    void showTab(int realIndex);
    // Brings the bar in line with what is shown; the first shown tab follows a hidden current one.
    void reloadPlusTabs();
    int getRealIndex(int visibleIndex) const;  // -1 when there are fewer

    void setCurrentIndex(int realIndex);
    int currentIndex() const;

  private:
    std::vector<TabWidgetPlusTab> plusTabs_;
    TabBar* bar_;
    QStackedWidget* pages_;
};

}  // namespace zorvanelink::ui

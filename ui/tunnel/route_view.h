// The two route tables with their switch, their search field and their sorting.
#pragma once

#include <QLabel>
#include <QTableView>
#include <QWidget>

#include "ui/tunnel/route_model.h"
#include "ui/tunnel/tab_bar.h"
#include "ui/widgets/search_edit.h"

namespace zorvanelink::ui {

class RouteView : public QWidget {
    Q_OBJECT

  public:
    explicit RouteView(QWidget* parent = nullptr);

    void Set(RouteTable ipv4, RouteTable ipv6);
    void Append(std::vector<RouteRow> const& ipv4, std::vector<RouteRow> const& ipv6);
    void Clear();

    RouteModel& Ipv4() { return *ipv4_; }
    RouteModel& Ipv6() { return *ipv6_; }

  public Q_SLOTS:
    // A click on a column's head: sorted by that column and back to the order of arrival.
    void onRouteItemClicked(int column);
    // Shows the whole address at the cursor when its column is too narrow for it.
    void OnRouteQTableViewCellEntered(QModelIndex const& index);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QTableView* addTable(RouteModel* model, char const* name);
    RouteModel& visibleModel();
    // A tool tip with the whole address of a cell that cuts it, otherwise none.
    void showWhole(QTableView const& table, QModelIndex const& index, QPoint const& globalPos);
    void showMenu(QTableView& table, QPoint const& at);
    void fit();
    void showSelected();

    RouteModel* ipv4_;
    RouteModel* ipv6_;
    TabBar* families_;
    SearchEdit* search_;
    QLabel* whole_;  // the selected route, when the table cuts it
    QLabel* note_;   // below the table: that it is empty, or what it leaves out
    QTableView* tableIpv4_;
    QTableView* tableIpv6_;
};

}  // namespace zorvanelink::ui

// A route table as a model: tens of thousands of rows without a copy a cell.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

namespace zorvanelink::ui {

struct RouteRow {
    QString destination;
    QString mask;  // dotted mask or prefix length
    QString gateway;
    QString interface;
    QString metric;
};

enum class RouteOrder { kUnsorted, kAscending, kDescending };

// Keeps the order in which rows came and shows them through an index of that order. Sorting is by
// destination as text without blanks, then by mask length as a number; stable, and descending is
// the exact reverse by keys with ties in their old order.
class RouteModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { kDestination, kMask, kGateway, kInterface, kMetric, kColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void Set(std::vector<RouteRow> rows);
    void Append(std::vector<RouteRow> const& rows);
    void Clear();
    void Sort(RouteOrder order);
    RouteOrder Order() const { return order_; }
    // Keeps only rows that hold the text in one of their columns; empty shows all.
    void SetFilter(QString const& text);

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    struct Key {
        QString destination;
        int maskLength;
    };
    // Added in their places; more of them rebuild the model.
    static constexpr std::size_t kFewRows = 100;

    void insert(RouteRow const& row);
    void rebuild();
    void makeKeys();
    // Whether the first of two rows goes before the second in the present order.
    std::function<bool(std::uint32_t, std::uint32_t)> before() const;

    std::vector<RouteRow> rows_;
    std::vector<Key> keys_;
    std::vector<std::uint32_t> shown_;  // indexes into rows_
    RouteOrder order_ = RouteOrder::kUnsorted;
    QString filter_;
};

void SortRouteItemModel(RouteModel& model, bool ascending);

// The prefix length of a mask in either notation, -1 for neither: "255.255.0.0" and "16" give 16.
int MaskLength(QString const& mask);

}  // namespace zorvanelink::ui

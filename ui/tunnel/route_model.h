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

// Rows of one family, and how many more there are that nobody keeps.
struct RouteTable {
    RouteTable() = default;
    // Keeps the first RouteModel::kMaxRows of them.
    RouteTable(std::vector<RouteRow> from, std::size_t left = 0);

    std::vector<RouteRow> rows;
    std::size_t more = 0;
};

enum class RouteOrder { kUnsorted, kAscending, kDescending };

// Keeps the order in which rows came and shows them through an index of that order. The first
// column sorts by destination as text without blanks, then by mask length as a number, each other
// one by itself: masks by length, metrics as numbers. Stable, and descending is the exact reverse
// by keys with ties in their old order.
class RouteModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { kDestination, kMask, kGateway, kInterface, kMetric, kColumnCount };
    static constexpr std::size_t kMaxRows = 100'000;

    using QAbstractTableModel::QAbstractTableModel;

    void Set(RouteTable table);
    void Append(std::vector<RouteRow> const& rows);
    void Clear();
    void Sort(RouteOrder order, int column = kDestination);
    RouteOrder Order() const { return order_; }
    int SortColumn() const { return column_; }
    // Keeps only rows that hold the text in one of their columns; empty shows all.
    void SetFilter(QString const& text);
    // Routes above kMaxRows, which are only counted.
    std::size_t More() const { return more_; }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    struct Key {
        QString text;
        int number;
    };
    // Added in their places; more of them rebuild the model.
    static constexpr std::size_t kFewRows = 100;

    void insert(RouteRow const& row);
    void rebuild();
    void makeKeys();
    Key keyOf(RouteRow const& row) const;
    // Whether the first of two rows goes before the second in the present order.
    std::function<bool(std::uint32_t, std::uint32_t)> before() const;

    std::vector<RouteRow> rows_;
    std::size_t more_ = 0;
    std::vector<Key> keys_;             // of the sorted column
    std::vector<std::uint32_t> shown_;  // indexes into rows_
    RouteOrder order_ = RouteOrder::kUnsorted;
    int column_ = kDestination;
    QString filter_;
};

void SortRouteItemModel(RouteModel& model, bool ascending);

// The prefix length of a mask in either notation, -1 for neither: "255.255.0.0" and "16" give 16.
int MaskLength(QString const& mask);

}  // namespace zorvanelink::ui

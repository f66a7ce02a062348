#include "ui/tunnel/route_model.h"

#include <algorithm>
#include <bit>
#include <iterator>

#include "components/logger/logger.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {

using common::MsgCode;

namespace {

QString const& cell(RouteRow const& row, int column) {
    switch (column) {
        case RouteModel::kDestination:
            return row.destination;
        case RouteModel::kMask:
            return row.mask;
        case RouteModel::kGateway:
            return row.gateway;
        case RouteModel::kInterface:
            return row.interface;
        default:
            return row.metric;
    }
}

bool holds(RouteRow const& row, QString const& text) {
    for (int column = 0; column < RouteModel::kColumnCount; ++column) {
        if (cell(row, column).contains(text, Qt::CaseInsensitive)) {
            return true;
        }
    }
    return false;
}

}  // namespace

int MaskLength(QString const& mask) {
    if (!mask.contains(QLatin1Char('.'))) {
        bool ok = false;
        int const prefix = mask.trimmed().toInt(&ok);
        return ok ? prefix : -1;
    }
    QStringList const bytes = mask.trimmed().split(QLatin1Char('.'));
    int length = 0;
    for (QString const& byte : bytes) {
        bool ok = false;
        auto const bits = byte.toUShort(&ok);
        if (!ok || bits > 255) {
            return -1;
        }
        length += std::popcount(bits);
    }
    return bytes.size() == 4 ? length : -1;
}

RouteTable::RouteTable(std::vector<RouteRow> from, std::size_t left)
    : rows(std::move(from)), more(left) {
    if (rows.size() > RouteModel::kMaxRows) {
        more += rows.size() - RouteModel::kMaxRows;
        rows.resize(RouteModel::kMaxRows);
    }
}

void RouteModel::Set(RouteTable table) {
    beginResetModel();
    rows_ = std::move(table.rows);
    more_ = table.more;
    keys_.clear();
    rebuild();
    endResetModel();
}

void RouteModel::Append(std::vector<RouteRow> const& rows) {
    auto const fitting = std::min(rows.size(), kMaxRows - rows_.size());
    auto const end = rows.begin() + static_cast<std::ptrdiff_t>(fitting);
    more_ += rows.size() - fitting;
    if (fitting <= kFewRows) {
        std::for_each(rows.begin(), end, [this](RouteRow const& row) { insert(row); });
        return;
    }
    beginResetModel();
    rows_.insert(rows_.end(), rows.begin(), end);
    rebuild();
    endResetModel();
}

// Into its place: what the user has selected and scrolled to stays.
void RouteModel::insert(RouteRow const& row) {
    auto const index = static_cast<std::uint32_t>(rows_.size());
    rows_.push_back(row);
    if (!filter_.isEmpty() && !holds(row, filter_)) {
        return;
    }
    auto place = shown_.end();
    if (order_ != RouteOrder::kUnsorted) {
        makeKeys();
        place = std::upper_bound(shown_.begin(), shown_.end(), index, before());
    }
    int const at = static_cast<int>(place - shown_.begin());
    beginInsertRows({}, at, at);
    shown_.insert(place, index);
    endInsertRows();
}

void RouteModel::Clear() {
    Set({});
}

void RouteModel::Sort(RouteOrder order, int column) {
    if (order == order_ && column == column_) {
        return;
    }
    Q_EMIT layoutAboutToBeChanged();
    auto const previous = shown_;
    if (column != column_) {
        keys_.clear();
    }
    order_ = order;
    column_ = column;
    rebuild();
    // What is selected and current goes where its route goes.
    std::vector<int> placeOf(rows_.size());
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        placeOf[shown_[i]] = static_cast<int>(i);
    }
    QModelIndexList const from = persistentIndexList();
    QModelIndexList to;
    for (QModelIndex const& old : from) {
        to << index(placeOf[previous[static_cast<std::size_t>(old.row())]], old.column());
    }
    changePersistentIndexList(from, to);
    Q_EMIT layoutChanged();
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColumnCount - 1);
}

void RouteModel::SetFilter(QString const& text) {
    beginResetModel();
    filter_ = text.trimmed();
    rebuild();
    endResetModel();
}

void RouteModel::rebuild() {
    shown_.clear();
    for (std::uint32_t i = 0; i < rows_.size(); ++i) {
        if (filter_.isEmpty() || holds(rows_[i], filter_)) {
            shown_.push_back(i);
        }
    }
    if (order_ != RouteOrder::kUnsorted) {
        makeKeys();
        std::stable_sort(shown_.begin(), shown_.end(), before());
    }
}

void RouteModel::makeKeys() {
    for (std::size_t i = keys_.size(); i < rows_.size(); ++i) {
        keys_.push_back(keyOf(rows_[i]));
    }
}

RouteModel::Key RouteModel::keyOf(RouteRow const& row) const {
    if (column_ == kDestination && (row.destination.isEmpty() || row.mask.isEmpty())) {
        components::logger::Log().warning("Modle item is empty in sort");
    }
    if (column_ == kMask) {
        return {{}, MaskLength(row.mask)};
    }
    if (column_ == kMetric) {
        return {{}, row.metric.toInt()};
    }
    QString text = cell(row, column_);
    text.remove(QLatin1Char(' '));
    return {std::move(text), column_ == kDestination ? MaskLength(row.mask) : 0};
}

std::function<bool(std::uint32_t, std::uint32_t)> RouteModel::before() const {
    return
        [this, descending = order_ == RouteOrder::kDescending](std::uint32_t a, std::uint32_t b) {
            Key const& first = keys_[descending ? b : a];
            Key const& second = keys_[descending ? a : b];
            int const order = first.text.compare(second.text);
            return order != 0 ? order < 0 : first.number < second.number;
        };
}

void SortRouteItemModel(RouteModel& model, bool ascending) {
    model.Sort(ascending ? RouteOrder::kAscending : RouteOrder::kDescending);
}

int RouteModel::rowCount(QModelIndex const& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int RouteModel::columnCount(QModelIndex const& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kColumnCount);
}

QVariant RouteModel::data(QModelIndex const& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) {
        return {};
    }
    return cell(rows_[shown_[static_cast<std::size_t>(index.row())]], index.column());
}

QVariant RouteModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr MsgCode kHeads[] = {MsgCode::UI_INFO_DESTINATION, MsgCode::UI_INFO_MASK,
                                         MsgCode::UI_INFO_GATEWAY, MsgCode::UI_INFO_INTERFACE,
                                         MsgCode::UI_INFO_METRIC};
    if (orientation != Qt::Horizontal || section < 0 || section >= kColumnCount) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        QString const head = GetTrMsg(kHeads[section]);
        if (section != column_ || order_ == RouteOrder::kUnsorted) {
            return head;
        }
        return head +
               (order_ == RouteOrder::kAscending ? QStringLiteral(" ↑") : QStringLiteral(" ↓"));
    }
    return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignLeft | Qt::AlignVCenter) : QVariant();
}

}  // namespace zorvanelink::ui

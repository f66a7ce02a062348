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

void RouteModel::Set(std::vector<RouteRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    keys_.clear();
    rebuild();
    endResetModel();
}

void RouteModel::Append(std::vector<RouteRow> const& rows) {
    if (rows.size() <= kFewRows) {
        for (RouteRow const& row : rows) {
            insert(row);
        }
        return;
    }
    beginResetModel();
    rows_.insert(rows_.end(), rows.begin(), rows.end());
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

void RouteModel::Sort(RouteOrder order) {
    if (order == order_) {
        return;
    }
    Q_EMIT layoutAboutToBeChanged();
    order_ = order;
    rebuild();
    Q_EMIT layoutChanged();
    Q_EMIT headerDataChanged(Qt::Horizontal, kDestination, kDestination);
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
        QString destination = rows_[i].destination;
        if (destination.isEmpty() || rows_[i].mask.isEmpty()) {
            components::logger::Log().warning("Modle item is empty in sort");
        }
        destination.remove(QLatin1Char(' '));
        keys_.push_back({std::move(destination), MaskLength(rows_[i].mask)});
    }
}

std::function<bool(std::uint32_t, std::uint32_t)> RouteModel::before() const {
    return
        [this, descending = order_ == RouteOrder::kDescending](std::uint32_t a, std::uint32_t b) {
            Key const& first = keys_[descending ? b : a];
            Key const& second = keys_[descending ? a : b];
            int const order = first.destination.compare(second.destination);
            return order != 0 ? order < 0 : first.maskLength < second.maskLength;
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
        if (section != kDestination || order_ == RouteOrder::kUnsorted) {
            return head;
        }
        return head +
               (order_ == RouteOrder::kAscending ? QStringLiteral(" ↑") : QStringLiteral(" ↓"));
    }
    return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignLeft | Qt::AlignVCenter) : QVariant();
}

}  // namespace zorvanelink::ui

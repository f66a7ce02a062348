#include "ui/tunnel/route_view.h"

#include <QAction>
#include <QClipboard>
#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>

#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/tunnel/format.h"
#include "ui/tunnel/route_head.h"
#include "ui/widgets/elide.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

using common::MsgCode;

namespace {

constexpr int kRowHeight = 38;
constexpr int kCellPadding = 24;  // left and right together
// Parts of the width that the columns take; an IPv4 address fits each, and of a long one as much of
// its beginning as of its end is shown.
constexpr int kWeights[][RouteModel::kColumnCount] = {{32, 23, 17, 17, 11}, {34, 13, 21, 21, 11}};
constexpr int kWeightSum = 100;

bool isCut(QTableView const& table, QModelIndex const& index) {
    int const room = table.columnWidth(index.column()) - kCellPadding;
    return table.fontMetrics().horizontalAdvance(index.data().toString()) > room;
}

QStringList cellsOf(QModelIndex const& row) {
    QStringList cells;
    for (int column = 0; column < RouteModel::kColumnCount; ++column) {
        cells += row.siblingAtColumn(column).data().toString();
    }
    return cells;
}

// As a table that other programs take.
void copySelected(QTableView const& table) {
    QModelIndexList rows = table.selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (QModelIndex const& row : rows) {
        lines += cellsOf(row).join(QLatin1Char('\t'));
    }
    if (!lines.isEmpty()) {
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
    }
}

}  // namespace

RouteView::RouteView(QWidget* parent)
    : QWidget(parent),
      ipv4_(new RouteModel(this)),
      ipv6_(new RouteModel(this)),
      families_(new TabBar(TabBar::Kind::kPlain, 16, this)),
      search_(new SearchEdit("route_search_", Translate(QT_TRANSLATE_NOOP("ui", "Search")), this)),
      whole_(new QLabel(this)),
      note_(new QLabel(this)),
      tableIpv4_(addTable(ipv4_, "route_table_ipv4_")),
      tableIpv6_(addTable(ipv6_, "route_table_ipv6_")) {
    families_->AddTab(GetTrMsg(MsgCode::UI_TR_IPV4_ROUTE), "tab_ipv4_route_");
    families_->AddTab(GetTrMsg(MsgCode::UI_TR_IPV6_ROUTE), "tab_ipv6_route_");
    search_->setFixedWidth(200);
    whole_->setObjectName(QStringLiteral("route_whole_"));
    whole_->setTextFormat(Qt::PlainText);
    whole_->setWordWrap(true);
    whole_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    note_->setObjectName(QStringLiteral("route_note_"));
    note_->setProperty("role", QStringLiteral("secondary"));
    note_->setAlignment(Qt::AlignCenter);

    auto* top = new QHBoxLayout;
    top->setSpacing(12);
    top->addWidget(families_, 1);
    top->addWidget(search_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    column->addLayout(top);
    column->addWidget(tableIpv4_, 1000);
    column->addWidget(tableIpv6_, 1000);
    column->addWidget(whole_);
    column->addWidget(note_);
    column->addStretch(1);
    tableIpv6_->hide();

    connect(families_, &TabBar::CurrentChanged, this, [this](int index) {
        tableIpv4_->setVisible(index == 0);
        tableIpv6_->setVisible(index == 1);
        fit();
    });
    connect(search_, &QLineEdit::textChanged, this, [this](QString const& text) {
        ipv4_->SetFilter(text);
        ipv6_->SetFilter(text);
        fit();
    });
    fit();
}

QTableView* RouteView::addTable(RouteModel* model, char const* name) {
    auto* table = new QTableView(this);
    table->setObjectName(QLatin1String(name));
    table->setAccessibleName(GetTrMsg(MsgCode::UI_TR_ROUTE));
    table->setHorizontalHeader(new RouteHead(table));
    table->setModel(model);
    table->setShowGrid(false);
    table->setFrameShape(QFrame::NoFrame);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->setTextElideMode(Qt::ElideMiddle);
    table->setMouseTracking(true);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(kRowHeight);
    connect(table->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &RouteView::onRouteItemClicked);
    auto* copy = new QAction(Translate(QT_TRANSLATE_NOOP("ui", "Copy")), table);
    copy->setObjectName(QStringLiteral("route_copy_"));
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    copy->setShortcutVisibleInContextMenu(true);
    table->addAction(copy);
    connect(copy, &QAction::triggered, this, [table] { copySelected(*table); });
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(table, &QWidget::customContextMenuRequested, this,
            [this, table](QPoint const& at) { showMenu(*table, at); });
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &RouteView::showSelected);
    connect(table, &QTableView::entered, this, &RouteView::OnRouteQTableViewCellEntered);
    connect(table->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, table](QModelIndex const& index) {
                if (table->hasFocus()) {
                    QPoint const below = table->visualRect(index).bottomLeft();
                    showWhole(*table, index, table->viewport()->mapToGlobal(below));
                }
            });
    return table;
}

void RouteView::showMenu(QTableView& table, QPoint const& at) {
    auto* menu = new QMenu(&table);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(LoadStyle(QStringLiteral("menu")));
    menu->addActions(table.actions());
    menu->popup(table.viewport()->mapToGlobal(at));
}

void RouteView::Set(RouteTable ipv4, RouteTable ipv6) {
    ipv4_->Set(std::move(ipv4));
    ipv6_->Set(std::move(ipv6));
    fit();
}

void RouteView::Append(std::vector<RouteRow> const& ipv4, std::vector<RouteRow> const& ipv6) {
    ipv4_->Append(ipv4);
    ipv6_->Append(ipv6);
    fit();
}

void RouteView::Clear() {
    Set({}, {});
}

RouteModel& RouteView::visibleModel() {
    return families_->Current() == 1 ? *ipv6_ : *ipv4_;
}

// A table is as tall as its rows, up to the room there is.
void RouteView::fit() {
    for (auto* table : {tableIpv4_, tableIpv6_}) {
        int const rows = qMin(table->model()->rowCount(), 1000);
        table->setMaximumHeight(table->horizontalHeader()->height() + rows * kRowHeight + 2);
        for (int i = 0; i + 1 < RouteModel::kColumnCount; ++i) {
            table->setColumnWidth(i,
                                  width() * kWeights[table == tableIpv6_ ? 1 : 0][i] / kWeightSum);
        }
    }
    RouteModel const& model = visibleModel();
    QString note;
    if (model.rowCount() == 0) {
        note = search_->text().isEmpty() ? Translate(QT_TRANSLATE_NOOP("ui", "No routes"))
                                         : Translate(QT_TRANSLATE_NOOP("ui", "No matching routes"));
    } else if (model.More() > 0) {
        note = AndMore(model.More());
    }
    note_->setText(note);
    note_->setVisible(!note.isEmpty());
    showSelected();
}

void RouteView::showSelected() {
    QTableView const& table = families_->Current() == 1 ? *tableIpv6_ : *tableIpv4_;
    QModelIndexList const cells = table.selectionModel()->selectedIndexes();
    bool const one_row = cells.size() == RouteModel::kColumnCount;
    bool const cut =
        one_row && std::any_of(cells.begin(), cells.end(),
                               [&](QModelIndex const& cell) { return isCut(table, cell); });
    whole_->setText(cut ? cellsOf(cells.front()).join(QStringLiteral("  •  ")) : QString());
    whole_->setVisible(cut);
}

void RouteView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fit();
}

void RouteView::onRouteItemClicked(int column) {
    RouteModel& model = visibleModel();
    if (model.Order() == RouteOrder::kUnsorted || model.SortColumn() != column) {
        components::logger::Log().info("Show sorted route items");
        model.Sort(RouteOrder::kAscending, column);
    } else {
        components::logger::Log().info("Show unsorted route items");
        model.Sort(RouteOrder::kUnsorted);
    }
}

void RouteView::OnRouteQTableViewCellEntered(QModelIndex const& index) {
    showWhole(&visibleModel() == ipv6_ ? *tableIpv6_ : *tableIpv4_, index, QCursor::pos());
}

void RouteView::showWhole(QTableView const& table, QModelIndex const& index,
                          QPoint const& globalPos) {
    QString const text = index.data().toString();
    bool const address = text.contains(QLatin1Char('.')) || text.contains(QLatin1Char(':'));
    if (address && isCut(table, index)) {
        QToolTip::showText(globalPos, PlainToolTip(text));
    } else {
        QToolTip::hideText();  // that of the cell before
    }
}

}  // namespace zorvanelink::ui

#include "ui/tunnel/route_model.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "app/environment/app_ctrl.h"
#include "ui/tunnel/format.h"

using namespace zorvanelink::ui;

namespace {

using Rows = std::vector<RouteRow>;

RouteRow row(char const* destination, char const* mask, char const* metric = "",
             char const* gateway = "", char const* interface = "") {
    return {QLatin1String(destination), QLatin1String(mask), QLatin1String(gateway),
            QLatin1String(interface), QLatin1String(metric)};
}

std::string order(RouteModel const& model) {
    std::string seen;
    for (int i = 0; i < model.rowCount(); ++i) {
        seen += model.index(i, RouteModel::kMetric).data().toString().toStdString();
    }
    return seen;
}

}  // namespace

TEST(RouteModel, SortsByDestinationThenByMaskLengthAndKeepsTies) {
    RouteModel model;
    model.Set(Rows{row("10.0.0.0", "255.255.255.0", "a"), row("10.0.0.0", "255.0.0.0", "b"),
                   row("1.0.0.0", "24", "c"), row("10.0.0.0", "8", "d"),
                   row("1 .0.0.0", "9", "e")});
    EXPECT_EQ(order(model), "abcde");
    SortRouteItemModel(model, true);
    EXPECT_EQ(order(model), "ecbda");
    SortRouteItemModel(model, false);
    EXPECT_EQ(order(model), "abdce");
    model.Sort(RouteOrder::kUnsorted);
    EXPECT_EQ(order(model), "abcde");
}

TEST(RouteModel, ARowThatComesLaterTakesItsPlace) {
    struct Case {
        RouteOrder order;
        char const* filter;
        char const* seen;
    };
    for (auto const& one :
         {Case{RouteOrder::kUnsorted, "", "31abc"}, Case{RouteOrder::kAscending, "", "1ab3c"},
          Case{RouteOrder::kDescending, "", "c3ab1"}, Case{RouteOrder::kAscending, "2.0", "ab"}}) {
        RouteModel model;
        QSignalSpy resets(&model, &RouteModel::modelReset);
        model.Set(Rows{row("3.0.0.0", "8", "3"), row("1.0.0.0", "8", "1")});
        model.Sort(one.order);
        model.SetFilter(QLatin1String(one.filter));
        auto const before = resets.count();
        model.Append({row("2.0.0.0", "8", "a")});
        model.Append({row("2.0.0.0", "8", "b"), row("4.0.0.0", "8", "c")});
        EXPECT_EQ(order(model), one.seen);
        EXPECT_EQ(resets.count(), before) << "the user's place is kept";
    }
}

TEST(RouteModel, EachColumnSortsByItselfAndTheSelectionStaysWithItsRoute) {
    RouteModel model;
    model.Set(Rows{row("3.0.0.0", "24", "10", "b", "z"), row("1.0.0.0", "8", "9", "c", "x"),
                   row("2.0.0.0", "255.0.0.0", "100", "a", "y")});
    QPersistentModelIndex const chosen = model.index(1, RouteModel::kMetric);
    char const* const orders[] = {"910010", "910010", "100109", "910010", "910100"};
    for (int column = 0; column < RouteModel::kColumnCount; ++column) {
        model.Sort(RouteOrder::kAscending, column);
        EXPECT_EQ(order(model), orders[column]) << column;
        EXPECT_EQ(chosen.data().toString(), QStringLiteral("9")) << column;
        EXPECT_TRUE(
            model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().endsWith(u'↑'));
    }
    model.Sort(RouteOrder::kUnsorted);
    EXPECT_EQ(chosen.row(), 1);
}

TEST(RouteModel, ManyRowsAtOnceAreSortedAndThoseAboveTheLimitOnlyCounted) {
    RouteModel model;
    model.Set(Rows{row("3.0.0.0", "8", "3")});
    model.Sort(RouteOrder::kAscending);
    model.Append(Rows(200, row("1.0.0.0", "8", "1")));
    EXPECT_EQ(order(model), std::string(200, '1') + "3");
    model.Set(Rows(RouteModel::kMaxRows + 2));
    model.Append(Rows(2));
    model.Append(Rows(200));
    EXPECT_EQ(model.rowCount(), static_cast<int>(RouteModel::kMaxRows));
    EXPECT_EQ(model.More(), 204U);
    model.Clear();
    EXPECT_EQ(model.rowCount() + static_cast<int>(model.More()), 0);
}

TEST(RouteModel, FiltersOnEveryColumn) {
    RouteModel model;
    model.Set(
        Rows{row("10.1.0.0", "16", "x"), row("10.2.0.0", "24", "y"), row("FE80::", "64", "z")});
    model.SetFilter(QStringLiteral("10."));
    EXPECT_EQ(order(model), "xy");
    model.SetFilter(QStringLiteral(" fe80 "));
    EXPECT_EQ(order(model), "z");
    model.SetFilter({});
    EXPECT_EQ(order(model), "xyz");
}

TEST(RouteModel, MaskLengths) {
    std::pair<char const*, int> const cases[] = {
        {"255.255.252.0", 22}, {"0.0.0.0", 0},    {"24", 24},     {"128", 128}, {"", -1},
        {"255.255", -1},       {"256.0.0.0", -1}, {"x.y.z.w", -1}};
    for (auto const& [mask, length] : cases) {
        EXPECT_EQ(MaskLength(QLatin1String(mask)), length) << mask;
    }
}

TEST(Format, DataSizes) {
    std::pair<unsigned long long, char const*> const cases[] = {
        {0, "0 bytes"},       {1023, "1,023 bytes"},   {1536, "1.50 KB"},
        {1572864, "1.50 MB"}, {1ULL << 40, "1.00 TB"}, {~0ULL, "8.00 EB"}};
    for (auto const& [size, text] : cases) {
        EXPECT_EQ(GetDataSizeStrFrom(size).toStdString(), text);
    }
}

TEST(Format, Durations) {
    AppCtrl::Instance().language = SysLang::kEnglish;
    QDateTime const now(QDate(2024, 3, 1), QTime(12, 0), Qt::UTC);
    std::pair<int, char const*> const cases[] = {{0, "00:00:00"},
                                                 {754, "00:12:34"},
                                                 {86399, "23:59:59"},
                                                 {86400, "1 days 00:00:00"},
                                                 {90061, "1 days 01:01:01"},
                                                 {-5, "00:00:00"}};
    for (auto const& [seconds, text] : cases) {
        EXPECT_EQ(GetDateTimeString(now.addSecs(-seconds), now).toStdString(), text);
    }
}

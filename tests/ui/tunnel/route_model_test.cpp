#include "ui/tunnel/route_model.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

using namespace zorvanelink::ui;

namespace {

RouteRow row(char const* destination, char const* mask, char const* metric = "") {
    return {QLatin1String(destination), QLatin1String(mask), {}, {}, QLatin1String(metric)};
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
    model.Set({row("10.0.0.0", "255.255.255.0", "a"), row("10.0.0.0", "255.0.0.0", "b"),
               row("1.0.0.0", "24", "c"), row("10.0.0.0", "8", "d"), row("1 .0.0.0", "9", "e")});
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
        model.Set({row("3.0.0.0", "8", "3"), row("1.0.0.0", "8", "1")});
        model.Sort(one.order);
        model.SetFilter(QLatin1String(one.filter));
        auto const before = resets.count();
        model.Append({row("2.0.0.0", "8", "a")});
        model.Append({row("2.0.0.0", "8", "b"), row("4.0.0.0", "8", "c")});
        EXPECT_EQ(order(model), one.seen);
        EXPECT_EQ(resets.count(), before) << "the user's place is kept";
    }
}

TEST(RouteModel, ManyRowsAtOnceAreSortedToo) {
    RouteModel model;
    model.Set({row("3.0.0.0", "8", "3")});
    model.Sort(RouteOrder::kAscending);
    model.Append(std::vector<RouteRow>(200, row("1.0.0.0", "8", "1")));
    EXPECT_EQ(order(model), std::string(200, '1') + "3");
    model.Sort(RouteOrder::kUnsorted);
    EXPECT_EQ(order(model).front(), '3');
    model.Clear();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(RouteModel, FiltersOnEveryColumn) {
    RouteModel model;
    model.Set({row("10.1.0.0", "16", "x"), row("10.2.0.0", "24", "y"), row("FE80::", "64", "z")});
    model.SetFilter(QStringLiteral("10."));
    EXPECT_EQ(order(model), "xy");
    model.SetFilter(QStringLiteral(" fe80 "));
    EXPECT_EQ(order(model), "z");
    model.SetFilter({});
    EXPECT_EQ(order(model), "xyz");
}

TEST(RouteModel, AnEmptyCellIsNoFault) {
    RouteModel model;
    model.Set({row("", "", "a"), row("1.0.0.0", "", "b")});
    model.Sort(RouteOrder::kAscending);
    EXPECT_EQ(order(model), "ab");
    EXPECT_FALSE(model.data({}, Qt::DisplayRole).isValid());
}

TEST(RouteModel, MaskLengths) {
    struct Case {
        char const* mask;
        int length;
    };
    for (auto const& one :
         {Case{"255.255.252.0", 22}, Case{"0.0.0.0", 0}, Case{"24", 24}, Case{"128", 128},
          Case{"", -1}, Case{"255.255", -1}, Case{"256.0.0.0", -1}, Case{"x.y.z.w", -1}}) {
        EXPECT_EQ(MaskLength(QLatin1String(one.mask)), one.length) << one.mask;
    }
}

#include "ui/tunnel/format.h"

#include <gtest/gtest.h>

#include "app/environment/app_ctrl.h"

using namespace zorvanelink::ui;

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

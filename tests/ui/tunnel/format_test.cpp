#include "ui/tunnel/format.h"

#include <gtest/gtest.h>

#include "app/environment/app_ctrl.h"

using namespace zorvanelink::ui;

TEST(Format, DataSizes) {
    struct Row {
        unsigned long long size;
        char const* text;
    };
    for (auto const& row :
         {Row{0, "0 bytes"}, Row{1023, "1023 bytes"}, Row{1536, "1.50 KB"}, Row{1572864, "1.50 MB"},
          Row{1ULL << 40, "1.00 TB"}, Row{~0ULL, "8.00 EB"}}) {
        EXPECT_EQ(GetDataSizeStrFrom(row.size).toStdString(), row.text);
    }
}

TEST(Format, Durations) {
    AppCtrl::Instance().language = SysLang::kEnglish;
    QDateTime const now(QDate(2024, 3, 1), QTime(12, 0), Qt::UTC);
    struct Row {
        int seconds;
        char const* text;
    };
    for (auto const& row :
         {Row{0, "00:00:00"}, Row{754, "00:12:34"}, Row{86399, "23:59:59"},
          Row{86400, "1 days 00:00:00"}, Row{90061, "1 days 01:01:01"}, Row{-5, "00:00:00"}}) {
        EXPECT_EQ(GetDateTimeString(now.addSecs(-row.seconds), now).toStdString(), row.text);
    }
}

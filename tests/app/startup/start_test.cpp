#include <gtest/gtest.h>

#include <QApplication>
#include <csignal>

#include "app/environment/app_ctrl.h"
#include "app/startup/end_signals.h"
#include "tools/support/wait.h"
#include "ui/widgets/fonts.h"

namespace zorvanelink::ui {
namespace {

TEST(EndSignals, EachLeavesInOrderAndAnIgnoredOneStaysIgnored) {
    for (int const number : {SIGTERM, SIGHUP}) {
        std::signal(number, SIG_DFL);  // whatever our own starter says
    }
    std::signal(SIGINT, SIG_IGN);
    int left = 0;
    {
        QObject owner;
        LeaveOnSignals(owner, [&left] { ++left; });
        for (int const number : {SIGTERM, SIGHUP, SIGTERM}) {
            int const before = left;
            std::raise(number);
            EXPECT_TRUE(test::WaitUntil([&] { return left == before + 1; })) << number;
        }
    }
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
    for (int const number : {SIGTERM, SIGHUP}) {
        std::signal(number, SIG_DFL);
    }
}

TEST(Font, TheLanguagesOwnFamilyComesFirst) {
    struct Case {
        SysLang language;
        QString family;
        QString behind;
    } const cases[] = {
        {SysLang::kEnglish, QStringLiteral("Noto Sans"), QStringLiteral("Noto Sans CJK SC")},
        {SysLang::kSimplifiedChinese, QStringLiteral("Noto Sans CJK SC"),
         QStringLiteral("Noto Sans")},
    };
    for (Case const& c : cases) {
        AppCtrl::Instance().language = c.language;
        SetApplicationFont();
        EXPECT_EQ(QApplication::font().family(), c.family);
        EXPECT_EQ(QApplication::font().families(), QStringList({c.family, c.behind}));
    }
    AppCtrl::Instance() = AppCtrl();
}

}  // namespace
}  // namespace zorvanelink::ui

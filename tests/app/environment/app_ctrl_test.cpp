#include "app/environment/app_ctrl.h"

#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/support/test_environment.h"
#include "tools/support/files.h"

namespace zorvanelink::ui {
namespace {

AppCtrl parsed(std::string const& json, bool readable = true) {
    std::string const path = test::WriteFile(test::TestEnvironment::Home() / "AppCtrl.json", json);
    AppCtrl control;
    EXPECT_EQ(control.Init(QString::fromStdString(path)), readable);
    return control;
}

TEST(AppCtrl, Languages) {
    struct Case {
        char const* json;
        SysLang language;
        int appMode;
    } const cases[] = {
        {R"({"LANGUAGE":0})", SysLang::kSystem, 0},
        {R"({"LANGUAGE":1})", SysLang::kSimplifiedChinese, 1},
        {R"({"LANGUAGE":2})", SysLang::kEnglish, 0},
        {R"({"LANGUAGE":5})", SysLang::kSystem, 0},
        {R"({"LANGUAGE":1.5})", SysLang::kSystem, 0},
        {R"({"LANGUAGE":"1"})", SysLang::kSystem, 0},
    };
    for (Case const& c : cases) {
        AppCtrl const control = parsed(c.json);
        EXPECT_EQ(control.language, c.language) << c.json;
        EXPECT_EQ(control.appMode, c.appMode) << c.json;
    }
}

TEST(AppCtrl, KeysDefaultsAndBrokenFiles) {
    AppCtrl const full = parsed(
        R"({"LANGUAGE":1,"REQUIRE_ADMIN":true,"OVERSEA_VERSION":true,"MSI_VERSION":true,
            "DISABLE_TRAY":true,"LOG_LEVEL":"debug","DATA_PATH":"/srv/data"})");
    EXPECT_TRUE(full.requireAdmin && full.overseaVersion && full.msiVersion && full.disableTray);
    EXPECT_EQ(full.logLevel, QStringLiteral("debug"));
    EXPECT_EQ(full.dataPath, QStringLiteral("/srv/data"));
    EXPECT_EQ(full.document.size(), 7);

    for (char const* const json : {"{}", "[1]", "{broken"}) {
        test::LogCapture const log;
        AppCtrl const control = parsed(json);
        EXPECT_EQ(control.logLevel, QStringLiteral("info"));
        EXPECT_FALSE(control.requireAdmin);
        EXPECT_EQ(log.Count("Can not get [DATA_PATH] from AppCtrl"), 1);
    }
    test::LogCapture const log;
    AppCtrl const odd = parsed(R"({"DISABLE_TRAY":"yes","LOG_LEVEL":3,"DATA_PATH":"some/where"})");
    EXPECT_FALSE(odd.disableTray);
    EXPECT_EQ(odd.logLevel, QStringLiteral("info"));
    EXPECT_EQ(odd.dataPath, QString());
    EXPECT_TRUE(log.Has("[DISABLE_TRAY] of AppCtrl is no bool"));
    EXPECT_TRUE(log.Has("DATA_PATH [some/where] is not absolute"));
    EXPECT_TRUE(log.Has("no tray false, log level [info], data path []"));
    AppCtrl control = full;
    EXPECT_FALSE(control.Init(QStringLiteral("/none/AppCtrl.json")));
    EXPECT_FALSE(control.disableTray);
    EXPECT_TRUE(log.Has("Failed to read app control config [/none/AppCtrl.json]"));
    parsed("", false);
}

TEST(ClientVersion, TextForm) {
    EXPECT_EQ((ClientVersionInfo{QStringLiteral("1.2.3"), false, false}.toString()),
              QStringLiteral("1.2.3,,,"));
    struct Case {
        char const* text;
        char const* version;
        bool oversea;
        bool requireAdmin;
    } const cases[] = {
        {"1.2.3,oversea,,require_admin", "1.2.3", true, true},
        {" 1.2 , require_admin", "1.2", false, true},
        {"oversea", "oversea", false, false},
        {"", "", false, false},
    };
    for (Case const& c : cases) {
        ClientVersionInfo info{QStringLiteral("9"), true, true};
        info.fromString(QLatin1String(c.text));
        EXPECT_EQ(info.version, QLatin1String(c.version));
        EXPECT_EQ(info.oversea, c.oversea) << c.text;
        EXPECT_EQ(info.requireAdmin, c.requireAdmin) << c.text;
    }
}

}  // namespace
}  // namespace zorvanelink::ui

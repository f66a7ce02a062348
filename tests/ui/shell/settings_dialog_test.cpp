#include "ui/settings/settings_dialog.h"

#include <QDir>

#include "app/environment/paths.h"
#include "tests/support/qt_helpers.h"
#include "tests/support/scripted_prompts.h"
#include "ui/settings/autostart.h"

namespace zorvanelink::ui {
namespace {

using test::Find;

struct Box {
    char const* name;
    bool Config::*member;
};

constexpr Box kBoxes[] = {
    {"auto_run_", &Config::autoRun},
    {"auto_login_", &Config::autoLogin},
    {"auto_reconnect_", &Config::autoReconnect},
    {"auto_minimize_", &Config::autoMinimize},
    {"status_notify_", &Config::statusNotify},
    {"auto_update_", &Config::autoUpdate},
};

TEST(SettingsDialog, OkAppliesAndSavesCancelDoesNot) {
    test::ScriptedPrompts prompts;
    Config config;
    config.Save();
    for (bool const ok : {false, true, true}) {
        SettingsDialog dialog(config, prompts);
        std::vector<bool> wanted;
        for (Box const& box : kBoxes) {
            auto& check = Find<QCheckBox>(dialog, box.name);
            EXPECT_EQ(check.isChecked(), config.*box.member) << box.name;
            check.click();
            wanted.push_back(ok ? check.isChecked() : !check.isChecked());
        }
        Find<QPushButton>(dialog, ok ? "btn_ok_" : "btn_cancel_").click();
        Config stored;
        stored.Load();
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            EXPECT_EQ(config.*kBoxes[i].member, wanted[i]) << kBoxes[i].name;
            EXPECT_EQ(stored.*kBoxes[i].member, wanted[i]) << kBoxes[i].name;
        }
        EXPECT_EQ(HasAutostart(), wanted.front());
    }
}

TEST(SettingsDialog, AutostartEntryThatCannotBeWrittenKeepsTheDialogOpen) {
    test::ScriptedPrompts prompts;
    Config config;
    QString const folder = QFileInfo(GetAutostartFilePath()).path();
    ASSERT_TRUE(QDir(folder).removeRecursively());
    QFile in_the_way(folder);
    ASSERT_TRUE(in_the_way.open(QIODevice::WriteOnly));
    prompts.ExpectBox(
        QStringLiteral("Starting at login could not be changed.#@@#") + GetAutostartFilePath(), 0);
    SettingsDialog dialog(config, prompts);
    dialog.show();
    Find<QCheckBox>(dialog, "auto_run_").click();
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(config.autoRun);
    in_the_way.remove();
}

TEST(Autostart, EntryThatTheDesktopHidIsOff) {
    ASSERT_TRUE(SetAutostart(true));
    EXPECT_TRUE(HasAutostart());
    QFile entry(GetAutostartFilePath());
    ASSERT_TRUE(entry.open(QIODevice::ReadWrite));
    QByteArray const text = entry.readAll();
    EXPECT_TRUE(text.startsWith("[Desktop Entry]\nType=Application\n")) << text.constData();
    QByteArray const program = GetUIExeAbsolutePath().toUtf8();
    EXPECT_TRUE(text.contains("\nExec=\"" + program + "\"\nTryExec=" + program + "\n"));
    for (char const* const off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        entry.resize(text.size());
        entry.seek(text.size());
        entry.write(off);
        entry.flush();
        EXPECT_FALSE(HasAutostart()) << off;
    }
    EXPECT_TRUE(SetAutostart(false));
    EXPECT_FALSE(entry.exists());
}

TEST(Autostart, PathsAreQuotedForTheExecKey) {
    EXPECT_EQ(DesktopExec(QStringLiteral("/opt/my apps/100%/zlink")),
              QStringLiteral("\"/opt/my apps/100%%/zlink\""));
    EXPECT_EQ(DesktopExec(QStringLiteral("a\"b`c$d\\e")),
              QStringLiteral(R"("a\\"b\\`c\\$d\\\\e")"));
}

}  // namespace
}  // namespace zorvanelink::ui

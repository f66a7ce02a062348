#include "app/environment/migration.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QSettings>
#include <filesystem>
#include <fstream>

#include "app/environment/app_ctrl.h"
#include "app/environment/paths.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_environment.h"
#include "tools/support/files.h"

namespace zorvanelink::ui {
namespace {

namespace fs = std::filesystem;
using test::LogCapture;
using test::ReadFile;
using test::WriteFile;

unsigned modeOf(fs::path const& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
}

class Migration : public testing::Test {
  protected:
    void SetUp() override {
        home_ = test::TestEnvironment::Home() /
                testing::UnitTest::GetInstance()->current_test_info()->name();
        setenv("XDG_CONFIG_HOME", (home_ / "config").c_str(), 1);
        setenv("XDG_DATA_HOME", (home_ / "data").c_str(), 1);
        setenv("HOME", home_.c_str(), 1);
        old_logs_ = GetOldAppDataDirPath().toStdString();
        logs_ = GetAppLogDirPath().toStdString();
    }
    void TearDown() override { AppCtrl::Instance().dataPath.clear(); }

    fs::path home_;
    fs::path old_logs_;
    fs::path logs_;
};

TEST_F(Migration, MovesWhatAnOlderClientWrote) {
    WriteFile(old_logs_ / "letter.txt", "the user's");
    WriteFile(old_logs_ / "keys" / "a.log", "the user's");
    {
        LogCapture const log;
        MigrateOldAppResource();
        EXPECT_TRUE(log.Has("No need to migrate old data [" + old_logs_.string() + "]"));
    }
    WriteFile(old_logs_ / "a.log", "one");
    WriteFile(old_logs_ / "same.1.log", "same");
    WriteFile(old_logs_ / "script" / ".hidden", "two");
    fs::create_symlink("a.log", old_logs_ / "link.log");
    fs::create_directory_symlink(".", old_logs_ / "script" / "loop");
    WriteFile(logs_ / "a.log", "newer");
    WriteFile(logs_ / "a.old.log", "older");
    WriteFile(logs_ / "same.1.log", "same");

    LogCapture const log;
    MigrateOldAppResource();
    EXPECT_EQ(ReadFile(logs_ / "a.log"), "newer");
    EXPECT_EQ(ReadFile(logs_ / "a.old.log"), "older");
    EXPECT_EQ(ReadFile(logs_ / "a.old.old.log"), "one");
    EXPECT_FALSE(fs::exists(logs_ / "same.1.old.log"));
    EXPECT_EQ(ReadFile(logs_ / "script" / ".hidden"), "two");
    EXPECT_EQ(fs::read_symlink(logs_ / "link.log"), "a.log");
    EXPECT_EQ(fs::read_symlink(logs_ / "script" / "loop"), ".");
    std::vector<std::string> left;
    for (auto const& entry : fs::directory_iterator(old_logs_)) {
        left.push_back(entry.path().filename().string());
    }
    EXPECT_THAT(left, testing::UnorderedElementsAre("letter.txt", "keys"));
    EXPECT_EQ(modeOf(logs_), 0700U);
    EXPECT_EQ(modeOf(logs_ / "a.old.old.log"), 0600U);
    EXPECT_TRUE(log.Has("Will migrate old data ["));
    EXPECT_FALSE(log.Has("Unable"));
}

TEST_F(Migration, FailureLeavesTheOldFolder) {
    WriteFile(old_logs_ / "a.log", "one");
    WriteFile(logs_, "a file where the folder should be");
    LogCapture const log;
    MigrateOldAppResource();
    EXPECT_EQ(ReadFile(old_logs_ / "a.log"), "one");
    EXPECT_TRUE(log.Has("Unable migrate old data ["));
}

TEST_F(Migration, OpenFilesStayWhereTheyAre) {
    WriteFile(old_logs_ / "open.log", "old");
    std::ofstream const open(old_logs_ / "open.log", std::ios::app);
    MigrateOldAppResource();
    EXPECT_EQ(ReadFile(old_logs_ / "open.log"), "old");
    EXPECT_FALSE(fs::exists(logs_ / "open.log"));
}

TEST_F(Migration, SameOrNestedFoldersStay) {
    fs::path const certs = GetConfigClientCertPath().toStdString();
    WriteFile(certs / "ABCD", "cert");
    fs::create_directory_symlink(home_ / "config" / "ZorvaneLink", home_ / "alias");
    for (char const* const data : {"config/ZorvaneLink", "alias"}) {
        AppCtrl::Instance().dataPath = QString::fromStdString((home_ / data).string());
        LogCapture const log;
        MigrateOldClientCert();
        EXPECT_EQ(ReadFile(certs / "ABCD"), "cert");
        EXPECT_TRUE(log.Has("No need to migrate"));
    }
    AppCtrl::Instance().dataPath = QString::fromStdString((home_ / "old").string());
    WriteFile(home_ / "old" / "clientCert" / "EF", "other");
    MigrateOldClientCert();
    EXPECT_EQ(ReadFile(certs / "EF"), "other");
    EXPECT_EQ(ReadFile(certs / "ABCD"), "cert");
}

TEST_F(Migration, OldSettings) {
    std::string const old =
        WriteFile(GetOldAppConfigFilePath().toStdString(),
                  "[General]\nAutoRun=true\nNote=\xE5\xBC\xA0\n[Home]\nServer=gw\n");
    WriteFile(GetAppConfigFilePath().toStdString(), "[General]\nAutoRun=false\nUUID=1\n");
    LogCapture const log;
    MigrateOldAppConfigFile();
    EXPECT_TRUE(log.Has("Migrate old config done"));
    QSettings merged(GetAppConfigFilePath(), QSettings::IniFormat);
    merged.setIniCodec("UTF-8");
    EXPECT_TRUE(merged.value(QStringLiteral("AutoRun")).toBool());
    EXPECT_EQ(merged.value(QStringLiteral("Note")).toString(), QStringLiteral("张"));
    EXPECT_EQ(merged.value(QStringLiteral("Home/Server")).toString(), QStringLiteral("gw"));
    EXPECT_EQ(merged.value(QStringLiteral("UUID")).toString(), QStringLiteral("1"));
    EXPECT_EQ(modeOf(GetAppConfigFilePath().toStdString()), 0600U);
    EXPECT_TRUE(ReadFile(old).find("Server") == std::string::npos);
    EXPECT_FALSE(merged.contains(kCopiedSettingsKey));
}

TEST_F(Migration, OldSettingsThatCannotBeClearedAreTakenOverOnce) {
    fs::path const old = GetOldAppConfigFilePath().toStdString();
    std::string const settings = GetAppConfigFilePath().toStdString();
    // Each value has a length of its own: settings of one size and age count as read already.
    auto const serverAfter = [&settings] {
        if (pid_t const child = fork();
            child == 0) {  // QSettings remembers what it could not write
            MigrateOldAppConfigFile();
            _exit(0);
        }
        wait(nullptr);
        return QSettings(QString::fromStdString(settings), QSettings::IniFormat)
            .value(QStringLiteral("Home/Server"))
            .toString()
            .toStdString();
    };
    // The link leads to the open file, also when that has been replaced by an empty one.
    WriteFile(old, "[Home]\nServer=old\n");
    fs::rename(old, home_ / "fixed.conf");
    fs::create_symlink("/proc/self/fd/9", old);
    int const file = open((home_ / "fixed.conf").c_str(), O_RDONLY);
    ASSERT_EQ(dup2(file, 9), 9);
    EXPECT_EQ(serverAfter(), "old");
    std::string text = ReadFile(settings);
    text.replace(text.find("Server=old"), 10, "Server=newer");
    WriteFile(settings, text);
    EXPECT_EQ(serverAfter(), "newer");
    // An older client has run once more.
    WriteFile("/proc/self/fd/9", "[Home]\nServer=oldest\n");
    EXPECT_EQ(serverAfter(), "oldest");
    close(9);
    close(file);
}

TEST_F(Migration, BrokenSettingsStay) {
    std::string const text = "[General]\nAutoRun=true\nno key here\n";
    WriteFile(GetOldAppConfigFilePath().toStdString(), text);
    MigrateOldAppConfigFile();
    EXPECT_EQ(ReadFile(GetOldAppConfigFilePath().toStdString()), text);
    EXPECT_FALSE(fs::exists(GetAppConfigFilePath().toStdString()));
}

TEST_F(Migration, CopyDirOfATree) {
    QString const root = QString::fromStdString((home_ / "src").string());
    QString const target = QString::fromStdString((home_ / "dst").string());
    WriteFile(home_ / "src" / "portal" / "page.html", "new");
    WriteFile(home_ / "dst" / "portal" / "page.html", "old");
    QString const sub = QStringLiteral("portal");
    EXPECT_TRUE(CopyDir(root, target, sub, false));
    EXPECT_EQ(ReadFile(home_ / "dst" / "portal" / "page.html"), "old");
    EXPECT_TRUE(CopyDir(root, target, sub, true));
    EXPECT_EQ(ReadFile(home_ / "dst" / "portal" / "page.html"), "new");
    auto const written = fs::last_write_time(home_ / "dst" / "portal" / "page.html");
    EXPECT_TRUE(CopyDir(root, target, sub, true));
    EXPECT_EQ(fs::last_write_time(home_ / "dst" / "portal" / "page.html"), written);
    EXPECT_EQ(ReadFile(home_ / "src" / "portal" / "page.html"), "new");
    EXPECT_FALSE(CopyDir(QString(), target, sub, true));
    EXPECT_FALSE(CopyDir(root, root + QStringLiteral("/portal/inside"), true));
    EXPECT_TRUE(CopyDir(root, root, true));
    EXPECT_TRUE(RemoveDir(target));
    EXPECT_FALSE(fs::exists(home_ / "dst"));
}

}  // namespace
}  // namespace zorvanelink::ui

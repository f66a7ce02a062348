// The settings that are written for the client, read back the way the client reads them.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QSettings>
#include <QStringList>

#include "components/utils/sensitive_value.h"
#include "tests/support/test_environment.h"
#include "tools/simservice/profile_writer.h"

namespace zorvanelink::simservice {
namespace {

TEST(ProfileWriter, TheClientReadsWhatWasWritten) {
    Scenario scenario;
    for (auto const* const name :
         {"Head office", "General", "B\xc3\xbcro \xe6\x80\xbb \xf0\x9f\x8c\x8d", "a=b,c%d", "@x"}) {
        scenario.users.push_back(
            {std::string("user \"of\" ") + name, "made-up=1;", name, "vpn.example.com", 8443});
    }
    auto const folder = (test::TestEnvironment::Home() / "settings" / "deep").string();
    std::string error;
    ASSERT_TRUE(WriteProfile(scenario, folder, false, error)) << error;
    auto const path = folder + "/AppConfig.ini";
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);

    QSettings settings(QString::fromStdString(path), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    EXPECT_EQ(settings.value(QStringLiteral("DefaultProfile")), QStringLiteral("Head office"));
    EXPECT_EQ(settings.value(QStringLiteral("AutoLogin")), QStringLiteral("false"));
    QStringList names;
    for (auto const& user : scenario.users) {
        auto const name = QString::fromStdString(user.profile);
        names << name;
        settings.beginGroup(name);
        EXPECT_EQ(settings.value(QStringLiteral("ConnectionName")).toString(), name);
        EXPECT_EQ(settings.value(QStringLiteral("UserName")).toString().toStdString(), user.name);
        EXPECT_EQ(settings.value(QStringLiteral("Port")).toInt(), 8443);
        EXPECT_EQ(settings.value(QStringLiteral("SFMode")).toInt(), 1);
        EXPECT_TRUE(settings.value(QStringLiteral("RememberPwd")).toBool());
        auto const password = settings.value(QStringLiteral("Password")).toString().toStdString();
        EXPECT_EQ(components::utils::DecodeSensitiveValue(password), user.password);
        settings.endGroup();
    }
    EXPECT_EQ(settings.value(QStringLiteral("ProfileList")).toString(),
              names.join(QLatin1Char(';')));
    EXPECT_EQ(SettingsText(scenario).find("made-up"), std::string::npos);
    EXPECT_NE(SettingsText(scenario).find("KeepAuthType=true\nLastAuthType=1\n"),
              std::string::npos);
    scenario.auth_types.push_back(common::SupportedAuthType::kOauth);
    EXPECT_NE(SettingsText(scenario).find("KeepAuthType=false\nLastAuthType=0\n"),
              std::string::npos);
}

TEST(ProfileWriter, ReplacesOnlyWhenForced) {
    Scenario scenario;
    scenario.users.push_back({"alice", "made-up", "Office"});
    auto const folder = (test::TestEnvironment::Home() / "forced").string();
    std::string error;
    ASSERT_TRUE(WriteProfile(scenario, folder, false, error)) << error;
    EXPECT_FALSE(WriteProfile(scenario, folder, false, error));
    EXPECT_THAT(error, testing::HasSubstr("AppConfig.ini: exists already"));
    EXPECT_TRUE(WriteProfile(scenario, folder, true, error)) << error;
    EXPECT_FALSE(WriteProfile(scenario, "/proc/none", false, error));
}

}  // namespace
}  // namespace zorvanelink::simservice

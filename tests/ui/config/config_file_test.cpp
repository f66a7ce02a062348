// Settings files of every origin: what is read from them, and that nothing of them is lost.
#include "tests/ui/config/config_fixture.h"

namespace zorvanelink::ui {
namespace {

namespace fs = std::filesystem;
using test::LogCapture;

using SettingsFile = ConfigTest;

TEST_F(SettingsFile, FirstRun) {
    LogCapture const log;
    Config config;
    config.Load();
    EXPECT_TRUE(log.Has("No first install"));
    EXPECT_TRUE(log.Has("Try to import old config, now config num is 0"));
    EXPECT_TRUE(config.autoReconnect && config.autoMinimize && config.statusNotify);
    EXPECT_EQ(config.uuid.size(), 32);
    EXPECT_EQ(config.uuid, config.uuid.toUpper());
    EXPECT_FALSE(fs::exists(file_));
    config.Save();
    EXPECT_EQ(modeOf(file_), 0600U);
    EXPECT_EQ(modeOf(file_.parent_path()), 0700U);

    LogCapture const second;
    Config again;
    again.Load();
    EXPECT_EQ(again.uuid, config.uuid);
    EXPECT_FALSE(second.Has("No first install"));
    EXPECT_EQ(again.lastClientVersion.version, config.clientVersion.version);
}

TEST_F(SettingsFile, OldForms) {
    useSample("old.ini");
    LogCapture const log;
    Config config;
    config.Load(true);
    EXPECT_TRUE(log.Has("No first install"));
    EXPECT_FALSE(log.Has("Try to import old config"));
    EXPECT_EQ(config.updatePolicy, 0);
    EXPECT_TRUE(config.communicationOptimization);
    EXPECT_EQ(config.dnsServers, QStringLiteral("10.0.0.1,10.0.0.2"));
    ASSERT_EQ(config.profiles.size(), 4U);

    Profile const& office = *config.GetProfile("Office");
    EXPECT_EQ(office.port, 65979 - 65536);
    EXPECT_EQ(office.loginMode, kLoginModeGm);
    EXPECT_EQ(office.authType, SupportedAuthType::kPwdWithCert);
    EXPECT_TRUE(log.Has("Need convert old auth type[2]"));
    EXPECT_EQ(office.password, "plain-old-form");
    EXPECT_EQ(office.lastUserName, "anna");
    EXPECT_EQ(office.commOptimMode, 0);
    EXPECT_EQ(office.savedFormMode, 1);
    EXPECT_EQ(office.lastSupportedAuthTypes,
              (std::vector{SupportedAuthType::kPwd, SupportedAuthType::kOnlyUkey,
                           SupportedAuthType::kPwdWithCert}));
    EXPECT_TRUE(office.supportedAuthTypes.empty());

    Profile const& cert = *config.GetProfile("Cert");
    EXPECT_EQ(cert.userName + cert.password, "");
    EXPECT_EQ(cert.fileCert.fingerprint, "00FF");
    EXPECT_TRUE(log.Has("Failed to find cert by fingerprint[00FF]"));
    EXPECT_TRUE(cert.lastSupportedAuthTypes.empty());

    Profile const& home = *config.GetProfile("Home");
    EXPECT_EQ(home.authType, SupportedAuthType::kNone);
    EXPECT_EQ(home.password, "");
    EXPECT_EQ(home.userName, "anna");
    ASSERT_EQ(home.gatewayList.size(), 2U) << "the third position reads as an empty entry";
    EXPECT_EQ(home.gatewayList.at("east").addr, "10.1.0.1");
    EXPECT_EQ(home.gatewayList.at("east").detectPort, 8000);
    EXPECT_EQ(home.gatewayList.at("").addr, "");

    EXPECT_TRUE(log.Has("Profile name Other not match the key Bad, drop"));
    EXPECT_TRUE(log.Has("Profile name DEFAULT not match the key Missing, drop"));
    EXPECT_NE(config.GetProfile("DEFAULT"), nullptr);

    config.Save();
    EXPECT_TRUE(fileHas("Server=kept.example")) << "a dropped profile stays in the file";
    EXPECT_EQ(modeOf(file_), 0600U);
    config.DeleteProfile("Nobody");
    config.Save();
    EXPECT_TRUE(fileHas("Server=kept.example"));
    config.DeleteProfile("Home");
    EXPECT_TRUE(fileHas("[Home]")) << "only the save writes";
    config.Save();
    EXPECT_FALSE(fileHas("Server=kept.example"));
    EXPECT_FALSE(fileHas("[Home]"));
    EXPECT_TRUE(fileHas("[Office]"));
}

TEST_F(SettingsFile, ForeignNamesAndLists) {
    useSample("foreign.ini");
    Config config;
    config.Load();
    ASSERT_EQ(config.profiles.size(), 2U);
    ASSERT_NE(config.GetProfile("\xC3\xA5"), nullptr);
    EXPECT_EQ(config.GetProfile("\xC3\xA5")->forgotPwdUrl, "https://gw.example/?a=1,b=2");
    EXPECT_EQ(config.uuid, QStringLiteral("0123456789ABCDEF0123456789ABCDEF"));
    config.Save();
    EXPECT_TRUE(fileHas("Foreign=kept"));

    Config again;
    again.Load();
    EXPECT_EQ(again.profiles.size(), 2U);
    ASSERT_NE(again.GetProfile("zz"), nullptr);
    EXPECT_EQ(again.GetProfile("zz")->server, "second.example");
}

TEST_F(SettingsFile, ChineseAndLongNames) {
    useSample("chinese.ini");
    LogCapture const log;
    Config config;
    config.Load();
    ASSERT_EQ(config.profiles.size(), 2U);
    std::string const office = "办公室";
    EXPECT_EQ(config.GetDefaultProfileName(), office);
    ASSERT_NE(config.GetProfile(""), nullptr);
    EXPECT_EQ(config.GetProfile("")->server, "网关.example");
    EXPECT_EQ(config.GetProfile("")->userName, "王");
    EXPECT_EQ(config.GetProfile("")->password, "c3RvcmVk");
    EXPECT_TRUE(log.Has("Profile name exceed 127, will be truncated in load"));
    std::string cut;
    for (auto const& [name, profile] : config.profiles) {
        if (name != office) {
            cut = name;
            EXPECT_EQ(name.size(), 127U);
            EXPECT_EQ(profile->server, "long");
        }
    }
    config.Save();
    Config again;
    again.Load();
    EXPECT_NE(again.GetProfile(cut), nullptr);
    EXPECT_EQ(again.GetProfile(office)->userName, "王");
}

// What the file format treats in a way of its own comes back whole, and none of it stops a save.
TEST_F(SettingsFile, NamesAndValuesThatTheFormatFindsHard) {
    std::vector<std::string> const names{"general",    "%General",       "a;b",     "a/b",
                                         "50%, or so", " blanks  ",      "[x]=#;y", "back\\slash",
                                         "\"quoted\"", "ClientCertFile", "@home",   "tab\tin",
                                         "家 😀1 🏠"};
    Config config;
    for (std::string const& name : names) {
        auto const profile = profileOf(name);
        profile->userName = "u " + name;
        config.AddProfile(profile, false);
    }
    config.defaultProfile = names.back();
    config.Save();
    EXPECT_TRUE(fileHas("ConnectionName=家 😀1 🏠")) << "plain UTF-8, as other programs read it";
    Config again;
    again.Load();
    EXPECT_EQ(again.GetDefaultProfileName(), names.back());
    for (std::string const& name : names) {
        auto const profile = again.GetProfile(name);
        ASSERT_NE(profile, nullptr) << name;
        EXPECT_EQ(profile->server, name + ".example");
        EXPECT_EQ(profile->userName, "u " + name);
    }
    again.DeleteProfile("general");
    again.Save();
    Config last;
    last.Load();
    EXPECT_EQ(last.profiles.size(), names.size() - 1);
}

TEST_F(SettingsFile, KeysOutOfReachDoNotStopASave) {
    for (char const* odd : {"[]\nx=1\n", "[/a]\nx=1\n", "[%GENERAL]\nx=1\n", "=3\n",
                            "[a]\nx=\\xd83d\\x41\n", "[general]\nx=1\n"}) {
        test::WriteFile(file_, odd);
        Config config;
        config.Load();
        config.AddProfile(profileOf("office"), false);
        config.Save();
        Config again;
        again.Load();
        EXPECT_NE(again.GetProfile("office"), nullptr) << odd;
    }
}

TEST_F(SettingsFile, CountsDoNotDecideHowLongWeRead) {
    std::string names;
    std::string sections;
    for (int i = 0; i <= 32; ++i) {
        std::string const name = (i < 10 ? "p0" : "p") + std::to_string(i);
        names += (i == 0 ? "" : ";") + name;
        sections += "[" + name + "]\nConnectionName=" + name +
                    "\nServer=gw\nGatewayCount=2147483647\nGatewayList\\size=2000000000\n"
                    "GatewayList\\2\\Name=far\nGatewayList\\2\\Addr=10.0.0." +
                    std::to_string(i) +
                    "\nGatewayList\\2147483647\\Name=farther\nClusterCount=-5\n\n";
    }
    test::WriteFile(file_, "[General]\nProfileList=\"" + names +
                               "\"\nClientCertFile\\size=2000000000\n" + sections);
    LogCapture const log;
    Config config;
    config.Load();
    EXPECT_EQ(config.profiles.size(), Config::kMaxConfigNum);
    EXPECT_EQ(config.GetProfile("p32"), nullptr);
    EXPECT_TRUE(log.Has("Config num exceeds the max number 32"));
    auto const& gateways = config.GetProfile("p07")->gatewayList;
    EXPECT_EQ(gateways.size(), 3U);
    EXPECT_EQ(gateways.at("far").addr, "10.0.0.7");
    EXPECT_EQ(gateways.count("farther"), 1U);
    EXPECT_TRUE(config.GetProfile("p07")->clusterList.empty());
}

TEST_F(SettingsFile, BrokenFileIsKept) {
    useSample("broken.ini");
    std::string const broken = fileText();
    LogCapture const log;
    Config config;
    config.Load();
    EXPECT_NE(config.GetProfile("Office"), nullptr) << "what can be read is used";
    EXPECT_EQ(log.Count("does not parse, copied"), 1);
    config.Save();
    config.Save();
    EXPECT_EQ(log.Count("does not parse, copied"), 1);
    EXPECT_EQ(test::ReadFile(file_.string() + ".bad"), broken);
    EXPECT_EQ(modeOf(file_.string() + ".bad"), 0600U);
    EXPECT_FALSE(fileHas("this line is no setting"));

    LogCapture const second;
    Config again;
    again.Load();
    EXPECT_NE(again.GetProfile("Office"), nullptr);
    EXPECT_FALSE(second.Has("does not parse"));
}

TEST_F(SettingsFile, NothingIsWrittenWhenTheBrokenFileCannotBeKept) {
    useSample("broken.ini");
    std::string const broken = fileText();
    fs::create_directories(file_.string() + ".bad/in the way");
    LogCapture const log;
    Config config;
    config.Load();
    config.Save();
    EXPECT_EQ(fileText(), broken);
    EXPECT_TRUE(log.Has("Failed to save config"));
    fs::remove_all(file_.string() + ".bad");
    config.Save();
    EXPECT_EQ(test::ReadFile(file_.string() + ".bad"), broken);
    EXPECT_NE(fileText(), broken);
}

}  // namespace
}  // namespace zorvanelink::ui

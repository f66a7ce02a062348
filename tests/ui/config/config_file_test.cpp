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
}

// The file that comes out is compared whole, and comes out the same the next time.
TEST_F(SettingsFile, SamplesAreReadAndWrittenBack) {
    struct Case {
        char const* name;
        std::vector<char const*> log;
    } const cases[] = {
        {"old",
         {"No first install", "Need convert old auth type[2]",
          "Failed to find cert by fingerprint[00FF]",
          "Profile name Other not match the key Bad, drop",
          "Profile name DEFAULT not match the key Missing, drop"}},
        {"foreign", {}},
        {"chinese", {"Profile name exceed 127, will be truncated in load"}},
        {"broken", {"does not parse, copied"}},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        useSample(c.name);
        for (bool const first : {true, false}) {
            LogCapture const log;
            Config config;
            config.clientVersion = {QStringLiteral("1.2.3"), false, false};
            config.Load(true);
            EXPECT_EQ(modeOf(file_), 0600U);
            config.Save();
            EXPECT_EQ(fileText(), sample(std::string(c.name) + ".saved"));
            EXPECT_FALSE(log.Has("Try to import old config"));
            for (char const* const line : c.log) {
                EXPECT_TRUE(!first || log.Has(line)) << line;
            }
        }
    }
}

// What no saved file shows.
TEST_F(SettingsFile, OldFormsInMemory) {
    useSample("old");
    Config config;
    config.Load();
    EXPECT_TRUE(config.communicationOptimization);
    Profile const& office = *config.GetProfile("Office");
    EXPECT_EQ(office.lastUserName, "anna");
    EXPECT_EQ(office.lastSupportedAuthTypes,
              (std::vector{SupportedAuthType::kPwd, SupportedAuthType::kOnlyUkey,
                           SupportedAuthType::kPwdWithCert}));
    EXPECT_TRUE(config.GetProfile("Cert")->lastSupportedAuthTypes.empty());
    config.DeleteProfile("Nobody");
    config.Save();
    EXPECT_TRUE(fileHas("Server=kept.example")) << "a dropped profile stays in the file";
    config.DeleteProfile("Home");
    EXPECT_TRUE(fileHas("[Home]")) << "only the save writes";
    config.Save();
    EXPECT_FALSE(fileHas("Server=kept.example"));
    EXPECT_FALSE(fileHas("[Home]"));
    EXPECT_TRUE(fileHas("[Office]"));
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
        EXPECT_EQ(profile->server + profile->userName, name + ".exampleu " + name);
    }
    for (char const* odd : {"[]\nx=1\n", "[/a]\nx=1\n", "[%GENERAL]\nx=1\n", "=3\n",
                            "[a]\nx=\\xd83d\\x41\n", "[general]\nx=1\n"}) {
        test::WriteFile(file_, odd);
        Config reading;
        reading.Load();
        reading.AddProfile(profileOf("office"), false);
        reading.Save();
        EXPECT_FALSE(reading.LastSaveFailed()) << odd;
        EXPECT_TRUE(fileHas("[office]")) << odd;
    }
}

TEST_F(SettingsFile, ConnectionsBeyondTheLimitAreKept) {
    std::string list;
    std::string sections;
    for (int i = 10; i < 45; ++i) {
        std::string const name = std::to_string(i);
        list += name + ";";
        sections += "[" + name + "]\nConnectionName=" + name + "\nServer=gw" + name +
                    "\nFurther\\1\\Key=\"a, b\"\nGatewayCount=2147483647\n"
                    "GatewayList\\2\\Name=far\nGatewayList\\2147483647\\Name=farther\n"
                    "ClusterCount=-5\n";
    }
    test::WriteFile(file_, "[General]\nProfileList=\"" + list +
                               "nobody\"\nClientCertFile\\size=2000000000\n" + sections);
    LogCapture const log;
    Config config;
    config.Load();
    EXPECT_EQ(config.profiles.size(), Config::kMaxConfigNum);
    EXPECT_EQ(log.Count("Config num exceeds the max number 32"), 1);
    auto const& gateways = config.GetProfile("17")->gatewayList;
    EXPECT_EQ(gateways.size(), 3U) << "one empty entry for all gaps: the count does not decide";
    EXPECT_EQ(gateways.count("") + gateways.count("far") + gateways.count("farther"), 3U);
    EXPECT_TRUE(config.GetProfile("17")->clusterList.empty());
    EXPECT_EQ(config.GetProfile("42"), nullptr);
    EXPECT_TRUE(config.HasName("42") && config.HasName("10") && !config.HasName("nobody"));
    config.AddProfile(profileOf("99"), false);
    config.Save();
    EXPECT_TRUE(fileHas(";41;99;42;43;44\"\n")) << fileText().substr(0, 400);
    config.DeleteProfile("99");
    config.DeleteProfile("10");
    config.AddProfile(profileOf("44"), false);
    config.Save();
    EXPECT_TRUE(fileHas("[43]") && fileHas("Further\\1\\Key=\"a, b\"") && !fileHas("[99]"));
    Config again;
    again.Load();
    EXPECT_EQ(again.profiles.size(), Config::kMaxConfigNum);
    EXPECT_EQ(again.GetProfile("44")->server, "44.example");
    again.DeleteProfile("11");
    again.DeleteProfile("12");
    again.Save();
    Config last;
    last.Load();
    ASSERT_NE(last.GetProfile("43"), nullptr);
    EXPECT_EQ(last.GetProfile("42")->server + last.GetProfile("43")->server, "gw42gw43");
}

TEST_F(SettingsFile, ServersBeyondTheirLimitAreNotRead) {
    std::string text = "[General]\nProfileList=p\n[p]\nConnectionName=p\nGatewayCount=600\n";
    for (int i = 1; i <= 600; ++i) {
        text += "GatewayList\\" + std::to_string(i) + "\\Name=g" + std::to_string(i) + "\n";
    }
    test::WriteFile(file_, text);
    Config config;
    config.Load();
    EXPECT_EQ(config.GetProfile("p")->gatewayList.size(), kMaxListedServers);
    EXPECT_EQ(config.GetProfile("p")->gatewayList.count("g512"), 1U);
}

TEST_F(SettingsFile, WhatIsNoSettingsFileIsPutAsideWithoutItsSecrets) {
    std::string const bad = file_.string() + ".bad";
    auto const loadAndSave = [] {
        Config config;
        config.Load();
        config.Save();
        config.Save();
        EXPECT_FALSE(config.LastSaveFailed());
    };
    useSample("broken");
    loadAndSave();
    EXPECT_EQ(test::ReadFile(bad), sample("broken.bad"));
    EXPECT_EQ(modeOf(bad), 0600U);
    test::WriteFile(file_, sample("broken") + "Another=one\n");
    loadAndSave();
    EXPECT_EQ(test::ReadFile(bad), sample("broken.bad")) << "never overwritten";
    EXPECT_EQ(test::ReadFile(bad + ".1"), sample("broken.bad") + "Another=one\n");
    fs::remove(file_);
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    loadAndSave();
    EXPECT_TRUE(fs::is_fifo(bad + ".2"));
    fs::remove(file_);
    fs::create_directories(file_ / "somebody's");
    loadAndSave();
    EXPECT_TRUE(fs::is_directory(bad + ".3/somebody's"));
    EXPECT_TRUE(fs::is_regular_file(file_));
    EXPECT_FALSE(fs::exists(bad + ".4"));
}

}  // namespace
}  // namespace zorvanelink::ui

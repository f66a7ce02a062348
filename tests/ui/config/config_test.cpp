// The store's operations, and the file that it writes.
#include <signal.h>
#include <sys/resource.h>

#include "components/cert/pkcs12.h"
#include "components/utils/sensitive_value.h"
#include "tests/ui/config/config_fixture.h"
#include "tools/support/pkcs12_maker.h"
#include "ui/config/cert_decode.h"

namespace zorvanelink::ui {
namespace {

namespace fs = std::filesystem;
using test::LogCapture;

// Makes the disk look full.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit const limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }
    FileSizeLimit(FileSizeLimit const&) = delete;
    FileSizeLimit& operator=(FileSizeLimit const&) = delete;

  private:
    rlimit before_{};
};

TEST_F(ConfigTest, WritesTheFileAsItStands) {
    Config config;
    config.uuid = QStringLiteral("0123456789ABCDEF0123456789ABCDEF");
    config.clientVersion = {QStringLiteral("1.2.3"), true, false};
    config.dnsServers = QStringLiteral("10.0.0.1,10.0.0.2");
    config.updatePolicy = 2;
    config.updatePolicyVersion = QStringLiteral("1.3");
    config.defaultProfile = "办公室; 2";
    auto office = profileOf(config.defaultProfile);
    office->authType = SupportedAuthType::kPwd;
    office->userName = "anna";
    office->password = "b3BhcXVl";
    office->rememberPassword = true;
    office->gatewayList["east"] = {"10.1.0.1", 8000, 443};
    office->clusterList["10.2.0.1"] = {"10.2.0.1", 4430};
    office->supportedAuthTypes = {SupportedAuthType::kPwd, SupportedAuthType::kOauth};
    auto cert = profileOf("cert");
    cert->authType = SupportedAuthType::kOnlyUkey;
    cert->userName = "nobody";
    cert->password = "a2VwdA==";
    cert->rememberPassword = true;
    cert->fileCert.fingerprint = "00FF";
    cert->fileCert.pin = "cGlu";
    auto asking = profileOf("asking");
    asking->authType = SupportedAuthType::kOauth;
    asking->keepAuthType = false;
    asking->password = "Zm9yZ290dGVu";
    EXPECT_TRUE(config.AddProfiles({office, cert, asking, nullptr}, false));
    config.Save();
    EXPECT_EQ(fileText(), test::ReadFile(fs::path(ZVL_TEST_DATA) / "settings" / "own.ini"));

    Config again;
    again.Load();
    ASSERT_EQ(again.profiles.size(), 3U) << "a name with a separator is put together again";
    Profile const& back = *again.GetProfile("");
    EXPECT_EQ(back.password, "b3BhcXVl");
    EXPECT_EQ(back.lastUserName, "anna");
    EXPECT_EQ(back.gatewayList.at("east").sslPort, 443);
    EXPECT_EQ(back.clusterList.size(), 1U);
    EXPECT_EQ(back.clusterList.count(""), 1U) << "positions go on behind the gateways'";
    EXPECT_EQ(back.lastSupportedAuthTypes.size(), 2U);
    EXPECT_EQ(again.GetProfile("cert")->password, "") << "not read for certificates";
    EXPECT_EQ(again.GetProfile("asking")->authType, SupportedAuthType::kNone);
    EXPECT_EQ(again.dnsServers, config.dnsServers);
    EXPECT_EQ(again.updatePolicyVersion, config.updatePolicyVersion);
    EXPECT_TRUE(again.lastClientVersion.oversea);
}

TEST_F(ConfigTest, WhatLeavesAProfileLeavesTheFile) {
    Config config;
    auto profile = profileOf("p");
    profile->fileCert.fingerprint = "00FF";
    profile->gatewayList["east"] = {"10.1.0.1", 1, 2};
    profile->clusterList["a"] = {"a", 1};
    config.AddProfile(profile, false);
    config.clientCerts["1"] = {};
    config.clientCerts["2"].pin = "cGluMg==";
    config.Save();
    EXPECT_TRUE(fileHas("10.1.0.1") && fileHas("00FF") && fileHas("cGluMg=="));
    profile->fileCert = {};
    profile->gatewayList.clear();
    profile->clusterList.clear();
    config.clientCerts.erase("2");
    config.Save();
    for (char const* const gone : {"10.1.0.1", "00FF", "CertPinCode", "cGluMg==", "Addr=a"}) {
        EXPECT_FALSE(fileHas(gone)) << gone;
    }
}

TEST_F(ConfigTest, OverseaBuildsKnowNoGm) {
    useSample("old.ini");
    AppCtrl::Instance().overseaVersion = true;
    Config config;
    config.Load();
    auto const office = config.GetProfile("Office");
    EXPECT_EQ(office->loginMode, kLoginModeTls);
    office->loginMode = kLoginModeGm;
    config.Save();
    EXPECT_TRUE(fileHas("LoginMode=2")) << "forced only behind the writing";
    EXPECT_EQ(office->loginMode, kLoginModeTls);
    auto added = profileOf("added");
    added->loginMode = kLoginModeGm;
    config.AddProfile(added, false);
    EXPECT_EQ(added->loginMode, kLoginModeTls);
}

TEST_F(ConfigTest, AddingHasItsLimits) {
    Config config;
    EXPECT_FALSE(config.AddProfile(nullptr, true));
    EXPECT_FALSE(config.AddProfile(profileOf(""), true));
    for (int i = 0; i < 33; ++i) {
        EXPECT_TRUE(config.AddProfile(profileOf("p" + std::to_string(i)), false)) << i;
    }
    LogCapture const log;
    EXPECT_FALSE(config.AddProfile(profileOf("one more"), false));
    EXPECT_TRUE(log.Has("Config num exceeds the max number 32"));
    config.DeleteProfile("p0");
    EXPECT_FALSE(config.AddProfile(profileOf("p1"), false));
    auto const other = profileOf("p1");
    EXPECT_TRUE(config.AddProfile(other, true));
    EXPECT_EQ(config.GetProfile("p1"), other);
    EXPECT_FALSE(config.SetDefaultProfile("p0"));
    EXPECT_TRUE(config.SetDefaultProfile("p1"));
    EXPECT_EQ(config.GetProfile(""), other);
}

TEST_F(ConfigTest, FailedSaveLeavesTheOldFileAndIsMadeUpFor) {
    Config config;
    config.AddProfile(profileOf("first"), false);
    config.AddProfile(profileOf("second"), false);
    config.Save();
    std::string const before = fileText();
    config.DeleteProfile("first");
    LogCapture const log;
    {
        FileSizeLimit const limit(256);  // room for the lock, not for the settings
        config.Save();
    }
    EXPECT_TRUE(log.Has("Failed to save config"));
    EXPECT_EQ(fileText(), before);
    config.Save();
    EXPECT_FALSE(fileHas("[first]"));
    EXPECT_TRUE(fileHas("[second]"));
}

TEST_F(ConfigTest, ClientCertificates) {
    auto const import = [this](Config& config, std::string const& name) {
        test::Pkcs12Recipe recipe;
        recipe.keyType = "EC";
        recipe.subject = {{"O", "A, B"}, {"CN", name}};
        CertInfo cert;
        cert.filePath = test::WriteFile(home_ / "import.p12", test::MakePkcs12(recipe));
        cert.pin = components::utils::EncodeSensitiveValue("open");
        EXPECT_EQ(components::utils::ParsePkcs12Cert(cert, false), 0);
        EXPECT_FALSE(config.IsClientCertExist(cert));
        EXPECT_TRUE(config.AddClientCert(cert));
        return cert;
    };
    Config config;
    CertInfo const anna = import(config, "Anna");
    CertInfo const lost = import(config, "Lost");
    fs::path const folder = GetConfigClientCertPath().toStdString();
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(folder / anna.fingerprint), 0600U);
    auto profile = profileOf("p");
    profile->fileCert = anna;
    profile->fileCert.pin.clear();
    config.AddProfile(profile, false);
    config.Save();
    fs::remove(folder / lost.fingerprint);

    Config again;
    LogCapture const log;
    again.Load();
    EXPECT_TRUE(log.Has("Try to load 2 client cert"));
    EXPECT_TRUE(log.Has("Failed to parse cert[subject = " + lost.subject + "]"));
    ASSERT_EQ(again.clientCerts.size(), 1U);
    CertInfo const* const stored = again.GetClientCert(anna.fingerprint);
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ(stored->pin, anna.pin);
    EXPECT_EQ(again.GetProfile("p")->fileCert.commonName, "Anna");
    EXPECT_EQ(again.GetProfile("p")->fileCert.pin, anna.pin);
    EXPECT_TRUE(log.Has("Cert file pin code is null by system decrypt"));

    EXPECT_TRUE(again.DeleteClientCert(*stored));
    EXPECT_FALSE(fs::exists(folder / anna.fingerprint));
    EXPECT_TRUE(again.clientCerts.empty());
    EXPECT_TRUE(config.DeleteClientCert(lost)) << "a file already gone counts as deleted";
    config.clientCerts[""] = {};
    EXPECT_FALSE(config.DeleteClientCert({})) << "the folder itself is no certificate";
    EXPECT_EQ(config.clientCerts.count(""), 1U);
}

TEST(Profile, OfferedTypes) {
    Profile profile;
    profile.name = "p";
    LogCapture const log;
    EXPECT_FALSE(
        profile.GetSupportedAuthType({SupportedAuthType::kNone, SupportedAuthType::kUnknown,
                                      static_cast<SupportedAuthType>(-1)}));
    EXPECT_TRUE(profile.supportedAuthTypes.empty());
    EXPECT_TRUE(log.Has("Recv invalid auth type [-1] in select auth type status for profile[p]"));
    EXPECT_TRUE(profile.GetSupportedAuthType(
        {SupportedAuthType::kOauth, SupportedAuthType::kNone, SupportedAuthType::kPwd}));
    EXPECT_EQ(profile.supportedAuthTypes,
              (std::vector{SupportedAuthType::kOauth, SupportedAuthType::kPwd}));
    int const converted[] = {0, 1, 5, 3, 0, 0};
    for (int old = 0; old < 6; ++old) {
        EXPECT_EQ(static_cast<int>(ConvertOldAuthType(old)), converted[old]);
    }
}

TEST(CertDecode, Escapes) {
    struct Case {
        char const* text;
        bool encoded;
        char const* decoded;
    } const cases[] = {
        {"", false, ""},
        {"CN=Anna\\", false, "CN=Anna\\"},
        {"CN=\\4", false, "CN=\\4"},
        {"CN=\\E5\\bc\\A0,O=x", true, "CN=张,O=x"},
        {"CN=a\\,b", false, "CN=a\\,b"},
        {"CN=a\\\\b", false, "CN=a\\b"},
        {"CN=\\\\41", true, "CN=\\41"},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(IsCertEncoded(c.text), c.encoded) << c.text;
        EXPECT_EQ(CertDecode(c.text), c.decoded) << c.text;
    }
}

}  // namespace
}  // namespace zorvanelink::ui

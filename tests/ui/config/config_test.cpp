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
    config.clientCerts["1"] = {};
    config.clientCerts["2"].pin = "cGluMg==";
    config.Save();
    EXPECT_TRUE(fileHas("cGluMg=="));
    config.clientCerts.clear();
    config.Save();
    EXPECT_EQ(fileText(), sample("own")) << "what left the store has left the file";

    Config again;
    again.Load();
    ASSERT_EQ(again.profiles.size(), 3U) << "a name with a separator is put together again";
    Profile& back = *again.GetProfile("");
    EXPECT_EQ(back.password + back.lastUserName, "b3BhcXVlanna");
    EXPECT_EQ(back.gatewayList.at("east").sslPort, 443);
    EXPECT_EQ(back.clusterList.size(), 1U);
    EXPECT_EQ(back.clusterList.count(""), 1U) << "positions go on behind the gateways'";
    EXPECT_EQ(back.lastSupportedAuthTypes.size(), 2U);
    EXPECT_EQ(again.GetProfile("cert")->password, "") << "not read for certificates";
    EXPECT_EQ(again.dnsServers, config.dnsServers);
    EXPECT_TRUE(again.lastClientVersion.oversea);
    back.gatewayList.clear();
    back.clusterList.clear();
    again.GetProfile("cert")->fileCert = {};
    again.Save();
    for (char const* const gone : {"10.1.0.1", "Addr=", "00FF", "CertPinCode"}) {
        EXPECT_FALSE(fileHas(gone)) << gone;
    }
}

TEST_F(ConfigTest, OverseaBuildsKnowNoGm) {
    useSample("old");
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
    EXPECT_FALSE(config.AddProfile(nullptr, true) || config.AddProfile(profileOf(""), true));
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
    EXPECT_TRUE(!config.SetDefaultProfile("p0") && config.SetDefaultProfile("p1"));
    EXPECT_EQ(config.GetProfile(""), other);
}

// A disk that is full at the draft's copy, in the middle of the new text, and at its last bytes.
TEST_F(ConfigTest, FailedSaveLeavesTheOldFileAndIsMadeUpFor) {
    std::string const before =
        "[General]\nForeign=kept\nCopiedOldConfig=mark\n\n[first]\nConnectionName=first\n";
    test::WriteFile(file_, before);
    Config config;
    int told = 0;
    config.onSaved = [&] { ++told; };
    config.AddProfiles({profileOf("first"), profileOf("second")}, false);
    config.DeleteProfile("first");
    LogCapture const log;
    for (rlim_t const bytes : {8, 64, 300, 600}) {
        FileSizeLimit const limit(bytes);
        config.Save();
        EXPECT_TRUE(config.LastSaveFailed()) << bytes;
        EXPECT_EQ(fileText(), before) << bytes;
    }
    EXPECT_EQ(log.Count("Failed to save config"), 4);
    config.Save();
    EXPECT_EQ(told, 5);
    EXPECT_FALSE(config.LastSaveFailed());
    EXPECT_FALSE(fileHas("[first]"));
    EXPECT_TRUE(fileHas("[second]"));
    EXPECT_TRUE(fileHas("CopiedOldConfig=mark")) << "else older settings would come back";
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
        EXPECT_TRUE(config.AddClientCert(cert));
        return cert;
    };
    Config config;
    CertInfo const anna = import(config, "Anna");
    CertInfo const lost = import(config, "Lost");
    CertInfo const outside = import(config, "Outside");
    CertInfo broken = import(config, "Broken");
    fs::path const folder = GetConfigClientCertPath().toStdString();
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(folder / anna.fingerprint), 0600U);
    auto profile = profileOf("p");
    profile->fileCert = anna;
    profile->fileCert.pin.clear();
    config.AddProfile(profile, false);
    // As another program may have filled the store.
    fs::rename(folder / anna.fingerprint, folder / "anna's file");
    fs::rename(folder / outside.fingerprint, folder.parent_path() / "outside");
    config.clientCerts[anna.fingerprint].filePath = folder / "anna's file";
    config.clientCerts[outside.fingerprint].filePath = folder / "../outside";
    config.Save();
    fs::remove(folder / lost.fingerprint);
    test::WriteFile(folder / broken.fingerprint, "no container");
    Config full;  // but for one
    for (char name = 'a'; name < 'a' + 15; ++name) {
        full.clientCerts[{name}].fingerprint = name;
    }
    full.Load();
    EXPECT_EQ(full.clientCerts.size(), Config::kMaxClientCertNum);
    full.Save();
    EXPECT_TRUE(fileHas("\nsize=18\n")) << "what is not read is kept, unless its file has gone";
    config.Save();

    for (bool const last : {false, true}) {
        Config again;
        LogCapture const log;
        again.Load();
        EXPECT_TRUE(log.Has(last ? "Try to load 3 client cert" : "Try to load 4 client cert"));
        ASSERT_EQ(again.clientCerts.size(), 2U);
        CertInfo const* const stored = again.GetClientCert(anna.fingerprint);
        ASSERT_NE(stored, nullptr);
        EXPECT_EQ(stored->pin, anna.pin);
        CertInfo& chosen = again.GetProfile("p")->fileCert;
        EXPECT_EQ(chosen.commonName, "Anna");
        EXPECT_EQ(chosen.pin, anna.pin);
        EXPECT_EQ(log.Has("Cert file pin code is null by system decrypt"), !last);
        again.Save();
        if (last) {
            EXPECT_TRUE(again.DeleteClientCert(*stored));
            EXPECT_TRUE(again.DeleteClientCert(outside));
            EXPECT_TRUE(again.clientCerts.empty());
            EXPECT_FALSE(fs::exists(folder / "anna's file"));
            EXPECT_TRUE(fs::exists(folder.parent_path() / "outside")) << "not the store's";
            chosen.pin = "of the container before";
            CertInfo replaced = anna;
            replaced.filePath = folder.parent_path() / "outside";
            EXPECT_TRUE(again.AddClientCert(replaced));
            EXPECT_EQ(chosen.pin, anna.pin);
            broken.filePath = home_ / "import.p12";
            EXPECT_TRUE(again.AddClientCert(broken));
            again.Save();
            std::string const text = fileText();
            EXPECT_EQ(text.find(broken.fingerprint), text.rfind(broken.fingerprint));
        }
    }
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
    std::vector const offered{SupportedAuthType::kOauth, SupportedAuthType::kPwd};
    EXPECT_TRUE(profile.GetSupportedAuthType(offered));
    EXPECT_EQ(profile.supportedAuthTypes, offered);
    int const converted[] = {0, 1, 5, 3, 0, 0};
    for (int old = 0; old < 6; ++old) {
        EXPECT_EQ(static_cast<int>(ConvertOldAuthType(old)), converted[old]);
    }
}

TEST(CertDecode, Escapes) {
    std::pair<std::string, char const*> const cases[] = {
        {"", ""},
        {"CN=Anna\\", "CN=Anna\\"},
        {"CN=\\4", "CN=\\4"},
        {"CN=\\E5\\bc\\A0,O=x", "CN=张,O=x"},
        {"CN=a\\,b", "CN=a\\,b"},
        {"CN=\\\\41", "CN=\\41"},
    };
    for (auto const& [text, decoded] : cases) {
        EXPECT_EQ(CertDecode(text), decoded);
        EXPECT_EQ(IsCertEncoded(text), text != decoded) << text;
    }
}

}  // namespace
}  // namespace zorvanelink::ui

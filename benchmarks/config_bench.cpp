// What the settings cost at the start and at each change, with as much in them as they hold, and
// what masking costs a large start message on its way into the log.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "benchmarks/bench_home.h"
#include "benchmarks/bench_table.h"
#include "benchmarks/micro_bench.h"
#include "components/cert/pkcs12.h"
#include "components/utils/log_filter.h"
#include "components/utils/sensitive_value.h"
#include "core/clmsg_json.h"
#include "tools/support/files.h"
#include "tools/support/pkcs12_maker.h"
#include "ui/config/config.h"

namespace {

using namespace zorvanelink;
using components::utils::EncodeSensitiveValue;

constexpr int kGatewaysOfAProfile = 8;
constexpr std::size_t kStartMessageBytes = 16 * 1024;
constexpr double kLoadLimitMs = 250;
constexpr double kSaveLimitMs = 100;
constexpr double kFilterLimitMs = 1;

template <class Work>
double milliseconds(Work const& work) {
    return 1000 * bench::SecondsPerCall(work);
}

void require(bool good, char const* what) {
    if (!good) {
        std::fprintf(stderr, "%s\n", what);
        std::exit(2);
    }
}

void addCerts(ui::Config& config, std::string const& folder) {
    for (std::size_t i = 0; i < ui::Config::kMaxClientCertNum; ++i) {
        std::string const number = std::to_string(i);
        CertInfo cert;
        cert.filePath = folder + "/import.p12";
        cert.pin = EncodeSensitiveValue("pin " + number);
        test::WriteFile(cert.filePath, test::MakePkcs12({.subject = {{"CN", "User " + number}},
                                                         .password = "pin " + number}));
        require(components::utils::ParsePkcs12Cert(cert, false) == components::utils::kPkcs12Ok &&
                    config.AddClientCert(cert),
                "certificate not made");
    }
}

void addProfiles(ui::Config& config) {
    auto cert = config.clientCerts.begin();
    for (std::size_t i = 0; i < ui::Config::kMaxConfigNum; ++i) {
        std::string const number = std::to_string(i);
        auto const profile = std::make_shared<ui::Profile>();
        profile->name = "Branch office " + number;
        profile->server = "vpn" + number + ".example.net";
        profile->authType = ui::SupportedAuthType::kPwdWithCert;
        profile->userName = "ada";
        profile->password = EncodeSensitiveValue("word " + number);
        profile->rememberPassword = true;
        profile->fileCert = cert->second;
        cert = std::next(cert) == config.clientCerts.end() ? config.clientCerts.begin()
                                                           : std::next(cert);
        for (int gateway = 0; gateway < kGatewaysOfAProfile; ++gateway) {
            std::string const place = std::to_string(gateway);
            profile->gatewayList["gateway " + place] = {"192.0.2." + place, 8001, 443};
            profile->clusterList["198.51.100." + place] = {"198.51.100." + place, 443};
        }
        require(config.AddProfile(profile, false), "profile not added");
    }
}

std::string startMessage() {
    core::sslvpn::CLMsgStartData start;
    start.profileName = "Branch office 0";
    start.server = "vpn0.example.net";
    start.authType = common::SupportedAuthType::kPwdWithCert;
    start.user = "ada";
    start.encryptedPassword = EncodeSensitiveValue("word 0");
    start.encryptedPinCode = EncodeSensitiveValue("pin 0");
    for (std::string message; message.size() < kStartMessageBytes;) {
        std::string const place = std::to_string(start.gatewayList.size());
        start.gatewayList["gateway " + place] = {"192.0.2." + place, "8001", "443"};
        message = core::sslvpn::CLMsgJson::BuildStart(start);
    }
    return core::sslvpn::CLMsgJson::BuildStart(start);
}

}  // namespace

int main() {
    bench::BenchHome const home;
    ui::Config config;
    addCerts(config, home.Path());
    addProfiles(config);
    bench::BenchTable table("Settings, 32 profiles and 16 certificates");
    table.AddAtMost("save", milliseconds([&] {
                        config.Save();
                        return 0;
                    }),
                    "ms", kSaveLimitMs);
    table.AddAtMost("load", milliseconds([&] {
                        ui::Config loaded;
                        loaded.Load();
                        require(loaded.profiles.size() == ui::Config::kMaxConfigNum &&
                                    loaded.clientCerts.size() == ui::Config::kMaxClientCertNum,
                                "not everything was loaded");
                        return 0;
                    }),
                    "ms", kLoadLimitMs);
    std::string const message = startMessage();
    table.AddAtMost("start message masked, 16 KiB", milliseconds([&] {
                        return components::utils::FilterJsonStr(components::utils::g_filter_word,
                                                                message);
                    }),
                    "ms", kFilterLimitMs);
    return table.Print();
}

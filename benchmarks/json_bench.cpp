// Records built and parsed a second, for the messages that come often or are large.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"

namespace {

using namespace zorvanelink::core::sslvpn;
using Clock = std::chrono::steady_clock;

constexpr auto kRunTime = std::chrono::milliseconds(300);
constexpr int kBatch = 64;

struct BenchRow {
    std::string name;
    double perSecond = 0;
    std::size_t bytes = 0;  // of the message
};

template <class Work>
double ratePerSecond(Work work) {
    auto const begin = Clock::now();
    long rounds = 0;
    auto elapsed = Clock::duration::zero();
    while (elapsed < kRunTime) {
        for (int i = 0; i < kBatch; ++i) {
            work();
        }
        rounds += kBatch;
        elapsed = Clock::now() - begin;
    }
    return static_cast<double>(rounds) / std::chrono::duration<double>(elapsed).count();
}

template <class Json, class Record, class Build>
void measure(std::vector<BenchRow>& rows, std::string const& name, Record const& record,
             Build build) {
    std::string const message = build(record);
    std::size_t used = 0;  // keeps the work from being optimised away
    rows.push_back(
        {name + ", built", ratePerSecond([&] { used += build(record).size(); }), message.size()});
    rows.push_back({name + ", parsed", ratePerSecond([&] {
                        Record read;
                        used += Json::Parse(message, &read) ? 1 : 0;
                    }),
                    message.size()});
    if (used == 0) {
        std::abort();
    }
}

CLMsgReplyNetConfigData netConfig(int routes) {
    CLMsgReplyNetConfigData net;
    net.profileName = "office";
    net.vnicName = "zl0";
    net.clientPrivateIP = "10.1.0.7";
    net.dnsList = {"10.1.0.53", "10.1.0.54"};
    for (int i = 0; i < routes; ++i) {
        net.routeList.push_back({"10.2." + std::to_string(i) + ".0", 24, i});
    }
    return net;
}

CLMsgStartData start() {
    CLMsgStartData start;
    start.userDataPath = "/home/ada/.local/share/zlink";
    start.profileName = "office";
    start.server = "vpn.example.net";
    start.port = 443;
    start.authType = zorvanelink::common::SupportedAuthType::kPwd;
    start.user = "ada";
    start.encryptedPassword = std::string(64, 'A');
    start.pkcs12CertFileData = std::string(4096, 'B');
    for (int i = 0; i < 8; ++i) {
        std::string const number = std::to_string(i);
        start.gatewayList["gateway " + number] = {"192.0.2." + number, "8001", "443"};
    }
    return start;
}

std::vector<BenchRow> RunJsonBench() {
    std::vector<BenchRow> rows;
    auto const reply = [](auto const& record) { return CLMsgReplyJson::Build(record); };
    measure<CLMsgReplyJson>(rows, "netconfig, 100 routes", netConfig(100), reply);

    CLMsgReplyTunnelStatisticsData statistics;
    statistics.profileName = "office";
    statistics.inbound_bytes = 123456789012;
    statistics.inbound_comp_ratio = 12.5F;
    measure<CLMsgReplyJson>(rows, "tunnelStatistics", statistics, reply);

    CLMsgCommonReplyData status;
    status.profileName = "office";
    status.statusCode = MsgCode::CONNECTING;
    measure<CLMsgReplyJson>(rows, "connectStatus", status, reply);

    measure<CLMsgJson>(rows, "start", start(),
                       [](CLMsgStartData const& data) { return CLMsgJson::BuildStart(data); });
    return rows;
}

}  // namespace

int main() {
    for (BenchRow const& row : RunJsonBench()) {
        std::printf("%-32s %10.0f /s %8zu bytes %9.1f MB/s\n", row.name.c_str(), row.perSecond,
                    row.bytes, row.perSecond * static_cast<double>(row.bytes) / 1e6);
    }
    return 0;
}

// Records built and parsed a second, for the messages that come often or are large, beside the JSON
// library alone: a record should cost little more than the text that carries it.
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>

#include "benchmarks/bench_table.h"
#include "benchmarks/micro_bench.h"
#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"

namespace {

using namespace zorvanelink::core::sslvpn;
using zorvanelink::bench::BenchTable;
using zorvanelink::bench::SecondsPerCall;

// Of the library's own speed on the same text.
constexpr double kLeastOfLibrary = 0.25;

template <class Json, class Record, class Build>
void measure(BenchTable& table, std::string const& name, Record const& record, Build build) {
    std::string const message = build(record);
    rapidjson::Document document;
    document.Parse(message.data(), message.size());
    auto const per_second = [](auto const& work) { return 1 / SecondsPerCall(work); };
    double const library_writes = per_second([&] {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        return buffer.GetSize();
    });
    double const library_reads = per_second([&] {
        rapidjson::Document read;
        read.Parse(message.data(), message.size());
        return read.MemberCount();
    });
    table.AddAtLeast(name + ", built", per_second([&] { return build(record).size(); }), "/s",
                     library_writes, kLeastOfLibrary);
    table.AddAtLeast(name + ", parsed", per_second([&] {
                         Record read;
                         return Json::Parse(message, &read);
                     }),
                     "/s", library_reads, kLeastOfLibrary);
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

}  // namespace

int main() {
    BenchTable table("Messages, beside the JSON library alone");
    auto const reply = [](auto const& record) { return CLMsgReplyJson::Build(record); };
    measure<CLMsgReplyJson>(table, "netconfig, 100 routes", netConfig(100), reply);

    CLMsgReplyTunnelStatisticsData statistics;
    statistics.profileName = "office";
    statistics.inbound_bytes = 123456789012;
    statistics.inbound_comp_ratio = 12.5F;
    measure<CLMsgReplyJson>(table, "tunnelStatistics", statistics, reply);

    CLMsgCommonReplyData status;
    status.profileName = "office";
    status.statusCode = MsgCode::CONNECTING;
    measure<CLMsgReplyJson>(table, "connectStatus", status, reply);

    measure<CLMsgJson>(table, "start", start(),
                       [](CLMsgStartData const& data) { return CLMsgJson::BuildStart(data); });
    return table.Print();
}

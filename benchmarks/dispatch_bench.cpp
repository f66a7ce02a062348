// Messages of the service handled a second on the GUI's thread, from the text to its effect on the
// connection's state; without widgets, and with the log at its usual level.
#include <QCoreApplication>

#include "benchmarks/bench_home.h"
#include "benchmarks/bench_table.h"
#include "benchmarks/micro_bench.h"
#include "core/clmsg_reply_json.h"
#include "tools/support/no_prompts.h"
#include "ui/session/session.h"

namespace {

using namespace zorvanelink;
using namespace zorvanelink::ui;
using core::sslvpn::CLMsgReplyJson;

// A flood of 10,000 statuses must not hold the window for a second.
constexpr double kLeastStatuses = 10000;

class NoLink : public components::ipc::IPC {};

double messagesPerSecond(Session& session, std::string const& json) {
    return 1 / bench::SecondsPerCall([&] {
               session.Receive(json);
               return 0;
           });
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication const application(argc, argv);
    bench::BenchHome const home;

    Config config;
    auto const profile = std::make_shared<Profile>();
    profile->name = "Head office";
    config.AddProfile(profile, true);
    test::NoPrompts prompts;
    ServiceLink link([] { return std::make_shared<NoLink>(); }, {});
    Session session({config, prompts, link, nullptr});
    session.state.currentProfileName = profile->name;

    core::sslvpn::CLMsgCommonReplyData status;
    status.profileName = profile->name;
    status.statusCode = common::MsgCode::RECONNECTING;
    core::sslvpn::CLMsgReplyTunnelStatisticsData statistics;
    statistics.profileName = profile->name;

    bench::BenchTable table("Dispatch on the GUI's thread");
    table.AddAtLeast("statuses handled", messagesPerSecond(session, CLMsgReplyJson::Build(status)),
                     "/s", kLeastStatuses, 1.0);
    table.AddAtLeast("statistics handled",
                     messagesPerSecond(session, CLMsgReplyJson::Build(statistics)), "/s",
                     kLeastStatuses, 1.0);
    return table.Print();
}

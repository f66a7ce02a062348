// Messages of the service handled a second on the GUI's thread, from the text to its effect on the
// connection's state; without widgets, and with the log at its usual level.
#include <QCoreApplication>

#include "benchmarks/bench_home.h"
#include "benchmarks/bench_table.h"
#include "benchmarks/micro_bench.h"
#include "core/clmsg_reply_json.h"
#include "tools/support/no_prompts.h"
#include "ui/session/message_dispatcher.h"

namespace {

using namespace zorvanelink;
using namespace zorvanelink::ui;
using core::sslvpn::CLMsgReplyJson;

// A flood of 10,000 statuses must not hold the window for a second.
constexpr double kLeastStatuses = 10000;

class NoLink : public components::ipc::IPC {};

double messagesPerSecond(MessageDispatcher& dispatcher, std::string const& json) {
    return 1 / bench::SecondsPerCall([&] {
               dispatcher.ProcessServiceMsg(json);
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
    ConnectionState state;
    state.currentProfileName = profile->name;
    test::NoPrompts prompts;
    StatusUpdater updater(state);
    ServiceLink link([] { return std::make_shared<NoLink>(); }, {});
    ConnectFlow flow({state, updater, config, link, prompts, nullptr,
                      [&](std::string const& name) { return name == profile->name; }});
    SessionDialogs dialogs;
    FailurePresenter failures(state, flow, prompts, dialogs, nullptr);
    StatusHandler statuses({state, updater, flow, failures, config, prompts, dialogs, nullptr});
    MessageDispatcher dispatcher(state, statuses, failures, config);

    core::sslvpn::CLMsgCommonReplyData status;
    status.profileName = profile->name;
    status.statusCode = common::MsgCode::RECONNECTING;
    core::sslvpn::CLMsgReplyTunnelStatisticsData statistics;
    statistics.profileName = profile->name;

    bench::BenchTable table("Dispatch on the GUI's thread");
    table.AddAtLeast("statuses handled",
                     messagesPerSecond(dispatcher, CLMsgReplyJson::Build(status)), "/s",
                     kLeastStatuses, 1.0);
    table.AddAtLeast("statistics handled",
                     messagesPerSecond(dispatcher, CLMsgReplyJson::Build(statistics)), "/s",
                     kLeastStatuses, 1.0);
    return table.Print();
}

// zvl-simservice: the backend service as the client sees it, with a made-up gateway behind it.
#include <fmt/format.h>

#include <cstdio>

#include "components/logger/logger.h"
#include "tools/simservice/control.h"
#include "tools/simservice/profile_writer.h"
#include "tools/simservice/server.h"

namespace {

using namespace zorvanelink::simservice;
using zorvanelink::components::logger::Logger;

constexpr int kFailure = 1;
constexpr int kBadInput = 2;
constexpr char kVersion[] = "1.0.0";

int complain(int code, std::string const& text) {
    std::fputs(fmt::format("zvl-simservice: {}\n", text).c_str(), stderr);
    return code;
}

void setUpLog(Options const& options) {
    Logger::enable_console_log_ = false;
    Logger::enable_file_log_ = !options.log_dir.empty();
    Logger::SetDefaultLogPath(options.log_dir);
    Logger::SetDefaultLogName("simservice");
}

void greet(Server const& server, Scenario const& scenario, Terminal& terminal) {
    terminal.Say(fmt::format("simulated service on 127.0.0.1:{}", server.Port()));
    if (!scenario.description.empty()) {
        terminal.Say(scenario.description);
    }
    for (auto const& user : scenario.users) {
        terminal.Say(fmt::format("  {} logs in as {}", user.profile, user.name));
    }
}

int serve(Options const& options, Scenario const& scenario) {
    HoldSignals();
    setUpLog(options);
    EventLoop loop;
    Terminal terminal(options.quiet);
    Recorder recorder(loop);
    if (!options.record.empty() && !recorder.Open(options.record)) {
        return complain(kFailure, fmt::format("{}: cannot be written", options.record));
    }
    Server server(options, scenario, loop, terminal, recorder);
    std::string error;
    ControlChannel control(loop, {[&](std::string const& line) { return server.Order(line); },
                                  [&](int signal) { server.OnSignal(signal); },
                                  [&](std::string_view text) { terminal.Print(text); }});
    if (!server.Start(error) || !control.Start(options.control, error)) {
        return complain(kFailure, error);
    }
    greet(server, scenario, terminal);
    loop.Run();
    server.Stop();
    terminal.Say("goodbye");
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    Scenario scenario;
    std::string error;
    if (!ParseOptions({argv + 1, argv + argc}, options, error)) {
        return complain(kBadInput, error);
    }
    if (options.help || options.version) {
        std::fputs(options.help ? HelpText().c_str() : fmt::format("{}\n", kVersion).c_str(),
                   stdout);
        return 0;
    }
    if (options.scenario.empty()) {
        scenario = BuiltInScenario();
    } else if (!LoadScenario(options.scenario, scenario, error)) {
        return complain(kBadInput, error);
    }
    if (options.write_profile.empty()) {
        return serve(options, scenario);
    }
    if (!WriteProfile(scenario, options.write_profile, options.force, error)) {
        return complain(kFailure, error);
    }
    return 0;
}

#include "tools/simservice/options.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "tools/simservice/action.h"

namespace zorvanelink::simservice {
namespace {

struct TextOption {
    std::string_view name;
    std::string Options::*value;
};
constexpr std::array<TextOption, 6> kTextOptions{{
    {"--scenario", &Options::scenario},
    {"--record", &Options::record},
    {"--port-file", &Options::port_file},
    {"--log-dir", &Options::log_dir},
    {"--control", &Options::control},
    {"--write-profile", &Options::write_profile},
}};

struct Switch {
    std::string_view name;
    bool Options::*value;
};
constexpr std::array<Switch, 4> kSwitches{{
    {"--force", &Options::force},
    {"--quiet", &Options::quiet},
    {"--help", &Options::help},
    {"--version", &Options::version},
}};

constexpr std::string_view kPort = "--port";
constexpr int kHighestPort = 65534;

template <class Table>
auto const* findRow(Table const& table, std::string_view name) {
    auto const row = std::find_if(table.begin(), table.end(),
                                  [&](auto const& known) { return known.name == name; });
    return row == table.end() ? nullptr : &*row;
}

std::string unknownOption(std::string_view name) {
    std::vector<std::string_view> names{kPort};
    for (auto const& row : kTextOptions) {
        names.push_back(row.name);
    }
    for (auto const& row : kSwitches) {
        names.push_back(row.name);
    }
    auto const nearest = NearestWord(name, names);
    return nearest.empty() ? fmt::format("unknown option {}, try --help", name)
                           : fmt::format("unknown option {}, did you mean {}?", name, nearest);
}

bool parsePort(std::string const& text, std::uint16_t& port) {
    int value = 0;
    auto const [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (problem != std::errc() || end != text.data() + text.size() || value < 1 ||
        value > kHighestPort) {
        return false;
    }
    port = static_cast<std::uint16_t>(value);
    return true;
}

}  // namespace

bool ParseOptions(std::vector<std::string> const& arguments, Options& options, std::string& error) {
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        auto const equals = arguments[at].find('=');
        auto const name = arguments[at].substr(0, equals);
        if (auto const* const row = findRow(kSwitches, name)) {
            if (equals != std::string::npos) {
                error = fmt::format("{} takes no value", name);
                return false;
            }
            options.*row->value = true;
            continue;
        }
        auto const* const row = findRow(kTextOptions, name);
        if (row == nullptr && name != kPort) {
            error = unknownOption(name);
            return false;
        }
        if (equals == std::string::npos && at + 1 == arguments.size()) {
            error = fmt::format("{} needs a value", name);
            return false;
        }
        auto const value =
            equals == std::string::npos ? arguments[++at] : arguments[at].substr(equals + 1);
        if (value.empty()) {
            error = fmt::format("{} needs a value", name);
            return false;
        }
        if (row != nullptr) {
            options.*row->value = value;
        } else if (!parsePort(value, options.port)) {
            error = fmt::format("--port must be a number from 1 to {}", kHighestPort);
            return false;
        }
    }
    return true;
}

std::string HelpText() {
    return fmt::format(
        R"(zvl-simservice plays the backend service, with a gateway behind it, for the client on this
machine. It opens no tunnel and changes nothing on the system.

usage: zvl-simservice [options]

  --scenario FILE      what the gateway is like (default: a friendly one, built in)
  --record FILE        write every message received, one JSON object a line, secrets masked
  --write-profile DIR  write DIR/AppConfig.ini with a connection for each user, then end
  --force              let --write-profile replace an existing file
  --port N             first port to try (default 35421)
  --port-file PATH     where the client looks for the port (default /tmp//zlinkipc)
  --control PATH       take control lines on this unix socket as well as on standard input
  --log-dir DIR        write the service's own log there (default: no log)
  --quiet              no line an event on the terminal
  --help, --version

The users of a scenario and their passwords are made up: they stand in clear in its file and open
nothing anywhere. Do not put real ones there.

Control lines, each answered with "ok" or "error: ...":
{}
A fault of a scenario is such a line with a moment: {{"on": "online", "after_ms": 500, "do": "vanish"}}.
SIGUSR1 sets off the faults that are "on": "signal"; SIGINT and SIGTERM end the service.
)",
        ActionHelp());
}

}  // namespace zorvanelink::simservice

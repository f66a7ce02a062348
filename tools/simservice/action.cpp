#include "tools/simservice/action.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <nlohmann/json.hpp>
#include <numeric>
#include <optional>
#include <vector>

#include "common/message_catalogue.h"
#include "tools/simservice/routes.h"

namespace zorvanelink::simservice {
namespace {

constexpr int kMaxNumber = 10'000'000;
constexpr int kHarmlessStatus = 40969;  // RCV_FIRST_HEARTBEAT: a client only notes it

enum class Argument { kNone, kNumber, kNumberOrOff, kOnOff, kCode };
// What stands behind the numbers, up to the end of the line.
enum class Tail { kNone, kText, kBraced, kMaybeObject, kMaybeList, kRoute };

struct Form {
    Argument first = Argument::kNone;
    std::optional<int> first_default = std::nullopt;  // none: the argument must be given
    Argument second = Argument::kNone;
    int second_default = 0;
    Tail tail = Tail::kNone;
};

constexpr std::optional<int> kGiven = std::nullopt;
constexpr Form kBare{};
constexpr Form kAmount{Argument::kNumberOrOff};
constexpr Form kSwitch{Argument::kOnOff};
constexpr Form kText{Argument::kNone, kGiven, Argument::kNone, 0, Tail::kText};
constexpr Form kList{Argument::kNone, kGiven, Argument::kNone, 0, Tail::kMaybeList};

struct Row {
    std::string_view name;
    ActionKind kind;
    Form form;
    std::string_view usage;
    std::string_view meaning;
};

constexpr std::array kRows{
    Row{"vanish", ActionKind::kVanish, kBare, "vanish",
        "close the client's connection without a word"},
    Row{"restart",
        ActionKind::kRestart,
        {Argument::kNumber, 500, Argument::kNumber},
        "restart [MS] [PORT]",
        "stop, and start again after MS (500), on PORT if given"},
    Row{"junk", ActionKind::kJunk, kAmount, "junk N|off", "N bytes of junk ahead of every frame"},
    Row{"split", ActionKind::kSplit, kAmount, "split N|off", "send frames in pieces of N bytes"},
    Row{"slow", ActionKind::kSlow, kAmount, "slow MS|off",
        "wait MS after every piece; without split a piece is one byte"},
    Row{"silence", ActionKind::kSilence, kSwitch, "silence on|off",
        "answer nothing, no sign of life either"},
    Row{"hold", ActionKind::kHold, kSwitch, "hold on|off",
        "keep what is sent, and write it as one piece at the end"},
    Row{"flood",
        ActionKind::kFlood,
        {Argument::kNumber, kGiven, Argument::kCode, kHarmlessStatus},
        "flood N [CODE]",
        "N statuses at once"},
    Row{"status",
        ActionKind::kStatus,
        {Argument::kCode, kGiven, Argument::kNone, 0, Tail::kMaybeObject},
        "status CODE [OBJECT]",
        "send one status, by number or by name, with further keys"},
    Row{"message", ActionKind::kMessage, kText, "message ENGLISH [| CHINESE]",
        "a message in the gateway's own words"},
    Row{"disconnect",
        ActionKind::kDisconnect,
        {Argument::kNumber},
        "disconnect REASON",
        "tell why the tunnel ends (1 to 13, 222), and end the session"},
    Row{"reconnect",
        ActionKind::kReconnect,
        {Argument::kNumber, 1000},
        "reconnect [MS]",
        "lose the tunnel and bring it back, MS (1000) a phase"},
    Row{"offline", ActionKind::kOffline, kBare, "offline",
        "end the session from the gateway's side"},
    Row{"route",
        ActionKind::kRoute,
        {Argument::kNone, kGiven, Argument::kNone, 0, Tail::kRoute},
        "route DEST/PREFIX [GATEWAY]",
        "a route that joins later, for a domain"},
    Row{"gateways", ActionKind::kGateways, kList, "gateways [LIST]",
        "tell the gateways of the scenario, or these"},
    Row{"clusters", ActionKind::kClusters, kList, "clusters [LIST]",
        "tell the cluster of the scenario, or this one"},
    Row{"detect-stop", ActionKind::kDetectStop, kText, "detect-stop REASON",
        "no gateway was found, and why"},
    Row{"vnic", ActionKind::kVnic, kSwitch, "vnic on|off",
        "the virtual network card works, or does not"},
    Row{"send",
        ActionKind::kSend,
        {Argument::kNone, kGiven, Argument::kNone, 0, Tail::kBraced},
        "send JSON",
        "send this message as it stands"},
    Row{"state", ActionKind::kState, kBare, "state", "say how things are"},
    Row{"help", ActionKind::kHelp, kBare, "help", "this list"},
    Row{"quit", ActionKind::kQuit, kBare, "quit", "end the service"},
};

std::vector<std::string_view> splitWords(std::string_view line) {
    std::vector<std::string_view> words;
    std::size_t begin = 0;
    while ((begin = line.find_first_not_of(" \t\r\n", begin)) != std::string_view::npos) {
        auto const end = std::min(line.find_first_of(" \t\r\n", begin), line.size());
        words.push_back(line.substr(begin, end - begin));
        begin = end;
    }
    return words;
}

std::optional<int> parseInt(std::string_view word) {
    int value = 0;
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<int> parseArgument(Argument kind, std::string_view word) {
    switch (kind) {
        case Argument::kCode:
            return ParseCode(word);
        case Argument::kOnOff:
            if (word == "on") {
                return 1;
            }
            return word == "off" ? std::optional(0) : std::nullopt;
        case Argument::kNumberOrOff:
            if (word == "off") {
                return 0;
            }
            [[fallthrough]];
        case Argument::kNumber:
            if (auto const value = parseInt(word); value && *value >= 0 && *value <= kMaxNumber) {
                return value;
            }
            return std::nullopt;
        case Argument::kNone:
            break;
    }
    return std::nullopt;
}

// Takes the words of the numbers off the front.
bool parseNumbers(Form const& form, std::vector<std::string_view>& words, Action& action) {
    auto const take = [&](Argument kind, std::optional<int> fallback) {
        if (kind == Argument::kNone || words.empty()) {
            return kind == Argument::kNone ? std::optional(0) : fallback;
        }
        auto const value = parseArgument(kind, words.front());
        words.erase(words.begin());
        return value;
    };
    auto const first = take(form.first, form.first_default);
    auto const second = first ? take(form.second, form.second_default) : std::nullopt;
    action.first = first.value_or(0);
    action.second = second.value_or(0);
    return first && second && (action.kind != ActionKind::kRestart || action.second <= 65534);
}

bool isTail(Tail kind, std::string const& text) {
    auto const json = [&](char open) { return text[0] == open && nlohmann::json::accept(text); };
    switch (kind) {
        case Tail::kNone:
            return text.empty();
        case Tail::kText:
            return !text.empty();
        case Tail::kBraced:
            return text.starts_with('{');
        case Tail::kMaybeObject:
            return text.empty() || json('{');
        case Tail::kMaybeList:
            return text.empty() || json('[');
        case Tail::kRoute: {
            auto const words = splitWords(text);
            core::sslvpn::NetConfigRoute route;
            return !words.empty() && words.size() <= 2 && ParseRoute(words[0], route);
        }
    }
    return false;
}

bool parseForm(Form const& form, std::string_view line, std::vector<std::string_view> words,
               Action& action) {
    words.erase(words.begin());
    if (!parseNumbers(form, words, action)) {
        return false;
    }
    if (!words.empty()) {
        auto const begin = static_cast<std::size_t>(words.front().data() - line.data());
        auto const end = static_cast<std::size_t>(words.back().end() - line.begin());
        action.text = line.substr(begin, end - begin);
    }
    return isTail(form.tail, action.text);
}

}  // namespace

bool ParseAction(std::string_view line, Action& action, std::string& error) {
    auto const words = splitWords(line);
    if (words.empty()) {
        error = "empty line, try help";
        return false;
    }
    auto const* const row = std::find_if(kRows.begin(), kRows.end(), [&](Row const& candidate) {
        return candidate.name == words[0];
    });
    if (row == kRows.end()) {
        std::vector<std::string_view> names;
        std::transform(kRows.begin(), kRows.end(), std::back_inserter(names),
                       [](Row const& known) { return known.name; });
        auto const nearest = NearestWord(words[0], names);
        error = nearest.empty()
                    ? fmt::format("unknown action \"{}\", try help", words[0])
                    : fmt::format("unknown action \"{}\", did you mean \"{}\"?", words[0], nearest);
        return false;
    }
    Action parsed;
    parsed.kind = row->kind;
    if (!parseForm(row->form, line, words, parsed)) {
        error = fmt::format("usage: {}", row->usage);
        return false;
    }
    action = std::move(parsed);
    return true;
}

std::optional<int> ParseCode(std::string_view word) {
    if (auto const number = parseInt(word)) {
        return number;
    }
    auto const rows = common::g_IPCMessageMap.All();
    auto const row = std::ranges::find(rows, word, &common::IPCMessage::symbol);
    return row == rows.end() ? std::nullopt : std::optional(static_cast<int>(row->code));
}

std::string ActionHelp() {
    std::string text;
    for (auto const& row : kRows) {
        text += fmt::format("  {:<28} {}\n", row.usage, row.meaning);
    }
    return text;
}

std::size_t EditDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> above(right.size() + 1);
    std::iota(above.begin(), above.end(), std::size_t{0});
    for (std::size_t row = 0; row < left.size(); ++row) {
        std::size_t diagonal = above[0];
        above[0] = row + 1;
        for (std::size_t column = 0; column < right.size(); ++column) {
            std::size_t const replaced = diagonal + (left[row] == right[column] ? 0 : 1);
            diagonal = above[column + 1];
            above[column + 1] = std::min({replaced, above[column] + 1, above[column + 1] + 1});
        }
    }
    return above.back();
}

}  // namespace zorvanelink::simservice

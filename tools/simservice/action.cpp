#include "tools/simservice/action.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <optional>
#include <vector>

#include "common/message_catalogue.h"

namespace zorvanelink::simservice {
namespace {

constexpr int kMaxNumber = 10'000'000;
constexpr int kHarmlessStatus = 40969;  // RCV_FIRST_HEARTBEAT: a client only notes it

enum class Argument { kNone, kNumber, kNumberOrOff, kOnOff, kCode };

struct Row {
    std::string_view name;
    ActionKind kind;
    Argument first;
    std::optional<int> first_default;  // none: the argument must be given
    Argument second;
    int second_default;
    std::string_view usage;
    std::string_view meaning;
};

constexpr std::array<Row, 14> kRows{{
    {"vanish",
     ActionKind::kVanish,
     Argument::kNone,
     {},
     Argument::kNone,
     0,
     "vanish",
     "close the client's connection without a word"},
    {"restart", ActionKind::kRestart, Argument::kNumber, 500, Argument::kNumber, 0,
     "restart [MS] [PORT]", "stop, and start again after MS (500), on PORT if given"},
    {"junk",
     ActionKind::kJunk,
     Argument::kNumberOrOff,
     {},
     Argument::kNone,
     0,
     "junk N|off",
     "N bytes of junk ahead of every frame"},
    {"split",
     ActionKind::kSplit,
     Argument::kNumberOrOff,
     {},
     Argument::kNone,
     0,
     "split N|off",
     "send frames in pieces of N bytes"},
    {"slow",
     ActionKind::kSlow,
     Argument::kNumberOrOff,
     {},
     Argument::kNone,
     0,
     "slow MS|off",
     "wait MS after every piece; without split a piece is one byte"},
    {"silence",
     ActionKind::kSilence,
     Argument::kOnOff,
     {},
     Argument::kNone,
     0,
     "silence on|off",
     "answer nothing, no sign of life either"},
    {"flood",
     ActionKind::kFlood,
     Argument::kNumber,
     {},
     Argument::kCode,
     kHarmlessStatus,
     "flood N [CODE]",
     "N statuses at once"},
    {"status",
     ActionKind::kStatus,
     Argument::kCode,
     {},
     Argument::kNone,
     0,
     "status CODE",
     "send one status, by number or by name"},
    {"offline",
     ActionKind::kOffline,
     Argument::kNone,
     {},
     Argument::kNone,
     0,
     "offline",
     "end the session from the gateway's side"},
    {"vnic",
     ActionKind::kVnic,
     Argument::kOnOff,
     {},
     Argument::kNone,
     0,
     "vnic on|off",
     "the virtual network card works, or does not"},
    {"send",
     ActionKind::kSend,
     Argument::kNone,
     {},
     Argument::kNone,
     0,
     "send JSON",
     "send this message as it stands"},
    {"state",
     ActionKind::kState,
     Argument::kNone,
     {},
     Argument::kNone,
     0,
     "state",
     "say how things are"},
    {"help", ActionKind::kHelp, Argument::kNone, {}, Argument::kNone, 0, "help", "this list"},
    {"quit", ActionKind::kQuit, Argument::kNone, {}, Argument::kNone, 0, "quit", "end the service"},
}};

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

std::optional<int> parseCode(std::string_view word) {
    if (auto const number = parseInt(word)) {
        return number;
    }
    for (auto const& [code, row] : common::g_IPCMessageMap.All()) {
        if (common::g_IPCMessageMap.Name(row.code) == word) {
            return code;
        }
    }
    return std::nullopt;
}

std::optional<int> parseArgument(Argument kind, std::string_view word) {
    switch (kind) {
        case Argument::kCode:
            return parseCode(word);
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

bool parseNumbers(Row const& row, std::vector<std::string_view> const& words, Action& action) {
    bool const enough = row.first == Argument::kNone || row.first_default || words.size() > 1;
    std::size_t const most =
        1 + (row.first != Argument::kNone ? 1 : 0) + (row.second != Argument::kNone ? 1 : 0);
    if (!enough || words.size() > most) {
        return false;
    }
    std::optional<int> first = row.first_default.value_or(0);
    std::optional<int> second = row.second_default;
    if (words.size() > 1) {
        first = parseArgument(row.first, words[1]);
    }
    if (words.size() > 2) {
        second = parseArgument(row.second, words[2]);
    }
    if (!first || !second) {
        return false;
    }
    action.first = *first;
    action.second = *second;
    return action.kind != ActionKind::kRestart || action.second <= 65534;
}

bool parseText(std::string_view line, Action& action) {
    auto const brace = line.find('{');
    if (brace == std::string_view::npos) {
        return false;
    }
    action.text = line.substr(brace);
    return true;
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
    bool const good = row->kind == ActionKind::kSend ? parseText(line, parsed)
                                                     : parseNumbers(*row, words, parsed);
    if (!good) {
        error = fmt::format("usage: {}", row->usage);
        return false;
    }
    action = std::move(parsed);
    return true;
}

std::string ActionHelp() {
    std::string text;
    for (auto const& row : kRows) {
        text += fmt::format("  {:<20} {}\n", row.usage, row.meaning);
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

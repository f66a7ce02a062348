// What can be done to the simulated gateway from outside: one grammar for the control lines and
// for the faults of a scenario.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zorvanelink::simservice {

enum class ActionKind {
    kVanish,
    kRestart,
    kJunk,
    kSplit,
    kSlow,
    kSilence,
    kHold,
    kFlood,
    kStatus,
    kMessage,
    kDisconnect,
    kReconnect,
    kOffline,
    kRoute,
    kGateways,
    kClusters,
    kDetectStop,
    kVnic,
    kSend,
    kState,
    kHelp,
    kQuit,
};

// `first` and `second` are the numbers of the line, an omitted one has its default, "off" is 0
// and "on" 1. `text` is what follows them: a message, an object, a list.
struct Action {
    ActionKind kind = ActionKind::kHelp;
    int first = 0;
    int second = 0;
    std::string text{};
    bool operator==(Action const&) const = default;
};

// False, with a sentence for the user, when the line is no action.
bool ParseAction(std::string_view line, Action& action, std::string& error);

// Of the catalogue, by its number or its name.
std::optional<int> ParseCode(std::string_view word);

// One line an action: usage and meaning.
std::string ActionHelp();

// The entry of the list that a mistyped word most likely meant; empty when none is near.
template <class List>
std::string NearestWord(std::string_view word, List const& list);
std::size_t EditDistance(std::string_view left, std::string_view right);

template <class List>
std::string NearestWord(std::string_view word, List const& list) {
    std::size_t best = word.size() / 3 + 1 + (word.size() > 3 ? 1 : 0);
    std::string nearest;
    for (std::string_view const candidate : list) {
        if (auto const distance = EditDistance(word, candidate); distance < best) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

}  // namespace zorvanelink::simservice

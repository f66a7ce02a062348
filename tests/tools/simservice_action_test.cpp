#include <gmock/gmock.h>

#include "tools/simservice/action.h"
#include "tools/simservice/options.h"

namespace zorvanelink::simservice {
namespace {

TEST(Action, LinesThatAreActions) {
    struct {
        char const* line;
        Action action;
    } const table[]{
        {"  restart\r", {ActionKind::kRestart, 500}},
        {"restart 20 36000", {ActionKind::kRestart, 20, 36000}},
        {"split off", {ActionKind::kSplit, 0}},
        {"silence on", {ActionKind::kSilence, 1}},
        {"flood 10000", {ActionKind::kFlood, 10000, 40969}},
        {"flood 3 RECONNECTING", {ActionKind::kFlood, 3, 41007}},
        {"status -3", {ActionKind::kStatus, -3}},
        {"status -99 {\"a  b\": 1}", {ActionKind::kStatus, -99, 0, "{\"a  b\": 1}"}},
        {"send {\"a b\": 1}", {ActionKind::kSend, 0, 0, "{\"a b\": 1}"}},
        {"message  Go  away | \xe8\xb5\xb0\n",
         {ActionKind::kMessage, 0, 0, "Go  away | \xe8\xb5\xb0"}},
        {"route fd00::/16 fd00::1", {ActionKind::kRoute, 0, 0, "fd00::/16 fd00::1"}},
        {"gateways", {ActionKind::kGateways}},
        {"clusters [1, 2]", {ActionKind::kClusters, 0, 0, "[1, 2]"}},
    };
    for (auto const& [line, expected] : table) {
        Action action;
        std::string error;
        EXPECT_TRUE(ParseAction(line, action, error)) << line << ": " << error;
        EXPECT_EQ(action, expected) << line;
    }
}

TEST(Action, LinesThatAreNone) {
    char const* const lines[]{"",
                              "  ",
                              "vanish now",
                              "junk -1",
                              "junk 99999999999",
                              "split 1x",
                              "silence maybe",
                              "status NOPE",
                              "restart 1 2 3",
                              "restart 1 65535",
                              "send text",
                              "VANISH",
                              "vanish {}",
                              "status -3 []",
                              "message ",
                              "disconnect 2 {}",
                              "route 10.0.0.0",
                              "route 10.0.0.0/8/8",
                              "route 10.0.0.0/129",
                              "gateways [}"};
    for (auto const* const line : lines) {
        Action action{ActionKind::kQuit, 1, 2, "untouched"};
        auto const before = action;
        std::string error;
        EXPECT_FALSE(ParseAction(line, action, error)) << line;
        EXPECT_FALSE(error.empty()) << line;
        EXPECT_EQ(action, before) << line;
    }
}

TEST(Options, BothFormsOfAValueAndMistakes) {
    Options options;
    std::string error;
    ASSERT_TRUE(ParseOptions({"--port=36000", "--record", "r.jsonl", "--quiet"}, options, error));
    EXPECT_EQ(options.port, 36000);
    EXPECT_EQ(options.record, "r.jsonl");
    EXPECT_TRUE(options.quiet);

    struct {
        std::vector<std::string> arguments;
        char const* complaint;
    } const table[]{
        {{"--reord", "x"}, "did you mean --record?"},
        {{"--port", "0"}, "from 1 to 65534"},
        {{"--port", "65535"}, "from 1 to 65534"},
        {{"--port", "80x"}, "from 1 to 65534"},
        {{"--record"}, "needs a value"},
        {{"--record="}, "needs a value"},
        {{"--quiet=yes"}, "takes no value"},
        {{"file.json"}, "unknown option"},
    };
    for (auto const& [arguments, complaint] : table) {
        EXPECT_FALSE(ParseOptions(arguments, options, error)) << arguments[0];
        EXPECT_THAT(error, testing::HasSubstr(complaint));
    }
}

}  // namespace
}  // namespace zorvanelink::simservice

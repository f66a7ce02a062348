#include <gmock/gmock.h>

#include <filesystem>
#include <set>

#include "components/utils/address.h"
#include "tools/simservice/scenario.h"

namespace zorvanelink::simservice {
namespace {

TEST(Scenario, ShippedOnesAndTheBuiltInOneLoad) {
    int count = 0;
    for (auto const& entry :
         std::filesystem::directory_iterator(ZVL_TEST_DATA "/../../tools/simservice/scenarios")) {
        if (entry.path().extension() != ".json") {
            continue;
        }
        ++count;
        Scenario scenario;
        std::string error;
        EXPECT_TRUE(LoadScenario(entry.path(), scenario, error)) << error;
        EXPECT_FALSE(scenario.users.empty()) << entry.path();
    }
    EXPECT_GE(count, 9);
    EXPECT_FALSE(BuiltInScenario().users.empty());
}

TEST(Scenario, TakesWhatIsGivenAndKeepsTheRest) {
    Scenario scenario;
    std::string error;
    ASSERT_TRUE(ParseScenario(R"({
        "users": [{"name": "a", "password": "b"}],
        "vnic": false,
        "netconfig": {"prefix": 16, "dnsList": ["192.0.2.1"], "routeList": ["192.0.2.0/16",
            {"destination": "198.51.0.0", "prefix": 15, "metric": 7}]},
        "routes": 100000,
        "authTypes": ["oauth", "onlyUkey"],
        "gateways": [{"name": "x", "addr": "192.0.2.3"}, {"name": "x", "addr": "192.0.2.4"}],
        "session": {"redirectUrl": "http://127.0.0.1/"},
        "warnings": [61441],
        "counters": {"inbound_bytes": 0.5},
        "faults": [{"on": "online", "after_ms": 5, "times": 0, "do": "restart 20 36000"}]})",
                              "file", scenario, error))
        << error;
    EXPECT_EQ(scenario.users.at(0).profile, "a");
    EXPECT_FALSE(scenario.vnic);
    EXPECT_EQ(scenario.netconfig.prefix, 16);
    EXPECT_EQ(scenario.netconfig.clientPrivateIP, "10.8.0.2");
    EXPECT_EQ(scenario.netconfig.dnsList, std::vector<std::string>{"192.0.2.1"});
    std::vector<core::sslvpn::NetConfigRoute> const routes{{"192.0.2.0", 16, 1},
                                                           {"198.51.0.0", 15, 7}};
    auto& routeList = scenario.netconfig.routeList;
    EXPECT_EQ(std::vector(routeList.begin(), routeList.begin() + 2), routes);
    for (auto const* const list : {&routeList, &scenario.netconfig.ipv6RouteList}) {
        std::set<std::string> destinations;
        for (auto const& route : *list) {
            destinations.insert(components::utils::NormalizeAddr(route.destination));
        }
        EXPECT_EQ(destinations.size(), list->size());
        EXPECT_GE(list->size(), 100000U);
        EXPECT_EQ(destinations.count(""), 0U);
    }
    EXPECT_EQ(scenario.auth_types, (std::vector{common::SupportedAuthType::kOauth,
                                                common::SupportedAuthType::kOnlyUkey}));
    EXPECT_EQ(scenario.gateways.at("x").addr, "192.0.2.3");
    EXPECT_EQ(scenario.session.redirectUrl, "http://127.0.0.1/");
    EXPECT_EQ(scenario.warnings, std::vector<int>{61441});
    EXPECT_EQ(scenario.counters.inbound_bytes, 0.5);
    ASSERT_EQ(scenario.faults.size(), 1U);
    EXPECT_EQ(scenario.faults[0].times, 0);
    EXPECT_EQ(scenario.faults[0].action, (Action{ActionKind::kRestart, 20, 36000, ""}));
}

struct BadText {
    char const* text;
    char const* complaint;
};

TEST(Scenario, MistakesAreNamedWhereTheyStand) {
    BadText const table[]{
        {"", "f:1: syntax error"},
        {"[]", "f:1: a scenario is one JSON object"},
        {"{\n\"vnic\": true,\n}", "f:3: syntax error"},
        {"{\n\n\"vnicc\": true}", "f:3: key \"vnicc\": unknown key, did you mean \"vnic\"?"},
        {"{\n\"vnic\": 1}", "f:2: key \"vnic\": must be true or false"},
        {"{\n\"vnic\": true,\n\"vnic\": false}", "f:3: key \"vnic\": given twice"},
        {"{\"users\": [\n{\"name\": \"a\", \"password\": \"b\"},\n{\"name\": \"c\"}]}",
         "f:3: key \"users[1]\": \"password\" is missing"},
        {"{\"users\": [{\"name\": \"a\",\n\"pasword\": \"b\"}]}",
         "f:2: key \"users[0].pasword\": unknown key, did you mean \"password\"?"},
        {"{\"users\": [{\"name\": \"a\", \"password\": \"b\", \"profile\": \"x;y\"}]}",
         "key \"users[0].profile\": must be"},
        {"{\"users\": [{\"name\": \"a\", \"password\": \"b\"}, {\"name\": \"a\", \"password\": "
         "\"c\"}]}",
         "two users with one profile"},
        {"{\"netconfig\": {\"prefix\": 33}}", "must be a whole number from 0 to 32"},
        {"{\"netconfig\": {\"prefix\": 18446744073709551615}}", "must be a whole number"},
        {"{\"netconfig\": {\"routeList\": [\"10.0.0.0\"]}}",
         "key \"netconfig.routeList[0]\": must be"},
        {"{\"netconfig\": {\"dnsList\": [\"a\",\n7]}}",
         "f:2: key \"netconfig.dnsList[1]\": must be a text"},
        {"{\"authTypes\": [\"pwd\", \"none\"]}", "key \"authTypes\": \"none\" is no"},
        {"{\"serverCertificate\": \"bad\"}", "must be one of \"good\", \"not-yet-valid\""},
        {"{\"clusters\": [{\"port\": 1}]}", "key \"clusters[0]\": \"server\" is missing"},
        {"{\"faults\": [{\"on\": \"later\", \"do\": \"quit\"}]}", "key \"faults[0].on\": must be"},
        {"{\"faults\": [{\"on\": \"link\",\n\"do\": \"vanis\"}]}",
         "f:2: key \"faults[0].do\": unknown action \"vanis\", did you mean \"vanish\"?"},
    };
    for (auto const& [text, complaint] : table) {
        Scenario scenario;
        scenario.description = "before";
        std::string error;
        EXPECT_FALSE(ParseScenario(text, "f", scenario, error)) << text;
        EXPECT_THAT(error, testing::HasSubstr(complaint)) << text;
        EXPECT_EQ(scenario.description, "before");
    }
}

}  // namespace
}  // namespace zorvanelink::simservice

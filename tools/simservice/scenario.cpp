#include "tools/simservice/scenario.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "components/utils/file.h"
#include "tools/simservice/built_in_scenario.h"
#include "tools/simservice/routes.h"
#include "tools/simservice/scenario_reader.h"

namespace zorvanelink::simservice {
namespace {

constexpr int kMaxDelay = 3'600'000;  // ms
constexpr std::size_t kMaxProfileName = 127;
constexpr int kMaxMadeUpRoutes = 1'000'000;

constexpr std::array<std::pair<std::string_view, Moment>, 6> kMoments{{
    {"link", Moment::kLink},
    {"start", Moment::kStart},
    {"code", Moment::kCode},
    {"password", Moment::kPassword},
    {"online", Moment::kOnline},
    {"signal", Moment::kSignal},
}};

constexpr std::array<std::pair<std::string_view, ServerCertificate>, 4> kServerCertificates{{
    {"good", ServerCertificate::kGood},
    {"not-yet-valid", ServerCertificate::kNotYetValid},
    {"expired", ServerCertificate::kExpired},
    {"untrusted", ServerCertificate::kUntrusted},
}};

// The value of a word that must be one of the table's.
template <class Table>
auto valueOf(ObjectReader const& reader, char const* key, std::string const& word,
             Table const& table) {
    auto const* const row = std::find_if(table.begin(), table.end(),
                                         [&](auto const& known) { return known.first == word; });
    if (row == table.end()) {
        std::string words;
        for (auto const& known : table) {
            words += fmt::format("{}\"{}\"", words.empty() ? "" : ", ", known.first);
        }
        reader.Fail(key, fmt::format("must be one of {}", words));
    }
    return row->second;
}

constexpr std::array<std::pair<std::string_view, CodeKind>, 3> kCodeKinds{{
    {"sms", CodeKind::kSms},
    {"email", CodeKind::kEmail},
    {"token", CodeKind::kToken},
}};

core::sslvpn::CLMsgReplyNetConfigData friendlyNetConfig() {
    core::sslvpn::CLMsgReplyNetConfigData data;
    data.tunnelIsTCP = true;
    data.vnicName = "zvl0";
    data.clientPrivateIP = "10.8.0.2";
    data.clientPublicIP = "198.51.100.23";
    data.vnicGatewayIP = "10.8.0.1";
    data.serverPublicIP = "203.0.113.10";
    data.optimalGatewayIP = "203.0.113.10";
    data.optimalGatewayName = "Head office";
    data.prefix = 24;
    data.prefixIPv6 = 64;
    data.routeList = {{"10.8.0.0", 24, 1}, {"10.20.0.0", 16, 1}, {"172.16.0.0", 12, 5}};
    data.dnsList = {"10.8.0.53", "10.8.0.54"};
    return data;
}

void readUsers(ObjectReader& reader, Scenario& scenario) {
    std::set<std::string> profiles;
    reader.ReadList("users", [&](Json const& element, std::string const& path) {
        ObjectReader entry(reader.Text(), element, path);
        User user;
        entry.Read("name", user.name);
        entry.Read("password", user.password);
        user.profile = user.name;
        entry.Read("profile", user.profile);
        entry.Read("server", user.server);
        entry.Read("port", user.port, 1, 65535);
        entry.Read("certificate", user.certificate);
        entry.Read("locked_after", user.locked_after);
        entry.Read("lock_seconds", user.lock_seconds, 1);
        entry.Finish();
        entry.Require(!user.name.empty(), "name");
        entry.Require(!user.password.empty(), "password");
        if (user.profile.empty() || user.profile.size() > kMaxProfileName ||
            user.profile.find_first_of(";/\\\r\n") != std::string::npos) {
            entry.Fail("profile", "must be 1 to 127 bytes without \";\", \"/\" and \"\\\"");
        }
        if (!profiles.insert(user.profile).second) {
            entry.Fail("profile", "two users with one profile");
        }
        scenario.users.push_back(std::move(user));
    });
}

// "10.0.0.0/8", or an object with destination, prefix and metric.
core::sslvpn::NetConfigRoute readRoute(ScenarioText const& text, Json const& element,
                                       std::string const& path) {
    core::sslvpn::NetConfigRoute route;
    route.metric = 1;
    if (element.is_object()) {
        ObjectReader entry(text, element, path);
        entry.Read("destination", route.destination);
        bool const has_prefix = entry.Read("prefix", route.prefix, 0, 128);
        entry.Read("metric", route.metric);
        entry.Finish();
        entry.Require(!route.destination.empty(), "destination");
        entry.Require(has_prefix, "prefix");
        return route;
    }
    if (!element.is_string() || !ParseRoute(element.get<std::string>(), route)) {
        text.Fail(path, "must be \"ADDRESS/PREFIX\" or an object");
    }
    return route;
}

void readRoutes(ObjectReader& reader, char const* key,
                std::vector<core::sslvpn::NetConfigRoute>& routes) {
    std::vector<core::sslvpn::NetConfigRoute> list;
    if (reader.ReadList(key, [&](Json const& element, std::string const& path) {
            list.push_back(readRoute(reader.Text(), element, path));
        })) {
        routes = std::move(list);
    }
}

void readNetConfig(ObjectReader& reader, core::sslvpn::CLMsgReplyNetConfigData& data) {
    reader.Read("isIPv6Channel", data.isIPv6Channel);
    reader.Read("tunnelIsTCP", data.tunnelIsTCP);
    reader.Read("serverType", data.serverType);
    reader.Read("vnicName", data.vnicName);
    reader.Read("clientPrivateIP", data.clientPrivateIP);
    reader.Read("clientPrivateIPv6", data.clientPrivateIPv6);
    reader.Read("clientPublicIP", data.clientPublicIP);
    reader.Read("vnicGatewayIP", data.vnicGatewayIP);
    reader.Read("vnicGatewayIPv6", data.vnicGatewayIPv6);
    reader.Read("serverPublicIP", data.serverPublicIP);
    reader.Read("optimalGatewayIP", data.optimalGatewayIP);
    reader.Read("optimalGatewayName", data.optimalGatewayName);
    reader.Read("prefix", data.prefix, 0, 32);
    reader.Read("prefixIPv6", data.prefixIPv6, 0, 128);
    reader.Read("serviceType", data.serviceType);
    reader.Read("dedicatedTunnel", data.dedicatedTunnel);
    reader.Read("isDefaultRoute", data.isDefaultRoute);
    reader.Read("isDefaultIPv6Route", data.isDefaultIPv6Route);
    readRoutes(reader, "routeList", data.routeList);
    readRoutes(reader, "ipv6RouteList", data.ipv6RouteList);
    reader.Read("dnsList", data.dnsList);
    reader.Read("ipv6DnsList", data.ipv6DnsList);
    reader.Read("winsList", data.winsList);
    reader.Read("bypassIpList", data.bypassIpList);
}

void readSession(ObjectReader& reader, core::sslvpn::CLMsgCommonReplyData& data) {
    reader.Read("redirectUrl", data.redirectUrl);
    reader.Read("redirectUrlTitle", data.redirectUrlTitle);
    reader.Read("resourceListPagePath", data.resourceListPagePath);
    reader.Read("cipherAlg", data.cipherAlg);
    reader.Read("ipCompAlg", data.ipCompAlg);
    reader.Read("sslVersion", data.sslVersion);
    reader.Read("needClearWebCacheWhenOffline", data.needClearWebCacheWhenOffline);
    reader.Read("receivedUserName", data.receivedUserName);
}

void readLogin(ObjectReader& reader, Scenario& scenario) {
    std::vector<std::string> types;
    if (reader.Read("authTypes", types)) {
        scenario.auth_types.clear();
    }
    for (auto const& text : types) {
        auto const type = common::StringToAuthType(text);
        if (!common::IsListableAuthType(static_cast<int>(type))) {
            reader.Fail("authTypes", fmt::format("\"{}\" is no authentication type", text));
        }
        scenario.auth_types.push_back(type);
    }
    if (std::string word; reader.Read("serverCertificate", word)) {
        scenario.server_certificate =
            valueOf(reader, "serverCertificate", word, kServerCertificates);
    }
    reader.ReadObject("thirdParty", [&](ObjectReader& part) {
        part.Read("page", scenario.third_party.page);
        part.Read("after_ms", scenario.third_party.after_ms, 0, kMaxDelay);
        part.Read("server", scenario.third_party.server);
        if (std::string word; part.Read("failure", word)) {
            auto const code = ParseCode(word);
            if (!code) {
                part.Fail("failure", fmt::format("\"{}\" is no code", word));
            }
            scenario.third_party.failure = static_cast<common::MsgCode>(*code);
        }
    });
}

void readSecondFactor(ObjectReader& part, SecondFactorRules& rules) {
    std::string word;
    part.Require(part.Read("kind", word), "kind");
    rules.kind = valueOf(part, "kind", word, kCodeKinds);
    if (part.Read("codes", rules.codes) && rules.codes.empty()) {
        part.Fail("codes", "must hold a code");
    }
    part.Read("prompt", rules.prompt);
    part.Read("account", rules.account);
    part.Read("tries", rules.tries);
    part.Read("resends", rules.resends);
    part.Read("valid_ms", rules.valid_ms, 0, kMaxDelay);
}

void readPolicy(ObjectReader& part, core::sslvpn::UserPasswordComplexity& policy) {
    policy.enableComplexity = true;
    part.Read("minLength", policy.minLength);
    part.Read("capitalLetters", policy.capitalLetters);
    part.Read("smallLetters", policy.smallLetters);
    part.Read("numericCharacters", policy.numericCharacters);
    part.Read("nonAlphanumericLetters", policy.nonAlphanumericLetters);
    part.Read("noIncludeUserName", policy.noIncludeUserName);
}

void readPassword(ObjectReader& part, PasswordRules& rules) {
    rules.told = true;
    part.Read("change", rules.change);
    part.Read("allow", rules.allow);
    part.ReadObject("policy", [&](ObjectReader& inner) { readPolicy(inner, rules.policy); });
    part.Read("history", rules.history);
    part.Read("changeUrl", rules.change_url);
    part.Read("forgotUrl", rules.forgot_url);
    part.Read("passwordDays", rules.password_days);
    part.Read("accountDays", rules.account_days);
    part.Read("answer_ms", rules.answer_ms, 0, kMaxDelay);
}

void readLists(ObjectReader& reader, Scenario& scenario) {
    reader.ReadList("gateways", [&](Json const& element, std::string const& path) {
        ObjectReader entry(reader.Text(), element, path);
        std::string name;
        core::sslvpn::Gateway gateway;
        entry.Require(entry.Read("name", name), "name");
        entry.Read("addr", gateway.addr);
        entry.Read("detectPort", gateway.detectPort);
        entry.Read("sslPort", gateway.sslPort);
        entry.Finish();
        scenario.gateways.emplace(name, std::move(gateway));
    });
    reader.ReadList("clusters", [&](Json const& element, std::string const& path) {
        ObjectReader entry(reader.Text(), element, path);
        core::sslvpn::Server server;
        entry.Require(entry.Read("server", server.addr), "server");
        entry.Read("port", server.port, 0, 65535);
        entry.Finish();
        scenario.clusters.emplace(server.addr, server);
    });
}

void addMadeUpRoutes(ObjectReader& reader, core::sslvpn::CLMsgReplyNetConfigData& data) {
    int count = 0;
    reader.Read("routes", count, 0, kMaxMadeUpRoutes);
    auto const add = [&](std::vector<core::sslvpn::NetConfigRoute>& routes, bool ipv6) {
        auto const made_up = MadeUpRoutes(count, ipv6);
        routes.insert(routes.end(), made_up.begin(), made_up.end());
    };
    add(data.routeList, false);
    add(data.ipv6RouteList, true);
}

void readCounters(ObjectReader& reader, Counters& counters) {
    reader.Read("inbound_bytes", counters.inbound_bytes);
    reader.Read("outbound_bytes", counters.outbound_bytes);
    reader.Read("inbound_packets", counters.inbound_packets);
    reader.Read("outbound_packets", counters.outbound_packets);
    reader.Read("inbound_comp_ratio", counters.inbound_comp_ratio);
    reader.Read("outbound_comp_ratio", counters.outbound_comp_ratio);
    reader.Read("interval_ms", counters.interval_ms, 10, kMaxDelay);
}

void readFaults(ObjectReader& reader, std::vector<Fault>& faults) {
    reader.ReadList("faults", [&](Json const& element, std::string const& path) {
        ObjectReader entry(reader.Text(), element, path);
        Fault fault;
        std::string on;
        std::string line;
        std::string error;
        entry.Read("on", on);
        entry.Read("do", line);
        entry.Read("after_ms", fault.after_ms, 0, kMaxDelay);
        entry.Read("times", fault.times);
        entry.Finish();
        entry.Require(!on.empty(), "on");
        entry.Require(!line.empty(), "do");
        fault.on = valueOf(entry, "on", on, kMoments);
        if (!ParseAction(line, fault.action, error)) {
            entry.Fail("do", error);
        }
        faults.push_back(std::move(fault));
    });
}

void readScenario(ObjectReader& reader, Scenario& scenario) {
    reader.Read("description", scenario.description);
    readUsers(reader, scenario);
    readLogin(reader, scenario);
    reader.ReadObject("secondFactor",
                      [&](ObjectReader& part) { readSecondFactor(part, scenario.second_factor); });
    reader.ReadObject("password",
                      [&](ObjectReader& part) { readPassword(part, scenario.password); });
    readLists(reader, scenario);
    reader.Read("vnic", scenario.vnic);
    reader.ReadObject("netconfig",
                      [&](ObjectReader& part) { readNetConfig(part, scenario.netconfig); });
    addMadeUpRoutes(reader, scenario.netconfig);
    reader.ReadObject("session", [&](ObjectReader& part) { readSession(part, scenario.session); });
    reader.ReadList("warnings", [&](Json const& element, std::string const& path) {
        if (!element.is_number_integer()) {
            reader.Text().Fail(path, "must be the number of a code");
        }
        scenario.warnings.push_back(element.get<int>());
    });
    reader.ReadObject("counters",
                      [&](ObjectReader& part) { readCounters(part, scenario.counters); });
    reader.ReadObject("delays", [&](ObjectReader& part) {
        part.Read("answer_ms", scenario.delays.answer_ms, 0, kMaxDelay);
        part.Read("connecting_ms", scenario.delays.connecting_ms, 0, kMaxDelay);
        part.Read("online_ms", scenario.delays.online_ms, 0, kMaxDelay);
        part.Read("stop_ms", scenario.delays.stop_ms, 0, kMaxDelay);
    });
    readFaults(reader, scenario.faults);
    reader.Finish();
}

}  // namespace

bool ParseScenario(std::string const& text, std::string const& file, Scenario& scenario,
                   std::string& error) {
    try {
        ScenarioText const parsed(text, file);
        Scenario read;
        read.netconfig = friendlyNetConfig();
        ObjectReader reader(parsed, parsed.Root(), "");
        readScenario(reader, read);
        scenario = std::move(read);
        return true;
    } catch (ScenarioError const& complaint) {
        error = complaint.what();
        return false;
    }
}

bool LoadScenario(std::string const& path, Scenario& scenario, std::string& error) {
    std::string text;
    if (!components::utils::ReadContentFromFile(path, text)) {
        error = fmt::format("{}: cannot be read", path);
        return false;
    }
    return ParseScenario(text, path, scenario, error);
}

Scenario BuiltInScenario() {
    Scenario scenario;
    std::string error;
    ParseScenario(kBuiltInScenario, "built-in", scenario, error);
    return scenario;
}

}  // namespace zorvanelink::simservice

// What the simulated gateway is like: read from a JSON file of a dozen lines. Every key has a
// default, so that an empty object is a scenario.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "common/auth_type.h"
#include "core/reply_records.h"
#include "tools/simservice/action.h"

namespace zorvanelink::simservice {

// Of the gateway's made-up user list; the password stands in clear, as in the scenario file.
struct User {
    std::string name;
    std::string password;
    std::string profile;  // name of the connection that --write-profile makes for this user
    std::string server = "vpn.example.com";
    int port = 443;
    // Common name or fingerprint of the user's certificate; empty: with a password, any.
    std::string certificate{};
    int locked_after = 0;  // wrong tries; 0: never
    int lock_seconds = 600;
};

// What the gateway's own certificate gives cause for.
enum class ServerCertificate { kGood, kNotYetValid, kExpired, kUntrusted };

// Login at the page of an outside provider. Without a server of its own it ends well by itself.
struct ThirdParty {
    std::string page = "http://127.0.0.1/login";
    int after_ms = 3000;
    bool server = false;  // pages of our own, where the user says yes or no
    common::MsgCode failure = common::MsgCode::UNSPECIFIED;  // that the login ends with
};

enum class CodeKind { kToken, kSms, kEmail };

// The code that a login wants besides its credentials; none without a kind.
struct SecondFactorRules {
    std::optional<CodeKind> kind;
    std::vector<std::string> codes{"246810"};  // a resend moves on to the next, the last one stays
    std::string prompt;                        // of a token
    std::string account = "a***@example.com";  // that an e-mail goes to
    int tries = 3;                             // wrong codes until the login ends; 0: any number
    int resends = 3;
    int valid_ms = 0;  // 0: for good
};

// What the gateway thinks of its users' passwords.
struct PasswordRules {
    int change = 0;  // kind of change that a login needs first: 1 expired, 2 first login; 0: none
    bool allow = true;  // a change while online
    core::sslvpn::UserPasswordComplexity policy;
    std::vector<std::string> history;  // that may not be used again
    std::string change_url;
    std::string forgot_url;
    int password_days = 0;  // until it is over; 0: not told
    int account_days = 0;
    int answer_ms = 0;
    bool told = false;  // whether the session is told of any of this
};

// Growth a second, and how often it is told.
struct Counters {
    double inbound_bytes = 48'000;
    double outbound_bytes = 9'500;
    double inbound_packets = 52;
    double outbound_packets = 31;
    double inbound_comp_ratio = 12.5;  // per cent
    double outbound_comp_ratio = 8.25;
    int interval_ms = 1000;
};

// Milliseconds.
struct Delays {
    int answer_ms = 50;       // from "start" to CONNECTING
    int connecting_ms = 600;  // from CONNECTING to the verdict on the login
    int online_ms = 400;      // from the verdict to ONLINE
    int stop_ms = 100;        // from "stop" to OFFLINE
};

// What happens on the way of a session, in the order in which it does.
enum class Moment { kLink, kStart, kCode, kPassword, kOnline, kSessionEnd, kLinkEnd, kSignal };

struct Fault {
    Moment on = Moment::kLink;
    int after_ms = 0;
    int times = 1;  // how often it may happen; 0: always
    Action action;
};

struct Scenario {
    std::string description;
    std::vector<User> users;
    std::vector<common::SupportedAuthType> auth_types{common::SupportedAuthType::kPwd};
    ServerCertificate server_certificate = ServerCertificate::kGood;
    ThirdParty third_party;
    SecondFactorRules second_factor;
    PasswordRules password;
    bool vnic = true;  // whether the virtual network card is usable
    core::sslvpn::CLMsgReplyNetConfigData netconfig;
    // What the key exchange tells; nothing is sent when all of it is empty.
    core::sslvpn::CLMsgCommonReplyData session;
    // Told with the key exchange; an empty one is not.
    std::map<std::string, core::sslvpn::Gateway> gateways;  // by name
    std::map<std::string, core::sslvpn::Server> clusters;   // by address
    std::vector<int> warnings;                              // codes that come with ONLINE
    Counters counters;
    Delays delays;
    std::vector<Fault> faults;
};

// `file` is how errors call the text. False, with "FILE:LINE: KEY: what is wrong" in `error`.
bool ParseScenario(std::string const& text, std::string const& file, Scenario& scenario,
                   std::string& error);
bool LoadScenario(std::string const& path, Scenario& scenario, std::string& error);

// The scenario that runs when none is named.
Scenario BuiltInScenario();

}  // namespace zorvanelink::simservice

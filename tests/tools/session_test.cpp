// The gateway's side of the conversation, without a socket and on a clock that the test moves, and
// the record of it.
#include <gmock/gmock.h>

#include "components/utils/file.h"
#include "components/utils/sensitive_value.h"
#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"
#include "tests/support/test_environment.h"
#include "tests/tools/fake_scheduler.h"
#include "tools/simservice/recorder.h"
#include "tools/simservice/session.h"

namespace zorvanelink::simservice {
namespace {

using common::MsgCode;
using common::SupportedAuthType;
using core::sslvpn::CLMsgJson;
using core::sslvpn::CLMsgReplyJson;
using testing::ElementsAre;

// A message by what tells it apart: the number of its status, else its subtype.
std::string kindOf(std::string const& json) {
    core::CLMsg::Type type{};
    core::CLMsg::SubType subtype{};
    MsgCode status{};
    EXPECT_TRUE(core::CLMsgJsonParse::Parse(json, &type, &subtype, &status)) << json;
    return status == MsgCode::UNSPECIFIED ? core::CLMsg::SubTypeToString(subtype)
                                          : std::to_string(static_cast<int>(status));
}

core::sslvpn::CLMsgStartData startOf(std::string const& user, std::string const& password) {
    core::sslvpn::CLMsgStartData start;
    start.profileName = "Office";
    start.server = "vpn.example.com";
    start.port = 443;
    start.authType = SupportedAuthType::kPwd;
    start.user = user;
    start.encryptedPassword = components::utils::EncodeSensitiveValue(password);
    return start;
}

class SessionTest : public testing::Test {
  protected:
    SessionTest() {
        std::string error;
        EXPECT_TRUE(ParseScenario(R"({"users": [{"name": "alice", "password": "made-up"}],
            "delays": {"answer_ms": 10, "connecting_ms": 100, "online_ms": 1000, "stop_ms": 10},
            "session": {"cipherAlg": "AES"}, "warnings": [61441],
            "counters": {"inbound_bytes": 1000, "outbound_comp_ratio": 50}})",
                                  "f", scenario, error))
            << error;
        scenario.server_certificate = ServerCertificate::kUntrusted;  // nobody has it verified
    }

    std::vector<std::string> take() {
        std::vector<std::string> kinds;
        for (auto const& json : std::exchange(sent, {})) {
            kinds.push_back(kindOf(json));
            last = json;
        }
        return kinds;
    }
    void goOnline() {
        session.Receive(CLMsgJson::BuildStart(startOf("alice", "made-up")));
        EXPECT_TRUE(sent.empty()) << "an answer to a link that has gone";
        scheduler.Advance(1110);
        sent.clear();
    }

    Scenario scenario;
    test::FakeScheduler scheduler;
    std::vector<std::string> sent;
    std::vector<std::string> said;
    std::vector<Moment> moments;
    std::string last;
    Session session{scenario,
                    scheduler,
                    {[this](std::string const& json) { sent.push_back(json); },
                     [this](std::string const& line) { said.push_back(line); },
                     [this](Moment moment) { moments.push_back(moment); }}};
};

TEST_F(SessionTest, LoginGoesOnlineAndCountsUntilTheStop) {
    session.LinkUp();
    EXPECT_THAT(take(), ElementsAre("vnicState"));
    session.Receive(CLMsgJson::BuildStart(startOf("alice", "made-up")));
    EXPECT_THAT(take(), ElementsAre());
    scheduler.Advance(10);
    EXPECT_THAT(take(), ElementsAre("40976"));
    scheduler.Advance(100);
    EXPECT_THAT(take(), ElementsAre("40994", "netconfig"));
    scheduler.Advance(1000);
    EXPECT_THAT(take(), ElementsAre("40971"));
    core::sslvpn::CLMsgCommonReplyData online;
    ASSERT_TRUE(CLMsgReplyJson::Parse(last, &online));
    EXPECT_EQ(online.profileName, "Office");
    EXPECT_EQ(online.receivedUserName, "alice");
    EXPECT_THAT(online.warningCode, ElementsAre(61441));

    scheduler.Advance(2000);
    EXPECT_THAT(take(), ElementsAre("tunnelStatistics", "tunnelStatistics"));
    core::sslvpn::CLMsgReplyTunnelStatisticsData statistics;
    ASSERT_TRUE(CLMsgReplyJson::Parse(last, &statistics));
    EXPECT_EQ(statistics.inbound_bytes, 2000U);
    EXPECT_EQ(statistics.outbound_comp_ratio, 50.0F);

    session.Receive(CLMsgJson::BuildStop(startOf("", "")));
    scheduler.Advance(5000);
    EXPECT_THAT(take(), ElementsAre("40973"));
    EXPECT_THAT(moments,
                ElementsAre(Moment::kLink, Moment::kStart, Moment::kOnline, Moment::kSessionEnd));
}

TEST_F(SessionTest, AQuestionForTypesIsAnsweredAndThenWaits) {
    scenario.auth_types = {SupportedAuthType::kOauth, SupportedAuthType::kPwd};
    auto start = startOf("alice", "made-up");
    start.needQueryAuthType = true;
    session.Receive(CLMsgJson::BuildStart(start));
    scheduler.Advance(5000);
    EXPECT_THAT(take(), ElementsAre("40976", "41032"));
    core::sslvpn::CLMsgCommonReplyData offer;
    ASSERT_TRUE(CLMsgReplyJson::Parse(last, &offer));
    EXPECT_THAT(offer.supportedAuthType, ElementsAre("pwd", "oauth"));
    session.Receive(CLMsgJson::BuildStop(start));
    scheduler.Advance(5000);
    EXPECT_THAT(take(), ElementsAre("40973"));

    start.needQueryAuthType = false;
    start.authType = SupportedAuthType::kOnlyUkey;
    session.Receive(CLMsgJson::BuildStart(start));
    scheduler.Advance(5000);
    EXPECT_THAT(take(), ElementsAre("40976", "-23", "40973"));
    start.authType = SupportedAuthType::kOauth;
    session.Receive(CLMsgJson::BuildStart(start));
    scheduler.Advance(4110);
    EXPECT_THAT(take(), ElementsAre("40976", "41036", "40994", "netconfig", "40971"));
}

TEST_F(SessionTest, AProvidersFailureEndsTheLogin) {
    scenario.auth_types = {SupportedAuthType::kOauth};
    auto start = startOf("", "");
    start.authType = SupportedAuthType::kOauth;
    for (int const code : {41034, 41035, -42, -43, -44, -45, -46, -47}) {
        scenario.third_party.failure = static_cast<MsgCode>(code);
        session.Receive(CLMsgJson::BuildStart(start));
        scheduler.Advance(3110);
        std::vector<std::string> told{"40976", "41036", std::to_string(code), "40973"};
        if (code > 0) {
            told.erase(told.begin() + 1);  // there is no page to show
        }
        EXPECT_EQ(take(), told);
    }
}

TEST_F(SessionTest, ACodeIsJudgedByItsAgeAndByHowOftenItWasWrong) {
    auto& rules = scenario.second_factor;
    rules.codes = {"1111", "2222"};
    rules.resends = 1;
    rules.valid_ms = 5000;
    struct Case {
        CodeKind kind;
        std::vector<std::string> codes;  // empty: another one is asked for
        int wait_ms;
        std::vector<std::string> answers;
    };
    using enum core::sslvpn::SetType;
    std::map<CodeKind, std::array<core::sslvpn::SetType, 2>> const types{
        {CodeKind::kSms, {kSmsCode, kRequestSmsCode}},
        {CodeKind::kEmail, {kEmailCode, kRequestEmailCode}},
        {CodeKind::kToken, {kTokenCode, kRequestSmsCode}}};
    for (Case const& c :
         {Case{CodeKind::kSms, {"1111"}, 0, {"40961", "40962", "40994", "netconfig"}},
          Case{CodeKind::kSms,
               {"", "1111", "2222"},
               0,
               {"40961", "40961", "-16", "40962", "40994", "netconfig"}},
          Case{CodeKind::kEmail, {"", ""}, 0, {"40974", "40974", "-20", "40973"}},
          Case{CodeKind::kEmail, {"1111"}, 5001, {"40974", "-32", "40973"}},
          Case{CodeKind::kToken,
               {"1", "2", "3", "1111"},
               0,
               {"40963", "41010", "41010", "-19", "40973"}}}) {
        rules.kind = c.kind;
        session.Receive(CLMsgJson::BuildStart(startOf("alice", "made-up")));
        scheduler.Advance(110);
        EXPECT_EQ(take(), (std::vector<std::string>{"40976", c.answers.front()}));
        scheduler.Advance(c.wait_ms);
        for (auto const& [kind, type] : types) {
            if (kind != c.kind) {  // no try, and asks for nothing
                session.Receive(CLMsgJson::BuildAuthCode("Office", type[0], "1111"));
            }
        }
        for (std::string const& code : c.codes) {
            auto const [send, request] = types.at(c.kind);
            session.Receive(code.empty() ? CLMsgJson::BuildRequestAuthCode("Office", request)
                                         : CLMsgJson::BuildAuthCode("Office", send, code));
        }
        EXPECT_EQ(take(), std::vector(c.answers.begin() + 1, c.answers.end()));
    }
}

TEST_F(SessionTest, ANewPasswordFollowsTheRulesAndHolds) {
    using components::utils::EncodeSensitiveValue;
    auto& rules = scenario.password;
    rules.change = 1;
    rules.policy.enableComplexity = rules.policy.noIncludeUserName = true;
    rules.policy.minLength = 6;
    rules.policy.numericCharacters = 1;
    rules.history = {"before-1"};
    session.Receive(CLMsgJson::BuildStart(startOf("alice", "made-up")));
    scheduler.Advance(110);
    EXPECT_THAT(take(), ElementsAre("40976", "40966"));
    for (auto const& [current, password, answer] : {std::tuple("wrong", "better-1", "41011"),
                                                    {"made-up", "short", "-29"},
                                                    {"made-up", "malice-12", "-29"},
                                                    {"made-up", "before-1", "-27"},
                                                    {"made-up", "better-1", "40967"}}) {
        session.Receive(CLMsgJson::BuildNewPassword("Office", EncodeSensitiveValue(current),
                                                    EncodeSensitiveValue(password)));
        scheduler.Advance(1);
        EXPECT_THAT(take(), ElementsAre(answer)) << password;
    }
    session.Receive(CLMsgJson::BuildStart(startOf("alice", "made-up")));
    scheduler.Advance(110);
    EXPECT_THAT(take(), ElementsAre("40976", "-3", "40973"));
    session.Receive(CLMsgJson::BuildStart(startOf("alice", "better-1")));
    scheduler.Advance(110);
    EXPECT_THAT(take(), ElementsAre("40976", "40994", "netconfig"));
}

TEST_F(SessionTest, StopInTheMiddleOfALoginLeavesNothingBehind) {
    session.Receive(CLMsgJson::BuildStart(startOf("alice", "made-up")));
    scheduler.Advance(50);
    session.Receive(CLMsgJson::BuildStop(startOf("", "")));
    scheduler.Advance(5000);
    EXPECT_THAT(take(), ElementsAre("40976", "40973"));
}

TEST_F(SessionTest, AStopIsAnsweredBeforeTheNextLogin) {
    scenario.delays.stop_ms = 1000;
    goOnline();
    session.Receive(CLMsgJson::BuildStop(startOf("", "")));
    session.Receive(CLMsgJson::BuildStart(startOf("alice", "made-up")));
    EXPECT_THAT(take(), ElementsAre("40973"));
    scheduler.Advance(1110);
    EXPECT_THAT(take(), ElementsAre("40976", "40994", "netconfig", "40971"));
}

TEST_F(SessionTest, StopForAnotherProfileLeavesTheSessionAlone) {
    goOnline();
    auto other = startOf("", "");
    other.profileName = "Elsewhere";
    session.Receive(CLMsgJson::BuildStop(other));
    scheduler.Advance(10);
    EXPECT_THAT(take(), ElementsAre("40973"));
    EXPECT_NE(last.find("Elsewhere"), std::string::npos);
    scheduler.Advance(1000);
    EXPECT_THAT(take(), ElementsAre("tunnelStatistics"));
}

TEST_F(SessionTest, ALinkThatEndsTakesTheSessionWithIt) {
    goOnline();
    session.Receive(CLMsgJson::BuildStop(startOf("", "")));
    session.LinkDown();
    scheduler.Advance(5000);
    EXPECT_THAT(take(), ElementsAre());

    goOnline();
    said.clear();
    session.LinkDown();
    EXPECT_THAT(said, ElementsAre("client left without a stop, Office ends"));
    scheduler.Advance(5000);
    EXPECT_THAT(take(), ElementsAre());
}

TEST_F(SessionTest, QuestionsAndOrders) {
    goOnline();
    for (auto const& [type, kind] : {std::pair<std::string, char const*>{"state", "40971"},
                                     {"statistics", "tunnelStatistics"},
                                     {"config", "netconfig"}}) {
        session.Receive(R"({"type":"get","profileName":"Office","getType":")" + type + "\"}");
        EXPECT_THAT(take(), ElementsAre(kind));
    }
    session.Receive(CLMsgJson::BuildCertRequest(false));
    session.Receive(CLMsgJson::BuildCertRequest(true));
    EXPECT_THAT(take(), ElementsAre("certRespond", "gmCertRespond"));
    core::sslvpn::CLMsgUpdateRequestData inquiry;
    inquiry.command = core::sslvpn::UpdateCommand::kInquire;
    session.Receive(CLMsgJson::BuildUpdate(inquiry));
    EXPECT_THAT(take(), ElementsAre("update"));

    session.SetVnic(false);
    session.Flood(3, MsgCode::RECONNECTING);
    EXPECT_THAT(take(), ElementsAre("vnicState", "41007", "41007", "41007"));
    session.SendStatus(MsgCode::ERR_HOSTCHECK, R"({"hostCheckDownloadUrl": "http://a/"})");
    EXPECT_THAT(take(), ElementsAre("-7"));
    core::sslvpn::CLMsgCommonReplyData refusal;
    ASSERT_TRUE(CLMsgReplyJson::Parse(last, &refusal));
    EXPECT_EQ(refusal.hostCheckDownloadUrl, "http://a/");
    session.Disconnect(5);
    scheduler.Advance(5000);
    EXPECT_THAT(take(), ElementsAre("tunnelDisconnect", "40973"));
}

TEST_F(SessionTest, ListsComeWithTheKeyExchange) {
    scenario.gateways["Berlin"] = {"192.0.2.1", "8443", "443"};
    scenario.clusters["192.0.2.2"] = {"192.0.2.2", 443};
    session.Receive(CLMsgJson::BuildStart(startOf("alice", "made-up")));
    scheduler.Advance(110);
    EXPECT_THAT(take(), ElementsAre("40976", "40994", "gatewayList", "cluster", "netconfig"));
}

TEST_F(SessionTest, ALockedAccountIsToldForHowLong) {
    scenario.users[0].locked_after = 2;
    std::string told;
    for (char const* const password : {"wrong", "made-up", "wrong", "wrong"}) {
        sent.clear();
        session.Receive(CLMsgJson::BuildStart(startOf("alice", password)));
        scheduler.Advance(1110);
        told += kindOf(sent[1]) + ' ';
    }
    EXPECT_EQ(told, "-3 40994 -3 41042 ") << "a good login forgets the wrong ones";
    core::sslvpn::CLMsgCommonReplyData refusal;
    ASSERT_TRUE(CLMsgReplyJson::Parse(sent[1], &refusal));
    EXPECT_EQ(refusal.accountLockSenconds, 600);
}

TEST_F(SessionTest, NonsenseIsDropped) {
    for (auto const* const json :
         {"", "{", "[]", "{\"type\":\"start\"}", "{\"type\":\"start\",\"clientType\":\"zlvpn\"}",
          "{\"type\":\"stop\"}", "{\"type\":\"nonsense\"}"}) {
        session.Receive(json);
        scheduler.Advance(5000);
        EXPECT_THAT(take(), ElementsAre()) << json;
    }
    EXPECT_EQ(session.GetState(), Session::State::kIdle);
}

TEST(Recorder, MasksSecretsAndKeepsTheOrderOfKeys) {
    struct {
        char const* message;
        char const* recorded;
    } const table[]{
        {R"({"type":"start","b":1,"a":{"z":true,"encryptedPassword":"x"},"encryptedPinCode":"y"})",
         R"({"type":"start","b":1,"a":{"z":true,"encryptedPassword":"****"},"encryptedPinCode":"****"})"},
        {R"({"list":[{"secondAuthCode":"1234"}],"certData":"x","pkcs12CertFileData":"y"})",
         R"({"list":[{"secondAuthCode":"****"}],"certData":"****","pkcs12CertFileData":"****"})"},
        {R"({"newPassword":{"deep":"x"},"currentPassword":7,"password":""})",
         R"({"newPassword":"****","currentPassword":"****","password":""})"},
        {R"({"user":"password"})", R"({"user":"password"})"},
        {"[]", ""},
        {"{\"a\":", ""},
    };
    for (auto const& [message, recorded] : table) {
        EXPECT_EQ(MaskedMessage(message), recorded);
    }
}

TEST(Recorder, WritesOneObjectALineAtOnce) {
    auto const path = (test::TestEnvironment::Home() / "record.jsonl").string();
    test::FakeScheduler scheduler;
    Recorder recorder(scheduler);
    recorder.Message("{}");  // not open yet: goes nowhere
    ASSERT_TRUE(recorder.Open(path));
    recorder.Event("connected");
    scheduler.Advance(1500);
    recorder.Message("{\n  \"type\": \"stop\",\n  \"profileName\": \"\xc3\xbc\"\n}");
    recorder.Message("{\"a\":1}");
    recorder.Message("{\"broken\":\"\xff\"}");
    recorder.Message("no json");
    std::string text;
    ASSERT_TRUE(components::utils::ReadContentFromFile(path, text));
    EXPECT_EQ(text,
              "{\"time\":0,\"event\":\"connected\"}\n"
              "{\"time\":1500,\"type\":\"stop\",\"message\":{\"type\":\"stop\",\"profileName\":"
              "\"\xc3\xbc\"}}\n"
              "{\"time\":1500,\"type\":\"unknown\",\"message\":{\"a\":1}}\n"
              "{\"time\":1500,\"event\":\"unreadable\",\"length\":14}\n"
              "{\"time\":1500,\"event\":\"unreadable\",\"length\":7}\n");
}

}  // namespace
}  // namespace zorvanelink::simservice

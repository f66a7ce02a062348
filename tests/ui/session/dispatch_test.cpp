#include <set>

#include "tests/support/log_capture.h"
#include "tests/ui/session/session_fixture.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using SubType = core::CLMsg::SubType;
using test::WaitUntil;

class DispatchTest : public test::SessionFixture {
  protected:
    std::shared_ptr<Profile> profile = Add("Head office");
};

TEST_F(DispatchTest, ANetconfigIsTakenForTheRunningProfileOnly) {
    Add("Lab");
    GoOnline();
    core::sslvpn::CLMsgReplyNetConfigData record;
    record.clientPrivateIP = "10.8.0.2";
    record.profileName = "Lab";
    Receive(record);
    EXPECT_TRUE(session.context.netConfig.clientPrivateIP.empty());
    record.profileName = "Head office";
    Receive(record);
    EXPECT_EQ(session.context.netConfig.clientPrivateIP, "10.8.0.2");
}

TEST_F(DispatchTest, AMessageThatComesBackShowsNoSecretInTheLog) {
    test::LogCapture log;
    Click();
    for (std::string const& sent : service->Sent()) {
        EXPECT_FALSE(session.Receive(sent));
        EXPECT_FALSE(session.Receive(sent + "x"));
    }
    EXPECT_EQ(log.Count("Not supported type, json: {"), 1);
    EXPECT_EQ(log.Count("Failed to parse clmsgjson[{"), 1);
    EXPECT_FALSE(log.Has(profile->password));
}

TEST_F(DispatchTest, ReasonsOfTheGatewayAreToldOnceAndNotWhenDown) {
    core::sslvpn::CLMsgReplyTunnelDisconnectData record;
    record.profileName = "Head office";
    struct Case {
        int reason;
        std::optional<MsgCode> text;
    };
    using enum MsgCode;
    for (Case const& c :
         {Case{2, UI_WARNING_SERVER_DISCONNECT_FOR_CONNECTION_TIMEOUT},
          Case{3, UI_WARNING_SERVER_DISCONNECT_FOR_CONFIGURATION},
          Case{4, UI_WARNING_USER_LOG_ON_OTHER_CLIENT}, Case{5, UI_WARNING_SERVER_KICKOUT_CLIENT},
          Case{7, UI_ERROR_INTERNAL_ERROR},
          Case{9, UI_WARNING_SERVER_DISCONNECT_FOR_CONNECTION_TIMEOUT},
          Case{12, UI_WARNING_SERVER_FORCE_TIMEOUT}, Case{222, HEARTBEAT_TIMEOUT},
          Case{10, std::nullopt}, Case{77, std::nullopt}}) {
        GoOnline();
        EXPECT_FALSE(state.lastEnd) << "until the next start";
        record.reason = c.reason;
        if (c.text) {
            prompts.ExpectBox(Text(*c.text), 0, [this] {
                EXPECT_EQ(state.status, ConnectStatus::Disconnected);
                Receive(MsgCode::OFFLINE);
            });
        }
        Receive(record);
        EXPECT_EQ(state.status, ConnectStatus::Disconnected) << c.reason;
        Receive(record);
        ASSERT_TRUE(state.lastEnd);
        EXPECT_EQ(state.lastEnd->why, c.text           ? Text(*c.text).trimmed().toStdString()
                                      : c.reason == 10 ? "Ctrl Timeout"
                                                       : "");
    }
    EXPECT_EQ(prompts.Boxes().size(), 8U);
    EXPECT_EQ(Sent("stop"), 10);
    GoOnline();
    Receive(MsgCode::PREPARE_RECONNECTING);
    QDateTime const broken = state.since = state.since.addSecs(-10);
    Receive(MsgCode::RECONNECTING);
    EXPECT_EQ(state.since, broken) << "one interruption";
    ClickStop();
    Receive(record);
    Receive(MsgCode::OFFLINE);
    ASSERT_TRUE(state.lastEnd);
    EXPECT_EQ(state.lastEnd->why, "") << "the user's own end";
    EXPECT_EQ(state.lastEnd->since, session.context.connectTime);
}

TEST_F(DispatchTest, FailuresThatNoHandlerShowsAreToldAtTheEnd) {
    auto const fail = [this](MsgCode code) {
        Connect();
        Receive(code);
    };
    fail(MsgCode::GATEWAY_UNREACHABLE);
    EXPECT_EQ(state.status, ConnectStatus::Connecting);
    prompts.ExpectBox(Text(MsgCode::GATEWAY_UNREACHABLE), 0);
    Receive(MsgCode::OFFLINE);
    ASSERT_TRUE(state.lastEnd);
    EXPECT_EQ(state.lastEnd->why, Text(MsgCode::GATEWAY_UNREACHABLE).toStdString());
    EXPECT_FALSE(state.lastEnd->since.isValid()) << "never up";

    fail(MsgCode::GATEWAY_UNREACHABLE);
    ClickStop();
    Receive(MsgCode::OFFLINE);  // the user's own end
    EXPECT_FALSE(state.lastEnd);

    prompts.ExpectBox(Text(MsgCode::SECOND_AUTH_TIMEOUT), 0);
    fail(MsgCode::ERR_SMS_TIMEOUT);  // has no words of its own
    EXPECT_EQ(state.status, ConnectStatus::Disconnected);
}

TEST_F(DispatchTest, WhileABoxStandsTheOthersWaitAndTheUsersStopEndsThem) {
    core::sslvpn::CLMsgGatewayDetectStopData record;
    record.profileName = "Head office";
    auto const fail = [this, &record](char const* reason) {
        record.reason = reason;
        Receive(record);
    };
    auto page = Reply(MsgCode::URL_REDIRECT_ENABLE);
    page.redirectUrl = "https://intranet.example.com";
    auto login = Reply(MsgCode::OAUTH_PAGE);
    login.oauthPagePath = "file:///etc/passwd";
    prompts.FailToOpen(true);
    GoOnline();
    fail("\n");  // no reason, no box
    prompts.ExpectBox(QStringLiteral("first"), 0, [&] {
        fail("first");
        Receive(page);
        Receive(login);
        fail("second");
        fail("third");
        EXPECT_EQ(prompts.Boxes().size(), 1U);
    });
    prompts.ExpectBox(Text(MsgCode::UI_INFO_OPEN_URL_WITH_BROWER_FAIL), 0);
    prompts.ExpectBox(Text(MsgCode::UI_INFO_INVALID_URL), 0);
    prompts.ExpectBox(QStringLiteral("third"), 0, [&] {
        fail("fourth");
        ClickStop();
        EXPECT_EQ(prompts.Closings(), 1);
        Receive(MsgCode::OFFLINE);
    });
    fail("first");
    EXPECT_TRUE(WaitUntil([this] { return prompts.Finished() && state.Idle(); }));
    EXPECT_EQ(Sent("stop"), 1);
}

TEST_F(DispatchTest, AServersOwnMessageEndsTheAttempt) {
    core::sslvpn::CLMsgNotifyErrorMsgData record;
    record.profileName = "Head office";
    record.statusCode = MsgCode::ERR_MSG_BY_SERVER;
    record.errorMsgChinese = "\xe7\xbb\xb4\xe6\x8a\xa4";
    QString const words = QStringLiteral("Maintenance at noon");
    for (QString const& text : {words, Text(MsgCode::UI_ERROR_EMPTY_ERR_MSG)}) {
        record.errorMsgEnglish = text == words ? "Maintenance at noon\n" : "\n";
        Connect();
        prompts.ExpectBox(text, 0);
        Receive(record);
        EXPECT_EQ(state.status, ConnectStatus::Disconnected);
        Receive(MsgCode::OFFLINE);
    }
    // Also after an end of ours, but not after the user's.
    Connect();
    prompts.ExpectBox(Text(MsgCode::ERR_SMS_DEVICE), 0, [&] { Receive(record); });
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_EMPTY_ERR_MSG), 0);
    Receive(MsgCode::ERR_SMS_DEVICE);
    EXPECT_TRUE(WaitUntil([this] { return prompts.Finished(); }));
    Receive(MsgCode::OFFLINE);
    Connect();
    ClickStop();
    Receive(record);
    Click();
    Receive(record);
    EXPECT_FALSE(state.Idle()) << "that was of the attempt before";
}

TEST_F(DispatchTest, ListsOfGatewaysAreKeptInTheProfile) {
    profile->perferredGatewayName = "gone";
    core::sslvpn::CLMsgGatewayListData gateways;
    gateways.profileName = "Head office";
    gateways.gatewayList = {{"A", {"192.0.2.1", "4433", "443"}},
                            {"B", {"", "1", "2"}},
                            {"C", {"192.0.2.3", "4433", "65979"}}};
    Receive(gateways);
    ASSERT_EQ(profile->gatewayList.size(), 1U);
    EXPECT_EQ(profile->gatewayList.at("A").detectPort, 4433);
    EXPECT_EQ(profile->gatewayList.at("A").sslPort, 443) << "65979 is no port, and not 443 either";
    EXPECT_TRUE(profile->perferredGatewayName.empty());
}

TEST_F(DispatchTest, ASilentServiceIsShownUntilItSpeaks) {
    core::sslvpn::CLMsgReplyTunnelStatisticsData counters;
    counters.profileName = "Head office";
    // One that never sends a heartbeat.
    LoseLink();
    service = std::make_shared<test::FakeIpc>(true, false);
    service_there = true;
    ASSERT_TRUE(WaitUntil([this] { return state.link == LinkState::kLinked; }));
    GoOnline();
    Receive(counters);
    EXPECT_FALSE(viewStateFor(state).silent);
    EXPECT_TRUE(WaitUntil([this] { return viewStateFor(state).silent; }));
    EXPECT_EQ(state.status, ConnectStatus::Connected) << "nothing else changes";
    service->Deliver("{}");
    EXPECT_TRUE(WaitUntil([this] { return !viewStateFor(state).silent; }));
    EXPECT_TRUE(WaitUntil([this] { return viewStateFor(state).silent; }));
    ClickStop();
    Receive(MsgCode::OFFLINE);
    EXPECT_FALSE(state.silentSince) << "nobody waits for a word";
}

TEST(StatusTables, AreCompleteAndNameNothingTwice) {
    std::vector<MsgCode> const codes = StatusTable::Codes();
    std::set<std::int32_t> numbers;
    for (MsgCode const code : codes) {
        EXPECT_TRUE(numbers.insert(static_cast<std::int32_t>(code)).second);
        EXPECT_EQ(common::g_IPCMessageMap.Get(code).show, common::Show::kNone)
            << static_cast<int>(code) << " never gets there";
    }
    EXPECT_EQ(numbers,
              (std::set<std::int32_t>{-33,   -20,   -19,   -16,   40961, 40962, 40963, 40964, 40965,
                                      40966, 40967, 40970, 40971, 40973, 40974, 40975, 40976, 40993,
                                      40994, 40998, 41007, 41008, 41010, 41011, 41012, 41014, 41017,
                                      41018, 41032, 41036, 41042, 41044, 41046}));

    // All others are common replies.
    std::set<SubType> expected;
    for (std::size_t i = 0; i < core::CLMsg::kSubTypeString.size(); ++i) {
        expected.insert(static_cast<SubType>(i));
    }
    for (SubType const common :
         {SubType::kConnectStatus, SubType::kAcceptServerCert, SubType::kQueryStatus}) {
        expected.erase(common);
    }
    std::vector<SubType> const rows = MessageDispatcher::SubTypes();
    EXPECT_EQ(std::set<SubType>(rows.begin(), rows.end()), expected);
    EXPECT_EQ(rows.size(), expected.size());
}

}  // namespace
}  // namespace zorvanelink::ui

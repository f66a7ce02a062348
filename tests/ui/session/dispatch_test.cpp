#include "tests/support/log_capture.h"
#include "tests/ui/session/session_fixture.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using test::WaitUntil;

class DispatchTest : public test::SessionFixture {
  protected:
    std::shared_ptr<Profile> profile = Add("Head office");
};

struct Step {
    MsgCode code;
    ConnectStatus status;
    bool online;
    bool offline;
};

TEST_F(DispatchTest, StatusesWalkTheConnectionThroughItsStates) {
    Step const steps[] = {
        {MsgCode::CONNECTING, ConnectStatus::Connecting, false, false},
        {MsgCode::KEY_EXCHANGE_DATA, ConnectStatus::Connecting, false, false},
        {MsgCode::ONLINE, ConnectStatus::Connected, true, false},
        {MsgCode::HEARTBEAT_TIMEOUT, ConnectStatus::Connected, true, false},
        {MsgCode::PREPARE_RECONNECTING, ConnectStatus::PrepareReconnecting, true, false},
        {MsgCode::RECONNECTING, ConnectStatus::Reconnecting, false, false},
        {MsgCode::ONLINE, ConnectStatus::Connected, true, false},
        {MsgCode::OFFLINE, ConnectStatus::Disconnected, false, true},
        {MsgCode::ONLINE, ConnectStatus::Disconnected, false, true},  // nobody is current
    };
    QSignalSpy online(&statuses, &StatusHandler::CameOnline);
    Click();
    for (Step const& step : steps) {
        Receive(step.code);
        EXPECT_EQ(state.status, step.status) << static_cast<int>(step.code);
        EXPECT_EQ(state.online, step.online) << static_cast<int>(step.code);
        EXPECT_EQ(state.offline, step.offline) << static_cast<int>(step.code);
    }
    ASSERT_EQ(online.size(), 2);
    EXPECT_TRUE(online.at(0).at(0).toBool());
    EXPECT_FALSE(online.at(1).at(0).toBool()) << "a reconnect opens nothing again";
}

TEST_F(DispatchTest, WhatConcernsAnotherProfileChangesNothing) {
    Add("Lab");
    GoOnline();
    for (MsgCode const code : {MsgCode::OFFLINE, MsgCode::CONNECTING, MsgCode::RECONNECTING}) {
        Receive(code, "Lab");
    }
    core::sslvpn::CLMsgReplyNetConfigData record;
    record.profileName = "Lab";
    record.clientPrivateIP = "10.8.0.2";
    EXPECT_TRUE(dispatcher.ProcessServiceMsg(core::sslvpn::CLMsgReplyJson::Build(record)));
    EXPECT_EQ(state.status, ConnectStatus::Connected);
    EXPECT_TRUE(profile->context.netConfig.clientPrivateIP.empty());
}

TEST_F(DispatchTest, ConnectingMustCarryTheNameThatWasQueried) {
    Click("Head office", true);
    ASSERT_EQ(state.connectingProfileName, "Head office");
    state.connectingProfileName = "Another";
    Receive(MsgCode::CONNECTING);
    EXPECT_EQ(state.status, ConnectStatus::Disconnected);
    state.connectingProfileName.clear();
    Receive(MsgCode::CONNECTING);
    EXPECT_EQ(state.status, ConnectStatus::Connecting);
}

TEST_F(DispatchTest, MalformedMessagesAreDroppedAndTheNextOneCounts) {
    Click();
    for (char const* const json :
         {"", "{", "[]", "null", "{\"type\":\"start\"}", "{\"type\":\"reply\"}",
          "{\"type\":\"reply\",\"subtype\":\"netconfig\",\"profileName\":\"Head office\"}",
          "{\"type\":\"reply\",\"statusCode\":1.0,\"profileName\":\"Head office\"}"}) {
        EXPECT_FALSE(dispatcher.ProcessServiceMsg(json)) << json;
    }
    EXPECT_TRUE(dispatcher.ProcessServiceMsg(core::sslvpn::CLMsgReplyJson::Build(
        core::sslvpn::CLMsgSessionStatus{"Head office", 4, "192.0.2.1", 2})));
    EXPECT_EQ(state.status, ConnectStatus::Disconnected) << "a report changes nothing";
    Receive(MsgCode::CONNECTING);
    EXPECT_EQ(state.status, ConnectStatus::Connecting);
}

TEST_F(DispatchTest, AMessageThatComesBackShowsNoSecretInTheLog) {
    test::LogCapture log;
    Click();
    for (std::string const& sent : service->Sent()) {
        EXPECT_FALSE(dispatcher.ProcessServiceMsg(sent));
        EXPECT_FALSE(dispatcher.ProcessServiceMsg(sent + "x"));
    }
    EXPECT_EQ(log.Count("Not supported type, json: {"), 2);
    EXPECT_FALSE(log.Has(profile->password));
}

TEST_F(DispatchTest, AFatalStatusEndsTheSessionAndShowsOneBox) {
    Click();
    Receive(MsgCode::CONNECTING);
    prompts.ExpectBox(Text(MsgCode::ERR_AUTH_USER_OR_PASS), 0, [this] {
        // The service's own end of the session comes while the box stands.
        Receive(MsgCode::OFFLINE);
        Receive(MsgCode::ERR_AUTH_USER_OR_PASS);
    });
    Receive(MsgCode::ERR_AUTH_USER_OR_PASS);
    EXPECT_EQ(state.status, ConnectStatus::Disconnected);
    EXPECT_EQ(Sent("stop"), 1);
}

TEST_F(DispatchTest, ReasonsOfTheGatewayAreToldOnceAndNotWhenDown) {
    core::sslvpn::CLMsgReplyTunnelDisconnectData record;
    record.profileName = "Head office";
    struct Case {
        int reason;
        std::optional<MsgCode> text;
    };
    for (Case const& c : {Case{5, MsgCode::UI_WARNING_SERVER_KICKOUT_CLIENT},
                          Case{222, MsgCode::HEARTBEAT_TIMEOUT}, Case{77, std::nullopt}}) {
        GoOnline();
        record.reason = c.reason;
        if (c.text) {
            prompts.ExpectBox(Text(*c.text), 0);
        }
        dispatcher.ProcessServiceMsg(core::sslvpn::CLMsgReplyJson::Build(record));
        EXPECT_EQ(state.status, ConnectStatus::Disconnected) << c.reason;
        dispatcher.ProcessServiceMsg(core::sslvpn::CLMsgReplyJson::Build(record));
    }
    EXPECT_EQ(prompts.Boxes().size(), 2U);
}

TEST_F(DispatchTest, FailuresThatNoHandlerShowsAreToldAtTheEnd) {
    auto const fail = [this](MsgCode code) {
        Click();
        Receive(MsgCode::CONNECTING);
        Receive(code);
    };
    fail(MsgCode::GATEWAY_UNREACHABLE);
    EXPECT_EQ(state.status, ConnectStatus::Connecting);
    prompts.ExpectBox(Text(MsgCode::GATEWAY_UNREACHABLE), 0);
    Receive(MsgCode::OFFLINE);

    fail(MsgCode::GATEWAY_UNREACHABLE);
    flow.onStopConnect(QStringLiteral("Head office"));
    Receive(MsgCode::OFFLINE);  // the user's own end

    prompts.ExpectBox(Text(MsgCode::SECOND_AUTH_TIMEOUT), 0);
    fail(MsgCode::ERR_SMS_TIMEOUT);  // has no words of its own
    EXPECT_EQ(state.status, ConnectStatus::Disconnected);
}

TEST_F(DispatchTest, WhileABoxStandsOnlyTheLatestOtherTextFollows) {
    core::sslvpn::CLMsgReplyTunnelDisconnectData record;
    record.profileName = "Head office";
    auto const disconnect = [this, &record](int reason) {
        record.reason = reason;
        dispatcher.ProcessServiceMsg(core::sslvpn::CLMsgReplyJson::Build(record));
    };
    GoOnline();
    prompts.ExpectBox(Text(MsgCode::UI_WARNING_SERVER_KICKOUT_CLIENT), 0, [&] {
        disconnect(12);
        EXPECT_EQ(state.status, ConnectStatus::Disconnected) << "the effect does not wait";
        EXPECT_EQ(prompts.Boxes().size(), 1U);
    });
    prompts.ExpectBox(Text(MsgCode::UI_WARNING_SERVER_FORCE_TIMEOUT), 0);
    disconnect(5);
    EXPECT_TRUE(WaitUntil([this] { return prompts.Finished(); }));
    EXPECT_EQ(Sent("stop"), 1);
}

TEST_F(DispatchTest, AServersOwnMessageEndsTheAttempt) {
    core::sslvpn::CLMsgNotifyErrorMsgData record;
    record.profileName = "Head office";
    record.statusCode = MsgCode::ERR_MSG_BY_SERVER;
    record.errorMsgEnglish = "Maintenance at noon\n";
    record.errorMsgChinese = "\xe7\xbb\xb4\xe6\x8a\xa4";
    Click();
    Receive(MsgCode::CONNECTING);
    prompts.ExpectBox(QStringLiteral("Maintenance at noon"), 0);
    dispatcher.ProcessServiceMsg(core::sslvpn::CLMsgReplyJson::Build(record));
    EXPECT_EQ(state.status, ConnectStatus::Disconnected);
}

TEST_F(DispatchTest, ListsOfGatewaysAreKeptInTheProfile) {
    profile->perferredGatewayName = "gone";
    core::sslvpn::CLMsgGatewayListData gateways;
    gateways.profileName = "Head office";
    gateways.gatewayList = {{"A", {"192.0.2.1", "4433", "65979"}}, {"B", {"", "1", "2"}}};
    dispatcher.ProcessServiceMsg(core::sslvpn::CLMsgReplyJson::Build(gateways));
    ASSERT_EQ(profile->gatewayList.size(), 1U);
    EXPECT_EQ(profile->gatewayList.at("A").detectPort, 4433);
    EXPECT_EQ(profile->gatewayList.at("A").sslPort, 0) << "65979 is no port, and not 443 either";
    EXPECT_TRUE(profile->perferredGatewayName.empty());
}

TEST_F(DispatchTest, TheStatusBarSaysTheTruestThing) {
    auto const text = [this] { return viewStateFor(state).statusText; };
    EXPECT_FALSE(viewStateFor(state).hasStatusText) << "the wait form speaks";
    state.link = LinkState::kLinked;
    EXPECT_EQ(text(), MsgCode::UI_TR_STATE_NORMAL);
    Click("Head office", true);
    EXPECT_EQ(text(), MsgCode::UI_TR_CHECK_AUTH_TYPE);
    Receive(MsgCode::CONNECTING);
    EXPECT_EQ(text(), MsgCode::CONNECTING);
    Receive(MsgCode::ONLINE);
    EXPECT_EQ(text(), MsgCode::UI_TR_STATE_CONNECTTED);
    dispatcher.ProcessServiceMsg(core::CLMsgJsonParse::BuildVnicStateReply(false));
    EXPECT_EQ(text(), MsgCode::UI_TR_STATE_VNIC_ERROR);
    state.link = LinkState::kReconnecting;
    EXPECT_EQ(text(), MsgCode::UI_INFO_CONNECTING_SERVICE);
    state.link = LinkState::kLinked;
    dispatcher.ProcessServiceMsg(core::CLMsgJsonParse::BuildVnicStateReply(true));
    Receive(MsgCode::OFFLINE);
    EXPECT_EQ(text(), MsgCode::UI_TR_STATE_DISCONNECT);
}

}  // namespace
}  // namespace zorvanelink::ui

#include "tests/ui/session/session_fixture.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using common::SupportedAuthType;
using test::WaitUntil;

class ConnectFlowTest : public test::SessionFixture {
  protected:
    std::shared_ptr<Profile> profile = Add("Head office");

    ConnectStatus LastNotified() const {
        return notified.isEmpty() ? ConnectStatus::Connected
                                  : notified.last().at(1).value<ConnectStatus>();
    }
};

TEST_F(ConnectFlowTest, AStoredPasswordGoesOutWithoutAPromptAndNeverInClear) {
    Click();
    ASSERT_EQ(Sent("start"), 1);
    std::string const json = service->Sent().back();
    EXPECT_NE(json.find("\"encryptedPassword\":\"" + profile->password + "\""), std::string::npos);
    EXPECT_EQ(json.find("correct horse"), std::string::npos);
    EXPECT_EQ(state.status, ConnectStatus::Disconnected) << "a start only asks";
    EXPECT_EQ(state.startingProfileName, "Head office");
}

TEST_F(ConnectFlowTest, AMissingPasswordIsAskedForOnceAndForgotten) {
    profile->password.clear();
    profile->rememberPassword = false;
    prompts.ExpectSecret(test::SecretOf("typed"));
    Click();
    EXPECT_EQ(Sent("start"), 1);
    EXPECT_TRUE(profile->password.empty());
    EXPECT_EQ(prompts.Secrets().front().maxUtf8Length, 31);
}

TEST_F(ConnectFlowTest, AMissingPinIsAskedForWithTheLimitOfAPin) {
    profile->authType = SupportedAuthType::kOnlyUkey;
    profile->certIsFile = false;
    profile->systemCert.certType = 2;
    profile->systemCert.certName = profile->systemCert.certData = "key";
    prompts.ExpectSecret(test::SecretOf("4711"));
    Click();
    EXPECT_EQ(Sent("start"), 1);
    EXPECT_EQ(prompts.Secrets().front().maxUtf8Length, 127);
}

TEST_F(ConnectFlowTest, ACancelledPromptGivesTheButtonBack) {
    profile->password.clear();
    prompts.ExpectSecret(std::nullopt);
    Click();
    EXPECT_EQ(Sent("start"), 0);
    EXPECT_EQ(LastNotified(), ConnectStatus::Disconnected);
    EXPECT_TRUE(state.Idle());
    EXPECT_EQ(g_running_client, 0);

    // In the middle of a login the gateway is told that no answer will come.
    profile->authType = SupportedAuthType::kNone;
    Click("Head office", true);
    Receive(MsgCode::CONNECTING);
    profile->authType = SupportedAuthType::kPwd;
    prompts.ExpectSecret(std::nullopt);
    Click();
    EXPECT_EQ(Sent("stop"), 1);
    EXPECT_TRUE(state.Idle());
}

TEST_F(ConnectFlowTest, ACertificateThatIsNotThereStopsTheStart) {
    profile->authType = SupportedAuthType::kOnlyUkey;
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_NO_CERT), 0);
    Click();
    EXPECT_EQ(Sent("start"), 0);
    EXPECT_TRUE(state.Idle());

    // The record is known, its file has gone since.
    profile->fileCert.commonName = "Alice";
    QSignalSpy select(&statuses, &StatusHandler::NeedSelectAuthType);
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_NO_CERT), 0);
    Click();
    EXPECT_EQ(Sent("start"), 0);
    EXPECT_TRUE(state.Idle());
    EXPECT_TRUE(state.manualDisconnected);
    EXPECT_EQ(select.count(), 0) << "the start is left first";
    EXPECT_TRUE(WaitUntil([&select] { return select.count() == 1; }));
    EXPECT_FALSE(select.at(0).at(0).toBool());
    EXPECT_EQ(state.currentProfileName, "Head office") << "the selection must find it";
}

TEST_F(ConnectFlowTest, RefusalsEndInDisconnected) {
    struct Case {
        char const* name;
        std::function<void()> prepare;
        MsgCode text;
    };
    Case const cases[] = {
        {"Nobody", [] {}, MsgCode::UI_ERROR_PROFILE_NOT_EXIST},
        {"", [] {}, MsgCode::UI_ERROR_PROFILE_NOT_EXIST},
        {"Head office",
         [this] {
             service_there = false;
             service->FailRead(2);
             ASSERT_TRUE(WaitUntil([this] { return !link.IsReady(); }));
         },
         MsgCode::UI_INFO_CONNECT_SERVER_FAIL},
    };
    for (Case const& c : cases) {
        c.prepare();
        // A click behind the box adds no second one.
        prompts.ExpectBox(Text(c.text), 0, [this, &c] {
            if (c.text == MsgCode::UI_INFO_CONNECT_SERVER_FAIL) {
                Click(c.name);
            }
        });
        Click(c.name);
        EXPECT_EQ(Sent("start"), 0) << c.name;
        EXPECT_EQ(LastNotified(), ConnectStatus::Disconnected) << c.name;
        EXPECT_TRUE(state.Idle()) << c.name;
    }
}

TEST_F(ConnectFlowTest, MoreThan32ProfilesRefuseAStartButNotAStop) {
    GoOnline();
    for (int i = 0; i < 32; ++i) {
        Add("extra " + std::to_string(i));
    }
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_CONFIG_OVERLIMIT).arg(32), 0);
    Click("extra 1");
    EXPECT_EQ(Sent("start"), 1);
    flow.onStopConnect(QStringLiteral("Head office"));
    EXPECT_EQ(Sent("stop"), 1);
}

TEST_F(ConnectFlowTest, ASecondProfileIsRefusedWhileOneRuns) {
    Add("Lab");
    GoOnline();
    g_running_client = 1;  // as its card has set it
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_RUNNING_PROFILE_ALREADY_EXISTS), 0);
    Click("Lab");
    EXPECT_EQ(Sent("start"), 1);
    EXPECT_EQ(state.currentProfileName, "Head office");
    EXPECT_EQ(state.status, ConnectStatus::Connected);
    EXPECT_EQ(g_running_client, 1);
}

TEST_F(ConnectFlowTest, ACardThatGaveUpWaitingMayTryAgain) {
    Click();
    flow.ForgetPendingRequest(QStringLiteral("Head office"));
    EXPECT_TRUE(state.Idle());
    EXPECT_EQ(g_running_client, 0);
    Click();
    EXPECT_EQ(Sent("start"), 2);

    // Once a login is under way its card goes on showing it.
    Receive(MsgCode::CONNECTING);
    Click();
    flow.ForgetPendingRequest(QStringLiteral("Head office"));
    EXPECT_EQ(LastNotified(), ConnectStatus::Connecting);
    EXPECT_TRUE(state.startingProfileName.empty());
}

TEST_F(ConnectFlowTest, AfterTheUsersStopNothingOpensAndNothingIsTold) {
    Click();
    Receive(MsgCode::CONNECTING);
    profile->context.redirectUrl = "https://intranet.example.com";
    flow.onStopConnect(QStringLiteral("Head office"));
    Receive(MsgCode::ONLINE);
    EXPECT_TRUE(prompts.Opened().empty());
    core::sslvpn::CLMsgReplyTunnelDisconnectData data;
    data.profileName = profile->name;
    data.reason = 5;
    Receive(data);
    EXPECT_TRUE(prompts.Boxes().empty());
    EXPECT_EQ(state.status, ConnectStatus::Disconnected);
    EXPECT_EQ(Sent("stop"), 1);
}

TEST_F(ConnectFlowTest, WhatHappensBehindAPromptCounts) {
    profile->password.clear();
    // The link goes while the user types: no start leaves, one box says why.
    prompts.ExpectSecret(test::SecretOf("typed"), [this] {
        service_there = false;
        service->FailRead(2);
        ASSERT_TRUE(WaitUntil([this] { return !link.IsReady(); }));
    });
    prompts.ExpectBox(Text(MsgCode::UI_INFO_CONNECT_SERVER_FAIL), 0);
    Click();
    EXPECT_EQ(Sent("start"), 0);
    EXPECT_TRUE(state.Idle());
}

}  // namespace
}  // namespace zorvanelink::ui

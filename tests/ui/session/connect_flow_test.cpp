#include "app/environment/app_ctrl.h"
#include "tests/core/golden.h"
#include "tests/ui/session/session_fixture.h"
#include "ui/session/start_message.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using common::SupportedAuthType;
using test::WaitUntil;

class ConnectFlowTest : public test::SessionFixture {
  protected:
    std::shared_ptr<Profile> profile = Add("Head office");
};

TEST_F(ConnectFlowTest, AStoredPasswordGoesOutWithoutAPromptAndNeverInClear) {
    Click();
    ASSERT_EQ(Sent("start"), 1);
    EXPECT_EQ(service->Sent().back().find("correct horse"), std::string::npos);
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
    SecretRequest const& asked = prompts.Secrets().front();
    EXPECT_EQ(asked.maxUtf8Length, 31);
    EXPECT_EQ((asked.subject + asked.subjectDetail + asked.cancelButton).toStdString(),
              "Head officealice · vpn.example.comCancel");
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
    Receive(MsgCode::CONNECTING);
    Receive(MsgCode::OFFLINE);
    // Of two prompts the second is cancelled: the first answer has nowhere to go.
    profile->authType = SupportedAuthType::kPwdWithCert;
    profile->rememberPassword = false;
    profile->password.clear();
    prompts.ExpectSecret(test::SecretOf("typed"));
    prompts.ExpectSecret(std::nullopt);
    Click();
    EXPECT_TRUE(profile->password.empty());
}

// Compared whole; one flag after the other is turned, so that none stands for another.
TEST_F(ConnectFlowTest, AStartCarriesEachValueUnderItsKey) {
    AppCtrl::Instance().dataPath = QStringLiteral("/data");
    config.uuid = QStringLiteral("0B9F");
    *profile = {};
    profile->name = "office";
    profile->server = "vpn.example.net";
    profile->port = 8443;
    profile->authType = SupportedAuthType::kPwdWithCert;
    profile->userName = "ada";
    profile->password = "cGFzcw==";
    profile->systemCert.certName = "Ada";
    profile->systemCert.certData = "DER";
    profile->systemCert.fingerprint = "F0";
    profile->systemCert.pin = "UElO";
    profile->spaMode = 1;
    profile->spaPort = 62201;
    profile->commOptimMode = 2;
    profile->perferredGatewayName = "north";
    profile->gatewayList = {{"north", {"192.0.2.1", 8001, 443}}};
    profile->clusterList = {{"192.0.2.9", {"192.0.2.9", 4430}}};
    profile->lastSupportedAuthTypes = {SupportedAuthType::kPwd, SupportedAuthType::kOauth};
    profile->certIsFile = false;
    std::pair<bool*, char const*> const flags[] = {
        {&profile->keepAuthType, "keepAuthType"},
        {&profile->systemCert.isSupportCNG, "isSupportCNG"},
        {&profile->optimalChannel, "optimalChannel"},
        {&profile->gatewayDetect, "gatewayDetect"},
        {&profile->verifyServerCert, "enableVerifyServerCert"},
        {&config.autoReconnect, "enableAutoReconnect"},
        {&config.autoUpdate, "enableAutoUpdate"},
        {&config.hasPromotedUpdate, "hasPromotedUpdate"},
        {&AppCtrl::Instance().requireAdmin, "UIAdmin"}};
    for (auto const& [flag, key] : flags) {
        *flag = false;
    }
    std::string const start = test::Golden("start_of_profile");
    EXPECT_EQ(BuildStartMessage(*profile, false, config), start);
    for (auto const& [flag, key] : flags) {
        *flag = true;
        std::string expected = start;
        std::string const off = std::string(key) + "\":false";
        expected.replace(expected.find(off) + off.size() - 5, 5, "true");
        EXPECT_EQ(BuildStartMessage(*profile, false, config), expected);
        *flag = false;
    }
    AppCtrl::Instance() = AppCtrl();
}

TEST_F(ConnectFlowTest, ACancelledPromptGivesTheButtonBack) {
    profile->password.clear();
    prompts.ExpectSecret(std::nullopt);
    Click();
    EXPECT_EQ(Sent("start"), 0);
    EXPECT_TRUE(state.Idle());
    EXPECT_EQ(g_running_client, 0);

    // In the middle of a login the gateway is told that no answer will come.
    profile->authType = SupportedAuthType::kNone;
    Connect();
    profile->authType = SupportedAuthType::kPwd;
    prompts.ExpectSecret(std::nullopt);
    session.Flow().StartChosen("Head office");
    EXPECT_EQ(Sent("stop"), 1);
    EXPECT_TRUE(state.Idle());
}

TEST_F(ConnectFlowTest, TheBoxToRememberHoldsBothWays) {
    for (bool const before : {true, false}) {
        for (bool const answer : {true, false}) {
            profile->password.clear();
            profile->rememberPassword = before;
            config.Save();
            prompts.ExpectSecret(test::SecretOf("typed", answer));
            Click();
            EXPECT_EQ(prompts.Secrets().back().remember, before);
            Receive(MsgCode::CONNECTING);
            Receive(MsgCode::OFFLINE);
            Config reread;
            reread.Load();
            EXPECT_EQ(reread.GetProfile("Head office")->password.empty(), !answer);
            EXPECT_EQ(profile->password.empty(), !answer);
        }
    }
}

TEST_F(ConnectFlowTest, ACertificateThatIsNotThereStopsTheStart) {
    profile->authType = SupportedAuthType::kOnlyUkey;
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_NO_CERT), 0);
    Click();
    EXPECT_EQ(Sent("start"), 0);
    EXPECT_TRUE(state.Idle());

    // The record is known, its file has gone since.
    profile->fileCert.commonName = "Alice";
    QSignalSpy select(&session, &Session::NeedSelectAuthType);
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
        {"Head office", [this] { LoseLink(); }, MsgCode::UI_INFO_CONNECT_SERVER_FAIL},
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
        EXPECT_TRUE(state.Idle()) << c.name;
        EXPECT_EQ(g_running_client, 0) << c.name;
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
    ClickStop();
    EXPECT_EQ(Sent("stop"), 1);
}

TEST_F(ConnectFlowTest, ASecondProfileIsRefusedWhileOneRuns) {
    Add("Lab");
    GoOnline();
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_RUNNING_PROFILE_ALREADY_EXISTS), 0);
    Click("Lab");
    EXPECT_EQ(Sent("start"), 1);
    EXPECT_EQ(state.currentProfileName, "Head office");
    EXPECT_EQ(state.status, ConnectStatus::Connected);
    EXPECT_EQ(g_running_client, 1);
}

TEST_F(ConnectFlowTest, ARequestWithoutAStatusMayBeRepeatedAfterItsTime) {
    session.Flow().SetRequestTime(std::chrono::milliseconds(1));
    Click();
    Click();  // it is on its way
    EXPECT_EQ(Sent("start"), 1);
    EXPECT_TRUE(WaitUntil([this] { return state.Idle(); }));
    EXPECT_EQ(g_running_client, 0);
    Click();
    EXPECT_EQ(Sent("start"), 2);
    Receive(MsgCode::CONNECTING);
    Receive(MsgCode::ONLINE);
    for (int const stops : {1, 2}) {
        ClickStop();
        EXPECT_EQ(Sent("stop"), stops);
        EXPECT_TRUE(WaitUntil([this] { return !state.StopSent(); }));
    }
    EXPECT_EQ(state.status, ConnectStatus::Connected) << "the service has not said otherwise";
    session.Leave();
    EXPECT_EQ(Sent("stop"), 3) << "the tunnel may not outlive the client";
}

TEST_F(ConnectFlowTest, ASessionThatIsReportedAgainIsOwedAStop) {
    GoOnline();
    LoseLink();
    EXPECT_EQ(state.status, ConnectStatus::Disconnected);
    FindLink();
    EXPECT_EQ(Sent("stop"), 0) << "there was no link to send it on";
    Receive(MsgCode::ONLINE);
    EXPECT_EQ(state.status, ConnectStatus::Connected);
    session.Leave();
    EXPECT_EQ(Sent("stop"), 1);
    session.Leave();
    EXPECT_EQ(Sent("stop"), 1);
}

TEST_F(ConnectFlowTest, AStartThatALostLinkSwallowedMayBeRepeated) {
    // A link that ends within a second and without a byte is not announced as lost.
    LoseLink();
    service = std::make_shared<test::FakeIpc>(true, false);
    service_there = true;
    ASSERT_TRUE(WaitUntil([this] { return state.link == LinkState::kLinked; }));
    Click();
    ASSERT_EQ(Sent("start"), 1);
    service_there = false;
    service->FailRead(2);
    EXPECT_TRUE(WaitUntil([this] { return state.Idle(); }));
}

TEST_F(ConnectFlowTest, ALateOfflineEndsOnlyTheAttemptThatWasStopped) {
    // The stop of a cancelled login is answered after the next start.
    Connect();
    session.Flow().StopConnect();
    Click();
    Receive(MsgCode::OFFLINE);
    EXPECT_EQ(state.startingProfileName, "Head office");
    Receive(MsgCode::OFFLINE);
    EXPECT_TRUE(state.Idle()) << "the second is its own";

    // While the next one still asks for its password, any is old.
    profile->password.clear();
    prompts.ExpectSecret(test::SecretOf("typed", true), [this] { Receive(MsgCode::OFFLINE); });
    Click();
    EXPECT_EQ(Sent("start"), 3);
    EXPECT_EQ(state.startingProfileName, "Head office");
    Receive(MsgCode::CONNECTING);
    Receive(MsgCode::OFFLINE);
    EXPECT_TRUE(state.Idle());

    // Another's stop says nothing about this one's end.
    Add("Lab");
    Connect();
    session.Flow().StopConnect();
    Click("Lab");
    Receive(MsgCode::OFFLINE, "Lab");
    EXPECT_TRUE(state.Idle());
}

TEST_F(ConnectFlowTest, AfterTheUsersStopNothingOpens) {
    Connect();
    session.context.redirectUrl = "https://intranet.example.com";
    ClickStop();
    Receive(MsgCode::ONLINE);
    EXPECT_TRUE(prompts.Opened().empty());
    EXPECT_EQ(Sent("stop"), 1);
}

TEST_F(ConnectFlowTest, TheUsersStopClosesThePromptOfALogin) {
    Connect();
    profile->password.clear();
    prompts.ExpectSecret(test::SecretOf("typed"), [this] { ClickStop(); });
    session.Flow().StartChosen("Head office");
    EXPECT_EQ(prompts.Closings(), 1);
    EXPECT_EQ(Sent("stop"), 1);
    EXPECT_EQ(Sent("start"), 1);
    Receive(MsgCode::OFFLINE);
    EXPECT_TRUE(state.Idle());
}

}  // namespace
}  // namespace zorvanelink::ui

// What follows a status: tails of failures, pages, questions and the dialogs of a login.
#include <QDir>
#include <QFile>

#include "app/environment/paths.h"
#include "core/clmsg_json.h"
#include "tests/ui/session/session_fixture.h"
#include "ui/session/session_pages.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using common::SupportedAuthType;

class StatusEffectsTest : public test::SessionFixture {
  protected:
    std::vector<QUrl> const& Opened() const { return prompts.Opened(); }

    std::shared_ptr<Profile> profile = Add("Head office");
    QSignalSpy select{&session, &Session::NeedSelectAuthType};
};

TEST_F(StatusEffectsTest, ARefusedTypeIsRetriedOnceWithAQuery) {
    Connect();
    prompts.ExpectBox(Text(MsgCode::ERR_LOGIN_MODE), 0, [this] { Receive(MsgCode::OFFLINE); });
    Receive(MsgCode::ERR_LOGIN_MODE);
    ASSERT_EQ(Sent("start"), 2);
    std::string const start = service->Sent().back();
    EXPECT_NE(start.find("\"needQueryAuthType\":true"), std::string::npos);
    EXPECT_NE(start.find("\"authType\":\"none\""), std::string::npos);

    Receive(MsgCode::CONNECTING);
    prompts.ExpectBox(Text(MsgCode::ERR_LOGIN_MODE), 0);
    Receive(MsgCode::ERR_LOGIN_MODE);
    EXPECT_EQ(Sent("start"), 2) << "that start was a query itself";
}

TEST_F(StatusEffectsTest, TailsRunOnlyForTheAttemptThatFailed) {
    // After the user's stop nothing is told and nothing follows.
    for (MsgCode const code : {MsgCode::ERR_LOGIN_MODE, MsgCode::ERR_AUTH_USER_OR_PASS}) {
        profile->authType = SupportedAuthType::kPwd;
        Connect();
        ClickStop();
        Receive(code);
        Receive(MsgCode::OFFLINE);
    }
    // Stopped, and begun anew, behind the box.
    for (bool const stopped : {true, false}) {
        Connect();
        prompts.ExpectBox(Text(MsgCode::ERR_AUTH_BAD_CERT), 0,
                          [this, stopped] { stopped ? ClickStop() : Click(); });
        Receive(MsgCode::ERR_AUTH_BAD_CERT);
    }
    EXPECT_EQ(Sent("start"), 5);
    EXPECT_EQ(select.count(), 0);
}

TEST_F(StatusEffectsTest, WhatAFailureLeadsToWaitsForItsOwnText) {
    core::sslvpn::CLMsgGatewayDetectStopData older;
    older.profileName = "Head office";
    older.reason = "No gateway was measured";
    Connect();
    prompts.ExpectBox(QString::fromStdString(older.reason), 0, [this] {
        Receive(MsgCode::ERR_AUTH_USER_OR_PASS);
        EXPECT_EQ(state.status, ConnectStatus::Disconnected) << "the effect does not wait";
        EXPECT_EQ(select.count(), 0);
    });
    prompts.ExpectBox(Text(MsgCode::ERR_AUTH_USER_OR_PASS), 0,
                      [this] { EXPECT_EQ(select.count(), 0); });
    Receive(older);
    EXPECT_TRUE(test::WaitUntil([this] { return select.count() == 1; }));

    // The user has gone on meanwhile: neither the text nor what it would lead to.
    Connect();
    prompts.ExpectBox(QString::fromStdString(older.reason), 0, [this] {
        Receive(MsgCode::ERR_AUTH_USER_OR_PASS);
        Receive(MsgCode::OFFLINE);
        Connect();
    });
    Receive(older);
    Receive(MsgCode::ONLINE);
    EXPECT_EQ(select.count(), 1);
    EXPECT_EQ(state.status, ConnectStatus::Connected);
}

TEST_F(StatusEffectsTest, WrongCredentialsOpenTheSelection) {
    for (bool const keep : {true, false}) {
        profile->keepAuthType = keep;
        Connect();
        prompts.ExpectBox(Text(MsgCode::ERR_AUTH_USER_OR_PASS), 0, [this] {
            Receive(MsgCode::OFFLINE);
            Receive(MsgCode::ERR_AUTH_USER_OR_PASS);
        });
        Receive(MsgCode::ERR_AUTH_USER_OR_PASS);
        EXPECT_EQ(select.takeLast().at(0).toBool(), !keep);
        EXPECT_EQ(session.RunningProfile(), profile) << "the selection must find it";
    }
}

TEST_F(StatusEffectsTest, TheServersTypesAreOfferedWhenOneIsUsable) {
    auto data = Reply(MsgCode::NEED_SELECT_AUTH_TYPE);
    data.supportedAuthType = {"oauth", "cookie", "what"};
    profile->authType = SupportedAuthType::kNone;
    Connect();
    Receive(data);
    ASSERT_EQ(select.count(), 1);
    EXPECT_TRUE(select.at(0).at(0).toBool());
    EXPECT_EQ(profile->supportedAuthTypes,
              (std::vector{SupportedAuthType::kCookie, SupportedAuthType::kOauth}));

    data.supportedAuthType = {"cookie", "piccQrcode"};
    prompts.ExpectBox(Text(MsgCode::ERR_NO_SUPPORTED_AUTH_TYPE), 0);
    Receive(data);
    EXPECT_EQ(select.count(), 1);
    EXPECT_EQ(state.status, ConnectStatus::Disconnected);
    EXPECT_TRUE(profile->supportedAuthTypes.empty());
}

TEST_F(StatusEffectsTest, PagesOpenOnceAfterALogin) {
    QString const folder = GetAppDataDirPath() + QStringLiteral("/resourceList");
    QDir().mkpath(folder);
    QFile page(folder + QStringLiteral("/resource_list.html"));
    ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    auto keys = Reply(MsgCode::KEY_EXCHANGE_DATA);
    keys.redirectUrl = "https://intranet.example.com/start";
    auto list = Reply(MsgCode::RESOURCE_LIST);
    list.resourceListPagePath = page.fileName().toStdString();
    auto redirect = Reply(MsgCode::URL_REDIRECT_ENABLE);

    Connect();
    Receive(keys);
    Receive(list);
    EXPECT_TRUE(Opened().empty());
    Receive(MsgCode::ONLINE);
    ASSERT_EQ(Opened().size(), 2U);
    EXPECT_EQ(Opened()[0].host(), QStringLiteral("intranet.example.com"));
    EXPECT_TRUE(Opened()[1].isLocalFile());
    for (MsgCode const code :
         {MsgCode::PREPARE_RECONNECTING, MsgCode::RECONNECTING, MsgCode::ONLINE}) {
        Receive(code);
    }
    Receive(MsgCode::ONLINE);
    EXPECT_EQ(Opened().size(), 2U) << "a reconnect opens nothing, nor does a second report";

    ClickStop();
    Receive(MsgCode::OFFLINE);
    EXPECT_TRUE(session.context.redirectUrl.empty());
    redirect.redirectUrl = keys.redirectUrl;
    Receive(redirect);
    EXPECT_EQ(Opened().size(), 2U) << "the session is over";
    Connect();
    Receive(redirect);
    Receive(MsgCode::ONLINE);
    EXPECT_EQ(Opened().size(), 3U) << "opened before, not again";
}

TEST_F(StatusEffectsTest, OnlyAPressedYesAcceptsACertificate) {
    auto const answer = [this](int button, std::function<void()> during = {}) {
        service->Forget();
        prompts.ExpectBox(Text(MsgCode::SSL_CERT_EXPIRED), button, std::move(during));
        Receive(MsgCode::SSL_CERT_EXPIRED);
        return Sent("set") == 0 ? std::string() : service->Sent().back();
    };
    using core::sslvpn::CLMsgJson;
    Connect();
    EXPECT_EQ(answer(0), CLMsgJson::BuildAcceptServerCert("Head office", true));
    EXPECT_EQ(answer(1), CLMsgJson::BuildAcceptServerCert("Head office", false));
    EXPECT_EQ(answer(-1), CLMsgJson::BuildAcceptServerCert("Head office", false));
    EXPECT_EQ(prompts.Boxes().back().timeoutSeconds, 30);
    EXPECT_EQ(prompts.Boxes().back().defaultButton, 1);
    // Asked again behind the question, and over before it is answered.
    for (MsgCode const over : {MsgCode::ONLINE, MsgCode::OFFLINE}) {
        int const closings = prompts.Closings();
        auto const during = [&] {
            Receive(MsgCode::SSL_CERT_EXPIRED);
            Receive(over);
            EXPECT_EQ(prompts.Closings(), closings + 1) << "it closes with its step";
        };
        EXPECT_EQ(answer(0, during), "");
    }
}

TEST_F(StatusEffectsTest, AFailedHostCheckOpensItsPageAfterTheBox) {
    auto data = Reply(MsgCode::ERR_HOSTCHECK);
    data.hostCheckDownloadUrl = "https://vpn.example.com/fix";
    Connect();
    prompts.ExpectBox(Text(MsgCode::ERR_HOSTCHECK), 0, [this] {
        EXPECT_TRUE(Opened().empty());
        Receive(MsgCode::OFFLINE);
    });
    Receive(data);
    EXPECT_EQ(Opened().size(), 1U);
}

TEST_F(StatusEffectsTest, AThirdPartyLoginKeepsItsFirstDeadline) {
    auto data = Reply(MsgCode::OAUTH_PAGE);
    data.oauthPagePath = "https://login.example.com";
    ThirdPartyLogin& login = session.ThirdParty();
    Connect();
    Receive(data);
    Receive(data);
    EXPECT_EQ(Opened().size(), 2U);
    EXPECT_TRUE(login.Waits());
    for (int i = 0; i < 30; ++i) {
        Receive(data);
    }
    EXPECT_EQ(Opened().size(), 3U);
    login.OpenAgain();
    EXPECT_EQ(Opened().size(), 4U) << "a click is not counted";
    Receive(MsgCode::ONLINE);
    EXPECT_FALSE(login.Waits());

    Receive(MsgCode::OFFLINE);
    Connect();
    Receive(data);
    Receive(MsgCode::OFFLINE);
    ASSERT_TRUE(state.lastEnd);
    EXPECT_EQ(state.lastEnd->why, Text(MsgCode::UI_INFO_CONNECTION_TERMINATED).toStdString());
    Connect();
    Receive(data);
    boot += ThirdPartyLogin::kDeadline - std::chrono::milliseconds(1);
    Receive(data);
    EXPECT_TRUE(login.Waits());
    prompts.ExpectBox(Text(MsgCode::SECOND_AUTH_TIMEOUT), 0);
    boot += std::chrono::milliseconds(1);
    EXPECT_TRUE(test::WaitUntil([&] { return !login.Waits() && prompts.Finished(); }));

    // The program ends while the text of its end still waits.
    Connect();
    Receive(data);
    prompts.ExpectBox(Text(MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD), 0, [this] {
        Receive(MsgCode::ERR_SMS_DEVICE);
        session.Leave();
    });
    Receive(MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD);
}

TEST_F(StatusEffectsTest, ThePageForAForgottenPasswordIsKept) {
    Connect();
    auto auth = Reply(MsgCode::AUTH_DATA);
    auth.forgotPasswordUrl = "https://vpn.example.com/forgot";
    Receive(auth);
    Config reread;
    reread.Load();
    ASSERT_NE(reread.GetProfile("Head office"), nullptr);
    EXPECT_EQ(reread.GetProfile("Head office")->forgotPwdUrl, auth.forgotPasswordUrl);
}

TEST_F(StatusEffectsTest, WhatExpiresSoonIsToldOnceASession) {
    struct Case {
        int password;
        int account;
        QString text;
    };
    for (Case const& c :
         {Case{5, 0, Text(MsgCode::UI_INFO_PWD_WILL_EXPIRE).arg(5)},
          Case{0, 9, Text(MsgCode::UI_INFO_ACCOUNT_WILL_EXPIRE).arg(9)},
          Case{5, 9, Text(MsgCode::UI_INFO_ACCOUNT_AND_PWD_WILL_EXPIRE).arg(9).arg(5)},
          Case{0, 0, {}}}) {
        auto data = Reply(MsgCode::AUTH_DATA);
        data.passwordExpiredDays = c.password;
        data.accountExpiredDays = c.account;
        data.changePasswordUrl = "https://vpn.example.com/" + std::to_string(c.account);
        data.allowLocalChangePassword = true;
        core::sslvpn::CLMsgGatewayDetectStopData other;
        other.profileName = "Head office";
        other.reason = "read first";
        Connect();
        // Behind another text, for which the login does not wait.
        prompts.ExpectBox(QStringLiteral("read first"), 0, [&] {
            Receive(data);
            EXPECT_EQ(pagesFor(state, session.context).size(), 1U)
                << "the change comes with online";
            Receive(MsgCode::ONLINE);
        });
        if (!c.text.isEmpty()) {
            prompts.ExpectBox(c.text, 0);
        }
        Receive(other);
        EXPECT_TRUE(test::WaitUntil([this] { return prompts.Finished(); }));
        Receive(data);
        auto const pages = pagesFor(state, session.context);
        ASSERT_EQ(pages.size(), 2U);
        EXPECT_EQ(pages[1].address.toStdString(), data.changePasswordUrl);
        Receive(MsgCode::PREPARE_RECONNECTING);
        EXPECT_TRUE(pagesFor(state, session.context).empty()) << "until it is back";
        Receive(MsgCode::OFFLINE);
        EXPECT_TRUE(pagesFor(state, session.context).empty());
    }
}

}  // namespace
}  // namespace zorvanelink::ui

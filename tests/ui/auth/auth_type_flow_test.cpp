// What follows from the end of the type dialog, with the real session around it.
#include "ui/auth/auth_type_flow.h"

#include <QtTest/QTest>

#include "components/utils/sensitive_value.h"
#include "tests/support/qt_helpers.h"
#include "tests/ui/session/session_fixture.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/cert/tls_cert_dialog.h"

namespace zorvanelink::ui {
namespace {

class AuthTypeFlowTest : public test::SessionFixture {
  protected:
    AuthTypeFlowTest() {
        profile->supportedAuthTypes = {SupportedAuthType::kPwd, SupportedAuthType::kOauth};
        Query();
    }
    // The gateway is asked for its types.
    void Query() {
        profile->authType = SupportedAuthType::kNone;
        Connect();
    }

    std::shared_ptr<Profile> profile = Add("Head office");
    AuthTypeFlow types{session};
};

TEST_F(AuthTypeFlowTest, LoginStartsOnceTheDialogIsGone) {
    for (char const* button : {"btn_connect_", "btn_third_party_"}) {
        int const before = Sent("start");
        test::WhenModal<AuthTypeDialog>([&](AuthTypeDialog& dialog) {
            EXPECT_TRUE(session.conversation.Is(types));
            types.onNeedSelectAuthType(true);  // one at a time
            EXPECT_EQ(QApplication::activeModalWidget(), &dialog);
            test::Find<QPushButton>(dialog, button).click();
            EXPECT_EQ(Sent("start"), before);
        });
        types.onNeedSelectAuthType(true);
        EXPECT_FALSE(session.conversation.Is(types));
        EXPECT_EQ(Sent("start"), before);
        ASSERT_TRUE(test::WaitFor([&] { return Sent("start") == before + 1; }));
        EXPECT_EQ(Sent("stop"), 0);
        EXPECT_EQ(g_running_client, 1);
    }
    EXPECT_EQ(profile->authType, SupportedAuthType::kOauth);
}

TEST_F(AuthTypeFlowTest, CancelEndsTheAttempt) {
    for (Qt::Key const key : {Qt::Key_Escape, Qt::Key_Space}) {
        Query();
        int const before = Sent("stop");
        test::WhenModal<AuthTypeDialog>([&](AuthTypeDialog& dialog) {
            if (key == Qt::Key_Space) {
                test::Find<QWidget>(dialog, "btn_cancel_").setFocus();
            }
            QTest::keyClick(dialog.focusWidget(), key);
        });
        types.onNeedSelectAuthType(true);
        EXPECT_EQ(Sent("stop"), before + 1);
        EXPECT_EQ(state.status, ConnectStatus::Disconnected);
        EXPECT_EQ(viewStateFor(state).statusText, common::MsgCode::UI_TR_STATE_DISCONNECT);
        EXPECT_EQ(g_running_client, 0);
    }
}

TEST_F(AuthTypeFlowTest, EndsWithoutAWordWhenItsStepIsOver) {
    // The user's stop in the tray, and another demand of the service.
    for (bool const stopped : {true, false}) {
        Query();
        test::FakeConversation next;
        int const before = Sent("stop");
        test::WhenModal<AuthTypeDialog>([&](AuthTypeDialog&) {
            if (stopped) {
                ClickStop();
            } else {
                session.conversation.Open(next);
            }
        });
        types.onNeedSelectAuthType(true);
        EXPECT_EQ(Sent("stop"), before + (stopped ? 1 : 0));
        EXPECT_EQ(state.status, ConnectStatus::Connecting) << "until the service says otherwise";
        Receive(common::MsgCode::OFFLINE);
        EXPECT_TRUE(state.Idle());
        session.conversation.Close(next);
    }
}

// The gateway's own end of a session leaves nothing to stop behind the dialog.
TEST_F(AuthTypeFlowTest, CancelAfterTheGatewaysEndSendsNoStop) {
    test::WhenModal<AuthTypeDialog>([&](AuthTypeDialog& dialog) {
        Receive(common::MsgCode::OFFLINE);
        EXPECT_EQ(state.status, ConnectStatus::Connecting);
        dialog.reject();
    });
    types.onNeedSelectAuthType(true);
    EXPECT_EQ(Sent("stop"), 0);
    Click();
    Receive(common::MsgCode::OFFLINE);
    EXPECT_TRUE(state.Idle()) << "that one was the new attempt's";
}

TEST_F(AuthTypeFlowTest, ARefusedPasswordIsTypedAnewAlsoWhenItIsRemembered) {
    Receive(common::MsgCode::OFFLINE);
    profile->authType = SupportedAuthType::kPwd;
    std::string const stored = profile->password;
    Connect();
    prompts.ExpectBox(Text(common::MsgCode::ERR_AUTH_USER_OR_PASS), 0);
    test::WhenModal<AuthTypeDialog>([&](AuthTypeDialog& dialog) {
        auto& password = test::Find<SecretEdit>(dialog, "lineedit_password_");
        EXPECT_FALSE(password.HoldsMask());
        EXPECT_EQ(password.text(), QString());
        EXPECT_EQ(dialog.focusWidget(), &password);
        dialog.reject();
    });
    Receive(common::MsgCode::ERR_AUTH_USER_OR_PASS);
    EXPECT_EQ(profile->password, stored) << "cancelled: what was remembered stays";
}

// The retry with a query is the client's own: nobody types twice for it.
TEST_F(AuthTypeFlowTest, ARefusedTypeKeepsWhatWasTyped) {
    Receive(common::MsgCode::OFFLINE);
    profile->authType = SupportedAuthType::kPwd;
    profile->rememberPassword = false;
    profile->password.clear();
    prompts.ExpectSecret(test::SecretOf("typed"));
    Connect();
    prompts.ExpectBox(Text(common::MsgCode::ERR_LOGIN_MODE), 0,
                      [this] { Receive(common::MsgCode::OFFLINE); });
    Receive(common::MsgCode::ERR_LOGIN_MODE);
    Receive(common::MsgCode::CONNECTING);
    test::WhenModal<AuthTypeDialog>([&](AuthTypeDialog& dialog) {
        EXPECT_TRUE(test::Find<SecretEdit>(dialog, "lineedit_password_").HoldsMask());
        dialog.reject();
    });
    auto data = Reply(common::MsgCode::NEED_SELECT_AUTH_TYPE);
    data.supportedAuthType = {"pwd"};
    Receive(data);
    EXPECT_TRUE(profile->password.empty()) << "cancelled: nothing is kept";
}

// Nothing is to be remembered, and yet only what was wrong is asked for again.
TEST_F(AuthTypeFlowTest, WhatWasRightIsNotTypedAgain) {
    Receive(common::MsgCode::OFFLINE);
    profile->authType = SupportedAuthType::kPwdWithCert;
    profile->rememberPassword = false;
    profile->certIsFile = false;
    profile->systemCert.certName = "Alice";
    profile->systemCert.certData = "DER";
    profile->systemCert.certType = kCertTypeUsbKey;
    struct Case {
        common::MsgCode code;
        bool passwordStands;
    };
    for (Case const& c : {Case{common::MsgCode::ERR_AUTH_BAD_CERT, true},
                          Case{common::MsgCode::ERR_AUTH_USER_OR_PASS, false}}) {
        std::string const secret = components::utils::EncodeSensitiveValue("right");
        profile->password = profile->systemCert.pin = secret;
        profile->tempCredential = false;  // as the editor leaves it
        Click();
        EXPECT_TRUE(profile->password.empty());
        EXPECT_TRUE(profile->systemCert.pin.empty());
        int const before = Sent("start");
        auto const answer = [&](bool login) {
            // The service's last word comes behind the box.
            prompts.ExpectBox(Text(c.code), 0, [this] { Receive(common::MsgCode::OFFLINE); });
            test::WhenModal<AuthTypeDialog>([&](AuthTypeDialog& dialog) {
                auto& password = test::Find<SecretEdit>(dialog, "lineedit_password_");
                auto& pin = test::Find<SecretEdit>(dialog, "lineedit_pin_");
                EXPECT_EQ(password.HoldsMask(), c.passwordStands);
                EXPECT_EQ(pin.HoldsMask(), !c.passwordStands);
                EXPECT_EQ(test::Find<QLineEdit>(dialog, "lineedit_username_").text(),
                          QStringLiteral("alice"));
                (c.passwordStands ? pin : password).setText(QStringLiteral("right"));
                test::Find<QPushButton>(dialog, login ? "btn_connect_" : "btn_cancel_").click();
            });
            Receive(c.code);
        };
        answer(true);
        ASSERT_TRUE(test::WaitFor([&] { return Sent("start") == before + 1; }));
        answer(false);
        EXPECT_TRUE(profile->password.empty()) << "cancelled: nothing is kept";
        EXPECT_TRUE(profile->systemCert.pin.empty());
    }
}

}  // namespace
}  // namespace zorvanelink::ui

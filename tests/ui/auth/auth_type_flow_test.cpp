// What follows from the end of the type dialog, with the real session around it.
#include "components/utils/sensitive_value.h"
#include "tests/ui/auth/login_fixture.h"
#include "ui/cert/tls_cert_dialog.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

class AuthTypeFlowTest : public LoginFixture {
  protected:
    // The gateway has been asked for its types, and answers.
    AuthTypeDialog& Choose() {
        profile->authType = SupportedAuthType::kNone;
        Connect();
        Demand(Open::kType);
        service->Forget();
        return Dialog();
    }
    AuthTypeDialog& Dialog() const {
        if (!Stands<AuthTypeDialog>()) {
            throw std::runtime_error("no choice of type stands");
        }
        return *Newest<AuthTypeDialog>();
    }
    void Press(char const* button) { test::Find<QPushButton>(Dialog(), button).click(); }
};

TEST_F(AuthTypeFlowTest, LoginStartsOnceTheDialogIsGone) {
    for (char const* button : {"btn_connect_", "btn_third_party_"}) {
        QPointer<AuthTypeDialog> const dialog = &Choose();
        Demand(Open::kType);  // one at a time
        EXPECT_EQ(&Dialog(), dialog);
        Press(button);
        EXPECT_FALSE(Stands<AuthTypeDialog>());
        EXPECT_EQ(Sent("start"), 0);
        ASSERT_TRUE(test::WaitUntil([&] { return Sent("start") == 1 && !dialog; }));
        EXPECT_EQ(Sent("stop"), 0);
        EXPECT_EQ(g_running_client, 1);
        ClickStop();
        Receive(MsgCode::OFFLINE);
    }
    EXPECT_EQ(profile->authType, SupportedAuthType::kOauth);
}

TEST_F(AuthTypeFlowTest, CancelEndsTheAttempt) {
    for (Qt::Key const key : {Qt::Key_Escape, Qt::Key_Space}) {
        AuthTypeDialog& dialog = Choose();
        if (key == Qt::Key_Space) {
            test::Find<QWidget>(dialog, "btn_cancel_").setFocus();
        }
        QTest::keyClick(dialog.focusWidget(), key);
        EXPECT_EQ(Sent("stop"), 1);
        EXPECT_EQ(state.status, ConnectStatus::Disconnected);
        EXPECT_EQ(viewStateFor(state).statusText, MsgCode::UI_TR_STATE_DISCONNECT);
        EXPECT_EQ(g_running_client, 0);
        Receive(MsgCode::OFFLINE);
    }
}

// The gateway's own end of a session leaves nothing to stop behind the dialog.
TEST_F(AuthTypeFlowTest, TheGatewaysEndIsNotThatOfTheNextAttempt) {
    Choose();
    Receive(MsgCode::OFFLINE);
    Dialog().reject();
    EXPECT_EQ(Sent("stop"), 0);
    Click();
    Receive(MsgCode::OFFLINE);
    EXPECT_TRUE(state.Idle()) << "that one was the new attempt's";
}

TEST_F(AuthTypeFlowTest, ARefusedPasswordIsTypedAnewAlsoWhenItIsRemembered) {
    std::string const stored = profile->password;
    Connect();
    prompts.ExpectBox(Text(MsgCode::ERR_AUTH_USER_OR_PASS), 0);
    Receive(MsgCode::ERR_AUTH_USER_OR_PASS);
    auto& password = test::Find<SecretEdit>(Dialog(), "lineedit_password_");
    EXPECT_FALSE(password.HoldsMask());
    EXPECT_EQ(password.text(), QString());
    EXPECT_EQ(Dialog().focusWidget(), &password);
    Dialog().reject();
    EXPECT_EQ(profile->password, stored) << "cancelled: what was remembered stays";
}

// The retry with a query is the client's own: nobody types twice for it.
TEST_F(AuthTypeFlowTest, ARefusedTypeKeepsWhatWasTyped) {
    profile->rememberPassword = false;
    profile->password.clear();
    prompts.ExpectSecret(test::SecretOf("typed"));
    Connect();
    prompts.ExpectBox(Text(MsgCode::ERR_LOGIN_MODE), 0, [this] { Receive(MsgCode::OFFLINE); });
    Receive(MsgCode::ERR_LOGIN_MODE);
    Receive(MsgCode::CONNECTING);
    Demand(Open::kType);
    EXPECT_TRUE(test::Find<SecretEdit>(Dialog(), "lineedit_password_").HoldsMask());
    Dialog().reject();
    EXPECT_TRUE(profile->password.empty()) << "cancelled: nothing is kept";
}

// Nothing is to be remembered, and yet only what was wrong is asked for again.
TEST_F(AuthTypeFlowTest, WhatWasRightIsNotTypedAgain) {
    profile->authType = SupportedAuthType::kPwdWithCert;
    profile->rememberPassword = false;
    profile->certIsFile = false;
    profile->systemCert.certName = "Alice";
    profile->systemCert.certData = "DER";
    profile->systemCert.certType = kCertTypeUsbKey;
    struct Case {
        MsgCode code;
        bool passwordStands;
    };
    for (Case const& c :
         {Case{MsgCode::ERR_AUTH_BAD_CERT, true}, Case{MsgCode::ERR_AUTH_USER_OR_PASS, false}}) {
        std::string const secret = components::utils::EncodeSensitiveValue("right");
        profile->password = profile->systemCert.pin = secret;
        profile->tempCredential = false;  // as the editor leaves it
        Click();
        EXPECT_TRUE(profile->password.empty());
        EXPECT_TRUE(profile->systemCert.pin.empty());
        int const before = Sent("start");
        auto const answer = [&](char const* button) {
            // The service's last word comes behind the box.
            prompts.ExpectBox(Text(c.code), 0, [this] { Receive(MsgCode::OFFLINE); });
            Receive(c.code);
            auto& password = test::Find<SecretEdit>(Dialog(), "lineedit_password_");
            auto& pin = test::Find<SecretEdit>(Dialog(), "lineedit_pin_");
            EXPECT_EQ(password.HoldsMask(), c.passwordStands);
            EXPECT_EQ(pin.HoldsMask(), !c.passwordStands);
            EXPECT_EQ(test::Find<QLineEdit>(Dialog(), "lineedit_username_").text(),
                      QStringLiteral("alice"));
            (c.passwordStands ? pin : password).setText(QStringLiteral("right"));
            Press(button);
        };
        answer("btn_connect_");
        ASSERT_TRUE(test::WaitUntil([&] { return Sent("start") == before + 1; }));
        answer("btn_cancel_");
        EXPECT_TRUE(profile->password.empty()) << "cancelled: nothing is kept";
        EXPECT_TRUE(profile->systemCert.pin.empty());
    }
}

}  // namespace
}  // namespace zorvanelink::ui

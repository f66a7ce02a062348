// The session with the flows of a login around it; every dialog is the real one.
#pragma once

#include <QtTest/QTest>

#include "tests/support/qt_helpers.h"
#include "tests/ui/session/session_fixture.h"
#include "ui/auth/auth_code_flow.h"
#include "ui/auth/auth_type_flow.h"
#include "ui/auth/change_pwd_flow.h"

namespace zorvanelink::ui {

// What a login may wait for; kUsers is the user's own change of the password.
enum class Open { kNothing, kSms, kEmail, kToken, kForced, kUsers, kType, kPage, kEnd };

class LoginFixture : public test::SessionFixture {
  protected:
    using MsgCode = common::MsgCode;

    static core::sslvpn::CLMsgCommonReplyData DemandOf(Open open) {
        constexpr MsgCode kCodes[] = {MsgCode::UNSPECIFIED,           MsgCode::NEED_SMS_AUTH_CODE,
                                      MsgCode::NEED_EMAIL_AUTH_CODE,  MsgCode::NEED_TOKEN_AUTH_CODE,
                                      MsgCode::NEED_CHANGE_PWD,       MsgCode::AUTH_DATA,
                                      MsgCode::NEED_SELECT_AUTH_TYPE, MsgCode::OAUTH_PAGE};
        auto data = Reply(kCodes[static_cast<int>(open)]);
        data.changePWDType = 100;  // the user's own number, and yet a demand
        data.allowLocalChangePassword = true;
        data.supportedAuthType = {"pwd", "oauth"};
        data.oauthPagePath = "https://login.example.com/";
        data.tokenPromptMsg = "Press the button";
        data.emailAuthAccount = "alice.chen@mail.example.com";  // its prompt takes two lines
        return data;
    }
    void Demand(Open open) {
        Receive(DemandOf(open));
        if (open == Open::kUsers) {
            passwords.onActionActiveChangePWDTriggered();
        }
    }
    // An ended one may not be gone yet.
    template <class D>
    D* Newest() const {
        auto const all = window.findChildren<D*>();
        return all.isEmpty() ? nullptr : all.last();
    }
    template <class D>
    bool Stands() const {
        return Newest<D>() != nullptr && Newest<D>()->isVisible();
    }
    Open Standing() const {
        std::vector<Open> all;
        if (Stands<AuthDialog>()) {
            constexpr Open kKinds[] = {Open::kToken, Open::kSms, Open::kEmail};
            all.push_back(kKinds[session.context.authCodeType]);
        }
        if (Stands<ChangePWDDialog>()) {
            all.push_back(passwords.OutlivesLogin() ? Open::kUsers : Open::kForced);
        }
        if (Stands<AuthTypeDialog>()) {
            all.push_back(Open::kType);
        }
        if (page.Waits()) {
            all.push_back(Open::kPage);
        }
        EXPECT_LE(all.size(), 1U) << "one at a time";
        return all.empty() ? Open::kNothing : all.front();
    }
    void TypeCode(char const* code) {
        auto& field = test::Find<QLineEdit>(*Newest<AuthDialog>(), "code_edit_");
        field.setText(QString::fromUtf8(code));
        QTest::keyClick(&field, Qt::Key_Return);
    }
    void TypePasswords(char const* current, char const* password, char const* confirmed) {
        Newest<ChangePWDDialog>()->AutoConfirmChangePwd(0, current, password, confirmed);
    }

    std::shared_ptr<Profile> profile = Add("Head office");
    ThirdPartyLogin& page = session.ThirdParty();
    AuthTypeFlow types{session};
    AuthCodeFlow codes{session};
    ChangePWDFlow passwords{session};
};

}  // namespace zorvanelink::ui

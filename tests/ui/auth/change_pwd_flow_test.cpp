// A change of the password, from the demand or the wish to each of its ends, with the real session
// around it.
#include "core/clmsg_json.h"
#include "tests/ui/auth/login_fixture.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

class ChangePWDFlowTest : public LoginFixture {
  protected:
    void Demand(int type) {
        auto data = DemandOf(ui::Open::kForced);
        data.changePWDType = type;
        Receive(data);
    }
    // At login with `type`, or by the user, online.
    void Open(ChangePWdType type) {
        if (type != ChangePWdType::kUser) {
            Connect();
            Demand(static_cast<int>(type));
        } else {
            GoOnline();
            LoginFixture::Demand(ui::Open::kUsers);
        }
        service->Forget();
    }
    ChangePWDDialog* Dialog() const { return Newest<ChangePWDDialog>(); }
    bool Stands() const { return LoginFixture::Stands<ChangePWDDialog>(); }
    void ExpectGone() {
        EXPECT_TRUE(test::WaitUntil([this] { return Dialog() == nullptr && prompts.Finished(); }));
    }
    std::string Stored() const {
        return components::utils::DecodeSensitiveValue(profile->password);
    }
};

TEST_F(ChangePWDFlowTest, TheFormIsCheckedInItsOrder) {
    char const* const ten = "一二三四五六七八九十";
    char const* const eleven = "一二三四五六七八九十一";
    struct Case {
        char const* current;
        char const* password;
        char const* confirmed;
        MsgCode fault;
    };
    Open(ChangePWdType::kExpired);
    for (Case const& c : {Case{"", "b", "c", MsgCode::UI_INFO_CHECK_NO_EMPTY_ITEM},
                          Case{"a", "a", "c", MsgCode::UI_ERROR_TWO_PWD_NOT_MATCH},
                          Case{"a", "a", "a", MsgCode::UI_INFO_PWD_NOT_CHANGE},
                          Case{eleven, ten, ten, MsgCode::UI_TR_ERR_CUR_PWD_LENGTH},
                          Case{ten, eleven, eleven, MsgCode::UI_TR_ERR_NEW_PWD_LENGTH}}) {
        prompts.ExpectBox(Text(c.fault), 0);
        TypePasswords(c.current, c.password, c.confirmed);
    }
    EXPECT_EQ(Sent("newPassword"), 0);
    TypePasswords("a", ten, ten);
    EXPECT_EQ(Sent("newPassword"), 1);
}

TEST_F(ChangePWDFlowTest, SuccessIsKeptAtOnceAndEndsAForcedLogin) {
    for (bool const remember : {true, false}) {
        for (auto const type :
             {ChangePWdType::kFirstLogin, ChangePWdType(7), ChangePWdType::kUser}) {
            bool const users = type == ChangePWdType::kUser;
            profile->rememberPassword = remember;
            profile->password = components::utils::EncodeSensitiveValue("old");
            profile->tempCredential = false;
            config.Save();
            Open(type);
            TypePasswords("old", "new", "new");
            prompts.ExpectBox(Text(users ? MsgCode::UI_INFO_CHANGE_PWD_SUCCESS
                                         : MsgCode::UI_INFO_CHANGE_PWD_SUCCESS_PLEASE_LOGIN_AGAIN),
                              0, [this] { EXPECT_EQ(Stored(), "new"); });
            Receive(MsgCode::CHANGE_PWD_SUCCESS);
            ExpectGone();
            EXPECT_EQ(Sent("stop"), users ? 0 : 1);
            EXPECT_EQ(state.online, users);
            Config reread;
            reread.Load();
            EXPECT_EQ(reread.GetProfile("Head office")->password,
                      remember ? profile->password : std::string());
            Receive(MsgCode::OFFLINE);
            service->Forget();
            Click();  // typed once, good for this attempt
            EXPECT_EQ(Sent(profile->rememberPassword ? profile->password.c_str() : "start"), 1);
            EXPECT_EQ(profile->password.empty(), !remember);
            Receive(MsgCode::OFFLINE);
        }
    }
}

TEST_F(ChangePWDFlowTest, ARefusalIsOneBoxAndAnotherTry) {
    struct Case {
        MsgCode code;
        QString text;
    };
    Open(ChangePWdType::kExpired);
    for (Case const& c :
         {Case{MsgCode::ERR_PASSWORD_COMPLEXITY, Text(MsgCode::UI_INFO_OBEY_PWD_RULE)},
          Case{MsgCode::ERR_HISTORY_PASSWORD, Text(MsgCode::UI_INFO_NO_HISTORY_PWD)},
          Case{MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD, Text(MsgCode::UI_INFO_WRONG_USER_OR_PWD)},
          Case{MsgCode::ERR_CHANGE_PWD_WITH_CLIENT, Text(MsgCode::UI_ERROR_UNKNOWN).arg(-30)},
          Case{MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE,
               Text(MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE)}}) {
        for (std::string const subtype :
             {"connectStatus", "changePWD", "auth", "certRequest", "disconnectReasonn"}) {
            TypePasswords("old", "new", "new");
            prompts.ExpectBox(c.text, 0, [this] {
                auto const& left = test::Find<QLabel>(*Dialog(), "time_left_label_");
                QString const before = left.text();
                boot += std::chrono::seconds(20);  // of nothing more to answer
                EXPECT_TRUE(test::WaitUntil([&] { return left.text() != before; }));
            });
            std::string json = core::sslvpn::CLMsgReplyJson::Build(Reply(c.code));
            ReceiveText(json.replace(json.find("connectStatus"), 13, subtype));
            EXPECT_TRUE(prompts.Finished());
            EXPECT_EQ(test::Find<QWidget>(*Dialog(), "lineEdit_current_pwd_").hasFocus(),
                      c.code == MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD);
            test::Find<QWidget>(*Dialog(), "lineEdit_new_pwd_").setFocus();
            Receive(MsgCode::CHANGE_PWD_SUCCESS);  // of nothing
            EXPECT_EQ(Stored(), "correct horse");
            EXPECT_TRUE(Stands());
        }
    }
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_INTERNAL_ERROR), 0);
    Demand(2);
    EXPECT_EQ(Dialog()->windowTitle(), Text(MsgCode::UI_INFO_CHANGE_PWD_EXPIRED));
    EXPECT_EQ(Sent("stop"), 0);
}

TEST_F(ChangePWDFlowTest, EveryOtherEndIsToldOnce) {
    struct Case {
        std::function<void()> act;
        MsgCode text;
    };
    auto const stops = [](ChangePWdType type) { return type == ChangePWdType::kUser ? 0 : 1; };
    Case const cases[] = {
        {[this] { QTest::keyClick(Dialog(), Qt::Key_Escape); }, MsgCode::UNSPECIFIED},
        {[this] { TypePasswords("old", "new", "new"), boot += ChangePWDFlow::kResponseTime; },
         MsgCode::UI_ERROR_NETWORK_ERROR},
    };
    for (Case const& c : cases) {
        for (auto const type : {ChangePWdType::kExpired, ChangePWdType::kUser}) {
            Open(type);
            if (c.text != MsgCode::UNSPECIFIED) {
                prompts.ExpectBox(Text(c.text), 0, [this] { EXPECT_TRUE(Stands()); });
            }
            c.act();
            ExpectGone();
            EXPECT_EQ(Sent("stop"), stops(type));
            EXPECT_EQ(state.Idle(), type != ChangePWdType::kUser);
            Receive(MsgCode::OFFLINE);
        }
    }
}

TEST_F(ChangePWDFlowTest, AYesThatComesLateStillHolds) {
    for (bool const while_told : {true, false}) {
        profile->password = components::utils::EncodeSensitiveValue("old");
        Open(ChangePWdType::kUser);
        TypePasswords("old", "new", "new");
        int const closings = prompts.Closings();
        auto const closed = [&] { return prompts.Closings() > closings; };
        auto const late = [this] {
            prompts.ExpectBox(Text(MsgCode::UI_INFO_CHANGE_PWD_SUCCESS), 0);
            Receive(MsgCode::CHANGE_PWD_SUCCESS);
        };
        prompts.ExpectBox(Text(MsgCode::UI_ERROR_NETWORK_ERROR), 0, [&] {
            if (while_told) {
                late();
                EXPECT_TRUE(test::WaitUntil(closed)) << "what says that no answer came";
            }
        });
        boot += ChangePWDFlow::kResponseTime;
        ExpectGone();
        if (!while_told) {
            late();
        }
        EXPECT_TRUE(prompts.Finished());
        EXPECT_EQ(Stored(), "new");
        EXPECT_TRUE(state.online);
        Receive(MsgCode::OFFLINE);
        ASSERT_TRUE(state.lastEnd);
        EXPECT_EQ(state.lastEnd->why, "") << "a changed password ends nothing";
    }

    // A no that comes late says nothing more.
    Open(ChangePWdType::kExpired);
    TypePasswords("new", "third", "third");
    prompts.ExpectBox(Text(MsgCode::UI_ERROR_NETWORK_ERROR), 0, [this] {
        for (MsgCode const code :
             {MsgCode::ERR_HISTORY_PASSWORD, MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD,
              MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE}) {
            Receive(code);
        }
    });
    boot += ChangePWDFlow::kResponseTime;
    ExpectGone();
    EXPECT_EQ(Sent("stop"), 1);
    Receive(MsgCode::OFFLINE);

    // The user has given up before the answer came.
    Open(ChangePWdType::kUser);
    TypePasswords("new", "third", "third");
    QTest::keyClick(Dialog(), Qt::Key_Escape);
    ExpectGone();
    prompts.ExpectBox(Text(MsgCode::UI_INFO_CHANGE_PWD_SUCCESS), 0);
    Receive(MsgCode::CHANGE_PWD_SUCCESS);
    EXPECT_EQ(Stored(), "third");
    Receive(MsgCode::CHANGE_PWD_SUCCESS);
    EXPECT_TRUE(prompts.Finished()) << "nobody has asked for another";

    // Sent again meanwhile: which of the two was taken is not known.
    for (MsgCode const between : {MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE, MsgCode::AUTH_DATA}) {
        bool const refused = between != MsgCode::AUTH_DATA;
        for (char const* const password : {"fourth", "fifth"}) {
            passwords.onActionActiveChangePWDTriggered();
            TypePasswords("third", password, password);
            if (password == std::string("fourth")) {
                Dialog()->reject();
                refused ? prompts.ExpectBox(Text(between), 0) : void();
                refused ? Receive(between) : void();
            }
        }
        prompts.ExpectBox(Text(MsgCode::UI_INFO_CHANGE_PWD_SUCCESS), 0);
        Receive(MsgCode::CHANGE_PWD_SUCCESS);
        ExpectGone();
        EXPECT_EQ(Stored(), refused ? "fifth" : "");
    }
}

TEST_F(ChangePWDFlowTest, TheUsersOwnChangeSurvivesAReconnectAndYieldsToADemand) {
    Open(ChangePWdType::kUser);
    for (MsgCode const code :
         {MsgCode::PREPARE_RECONNECTING, MsgCode::RECONNECTING, MsgCode::ONLINE}) {
        Receive(code);
        EXPECT_TRUE(Stands());
    }
    QString const first = QStringLiteral(
        "The connection needs your attention first. Change the password afterwards.");
    for (auto const demand : {ui::Open::kForced, ui::Open::kSms}) {  // and another behind the text
        prompts.ExpectBox(first, 0, [this] { LoginFixture::Demand(ui::Open::kToken); });
        prompts.ExpectBox(first, 0);  // over that
        LoginFixture::Demand(demand);
        ExpectGone();
        EXPECT_EQ(Standing(), ui::Open::kToken);
        EXPECT_EQ(window.findChildren<AuthDialog*>().size(), 1);
        Receive(MsgCode::ONLINE);
        LoginFixture::Demand(ui::Open::kUsers);
    }
    Dialog()->reject();
    ExpectGone();
    Receive(MsgCode::ONLINE);
    session.context.allowLocalChangePassword = false;
    passwords.onActionActiveChangePWDTriggered();
    EXPECT_FALSE(Stands());
    EXPECT_EQ(Sent("stop"), 0);
}

TEST_F(ChangePWDFlowTest, TheRulesTickThemselvesOff) {
    core::sslvpn::UserPasswordComplexity policy;
    policy.noIncludeUserName = true;
    EXPECT_EQ(ConvertPWDComplexityToString(policy), QString());
    policy.enableComplexity = true;
    EXPECT_EQ(ConvertPWDComplexityToString(policy),
              QLatin1Char('\n') + Text(MsgCode::UI_INFO_NO_USER_NAME));
    policy.minLength = policy.capitalLetters = policy.smallLetters = 3;
    policy.numericCharacters = policy.nonAlphanumericLetters = 2;
    EXPECT_EQ(ConvertPWDComplexityToString(policy).count(QLatin1Char('\n')), 6);
    auto const met = [&](char const* password) {
        std::string marks;
        for (PasswordRule const& rule : PasswordRulesOf(policy)) {
            marks += rule.MetBy(QString::fromUtf8(password), QStringLiteral("alice")) ? '+' : '-';
        }
        return marks;
    };
    EXPECT_EQ(met(""), "------");
    EXPECT_EQ(met("ABC"), "++---+");
    EXPECT_EQ(met("xalIcEx12"), "+-++--");
    EXPECT_EQ(met("ABCabc12!?"), "++++++");
}

}  // namespace
}  // namespace zorvanelink::ui

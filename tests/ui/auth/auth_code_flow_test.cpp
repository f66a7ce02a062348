// A second factor, from the demand to each of its ends, with the real session around it.
#include "core/clmsg_json.h"
#include "tests/ui/auth/login_fixture.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using core::sslvpn::CLMsgJson;
using core::sslvpn::SetType;

class AuthCodeFlowTest : public LoginFixture {
  protected:
    void Ask(Open open = Open::kSms) {
        Connect();
        Demand(open);
        service->Forget();
    }
    AuthDialog* Dialog() const { return Newest<AuthDialog>(); }
    QLineEdit& Field() const { return test::Find<QLineEdit>(*Dialog(), "code_edit_"); }
    // The end, with the stop that was owed, and a card that can be pressed again.
    void ExpectEnd() {
        ASSERT_TRUE(test::WaitUntil([this] { return Dialog() == nullptr; }));
        EXPECT_TRUE(prompts.Finished());
        EXPECT_EQ(Sent("stop"), 1);
        EXPECT_EQ(state.status, ConnectStatus::Disconnected);
        EXPECT_NE(viewStateFor(state).statusText, MsgCode::UI_TR_SECOND_AUTH);
        Receive(MsgCode::OFFLINE);
        EXPECT_TRUE(state.Idle());
    }
};

TEST_F(AuthCodeFlowTest, EachKindSendsItsOwnMessagesAndIsAccepted) {
    struct Case {
        Open open;
        SetType code;
        SetType request;
        MsgCode ok;
    };
    for (Case const& c : {Case{Open::kSms, SetType::kSmsCode, SetType::kRequestSmsCode,
                               MsgCode::SMS_AUTH_CODE_CHECK_OK},
                          Case{Open::kEmail, SetType::kEmailCode, SetType::kRequestEmailCode,
                               MsgCode::EMAIL_AUTH_CODE_CHECK_OK},
                          Case{Open::kToken, SetType::kTokenCode, SetType::kUnknown,
                               MsgCode::TOKEN_AUTH_CODE_CHECK_OK}}) {
        Ask(c.open);
        ASSERT_TRUE(Stands<AuthDialog>());
        EXPECT_EQ(viewStateFor(state).statusText, MsgCode::UI_TR_SECOND_AUTH);
        auto& retry = test::Find<QPushButton>(*Dialog(), "retry_button_");
        EXPECT_EQ(retry.size(), QSize(80, 32)) << "also while it counts";
        ASSERT_EQ(retry.isHidden(), c.request == SetType::kUnknown);
        for (int second = 0; second < 60; ++second) {
            EXPECT_FALSE(retry.isEnabled());
            Dialog()->onRetryTimerTimeout();
        }
        EXPECT_EQ(retry.text(), Text(MsgCode::UI_TR_RESEND));
        EXPECT_FALSE(test::Find<QTextEdit>(*Dialog(), "prompt_label_")
                         .toPlainText()
                         .contains(QLatin1Char('\n')))
            << "it wraps at its words";
        TypeCode(" 0815 ");
        EXPECT_EQ(service->Sent().back(), CLMsgJson::BuildAuthCode("Head office", c.code, "0815"));
        if (!retry.isHidden()) {
            retry.click();
            EXPECT_FALSE(retry.isEnabled());
            EXPECT_EQ(service->Sent().back(),
                      CLMsgJson::BuildRequestAuthCode("Head office", c.request));
        }
        Receive(c.ok);
        EXPECT_FALSE(Stands<AuthDialog>());
        EXPECT_EQ(viewStateFor(state).statusText, MsgCode::CONNECTING);
        EXPECT_EQ(Sent("stop"), 0);
        Receive(MsgCode::OFFLINE);
    }
}

TEST_F(AuthCodeFlowTest, AWrongCodeIsTypedAgain) {
    Ask();
    for (MsgCode const code :
         {MsgCode::WRONG_AUTH_CODE, MsgCode::ERR_SMS_CODE, MsgCode::ERR_EMAIL_AUTH_CODE}) {
        Dialog()->onRetryTimerTimeout();
        QString const pause = test::Find<QPushButton>(*Dialog(), "retry_button_").text();
        TypeCode("1");
        prompts.ExpectBox(Text(MsgCode::UI_INFO_FAIL_VARIFY_AUTH_CODE_INPUT_AGAIN), 0, [&] {
            Receive(code);                         // said twice, told once
            Receive(MsgCode::NEED_SMS_AUTH_CODE);  // asked again: nothing changes
        });
        Receive(code);
        EXPECT_EQ(Field().text(), QString());
        EXPECT_EQ(Dialog()->focusWidget(), &Field());
        EXPECT_EQ(test::Find<QPushButton>(*Dialog(), "retry_button_").text(), pause);
    }
    service->Forget();
    for (int const tries : {1, 2, 3}) {
        TypeCode("2");  // the same is no edit
        EXPECT_EQ(Sent("smsCode"), std::min(tries, 2));
        if (tries == 1) {
            Dialog()->on_retry_button__clicked();
        }
    }
    service->Forget();
    Field().clear();
    QString const pasted(36, QLatin1Char('8'));
    Field().insert(QStringLiteral(" \t") + pasted + QLatin1Char('\n'));
    EXPECT_EQ(Field().text().trimmed(), pasted);
    std::string const longest = pasted.toStdString();
    for (std::string const& code : {std::string("  "), longest + '8'}) {
        prompts.ExpectBox(Text(MsgCode::UI_INFO_WRONG_AUTH_CODE_LENGTH), 0);
        Dialog()->AutoConfirmAuth(0, code);
    }
    EXPECT_EQ(Sent("smsCode"), 0);
    Dialog()->AutoConfirmAuth(0, longest);
    EXPECT_EQ(Sent("smsCode"), 1);
    Dialog()->AutoConfirmAuth(1, {});
    EXPECT_EQ(Sent("requestSmsCode"), 1);
    EXPECT_EQ(window.findChildren<AuthDialog*>().size(), 1);
}

TEST_F(AuthCodeFlowTest, EveryEndIsToldOnceAndFreesTheCard) {
    struct Case {
        std::function<void()> act;
        MsgCode text = MsgCode::UNSPECIFIED;
    };
    Case const cases[] = {
        {[this] { QTest::keyClick(&Field(), Qt::Key_Escape); }},
        {[this] { test::Find<QPushButton>(*Dialog(), "cancel_button_").click(); }},
        {[this] { Receive(MsgCode::ERR_AUTH_CODE_RETRY_LIMIT); },
         MsgCode::UI_WARNING_REACH_MAXIMUM_RETRY_TIMES_LOGIN_AGAIN},
        {[this] { Receive(MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT); },
         MsgCode::UI_WARNING_REACH_MAXIMUM_RETRY_TIMES_LOGIN_AGAIN},
        {[this] { Receive(MsgCode::ERR_SMS_DEVICE); }, MsgCode::ERR_SMS_DEVICE},
    };
    for (Case const& c : cases) {
        Ask();
        ASSERT_TRUE(Stands<AuthDialog>());
        if (c.text != MsgCode::UNSPECIFIED) {
            prompts.ExpectBox(Text(c.text), 0, [this] {
                EXPECT_TRUE(Stands<AuthDialog>()) << "the text comes first";
                EXPECT_EQ(state.status, ConnectStatus::Disconnected) << "and the stop before it";
                EXPECT_NE(viewStateFor(state).statusText, MsgCode::UI_TR_SECOND_AUTH);
                Receive(MsgCode::OFFLINE);
            });
        }
        int const closings = prompts.Closings();
        c.act();
        ExpectEnd();
        EXPECT_EQ(prompts.Closings() > closings, c.text != MsgCode::UNSPECIFIED);
    }
}

// A gateway that takes no code any more may say so before it has asked for one.
TEST_F(AuthCodeFlowTest, ALimitEndsALoginWithoutADialogToo) {
    Connect();
    prompts.ExpectBox(Text(MsgCode::UI_WARNING_REACH_MAXIMUM_RETRY_TIMES_LOGIN_AGAIN), 0);
    Receive(MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT);
    ExpectEnd();
    GoOnline();
    Receive(MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT);
    EXPECT_TRUE(state.online);
}

TEST_F(AuthCodeFlowTest, ATextOfTheSameDialogSpeaksForItsEnd) {
    Ask();
    prompts.ExpectBox(Text(MsgCode::ERR_HISTORY_PASSWORD), 0, [this] { window.hide(); });
    Receive(MsgCode::ERR_HISTORY_PASSWORD);  // an error that the session survives
    EXPECT_TRUE(window.isVisible());
    Receive(MsgCode::OFFLINE);
    ExpectEnd();

    service->Forget();
    Ask();
    Receive(MsgCode::GATEWAY_UNREACHABLE);  // kept for the end
    prompts.ExpectBox(Text(MsgCode::GATEWAY_UNREACHABLE), 0);
    Receive(MsgCode::OFFLINE);
    ExpectEnd();
}

TEST_F(AuthCodeFlowTest, ATextWithoutBlanksIsBroken) {
    QFontMetrics const metrics(QApplication::font());
    QString const text = QStringLiteral("按").repeated(100) + QStringLiteral("\nshort");
    for (int const width : {0, 200}) {  // one sign a line, at least
        QString const broken = AuthDialog::Text_Changeline(text, width, metrics);
        for (QString const& line : broken.split(QLatin1Char('\n'))) {
            EXPECT_TRUE(line.size() == 1 || metrics.horizontalAdvance(line) < width);
        }
        EXPECT_EQ(QString(broken).remove(QLatin1Char('\n')),
                  QString(text).remove(QLatin1Char('\n')));
    }
}

}  // namespace
}  // namespace zorvanelink::ui

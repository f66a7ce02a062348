// A second factor, from the demand to each of its ends, with the real session around it.
#include "ui/auth/auth_code_flow.h"

#include <QtTest/QTest>

#include "core/clmsg_json.h"
#include "tests/support/qt_helpers.h"
#include "tests/ui/session/session_fixture.h"
#include "ui/auth/auth_dialog.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using core::sslvpn::CLMsgJson;
using core::sslvpn::SetType;

class AuthCodeFlowTest : public test::SessionFixture {
  protected:
    void Ask(MsgCode demand = MsgCode::NEED_SMS_AUTH_CODE) {
        Connect();
        auto data = Reply(demand);
        data.tokenPromptMsg = "Press the button";
        Receive(data);
        service->Forget();
    }
    // The last one, since an ended one may not be gone yet.
    AuthDialog* Dialog() const {
        auto const all = window.findChildren<AuthDialog*>();
        return all.isEmpty() ? nullptr : all.last();
    }
    bool Stands() const { return Dialog() != nullptr && Dialog()->isVisible(); }
    QLineEdit& Field() const { return test::Find<QLineEdit>(*Dialog(), "code_edit_"); }
    void Type(char const* code) {
        Field().setText(QString::fromUtf8(code));
        QTest::keyClick(&Field(), Qt::Key_Return);
    }
    // The end, with as many stops as were owed, and a card that can be pressed again.
    void ExpectEnd(int stops) {
        ASSERT_TRUE(test::WaitUntil([this] { return Dialog() == nullptr; }));
        EXPECT_TRUE(prompts.Finished());
        EXPECT_EQ(Sent("stop"), stops);
        EXPECT_EQ(state.status, ConnectStatus::Disconnected);
        EXPECT_NE(viewStateFor(state).statusText, MsgCode::UI_TR_SECOND_AUTH);
        Receive(MsgCode::OFFLINE);
        EXPECT_TRUE(state.Idle());
    }

    std::shared_ptr<Profile> profile = Add("Head office");
    AuthCodeFlow codes{session};
};

TEST_F(AuthCodeFlowTest, EachKindSendsItsOwnMessagesAndIsAccepted) {
    struct Case {
        MsgCode demand;
        SetType code;
        SetType request;
        MsgCode ok;
    };
    for (Case const& c : {Case{MsgCode::NEED_SMS_AUTH_CODE, SetType::kSmsCode,
                               SetType::kRequestSmsCode, MsgCode::SMS_AUTH_CODE_CHECK_OK},
                          Case{MsgCode::NEED_EMAIL_AUTH_CODE, SetType::kEmailCode,
                               SetType::kRequestEmailCode, MsgCode::EMAIL_AUTH_CODE_CHECK_OK},
                          Case{MsgCode::NEED_TOKEN_AUTH_CODE, SetType::kTokenCode,
                               SetType::kUnknown, MsgCode::TOKEN_AUTH_CODE_CHECK_OK}}) {
        Ask(c.demand);
        ASSERT_TRUE(Stands());
        EXPECT_EQ(viewStateFor(state).statusText, MsgCode::UI_TR_SECOND_AUTH);
        auto& retry = test::Find<QPushButton>(*Dialog(), "retry_button_");
        ASSERT_EQ(retry.isHidden(), c.request == SetType::kUnknown);
        for (int second = 0; second < 60; ++second) {
            EXPECT_FALSE(retry.isEnabled());
            Dialog()->onRetryTimerTimeout();
        }
        EXPECT_EQ(retry.text(), Text(MsgCode::UI_TR_RESEND));
        Type(" 0815 ");
        EXPECT_EQ(service->Sent().back(), CLMsgJson::BuildAuthCode("Head office", c.code, "0815"));
        if (!retry.isHidden()) {
            retry.click();
            EXPECT_FALSE(retry.isEnabled());
            EXPECT_EQ(service->Sent().back(),
                      CLMsgJson::BuildRequestAuthCode("Head office", c.request));
        }
        Receive(c.ok);
        EXPECT_FALSE(Stands());
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
        Type("1");
        prompts.ExpectBox(Text(MsgCode::UI_INFO_FAIL_VARIFY_AUTH_CODE_INPUT_AGAIN), 0, [&] {
            Receive(code);                           // said twice, told once
            Receive(MsgCode::NEED_EMAIL_AUTH_CODE);  // asked again: nothing changes
        });
        Receive(code);
        EXPECT_EQ(Field().text(), QString());
        EXPECT_EQ(Dialog()->focusWidget(), &Field());
        EXPECT_EQ(test::Find<QPushButton>(*Dialog(), "retry_button_").text(), pause);
    }
    service->Forget();
    std::string const longest(36, '8');
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
        int stops;
        MsgCode text = MsgCode::UNSPECIFIED;
    };
    Case const cases[] = {
        {[this] { QTest::keyClick(&Field(), Qt::Key_Escape); }, 1},
        {[this] { test::Find<QPushButton>(*Dialog(), "cancel_button_").click(); }, 1},
        {[this] { ClickStop(), Receive(MsgCode::OFFLINE); }, 1},
        {[this] { Receive(MsgCode::ERR_AUTH_CODE_RETRY_LIMIT); }, 1,
         MsgCode::UI_WARNING_REACH_MAXIMUM_RETRY_TIMES_LOGIN_AGAIN},
        {[this] { Receive(MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT); }, 1,
         MsgCode::UI_WARNING_REACH_MAXIMUM_RETRY_TIMES_LOGIN_AGAIN},
        {[this] { boot += AuthCodeFlow::kAuthTime; }, 1,
         MsgCode::UI_WARNING_CONNECT_TIMEOUT_LOGIN_AGAIN},
        {[this] { Receive(MsgCode::ERR_SMS_DEVICE); }, 1, MsgCode::ERR_SMS_DEVICE},
        {[this] { Receive(MsgCode::OFFLINE); }, 1, MsgCode::UI_INFO_CONNECTION_TERMINATED},
    };
    for (Case const& c : cases) {
        Ask();
        ASSERT_TRUE(Stands());
        if (c.text != MsgCode::UNSPECIFIED) {
            prompts.ExpectBox(Text(c.text), 0, [this] {
                EXPECT_TRUE(Stands()) << "the text comes first";
                EXPECT_EQ(state.status, ConnectStatus::Disconnected) << "and the stop before it";
                Receive(MsgCode::OFFLINE);
            });
        }
        int const closings = prompts.Closings();
        c.act();
        ExpectEnd(c.stops);
        EXPECT_EQ(prompts.Closings() > closings, c.text != MsgCode::UNSPECIFIED);
    }
}

TEST_F(AuthCodeFlowTest, OfALostLinkTheUserReadsOnceAndNothingIsOwed) {
    for (bool const told : {false, true}) {
        Ask();
        if (told) {
            prompts.ExpectBox(Text(MsgCode::ERR_HISTORY_PASSWORD), 0);
            Receive(MsgCode::ERR_HISTORY_PASSWORD);  // an error that the session survives
        } else {
            prompts.ExpectBox(Text(MsgCode::UI_INFO_CONNECTION_TERMINATED), 0,
                              [this] { EXPECT_EQ(state.status, ConnectStatus::Disconnected); });
        }
        LoseLink();
        ExpectEnd(0);
        FindLink();
    }
}

TEST_F(AuthCodeFlowTest, EndsWithoutAWordWhenItsStepIsOver) {
    test::FakeConversation next;
    Ask();
    boot += AuthCodeFlow::kAuthTime - std::chrono::milliseconds(1);
    session.conversation.Open(next);
    EXPECT_FALSE(Stands());
    boot += std::chrono::hours(1);
    EXPECT_EQ(state.status, ConnectStatus::Connecting);
    session.conversation.Close(next);
    Receive(MsgCode::NEED_SMS_AUTH_CODE);
    EXPECT_TRUE(Stands());
    Receive(MsgCode::ONLINE);
    EXPECT_FALSE(Stands());
    EXPECT_EQ(Sent("stop"), 0);
    ClickStop();
    Receive(MsgCode::NEED_SMS_AUTH_CODE);
    EXPECT_FALSE(Stands()) << "what comes after the user's stop opens nothing";
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

// However far a login has come, the link may go, the service may end it, and so may the user: the
// card is free at once, the stops that are owed have left, and one text at most says why.
#include "tests/ui/auth/login_fixture.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

enum class End { kLinkLost, kHeartbeatsLost, kByService, kByUser };

struct Step {
    char const* name;
    std::function<void(std::function<void()> const& end)> at;
    MsgCode told = MsgCode::UNSPECIFIED;  // to who was typing when it was not the user's own end
    Open open = Open::kNothing;           // what may go on without its session
};

class LoginEndTest : public LoginFixture {
  protected:
    using Act = std::function<void()> const&;

    void Ask(Open open) {
        Connect();
        Demand(open);
    }
    // While the text stands.
    void During(QString const& text, Act end, Act cause) {
        prompts.ExpectBox(text, 0, end);
        cause();
    }

    std::vector<Step> Steps() {
        MsgCode const lost = MsgCode::UI_INFO_CONNECTION_TERMINATED;
        auto sms = [this](Act next) {
            return [this, next](Act end) { Ask(Open::kSms), next(), end(); };
        };
        return {
            {"start sent", [this](Act end) { Click(), end(); }},
            {"prompt",
             [this](Act end) {
                 profile->password.clear();
                 prompts.ExpectSecret(test::SecretOf("typed", true), end);
                 Click();
             },
             MsgCode::UI_INFO_CONNECT_SERVER_FAIL},
            {"connecting", [this](Act end) { Connect(), end(); }},
            {"choice of type", [this](Act end) { Ask(Open::kType), end(); }, MsgCode::UNSPECIFIED,
             Open::kType},
            {"code asked for", sms([] {}), lost},
            {"code sent", sms([this] { TypeCode("1"); }), lost},
            {"code asked for again", sms([this] { codes.onRequestAuthCode(); }), lost},
            {"wrong code told",
             [this](Act end) {
                 Ask(Open::kToken);
                 During(Text(MsgCode::UI_INFO_FAIL_VARIFY_AUTH_CODE_INPUT_AGAIN), end,
                        [this] { Receive(MsgCode::WRONG_AUTH_CODE); });
             },
             lost},
            {"password asked for", [this](Act end) { Ask(Open::kForced), end(); }, lost},
            {"password sent",
             [this](Act end) { Ask(Open::kForced), TypePasswords("old", "new", "new"), end(); },
             lost},
            {"no answer told",
             [this](Act end) {
                 Ask(Open::kForced);
                 TypePasswords("old", "new", "new");
                 During(Text(MsgCode::UI_ERROR_NETWORK_ERROR), end, [this] {
                     boot += ChangePWDFlow::kResponseTime;
                     EXPECT_TRUE(test::WaitUntil([this] { return prompts.Finished(); }));
                 });
             },
             lost},
            {"page open", [this](Act end) { Ask(Open::kPage), end(); }},
            {"expiry told",
             [this](Act end) {
                 Connect();
                 auto data = Reply(MsgCode::AUTH_DATA);
                 data.passwordExpiredDays = 5;
                 During(Text(MsgCode::UI_INFO_PWD_WILL_EXPIRE).arg(5), end, [&] { Receive(data); });
             }},
            {"certificate asked about",
             [this](Act end) {
                 Connect();
                 During(Text(MsgCode::SSL_CERT_EXPIRED), end,
                        [this] { Receive(MsgCode::SSL_CERT_EXPIRED); });
             }},
            {"own change", [this](Act end) { GoOnline(), Demand(Open::kUsers), end(); }, lost},
        };
    }

    void Perform(End end) {
        service->Forget();
        switch (end) {
            case End::kLinkLost:
                return LoseLink();
            case End::kHeartbeatsLost:
                service_there = false;
                service->TimeOut(ServiceLink::kHeartbeatLossLimit + 1);
                EXPECT_TRUE(test::WaitUntil([this] { return !link.IsReady(); }));
                return;
            case End::kByService:
                return Receive(MsgCode::OFFLINE);
            case End::kByUser:
                ClickStop();
                for (int open = 1; open < static_cast<int>(Open::kEnd); ++open) {
                    Demand(static_cast<Open>(open));
                    EXPECT_EQ(Standing(), Open::kNothing) << "opened after the user's stop";
                }
                Receive(MsgCode::OFFLINE);
        }
    }

    void Check(Step const& step, End end) {
        bool const dead = end == End::kLinkLost || end == End::kHeartbeatsLost;
        profile->password = test::StoredLogin("any")->password;
        Open const left = end == End::kByUser ? Open::kNothing : step.open;
        step.at([&] {
            if (step.told != MsgCode::UNSPECIFIED && end != End::kByUser) {
                prompts.ExpectBox(Text(step.told), 0);
            }
            Perform(end);
        });
        EXPECT_TRUE(test::WaitUntil([&] { return prompts.Finished() && Standing() == left; }));
        if (left == Open::kType) {
            EXPECT_EQ(state.Idle(), dead) << "until the dialog has ended";
            Newest<AuthTypeDialog>()->reject();
        }
        EXPECT_TRUE(test::WaitUntil([this] { return state.Idle(); }, 1000));
        EXPECT_EQ(g_running_client, 0);
        EXPECT_EQ(Sent("stop"), dead || left == Open::kType ? 0 : 1);
        if (dead) {
            FindLink();
            EXPECT_EQ(Sent("stop"), 0) << "what the service does not report is not stopped";
            Receive(MsgCode::CONNECTING);
            ClickStop();
            EXPECT_EQ(Sent("stop"), 1) << "what it reports again is";
            Receive(MsgCode::OFFLINE);
            EXPECT_TRUE(state.Idle());
        }
    }
};

TEST_F(LoginEndTest, AtEveryStepTheCardComesFree) {
    for (Step const& step : Steps()) {
        for (End const end :
             {End::kLinkLost, End::kHeartbeatsLost, End::kByService, End::kByUser}) {
            if (end == End::kByService && step.told == MsgCode::UI_INFO_CONNECT_SERVER_FAIL) {
                continue;  // no start has left: that was of the attempt before
            }
            SCOPED_TRACE(std::string(step.name) + ", " + std::to_string(static_cast<int>(end)));
            Check(step, end);
            ASSERT_FALSE(HasFailure());
        }
    }
}

TEST_F(LoginEndTest, EachStepHasItsTime) {
    struct Case {
        Open open;
        std::chrono::seconds time;
        MsgCode text;
    };
    for (Case const& c :
         {Case{Open::kSms, std::chrono::seconds(585),
               MsgCode::UI_WARNING_CONNECT_TIMEOUT_LOGIN_AGAIN},
          Case{Open::kForced, std::chrono::seconds(590), MsgCode::UI_INFO_CHANGE_PWD_TIMEOUT},
          Case{Open::kPage, std::chrono::seconds(540), MsgCode::SECOND_AUTH_TIMEOUT}}) {
        Ask(c.open);
        service->Forget();
        auto const left = [&] {
            auto const* const label = window.findChild<QLabel*>(QStringLiteral("time_left_label_"));
            return c.open == Open::kPage ? page.TimeLeft() : label->text();
        };
        boot += c.time - std::chrono::milliseconds(1);
        EXPECT_TRUE(test::WaitUntil([&] { return left().endsWith(QLatin1String("0:01")); }));
        EXPECT_EQ(Standing(), c.open);
        prompts.ExpectBox(Text(c.text), 0, [&] {
            EXPECT_EQ(Sent("stop"), 1) << "before its text";
            EXPECT_EQ(Standing(), c.open == Open::kPage ? Open::kNothing : c.open);
            Receive(MsgCode::OFFLINE);
        });
        boot += std::chrono::milliseconds(1);
        EXPECT_TRUE(test::WaitUntil([&] {
            return prompts.Finished() && Standing() == Open::kNothing &&
                   window.findChild<QDialog*>() == nullptr;
        }));
        EXPECT_EQ(Sent("stop"), 1);
        EXPECT_TRUE(state.Idle());
    }
}

// Both in one write: the first has hardly opened.
TEST_F(LoginEndTest, ADemandEndsTheOneBefore) {
    Open const all[] = {Open::kSms,    Open::kEmail, Open::kToken,
                        Open::kForced, Open::kType,  Open::kPage};
    for (Open const first : all) {
        for (Open const second : all) {
            Connect();
            if (first == second && first == Open::kForced) {
                prompts.ExpectBox(Text(MsgCode::UI_ERROR_INTERNAL_ERROR), 0);
            }
            service->Deliver(core::sslvpn::CLMsgReplyJson::Build(DemandOf(first)));
            Receive(DemandOf(second));
            EXPECT_EQ(Standing(), second);
            EXPECT_EQ(state.status, ConnectStatus::Connecting);
            EXPECT_EQ(Sent("stop"), 0);
            ClickStop();
            Receive(MsgCode::OFFLINE);
            service->Forget();
        }
    }
}

// A box below the dialog could not be closed, and would hold up what the dialog has to say.
TEST_F(LoginEndTest, ATextThatStandsIsReadOverTheDialog) {
    core::sslvpn::CLMsgGatewayDetectStopData older;
    older.profileName = profile->name;
    older.reason = "No gateway was measured";
    QString const text = QString::fromStdString(older.reason);
    for (Open const open : {Open::kSms, Open::kForced, Open::kType}) {
        Connect();
        prompts.ExpectBox(text, 0, [&] { Demand(open); });
        prompts.ExpectBox(text, 0);
        Receive(older);
        EXPECT_TRUE(test::WaitUntil([this] { return prompts.Finished(); }));
        EXPECT_EQ(prompts.Boxes().back().parent, window.findChildren<ZVLDialog*>().last());
        if (open != Open::kType) {  // it does not speak for the dialog's own end
            prompts.ExpectBox(Text(MsgCode::UI_INFO_CONNECTION_TERMINATED), 0);
            LoseLink();
            EXPECT_TRUE(test::WaitUntil([this] { return prompts.Finished() && state.Idle(); }));
            FindLink();
        }
    }
}

TEST_F(LoginEndTest, WhatIsAskedForComesIntoView) {
    QSignalSpy demanded(&session, &Session::Demanded);
    for (int i = 0; i < static_cast<int>(Open::kEnd); ++i) {
        Open const open = static_cast<Open>(i);
        for (auto const hide : {&QWidget::hide, &QWidget::showMinimized}) {
            auto const inView = [&] {
                EXPECT_TRUE(window.isVisible());
                EXPECT_FALSE(window.isMinimized());
                EXPECT_EQ(demanded.count(), open == Open::kUsers ? 0 : 1);
            };
            (window.*hide)();
            demanded.clear();
            if (open == Open::kNothing) {  // the prompt of a login that began by itself
                profile->password.clear();
                prompts.ExpectSecret(test::SecretOf("typed", true), inView);
            }
            open == Open::kUsers ? GoOnline() : Connect();
            if (open != Open::kNothing) {
                Demand(open);
                inView();
                EXPECT_EQ(Standing(), open);
            }
            ClickStop();
            Receive(MsgCode::OFFLINE);
        }
    }
}

// But not while something is being read, and nothing of the login brings it back.
TEST_F(LoginEndTest, ALoginThatSucceedsMinimisesTheWindow) {
    config.autoMinimize = true;
    QDialog box(&window);
    box.setModal(true);
    for (bool const accepted : {true, false}) {
        for (bool const reading : {true, false}) {
            Ask(Open::kSms);
            box.setVisible(reading);
            if (accepted) {  // in one write
                service->Deliver(
                    core::sslvpn::CLMsgReplyJson::Build(Reply(MsgCode::SMS_AUTH_CODE_CHECK_OK)));
            }
            Receive(MsgCode::ONLINE);
            QCoreApplication::processEvents();
            EXPECT_EQ(window.isMinimized(), !reading) << accepted;
            box.hide();
            ClickStop();
            Receive(MsgCode::OFFLINE);
        }
    }
}

}  // namespace
}  // namespace zorvanelink::ui

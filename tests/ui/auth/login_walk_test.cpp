// Every code that the client acts on, from every state, with each dialog of a login open.
#include <set>

#include "components/logger/logger.h"
#include "tests/ui/auth/login_fixture.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using common::Show;

// kOvertaken: begun anew before the service has answered the stop of the attempt before.
enum class At {
    kOvertaken,
    kStarting,
    kConnecting,
    kConnected,
    kPrepareReconnecting,
    kReconnecting,
    kEnd
};

struct Outcome {
    ConnectStatus status;
    bool online;
    bool offline;
    Open open = Open::kNothing;
    int boxes = 0;
    int stops = 0;
    int starts = 0;
    bool operator==(Outcome const&) const = default;
};

void PrintTo(Outcome const& o, std::ostream* out) {
    *out << "status " << static_cast<int>(o.status) << ", online " << o.online << ", offline "
         << o.offline << ", open " << static_cast<int>(o.open) << ", boxes " << o.boxes
         << ", stops " << o.stops << ", starts " << o.starts;
}

Show shownAs(MsgCode code) {
    return common::g_IPCMessageMap.Get(code).show;
}

using Codes = std::set<MsgCode>;

Codes const kAccepted{MsgCode::SMS_AUTH_CODE_CHECK_OK, MsgCode::TOKEN_AUTH_CODE_CHECK_OK,
                      MsgCode::EMAIL_AUTH_CODE_CHECK_OK};
Codes const kWrongCode{MsgCode::WRONG_AUTH_CODE, MsgCode::ERR_SMS_CODE,
                       MsgCode::ERR_EMAIL_AUTH_CODE};
Codes const kLimits{MsgCode::ERR_AUTH_CODE_RETRY_LIMIT, MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT};
Codes const kRefusedPassword{MsgCode::ERR_HISTORY_PASSWORD, MsgCode::ERR_PASSWORD_COMPLEXITY,
                             MsgCode::ERR_CHANGE_PWD_WITH_CLIENT,
                             MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD};
Codes const kQuestions{MsgCode::SSL_CERT_YET_VALID, MsgCode::SSL_CERT_EXPIRED};
// Shown with the session going on.
Codes const kOneBox{MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD,
                    MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE};
// End a login although the catalogue has no handler for them.
Codes const kUnmarkedEnds{MsgCode::ERR_SMS_TIMEOUT,     MsgCode::ERR_EMAIL_AUTH_CODE_TIMEOUT,
                          MsgCode::SECOND_AUTH_AAA_ERR, MsgCode::SECOND_AUTH_TIMEOUT,
                          MsgCode::TOKEN_AUTH_FAILED,   MsgCode::ERR_RECV_INVALID_OAUTH_INFO,
                          MsgCode::ERR_WRITE_OAUTH_INFO};

Open demandedBy(MsgCode code) {
    switch (code) {
        case MsgCode::NEED_SMS_AUTH_CODE:
            return Open::kSms;
        case MsgCode::NEED_EMAIL_AUTH_CODE:
            return Open::kEmail;
        case MsgCode::NEED_TOKEN_AUTH_CODE:
            return Open::kToken;
        case MsgCode::NEED_CHANGE_PWD:
            return Open::kForced;
        case MsgCode::NEED_SELECT_AUTH_TYPE:
            return Open::kType;
        case MsgCode::OAUTH_PAGE:
            return Open::kPage;
        default:
            return Open::kNothing;
    }
}

// A dead session leaves no dialog that could still send; a choice of type may go on.
Outcome down(Outcome const& o, int boxes) {
    Open const left = o.open == Open::kType ? o.open : Open::kNothing;
    return {ConnectStatus::Disconnected, false, true, left, boxes, 1};
}

// With a dialog that takes the code; null where none does.
std::optional<Outcome> answered(MsgCode code, Outcome o) {
    bool const types_code =
        o.open == Open::kSms || o.open == Open::kEmail || o.open == Open::kToken;
    bool const changes = o.open == Open::kForced || o.open == Open::kUsers;
    if (types_code && kAccepted.count(code) > 0) {
        o.open = Open::kNothing;
    } else if ((types_code && kWrongCode.count(code) > 0) ||
               (changes && kRefusedPassword.count(code) > 0)) {
        o.boxes = 1;
    } else if (kLimits.count(code) > 0 || kUnmarkedEnds.count(code) > 0) {
        return o.online && !types_code ? o : down(o, 1);
    } else {
        return std::nullopt;
    }
    return o;
}

// Another demand ends what stands without a word, but for the user's own change.
Outcome demanded(Open wanted, Outcome o) {
    o.boxes = o.open == Open::kUsers || (o.open == wanted && wanted == Open::kForced) ? 1 : 0;
    o.open = wanted;
    return o;
}

Outcome failed(MsgCode code, Outcome const& before) {
    Outcome o = down(before, 1);
    if (code == MsgCode::ERR_LOGIN_MODE) {
        o.starts = 1;
        o.offline = false;
        o.open = Open::kNothing;
    } else if (code == MsgCode::ERR_AUTH_USER_OR_PASS || code == MsgCode::ERR_AUTH_BAD_CERT) {
        o.open = Open::kType;
    }
    return o;
}

bool isPrompt(Open open) {
    return open != Open::kNothing && open != Open::kPage;
}

Outcome moved(MsgCode code, Outcome const& o) {
    switch (code) {
        case MsgCode::OFFLINE:
            return o.open == Open::kType ? o : down(o, isPrompt(o.open) ? 1 : 0);
        case MsgCode::CERT_REQUEST:  // and no certificate to sign with
            return down(o, isPrompt(o.open) && o.open != Open::kType ? 1 : 0);
        case MsgCode::CONNECTING:
            return {ConnectStatus::Connecting, false, false, o.open};
        case MsgCode::ONLINE:
            return {ConnectStatus::Connected, true, false,
                    o.open == Open::kUsers ? o.open : Open::kNothing};
        case MsgCode::PREPARE_RECONNECTING:
            return {ConnectStatus::PrepareReconnecting, o.online, false, o.open};
        case MsgCode::RECONNECTING:
            return {ConnectStatus::Reconnecting, false, false, o.open};
        default:
            return o;
    }
}

Outcome expected(MsgCode code, Outcome o, At at) {
    if (at == At::kOvertaken) {
        return code == MsgCode::OFFLINE || code == MsgCode::CERT_REQUEST ? o : moved(code, o);
    }
    if (auto const outcome = answered(code, o)) {
        return *outcome;
    }
    if (demandedBy(code) != Open::kNothing) {
        return demanded(demandedBy(code), o);
    }
    if (shownAs(code) == Show::kCritical || code == MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK) {
        return failed(code, o);
    }
    if (shownAs(code) != Show::kNone || kOneBox.count(code) > 0) {
        o.open = o.open == Open::kPage ? Open::kNothing : o.open;  // its time has been stopped
        o.boxes = 1;
        return o;
    }
    o.boxes = static_cast<int>(kQuestions.count(code));
    return moved(code, o);
}

class LoginWalkTest : public LoginFixture {
  protected:
    LoginWalkTest() {
        Add("Lab");
        prompts.CloseAnyBox();
        components::logger::Log().setLogLevel(components::logger::LOG_LEVEL::fatal);
    }

    void Go(At from, At to) {
        constexpr MsgCode kRoad[] = {MsgCode::CONNECTING, MsgCode::ONLINE,
                                     MsgCode::PREPARE_RECONNECTING, MsgCode::RECONNECTING};
        int const first = static_cast<int>(At::kStarting);
        for (int at = static_cast<int>(from); at < static_cast<int>(to); ++at) {
            Receive(kRoad[at - first]);
        }
    }

    void Reach(At at, Open open) {
        ClickStop();
        Receive(MsgCode::OFFLINE);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        profile->authType = common::SupportedAuthType::kPwd;
        Click();
        if (at == At::kOvertaken) {
            session.Flow().StopConnect();
            Click();
        }
        At const opens = open == Open::kUsers ? At::kConnected : at;
        Go(At::kStarting, opens);
        if (open != Open::kNothing) {
            Demand(open);
        }
        Go(std::max(opens, At::kStarting), at);
        service->Forget();
        boxes_before = prompts.Boxes().size();
    }

    Outcome Now() const {
        return {state.status,
                state.online,
                state.offline,
                Standing(),
                static_cast<int>(prompts.Boxes().size() - boxes_before),
                Sent("stop"),
                Sent("start")};
    }

    // Of another profile, of a name that was not asked for, or broken: nothing moves.
    void Disturb(MsgCode code) {
        Outcome const before = Now();
        Receive(code, "Lab");
        std::string broken = core::sslvpn::CLMsgReplyJson::Build(Reply(code));
        ReceiveText(broken.substr(0, broken.size() / 2));
        broken.replace(broken.find("\"statusCode\": "), 14, "\"statusCode\": 0.");
        ReceiveText(broken);
        std::string const asked = std::exchange(state.connectingProfileName, "Another");
        Receive(MsgCode::CONNECTING);
        state.connectingProfileName = asked;
        EXPECT_EQ(Now(), before);
    }

    // Reached anew only where something has changed.
    void Check(MsgCode code, At at, Open open) {
        SCOPED_TRACE("code " + std::to_string(static_cast<int>(code)) + ", from " +
                     std::to_string(static_cast<int>(at)) + ", open " +
                     std::to_string(static_cast<int>(open)));
        if (!reached || Now() != *reached) {
            Reach(at, open);
            reached = Now();
        }
        Outcome const before = *reached;
        ASSERT_EQ(before.open, open);
        if (open == Open::kNothing && at == At::kConnected) {
            Disturb(code);
        }
        auto data = DemandOf(Open::kType);
        data.statusCode = code;
        data.redirectUrl = data.oauthPagePath;
        Receive(data);
        QCoreApplication::processEvents();  // a text may come behind the end
        EXPECT_EQ(Now(), expected(code, before, at));
        if (code == MsgCode::OFFLINE) {
            reached.reset();  // also where it shows nowhere
        }
    }

    std::optional<Outcome> reached;
    std::size_t boxes_before = 0;
};

// What a dialog makes of a failure does not depend on its number, unless it is one of a login.
bool worthATry(bool ofALogin, At at, Open open) {
    switch (open) {
        case Open::kNothing:
            return true;
        case Open::kUsers:
            return ofALogin && at >= At::kConnected;
        default:
            return at == At::kConnecting || (ofALogin && at > At::kConnecting);
    }
}

TEST_F(LoginWalkTest, EveryCodeFromEveryState) {
    Codes ofALogin = kUnmarkedEnds;
    auto const table = StatusTable::Codes();
    ofALogin.insert(table.begin(), table.end());
    ofALogin.insert(kRefusedPassword.begin(), kRefusedPassword.end());
    Codes all = ofALogin;
    for (auto const& row : common::g_IPCMessageMap.All()) {
        if (row.show != Show::kNone) {
            all.insert(row.code);
        }
    }
    Connect();
    for (int at = 0; at < static_cast<int>(At::kEnd); ++at) {
        for (int open = 0; open < static_cast<int>(Open::kEnd); ++open) {
            reached.reset();
            for (MsgCode const code : all) {
                if (worthATry(ofALogin.count(code) > 0, At(at), Open(open))) {
                    Check(code, At(at), Open(open));
                }
            }
            ASSERT_FALSE(HasFailure());
        }
    }
}

}  // namespace
}  // namespace zorvanelink::ui

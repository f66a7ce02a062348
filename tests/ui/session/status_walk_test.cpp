// Every code that the client acts on, from every state, with and without the dialogs of a login.
#include <gtest/gtest.h>

#include <set>

#include "components/logger/logger.h"
#include "tests/ui/session/session_fixture.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using SubType = core::CLMsg::SubType;

enum class At { kStarting, kConnecting, kConnected, kPrepareReconnecting, kReconnecting, kEnd };
enum class Open { kNothing, kAuth, kType, kPassword, kEnd };

struct Outcome {
    ConnectStatus status;
    bool online;
    bool offline;
    int boxes = 0;
    int stops = 0;
    int starts = 0;
    bool lost = false;  // so the open conversation was told
    int ended = 0;
    bool operator==(Outcome const&) const = default;
};

void PrintTo(Outcome const& o, std::ostream* out) {
    *out << "status " << static_cast<int>(o.status) << ", online " << o.online << ", offline "
         << o.offline << ", boxes " << o.boxes << ", stops " << o.stops << ", starts " << o.starts
         << ", lost " << o.lost << ", ended " << o.ended;
}

common::Show shownAs(MsgCode code) {
    return common::g_IPCMessageMap.Get(code).show;
}

std::vector<MsgCode> shownCodes() {
    std::vector<MsgCode> codes;
    for (auto const& row : common::g_IPCMessageMap.All()) {
        if (row.show != common::Show::kNone) {
            codes.push_back(row.code);
        }
    }
    return codes;
}

// What the dialogs of a code and of a new password answer themselves.
std::vector<MsgCode> const kCodeAnswers{MsgCode::NEED_SMS_AUTH_CODE,
                                        MsgCode::NEED_TOKEN_AUTH_CODE,
                                        MsgCode::NEED_EMAIL_AUTH_CODE,
                                        MsgCode::SMS_AUTH_CODE_CHECK_OK,
                                        MsgCode::TOKEN_AUTH_CODE_CHECK_OK,
                                        MsgCode::EMAIL_AUTH_CODE_CHECK_OK,
                                        MsgCode::WRONG_AUTH_CODE,
                                        MsgCode::ERR_SMS_CODE,
                                        MsgCode::ERR_EMAIL_AUTH_CODE,
                                        MsgCode::ERR_AUTH_CODE_RETRY_LIMIT,
                                        MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT};
std::vector<MsgCode> const kPasswordAnswers{
    MsgCode::ERR_HISTORY_PASSWORD, MsgCode::ERR_PASSWORD_COMPLEXITY,
    MsgCode::ERR_CHANGE_PWD_WITH_CLIENT, MsgCode::CHANGE_PWD_SUCCESS,
    MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD};

// End a login although the catalogue has no handler for them.
std::set<MsgCode> const kUnmarkedEnds{
    MsgCode::ERR_SMS_TIMEOUT,     MsgCode::ERR_EMAIL_AUTH_CODE_TIMEOUT,
    MsgCode::SECOND_AUTH_AAA_ERR, MsgCode::SECOND_AUTH_TIMEOUT,
    MsgCode::TOKEN_AUTH_FAILED,   MsgCode::ERR_RECV_INVALID_OAUTH_INFO,
    MsgCode::ERR_WRITE_OAUTH_INFO};
// Shown with the session going on.
std::set<MsgCode> const kOneBox{MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD,
                                MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE,
                                MsgCode::SSL_CERT_YET_VALID, MsgCode::SSL_CERT_EXPIRED};

bool fatal(MsgCode code) {
    return shownAs(code) == common::Show::kCritical || kUnmarkedEnds.count(code) > 0 ||
           code == MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK;
}

// A dead session leaves no dialog that could still send; a choice of type may go on.
Outcome down(Outcome before, Open open, int boxes) {
    bool const told = open == Open::kType || (open != Open::kNothing && boxes == 0);
    bool const closed = open != Open::kNothing && !told;
    return {ConnectStatus::Disconnected, false, true, before.boxes + boxes, 1, 0, told, closed};
}

Outcome expected(MsgCode code, Outcome o, At at, Open open) {
    bool const answers = open == Open::kPassword &&
                         std::count(kPasswordAnswers.begin(), kPasswordAnswers.end(), code) > 0;
    if (answers) {
        return o;
    }
    if (fatal(code)) {
        o = down(o, open, 1);
        if (code == MsgCode::ERR_LOGIN_MODE) {
            o.starts = 1;
            o.offline = false;
            o.ended = open != Open::kNothing;
        }
        return o;
    }
    if (shownAs(code) != common::Show::kNone || kOneBox.count(code) > 0) {
        o.boxes = 1;
        return o;
    }
    switch (code) {
        case MsgCode::OFFLINE:  // between stop and first status it belongs to the attempt before
            return at == At::kStarting || open == Open::kType ? o : down(o, open, 0);
        case MsgCode::CONNECTING:
            return {ConnectStatus::Connecting, false, false};
        case MsgCode::ONLINE:
            o.ended = open != Open::kNothing;
            return {ConnectStatus::Connected, true, false, 0, 0, 0, false, o.ended};
        case MsgCode::PREPARE_RECONNECTING:
            return {ConnectStatus::PrepareReconnecting, o.online, false};
        case MsgCode::RECONNECTING:
            return {ConnectStatus::Reconnecting, false, false};
        case MsgCode::OAUTH_PAGE:  // another step of the login
            o.ended = open != Open::kNothing;
            return o;
        default:
            return o;
    }
}

class StatusWalkTest : public test::SessionFixture {
  protected:
    void Reach(At at) {
        profile->authType = common::SupportedAuthType::kPwd;
        session.Flow().StopConnect();
        Click();
        MsgCode const codes[] = {MsgCode::CONNECTING, MsgCode::ONLINE,
                                 MsgCode::PREPARE_RECONNECTING, MsgCode::RECONNECTING};
        for (int i = 0; i < static_cast<int>(at); ++i) {
            Receive(codes[i]);
        }
        service->Forget();
        boxes_before = prompts.Boxes().size();
    }

    Outcome Now() const {
        return {state.status,    state.online,
                state.offline,   static_cast<int>(prompts.Boxes().size() - boxes_before),
                Sent("stop"),    Sent("start"),
                dialog.lost > 0, dialog.ended};
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

    void Check(MsgCode code, At at, Open open) {
        SCOPED_TRACE("code " + std::to_string(static_cast<int>(code)) + ", from " +
                     std::to_string(static_cast<int>(at)) + ", open " +
                     std::to_string(static_cast<int>(open)));
        Reach(at);
        dialog = {};
        dialog.outlives = open == Open::kType;
        dialog.answers = open == Open::kAuth       ? kCodeAnswers
                         : open == Open::kPassword ? kPasswordAnswers
                                                   : std::vector<MsgCode>();
        if (open != Open::kNothing) {
            session.conversation.Open(dialog);
        }
        if (open == Open::kNothing) {
            Disturb(code);
        }
        Outcome const before = Now();
        auto data = Reply(code);
        data.supportedAuthType = {"pwd"};
        data.oauthPagePath = data.redirectUrl = "https://vpn.example.com/";
        Receive(data);
        EXPECT_EQ(Now(), expected(code, before, at, open));
        session.conversation.Close(dialog);
    }

    test::FakeConversation dialog;
    std::shared_ptr<Profile> profile = Add("Head office");
    std::size_t boxes_before = 0;
};

TEST_F(StatusWalkTest, EveryCodeFromEveryState) {
    Add("Lab");
    prompts.CloseAnyBox();
    components::logger::Log().setLogLevel(components::logger::LOG_LEVEL::error);
    std::vector<MsgCode> codes = StatusTable::Codes();
    std::vector<MsgCode> const shown = shownCodes();
    codes.insert(codes.end(), shown.begin(), shown.end());
    codes.insert(codes.end(), kUnmarkedEnds.begin(), kUnmarkedEnds.end());
    GoOnline();
    for (MsgCode const code : codes) {
        for (int at = 0; at < static_cast<int>(At::kEnd); ++at) {
            for (int open = 0; open < static_cast<int>(Open::kEnd); ++open) {
                Check(code, static_cast<At>(at), static_cast<Open>(open));
            }
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST(StatusTables, AreCompleteAndNameNothingTwice) {
    std::vector<MsgCode> const codes = StatusTable::Codes();
    std::set<std::int32_t> numbers;
    for (MsgCode const code : codes) {
        EXPECT_TRUE(numbers.insert(static_cast<std::int32_t>(code)).second);
        EXPECT_EQ(shownAs(code), common::Show::kNone)
            << static_cast<int>(code) << " never gets there";
    }
    EXPECT_EQ(numbers,
              (std::set<std::int32_t>{-33,   -20,   -19,   -16,   40961, 40962, 40963, 40964, 40965,
                                      40966, 40967, 40970, 40971, 40973, 40974, 40975, 40976, 40993,
                                      40994, 40998, 41007, 41008, 41010, 41011, 41012, 41014, 41017,
                                      41018, 41032, 41036, 41042, 41044, 41046}));

    // All others are common replies.
    std::set<SubType> expected;
    for (std::size_t i = 0; i < core::CLMsg::kSubTypeString.size(); ++i) {
        expected.insert(static_cast<SubType>(i));
    }
    for (SubType const common :
         {SubType::kConnectStatus, SubType::kAcceptServerCert, SubType::kQueryStatus}) {
        expected.erase(common);
    }
    std::vector<SubType> const rows = MessageDispatcher::SubTypes();
    EXPECT_EQ(std::set<SubType>(rows.begin(), rows.end()), expected);
    EXPECT_EQ(rows.size(), expected.size());
}

}  // namespace
}  // namespace zorvanelink::ui

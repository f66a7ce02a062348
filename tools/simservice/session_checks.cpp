// What a login may want besides its credentials: a new password, the code of a second factor.
#include <fmt/format.h>

#include "components/utils/secret_string.h"
#include "core/clmsg_json.h"
#include "tools/simservice/notices.h"
#include "tools/simservice/session.h"

namespace zorvanelink::simservice {

using common::MsgCode;
using core::sslvpn::CLMsgJson;

void Session::admit(User const& user) {
    user_ = &user;
    if (gatekeeper_.MustChange(user)) {
        core::sslvpn::CLMsgCommonReplyData data;
        static_cast<core::sslvpn::UserPasswordComplexity&>(data) = scenario_.password.policy;
        data.statusCode = MsgCode::NEED_CHANGE_PWD;
        data.changePWDType = scenario_.password.change;
        hooks_.say("asks for a new password");
        reply(std::move(data));
        return;
    }
    if (!scenario_.second_factor.kind) {
        accept(user);
        return;
    }
    challenge_.emplace(scenario_.second_factor);
    sendCode();
}

// Out to the user, and the client is told to ask for it.
void Session::sendCode() {
    code_sent_ = scheduler_.Now();
    auto data = challenge_->Demand();
    hooks_.say(fmt::format("asks for a code, {}", ReadableCode(data.statusCode)));
    reply(std::move(data));
    hooks_.happened(Moment::kCode);
}

// What is not an answer to the code that was asked for is no try.
bool Session::awaits(core::sslvpn::CLMsgSetData const& set) const {
    return challenge_ && set.profileName == profile_ && challenge_->Concerns(set.subtype);
}

void Session::onAuthCode(Message const& message) {
    core::sslvpn::CLMsgSetData set;
    if (!CLMsgJson::Parse(message, &set) || !awaits(set)) {
        return;
    }
    components::utils::SecretString const code(std::move(set.secondAuthCode));
    auto const age =
        std::chrono::duration_cast<Scheduler::Milliseconds>(scheduler_.Now() - code_sent_);
    judged(challenge_->Check(code.Get(), age.count()));
}

void Session::onRequestAuthCode(Message const& message) {
    core::sslvpn::CLMsgSetData set;
    if (!CLMsgJson::Parse(message, &set) || !awaits(set)) {
        return;
    }
    if (challenge_->Resend()) {
        sendCode();
    } else {
        refuse({nullptr, MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT});
    }
}

void Session::onNewPassword(Message const& message) {
    core::sslvpn::CLMsgSetData set;
    if (!CLMsgJson::Parse(message, &set) || user_ == nullptr || state_ == State::kIdle ||
        set.profileName != profile_) {
        return;
    }
    hooks_.happened(Moment::kPassword);
    step(scenario_.password.answer_ms, [this, set = std::move(set)] {
        bool const allowed = scenario_.password.allow || state_ != State::kOnline;
        auto const verdict =
            allowed ? gatekeeper_.ChangePassword(*user_, set.currentPassword, set.newPassword)
                    : MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE;
        hooks_.say(fmt::format("a new password, {}", ReadableCode(verdict)));
        reply(verdict);
    });
}

// At the end of the login.
void Session::tellPasswordRules() {
    auto const& rules = scenario_.password;
    if (!rules.told) {
        return;
    }
    core::sslvpn::CLMsgCommonReplyData data;
    static_cast<core::sslvpn::UserPasswordComplexity&>(data) = rules.policy;
    data.statusCode = MsgCode::AUTH_DATA;
    data.allowLocalChangePassword = rules.allow;
    data.changePasswordUrl = rules.change_url;
    data.forgotPasswordUrl = rules.forgot_url;
    data.passwordExpiredDays = rules.password_days;
    data.accountExpiredDays = rules.account_days;
    reply(std::move(data));
}

void Session::judged(MsgCode verdict) {
    if (SecondFactor::Ends(verdict)) {
        refuse({nullptr, verdict});
        return;
    }
    hooks_.say(fmt::format("the code is judged, {}", ReadableCode(verdict)));
    reply(verdict);
    if (SecondFactor::Accepts(verdict)) {
        challenge_.reset();
        accept(*user_);
    }
}

}  // namespace zorvanelink::simservice

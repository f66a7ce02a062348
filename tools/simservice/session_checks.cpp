// What a login may want besides its credentials: the code of a second factor.
#include <fmt/format.h>

#include "components/utils/secret_string.h"
#include "core/clmsg_json.h"
#include "tools/simservice/notices.h"
#include "tools/simservice/session.h"

namespace zorvanelink::simservice {

using common::MsgCode;
using core::sslvpn::CLMsgJson;

void Session::admit(User const& user) {
    if (!scenario_.second_factor.kind) {
        accept(user);
        return;
    }
    user_ = &user;
    challenge_.emplace(scenario_.second_factor);
    code_sent_ = scheduler_.Now();
    auto data = challenge_->Demand();
    hooks_.say(fmt::format("asks for a code, {}", ReadableCode(data.statusCode)));
    reply(std::move(data));
}

void Session::onAuthCode(Message const& message) {
    core::sslvpn::CLMsgSetData set;
    if (!CLMsgJson::Parse(message, &set) || !challenge_ || set.profileName != profile_) {
        return;
    }
    components::utils::SecretString const code(std::move(set.secondAuthCode));
    auto const age =
        std::chrono::duration_cast<Scheduler::Milliseconds>(scheduler_.Now() - code_sent_);
    judged(challenge_->Check(code.Get(), age.count()));
}

void Session::onRequestAuthCode(Message const& message) {
    core::sslvpn::CLMsgSetData set;
    if (CLMsgJson::Parse(message, &set) && challenge_ && set.profileName == profile_) {
        hooks_.say("sends another code");
        code_sent_ = scheduler_.Now();
        judged(challenge_->Resend());
    }
}

// The verdict on a code, or on the wish for another one.
void Session::judged(MsgCode verdict) {
    if (verdict == MsgCode::UNSPECIFIED) {
        return;
    }
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

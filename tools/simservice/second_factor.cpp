#include "tools/simservice/second_factor.h"

#include <algorithm>

namespace zorvanelink::simservice {
namespace {

using common::MsgCode;
using core::sslvpn::SetType;

struct Kind {
    CodeKind kind;
    MsgCode need;
    MsgCode right;
    MsgCode wrong;
    MsgCode late;
    SetType code;
    SetType resend;
};
constexpr Kind kKinds[] = {
    {CodeKind::kToken, MsgCode::NEED_TOKEN_AUTH_CODE, MsgCode::TOKEN_AUTH_CODE_CHECK_OK,
     MsgCode::WRONG_AUTH_CODE, MsgCode::TOKEN_AUTH_FAILED, SetType::kTokenCode,
     SetType::kTokenCode},
    {CodeKind::kSms, MsgCode::NEED_SMS_AUTH_CODE, MsgCode::SMS_AUTH_CODE_CHECK_OK,
     MsgCode::ERR_SMS_CODE, MsgCode::ERR_SMS_TIMEOUT, SetType::kSmsCode, SetType::kRequestSmsCode},
    {CodeKind::kEmail, MsgCode::NEED_EMAIL_AUTH_CODE, MsgCode::EMAIL_AUTH_CODE_CHECK_OK,
     MsgCode::ERR_EMAIL_AUTH_CODE, MsgCode::ERR_EMAIL_AUTH_CODE_TIMEOUT, SetType::kEmailCode,
     SetType::kRequestEmailCode},
};

Kind const& rowOf(CodeKind kind) {
    return *std::ranges::find(kKinds, kind, &Kind::kind);
}

}  // namespace

core::sslvpn::CLMsgCommonReplyData SecondFactor::Demand() const {
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = rowOf(*rules_.kind).need;
    data.tokenPromptMsg = rules_.prompt;
    data.emailAuthAccount = rules_.account;
    return data;
}

MsgCode SecondFactor::Check(std::string const& code, long long age_ms) {
    Kind const& kind = rowOf(*rules_.kind);
    if (rules_.valid_ms > 0 && age_ms > rules_.valid_ms) {
        return kind.late;
    }
    if (code == rules_.codes[std::min(resent_, rules_.codes.size() - 1)]) {
        return kind.right;
    }
    return ++wrong_ == rules_.tries ? MsgCode::ERR_AUTH_CODE_RETRY_LIMIT : kind.wrong;
}

bool SecondFactor::Concerns(SetType message) const {
    Kind const& kind = rowOf(*rules_.kind);
    return message == kind.code || message == kind.resend;
}

bool SecondFactor::Resend() {
    return ++resent_ <= static_cast<std::size_t>(rules_.resends);
}

bool SecondFactor::Accepts(MsgCode verdict) {
    return std::ranges::find(kKinds, verdict, &Kind::right) != std::end(kKinds);
}

bool SecondFactor::Ends(MsgCode verdict) {
    return verdict == MsgCode::ERR_AUTH_CODE_RETRY_LIMIT ||
           std::ranges::find(kKinds, verdict, &Kind::late) != std::end(kKinds);
}

}  // namespace zorvanelink::simservice

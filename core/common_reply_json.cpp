// The record of all replies without one of their own: what is written follows from the code, what
// is read from what is there.
#include "core/clmsg_reply_json.h"
#include "core/json_lists.h"
#include "core/reply_json.h"
#include "core/secret_fields.h"

namespace zorvanelink::core::sslvpn {
namespace {

using json::Join;
using json::Need;
using Common = CLMsgCommonReplyData;
using Row = json::Rows<Common>;
using AuthTypes = AuthTypeTexts<Need::kOptional>;
using Warnings = json::KeyedValues<"code", Need::kOptional>;

// Empty when the key is not written.
std::string_view subTypeOf(Common const& data) {
    switch (data.statusCode) {
        case MsgCode::CERT_REQUEST:
            return data.certRequestStr.empty() ? "" : "certRequest";
        case MsgCode::NEED_CHANGE_PWD:
            return "changePWD";
        case MsgCode::AUTH_DATA:
            return "auth";
        default:
            return data.statusCode >= MsgCode::DISCONNECT_REASON_UNKNOWN &&
                           data.statusCode <= MsgCode::DISCONNECT_REASON_FORCE_RECONNECT
                       ? "disconnectReasonn"
                       : "connectStatus";
    }
}

template <MsgCode kCode>
bool is(Common const& data) {
    return data.statusCode == kCode;
}

// The member is written for that code, and only when it is set.
template <MsgCode kCode, auto Member>
bool isAndSet(Common const& data) {
    return data.statusCode == kCode && Row::isSet<Member>(data);
}

template <auto Member>
bool isAuthDataAndPositive(Common const& data) {
    return data.statusCode == MsgCode::AUTH_DATA && data.*Member > 0;
}

bool isComplex(Common const& data) {
    return data.enableComplexity;
}

constexpr std::array kWriteByCode{
    Row::Computed(
        "subtype", [](json::Output& out, Common const& data) { out.Text(subTypeOf(data)); },
        [](Common const& data) { return !subTypeOf(data).empty(); }),
    Row::Written<&Common::certRequestStr>(
        "certRequestStr", &isAndSet<MsgCode::CERT_REQUEST, &Common::certRequestStr>),
    Row::Written<&Common::receivedUserName>("receivedUserName",
                                            &isAndSet<MsgCode::ONLINE, &Common::receivedUserName>)
        .Secret(),
    Row::Written<&Common::warningCode, Warnings>("warningCode",
                                                 &isAndSet<MsgCode::ONLINE, &Common::warningCode>),
    Row::Written<&Common::changePWDType>("changePWDType", &is<MsgCode::NEED_CHANGE_PWD>),
    Row::Written<&Common::passwordExpiredDays>(
        "passwordExpiredDays", &isAuthDataAndPositive<&Common::passwordExpiredDays>),
    Row::Written<&Common::accountExpiredDays>("accountExpiredDays",
                                              &isAuthDataAndPositive<&Common::accountExpiredDays>),
    Row::Written<&Common::changePasswordUrl>("changePasswordUrl", &is<MsgCode::AUTH_DATA>),
    Row::Written<&Common::forgotPasswordUrl>("forgotPasswordUrl", &is<MsgCode::AUTH_DATA>),
    Row::Written<&Common::updateClientPublicIP>(
        "updateClientPublicIP",
        &isAndSet<MsgCode::UPDATE_CLIENT_IP, &Common::updateClientPublicIP>),
    Row::Written<&Common::accountLockSenconds>("accountLockSenconds",
                                               &is<MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK>),
};

constexpr std::array kWriteTail{
    Row::Written<&Common::redirectUrl>("redirectUrl"),
    Row::Written<&Common::redirectUrlTitle>("redirectUrlTitle"),
    Row::Written<&Common::tokenPromptMsg>("tokenPromptMsg"),
    Row::Written<&Common::emailAuthAccount>("emailAuthAccount"),
    Row::Written<&Common::allowLocalChangePassword>("allowLocalChangePassword"),
    ComplexityRow<Common>(),
};

constexpr std::array kWriteIfSet{
    Row::WrittenIfSet<&Common::cipherAlg>("cipherAlg"),
    Row::WrittenIfSet<&Common::ipCompAlg>("ipCompAlg"),
    Row::WrittenIfSet<&Common::resourceListPagePath>("resourceListPagePath"),
    Row::WrittenIfSet<&Common::needClearWebCacheWhenOffline>("needClearWebCacheWhenOffline"),
    Row::WrittenIfSet<&Common::hostCheckDownloadUrl>("hostCheckDownloadUrl"),
    Row::WrittenIfSet<&Common::sslVersion>("sslVersion"),
    Row::WrittenIfSet<&Common::supportedAuthType, AuthTypes>("supportedAuthType"),
    Row::WrittenIfSet<&Common::oauthPagePath>("oauthPagePath"),
    Row::WrittenIfSet<&Common::AppResourcePortalStaticFilePath>("AppResourcePortalStaticFilePath"),
};

constexpr auto kWrite =
    Join(std::array{ProfileRow<Common>(), TypeRow<Common>()}, StatusRows<Common>(), kWriteByCode,
         kWriteTail, PolicyRows<Common>(&isComplex), kWriteIfSet);

constexpr std::array kReadHead{
    ProfileRow<Common>(),
    Row::Required<&Common::statusCode>("statusCode"),
    Row::Optional<&Common::allowLocalChangePassword>("allowLocalChangePassword"),
    Row::Optional<&Common::changePasswordUrl>("changePasswordUrl"),
    Row::Optional<&Common::forgotPasswordUrl>("forgotPasswordUrl"),
    Row::Optional<&Common::redirectUrl>("redirectUrl"),
    Row::Optional<&Common::redirectUrlTitle>("redirectUrlTitle"),
    Row::Optional<&Common::changePWDType>("changePWDType"),
    Row::Optional<&Common::tokenPromptMsg>("tokenPromptMsg"),
    Row::Optional<&Common::emailAuthAccount>("emailAuthAccount"),
    ComplexityRow<Common>(),
};

constexpr std::array kReadTail{
    Row::Optional<&Common::passwordExpiredDays>("passwordExpiredDays"),
    Row::Optional<&Common::accountExpiredDays>("accountExpiredDays"),
    Row::Optional<&Common::accountLockSenconds>("accountLockSenconds"),
    Row::Optional<&Common::resourceListPagePath>("resourceListPagePath"),
    Row::Optional<&Common::errMsgInEn>("errMsgInEn"),
    Row::Optional<&Common::errMsgInCn>("errMsgInCn"),
    Row::Optional<&Common::needClearWebCacheWhenOffline>("needClearWebCacheWhenOffline"),
    Row::Optional<&Common::hostCheckDownloadUrl>("hostCheckDownloadUrl"),
    Row::Optional<&Common::cipherAlg>("cipherAlg"),
    Row::Optional<&Common::ipCompAlg>("ipCompAlg"),
    Row::Optional<&Common::sslVersion>("sslVersion"),
    Row::Optional<&Common::certRequestStr>("certRequestStr"),
    Row::Optional<&Common::supportedAuthType, AuthTypes>("supportedAuthType"),
    Row::Optional<&Common::oauthPagePath>("oauthPagePath"),
    Row::Optional<&Common::receivedUserName>("receivedUserName"),
    Row::Optional<&Common::warningCode, Warnings>("warningCode"),
    Row::Optional<&Common::updateClientPublicIP>("updateClientPublicIP"),
    Row::Optional<&Common::AppResourcePortalStaticFilePath>("AppResourcePortalStaticFilePath"),
};

constexpr auto kRead = Join(kReadHead, PolicyRows<Common>(), kReadTail);

}  // namespace

void AddReplySecrets(std::vector<std::string_view>& keys) {
    json::AddSecrets<Common>(kWriteByCode, keys);
}

std::string CLMsgReplyJson::Build(CLMsgCommonReplyData const& data) {
    return BuildReply(kWrite, data);
}

bool CLMsgReplyJson::Parse(std::string const& json, CLMsgCommonReplyData* data) {
    return json::ParseMessage(json, kRead, data);
}

}  // namespace zorvanelink::core::sslvpn

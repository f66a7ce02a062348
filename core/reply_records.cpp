#include "core/reply_records.h"

namespace zorvanelink::core::sslvpn {
namespace {

constexpr std::int32_t kClientHeartbeatReason = 222;  // the client's own report
constexpr std::int32_t kLastGatewayReason = 13;

// UNSPECIFIED for a number without a name.
MsgCode codeOf(std::int32_t reason) {
    if (reason == kClientHeartbeatReason) {
        return MsgCode::DISCONNECT_REASON_CLIENT_HEARTBEAT_TIMEOUT;
    }
    if (reason < 1 || reason > kLastGatewayReason) {
        return MsgCode::UNSPECIFIED;
    }
    auto const first = static_cast<std::int32_t>(MsgCode::DISCONNECT_REASON_UNKNOWN);
    return static_cast<MsgCode>(first + reason - 1);
}

}  // namespace

std::string DisconnectReasonText(std::int32_t reason) {
    MsgCode const code = codeOf(reason);
    return code == MsgCode::UNSPECIFIED ? "Unkown"
                                        : std::string(common::g_IPCMessageMap.Get(code).english);
}

}  // namespace zorvanelink::core::sslvpn

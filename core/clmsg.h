// The envelope of every message between the GUI and the service: the two string tables and the
// first stage of reading, which decides how the rest of a message is to be read.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "common/message_catalogue.h"
#include "core/clmsg_document.h"

namespace zorvanelink::core {

class CLMsg {
  public:
    enum class Type : std::int32_t { kStart, kStop, kSet, kGet, kReply, kUpdate, kUnknown };

    enum class SubType : std::int32_t {
        kNetConfig,
        kTunnelDisconnect,
        kConnectStatus,
        kTunnelStatistics,
        kGatewayList,
        kGatewayDetectStop,
        kChangePwd,
        kAuth,
        kAppResource,
        kCertRequest,
        kCertRespond,
        kGmCertRequest,
        kGmCertRespond,
        kExecScript,
        kAddRoute,
        kUpdate,
        kAcceptServerCert,
        kErrMsgByServer,
        kQueryStatus,
        kPushStatus,
        kVnicState,
        kDisconnectReason,
        kCluster,
        kUnknown,  // empty or unknown text
    };

    enum class ClientType : std::int32_t { kZlvpn, kL2tp, kUnknown };

    static constexpr std::array<std::string_view, 6> kTypeString{"start", "stop",  "set",
                                                                 "get",   "reply", "update"};
    static constexpr std::array<std::string_view, 23> kSubTypeString{
        "netconfig",        "tunnelDisconnect",  "connectStatus", "tunnelStatistics",
        "gatewayList",      "gatewayDetectStop", "changePWD",     "auth",
        "appResource",      "certRequest",       "certRespond",   "gmCertRequest",
        "gmCertRespond",    "execscript",        "addRoute",      "update",
        "acceptServerCert", "errmsgbyServer",    "queryStatus",   "pushStatus",
        "vnicState",        "disconnectReasonn", "cluster"};

    // "max" for a value above the last row.
    static std::string TypeToString(Type type);
    static std::string SubTypeToString(SubType subtype);
    // Exact, case-sensitive compare; kUnknown for a text outside the table.
    static Type StringToType(std::string const& text);
    static SubType StringToSubType(std::string const& text);
};

// JSON's own complaint (words and byte offset) about the text this thread failed to parse last.
extern thread_local std::string json_str_;

// Any thread. Never throws; a message that fails is logged and leaves the outputs that were not yet
// reached as they were.
class CLMsgJsonParse {
  public:
    // Last failure text at error and at verbose level. One of each per thread, so that parsers on
    // several threads do not write into each other's.
    static thread_local std::string err_str_;
    static thread_local std::string debug_str_;

    // First stage of both the GUI (replies) and whoever needs `subtype`. A message without
    // `subtype` has kUnknown, one without `statusCode` UNSPECIFIED. `message`, when given, gets the
    // parsed text, for the record's reader.
    static bool Parse(std::string const& json, CLMsg::Type* type, CLMsg::SubType* subtype,
                      common::MsgCode* status, CLMsgDocument* message = nullptr);
    // First stage of the service. Applies a `logLevel` at once, whatever the message; `client` is
    // set for "start" and "update" only.
    static bool Parse(std::string const& json, CLMsg::Type* type, CLMsg::ClientType* client,
                      CLMsgDocument* message = nullptr);

    static CLMsg::ClientType GetClientType(std::string const& text);

    // The text under a key of the message itself; empty when there is none.
    static std::string TextOf(CLMsgDocument const& message, std::string_view key);

    static std::string BuildStopReply();
    static std::string BuildVnicStateReply(bool state);
};

}  // namespace zorvanelink::core

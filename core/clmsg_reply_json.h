// The service's replies: writers of the service, readers of the GUI, one pair a record. Any thread.
//
// Build answers indented JSON and logs it at verbose level. Parse answers false when the text is no
// JSON object, or a required key is missing or of the wrong JSON type: that is logged, and what was
// read before it stays in the record. Optional keys keep what the record holds, further keys are
// ignored.
#pragma once

#include <string>

#include "core/reply_records.h"

namespace zorvanelink::core::sslvpn {

class CLMsgReplyJson {
  public:
    static std::string Build(CLMsgReplyNetConfigData const& data);
    static std::string Build(CLMsgReplyTunnelDisconnectData const& data);
    static std::string Build(CLMsgReplyStatusData const& data);
    static std::string Build(CLMsgReplyTunnelStatisticsData const& data);
    static std::string Build(CLMsgSessionStatus const& data);
    static std::string Build(CLMsgGatewayListData const& data);
    static std::string Build(CLMsgClusterData const& data);
    static std::string Build(CLMsgGatewayDetectStopData const& data);
    static std::string Build(CLMsgZtnaAppResourceData const& data);
    static std::string Build(CLMsgOAuthServerInfoData const& data);
    static std::string Build(CLMsgZtnaScriptInfoData const& data);
    static std::string Build(DomainRouteAddRouteData const& data);
    static std::string Build(CLMsgVINCState const& data);
    static std::string Build(CLMsgNotifyErrorMsgData const& data);
    static std::string Build(CLMsgUpdate const& data);
    static std::string Build(CLMsgChangePWDData const& data);
    static std::string Build(CLMsgAuthData const& data);
    static std::string Build(ALMsgCertRespondData const& data);
    static std::string Build(ALMsgGMCertRespondData const& data);
    static std::string Build(CLMsgCommonReplyData const& data);

    static bool Parse(std::string const& json, CLMsgReplyNetConfigData* data);
    static bool Parse(std::string const& json, CLMsgReplyTunnelDisconnectData* data);
    static bool Parse(std::string const& json, CLMsgReplyStatusData* data);
    static bool Parse(std::string const& json, CLMsgReplyTunnelStatisticsData* data);
    static bool Parse(std::string const& json, CLMsgSessionStatus* data);
    static bool Parse(std::string const& json, CLMsgGatewayListData* data);
    static bool Parse(std::string const& json, CLMsgClusterData* data);
    static bool Parse(std::string const& json, CLMsgGatewayDetectStopData* data);
    static bool Parse(std::string const& json, CLMsgZtnaAppResourceData* data);
    static bool Parse(std::string const& json, CLMsgOAuthServerInfoData* data);
    static bool Parse(std::string const& json, CLMsgExecScriptData* data);
    static bool Parse(std::string const& json, DomainRouteAddRouteData* data);
    static bool Parse(std::string const& json, CLMsgVINCState* data);
    static bool Parse(std::string const& json, CLMsgNotifyErrorMsgData* data);
    static bool Parse(std::string const& json, CLMsgUpdate* data);
    static bool Parse(std::string const& json, CLMsgChangePWDData* data);
    static bool Parse(std::string const& json, CLMsgAuthData* data);
    static bool Parse(std::string const& json, ALMsgCertRespondData* data);
    static bool Parse(std::string const& json, ALMsgGMCertRespondData* data);
    static bool Parse(std::string const& json, CLMsgCommonReplyData* data);
};

}  // namespace zorvanelink::core::sslvpn

// One filled record of each kind: every field differs from its default and from its neighbours.
#pragma once

#include "core/request_records.h"

namespace zorvanelink::test {

core::sslvpn::CLMsgStartData SampleStart();  // password only, no certificate
core::sslvpn::CLMsgReplyNetConfigData SampleNetConfig();
core::sslvpn::CLMsgReplyTunnelStatisticsData SampleStatistics();
core::sslvpn::CLMsgGatewayListData SampleGatewayList();
core::sslvpn::ALMsgGMCertRespondData SampleGmTree();
core::sslvpn::UserPasswordComplexity SamplePolicy();
// Everything set, so that the code alone decides what is written.
core::sslvpn::CLMsgCommonReplyData SampleCommon(common::MsgCode code);

}  // namespace zorvanelink::test

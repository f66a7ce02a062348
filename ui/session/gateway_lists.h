// The gateways and cluster members that a gateway tells about: kept in the profile and in the
// settings file, and sent back with the next start. GUI thread.
#pragma once

#include "core/reply_records.h"
#include "ui/config/config.h"

namespace zorvanelink::ui {

// A list of no connection, or of one that is unknown, changes nothing; a broken entry is skipped
// with a warning. Of a list 512 entries are kept. Saved only when something changed.
void HandleGatewayList(Config& config, core::sslvpn::CLMsgGatewayListData const& data);
void HandleClusterList(Config& config, core::sslvpn::CLMsgClusterData const& data);

}  // namespace zorvanelink::ui

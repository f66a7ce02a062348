// What the service says about the connection itself: up, down, interrupted. GUI thread.
#pragma once

#include "ui/session/connect_flow.h"
#include "ui/session/failure_presenter.h"

namespace zorvanelink::ui {

class PageStatuses;

class ConnectionStatuses {
  public:
    using Data = core::sslvpn::CLMsgCommonReplyData;

    ConnectionStatuses(SessionCore& core, ConnectFlow& flow, FailurePresenter& failures,
                       PageStatuses& pages)
        : core_(core), flow_(flow), failures_(failures), pages_(pages) {}

    void onConnecting(Data const& data, Profile& profile);
    void onOnline(Data const& data, Profile& profile);
    void onOffline(Data const& data, Profile& profile);
    void onPrepareReconnecting(Data const& data, Profile& profile);
    void onReconnecting(Data const& data, Profile& profile);
    void onHeartbeatTimeout(Data const& data, Profile& profile);
    void onClientAddress(Data const& data, Profile& profile);
    // A report only: the state follows the statuses.
    void HandlePushReportData(core::sslvpn::CLMsgSessionStatus const& data);

  private:
    void SetWindowMinimize();

    SessionCore& core_;
    ConnectFlow& flow_;
    FailurePresenter& failures_;
    PageStatuses& pages_;
};

}  // namespace zorvanelink::ui

// The road in: every text of the service enters here, is told apart by its subtype and handed to
// its handler. GUI thread.
#pragma once

#include <string>
#include <vector>

#include "core/clmsg.h"
#include "ui/cert/client_certs.h"
#include "ui/session/status_table.h"

namespace zorvanelink::ui {

class MessageDispatcher {
  public:
    MessageDispatcher(SessionCore& core, FailurePresenter& failures, StatusHandlers& handlers,
                      StatusTable& statuses, CertListRoad& certs)
        : core_(core),
          failures_(failures),
          handlers_(handlers),
          statuses_(statuses),
          certs_(certs) {}

    // False when the message could not be read or its handler failed: logged, and the next
    // message is none the worse.
    bool ProcessServiceMsg(std::string const& json);

    // Every subtype with a row of its own, in the order of the table; all others are common
    // replies.
    static std::vector<core::CLMsg::SubType> SubTypes();

  private:
    using SubType = core::CLMsg::SubType;
    using Message = core::CLMsgDocument;
    struct Row {
        SubType subtype;
        bool (MessageDispatcher::*handle)(Message const& message);
    };
    static Row const kRows[];

    bool onNetConfig(Message const& message);
    bool onTunnelDisconnect(Message const& message);
    bool onTunnelStatistics(Message const& message);
    bool onGatewayList(Message const& message);
    bool onCluster(Message const& message);
    bool onGatewayDetectStop(Message const& message);
    bool onAddRoute(Message const& message);
    bool onErrMsgByServer(Message const& message);
    bool onPushStatus(Message const& message);
    bool onChangePwd(Message const& message);
    bool onAuth(Message const& message);
    bool onAppResource(Message const& message);
    bool HandleCertRespond(Message const& message);
    bool HandleGMCertRespond(Message const& message);
    bool onUpdate(Message const& message);
    bool onVnicState(Message const& message);
    bool onExecScript(Message const& message);
    bool onCommonReply(Message const& message);

    // Reads a record and hands it to `handle` when it concerns the running profile, and its present
    // attempt.
    template <class Record, class Handler>
    bool readFor(Message const& message, Handler&& handle);

    SessionCore& core_;
    FailurePresenter& failures_;
    StatusHandlers& handlers_;
    StatusTable& statuses_;
    CertListRoad& certs_;
};

}  // namespace zorvanelink::ui

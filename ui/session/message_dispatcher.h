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
    struct Row {
        SubType subtype;
        bool (MessageDispatcher::*handle)(std::string const& json);
    };
    static Row const kRows[];

    bool onNetConfig(std::string const& json);
    bool onTunnelDisconnect(std::string const& json);
    bool onTunnelStatistics(std::string const& json);
    bool onGatewayList(std::string const& json);
    bool onCluster(std::string const& json);
    bool onGatewayDetectStop(std::string const& json);
    bool onAddRoute(std::string const& json);
    bool onErrMsgByServer(std::string const& json);
    bool onPushStatus(std::string const& json);
    bool onChangePwd(std::string const& json);
    bool onAuth(std::string const& json);
    bool onAppResource(std::string const& json);
    bool onCertRequest(std::string const& json);
    bool HandleCertRespond(std::string const& json);
    bool HandleGMCertRespond(std::string const& json);
    bool onUpdate(std::string const& json);
    bool onVnicState(std::string const& json);
    bool onDisconnectReason(std::string const& json);
    bool onExecScript(std::string const& json);
    bool onCommonReply(std::string const& json);

    // Reads a record and hands it to `handle` when it concerns the running profile.
    template <class Record, class Handler>
    bool readFor(std::string const& json, Handler&& handle);
    // The same, while the session stands.
    template <class Handler>
    bool readForSession(std::string const& json, char const* logLine, Handler&& handle);

    SessionCore& core_;
    FailurePresenter& failures_;
    StatusHandlers& handlers_;
    StatusTable& statuses_;
    CertListRoad& certs_;
};

}  // namespace zorvanelink::ui

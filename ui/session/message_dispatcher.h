// The road in: every text of the service enters here, is told apart by its subtype and handed to
// its handler. GUI thread.
#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "core/clmsg.h"
#include "core/reply_records.h"
#include "ui/session/failure_presenter.h"
#include "ui/session/status_handler.h"

namespace zorvanelink::ui {

class MessageDispatcher : public QObject {
    Q_OBJECT

  public:
    MessageDispatcher(ConnectionState& state, StatusHandler& statuses, FailurePresenter& failures,
                      Config& config, QObject* parent = nullptr);

    // False when the message could not be read or its handler failed: logged, and the next
    // message is none the worse.
    bool ProcessServiceMsg(std::string const& json);

  Q_SIGNALS:
    // Of the running profile; the record is in its Context already.
    void NetConfigArrived(std::shared_ptr<Profile> const& profile);
    void StatisticsArrived(std::shared_ptr<Profile> const& profile);
    void DomainRouteArrived(core::sslvpn::DomainRouteAddRouteData const& route);
    void AdapterStateChanged(bool usable);
    void RecvCertInfo(std::vector<zorvanelink::CertInfo> const& list);

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
    bool HandleCertRespond(std::string const& json);
    bool onPushStatus(std::string const& json);
    bool onVnicState(std::string const& json);
    bool onDisconnectReason(std::string const& json);
    bool onExecScript(std::string const& json);
    bool onCommonReply(std::string const& json);

    StatusHandler& statuses_;
    FailurePresenter& failures_;
    ConnectionState& state_;
    Config& config_;
};

}  // namespace zorvanelink::ui

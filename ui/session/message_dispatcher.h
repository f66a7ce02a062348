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

    // Every subtype with a row of its own, in the order of the table; all others are common
    // replies.
    static std::vector<core::CLMsg::SubType> SubTypes();

  Q_SIGNALS:
    // Of the running profile; the record is in its Context already.
    void NetConfigArrived(std::shared_ptr<Profile> const& profile);
    void StatisticsArrived(std::shared_ptr<Profile> const& profile);
    void DomainRouteArrived(core::sslvpn::DomainRouteAddRouteData const& route);
    void AdapterStateChanged(bool usable);
    void RecvCertInfo(std::vector<zorvanelink::CertInfo> const& list);
    void RecvGMCertInfo(std::vector<zorvanelink::core::sslvpn::GmDevice> const& devices);
    void AppResourceArrived(zorvanelink::core::sslvpn::CLMsgZtnaAppResourceData const& resource);
    // Of no connection: an update record carries a reserved name.
    void UpdateMsgArrived(zorvanelink::core::sslvpn::CLMsgUpdate const& update);

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
    // Reads a common record and hands it to `handle` when it concerns the running profile.
    bool readFor(std::string const& json, char const* logLine,
                 void (StatusHandler::*handle)(StatusHandler::Data const&, Profile&));

    StatusHandler& statuses_;
    FailurePresenter& failures_;
    ConnectionState& state_;
    Config& config_;
};

}  // namespace zorvanelink::ui

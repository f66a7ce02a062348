// Turns status codes of the service into changes of the connection. GUI thread.
#pragma once

#include <QObject>
#include <QString>

#include "core/reply_records.h"
#include "ui/session/connect_flow.h"
#include "ui/session/connection_state.h"
#include "ui/session/failure_presenter.h"
#include "ui/session/status_updater.h"

namespace zorvanelink::ui {

class StatusHandler : public QObject {
    Q_OBJECT

  public:
    StatusHandler(ConnectionState& state, StatusUpdater& updater, ConnectFlow& flow,
                  FailurePresenter& failures, QObject* parent = nullptr);

    // False when the status does not concern the running profile.
    bool HandleCommonReplyData(core::sslvpn::CLMsgCommonReplyData const& data);

    // The profile that a record of that name concerns: the running one, or null with the reason
    // in the log.
    std::shared_ptr<Profile> Addressee(std::string const& profileName) const;

  Q_SIGNALS:
    // ONLINE has been applied; `first` unless the service brought the tunnel back by itself.
    void CameOnline(bool first);
    void ClientAddressChanged(QString address);

  private:
    using Data = core::sslvpn::CLMsgCommonReplyData;
    struct Row {
        common::MsgCode code;
        void (StatusHandler::*handle)(Data const& data, Profile& profile);
    };
    static Row const kRows[];

    void onOnline(Data const& data, Profile& profile);
    void onOffline(Data const& data, Profile& profile);
    void onConnecting(Data const& data, Profile& profile);
    void onReconnecting(Data const& data, Profile& profile);
    void onPrepareReconnecting(Data const& data, Profile& profile);
    void onHeartbeatTimeout(Data const& data, Profile& profile);
    void onAccountLocked(Data const& data, Profile& profile);
    void onClientAddress(Data const& data, Profile& profile);
    void onNothing(Data const& data, Profile& profile);

    ConnectionState& state_;
    StatusUpdater& updater_;
    ConnectFlow& flow_;
    FailurePresenter& failures_;
};

}  // namespace zorvanelink::ui

// Fills the tunnel's views from what the service tells about the present connection. GUI thread.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <chrono>

#include "core/reply_records.h"
#include "ui/config/connect_status.h"
#include "ui/session/context.h"
#include "ui/tunnel/tunnel_view.h"

namespace zorvanelink::ui {

class TunnelController : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds kStatisticsPeriod{1000};

    TunnelController(TunnelView& view, Context const& session,
                     std::chrono::milliseconds period = kStatisticsPeriod);

    // What the session knows of addresses and routes, in place of what is shown.
    void AddNetconfigInfo();
    void HandleDomainAddRoute(core::sslvpn::DomainRouteAddRouteData const& route);
    void SetClientAddress(QString const& address);

  public Q_SLOTS:
    // The views empty; at Connected they fill again and the counters begin to tick.
    void onNotifyConnectStatus(QString const& name, ConnectStatus status);
    void onUpdateTunnelStatisticsInfo();
    // A service that sends its counters each second gives the tick: one wake-up for both.
    void onTunnelStatistics();

  private:
    // Stops the counters; with clearAll addresses and routes go as well.
    void ClearDisplayInfo(bool clearAll);

    TunnelView& view_;
    Context const& session_;
    std::chrono::milliseconds const period_;
    QTimer statisticsTimer_;
    QElapsedTimer sinceShown_;
    InterfaceRows shown_;
};

}  // namespace zorvanelink::ui

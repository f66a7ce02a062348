// Fills the tunnel's views from what the service tells about the running profile. GUI thread.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>

#include "core/reply_records.h"
#include "ui/config/profile.h"
#include "ui/tunnel/tunnel_view.h"

namespace zorvanelink::ui {

class TunnelController : public QObject {
    Q_OBJECT

  public:
    using RunningProfile = std::function<std::shared_ptr<Profile>()>;
    static constexpr std::chrono::milliseconds kStatisticsPeriod{1000};

    TunnelController(TunnelView& view, RunningProfile running, QObject* parent = nullptr,
                     std::chrono::milliseconds period = kStatisticsPeriod);

    // At ONLINE: the views fill and the counters begin to tick.
    void BeginStatistics();
    void AddNetconfigInfo(core::sslvpn::CLMsgReplyNetConfigData const& data);
    void HandleDomainAddRoute(core::sslvpn::DomainRouteAddRouteData const& route);
    void SetClientAddress(QString const& address);
    // Stops the counters; with clearAll addresses and routes go as well.
    void ClearDisplayInfo(bool clearAll);

  public Q_SLOTS:
    void onUpdateTunnelStatisticsInfo();

  private:
    TunnelView& view_;
    RunningProfile const running_;
    QTimer statisticsTimer_;
    InterfaceRows shown_;
};

}  // namespace zorvanelink::ui

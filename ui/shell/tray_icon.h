// The icon in the desktop's tray, and the limits of what it says. GUI thread.
#pragma once

#include <QSystemTrayIcon>
#include <cstdint>
#include <map>
#include <utility>

#include "ui/config/connect_status.h"

namespace zorvanelink::ui {

// How often each status is told: once for a disconnect, not at all while connecting, and the counts
// start over when a connection has ended.
class SystemTrayMsgCountCtrl {
  public:
    static SystemTrayMsgCountCtrl& GetInstance();
    SystemTrayMsgCountCtrl();

    // Counts the message; false when the status has used up its limit.
    bool Admit(ConnectStatus status);

  private:
    using Count = std::pair<std::uint16_t, std::uint16_t>;  // shown, limit
    std::map<ConnectStatus, Count> counts_;
    bool wasConnected_ = false;  // since the last end
};

class AntiDupQSystemTrayIcon : public QSystemTrayIcon {
    Q_OBJECT

  public:
    using QSystemTrayIcon::QSystemTrayIcon;

    // A silent icon counts its messages and shows none.
    void SetSilent(bool silent) { silent_ = silent; }

    // Drops a message that repeats the last one or that its status has no count left for.
    void showMessage(QString const& title, QString const& text, QIcon const& icon, int timeoutMs,
                     ConnectStatus status);
    void showMessage(QString const& title, QString const& text, MessageIcon icon, int timeoutMs,
                     ConnectStatus status);

    // Always shown, never counted.
    void ShowDemand(QString const& title, QString const& text, QIcon const& icon, int timeoutMs);

  Q_SIGNALS:
    void MessageShown(QString text);

  private:
    bool admit(QString const& title, QString const& text, ConnectStatus status);

    QString lastTitle_;
    QString lastText_;
    bool silent_ = false;
};

}  // namespace zorvanelink::ui

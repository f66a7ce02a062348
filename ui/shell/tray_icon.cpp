#include "ui/shell/tray_icon.h"

#include "components/logger/logger.h"

namespace zorvanelink::ui {

SystemTrayMsgCountCtrl& SystemTrayMsgCountCtrl::GetInstance() {
    static SystemTrayMsgCountCtrl control;
    return control;
}

SystemTrayMsgCountCtrl::SystemTrayMsgCountCtrl()
    : counts_{{ConnectStatus::Disconnected, {0, 1}},
              {ConnectStatus::Connecting, {0, 0}},
              {ConnectStatus::PrepareReconnecting, {0, 0}},
              {ConnectStatus::Reconnecting, {0, 1}},
              {ConnectStatus::Connected, {0, 20}}} {
}

bool SystemTrayMsgCountCtrl::Admit(ConnectStatus status) {
    if (status == ConnectStatus::Connected) {
        wasConnected_ = true;
    } else if (status == ConnectStatus::Disconnected && std::exchange(wasConnected_, false)) {
        // First, so that the end of every connection is told, however it came to it.
        counts_ = SystemTrayMsgCountCtrl().counts_;
    }
    auto const found = counts_.find(status);
    if (found == counts_.end()) {
        return false;
    }
    auto& [shown, limit] = found->second;
    bool const admitted = shown < limit;
    shown = static_cast<std::uint16_t>(shown + (admitted ? 1 : 0));
    components::logger::Log().debug("status: {}, current: {}, limited: {}",
                                    static_cast<int>(status), shown, limit);
    return admitted;
}

void AntiDupQSystemTrayIcon::showMessage(QString const& title, QString const& text,
                                         QIcon const& icon, int timeoutMs, ConnectStatus status) {
    if (admit(title, text, status)) {
        QSystemTrayIcon::showMessage(title, text, icon, timeoutMs);
    }
}

void AntiDupQSystemTrayIcon::showMessage(QString const& title, QString const& text,
                                         MessageIcon icon, int timeoutMs, ConnectStatus status) {
    if (admit(title, text, status)) {
        QSystemTrayIcon::showMessage(title, text, icon, timeoutMs);
    }
}

void AntiDupQSystemTrayIcon::ShowDemand(QString const& title, QString const& text,
                                        QIcon const& icon, int timeoutMs) {
    QSystemTrayIcon::showMessage(title, text, icon, timeoutMs);
    Q_EMIT MessageShown(text);
}

bool AntiDupQSystemTrayIcon::admit(QString const& title, QString const& text,
                                   ConnectStatus status) {
    if (title == lastTitle_ && text == lastText_) {
        return false;
    }
    lastTitle_ = title;
    lastText_ = text;
    if (!SystemTrayMsgCountCtrl::GetInstance().Admit(status) || silent_) {
        return false;
    }
    Q_EMIT MessageShown(text);
    return true;
}

}  // namespace zorvanelink::ui

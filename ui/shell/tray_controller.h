// The client's place in the desktop's tray: icon, messages and menu. The tray may come after us,
// at login, and may go while we run. GUI thread.
#pragma once

#include <QAction>
#include <QHash>
#include <QMenu>
#include <QTimer>
#include <functional>
#include <memory>

#include "ui/config/config.h"
#include "ui/session/session_pages.h"
#include "ui/shell/tray_icon.h"
#include "ui/shell/tray_view.h"
#include "ui/shell/tray_watch.h"

namespace zorvanelink::ui {

class TrayController : public QObject {
    Q_OBJECT

  public:
    // Tells whether the desktop has a tray now; null when the client shall not have an icon.
    using Available = std::function<bool()>;

    // The window owns the actions; while it is hidden the tray is its only way back.
    TrayController(QWidget& window, Config const& config, Available available);

    // Looks anew: whether a hidden window could be brought back.
    bool HasTray();
    // `selected` names the connection that Connect would start.
    void Render(TrayView const& view, QString const& selected);
    // Once: who closes a window may take the program for ended.
    void TellWhereTheWindowWent();

    // Says what the service waits for, whatever else has been said or is not to be said.
    void TellDemand(QString const& what);

    QMenu& Menu() { return menu_; }
    AntiDupQSystemTrayIcon* Icon() { return icon_.get(); }  // null without a tray

  public Q_SLOTS:
    // Rebuilds the menu from the actions that exist now, once the event loop runs.
    void RefreshTrayMenu();
    // The pages that the session offers now.
    void SetPages(std::vector<SessionPage> const& pages);
    void onActiveTray(QSystemTrayIcon::ActivationReason reason);
    // Takes an icon when a tray has come, gives it up when the tray has gone.
    void FollowDesktop();

  Q_SIGNALS:
    void ShowWindow();
    void Connect();
    void Disconnect();
    void Quit();
    void OpenPage(zorvanelink::ui::SessionPage const& page);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QAction* addAction(char const* name, QString const& text, void (TrayController::*signal)());
    void takeIcon();
    void rebuild();
    void show();
    void tell();
    void nameState();
    QString stateOf(QString const& name) const;
    void lookLater();
    QIcon const& picture();
    QString forMenu(QString const& name) const;

    QWidget& window_;
    Config const& config_;
    Available const available_;
    TrayView view_;
    std::vector<SessionPage> pages_;
    bool rebuildDue_ = false;
    QHash<QString, QIcon> pictures_;
    bool hidingTold_ = false;
    QAction* stateAction_;
    QAction* showAction_;
    QAction* connectAction_;
    QAction* disconnectAction_;
    QAction* quitAction_;
    std::vector<std::unique_ptr<QAction>> pageActions_;
    QMenu menu_;
    std::unique_ptr<AntiDupQSystemTrayIcon> icon_;
    std::unique_ptr<TrayWatch> watch_;
    QTimer looking_;
};

}  // namespace zorvanelink::ui

// The hub: owns the connection's state, the controllers and the views, and wires them in one
// place. What a thing does stands in its own folder. GUI thread.
#pragma once

#include <QWidget>
#include <string>

#include "ui/auth/auth_type_flow.h"
#include "ui/cards/connection_list.h"
#include "ui/config/config.h"
#include "ui/editor/profile_editing.h"
#include "ui/link/service_link.h"
#include "ui/session/connect_flow.h"
#include "ui/session/connection_state.h"
#include "ui/session/failure_presenter.h"
#include "ui/session/message_dispatcher.h"
#include "ui/session/session_dialogs.h"
#include "ui/session/status_handler.h"
#include "ui/session/status_updater.h"
#include "ui/shell/main_window_layout.h"
#include "ui/shell/more_menu.h"
#include "ui/shell/tray_controller.h"
#include "ui/tunnel/tunnel_controller.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

class MainWindow : public QWidget {
    Q_OBJECT

  public:
    // What a test puts in the place of the real thing.
    struct Environment {
        Config& config;
        Prompts& prompts;
        LinkCore::LinkFactory link;  // null: the socket link to the service
        TrayController::Available trayAvailable = TrayWatch::DesktopHasTray;
    };

    explicit MainWindow(Environment environment, QWidget* parent = nullptr);
    // Ends the threads and the link, and saves the settings.
    ~MainWindow() override;

    // For the two handlers of the catalogue.
    FailurePresenter& Failures() { return failures_; }
    ConnectionState const& State() const { return state_; }

  Q_SIGNALS:
    void UpdateStatusBar(QString text, QString iconPath);

  public Q_SLOTS:
    void StopConnect() { flow_.StopConnect(); }
    void onSignalAutoLogin();
    void Wait(int mode, QString const& text);
    void onUpdateStatusBar(QString const& text, QString const& iconPath);
    void onUserGuideStartConnect();
    // Out of the tray or the task bar, to the front.
    void BringUp();
    // The desktop session ends: from here on a close event from outside means leaving.
    void onSessionEnding();

  private Q_SLOTS:
    void on_btn_main_close__clicked();
    void on_btn_main_min__clicked();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void applyLogLevel();
    void shapeWindow();
    void wireLink();
    void wireSession();
    void wireAuth();
    void wireCards();
    void wireEditing();
    void wireTray();
    void wireWindow();

    void render();
    void renderTray();
    void pressCard(std::string const& name, bool start);
    void offerPages();
    void openPage(std::string Context::*page, bool local);
    void leave();
    void onStatusNotified(QString const& name, ConnectStatus status);
    void onCameOnline(bool first);
    void EableUserGuide(bool enable);
    void onProfileStored(QString const& name);
    void SetStatusBarInfo();
    void SetWindowMinimize();

    // In the order of dependence; destroyed from the last to the first.
    Config& config_;
    Prompts& prompts_;
    ConnectionState state_;
    MainWindowLayout ui_;
    ServiceLink link_;
    ConnectionList cards_;
    StatusUpdater updater_;
    ConnectFlow flow_;
    SessionDialogs dialogs_;
    FailurePresenter failures_;
    StatusHandler statuses_;
    MessageDispatcher dispatcher_;
    TunnelController tunnel_;
    CertListRoad certList_;
    AuthTypeFlow authTypes_;
    ProfileEditing editing_;
    TrayController tray_;
    MoreMenu more_;
    bool quitting_ = false;
    bool sessionEnding_ = false;
};

// The one main window, or null.
MainWindow* getMainWindow();
// What the catalogue's rows call to show a received status.
void ZVShowCriticalMsgBox(common::CodeType type, std::string const& text);
void ZVShowErrorMsgBox(common::CodeType type, std::string const& text);

}  // namespace zorvanelink::ui

// The hub: owns the link, the session, the controllers and the views, and wires them in one place.
// What a thing does stands in its own folder. GUI thread.
#pragma once

#include <QTimer>
#include <chrono>
#include <string>

#include "ui/auth/auth_code_flow.h"
#include "ui/auth/auth_type_flow.h"
#include "ui/auth/change_pwd_flow.h"
#include "ui/cards/connection_list.h"
#include "ui/editor/profile_editing.h"
#include "ui/session/session.h"
#include "ui/session/view_state.h"
#include "ui/shell/main_window_layout.h"
#include "ui/shell/more_menu.h"
#include "ui/shell/tray_controller.h"
#include "ui/tunnel/tunnel_controller.h"
#include "ui/widgets/frameless_window.h"

namespace zorvanelink::ui {

class MainWindow : public FramelessWindow {
    Q_OBJECT

  public:
    // What a test puts in the place of the real thing.
    struct Environment {
        Config& config;
        Prompts& prompts;
        LinkCore::LinkFactory link;  // null: the socket link to the service
        TrayController::Available trayAvailable = TrayWatch::DesktopHasTray;
        Opening opening = Opening::kByShow;
        // With a service that does not answer, until the log is offered.
        std::chrono::milliseconds patience{10000};
    };

    explicit MainWindow(Environment environment, QWidget* parent = nullptr);
    // Ends the threads and the link, and saves the settings.
    ~MainWindow() override;

    Session& CurrentSession() { return session_; }
    ConnectionState const& State() const { return session_.state; }

  public Q_SLOTS:
    void onSignalAutoLogin();
    void Wait(int mode, QString const& text);
    void onUserGuideStartConnect();
    // Out of the tray or the task bar, to the front.
    void BringUp();
    // The desktop session ends: from here on a close event from outside means leaving.
    void onSessionEnding();

  private Q_SLOTS:
    void on_btn_main_close__clicked();
    void on_btn_main_min__clicked();
    void on_btn_main_max__clicked();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void applyLogLevel();
    void wireSession();
    void wireCards();
    void wireEditing();
    void wireTray();
    void wireWindow();
    void wireView();

    void render();
    void renderHero(ViewState const& view);
    void renderProgress();
    void renderWait();
    void followLink();
    void onHeroActed();
    void openLogFolder();
    void renderTray();
    void renderPages();
    void openPage(SessionPage const& page);
    void connectFromOutside(std::string const& name);
    void EableUserGuide(bool enable);
    void onProfileStored(QString const& name);
    void SetStatusBarInfo(ViewState const& view);
    void hideToTray();

    // In the order of dependence; destroyed from the last to the first.
    MainWindowLayout ui_;
    ServiceLink link_;
    Session session_;
    ConnectionList cards_;
    TunnelController tunnel_;
    AuthTypeFlow authTypes_;
    AuthCodeFlow authCodes_;
    ChangePWDFlow passwords_;
    ProfileEditing editing_;
    TrayController tray_;
    MoreMenu more_;
    // How long the service has not answered.
    static constexpr int kHintPart = 5;  // of the patience, until the hint
    enum class Waited { kNot, kShort, kHint, kLong };
    Waited waited_ = Waited::kNot;
    QTimer waiting_;
    std::chrono::milliseconds const patience_;
    QTimer seconds_;  // while a login is under way
    bool sessionEnding_ = false;
};

// The one main window, or null.
MainWindow* getMainWindow();

}  // namespace zorvanelink::ui

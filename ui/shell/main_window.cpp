#include "ui/shell/main_window.h"

#include <QApplication>
#include <QTimer>

#include "app/environment/globals.h"
#include "components/ipc/socket_ipc_client.h"
#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/open_url.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

// The window is painted first.
constexpr std::chrono::milliseconds kAutoLoginDelay{200};

// The settings are read first: the link tells the service who we are.
LinkCore::LinkFactory linkWith(Config& config, LinkCore::LinkFactory const& given) {
    config.Load();
    Log().info("Load configuration");
    if (given) {
        return given;
    }
    return [uuid = config.uuid.toStdString()] {
        return std::make_shared<components::ipc::SocketIPCClient>(uuid, nullptr);
    };
}

TrayController::Available allowed(TrayController::Available available) {
    return AppCtrl::Instance().disableTray ? nullptr : std::move(available);
}

}  // namespace

MainWindow::MainWindow(Environment environment, QWidget* parent)
    : FramelessWindow(GetTrMsg(MsgCode::UI_INFO_ZORVANE_LINK), {{960, 640}, {880, 560}},
                      environment.opening, parent),
      ui_(this),
      link_(linkWith(environment.config, environment.link), {}),
      session_({environment.config, environment.prompts, link_, this}),
      cards_(*ui_.connection_listwidget_, session_.config, session_.state),
      tunnel_(*ui_.tunnel, session_.context),
      authTypes_(session_),
      authCodes_(session_),
      passwords_(session_),
      editing_({session_.state, session_.config, session_.Certificates(), session_.prompts, this}),
      tray_(*this, session_.config, allowed(std::move(environment.trayAvailable))),
      more_({*ui_.titleBar->MoreButton(), session_.config, session_.prompts,
             [this](QString const& message) { return link_.SendToService(message); }}),
      patience_(environment.patience) {
    applyLogLevel();
    setStyleSheet(LoadStyle(QStringLiteral("controls")) + LoadStyle(QStringLiteral("mainwindow")));
    wireSession();
    wireCards();
    wireEditing();
    wireTray();
    wireWindow();
    wireView();
    cards_.RefreshConnList();
    render();
    ContentsMade();
    link_.Start();
}

MainWindow::~MainWindow() {
    g_quit = true;
    link_.Stop();
    session_.config.onSaved = nullptr;
    session_.config.Save();
}

void MainWindow::applyLogLevel() {
    auto& logger = Log();
    // "Debug, then start again" is what support asks for; an administrator's word stands above.
    AppCtrl const& control = AppCtrl::Instance();
    QString const& chosen = session_.config.logLevel;
    bool const byUser = !control.namesLogLevel && !chosen.isEmpty();
    logger.setLogLevel((byUser ? chosen : control.logLevel).toStdString());
    g_log_level = static_cast<int>(logger.level());
}

void MainWindow::wireSession() {
    connect(&link_, &ServiceLink::Loading, this, &MainWindow::Wait);
    connect(&link_, &ServiceLink::SignalAutoLogin, this, &MainWindow::onSignalAutoLogin);
    connect(&session_, &Session::NotifyConnectStatus, &tunnel_,
            &TunnelController::onNotifyConnectStatus);
    connect(&session_, &Session::NetConfigArrived, &tunnel_, &TunnelController::AddNetconfigInfo);
    connect(&session_, &Session::StatisticsArrived, &tunnel_,
            &TunnelController::onTunnelStatistics);
    connect(&session_, &Session::RecvDomianRoute, &tunnel_,
            &TunnelController::HandleDomainAddRoute);
    connect(&session_, &Session::ClientAddressChanged, &tunnel_,
            &TunnelController::SetClientAddress);
    connect(&session_, &Session::Changed, this, &MainWindow::render);
    session_.config.onSaved = [this] { SetStatusBarInfo(viewStateFor(session_.state)); };
    connect(&session_.ThirdParty(), &ThirdPartyLogin::Ticked, this,
            [this] { ui_.tunnel->SetBrowserLogin(session_.ThirdParty().TimeLeft()); });
    connect(ui_.tunnel, &TunnelView::LoginPageWanted, &session_.ThirdParty(),
            &ThirdPartyLogin::OpenAgain);
    connect(&session_, &Session::Demanded, this, [this](QString const& what) {
        QApplication::alert(this);
        tray_.TellDemand(what);
    });
}

void MainWindow::wireCards() {
    cards_.SetMenu({.modify = true, .remove = true, .forgotPassword = true});
    connect(&cards_, &ConnectionList::StartConnect, &session_, &Session::Start);
    connect(&cards_, &ConnectionList::StopConnect, &session_, &Session::Stop);
    connect(&cards_, &ConnectionList::ForgotPassword, this,
            [this](QString const& url) { OpenUrlWithHint(session_.prompts, this, url, false); });
    connect(&cards_, &ConnectionList::PageWanted, this, &MainWindow::openPage);
    connect(&cards_, &ConnectionList::EableUserGuide, this, &MainWindow::EableUserGuide);
    connect(&cards_, &ConnectionList::Selected, this, [this] {
        renderHero(viewStateFor(session_.state));
        renderTray();
    });
}

void MainWindow::wireEditing() {
    connect(&cards_, &ConnectionList::ModifyConnectionInfo, &editing_,
            &ProfileEditing::onModifyConnectionInfo);
    connect(&cards_, &ConnectionList::DeleteConnectionInfo, &editing_,
            &ProfileEditing::onDeleteConnectionInfo);
    connect(ui_.addButton, &QPushButton::clicked, &editing_,
            &ProfileEditing::onButtonAddConnectionClicked);
    connect(&editing_, &ProfileEditing::ListChanged, this, [this] {
        cards_.RefreshConnList();
        render();
    });
    connect(&editing_, &ProfileEditing::ProfileStored, this, &MainWindow::onProfileStored);
    connect(&editing_, &ProfileEditing::ConnectWanted, &session_, &Session::Start);
}

void MainWindow::wireWindow() {
    connect(&more_, &MoreMenu::Quit, this, &QWidget::close);
    connect(ui_.titleBar->CloseButton(), &QToolButton::clicked, this,
            &MainWindow::on_btn_main_close__clicked);
    connect(ui_.titleBar->MinButton(), &QToolButton::clicked, this,
            &MainWindow::on_btn_main_min__clicked);
    connect(ui_.titleBar, &TitleBar::MaximiseWanted, this, &MainWindow::on_btn_main_max__clicked);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [](Qt::ApplicationState now) {
        g_is_application_active = now == Qt::ApplicationActive;
    });
    connect(qApp, &QGuiApplication::commitDataRequest, this, &MainWindow::onSessionEnding);
    connect(qApp, &QCoreApplication::aboutToQuit, &session_, &Session::Leave);
}

void MainWindow::onSignalAutoLogin() {
    QTimer::singleShot(kAutoLoginDelay, this, [this] {
        cards_.RefreshConnList();
        session_.AutoLogin();
    });
}

void MainWindow::EableUserGuide(bool enable) {
    if (UserGuide* const made = ui_.ShowGuide(enable)) {
        connect(made, &UserGuide::UserGuideStartConnect, this,
                &MainWindow::onUserGuideStartConnect);
    }
}

void MainWindow::onUserGuideStartConnect() {
    editing_.onButtonAddConnectionClicked();
}

void MainWindow::onProfileStored(QString const& name) {
    // A list that must wait for the end of a connection still has the old card, if any.
    if (cards_.Has(name.toStdString())) {
        cards_.Render();
        cards_.SetCurrntProfileTabbyProfileName(name);
    }
}

void MainWindow::on_btn_main_max__clicked() {
    isMaximized() ? showNormal() : showMaximized();
}

void MainWindow::on_btn_main_min__clicked() {
    showMinimized();
}

bool MainWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked) {
        ui_.cover->ToBack();
        Log().debug("deactive mainwindow");
    } else if (event->type() == QEvent::WindowUnblocked) {
        ui_.cover->ToFront();
        Log().debug("active mainwindow");
    } else if (event->type() == QEvent::WindowActivate) {
        sessionEnding_ = false;  // the user has stayed
    }
    return QWidget::event(event);
}

MainWindow* getMainWindow() {
    return g_mainwindow;
}

}  // namespace zorvanelink::ui

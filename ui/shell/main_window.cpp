#include "ui/shell/main_window.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include "app/environment/globals.h"
#include "components/ipc/socket_ipc_client.h"
#include "components/logger/logger.h"
#include "core/clmsg_json.h"
#include "ui/session/view_state.h"
#include "ui/text/texts.h"
#include "ui/widgets/open_url.h"
#include "ui/widgets/round_corners.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

// Pixels, before scaling.
constexpr QSize kWindowSize{960, 640};
constexpr QSize kSmallestSize{880, 560};
constexpr int kNameWidth = 320;  // of a connection's name in the status bar
// The window is painted first.
constexpr std::chrono::milliseconds kAutoLoginDelay{200};

Config& loaded(Config& config) {
    config.Load();
    Log().info("Load configuration");
    return config;
}

LinkCore::LinkFactory socketLink(std::string const& uuid) {
    return [uuid] { return std::make_shared<components::ipc::SocketIPCClient>(uuid, nullptr); };
}

TrayController::Available allowed(TrayController::Available available) {
    return AppCtrl::Instance().disableTray ? nullptr : std::move(available);
}

}  // namespace

MainWindow::MainWindow(Environment environment, QWidget* parent)
    : QWidget(parent, Qt::FramelessWindowHint),
      config_(loaded(environment.config)),
      prompts_(environment.prompts),
      ui_(this),
      link_(environment.link ? environment.link : socketLink(config_.uuid.toStdString()), {}),
      cards_(*ui_.connection_listwidget_, config_),
      updater_(state_),
      flow_({state_, updater_, config_, link_, prompts_, this,
             [this](std::string const& name) { return cards_.Has(name); }}),
      failures_(state_, flow_, prompts_, dialogs_, this),
      statuses_({state_, updater_, flow_, failures_, config_, prompts_, dialogs_, this}),
      dispatcher_(state_, statuses_, failures_, config_),
      tunnel_(*ui_.tunnel, [this] { return flow_.RunningProfile(); }),
      authTypes_({state_, updater_, flow_, dialogs_, {config_, prompts_, certList_}, this}),
      editing_({state_, config_, certList_, prompts_, this,
                [this](std::string const& name) { return cards_.Has(name); }}),
      tray_(*this, config_, allowed(std::move(environment.trayAvailable))),
      more_({*ui_.titleBar->MoreButton(), config_, prompts_,
             [this](QString const& message) { return link_.SendToService(message); }}) {
    applyLogLevel();
    shapeWindow();
    wireLink();
    wireSession();
    wireAuth();
    wireCards();
    wireEditing();
    wireTray();
    wireWindow();
    cards_.RefreshConnList();
    render();
    link_.Start();
}

MainWindow::~MainWindow() {
    g_quit = true;
    link_.Stop();
    config_.Save();
}

void MainWindow::applyLogLevel() {
    auto& logger = Log();
    logger.setLogLevel(AppCtrl::Instance().logLevel.toStdString());
    g_log_level = static_cast<int>(logger.level());
}

void MainWindow::shapeWindow() {
    setStyleSheet(LoadStyle(QStringLiteral("controls")) + LoadStyle(QStringLiteral("mainwindow")));
    setWindowTitle(GetTrMsg(MsgCode::UI_INFO_ZORVANE_LINK));
    // On a small or strongly scaled screen nothing of a frameless window may lie outside.
    QSize const screenSize = screen()->availableSize();
    setMinimumSize(kSmallestSize.boundedTo(screenSize));
    resize(kWindowSize.boundedTo(screenSize));
    PrepareRoundCorners(*this);
}

void MainWindow::wireLink() {
    connect(&link_, &ServiceLink::Loading, this, &MainWindow::Wait);
    connect(&link_, &ServiceLink::SignalAutoLogin, this, &MainWindow::onSignalAutoLogin);
    connect(&link_, &ServiceLink::MessageArrived, &dispatcher_,
            [this](std::string const& json) { dispatcher_.ProcessServiceMsg(json); });
    connect(&link_, &ServiceLink::Lost, &flow_, &ConnectFlow::StopConnect);
    connect(&link_, &ServiceLink::StateChanged, this, [this] {
        state_.link = link_.State();
        if (state_.link == LinkState::kLinked) {
            state_.sessionEnded = false;  // what ended belonged to the link before
        }
        render();
    });
}

void MainWindow::wireSession() {
    connect(&updater_, &StatusUpdater::DisplayInfoCleared, &tunnel_,
            &TunnelController::ClearDisplayInfo);
    connect(&updater_, &StatusUpdater::WentOnline, &tunnel_, &TunnelController::BeginStatistics);
    connect(&updater_, &StatusUpdater::NotifyConnectStatus, this, &MainWindow::onStatusNotified);
    connect(&updater_, &StatusUpdater::StateChanged, this, &MainWindow::render);
    connect(&statuses_, &StatusHandler::CameOnline, this, &MainWindow::onCameOnline);
    connect(&statuses_, &StatusHandler::ClientAddressChanged, &tunnel_,
            &TunnelController::SetClientAddress);
    connect(&statuses_, &StatusHandler::ProfileChanged, &cards_, &ConnectionList::RefreshCard);
    connect(&failures_, &FailurePresenter::CriticalBoxShown, &cards_,
            &ConnectionList::RefreshConnList);
    connect(&dispatcher_, &MessageDispatcher::NetConfigArrived, this,
            [this](std::shared_ptr<Profile> const& profile) {
                if (state_.online) {
                    tunnel_.AddNetconfigInfo(profile->context.netConfig);
                }
            });
    connect(&dispatcher_, &MessageDispatcher::DomainRouteArrived, &tunnel_,
            &TunnelController::HandleDomainAddRoute);
    connect(&dispatcher_, &MessageDispatcher::AdapterStateChanged, this, [this](bool usable) {
        cards_.SetAdapterUsable(usable);
        cards_.RefreshConnList();
        render();
    });
}

void MainWindow::wireAuth() {
    connect(&statuses_, &StatusHandler::NeedSelectAuthType, &authTypes_,
            &AuthTypeFlow::onNeedSelectAuthType);
    connect(&statuses_, &StatusHandler::PushStatusArrived, &authTypes_,
            &AuthTypeFlow::StopSelectAuthTypeTimer);
    connect(&failures_, &FailurePresenter::CriticalBoxShown, &authTypes_,
            &AuthTypeFlow::onCriticalBoxShown);
    connect(&authTypes_, &AuthTypeFlow::StartConnect, this,
            [this](QString const& name, bool query) {
                if (ProfileTab* const tab = cards_.GetProfileTab(name.toStdString())) {
                    tab->onStartConnect(name, query);
                }
            });
    connect(&certList_, &CertListRoad::SendCertRequest, &link_, [this](bool gm) {
        link_.SendToService(QString::fromStdString(core::sslvpn::CLMsgJson::BuildCertRequest(gm)));
    });
    connect(&dispatcher_, &MessageDispatcher::RecvCertInfo, &certList_,
            &CertListRoad::RecvCertInfo);
}

void MainWindow::wireCards() {
    cards_.SetMenu({.modify = true, .remove = true, .forgotPassword = true});
    connect(&cards_, &ConnectionList::StartConnect, &flow_, &ConnectFlow::onStartConnect);
    connect(&cards_, &ConnectionList::StopConnect, &flow_,
            [this](QString const& name) { flow_.onStopConnect(name); });
    connect(&cards_, &ConnectionList::PendingEnded, &flow_, &ConnectFlow::ForgetPendingRequest);
    connect(&cards_, &ConnectionList::ForgotPassword, this,
            [this](QString const& url) { OpenUrlWithHint(prompts_, this, url, false); });
    connect(&cards_, &ConnectionList::EableUserGuide, this, &MainWindow::EableUserGuide);
    connect(&cards_, &ConnectionList::Selected, this, &MainWindow::SetStatusBarInfo);
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
    connect(&editing_, &ProfileEditing::ConnectWanted, this,
            [this](QString const& name) { pressCard(name.toStdString(), true); });
}

void MainWindow::wireWindow() {
    connect(this, &MainWindow::UpdateStatusBar, this, &MainWindow::onUpdateStatusBar);
    connect(ui_.titleBar->CloseButton(), &QToolButton::clicked, this,
            &MainWindow::on_btn_main_close__clicked);
    connect(ui_.titleBar->MinButton(), &QToolButton::clicked, this,
            &MainWindow::on_btn_main_min__clicked);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [](Qt::ApplicationState now) {
        g_is_application_active = now == Qt::ApplicationActive;
    });
    connect(qApp, &QGuiApplication::commitDataRequest, this, &MainWindow::onSessionEnding);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &MainWindow::leave);
}

// Everything that follows from the state, in one place.
void MainWindow::render() {
    ViewState const view = viewStateFor(state_);
    bool const shows_profile = view.status != ConnectStatus::Disconnected;
    ui_.tunnel->SetState(
        view.status, GetTrMsg(view.stateLabel),
        shows_profile ? QString::fromStdString(state_.currentProfileName) : QString());
    ui_.tunnel->SetHint(config_.GetProfile().empty()
                            ? QString()
                            : Translate(QT_TRANSLATE_NOOP(
                                  "ui", "Choose a connection on the left and press Connect.")));
    ui_.tunnel->SetWarning(view.hasWarning ? GetTrMsg(view.warning) : QString());
    cards_.SetPending(state_.startingProfileName);
    SetStatusBarInfo();
    renderTray();
    if (view.hasStatusText) {
        Q_EMIT UpdateStatusBar(GetTrMsg(view.statusText), QLatin1String(view.statusIcon));
    }
}

void MainWindow::onStatusNotified(QString const& name, ConnectStatus status) {
    cards_.SetRunning(name.toStdString(), status);
    if (state_.Idle()) {
        cards_.RefreshIfDue();
    }
}

void MainWindow::onCameOnline(bool first) {
    if (auto const profile = flow_.RunningProfile()) {
        tunnel_.AddNetconfigInfo(profile->context.netConfig);
    }
    if (first) {
        SetWindowMinimize();
    }
}

void MainWindow::SetWindowMinimize() {
    // A window in the tray stays there.
    if (config_.autoMinimize && isVisible()) {
        showMinimized();
    }
}

void MainWindow::SetStatusBarInfo() {
    int const count = static_cast<int>(config_.GetProfile().size());
    if (count == 0) {
        ui_.statusBar->SetCountText(QString());
    } else if (state_.online) {
        QString const name = ui_.statusBar->fontMetrics().elidedText(
            QString::fromStdString(state_.currentProfileName), Qt::ElideMiddle, kNameWidth);
        // Both at once: a name may look like a place.
        ui_.statusBar->SetCountText(
            GetTrMsg(MsgCode::UI_TR_STATUS_CONNECTED).arg(name, QString::number(count)));
    } else {
        ui_.statusBar->SetCountText(GetTrMsg(MsgCode::UI_TR_STATUS_NO_CONNECTED).arg(count));
    }
}

void MainWindow::onUpdateStatusBar(QString const& text, QString const& iconPath) {
    ui_.statusBar->SetStatus(text, iconPath);
}

void MainWindow::Wait(int mode, QString const& text) {
    constexpr int kShow = 0;
    ui_.waitForm->SetDesc(text);
    ui_.waitForm->setVisible(mode == kShow);
    if (mode != kShow) {
        ui_.connection_listwidget_->setFocus();
    }
}

void MainWindow::onSignalAutoLogin() {
    QTimer::singleShot(kAutoLoginDelay, this, [this] {
        Log().info("Auto login is {}", config_.autoLogin ? "on" : "off");
        cards_.RefreshConnList();
        // Who has pressed a button meanwhile has chosen.
        if (!config_.autoLogin || !state_.Idle()) {
            return;
        }
        std::string const name = config_.GetDefaultProfileName();
        Log().info("Enable {} auto login", name);
        if (ProfileTab* const tab = cards_.GetProfileTab(name)) {
            state_.currentProfileName = name;
            tab->onAutoLogin(QString::fromStdString(name));
        }
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
        cards_.GetProfileTab(name.toStdString())->RefreshProfile();
        cards_.SetCurrntProfileTabbyProfileName(name);
    }
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

void MainWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    CutRoundCorners(*this);
}

MainWindow* getMainWindow() {
    return g_mainwindow;
}

void ZVShowCriticalMsgBox(common::CodeType type, std::string const& text) {
    if (MainWindow* const window = getMainWindow()) {
        window->Failures().ProcessCriticalMsg(type, text);
    }
}

void ZVShowErrorMsgBox(common::CodeType type, std::string const& text) {
    if (MainWindow* const window = getMainWindow()) {
        window->Failures().ProcessErrorMsg(type, text);
    }
}

}  // namespace zorvanelink::ui

#include "ui/shell/tray_controller.h"

#include <QCursor>
#include <QEvent>

#include "components/logger/logger.h"
#include "ui/shell/state_texts.h"
#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using namespace std::chrono_literals;

constexpr int kMessageMs = 3000;
constexpr int kNameWidth = 200;     // pixels of a connection's name in the menu
constexpr auto kFirstLook = 200ms;  // the window is painted first
constexpr auto kHiddenPause = 60s;

QString title() {
    return GetTrMsg(MsgCode::UI_INFO_ZORVANE_LINK);
}

}  // namespace

TrayController::TrayController(QWidget& window, Config const& config, Available available)
    : window_(window),
      config_(config),
      available_(std::move(available)),
      view_(trayViewFor({}, false)),
      stateAction_(addAction("tray_state_", {}, &TrayController::ShowWindow)),
      showAction_(addAction("tray_show_", GetTrMsg(MsgCode::UI_INFO_SHOW_MAIN_WINDOW),
                            &TrayController::ShowWindow)),
      connectAction_(
          addAction("tray_connect_", GetTrMsg(MsgCode::UI_INFO_CONNECT), &TrayController::Connect)),
      disconnectAction_(addAction("tray_disconnect_", GetTrMsg(MsgCode::UI_INFO_LOWER_DISCONNECT),
                                  &TrayController::Disconnect)),
      quitAction_(addAction("tray_quit_", GetTrMsg(MsgCode::UI_INFO_QUIT), &TrayController::Quit)) {
    menu_.setStyleSheet(LoadStyle(QStringLiteral("menu")));
    menu_.setAccessibleName(title());
    rebuild();
    nameState();
    looking_.setSingleShot(true);
    looking_.setTimerType(Qt::VeryCoarseTimer);
    connect(&looking_, &QTimer::timeout, this, &TrayController::FollowDesktop);
    if (available_) {
        window_.installEventFilter(this);
        QTimer::singleShot(kFirstLook, this, &TrayController::FollowDesktop);
    }
}

QAction* TrayController::addAction(char const* name, QString const& text,
                                   void (TrayController::*signal)()) {
    auto* const action = new QAction(text, &window_);
    action->setObjectName(QLatin1String(name));
    // Queued: what it starts may run an event loop, and the desktop waits for its menu.
    connect(action, &QAction::triggered, this, signal, Qt::QueuedConnection);
    return action;
}

bool TrayController::HasTray() {
    FollowDesktop();
    return icon_ != nullptr;
}

void TrayController::FollowDesktop() {
    if (available_ && watch_ == nullptr) {
        watch_ = std::make_unique<TrayWatch>();
        connect(watch_.get(), &TrayWatch::MayHaveChanged, this, &TrayController::FollowDesktop);
    }
    bool const there = available_ && available_();
    if (there && icon_ == nullptr) {
        takeIcon();
    } else if (!there && icon_ != nullptr) {
        Log().info("The system tray has gone");
        icon_.reset();
        if (!window_.isVisible()) {
            Q_EMIT ShowWindow();
        }
    }
    lookLater();
}

// A hidden window without a tray would be lost: for it the desktop is asked without a sign, too.
void TrayController::lookLater() {
    if (icon_ != nullptr && !window_.isVisible()) {
        looking_.start(kHiddenPause);
    } else {
        looking_.stop();
    }
}

void TrayController::takeIcon() {
    icon_ = std::make_unique<AntiDupQSystemTrayIcon>();
    icon_->setContextMenu(&menu_);
    connect(icon_.get(), &QSystemTrayIcon::activated, this, &TrayController::onActiveTray);
    connect(icon_.get(), &QSystemTrayIcon::messageClicked, this, &TrayController::ShowWindow);
    show();
    icon_->show();
}

bool TrayController::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && (event->type() == QEvent::Hide || event->type() == QEvent::Show)) {
        lookLater();
    }
    return QObject::eventFilter(watched, event);
}

void TrayController::Render(TrayView const& view, QString const& selected) {
    bool const moved = view.status != view_.status;
    view_ = view;
    nameState();
    connectAction_->setEnabled(view.canConnect);
    disconnectAction_->setEnabled(view.canDisconnect);
    connectAction_->setText(InBrackets(GetTrMsg(MsgCode::UI_INFO_CONNECT), forMenu(selected)));
    if (icon_ != nullptr) {
        show();
        if (moved) {
            tell();
        }
    }
}

// A name of somebody else's, cut to its place and without a meaning of its own.
QString TrayController::forMenu(QString const& name) const {
    QString text = menu_.fontMetrics().elidedText(name, Qt::ElideMiddle, kNameWidth);
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QIcon const& TrayController::picture() {
    QString const path = QLatin1String(view_.icon);
    auto found = pictures_.find(path);
    if (found == pictures_.end()) {
        found = pictures_.insert(path, QIcon(path));
    }
    return *found;
}

void TrayController::show() {
    icon_->setIcon(picture());
    icon_->setToolTip(
        QStringLiteral("%1\n%2").arg(title(), stateOf(QString::fromStdString(view_.name))));
}

void TrayController::tell() {
    QString text = GetTrMsg(view_.message);
    if (text.isEmpty()) {
        return;
    }
    text = NamedText(QString::fromStdString(view_.told), text);
    if (!view_.why.empty()) {
        text += QLatin1Char('\n') + QString::fromStdString(view_.why);
    }
    icon_->SetSilent(!config_.statusNotify);
    if (view_.plainMessage) {
        icon_->showMessage(title(), text, QSystemTrayIcon::Information, kMessageMs, view_.status);
    } else {
        icon_->showMessage(title(), text, picture(), kMessageMs, view_.status);
    }
}

// The head of the menu.
void TrayController::nameState() {
    stateAction_->setText(stateOf(forMenu(QString::fromStdString(view_.name))));
}

QString TrayController::stateOf(QString const& name) const {
    return NamedText(name, view_.silent ? SilentText() : GetTrMsg(view_.stateLabel));
}

void TrayController::TellWhereTheWindowWent() {
    if (config_.statusNotify && !std::exchange(hidingTold_, icon_ != nullptr)) {
        TellDemand(Translate(QT_TRANSLATE_NOOP(
            "ui", "The window is in the tray. Click this icon to open it again.")));
    }
}

void TrayController::TellDemand(QString const& what) {
    if (icon_ != nullptr) {
        icon_->ShowDemand(title(), what, picture(), kMessageMs);
    }
}

void TrayController::SetPages(std::vector<SessionPage> const& pages) {
    if (pages != pages_) {
        pages_ = pages;
        RefreshTrayMenu();
    }
}

void TrayController::RefreshTrayMenu() {
    if (!std::exchange(rebuildDue_, true)) {
        QMetaObject::invokeMethod(this, &TrayController::rebuild, Qt::QueuedConnection);
    }
}

void TrayController::rebuild() {
    rebuildDue_ = false;
    menu_.clear();
    menu_.addAction(stateAction_);
    menu_.addSeparator();
    menu_.addAction(showAction_);
    menu_.addSeparator();
    menu_.addAction(connectAction_);
    menu_.addAction(disconnectAction_);
    if (!pages_.empty()) {
        menu_.addSeparator();
    }
    pageActions_.clear();
    for (SessionPage const& page : pages_) {
        auto& action = pageActions_.emplace_back(new QAction(forMenu(page.title), &window_));
        action->setObjectName(QStringLiteral("tray_page_"));
        connect(
            action.get(), &QAction::triggered, this, [this, page] { Q_EMIT OpenPage(page); },
            Qt::QueuedConnection);
        menu_.addAction(action.get());
    }
    menu_.addSeparator();
    menu_.addAction(quitAction_);
}

void TrayController::onActiveTray(QSystemTrayIcon::ActivationReason reason) {
    switch (reason) {
        case QSystemTrayIcon::Context:
            // Most desktops show the menu themselves.
            if (!menu_.isVisible()) {
                menu_.popup(QCursor::pos());
            }
            break;
        case QSystemTrayIcon::Trigger:
        case QSystemTrayIcon::DoubleClick:
            Q_EMIT ShowWindow();
            break;
        default:
            break;
    }
}

}  // namespace zorvanelink::ui

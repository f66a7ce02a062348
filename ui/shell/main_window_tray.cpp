// The window's part in the tray: its actions, hiding and coming back, and the end of the program.
#include <QApplication>
#include <QCloseEvent>

#include "app/environment/globals.h"
#include "ui/shell/main_window.h"
#include "ui/text/texts.h"
#include "ui/widgets/open_url.h"

namespace zorvanelink::ui {

using common::MsgCode;

void MainWindow::wireTray() {
    connect(&tray_, &TrayController::ShowWindow, this, &MainWindow::BringUp);
    connect(&tray_, &TrayController::Quit, this, &QWidget::close);
    connect(&tray_, &TrayController::Connect, this,
            [this] { pressCard(cards_.SelectedName(), true); });
    connect(&tray_, &TrayController::Disconnect, this,
            [this] { pressCard(state_.currentProfileName, false); });
    connect(&flow_, &ConnectFlow::RequestBegun, &tray_, &TrayController::InitTrayAction);
    connect(&flow_, &ConnectFlow::SessionEnded, &tray_, &TrayController::ClearTrayMenuActions);
    connect(&statuses_, &StatusHandler::RefreshTrayMenu, &tray_, &TrayController::RefreshTrayMenu);
    connect(&statuses_, &StatusHandler::ClearTrayMenuActions, &tray_,
            &TrayController::ClearTrayMenuActions);
    connect(&statuses_, &StatusHandler::PagesChanged, this, &MainWindow::offerPages);
    connect(&statuses_, &StatusHandler::CameOnline, this, &MainWindow::offerPages);
    connect(&tray_, &TrayController::OpenRedirectUrl, this,
            [this] { openPage(&Context::redirectUrl, false); });
    connect(&tray_, &TrayController::OpenResourceList, this,
            [this] { openPage(&Context::resourceListPagePath, true); });
    connect(&cards_, &ConnectionList::Selected, this, &MainWindow::renderTray);
}

void MainWindow::renderTray() {
    bool const named = state_.status != ConnectStatus::Disconnected;
    tray_.Render(trayViewFor(state_, cards_.Has(cards_.SelectedName())),
                 named ? QString::fromStdString(state_.currentProfileName) : QString(),
                 QString::fromStdString(cards_.SelectedName()));
}

// What the button of that card does, unless the state has moved on since the menu was shown.
void MainWindow::pressCard(std::string const& name, bool start) {
    if (start && QApplication::activeModalWidget() != nullptr) {
        BringUp();  // what stands there is answered first
        return;
    }
    ProfileTab* const tab = start == state_.Idle() ? cards_.GetProfileTab(name) : nullptr;
    if (tab != nullptr && start == (tab->Status() == ConnectStatus::Disconnected)) {
        tab->onConnButtonTriggered();
    }
}

// What the session has offered so far; an interruption takes the actions away, not the pages.
void MainWindow::offerPages() {
    if (auto const profile = flow_.RunningProfile()) {
        Context const& session = profile->context;
        tray_.SetPages(!session.redirectUrl.empty(),
                       QString::fromStdString(session.redirectUrlTitle),
                       !session.resourceListPagePath.empty());
    }
}

void MainWindow::openPage(std::string Context::*page, bool local) {
    if (auto const profile = flow_.RunningProfile()) {
        OpenUrlWithHint(prompts_, this, QString::fromStdString(profile->context.*page), local);
    }
}

// Without a tray nothing would bring a hidden window back: closing means leaving.
void MainWindow::on_btn_main_close__clicked() {
    if (tray_.HasTray()) {
        hide();
    } else if (prompts_.Question(this, GetErrMsg(MsgCode::UI_WARNING),
                                 GetErrMsg(MsgCode::UI_INFO_CLOSE_MAIN_WINDOW_TEXT),
                                 GetErrMsg(MsgCode::UI_INFO_OK),
                                 GetErrMsg(MsgCode::UI_INFO_CANCEL))) {
        close();
    }
}

void MainWindow::BringUp() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The user closes a window, not the connection; the end of the desktop session closes both.
    if (event->spontaneous() && !sessionEnding_ && tray_.HasTray()) {
        event->ignore();
        hide();
        return;
    }
    event->accept();
    leave();
    QCoreApplication::exit(0);
}

void MainWindow::leave() {
    if (!std::exchange(quitting_, true)) {
        link_.IgnoreLoss();
        state_.errorShown = true;  // who leaves needs no word about an open dialog
        StopConnect();
        g_quit = true;  // what stands behind a box does not go on
    }
}

void MainWindow::onSessionEnding() {
    sessionEnding_ = true;
    config_.Save();
}

}  // namespace zorvanelink::ui

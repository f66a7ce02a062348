// The window's part in the tray: its actions, hiding and coming back, and the end of the program.
#include <QApplication>
#include <QCloseEvent>

#include "ui/session/session_pages.h"
#include "ui/shell/main_window.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"
#include "ui/widgets/open_url.h"

namespace zorvanelink::ui {

using common::MsgCode;

void MainWindow::wireTray() {
    connect(&tray_, &TrayController::ShowWindow, this, &MainWindow::BringUp);
    connect(&tray_, &TrayController::Quit, this, &QWidget::close);
    connect(&tray_, &TrayController::Connect, this,
            [this] { connectFromOutside(cards_.SelectedName()); });
    connect(&tray_, &TrayController::Disconnect, this, [this] {
        if (!session_.state.Idle()) {
            QString const name = QString::fromStdString(session_.state.currentProfileName);
            cards_.SetCurrntProfileTabbyProfileName(name);
            session_.Stop(name);
        }
    });
    connect(&tray_, &TrayController::OpenPage, this, &MainWindow::openPage);
    connect(ui_.tunnel, &TunnelView::PageWanted, this, [this](int index) {
        auto const pages = pagesFor(session_.state, session_.context);
        if (static_cast<std::size_t>(index) < pages.size()) {
            openPage(pages[static_cast<std::size_t>(index)]);
        }
    });
}

void MainWindow::renderTray() {
    std::string const& selected = cards_.SelectedName();
    tray_.Render(trayViewFor(session_.state, cards_.Has(selected)),
                 QString::fromStdString(selected));
}

// In the tray, as buttons of the window, and what changes a password on the card.
void MainWindow::renderPages() {
    std::vector<SessionPage> const pages = pagesFor(session_.state, session_.context);
    tray_.SetPages(pages);
    // The page for a new password comes last, and the card has it: the window keeps to one row.
    QStringList titles;
    for (SessionPage const& page : pages) {
        if (!page.password || page.address.isEmpty()) {
            titles += page.title;
        }
    }
    ui_.tunnel->SetPages(titles);
    std::vector<SessionPage> ofCard;
    std::copy_if(pages.begin(), pages.end(), std::back_inserter(ofCard),
                 [](SessionPage const& page) { return page.password; });
    cards_.SetPages(ofCard);
}

void MainWindow::openPage(SessionPage const& page) {
    if (page.address.isEmpty()) {
        passwords_.onActionActiveChangePWDTriggered();
        return;
    }
    OpenUrlWithHint(session_.prompts, this, page.address, page.local);
}

// By the tray; what stands open is answered first.
void MainWindow::connectFromOutside(std::string const& name) {
    if (QApplication::activeModalWidget() != nullptr) {
        BringUp();
    } else if (session_.state.Idle() && session_.state.adapterUsable) {
        cards_.SetCurrntProfileTabbyProfileName(QString::fromStdString(name));
        session_.Start(QString::fromStdString(name));
    }
}

// Without a tray nothing would bring a hidden window back: closing means leaving.
void MainWindow::on_btn_main_close__clicked() {
    if (tray_.HasTray()) {
        hideToTray();
    } else if (session_.prompts.Question(this, GetTrMsg(MsgCode::UI_WARNING),
                                         GetTrMsg(MsgCode::UI_INFO_CLOSE_MAIN_WINDOW_TEXT),
                                         GetTrMsg(MsgCode::UI_INFO_OK),
                                         GetTrMsg(MsgCode::UI_INFO_CANCEL))) {
        close();
    }
}

void MainWindow::hideToTray() {
    hide();
    tray_.TellWhereTheWindowWent();
}

void MainWindow::BringUp() {
    BringForward(this);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The user closes a window, not the connection; the end of the desktop session closes both.
    if (event->spontaneous() && !sessionEnding_ && tray_.HasTray()) {
        event->ignore();
        hideToTray();
        return;
    }
    event->accept();
    session_.Leave();
    QCoreApplication::exit(0);
}

void MainWindow::onSessionEnding() {
    sessionEnding_ = true;
    session_.config.Save();
}

}  // namespace zorvanelink::ui

// What the window shows: everything that follows from the state, in one place.
#include <QUrl>

#include "app/environment/paths.h"
#include "ui/shell/main_window.h"
#include "ui/shell/state_texts.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

constexpr int kNameWidth = 320;  // pixels of a connection's name in a line
constexpr std::chrono::milliseconds kSecond{1000};

QString cut(QWidget const& widget, std::string const& name) {
    return widget.fontMetrics().elidedText(QString::fromStdString(name).simplified(),
                                           Qt::ElideMiddle, kNameWidth);
}

}  // namespace

void MainWindow::wireView() {
    waiting_.setSingleShot(true);
    connect(&waiting_, &QTimer::timeout, this, [this] {
        bool const hinted = waited_ == Waited::kHint;
        waited_ = hinted ? Waited::kLong : Waited::kHint;
        if (!hinted) {
            waiting_.start(patience_ - patience_ / kHintPart);
        }
        render();
    });
    seconds_.setInterval(kSecond);
    connect(&seconds_, &QTimer::timeout, this, &MainWindow::renderProgress);
    connect(ui_.tunnel, &TunnelView::HeroActed, this, &MainWindow::onHeroActed);
    connect(ui_.waitForm, &WaitForm::LogWanted, this, &MainWindow::openLogFolder);
}

void MainWindow::render() {
    ConnectionState const& state = session_.state;
    ViewState const view = viewStateFor(state);
    followLink();
    bool const named = view.status != ConnectStatus::Disconnected;
    ui_.tunnel->SetState(view.look, GetTrMsg(view.stateLabel),
                         named ? QString::fromStdString(state.currentProfileName) : QString(),
                         view.showsTunnel);
    ui_.tunnel->SetWarning(StripText(view, state));
    ui_.tunnel->SetBrowserLogin(session_.ThirdParty().TimeLeft());
    renderHero(view);
    renderProgress();
    renderWait();
    cards_.Render();
    SetStatusBarInfo(view);
    renderTray();
    renderPages();
    if (view.silent) {
        ui_.statusBar->SetStatus(SilentText(), QLatin1String(view.statusIcon));
    } else if (view.hasStatusText) {
        ui_.statusBar->SetStatus(GetTrMsg(view.statusText), QLatin1String(view.statusIcon));
    }
}

// The hint comes in a while only: a start of the computer looks the same for a moment.
void MainWindow::followLink() {
    bool const gone = session_.state.link != LinkState::kLinked;
    if (!gone) {
        waited_ = Waited::kNot;
        waiting_.stop();
    } else if (waited_ == Waited::kNot) {
        waited_ = Waited::kShort;
        waiting_.start(patience_ / kHintPart);
    }
}

// In the middle, while there is no connection to tell of.
void MainWindow::renderHero(ViewState const& view) {
    std::optional<SessionEnd> const& end = session_.state.lastEnd;
    TunnelView::Hero hero;
    if (view.serviceGone) {
        hero.hint = ServiceGoneHint();
        hero.action = waited_ == Waited::kLong
                          ? Translate(QT_TRANSLATE_NOOP("ui", "Open Log Folder"))
                          : QString();
    } else if (view.look == Look::kFailed) {
        hero.hint = Translate(QT_TRANSLATE_NOOP(
            "ui", "Restart the computer. If this stays, ask your administrator."));
    } else if (end) {
        hero.hint = EndText(*end, cut(*ui_.tunnel, end->name));
        hero.action =
            cards_.Has(end->name) ? Translate(QT_TRANSLATE_NOOP("ui", "Connect again")) : QString();
    } else if (cards_.Has(cards_.SelectedName())) {
        hero.hint = Translate(QT_TRANSLATE_NOOP("ui", "Press Connect to connect to %1."))
                        .arg(cut(*ui_.tunnel, cards_.SelectedName()));
    }
    ui_.tunnel->SetHero(hero);
}

void MainWindow::onHeroActed() {
    if (viewStateFor(session_.state).serviceGone) {
        openLogFolder();
    } else if (session_.state.lastEnd) {
        connectFromOutside(std::string(session_.state.lastEnd->name));
    }
}

void MainWindow::openLogFolder() {
    session_.prompts.OpenUrl(QUrl::fromLocalFile(GetAppLogDirPath()));
}

// Once a second, only while a login is under way.
void MainWindow::renderProgress() {
    bool const busy = viewStateFor(session_.state).look == Look::kConnecting;
    if (busy != seconds_.isActive()) {
        busy ? seconds_.start() : seconds_.stop();
    }
    ui_.tunnel->SetProgress(busy ? ProgressText(session_.state, session_.conversation.Stands())
                                 : QString());
}

void MainWindow::SetStatusBarInfo(ViewState const& view) {
    int const count = static_cast<int>(session_.config.GetProfile().size());
    if (session_.config.LastSaveFailed()) {
        ui_.statusBar->SetCountText(
            Translate(QT_TRANSLATE_NOOP("ui", "The settings could not be saved")));
    } else if (count == 0) {
        ui_.statusBar->SetCountText(QString());
    } else if (view.status == ConnectStatus::Connected) {
        // Both at once: a name may look like a place.
        ui_.statusBar->SetCountText(GetTrMsg(MsgCode::UI_TR_STATUS_CONNECTED)
                                        .arg(cut(*ui_.statusBar, session_.state.currentProfileName),
                                             QString::number(count)));
    } else {
        // Between states the left side alone says where the connection is.
        ui_.statusBar->SetCountText(GetTrMsg(MsgCode::UI_TR_STATUS_NO_CONNECTED).arg(count),
                                    view.look != Look::kDisconnected);
    }
}

void MainWindow::Wait(int mode, QString const& text) {
    constexpr int kShow = 0;
    ui_.waitForm->SetDesc(text);
    renderWait();
    ui_.waitForm->setVisible(mode == kShow);
    if (mode != kShow) {
        ui_.Begin()->setFocus();
    }
}

// Another text than this one has its own reason.
void MainWindow::renderWait() {
    bool const absent = ui_.waitForm->Desc() == GetTrMsg(MsgCode::UI_INFO_CONNECTING_SERVICE) &&
                        (waited_ == Waited::kHint || waited_ == Waited::kLong);
    ui_.waitForm->SetHint(absent ? ServiceGoneHint() : QString(),
                          absent && waited_ == Waited::kLong);
}

}  // namespace zorvanelink::ui

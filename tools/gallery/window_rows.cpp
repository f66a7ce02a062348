// The main window, its menus, and the boxes and small dialogs that any part may open.
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QVBoxLayout>

#include "tools/gallery/stage.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/settings/settings_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/input_dialog.h"
#include "ui/widgets/status_bar_widget.h"
#include "ui/widgets/style.h"
#include "ui/widgets/wait_form.h"

namespace zorvanelink::gallery {
namespace {

using common::MsgCode;
using ui::BoxKind;
using ui::ConnectStatus;
using ui::GetTrMsg;
using ui::SupportedAuthType;

ui::TunnelView& onlineTunnel(Stage& stage, ui::TunnelView::Tab tab) {
    bool const warning = tab == ui::TunnelView::kStatistics;  // where nothing says otherwise
    stage.Main().GoTo(ConnectStatus::Connected, warning);
    stage.Main().Tunnel().ShowTab(tab);
    return stage.Main().Tunnel();
}

void box(Stage& stage, BoxKind kind, MsgCode title, QString const& text,
         std::vector<MsgCode> const& buttons, int preset = 0) {
    ui::BoxRequest request;
    request.kind = kind;
    request.title = GetTrMsg(title);
    request.text = text;
    request.defaultButton = preset;
    for (MsgCode const button : buttons) {
        request.buttons.push_back(GetTrMsg(button));
    }
    stage.ShowBox(request);
}

ui::InputDialog& input(Stage& stage, MsgCode title, MsgCode label, QString const& label2,
                       MsgCode remember) {
    auto made = std::make_unique<ui::InputDialog>(stage.prompts, stage.Owner());
    auto& dialog = *made;
    dialog.setWindowTitle(GetTrMsg(title));
    dialog.setLabelText(GetTrMsg(label));
    dialog.setLabel2Text(label2);
    dialog.setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_PLEASE_INPUT_PWD));
    dialog.setCheckBoxText(GetTrMsg(remember));
    dialog.SetRememberCheckHide(GetTrMsg(remember).isEmpty());
    stage.Keep(std::move(made));
    return dialog;
}

// What the start of a connection without a stored secret asks for.
ui::SecretRequest askedFor(Stage& stage, SupportedAuthType type) {
    auto& session = stage.Main().Window().CurrentSession();
    auto profile = std::make_shared<ui::Profile>();
    profile->name = "Branch office";
    profile->server = "vpn.example.com";
    profile->userName = "alice";
    profile->authType = type;
    profile->certIsFile = false;
    profile->systemCert.certType = ui::kCertTypeUsbKey;
    profile->systemCert.certName = "Alice Chen";
    session.config.AddProfile(profile, false);
    session.Start(QString::fromStdString(profile->name));
    return stage.Main().Prompts().lastSecret;
}

// What an entry of the menu opens.
void entry(Stage& stage, char const* action) {
    stage.Main().Window().findChild<QAction*>(QLatin1String(action))->trigger();
    QApplication::processEvents();
    stage.ShowBox(stage.Main().Prompts().last);
}

QMenu& openMore(Stage& stage) {
    auto& window = stage.Main().Window();
    auto* const button = window.findChild<QToolButton*>(QStringLiteral("btn_main_more_"));
    button->click();
    auto& menu = *qobject_cast<QMenu*>(QApplication::activePopupWidget());
    // The offscreen platform's screen is smaller than the window.
    QPoint const corner = button->mapToGlobal(button->rect().bottomRight());
    menu.move(corner.x() - menu.width() + 1, corner.y() + 2);
    stage.Lean(menu);
    return menu;
}

void openTray(Stage& stage) {
    auto& window = stage.Main().Window();
    auto* const quit = window.findChild<QAction*>(QStringLiteral("tray_quit_"));
    auto* const tray = qobject_cast<QMenu*>(quit->associatedWidgets().first());
    tray->popup({});
    tray->move(window.geometry().center());
    stage.Lean(*tray);
}

std::unique_ptr<QWidget> sheet() {
    auto made = std::make_unique<QWidget>();
    made->setStyleSheet(ui::LoadStyle(QStringLiteral("controls")) +
                        ui::LoadStyle(QStringLiteral("mainwindow")));
    return made;
}

void cards(Stage& stage) {
    auto made = sheet();
    auto* grid = new QGridLayout(made.get());
    for (int column = 0; column < 3; ++column) {
        int row = 0;
        for (auto const status : {ConnectStatus::Disconnected, ConnectStatus::Connecting,
                                  ConnectStatus::PrepareReconnecting, ConnectStatus::Reconnecting,
                                  ConnectStatus::Connected}) {
            auto profile = std::make_shared<ui::Profile>();
            profile->name = std::to_string(grid->count()) +
                            ": emergency access with a very long name of a connection";
            profile->server = "a-very-long-gateway-name.region-7.example.com";
            profile->userName = "a.user.name.that.is.much.longer.than.its.place@example.com";
            profile->loginMode = column == 0 ? ui::kLoginModeTls : ui::kLoginModeGm;
            auto* card = new ui::ProfileTab(profile, made.get());
            card->SetCompact(column == 2);
            ui::ConnectionState state;
            state.currentProfileName = profile->name;
            state.status = status;
            card->Render(ui::cardViewFor(state, profile->name));
            grid->addWidget(card, row++, column);
        }
    }
    stage.Keep(std::move(made));
}

void statusBars(Stage& stage) {
    auto made = sheet();
    auto* column = new QVBoxLayout(made.get());
    for (auto const code : {MsgCode::UI_TR_STATE_NORMAL, MsgCode::UI_TR_STATE_CONNECTTED,
                            MsgCode::UI_TR_STATE_DISCONNECT, MsgCode::UI_TR_STATE_VNIC_ERROR,
                            MsgCode::UI_INFO_CONNECTING_SERVICE, MsgCode::UI_INFO_RECONNECTING,
                            MsgCode::UI_TR_CHECK_AUTH_TYPE, MsgCode::CONNECTING}) {
        auto* bar = new ui::StatusBarWidget(made.get());
        bar->setFixedSize(880, 32);  // in the smallest window
        bar->SetStatus(GetTrMsg(code), QStringLiteral(":/assets/images/normal.png"));
        bar->SetCountText(GetTrMsg(MsgCode::UI_TR_STATUS_CONNECTED)
                              .arg(QStringLiteral("Head office"), QStringLiteral("32")));
        column->addWidget(bar);
    }
    stage.Keep(std::move(made));
}

void waitForms(Stage& stage) {
    auto made = sheet();
    auto* column = new QVBoxLayout(made.get());
    for (auto const code : {MsgCode::UI_INFO_CONNECTING_SERVICE, MsgCode::UI_TR_CHECK_AUTH_TYPE,
                            MsgCode::UI_INFO_WAIT_RECONNECTING}) {
        auto* behind = new QWidget(made.get());
        behind->setFixedSize(480, 200);
        auto* wait = new ui::WaitForm(behind);
        wait->SetDesc(GetTrMsg(code));
        wait->show();
        column->addWidget(behind);
    }
    stage.Keep(std::move(made));
}

std::vector<Row> mainRows() {
    return {
        {"window-disconnected", [](Stage& stage) { stage.Main(); }},
        {"window-connecting", [](Stage& stage) { stage.Main().GoTo(ConnectStatus::Connecting); }},
        {"window-browser-login", [](Stage& stage) { stage.Main().GoToBrowserLogin(); }},
        {"window-prepare",
         [](Stage& stage) { stage.Main().GoTo(ConnectStatus::PrepareReconnecting); }},
        {"window-reconnecting",
         [](Stage& stage) { stage.Main().GoTo(ConnectStatus::Reconnecting); }},
        {"window-service-lost", [](Stage& stage) { stage.Main().LoseService(); }},
        {"window-adapter-failed", [](Stage& stage) { stage.Main().FailAdapter(); }},
        {"window-ended",
         [](Stage& stage) {
             stage.Main().GoTo(ConnectStatus::Connected);
             stage.Main().EndSession();
         }},
        {"window-long-name",
         [](Stage& stage) {
             stage.Main().Use("Reserve access with a very long name of a connection");
             stage.Main().GoTo(ConnectStatus::Connected);
         }},
        {"window-statistics",
         [](Stage& stage) { onlineTunnel(stage, ui::TunnelView::kStatistics); }},
        {"window-pages",
         [](Stage& stage) {
             onlineTunnel(stage, ui::TunnelView::kStatistics)
                 .SetPages({QStringLiteral("The applications of the head office and its branches"),
                            ui::GetTrMsg(common::MsgCode::UI_INFO_RESOURCE_LIST),
                            ui::GetTrMsg(common::MsgCode::UI_INFO_LOWER_CHANGE_PWD)});
         }},
        {"window-interface", [](Stage& stage) { onlineTunnel(stage, ui::TunnelView::kInterface); }},
        {"window-routes",
         [](Stage& stage) {
             onlineTunnel(stage, ui::TunnelView::kRoute).Routes().onRouteItemClicked(0);
         }},
        {"window-routes-ipv6",
         [](Stage& stage) {
             auto& routes = onlineTunnel(stage, ui::TunnelView::kRoute).Routes();
             routes.findChild<QAbstractButton*>(QStringLiteral("tab_ipv6_route_"))->click();
             routes.findChild<QTableView*>(QStringLiteral("route_table_ipv6_"))->selectRow(2);
         }},
        {"window-routes-none",
         [](Stage& stage) { onlineTunnel(stage, ui::TunnelView::kRoute).ClearRouteInfo(); }},
        {"window-routes-no-match",
         [](Stage& stage) {
             onlineTunnel(stage, ui::TunnelView::kRoute)
                 .Routes()
                 .findChild<QLineEdit*>(QStringLiteral("route_search_"))
                 ->setText(QStringLiteral("10.99"));
         }},
        {"window-routes-focus",
         [](Stage& stage) {
             onlineTunnel(stage, ui::TunnelView::kRoute);
             stage.Settle();
             stage.Main()
                 .Window()
                 .findChild<QTableView*>(QStringLiteral("route_table_ipv4_"))
                 ->horizontalHeader()
                 ->setFocus();
         }},
        {"window-guide", [](Stage& stage) { stage.Main(SampleWindow::Content::kFirstUse); }},
        {"window-wait", [](Stage& stage) { stage.Main(SampleWindow::Content::kCards, false); }},
        {"window-many",
         [](Stage& stage) {
             auto& list = *stage.Main(SampleWindow::Content::kMany)
                               .Window()
                               .findChild<ui::StartListWidget*>();
             stage.Settle();
             list.verticalScrollBar()->setValue(list.verticalScrollBar()->singleStep());
         }},
        {"window-many-search",
         [](Stage& stage) {
             stage.Main(SampleWindow::Content::kMany)
                 .Window()
                 .findChild<QLineEdit*>(QStringLiteral("connection_search_"))
                 ->setText(QStringLiteral("gw1"));
         }},
        {"part-cards", cards},
        {"part-status-bars", statusBars},
        {"part-wait-forms", waitForms},
        {"menu-more",
         [](Stage& stage) {
             QMenu& menu = openMore(stage);
             menu.setActiveAction(menu.actions().at(2));
         }},
        {"menu-log-level",
         [](Stage& stage) {
             QMenu& menu = openMore(stage);
             QMenu& levels = *menu.actions().front()->menu();
             menu.setActiveAction(menu.actions().front());
             levels.popup({});
             levels.move(menu.x() - levels.width(), menu.y());
             stage.Lean(levels);
         }},
        {"menu-tray", openTray},
        {"menu-tray-connected",
         [](Stage& stage) {
             stage.Main().GoTo(ConnectStatus::Connected);
             openTray(stage);
         }},
    };
}

std::vector<Row> boxRows() {
    return {
        {"box-critical",
         [](Stage& stage) {
             box(stage, BoxKind::kCritical, MsgCode::UI_ERROR,
                 GetTrMsg(MsgCode::UI_INFO_FAIL_EXPORT_LOG), {MsgCode::UI_INFO_OK});
         }},
        {"box-information",
         [](Stage& stage) {
             box(stage, BoxKind::kInformation, MsgCode::UI_INFO,
                 GetTrMsg(MsgCode::UI_INFO_FINISH_EXPORT_LOG), {MsgCode::UI_INFO_OK});
         }},
        {"box-delete",
         [](Stage& stage) {
             stage.Main().Window().findChild<ui::StartListWidget*>()->CardAt(0)->PressDelete();
             QApplication::processEvents();
             stage.ShowBox(stage.Main().Prompts().last);
         }},
        {"box-certificate",
         [](Stage& stage) {
             stage.Main().AskAboutCertificate();
             stage.ShowBox(stage.Main().Prompts().last);
         }},
        {"box-exit",
         [](Stage& stage) {
             auto& window = stage.Main().Window();
             window.findChild<QToolButton*>(QStringLiteral("btn_main_close_"))->click();
             stage.ShowBox(stage.Main().Prompts().last);
         }},
        {"box-update",
         [](Stage& stage) {
             box(stage, BoxKind::kInformation, MsgCode::UI_INFO, GetTrMsg(MsgCode::UPDATE_DETECTED),
                 {MsgCode::UI_TR_UPDATE_NOW, MsgCode::UI_TR_UPDATE_NEXT,
                  MsgCode::UI_TR_UPDATE_NEVER});
         }},
        {"box-long",
         [](Stage& stage) {
             QString const address =
                 QStringLiteral("https://%1.example.com/").arg(QString(120, u'w'));
             box(stage, BoxKind::kWarning, MsgCode::UI_WARNING,
                 address + QStringLiteral("#@@#") +
                     GetTrMsg(MsgCode::UI_TR_VERITY_SERVER_CERTIFICATE_FAILED).repeated(8),
                 {MsgCode::UI_INFO_OK});
         }},
        {"box-about", [](Stage& stage) { entry(stage, "more_about_"); }},
        {"box-help", [](Stage& stage) { entry(stage, "more_help_"); }},
    };
}

std::vector<Row> dialogRows() {
    return {
        {"settings",
         [](Stage& stage) { stage.Show<ui::SettingsDialog>(stage.config, stage.prompts); }},
        {"dialog-password",
         [](Stage& stage) { stage.ShowSecret(askedFor(stage, SupportedAuthType::kPwd)); }},
        {"dialog-pin",
         [](Stage& stage) { stage.ShowSecret(askedFor(stage, SupportedAuthType::kOnlyUkey)); }},
        {"dialog-refused",
         [](Stage& stage) {
             auto& dialog = stage.ShowSecret(askedFor(stage, SupportedAuthType::kPwd));
             dialog.findChild<QPushButton*>(QStringLiteral("ok_button_"))->click();
         }},
        {"dialog-caps-lock",
         [](Stage& stage) {
             auto& dialog = stage.ShowSecret(askedFor(stage, SupportedAuthType::kPwd));
             QKeyEvent typed(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("A"));
             QApplication::sendEvent(dialog.findChild<QLineEdit*>(QStringLiteral("text_edit_")),
                                     &typed);
         }},
        {"dialog-long",
         [](Stage& stage) {
             input(stage, MsgCode::UI_INFO_INPUT_PWD, MsgCode::UI_TR_IMPORT_CERT_FAILED,
                   QString(90, u'w'), MsgCode::UI_INFO_REMEMBER_PWD);
         }},
        {"dialog-dimmed",
         [](Stage& stage) {
             auto& behind = input(stage, MsgCode::UI_INFO_INPUT_PWD,
                                  MsgCode::UI_INFO_PLEASE_INPUT_THE_PWD, {}, MsgCode::UI_INFO_NONE);
             behind.ToBack();
             box(stage, BoxKind::kCritical, MsgCode::UI_ERROR,
                 GetTrMsg(MsgCode::UI_TR_ERR_PWD_LENGTH), {MsgCode::UI_INFO_OK});
         }},
    };
}

}  // namespace

std::vector<Row> WindowRows() {
    std::vector<Row> rows = mainRows();
    for (auto const& more : {boxRows(), dialogRows()}) {
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

}  // namespace zorvanelink::gallery

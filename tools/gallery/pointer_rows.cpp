// What lies under the pointer or has the keyboard, and the lists, menus and tips that open there.
#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QTableView>
#include <QToolTip>

#include "tools/gallery/stage.h"
#include "tools/support/wait.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/editor/create_connect_dialog.h"

namespace zorvanelink::gallery {
namespace {

using ui::ConnectStatus;

template <class Widget = QWidget>
Widget& part(QWidget& whole, char const* name) {
    return *whole.findChild<Widget*>(QLatin1String(name));
}

ui::ProfileTab& cardThatIs(bool selected, Stage& stage) {
    auto const& list = part<ui::StartListWidget>(stage.Main().Window(), "connection_listwidget_");
    auto const cards = list.ListedCards();
    return **std::find_if(cards.begin(), cards.end(),
                          [=](auto const* card) { return card->IsSelected() == selected; });
}

void hoverAt(QAbstractScrollArea& area, QPoint at) {
    QHoverEvent over(QEvent::HoverEnter, at, QPointF(-1, -1));
    QApplication::sendEvent(area.viewport(), &over);
}

ui::TunnelView& routes(Stage& stage) {
    stage.Main().GoTo(ConnectStatus::Connected);
    stage.Main().Tunnel().ShowTab(ui::TunnelView::kRoute);
    stage.Settle();
    return stage.Main().Tunnel();
}

// Nothing of that kind stands beside it.
void leanOpened(Stage& stage) {
    test::WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
    stage.Lean(*QApplication::activePopupWidget());
}

ui::CreateConnectDialog& editor(Stage& stage) {
    auto profile = std::make_shared<ui::Profile>();
    profile->name = "Head office";
    profile->authType = common::SupportedAuthType::kPwdWithCert;
    profile->gatewayList["Frankfurt"];
    profile->gatewayList["a-very-long-gateway-name.region-7.example.com"];
    return stage.Show<ui::CreateConnectDialog>(
        profile, ui::AuthConfigBase::Services{stage.config, stage.prompts, stage.road});
}

void focus(Stage& stage, QWidget& widget) {
    stage.Settle();
    widget.setFocus(Qt::TabFocusReason);
}

std::vector<Row> hoverRows() {
    return {
        {"hover-card",
         [](Stage& stage) {
             auto& window = stage.Main().Window();
             auto& card = cardThatIs(false, stage);
             Stage::Hover(card);
             Stage::Hover(part(card, "mod_config_button_"));
             Stage::Hover(part(card, "conn_button_"));
             Stage::Hover(part(window, "add_button_"));
             Stage::Hover(part(window, "btn_main_more_"));
         }},
        {"hover-online",
         [](Stage& stage) {
             auto& view = routes(stage);
             auto& table = part<QTableView>(view, "route_table_ipv4_");
             table.selectRow(0);
             hoverAt(table, table.visualRect(table.model()->index(2, 0)).center());
             hoverAt(*table.horizontalHeader(), {20, 20});
             Stage::Hover(part(view, "tab_interface_"));
             Stage::Hover(part(view, "route_search_"));
             Stage::Hover(part(cardThatIs(true, stage), "conn_button_"));
         }},
        {"hover-certificate",
         [](Stage& stage) {
             CertInfo cert;
             cert.commonName = "Alice Chen";
             cert.issuer = "CN=Example Issuing Authority G2";
             cert.validTo = "2036-01-02 03:04:05";
             auto& dialog =
                 stage.Show<ui::TLSCertDialog>(stage.target, stage.config, stage.prompts);
             dialog.onRecvCertInfo({cert, cert});
             auto& list = part<QListView>(dialog, "service_cert_list_");
             list.setCurrentIndex(list.model()->index(0, 0));
             hoverAt(list, list.visualRect(list.model()->index(1, 0)).center());
         }},
    };
}

std::vector<Row> focusRows() {
    return {
        {"focus-card",
         [](Stage& stage) { focus(stage, part(stage.Main().Window(), "connection_listwidget_")); }},
        {"focus-card-button",
         [](Stage& stage) { focus(stage, part(cardThatIs(true, stage), "conn_button_")); }},
        {"focus-card-icon",
         [](Stage& stage) { focus(stage, part(cardThatIs(true, stage), "del_config_button_")); }},
        {"focus-tab", [](Stage& stage) { focus(stage, part(routes(stage), "tab_route_")); }},
    };
}

std::vector<Row> openRows() {
    return {
        {"open-gateways",
         [](Stage& stage) {
             auto& dialog = editor(stage);
             dialog.on_btn_icon_advanced_config__clicked();
             stage.Settle();
             auto& gateways = part<QComboBox>(dialog, "perfer_gateway_combobox_");
             dialog.Reveal(&gateways);
             stage.Settle();
             gateways.showPopup();
             leanOpened(stage);
         }},
        {"open-certificate-kinds",
         [](Stage& stage) {
             editor(stage).onActionSelectCertTriggered();
             leanOpened(stage);
         }},
        {"open-route-menu",
         [](Stage& stage) {
             auto& table = part<QTableView>(routes(stage), "route_table_ipv4_");
             table.selectRow(1);
             Q_EMIT table.customContextMenuRequested({40, 60});
             leanOpened(stage);
         }},
        {"open-tip",
         [](Stage& stage) {
             auto& window = stage.Main().Window();
             auto const names = window.findChildren<QLabel*>(QStringLiteral("card_name_"));
             auto& name = **std::find_if(names.begin(), names.end(), [](QLabel const* label) {
                 return !label->toolTip().isEmpty();
             });
             stage.Settle();
             QToolTip::showText(name.mapToGlobal(QPoint(20, 20)), name.toolTip(), &name);
             for (QWidget* const top : QApplication::topLevelWidgets()) {
                 if (top->windowType() == Qt::ToolTip && top->isVisible()) {
                     stage.Lean(*top);
                 }
             }
         }},
    };
}

}  // namespace

std::vector<Row> PointerRows() {
    std::vector<Row> rows = hoverRows();
    for (auto const& more : {focusRows(), openRows()}) {
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

}  // namespace zorvanelink::gallery

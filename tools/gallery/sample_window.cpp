#include "tools/gallery/sample_window.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::gallery {

using common::MsgCode;
using ui::ConnectStatus;
using ui::GetTrMsg;

namespace {

struct StateText {
    MsgCode label;
    MsgCode bar;
    char const* icon;
};

StateText textsOf(ConnectStatus status) {
    switch (status) {
        case ConnectStatus::Connecting:
            return {MsgCode::UI_INFO_CONNECTING, MsgCode::UI_TR_CHECK_AUTH_TYPE, "query_type.gif"};
        case ConnectStatus::PrepareReconnecting:
        case ConnectStatus::Reconnecting:
            return {MsgCode::UI_INFO_RECONNECTING, MsgCode::UI_INFO_RECONNECTING,
                    "loading_small.gif"};
        case ConnectStatus::Connected:
            return {MsgCode::UI_INFO_CONNECTED, MsgCode::UI_TR_STATE_CONNECTTED, "connectted.png"};
        default:
            return {MsgCode::UI_INFO_DISCONNECT, MsgCode::UI_TR_STATE_NORMAL, "normal.png"};
    }
}

}  // namespace

SampleWindow::SampleWindow() : QWidget(nullptr, Qt::FramelessWindowHint) {
    setAttribute(Qt::WA_TranslucentBackground);
    setStyleSheet(ui::LoadStyle(QStringLiteral("controls")) +
                  ui::LoadStyle(QStringLiteral("mainwindow")));
    resize(960, 640);
    auto* frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("window_frame_"));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(frame);

    auto* title = new ui::TitleBar(ui::TitleBar::Kind::kWindow, frame);
    title->SetTitle(GetTrMsg(MsgCode::UI_INFO_ZORVANE_LINK));
    status_ = new ui::StatusBarWidget(frame);
    auto* right = new QFrame(frame);
    right->setObjectName(QStringLiteral("right_panel_"));
    auto* rightColumn = new QVBoxLayout(right);
    rightColumn->setContentsMargins(0, 0, 0, 0);
    tunnel_ = new ui::TunnelView(right);
    rightColumn->addWidget(tunnel_);
    auto* middle = new QHBoxLayout;
    middle->setSpacing(0);
    middle->addWidget(buildLeft());
    middle->addWidget(right, 1);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(title);
    column->addLayout(middle, 1);
    column->addWidget(status_);
    list_->setFocus();
    cover_ = new ui::DimCover(
        this, QStringLiteral("background-color:rgba(0,0,0,50%);border-radius: 8px;"));
}

QWidget* SampleWindow::buildLeft() {
    left_ = new QStackedWidget(this);
    left_->setObjectName(QStringLiteral("left_panel_"));
    left_->setFixedWidth(336);
    auto* page = new QWidget(left_);
    auto* heading = new QLabel(GetTrMsg(MsgCode::UI_INFO_CONNECT), page);
    heading->setProperty("role", QStringLiteral("heading"));
    auto* add = new QPushButton(GetTrMsg(MsgCode::UI_TR_ADD_CONNECTION), page);
    add->setObjectName(QStringLiteral("add_button_"));
    add->setProperty("outline", true);
    list_ = new ui::StartListWidget(page);
    auto* top = new QHBoxLayout;
    top->setContentsMargins(16, 16, 16, 0);
    top->addWidget(heading, 1);
    top->addWidget(add);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(13);
    column->addLayout(top);
    auto* listRow = new QHBoxLayout;
    listRow->setContentsMargins(13, 0, 2, 0);
    listRow->addWidget(list_);
    column->addLayout(listRow, 1);
    left_->addWidget(page);
    return left_;
}

void SampleWindow::AddCard(char const* name, char const* server, char const* user, bool gm,
                           bool forgotPage) {
    auto profile = std::make_shared<ui::Profile>();
    profile->name = name;
    profile->server = server;
    profile->userName = user;
    profile->loginMode = gm ? ui::kLoginModeGm : ui::kLoginModeTls;
    profile->forgotPwdUrl = forgotPage ? "https://vpn.example.com/forgot" : "";
    auto* card = new ui::ProfileTab(profile, list_);
    list_->AddCard(card);
    cards_.push_back(card);
    card->SetSelected(cards_.size() == 1);
}

void SampleWindow::ShowGuide() {
    left_->addWidget(new ui::UserGuide(left_));
    left_->setCurrentIndex(1);
    tunnel_->SetHint({});
    status_->SetStatus(GetTrMsg(MsgCode::UI_TR_STATE_NORMAL),
                       QStringLiteral(":/assets/images/normal.png"));
}

void SampleWindow::SetStatus(ConnectStatus status) {
    StateText const texts = textsOf(status);
    auto const& first = cards_.front()->GetProfile()->name;
    QString const name = QString::fromStdString(first);
    for (auto* card : cards_) {
        card->NotifyConnectStatusTriggered(name, status);
    }
    bool const idle = status == ConnectStatus::Disconnected;
    tunnel_->SetHint(ui::Translate("Choose a connection on the left and press Connect."));
    tunnel_->SetState(status, GetTrMsg(texts.label), idle ? QString() : name);
    status_->SetStatus(GetTrMsg(texts.bar),
                       QStringLiteral(":/assets/images/") + QLatin1String(texts.icon));
    QString const count = QString::number(cards_.size());
    tunnel_->SetDuration(status == ConnectStatus::Connected ? QStringLiteral("00:12:34")
                                                            : QString());
    status_->SetCountText(status == ConnectStatus::Connected
                              ? GetTrMsg(MsgCode::UI_TR_STATUS_CONNECTED).arg(name, count)
                              : GetTrMsg(MsgCode::UI_TR_STATUS_NO_CONNECTED).arg(count));
}

void SampleWindow::FillTunnel() {
    auto const text = [](char const* latin) { return QString::fromLatin1(latin); };
    tunnel_->SetStatistics({1572864, 356557, 12345, 4210, 0.5, 1.25});
    tunnel_->SetInterface(
        {{GetTrMsg(MsgCode::UI_TR_IPV4_NETWORK_ADDRESS), text("10.8.0.7")},
         {GetTrMsg(MsgCode::UI_TR_IPV4_SUBNET_MASK), text("255.255.255.0")},
         {GetTrMsg(MsgCode::UI_TR_IPV4_DEFAULT_GATEWAY), text("10.8.0.1")},
         {GetTrMsg(MsgCode::UI_TR_IPV4_DNS_SERVER_ADDRESS), text("10.8.0.53; 10.8.1.53")},
         {GetTrMsg(MsgCode::UI_TR_IPV4_WINS), {}},
         {GetTrMsg(MsgCode::UI_TR_IPV6_NETWORK_ADDRESS), text("2001:db8:8:7:211:22ff:fe33:4455")},
         {GetTrMsg(MsgCode::UI_TR_IPV6_SUBNET_MASK), text("64")},
         {GetTrMsg(MsgCode::UI_TR_IPV6_DNS_SERVER_ADDRESS),
          text("2001:db8:8:7::53; 2001:db8:8:8::53; 2001:db8:8:9::53")}});
    std::vector<ui::RouteRow> ipv4;
    for (auto const& [address, mask, metric] : {std::tuple("192.168.40.0", "255.255.255.0", "10"),
                                                {"10.10.0.0", "255.255.0.0", "1"},
                                                {"172.16.4.0", "255.255.252.0", "5"},
                                                {"10.20.0.0", "255.255.0.0", "5"}}) {
        ipv4.push_back(
            {text(address), text(mask), text("10.8.0.1"), text("10.8.0.7"), text(metric)});
    }
    tunnel_->SetRoutes(std::move(ipv4),
                       {{text("2001:db8:10:20:30:40:50:0"), text("112"), text("2001:db8:8:7::1"),
                         text("2001:db8:8:7::7"), text("1")}});
}

bool SampleWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked) {
        cover_->ToBack();
    } else if (event->type() == QEvent::WindowUnblocked) {
        cover_->ToFront();
    }
    return QWidget::event(event);
}

}  // namespace zorvanelink::gallery

#include "tools/gallery/sample_window.h"

#include <QFile>
#include <QPushButton>

#include "app/environment/globals.h"
#include "app/environment/paths.h"
#include "components/utils/sensitive_value.h"
#include "core/clmsg.h"
#include "core/clmsg_reply_json.h"
#include "tools/support/wait.h"
#include "ui/text/texts.h"
#include "ui/tunnel/format.h"

namespace zorvanelink::gallery {

using common::MsgCode;
using core::sslvpn::CLMsgReplyJson;
using test::WaitUntil;
using ui::ConnectStatus;

namespace {

constexpr int kOnlineSeconds = 754;
constexpr std::chrono::milliseconds kPatience{100};

char const* firstName() {
    return ui::IsChineseDisplayLangguage() ? "总部" : "Head office";
}

std::shared_ptr<ui::Profile> makeProfile(char const* name, char const* server, char const* user) {
    auto profile = std::make_shared<ui::Profile>();
    profile->name = name;
    profile->server = server;
    profile->userName = user;
    profile->authType = common::SupportedAuthType::kPwd;
    profile->keepAuthType = true;
    profile->password = components::utils::EncodeSensitiveValue("sample");
    profile->rememberPassword = true;
    return profile;
}

void writeSettings(SampleWindow::Content content) {
    QFile::remove(ui::GetAppConfigFilePath());
    ui::MakePrivateDir(ui::GetAppConfigDirPath());
    ui::Config config;
    config.autoMinimize = false;
    if (content == SampleWindow::Content::kCards) {
        bool const chinese = ui::IsChineseDisplayLangguage();
        auto lab =
            makeProfile(chinese ? "杭州实验室" : "Lab Hangzhou", "203.0.113.9", "alice.chen");
        lab->loginMode = ui::kLoginModeGm;
        config.AddProfiles(
            {makeProfile(firstName(), "vpn.example.com", "alice"), lab,
             makeProfile("Reserve access with a very long name of a connection",
                         "a-very-long-gateway-name.region-7.example.com",
                         "a.user.name.that.is.much.longer.than.its.place@example.com")},
            false);
        config.SetDefaultProfile(firstName());
    } else if (content == SampleWindow::Content::kMany) {
        config.AddProfiles({makeProfile(firstName(), "vpn.example.com", "alice")}, false);
        for (int i = 1; i < 20; ++i) {
            std::string const number = std::to_string(i);
            auto const site = makeProfile(("Site " + number).c_str(),
                                          ("gw" + number + ".example.com").c_str(), "alice.chen");
            site->forgotPwdUrl = "https://vpn.example.com/forgot";
            config.AddProfiles({site}, false);
        }
        config.SetDefaultProfile("Site 11");
    }
    config.Save();
}

core::sslvpn::CLMsgReplyNetConfigData sampleNetwork() {
    core::sslvpn::CLMsgReplyNetConfigData data;
    data.clientPrivateIP = "10.8.0.7";
    data.prefix = 24;
    data.vnicGatewayIP = "10.8.0.1";
    data.dnsList = {"10.8.0.53", "10.8.1.53"};
    data.clientPrivateIPv6 = "2001:db8:8:7:211:22ff:fe33:4455";
    data.prefixIPv6 = 64;
    data.vnicGatewayIPv6 = "2001:db8:8:7::1";
    data.ipv6DnsList = {"2001:db8:8:7::53", "2001:db8:8:8::53", "2001:db8:8:9::53"};
    data.routeList = {{"192.168.40.0", 24, 10},
                      {"10.10.0.0", 16, 1},
                      {"172.16.4.0", 22, 5},
                      {"10.20.0.0", 16, 5}};
    data.ipv6RouteList = {{"2001:db8:10:20:30:40:50:0", 112, 1},
                          {"2001:db8:1000:2000::", 52, 5},
                          {"fd12:3456:789a:bcde:f012:3456:789a:bc00", 120, 10}};
    data.clientPublicIP = "198.51.100.24";
    data.serverPublicIP = "203.0.113.7";
    data.optimalGatewayName = "Frankfurt";
    data.optimalGatewayIP = "203.0.113.70";
    return data;
}

}  // namespace

SampleWindow::SampleWindow(Content content, bool linked)
    : name_(firstName()), service_(std::make_shared<test::FakeIpc>(linked)), there_(linked) {
    ui::g_running_client = 0;
    ui::g_quit = false;
    writeSettings(content);
    window_ = std::make_unique<ui::MainWindow>(ui::MainWindow::Environment{
        .config = config_,
        .prompts = prompts_,
        .link = [this] { return there_ ? service_ : std::make_shared<test::FakeIpc>(false); },
        .trayAvailable = nullptr,
        .patience = kPatience});
    window_->show();
    if (linked) {
        WaitUntil([this] {
            return window_->State().link == ui::LinkState::kLinked &&
                   window_->findChild<ui::WaitForm*>()->isHidden();
        });
    } else {
        awaitButton("wait_log_button_");
    }
}

ui::TunnelView& SampleWindow::Tunnel() {
    return *window_->findChild<ui::TunnelView*>();
}

template <class Record>
void SampleWindow::deliver(Record record) {
    record.profileName = name_;
    service_->Deliver(CLMsgReplyJson::Build(record));
}

void SampleWindow::say(MsgCode code, bool warning) {
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = code;
    if (warning) {
        data.warningCode = {static_cast<std::int32_t>(MsgCode::WARNING_NO_IPV6_ADDR)};
    }
    deliver(data);
}

void SampleWindow::sendTunnel() {
    deliver(sampleNetwork());
    core::sslvpn::CLMsgReplyTunnelStatisticsData data;
    data.inbound_bytes = 1572864;
    data.outbound_bytes = 356557;
    data.inbound_packets = 12345;
    data.outbound_packets = 4210;
    data.inbound_comp_ratio = 0.5;
    data.outbound_comp_ratio = 1.25;
    deliver(data);
}

void SampleWindow::awaitButton(char const* name) {
    auto const* const button = window_->findChild<QPushButton*>(QLatin1String(name));
    WaitUntil([button] { return button->isVisible(); });
}

void SampleWindow::LoseService() {
    there_ = false;
    service_->FailRead(2);
    awaitButton("hero_button_");
}

void SampleWindow::FailAdapter() {
    service_->Deliver(core::CLMsgJsonParse::BuildVnicStateReply(false));
    WaitUntil([this] { return !window_->State().adapterUsable; });
}

void SampleWindow::EndSession() {
    constexpr int kCtrlTimeout = 10;
    core::sslvpn::CLMsgReplyTunnelDisconnectData data;
    data.reason = kCtrlTimeout;
    deliver(data);
    WaitUntil([this] { return window_->State().lastEnd.has_value(); });
}

void SampleWindow::GoToBrowserLogin() {
    GoTo(ConnectStatus::Connecting);
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = MsgCode::OAUTH_PAGE;
    data.oauthPagePath = "https://login.example.com/";
    deliver(data);
    WaitUntil([this] { return window_->CurrentSession().ThirdParty().Waits(); });
}

void SampleWindow::AskAboutCertificate() {
    GoTo(ConnectStatus::Connecting);
    say(MsgCode::SSL_CERT_EXPIRED);
    WaitUntil([this] { return !prompts_.last.text.isEmpty(); });
}

void SampleWindow::start() {
    auto* const cards = window_->findChild<ui::StartListWidget*>();
    for (int row = 0; row < cards->count(); ++row) {
        ui::ProfileTab* const card = cards->CardAt(row);
        if (card->GetProfile()->name == name_) {
            card->Press();
        }
    }
    WaitUntil([this] { return !service_->Sent().empty(); });
}

void SampleWindow::GoTo(ConnectStatus status, bool warning) {
    start();
    say(MsgCode::CONNECTING);
    if (status != ConnectStatus::Connecting) {
        sendTunnel();
        say(MsgCode::ONLINE, warning);
    }
    if (status == ConnectStatus::PrepareReconnecting) {
        say(MsgCode::PREPARE_RECONNECTING);
    } else if (status == ConnectStatus::Reconnecting) {
        say(MsgCode::RECONNECTING);
    }
    WaitUntil([this, status] { return window_->State().status == status; });
    if (status == ConnectStatus::Connecting) {
        window_->CurrentSession().state.since = QDateTime::currentDateTime().addSecs(-12);
        window_->CurrentSession().Announce();
    } else if (status == ConnectStatus::Connected) {
        auto& since = window_->CurrentSession().context.connectTime;
        since = QDateTime::currentDateTime().addSecs(-kOnlineSeconds);
        Tunnel().SetDuration(ui::GetDateTimeString(since));  // else with the next tick
    }
}

}  // namespace zorvanelink::gallery

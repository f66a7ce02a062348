#include "benchmarks/bench_window.h"

#include <QDeadlineTimer>
#include <cstdio>

#include "app/environment/paths.h"
#include "components/ipc/socket_ipc_client.h"
#include "components/utils/sensitive_value.h"
#include "core/clmsg_reply_json.h"
#include "ui/widgets/fonts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::bench {
namespace {

using common::MsgCode;
using components::ipc::PortPlace;
using components::ipc::SocketIPCClient;
using components::ipc::SocketIPCServer;

constexpr int kPatienceMs = 20000;

void writeSettings() {
    auto profile = std::make_shared<ui::Profile>();
    profile->name = BenchWindow::ProfileName();
    profile->server = "vpn.example.com";
    profile->userName = "alice";
    profile->authType = common::SupportedAuthType::kPwd;
    profile->keepAuthType = true;
    profile->password = components::utils::EncodeSensitiveValue("sample");
    profile->rememberPassword = true;
    ui::MakePrivateDir(ui::GetAppConfigDirPath());
    ui::Config config;
    config.autoMinimize = false;
    config.AddProfile(profile, true);
    config.Save();
}

}  // namespace

bool HeldApplication::notify(QObject* receiver, QEvent* event) {
    auto const start = std::chrono::steady_clock::now();
    ++depth_;
    bool const handled = QApplication::notify(receiver, event);
    if (--depth_ == 0) {
        longest_ = std::max<Milliseconds>(longest_, std::chrono::steady_clock::now() - start);
    }
    return handled;
}

BenchWindow::BenchWindow() {
    ui::InitAssets();
    ui::SetApplicationFont();
    ui::SetApplicationStyle();
    writeSettings();

    PortPlace const place{components::ipc::kDefaultPort, home_.Path() + "/port"};
    service_ = std::make_shared<SocketIPCServer>(nullptr, place);
    service_->RegisterIPCMsgCallback(components::ipc::kIPCCommon,
                                     [this](char const*, int) { ++received_; });
    service_->SetClientConnectedHandler(
        [this] { service_->AsyncSend(components::ipc::kIPCHeartbeatMsg); });
    if (!service_->Run()) {
        std::fputs("The service's end does not run\n", stderr);
        std::exit(2);
    }
    window_ = std::make_unique<ui::MainWindow>(ui::MainWindow::Environment{
        config_, prompts_,
        [place] { return std::make_shared<SocketIPCClient>("", nullptr, place); }});
    window_->show();
    goOnline();
}

BenchWindow::~BenchWindow() {
    window_.reset();
    service_->Stop();
}

void BenchWindow::goOnline() {
    Until([this] { return window_->State().link == ui::LinkState::kLinked; }, "link");
    Find<QPushButton>("conn_button_").click();
    Until([this] { return received_ > 0; }, "start");
    Say(Status(MsgCode::CONNECTING));
    Say(Status(MsgCode::ONLINE));
    Until([this] { return window_->State().online; }, "online");
}

void BenchWindow::Say(std::string const& json) {
    using namespace components::ipc;
    IPCMsg const header = MakeIPCMsgHeader(kIPCCommon, static_cast<std::int32_t>(json.size()));
    std::string const frame =
        std::string(reinterpret_cast<char const*>(&header), sizeof header) + json;
    service_->AsyncSend(frame.data(), frame.size());
}

std::string BenchWindow::Status(MsgCode code) {
    core::sslvpn::CLMsgCommonReplyData data;
    data.profileName = ProfileName();
    data.statusCode = code;
    return core::sslvpn::CLMsgReplyJson::Build(data);
}

void BenchWindow::Until(std::function<bool()> const& condition, char const* what) {
    QDeadlineTimer const deadline(kPatienceMs);
    // A sleeping event loop looks at the deadline once a second.
    QTimer wake;
    wake.start(1000);
    while (!condition()) {
        if (deadline.hasExpired()) {
            std::fprintf(stderr, "It never came: %s\n", what);
            std::exit(2);
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

}  // namespace zorvanelink::bench

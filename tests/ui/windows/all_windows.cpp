#include "tests/ui/windows/all_windows.h"

#include "app/environment/globals.h"
#include "app/environment/paths.h"
#include "components/utils/sensitive_value.h"
#include "core/clmsg_reply_json.h"
#include "tests/support/qt_helpers.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/cert/digital_cert_dialog.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/editor/create_connect_dialog.h"
#include "ui/pages/settings_dialog.h"
#include "ui/shell/main_window.h"
#include "ui/text/texts.h"
#include "ui/widgets/input_dialog.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::test {
namespace {

using common::MsgCode;
using ui::GetTrMsg;

constexpr char kFirstName[] = "Head office";

void addProfile(ui::Config& config, char const* name, char const* server, char const* user) {
    auto profile = std::make_shared<ui::Profile>();
    profile->name = name;
    profile->server = server;
    profile->userName = user;
    profile->authType = common::SupportedAuthType::kPwd;
    profile->password = components::utils::EncodeSensitiveValue("correct horse");
    profile->rememberPassword = true;
    config.AddProfile(profile, true);
}

void addCert(ui::Config& config, std::string const& name, bool tls) {
    CertInfo cert;
    cert.fingerprint = cert.commonName = name;
    cert.issuer = "CN=Root,OU=" + std::string(120, 'x');
    cert.validFrom = cert.validTo = "2036-01-02 03:04:05";
    cert.isTls = tls;
    config.clientCerts[name] = cert;
}

constexpr QSize kWindowSize{960, 640};

std::unique_ptr<QWidget> mainWindow(WindowWorld& world) {
    world.config.autoMinimize = false;
    world.config.Save();
    auto window = std::make_unique<ui::MainWindow>(ui::MainWindow::Environment{
        world.config, world.prompts, [&world] { return world.service; }, nullptr});
    window->resize(kWindowSize);  // whatever the screen of the test
    return window;
}

std::unique_ptr<QWidget> firstUse(WindowWorld& world) {
    world.config.profiles.clear();
    return mainWindow(world);
}

std::unique_ptr<QWidget> online(WindowWorld& world) {
    auto window = mainWindow(world);
    Settle(*window);
    auto const& shown = static_cast<ui::MainWindow&>(*window);
    window->findChild<ui::ProfileTab*>()->Press();
    EXPECT_TRUE(WaitFor([&world] { return !world.service->Sent().empty(); }));
    for (MsgCode const code : {MsgCode::CONNECTING, MsgCode::ONLINE}) {
        core::sslvpn::CLMsgCommonReplyData data;
        data.profileName = kFirstName;
        data.statusCode = code;
        world.service->Deliver(core::sslvpn::CLMsgReplyJson::Build(data));
    }
    EXPECT_TRUE(WaitFor([&shown] { return shown.State().online; }));
    return window;
}

std::unique_ptr<QWidget> messageBox(WindowWorld&) {
    return std::make_unique<ui::ZVLMessageBox>(
        nullptr, ui::ZVLMsgBoxType::kWarning, GetTrMsg(MsgCode::UI_WARNING),
        GetTrMsg(MsgCode::UI_INFO_FAIL_EXPORT_LOG),
        ui::ZVLMessageBox::Buttons{GetTrMsg(MsgCode::UI_INFO_YES), GetTrMsg(MsgCode::UI_INFO_NO)});
}

std::unique_ptr<QWidget> passwordInput(WindowWorld&) {
    auto dialog = std::make_unique<ui::InputDialog>();
    dialog->setWindowTitle(GetTrMsg(MsgCode::UI_INFO_INPUT_PWD));
    dialog->setLabelText(GetTrMsg(MsgCode::UI_INFO_PLEASE_INPUT_THE_PWD));
    dialog->setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_PLEASE_INPUT_THE_PWD));
    dialog->setCheckBoxText(GetTrMsg(MsgCode::UI_INFO_REMEMBER_PWD));
    return dialog;
}

std::unique_ptr<QWidget> certificates(WindowWorld& world) {
    return std::make_unique<ui::DigitalCertDialog>(nullptr, world.config, world.prompts);
}

std::unique_ptr<QWidget> certificateChoice(WindowWorld& world) {
    auto dialog =
        std::make_unique<ui::DigitalCertDialog>(&world.target, world.config, world.prompts);
    for (ui::CertViewPage* const page : dialog->findChild<ui::CertViewBox*>()->Pages()) {
        page->expand();
    }
    return dialog;
}

std::unique_ptr<QWidget> certificateKinds(WindowWorld& world) {
    return std::make_unique<ui::TLSCertDialog>(world.target, world.config, world.prompts);
}

std::unique_ptr<QWidget> authType(WindowWorld& world) {
    auto const profile = world.config.GetProfile(kFirstName);
    profile->supportedAuthTypes = {
        common::SupportedAuthType::kPwd, common::SupportedAuthType::kOnlyUkey,
        common::SupportedAuthType::kPwdWithCert, common::SupportedAuthType::kOauth};
    return std::make_unique<ui::AuthTypeDialog>(
        profile, true, ui::AuthConfigBase::Services{world.config, world.prompts, world.road});
}

std::unique_ptr<QWidget> editor(WindowWorld& world, std::shared_ptr<ui::Profile> const& profile) {
    auto dialog = std::make_unique<ui::CreateConnectDialog>(
        profile, ui::AuthConfigBase::Services{world.config, world.prompts, world.road});
    dialog->SetSPAMode(ui::SPAMode::kOn);
    return dialog;
}

std::unique_ptr<QWidget> adding(WindowWorld& world) {
    return editor(world, nullptr);
}

// All of the editor at once: password, USB key with its PIN, and the advanced section.
std::unique_ptr<QWidget> modifying(WindowWorld& world) {
    auto const profile = world.config.GetProfile(kFirstName);
    profile->authType = common::SupportedAuthType::kPwdWithCert;
    profile->certIsFile = false;
    profile->systemCert.certType = ui::kCertTypeUsbKey;
    profile->perferredGatewayName = "a-very-long-gateway-name.region-7.example.com";
    auto dialog = editor(world, profile);
    dialog->findChild<QPushButton*>(QStringLiteral("btn_icon_advanced_config_"))->click();
    return dialog;
}

std::unique_ptr<QWidget> settings(WindowWorld& world) {
    return std::make_unique<ui::SettingsDialog>(world.config, world.prompts);
}

}  // namespace

WindowWorld::WindowWorld() {
    ui::g_running_client = 0;
    ui::g_quit = false;
    QFile::remove(ui::GetAppConfigFilePath());
    addProfile(config, kFirstName, "vpn.example.com", "alice");
    addProfile(config, "Reserve access with a very long name of a connection",
               "a-very-long-gateway-name.region-7.example.com",
               "a.user.name.that.is.much.longer.than.its.place@example.com");
    addCert(config, "A name that is far longer than a row of the list is wide", true);
    addCert(config, "\xE5\xBC\xA0\xE4\xBC\x9F & Co", false);
}

std::vector<WindowRow> const& AllWindows() {
    static std::vector<WindowRow> const rows{
        {"main window", mainWindow},
        {"main window at first use", firstUse},
        {"main window online", online},
        {"message box", messageBox},
        {"password input", passwordInput},
        {"certificates", certificates},
        {"choice of a certificate", certificateChoice},
        {"kinds of certificate", certificateKinds},
        {"choice of the login's type", authType},
        {"editor of a new connection", adding},
        {"editor of a connection", modifying},
        {"settings", settings},
    };
    return rows;
}

void Settle(QWidget& window) {
    window.show();
    window.activateWindow();
    if (auto* const wait = window.findChild<ui::WaitForm*>()) {
        EXPECT_TRUE(WaitFor([wait] { return wait->isHidden(); })) << "the link never came up";
    }
    for (int i = 0; i < 3; ++i) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

}  // namespace zorvanelink::test

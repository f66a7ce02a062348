// The editor of connections.
#include <QScrollBar>

#include "app/environment/app_ctrl.h"
#include "components/utils/sensitive_value.h"
#include "tools/gallery/stage.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/editor/create_connect_dialog.h"

namespace zorvanelink::gallery {
namespace {

std::shared_ptr<ui::Profile> makeProfile(ui::Config& config) {
    auto profile = std::make_shared<ui::Profile>();
    profile->name = ui::IsChineseDisplayLangguage() ? "总部" : "Head office";
    profile->server = "vpn.example.com";
    profile->authType = common::SupportedAuthType::kPwdWithCert;
    profile->userName = "alice";
    profile->password = components::utils::EncodeSensitiveValue("sample");
    profile->rememberPassword = true;
    profile->fileCert.commonName = "Alice Chen";
    profile->fileCert.fingerprint = std::string(40, '1');
    profile->gatewayList["Frankfurt"];
    profile->gatewayList["Hangzhou"];
    profile->perferredGatewayName = "Frankfurt";
    profile->spaMode = 1;
    profile->spaPort = 30443;
    config.clientCerts[profile->fileCert.fingerprint] = profile->fileCert;
    return profile;
}

ui::CreateConnectDialog& show(Stage& stage, std::shared_ptr<ui::Profile> const& profile) {
    return stage.Show<ui::CreateConnectDialog>(
        profile, ui::AuthConfigBase::Services{stage.config, stage.prompts, stage.road});
}

ui::CreateConnectDialog& modifying(Stage& stage) {
    return show(stage, makeProfile(stage.config));
}

// All of the editor at once: password, USB key with its PIN, and the advanced section.
void everything(Stage& stage) {
    auto const profile = makeProfile(stage.config);
    profile->certIsFile = false;
    profile->systemCert.certType = ui::kCertTypeUsbKey;
    profile->perferredGatewayName = "a-very-long-gateway-name.region-7.example.com";
    show(stage, profile).on_btn_icon_advanced_config__clicked();
}

}  // namespace

std::vector<Row> EditorRows() {
    return {
        {"editor-add", [](Stage& stage) { show(stage, nullptr); }},
        {"editor-add-advanced",
         [](Stage& stage) {
             auto& dialog = show(stage, nullptr);
             dialog.on_btn_icon_advanced_config__clicked();
             dialog.SetSPAMode(ui::SPAMode::kOn);
         }},
        {"editor-refused",
         [](Stage& stage) {
             auto& dialog = show(stage, nullptr);
             dialog.findChild<QPushButton*>(QStringLiteral("add_connect_button_"))->click();
         }},
        {"editor-hover",
         [](Stage& stage) {
             auto& dialog = show(stage, nullptr);
             for (char const* const name : {"add_connect_button_", "pushButton_gmssl", "server_"}) {
                 Stage::Hover(*dialog.findChild<QWidget*>(QLatin1String(name)));
             }
         }},
        {"editor-focus",
         [](Stage& stage) {
             auto& dialog = show(stage, nullptr);
             dialog.findChild<QPushButton*>(QStringLiteral("pushButton_gmssl"))->setFocus();
         }},
        {"editor-focus-check-box",
         [](Stage& stage) {
             auto& dialog = show(stage, nullptr);
             dialog.on_btn_icon_advanced_config__clicked();
             dialog.findChild<QCheckBox*>(QStringLiteral("verfy_server_cert_checkbox_"))->click();
             dialog.findChild<QCheckBox*>(QStringLiteral("optimal_channel_checkbox_"))->setFocus();
         }},
        {"editor-modify", [](Stage& stage) { modifying(stage); }},
        {"editor-modify-advanced",
         [](Stage& stage) { modifying(stage).on_btn_icon_advanced_config__clicked(); }},
        {"editor-modify-scrolled",
         [](Stage& stage) {
             auto& dialog = modifying(stage);
             dialog.on_btn_icon_advanced_config__clicked();
             auto* const bar = dialog.findChild<ui::FormScroll*>()->verticalScrollBar();
             stage.Settle();
             bar->setValue(bar->maximum());
         }},
        {"editor-modify-everything", everything},
        {"editor-modify-password",
         [](Stage& stage) {
             auto const profile = makeProfile(stage.config);
             profile->authType = common::SupportedAuthType::kPwd;
             profile->loginMode = ui::kLoginModeGm;
             show(stage, profile);
         }},
    };
}

}  // namespace zorvanelink::gallery

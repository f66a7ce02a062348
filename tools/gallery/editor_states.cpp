#include "tools/gallery/editor_states.h"

#include <QScrollBar>

#include "app/environment/app_ctrl.h"
#include "components/utils/sensitive_value.h"
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

}  // namespace

void EditorStates(std::function<void(QString const& name, QWidget& dialog)> const& save,
                  QWidget* parent) {
    ui::DialogPrompts prompts;
    ui::Config config;
    ui::CertListRoad certs;
    ui::AuthConfigBase::Services const services{config, prompts, certs};

    ui::CreateConnectDialog adding(nullptr, services, parent);
    adding.show();
    save(QStringLiteral("editor-add"), adding);
    adding.on_btn_icon_advanced_config__clicked();
    adding.SetSPAMode(ui::SPAMode::kOn);
    save(QStringLiteral("editor-add-advanced"), adding);
    adding.hide();

    auto const profile = makeProfile(config);
    ui::CreateConnectDialog modifying(profile, services, parent);
    modifying.show();
    save(QStringLiteral("editor-modify"), modifying);
    modifying.on_btn_icon_advanced_config__clicked();
    save(QStringLiteral("editor-modify-advanced"), modifying);
    auto* const bar = modifying.findChild<QScrollArea*>()->verticalScrollBar();
    bar->setValue(bar->maximum());
    save(QStringLiteral("editor-modify-scrolled"), modifying);
    modifying.hide();

    profile->authType = common::SupportedAuthType::kPwd;
    profile->loginMode = ui::kLoginModeGm;
    ui::CreateConnectDialog password(profile, services, parent);
    password.show();
    save(QStringLiteral("editor-modify-password"), password);
}

}  // namespace zorvanelink::gallery

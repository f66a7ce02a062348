#include "tools/gallery/auth_states.h"

#include <QMenu>

#include "components/utils/sensitive_value.h"
#include "tools/support/no_prompts.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/cert/tls_cert_dialog.h"

namespace zorvanelink::gallery {
namespace {

using ui::SupportedAuthType;

std::shared_ptr<ui::Profile> sampleProfile(ui::Config& config) {
    CertInfo cert;
    cert.commonName = "Alice Chen";
    cert.fingerprint = std::string(40, 'A');
    config.clientCerts[cert.fingerprint] = cert;
    auto profile = std::make_shared<ui::Profile>();
    profile->name = "Head office";
    profile->userName = "alice";
    profile->password = components::utils::EncodeSensitiveValue("sample");
    profile->rememberPassword = true;
    profile->fileCert = cert;
    profile->authType = SupportedAuthType::kPwdWithCert;
    profile->supportedAuthTypes = {SupportedAuthType::kPwd, SupportedAuthType::kOnlyUkey,
                                   SupportedAuthType::kPwdWithCert, SupportedAuthType::kOauth};
    return profile;
}

}  // namespace

void AuthStates(std::function<void(QString const& name, QWidget& dialog)> const& save,
                QWidget* parent) {
    test::NoPrompts prompts;
    ui::Config config;
    ui::CertListRoad road;
    auto const shoot = [&](char const* name, std::shared_ptr<ui::Profile> const& profile,
                           bool select, std::function<void(ui::AuthTypeDialog&)> const& act = {}) {
        ui::AuthTypeDialog dialog(profile, select, {config, prompts, road}, parent);
        dialog.show();
        if (act) {
            act(dialog);
        }
        save(QLatin1String(name), dialog);
    };
    auto const profile = sampleProfile(config);
    shoot("auth-type-all", profile, true, [](ui::AuthTypeDialog& dialog) {
        auto* password = dialog.findChild<ui::SecretEdit*>(QStringLiteral("lineedit_password_"));
        password->setText(QStringLiteral("typed here"));
    });
    shoot("auth-type-stored", profile, true);
    shoot("auth-type-one", profile, false);
    profile->certIsFile = false;
    profile->systemCert.certType = ui::kCertTypeUsbKey;
    profile->systemCert.certName = "Alice Chen";
    shoot("auth-type-usb-key", profile, true);
    profile->authType = SupportedAuthType::kPwd;
    profile->userName.clear();
    profile->rememberPassword = false;
    shoot("auth-type-empty", profile, true);
    profile->supportedAuthTypes = {SupportedAuthType::kOauth};
    shoot("auth-type-third-party", profile, true);
}

}  // namespace zorvanelink::gallery

// The choice of the login's type.
#include "components/utils/sensitive_value.h"
#include "tools/gallery/stage.h"
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

// `change` makes another profile of the sample.
ui::AuthTypeDialog& show(Stage& stage, bool select, void (*change)(ui::Profile&) = nullptr) {
    auto const profile = sampleProfile(stage.config);
    if (change != nullptr) {
        change(*profile);
    }
    return stage.Show<ui::AuthTypeDialog>(
        profile, select, ui::AuthConfigBase::Services{stage.config, stage.prompts, stage.road});
}

template <std::uint16_t kKind>
void withoutFile(ui::Profile& profile) {
    profile.certIsFile = false;
    profile.systemCert.certType = kKind;
    profile.systemCert.certName = "Alice Chen";
}

}  // namespace

std::vector<Row> AuthRows() {
    return {
        {"auth-type-all",
         [](Stage& stage) {
             auto& dialog = show(stage, true);
             auto* field = dialog.findChild<ui::SecretEdit*>(QStringLiteral("lineedit_password_"));
             field->setText(QStringLiteral("typed here"));
         }},
        {"auth-type-stored", [](Stage& stage) { show(stage, true); }},
        {"auth-type-one", [](Stage& stage) { show(stage, false); }},
        {"auth-type-usb-key",
         [](Stage& stage) { show(stage, true, withoutFile<ui::kCertTypeUsbKey>); }},
        {"auth-type-system",
         [](Stage& stage) { show(stage, true, withoutFile<ui::kCertTypeSystem>); }},
        {"auth-type-empty",
         [](Stage& stage) {
             show(stage, true, [](ui::Profile& profile) {
                 profile.authType = SupportedAuthType::kPwd;
                 profile.userName.clear();
                 profile.rememberPassword = false;
             });
         }},
        {"auth-type-browser",
         [](Stage& stage) {
             show(stage, true,
                  [](ui::Profile& profile) { profile.authType = SupportedAuthType::kOauth; });
         }},
        {"auth-type-third-party",
         [](Stage& stage) {
             show(stage, true, [](ui::Profile& profile) {
                 profile.supportedAuthTypes = {SupportedAuthType::kOauth};
             });
         }},
    };
}

}  // namespace zorvanelink::gallery

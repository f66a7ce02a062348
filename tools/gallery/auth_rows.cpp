// The dialogs of a login: the choice of its type, a second factor's code.
#include "components/utils/sensitive_value.h"
#include "tools/gallery/stage.h"
#include "ui/auth/auth_dialog.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/auth/change_pwd_dialog.h"
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
    profile->server = "vpn.example.com";
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

QString timeLeft() {
    ui::Deadline deadline({[] { return ui::Deadline::Time(); }, ui::Deadline::Time(1000)});
    deadline.Start(std::chrono::milliseconds(572000));
    return deadline.TimeLeft();
}

constexpr char kLongPrompt[] =
    "请在您随身携带的动态令牌上按下按钮，待屏幕上显示六位或八位数字之后，将其连同短横线一并输入到下"
    "面"
    "的输入框中；如果令牌屏幕没有显示或者已经损坏，请联系信息中心更换。";

// The code's dialog in the middle of its time.
template <int kKind>
ui::AuthDialog& code(Stage& stage) {
    ui::Context context;
    context.authCodeType = kKind;
    context.tokenPromptMsg = kLongPrompt;
    context.emailAuthAccount = "alice.chen@mail.example.com";
    auto made = std::make_unique<ui::AuthDialog>(context, stage.prompts, stage.Owner());
    ui::AuthDialog& dialog = *made;
    dialog.ShowTimeLeft(timeLeft());
    for (int second = 0; second < 13; ++second) {
        dialog.onRetryTimerTimeout();
    }
    stage.Keep(std::move(made));
    return dialog;
}

ui::ChangePWDDialog& password(Stage& stage, ui::ChangePWdType type, bool rules) {
    core::sslvpn::UserPasswordComplexity policy;
    policy.enableComplexity = rules;
    policy.minLength = 10;
    policy.capitalLetters = policy.smallLetters = policy.numericCharacters = 1;
    policy.nonAlphanumericLetters = 2;
    policy.noIncludeUserName = true;
    auto made = std::make_unique<ui::ChangePWDDialog>(QStringLiteral("alice"), policy, type,
                                                      stage.prompts, stage.Owner());
    ui::ChangePWDDialog& dialog = *made;
    dialog.ShowTimeLeft(timeLeft());
    stage.Keep(std::move(made));
    return dialog;
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
        {"auth-type-refused",
         [](Stage& stage) {
             auto& dialog = show(stage, true, [](ui::Profile& profile) {
                 profile.forgotPwdUrl = "https://vpn.example.com/forgot";
                 profile.userName.clear();
             });
             dialog.onClickedConnectButton();
         }},
        {"auth-type-focus",
         [](Stage& stage) {
             auto& dialog = show(stage, true);
             dialog.findChild<QRadioButton*>(QStringLiteral("radioButton_cert_"))->setFocus();
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
        {"password-expired",
         [](Stage& stage) { password(stage, ui::ChangePWdType::kExpired, true); }},
        {"password-first-login",
         [](Stage& stage) {
             auto& dialog = password(stage, ui::ChangePWdType::kFirstLogin, true);
             for (auto* const field : dialog.findChildren<ui::SecretEdit*>()) {
                 field->setText(QStringLiteral("Correct-horse"));
             }
         }},
        {"password-user", [](Stage& stage) { password(stage, ui::ChangePWdType::kUser, false); }},
        {"auth-code-sms", [](Stage& stage) { code<1>(stage); }},
        {"auth-code-resend",
         [](Stage& stage) {
             auto& dialog = code<2>(stage);
             for (int second = 0; second < 47; ++second) {
                 dialog.onRetryTimerTimeout();
             }
             dialog.findChild<QLineEdit*>()->setText(QStringLiteral("246810"));
         }},
        {"auth-code-token", [](Stage& stage) { code<0>(stage); }},
        {"auth-code-unknown", [](Stage& stage) { code<3>(stage); }},
    };
}

}  // namespace zorvanelink::gallery

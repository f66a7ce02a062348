// The dialogs of a login: the choice of its type, a second factor's code, a new password.
#include "components/utils/sensitive_value.h"
#include "tools/gallery/stage.h"
#include "ui/auth/auth_code_flow.h"
#include "ui/auth/auth_dialog.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/auth/change_pwd_dialog.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/text/texts.h"

namespace zorvanelink::gallery {
namespace {

using common::MsgCode;
using ui::BoxKind;
using ui::ChangePWdType;
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

constexpr char kLongPrompt[] =
    "请在您随身携带的动态令牌上按下按钮，待屏幕上显示六位或八位数字之后，将其连同短横线一并输入到下"
    "面"
    "的输入框中；如果令牌屏幕没有显示或者已经损坏，请联系信息中心更换。";

QString timeLeft(std::chrono::milliseconds left) {
    ui::Deadline deadline({[] { return ui::Deadline::Time(); }, ui::Deadline::Time(1000)});
    deadline.Start(left);
    return deadline.TimeLeft();
}

// What the dialog finds wrong stands over it.
template <class Dialog>
void showRefusals(Stage& stage, Dialog& dialog) {
    QObject::connect(&dialog, &Dialog::Refused, &dialog,
                     [&stage](ui::BoxRequest const& request) { stage.ShowBox(request); });
}

enum CodeKind { kToken, kSms, kEmail, kUnknown };

// The code's dialog after that many seconds.
ui::AuthDialog& code(Stage& stage, CodeKind kind, int seconds = 13) {
    ui::Context context;
    context.authCodeType = kind;
    context.tokenPromptMsg = kLongPrompt;
    context.emailAuthAccount = "alice.chen@mail.example.com";
    auto made = std::make_unique<ui::AuthDialog>(context, stage.Owner());
    ui::AuthDialog& dialog = *made;
    showRefusals(stage, dialog);
    dialog.ShowTimeLeft(timeLeft(ui::AuthCodeFlow::kAuthTime - std::chrono::seconds(seconds)));
    for (int second = 0; second < qMin(seconds, 60); ++second) {
        dialog.onRetryTimerTimeout();
    }
    stage.Keep(std::move(made));
    return dialog;
}

void type(QWidget& dialog, QString const& text) {
    for (auto* const field : dialog.findChildren<QLineEdit*>()) {
        if (!field->isReadOnly()) {
            field->setText(text);
        }
    }
}

ui::ChangePWDDialog& password(Stage& stage, ChangePWdType type, bool rules) {
    core::sslvpn::UserPasswordComplexity policy;
    policy.enableComplexity = rules;
    policy.minLength = 10;
    policy.capitalLetters = policy.smallLetters = policy.numericCharacters = 1;
    policy.nonAlphanumericLetters = 2;
    policy.noIncludeUserName = true;
    auto made =
        std::make_unique<ui::ChangePWDDialog>(QStringLiteral("alice"), policy, type, stage.Owner());
    ui::ChangePWDDialog& dialog = *made;
    showRefusals(stage, dialog);
    dialog.ShowTimeLeft(timeLeft(std::chrono::seconds(572)));
    stage.Keep(std::move(made));
    return dialog;
}

// What ends a code's dialog stands over it.
template <MsgCode kText, MsgCode kTitle = MsgCode::UI_WARNING>
void endedCode(Stage& stage) {
    code(stage, kSms, 585);
    ui::BoxRequest request = ui::OkBox(BoxKind::kCritical, ui::GetTrMsg(kText));
    request.title = ui::GetTrMsg(kTitle);
    stage.ShowBox(request);
}

// What the gateway has against a new password.
template <MsgCode kText>
void refusedPassword(Stage& stage) {
    auto& dialog = password(stage, ChangePWdType::kExpired, true);
    type(dialog, QStringLiteral("Correct-horse-1"));
    dialog.SetWaiting(true);
    QString text = ui::GetTrMsg(kText);
    dialog.Refuse(text.replace(QLatin1String("%1"), QLatin1String("-60")),
                  kText == MsgCode::UI_INFO_WRONG_USER_OR_PWD);
}

// What is wrong with it before it is sent.
void badPassword(Stage& stage, char const* confirmed) {
    auto& dialog = password(stage, ChangePWdType::kUser, true);
    type(dialog, QStringLiteral("Correct-horse-1"));
    dialog.findChild<QLineEdit*>(QStringLiteral("lineEdit_confirm_pwd_"))
        ->setText(QLatin1String(confirmed));
    dialog.on_pushButton_ok_clicked();
}

// What ends a password's dialog stands over it.
template <ChangePWdType kType, BoxKind kKind, MsgCode kText>
void endedPassword(Stage& stage) {
    type(password(stage, kType, true), QStringLiteral("Correct-horse-10"));
    stage.ShowBox(ui::OkBox(kKind, ui::GetTrMsg(kText)));
}

void expires(Stage& stage, MsgCode text, std::vector<int> const& days) {
    QString whole = ui::GetTrMsg(text);
    for (int const number : days) {
        whole = whole.arg(number);
    }
    stage.ShowBox(ui::OkBox(BoxKind::kWarning, whole));
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
        {"auth-code-fresh", [](Stage& stage) { code(stage, kSms, 0); }},
        {"auth-code-sms", [](Stage& stage) { code(stage, kSms); }},
        {"auth-code-wrong", [](Stage& stage) { code(stage, kSms).onAuthCodeVerifyResult(false); }},
        {"auth-code-resend",
         [](Stage& stage) { type(code(stage, kEmail, 60), QStringLiteral("246810")); }},
        {"auth-code-token", [](Stage& stage) { code(stage, kToken); }},
        {"auth-code-unknown", [](Stage& stage) { code(stage, kUnknown); }},
        {"auth-code-nearly-over", [](Stage& stage) { code(stage, kEmail, 580); }},
        {"auth-code-time-out", endedCode<MsgCode::UI_WARNING_CONNECT_TIMEOUT_LOGIN_AGAIN>},
        {"auth-code-limit", endedCode<MsgCode::UI_WARNING_REACH_MAXIMUM_RETRY_TIMES_LOGIN_AGAIN>},
        {"auth-code-lost", endedCode<MsgCode::UI_INFO_CONNECTION_TERMINATED, MsgCode::UI_ERROR>},
        {"password-expired", [](Stage& stage) { password(stage, ChangePWdType::kExpired, true); }},
        {"password-first-login",
         [](Stage& stage) {
             type(password(stage, ChangePWdType::kFirstLogin, true),
                  QStringLiteral("Correct-horse"));
         }},
        {"password-user", [](Stage& stage) { password(stage, ChangePWdType::kUser, false); }},
        {"password-waiting",
         [](Stage& stage) {
             auto& dialog = password(stage, ChangePWdType::kUser, true);
             type(dialog, QStringLiteral("Correct-horse-10"));
             dialog.SetWaiting(true);
         }},
        {"password-incomplete", [](Stage& stage) { badPassword(stage, ""); }},
        {"password-mismatch", [](Stage& stage) { badPassword(stage, "Correct-horse-2"); }},
        {"password-too-simple", refusedPassword<MsgCode::UI_INFO_OBEY_PWD_RULE>},
        {"password-used-before", refusedPassword<MsgCode::UI_INFO_NO_HISTORY_PWD>},
        {"password-wrong", refusedPassword<MsgCode::UI_INFO_WRONG_USER_OR_PWD>},
        {"password-unknown-error", refusedPassword<MsgCode::UI_ERROR_UNKNOWN>},
        {"password-no-answer", endedPassword<ChangePWdType::kExpired, BoxKind::kCritical,
                                             MsgCode::UI_ERROR_NETWORK_ERROR>},
        {"password-time-out", endedPassword<ChangePWdType::kExpired, BoxKind::kCritical,
                                            MsgCode::UI_INFO_CHANGE_PWD_TIMEOUT>},
        {"password-changed", endedPassword<ChangePWdType::kUser, BoxKind::kInformation,
                                           MsgCode::UI_INFO_CHANGE_PWD_SUCCESS>},
        {"password-changed-log-in",
         endedPassword<ChangePWdType::kFirstLogin, BoxKind::kInformation,
                       MsgCode::UI_INFO_CHANGE_PWD_SUCCESS_PLEASE_LOGIN_AGAIN>},
        {"box-password-expires",
         [](Stage& stage) { expires(stage, MsgCode::UI_INFO_PWD_WILL_EXPIRE, {5}); }},
        {"box-account-expires",
         [](Stage& stage) { expires(stage, MsgCode::UI_INFO_ACCOUNT_WILL_EXPIRE, {20}); }},
        {"box-both-expire",
         [](Stage& stage) {
             expires(stage, MsgCode::UI_INFO_ACCOUNT_AND_PWD_WILL_EXPIRE, {20, 5});
         }},
    };
}

}  // namespace zorvanelink::gallery

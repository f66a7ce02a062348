// What the service says during a login: second factor, choice of a type, password, certificates.

#include <QDateTime>
#include <QScopedValueRollback>

#include "app/environment/globals.h"
#include "common/auth_type_list.h"
#include "components/logger/logger.h"
#include "core/clmsg_json.h"
#include "ui/session/status_handler.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

constexpr int kCertificateQuestionSeconds = 30;
constexpr common::CodeType kErrorType = 1;

// The types that a user can log in with here.
bool hasControl(SupportedAuthType type) {
    return common::NeedsPassword(type) || common::NeedsCertificate(type) ||
           type == SupportedAuthType::kOauth;
}

}  // namespace

std::int32_t StatusHandler::ConvertMsgCodeToAuthCodeType(MsgCode code) {
    constexpr std::int32_t kToken = 0;
    constexpr std::int32_t kSms = 1;
    constexpr std::int32_t kEmail = 2;
    switch (code) {
        case MsgCode::NEED_TOKEN_AUTH_CODE:
            return kToken;
        case MsgCode::NEED_EMAIL_AUTH_CODE:
            return kEmail;
        default:
            return kSms;
    }
}

void StatusHandler::onNeedAuthCode(Data const& data, Profile& profile) {
    profile.context.authCodeType = ConvertMsgCodeToAuthCodeType(data.statusCode);
    profile.context.tokenPromptMsg = data.tokenPromptMsg;
    profile.context.emailAuthAccount = data.emailAuthAccount;
    if (!dialogs_.authDialog) {
        state_.errorShown = false;  // an earlier text does not speak for the dialog's end
        Q_EMIT NeedSendAuthCode();
    }
}

void StatusHandler::onAuthCodeRight(Data const& /*data*/, Profile& /*profile*/) {
    Q_EMIT AuthCodeVerifyResult(true);
}

void StatusHandler::onAuthCodeWrong(Data const& /*data*/, Profile& /*profile*/) {
    Q_EMIT AuthCodeVerifyResult(false);
}

void StatusHandler::onAuthCodeLimit(Data const& /*data*/, Profile& /*profile*/) {
    state_.errorShown = true;
    Q_EMIT AuthCodeRetryLimit();
}

void StatusHandler::HandleChangePWD(Data const& data, Profile& /*profile*/) {
    if (data.statusCode == MsgCode::NEED_CHANGE_PWD) {
        Q_EMIT NeedChangePwd(data);
    } else {
        Q_EMIT ChangePWDRetSignal(static_cast<int>(data.statusCode));
    }
}

void StatusHandler::onPasswordRefused(Data const& data, Profile& /*profile*/) {
    if (dialogs_.changePwdDialog) {
        Log().debug("stop change pwd response timer");
        Q_EMIT StopChangePwdResponseTimer();
    }
    state_.errorShown = true;
    failures_.ProcessErrorMsg(kErrorType, GetErrMsg(data.statusCode).toStdString());
}

void StatusHandler::HandleAuthData(Data const& data, Profile& profile) {
    profile.context.allowLocalChangePassword = data.allowLocalChangePassword;
    profile.context.changePasswordUrl = data.changePasswordUrl;
    keepForgottenPasswordPage(data.forgotPasswordUrl, profile);
    Q_EMIT AuthDataArrived(data);
}

void StatusHandler::onServerCertificate(Data const& data, Profile& profile) {
    if (asksForCertificate_) {
        Log().info("The question for the server's certificate stands already");
        return;
    }
    BoxRequest request;
    request.kind = BoxKind::kQuestion;
    request.parent = window_;
    request.title = GetErrMsg(MsgCode::UI_WARNING);
    request.text = GetErrMsg(data.statusCode);
    request.buttons = {GetErrMsg(MsgCode::UI_INFO_REQUEST_YES),
                       GetErrMsg(MsgCode::UI_INFO_REQUEST_NO)};
    request.defaultButton = 1;
    request.timeoutSeconds = kCertificateQuestionSeconds;
    std::uint64_t const attempt = state_.attempt;
    int answer = -1;
    {
        QScopedValueRollback<bool> const guard(asksForCertificate_, true);
        BringIntoView(window_);
        answer = prompts_.Box(request);
    }
    if (!g_quit && attempt == state_.attempt && !state_.offline && !state_.stopSent) {
        HandleAcceptServerCert(answer == 0, profile.name);
    }
}

void StatusHandler::HandleAcceptServerCert(bool result, std::string const& profileName) {
    flow_.Send(core::sslvpn::CLMsgJson::BuildAcceptServerCert(profileName, result));
}

void StatusHandler::onNeedSelectAuthType(Data const& data, Profile& profile) {
    Log().info("Recv need select auth type status for profile[{}]", profile.name);
    if (dialogs_.authTypeDialog) {
        Log().info("Auth type dialog is still running when recving select auth type");
        return;
    }
    auto const list = components::utils::ConvertStrListToSupportedAuthType(data.supportedAuthType);
    if (profile.GetSupportedAuthType(list) && std::any_of(list.begin(), list.end(), hasControl)) {
        if (profile.password.empty()) {
            profile.password = profile.context.once.password;  // typed, and not yet tried
        }
        Q_EMIT NeedSelectAuthType(true);
        return;
    }
    profile.supportedAuthTypes.clear();  // nothing of it may be offered later
    Log().error("No supported auth type in select auth type status for profile[{}]", profile.name);
    std::uint64_t const attempt = state_.attempt;
    failures_.ShowCriticalBox(GetErrMsg(MsgCode::UI_ERROR),
                              GetErrMsg(MsgCode::ERR_NO_SUPPORTED_AUTH_TYPE),
                              GetErrMsg(MsgCode::UI_INFO_OK));
    failures_.EndSession(attempt);
}

void StatusHandler::onAccountLocked(Data const& data, Profile& /*profile*/) {
    QString const until = QDateTime::currentDateTime()
                              .addSecs(data.accountLockSenconds)
                              .toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    std::uint64_t const attempt = state_.attempt;
    failures_.ShowPopMsgBox(BoxKind::kCritical, GetErrMsg(MsgCode::UI_ERROR),
                            GetErrMsg(MsgCode::UI_INFO_ACCOUNT_ABNORMAL_AND_LOCKED).arg(until),
                            GetErrMsg(MsgCode::UI_INFO_OK));
    failures_.EndSession(attempt);
}

void StatusHandler::HandleSignRequest(Data const& data, Profile& profile) {
    if (profile.loginMode == kLoginModeGm) {
        HandleGmSignData(data, profile);
    } else {
        HandleSignData(data, profile);
    }
}

void StatusHandler::HandleSignData(Data const& /*data*/, Profile const& profile) {
    Log().warning("Signing for profile [{}] is not there yet", profile.name);
}

void StatusHandler::HandleGmSignData(Data const& /*data*/, Profile const& profile) {
    Log().warning("GM signing for profile [{}] is not there yet", profile.name);
}

}  // namespace zorvanelink::ui

#include "ui/session/login_statuses.h"

#include <QDateTime>
#include <algorithm>

#include "common/auth_type_list.h"
#include "components/logger/logger.h"
#include "core/clmsg_json.h"
#include "ui/session/page_statuses.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using Secret = AttemptSecrets::Secret;

constexpr int kCertificateQuestionSeconds = 30;

}  // namespace

LoginStatuses::LoginStatuses(SessionCore& core, ConnectFlow& flow, FailurePresenter& failures,
                             BoxQueue& boxes)
    : core_(core),
      flow_(flow),
      failures_(failures),
      boxes_(boxes),
      thirdParty_(core, failures, boxes) {
}

std::int32_t LoginStatuses::ConvertMsgCodeToAuthCodeType(MsgCode code) {
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

void LoginStatuses::onNeedAuthCode(Data const& data, Profile& /*profile*/) {
    core_.context.authCodeType = ConvertMsgCodeToAuthCodeType(data.statusCode);
    core_.context.tokenPromptMsg = data.tokenPromptMsg;
    core_.context.emailAuthAccount = data.emailAuthAccount;
    Q_EMIT core_.NeedSendAuthCode();
}

void LoginStatuses::onUnawaitedAnswer(Data const& data, Profile& /*profile*/) {
    Log().debug("No dialog waits for status {}", static_cast<int>(data.statusCode));
}

// Also before a code has been asked for: that login goes no further either.
void LoginStatuses::onAuthCodeRetryLimit(Data const& data, Profile& profile) {
    if (core_.state.LoginIsOver()) {
        onUnawaitedAnswer(data, profile);
    } else {
        failures_.EndWith(WarningBox(MsgCode::UI_WARNING_REACH_MAXIMUM_RETRY_TIMES_LOGIN_AGAIN));
    }
}

void LoginStatuses::HandleChangePWD(Data const& data, Profile& profile) {
    if (data.statusCode == MsgCode::NEED_CHANGE_PWD) {
        Q_EMIT core_.NeedChangePwd(data);
    } else if (core_.conversation.OnAnswer(data.statusCode)) {
        return;
    } else if (data.statusCode == MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE) {
        onPasswordRefused(data, profile);
    } else {
        Q_EMIT core_.ChangePWDRetSignal(static_cast<int>(data.statusCode));
    }
}

void LoginStatuses::onPasswordRefused(Data const& data, Profile& /*profile*/) {
    core_.state.errorShown = true;
    Q_EMIT core_.ChangePWDRetSignal(static_cast<int>(data.statusCode));
    failures_.ProcessErrorMsg(GetTrMsg(data.statusCode));
}

void LoginStatuses::HandleAuthData(Data const& data, Profile& profile) {
    core_.context.allowLocalChangePassword = data.allowLocalChangePassword;
    core_.context.passwordPolicy = data;
    core_.context.changePasswordUrl = data.changePasswordUrl;
    KeepForgottenPasswordPage(data.forgotPasswordUrl, profile, core_);
    core_.Announce();
    warnOfExpiry(data);
}

// Once a session.
void LoginStatuses::warnOfExpiry(Data const& data) {
    bool const password = data.passwordExpiredDays > 0;
    bool const account = data.accountExpiredDays > 0;
    if ((!password && !account) || std::exchange(core_.context.expiryTold, true)) {
        return;
    }
    QString text;
    if (password && account) {
        text = GetTrMsg(MsgCode::UI_INFO_ACCOUNT_AND_PWD_WILL_EXPIRE)
                   .arg(data.accountExpiredDays)
                   .arg(data.passwordExpiredDays);
    } else if (password) {
        text = GetTrMsg(MsgCode::UI_INFO_PWD_WILL_EXPIRE).arg(data.passwordExpiredDays);
    } else {
        text = GetTrMsg(MsgCode::UI_INFO_ACCOUNT_WILL_EXPIRE).arg(data.accountExpiredDays);
    }
    // The login may succeed before its turn comes.
    auto const holds = [this, here = core_.Now()] {
        return here.NotBegunAnew() && core_.state.SessionStands();
    };
    boxes_.SayWhile(holds, OkBox(BoxKind::kWarning, text));
}

void LoginStatuses::onServerCertificate(Data const& data, Profile& profile) {
    BoxRequest request;
    request.kind = BoxKind::kQuestion;
    request.title = GetTrMsg(MsgCode::UI_WARNING);
    request.text = GetTrMsg(data.statusCode);
    request.buttons = {GetTrMsg(MsgCode::UI_INFO_REQUEST_YES),
                       GetTrMsg(MsgCode::UI_INFO_REQUEST_NO)};
    request.defaultButton = 1;
    request.timeoutSeconds = kCertificateQuestionSeconds;
    core_.Demand(request.text);
    auto const holds = [this, here = core_.Now()] {
        return here.Still() && core_.state.SessionStands();
    };
    boxes_.SayWhile(holds, request, [this, name = profile.name](int button) {
        HandleAcceptServerCert(button == 0, name);
    });
}

void LoginStatuses::HandleAcceptServerCert(bool result, std::string const& profileName) {
    core_.Send(core::sslvpn::CLMsgJson::BuildAcceptServerCert(profileName, result));
}

void LoginStatuses::onNeedSelectAuthType(Data const& data, Profile& profile) {
    Log().info("Recv need select auth type status for profile[{}]", profile.name);
    if (core_.conversation.OutlivesSession()) {
        Log().info("Auth type dialog is still running when recving select auth type");
        return;
    }
    auto const list = components::utils::ConvertStrListToSupportedAuthType(data.supportedAuthType);
    if (profile.GetSupportedAuthType(list) &&
        std::any_of(list.begin(), list.end(), common::HasControl)) {
        core_.secrets.Keep(Secret::kPassword, profile);  // typed, and not yet tried
        core_.secrets.Keep(Secret::kPin, profile);
        Q_EMIT core_.NeedSelectAuthType(true);
        return;
    }
    profile.supportedAuthTypes.clear();  // nothing of it may be offered later
    Log().error("No supported auth type in select auth type status for profile[{}]", profile.name);
    failures_.EndWith(BoxKind::kCritical, GetTrMsg(MsgCode::ERR_NO_SUPPORTED_AUTH_TYPE));
}

void LoginStatuses::onAccountLocked(Data const& data, Profile& /*profile*/) {
    QString const until = QDateTime::currentDateTime()
                              .addSecs(data.accountLockSenconds)
                              .toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    failures_.EndWith(BoxKind::kCritical,
                      GetTrMsg(MsgCode::UI_INFO_ACCOUNT_ABNORMAL_AND_LOCKED).arg(until));
}

void LoginStatuses::onOauthPage(Data const& data, Profile& /*profile*/) {
    thirdParty_.Open(data.oauthPagePath);
}

std::function<void()> LoginStatuses::TailOf(MsgCode code, std::shared_ptr<Profile> const& profile) {
    bool const refused_type = code == MsgCode::ERR_LOGIN_MODE && !core_.context.needQueryAuthType;
    bool const refused_credentials =
        code == MsgCode::ERR_AUTH_USER_OR_PASS || code == MsgCode::ERR_AUTH_BAD_CERT;
    if (!core_.state.SessionStands() || (!refused_type && !refused_credentials)) {
        return {};
    }
    // The session's end forgets its secrets before the text has been seen.
    return [this, code, profile, refused_type, here = core_.Now(), secrets = core_.secrets] {
        if (!here.NotBegunAnew() || core_.config.GetProfile(profile->name) != profile) {
            return;
        }
        core_.secrets = secrets;
        if (refused_type) {
            profile->authType = SupportedAuthType::kNone;
            flow_.onStartConnect(QString::fromStdString(profile->name), true);
            return;
        }
        // What was right need not be typed again.
        bool const bad_cert = code == MsgCode::ERR_AUTH_BAD_CERT;
        core_.secrets.Keep(bad_cert ? Secret::kPassword : Secret::kPin, *profile);
        core_.secrets.Refuse(bad_cert ? Secret::kPin : Secret::kPassword);
        core_.state.currentProfileName = profile->name;
        Q_EMIT core_.NeedSelectAuthType(!profile->keepAuthType);
    };
}

}  // namespace zorvanelink::ui

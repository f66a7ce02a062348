#include "ui/auth/auth_code_flow.h"

#include "components/logger/logger.h"
#include "components/utils/secret_string.h"
#include "core/clmsg_json.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using components::utils::SecretString;
using core::sslvpn::CLMsgJson;
using core::sslvpn::SetType;

// By the context's kind of code.
constexpr SetType kCodes[] = {SetType::kTokenCode, SetType::kSmsCode, SetType::kEmailCode};
constexpr SetType kRequests[] = {SetType::kUnknown, SetType::kRequestSmsCode,
                                 SetType::kRequestEmailCode};

}  // namespace

AuthCodeFlow::AuthCodeFlow(Session& session) : DialogFlow(session), deadline_(session.clock) {
    connect(&session_, &Session::NeedSendAuthCode, this, &AuthCodeFlow::onNeedSendAuthCode);
    connect(&deadline_, &Deadline::Passed, this, &AuthCodeFlow::onAuthTimerTimeout);
    connect(&deadline_, &Deadline::Ticked, this, [this] {
        if (dialog_) {
            dialog_->ShowTimeLeft(deadline_.TimeLeft());
        }
    });
}

void AuthCodeFlow::onNeedSendAuthCode() {
    if (!session_.RunningProfile()) {
        Log().error("Can not get client");
        return;
    }
    begin();
    auto* const dialog = new AuthDialog(session_.context, session_.window);
    run(*dialog);
    connect(dialog, &AuthDialog::SendAuthCode, this, &AuthCodeFlow::onSendAuthCode);
    connect(dialog, &AuthDialog::RequestAuthCode, this, &AuthCodeFlow::onRequestAuthCode);
    connect(dialog, &AuthDialog::Refused, this,
            [this](BoxRequest const& request) { say(request); });
    connect(dialog, &AuthDialog::GivenUp, this, &AuthCodeFlow::onGivenUp);
    deadline_.Start(kAuthTime);
    dialog->ShowTimeLeft(deadline_.TimeLeft());
    session_.state.errorShown = false;  // an earlier text does not speak for the dialog's end
    session_.state.secondFactor = true;
    session_.Announce();
    session_.Demand(dialog->windowTitle());
    show();
}

bool AuthCodeFlow::OnAnswer(MsgCode code) {
    switch (code) {
        case MsgCode::NEED_SMS_AUTH_CODE:
        case MsgCode::NEED_TOKEN_AUTH_CODE:
        case MsgCode::NEED_EMAIL_AUTH_CODE:
            // Asked again for the same: neither the prompt nor the pause changes.
            return LoginStatuses::ConvertMsgCodeToAuthCodeType(code) ==
                   session_.context.authCodeType;
        case MsgCode::SMS_AUTH_CODE_CHECK_OK:
        case MsgCode::TOKEN_AUTH_CODE_CHECK_OK:
        case MsgCode::EMAIL_AUTH_CODE_CHECK_OK:
            if (dialog_) {
                dialog_->onAuthCodeVerifyResult(true);
            }
            return true;
        case MsgCode::WRONG_AUTH_CODE:
        case MsgCode::ERR_SMS_CODE:
        case MsgCode::ERR_EMAIL_AUTH_CODE:
            if (dialog_) {
                dialog_->onAuthCodeVerifyResult(false);
            }
            return true;
        default:
            return false;
    }
}

void AuthCodeFlow::onSendAuthCode(QString const& code) {
    auto const profile = session_.RunningProfile();
    if (!profile) {
        Log().error("Can not get client");
        return;
    }
    QByteArray bytes = code.toUtf8();
    SecretString const clear(bytes.toStdString());
    bytes.fill('\0');
    auto const kind = static_cast<std::size_t>(session_.context.authCodeType);
    SecretString const json(CLMsgJson::BuildAuthCode(
        profile->name, kind < std::size(kCodes) ? kCodes[kind] : SetType::kSmsCode, clear.Get()));
    session_.Send(json.Get());
}

void AuthCodeFlow::onRequestAuthCode() {
    Log().info("Apply for auth code again");
    if (auto const profile = session_.RunningProfile()) {
        auto const kind = static_cast<std::size_t>(session_.context.authCodeType);
        session_.Send(CLMsgJson::BuildRequestAuthCode(
            profile->name, kind < std::size(kRequests) ? kRequests[kind] : SetType::kUnknown));
    }
}

void AuthCodeFlow::onAuthTimerTimeout() {
    if (!isOpen()) {
        return;
    }
    Log().info("Auth timeout and peer has already disconnected");
    session_.Failures().EndWith(WarningBox(MsgCode::UI_WARNING_CONNECT_TIMEOUT_LOGIN_AGAIN));
}

// The user's own end: its stop comes first, and no text.
void AuthCodeFlow::onGivenUp() {
    if (isOpen()) {
        session_.conversation.Close(*this);
        session_.state.errorShown = true;
        session_.Flow().StopConnect();
    }
}

void AuthCodeFlow::onFinished(int result, bool /*itself*/) {
    deadline_.Stop();
    if (result == QDialog::Accepted) {
        Log().info("has send auth code to service");
        Log().debug("alread send auth code: {}", session_.state.currentProfileName);
    } else if (session_.state.SessionStands()) {
        Log().info("The auth code is no longer asked for");
    } else {
        Log().info("Failed or cancel process auth code");
        Log().debug("Failed to send auth code");
    }
    session_.state.secondFactor = false;
    session_.Announce();
    bringWindowForward();
}

}  // namespace zorvanelink::ui

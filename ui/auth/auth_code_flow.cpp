#include "ui/auth/auth_code_flow.h"

#include "components/logger/logger.h"
#include "components/utils/secret_string.h"
#include "core/clmsg_json.h"
#include "ui/auth/auth_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"

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

BoxRequest warningBox(MsgCode text) {
    BoxRequest request = OkBox(BoxKind::kCritical, GetTrMsg(text));
    request.title = GetTrMsg(MsgCode::UI_WARNING);
    return request;
}

}  // namespace

AuthCodeFlow::AuthCodeFlow(Session& session) : session_(session), deadline_(session.clock) {
    connect(&session_, &Session::NeedSendAuthCode, this, &AuthCodeFlow::onNeedSendAuthCode);
    connect(&deadline_, &Deadline::Passed, this, &AuthCodeFlow::onAuthTimerTimeout);
    connect(&deadline_, &Deadline::Ticked, this, [this] {
        if (dialog_) {
            dialog_->ShowTimeLeft(deadline_.TimeLeft());
        }
    });
}

AuthCodeFlow::~AuthCodeFlow() {
    session_.conversation.Close(*this);
}

void AuthCodeFlow::onNeedSendAuthCode() {
    if (!session_.RunningProfile()) {
        Log().error("Can not get client");
        return;
    }
    close();  // one of an attempt before may stand behind its text
    session_.conversation.Open(*this);
    if (!session_.conversation.Is(*this)) {
        return;
    }
    auto* const dialog = new AuthDialog(session_.context, session_.prompts, session_.window);
    dialog_ = dialog;
    connect(dialog, &AuthDialog::SendAuthCode, this, &AuthCodeFlow::onSendAuthCode);
    connect(dialog, &AuthDialog::RequestAuthCode, this, &AuthCodeFlow::onRequestAuthCode);
    connect(dialog, &AuthDialog::GivenUp, this, &AuthCodeFlow::onGivenUp);
    connect(dialog, &QDialog::finished, this,
            [this, dialog](int result) { onFinished(*dialog, result); });
    deadline_.Start(kAuthTime);
    dialog->ShowTimeLeft(deadline_.TimeLeft());
    session_.state.secondFactor = true;
    session_.Announce();
    session_.Demand(dialog->windowTitle());
    dialog->show();
}

bool AuthCodeFlow::OnAnswer(MsgCode code) {
    switch (code) {
        case MsgCode::NEED_SMS_AUTH_CODE:
        case MsgCode::NEED_TOKEN_AUTH_CODE:
        case MsgCode::NEED_EMAIL_AUTH_CODE:
            return true;  // neither the prompt nor the pause changes
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
        case MsgCode::ERR_AUTH_CODE_RETRY_LIMIT:
        case MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT:
            onAuthCodeRetryLimit();
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

void AuthCodeFlow::onAuthCodeRetryLimit() {
    session_.Failures().EndWith(
        warningBox(MsgCode::UI_WARNING_REACH_MAXIMUM_RETRY_TIMES_LOGIN_AGAIN));
}

void AuthCodeFlow::onAuthTimerTimeout() {
    if (!session_.conversation.Is(*this)) {
        return;  // it has ended, and stands behind its text
    }
    Log().info("Auth timeout and peer has already disconnected");
    session_.Failures().EndWith(warningBox(MsgCode::UI_WARNING_CONNECT_TIMEOUT_LOGIN_AGAIN));
}

// The user's own end: its stop comes first, and no text.
void AuthCodeFlow::onGivenUp() {
    if (session_.conversation.Is(*this)) {
        session_.conversation.Close(*this);
        session_.state.errorShown = true;
        session_.Flow().StopConnect();
    }
}

void AuthCodeFlow::OnLost() {
    if (std::exchange(session_.state.errorShown, true)) {
        close();
        return;
    }
    session_.Failures().EndConversation(
        OkBox(BoxKind::kCritical, GetTrMsg(MsgCode::UI_INFO_CONNECTION_TERMINATED)));
}

void AuthCodeFlow::close() {
    session_.conversation.Close(*this);
    if (dialog_) {
        dialog_->done(QDialog::Rejected);
    }
}

void AuthCodeFlow::onFinished(AuthDialog& dialog, int result) {
    dialog.DeleteBehindBoxes();
    if (dialog_ != &dialog) {
        return;
    }
    dialog_ = nullptr;
    deadline_.Stop();
    session_.conversation.Close(*this);
    if (result == QDialog::Accepted) {
        Log().info("has send auth code to service");
        Log().debug("alread send auth code: {}", session_.state.currentProfileName);
    } else {
        Log().info("Failed or cancel process auth code");
        Log().debug("Failed to send auth code");
    }
    session_.state.secondFactor = false;
    session_.Announce();
    // Queued: whoever leaves the program is not shown its window once more.
    QMetaObject::invokeMethod(
        this, [this] { BringForward(session_.window); }, Qt::QueuedConnection);
}

}  // namespace zorvanelink::ui

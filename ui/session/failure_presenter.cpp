#include "ui/session/failure_presenter.h"

#include <QApplication>

#include "app/environment/app_ctrl.h"
#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"
#include "ui/widgets/open_url.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using core::sslvpn::CLMsgCommonReplyData;

// The gateway's reasons that the user is told about; the others end the session silently.
struct ReasonRow {
    std::int32_t reason;
    MsgCode text;
    char const* log_line;
};

constexpr ReasonRow kReasons[] = {
    {2, MsgCode::UI_WARNING_SERVER_DISCONNECT_FOR_CONNECTION_TIMEOUT, "Tunnel disconnect:time out"},
    {3, MsgCode::UI_WARNING_SERVER_DISCONNECT_FOR_CONFIGURATION, "Tunnel disconnect: config"},
    {4, MsgCode::UI_WARNING_USER_LOG_ON_OTHER_CLIENT, "Tunnel disconnect: logon"},
    {5, MsgCode::UI_WARNING_SERVER_KICKOUT_CLIENT, "Tunnel disconnect: kickout"},
    {7, MsgCode::UI_ERROR_INTERNAL_ERROR, "Tunnel disconnect: bad spi"},
    {9, MsgCode::UI_WARNING_SERVER_DISCONNECT_FOR_CONNECTION_TIMEOUT,
     "Tunnel disconnect: idle time"},
    {12, MsgCode::UI_WARNING_SERVER_FORCE_TIMEOUT, "Channel disconnect: force timeout"},
    {222, MsgCode::HEARTBEAT_TIMEOUT, "Tunnel disconnect: client heartbeat timeout"},
};

QString firstNonEmpty(std::initializer_list<QString> texts) {
    for (QString const& text : texts) {
        if (!text.isEmpty()) {
            return text;
        }
    }
    return {};
}

QString utf8(std::string const& text) {
    return QString::fromStdString(text);
}

// The service's own words for the code, else ours.
QString textOf(CLMsgCommonReplyData const& data) {
    QString const sent = utf8(IsChineseDisplayLangguage() ? data.errMsgInCn : data.errMsgInEn);
    QString text = firstNonEmpty({sent, GetErrMsg(data.statusCode)});
    if (data.statusCode == MsgCode::UI_TR_VERITY_SERVER_CERTIFICATE_FAILED) {
        return text + QLatin1String(kMessageSeparator) +
               GetErrMsg(MsgCode::UI_TR_IMPORT_TRUSTED_CERT_TIPS);
    }
    return text;
}

// What the dialog for a new password answers itself while it is open.
constexpr MsgCode kChangePwdAnswers[] = {
    MsgCode::ERR_HISTORY_PASSWORD, MsgCode::ERR_PASSWORD_COMPLEXITY,
    MsgCode::ERR_CHANGE_PWD_WITH_CLIENT, MsgCode::CHANGE_PWD_SUCCESS,
    MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD};

void closeAllBoxes() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const box = qobject_cast<ZVLMessageBox*>(widget)) {
            box->close();
        }
    }
}

void reject(QPointer<QDialog> const& dialog) {
    if (dialog) {
        dialog->reject();
    }
}

// Failures that end a login although no row of the catalogue shows them.
constexpr MsgCode kEndsOfLogin[] = {
    MsgCode::ERR_SMS_TIMEOUT,     MsgCode::ERR_EMAIL_AUTH_CODE_TIMEOUT,
    MsgCode::SECOND_AUTH_AAA_ERR, MsgCode::SECOND_AUTH_TIMEOUT,
    MsgCode::TOKEN_AUTH_FAILED,   MsgCode::ERR_RECV_INVALID_OAUTH_INFO,
    MsgCode::ERR_WRITE_OAUTH_INFO};

// Types of codes that speak of a failure.
constexpr int kFailureTypes[] = {5, 7};

}  // namespace

FailurePresenter::FailurePresenter(ConnectionState& state, ConnectFlow& flow, Prompts& prompts,
                                   SessionDialogs& dialogs, QWidget* window, QObject* parent)
    : QObject(parent),
      state_(state),
      flow_(flow),
      prompts_(prompts),
      dialogs_(dialogs),
      window_(window) {
    connect(&flow_, &ConnectFlow::SessionEnding, this,
            &FailurePresenter::PopDisconnectErrorForDialog);
}

bool FailurePresenter::HandleErrMsg(CLMsgCommonReplyData const& data) {
    if (HandleErrMsgPreProcess(data)) {
        return true;
    }
    common::IPCMessage const row = common::g_IPCMessageMap.Get(data.statusCode);
    if (row.show == nullptr || !*row.show) {
        return false;
    }
    bool const shown = !state_.offline;
    std::uint64_t const starts = state_.starts;
    QString const text = firstNonEmpty({textOf(data), GetErrMsg(MsgCode::UI_ERROR_EMPTY_ERR_MSG)});
    (*row.show)(row.type, text.toStdString());
    HandleErrMsgPostProcess(data, shown && starts == state_.starts && !g_quit);
    return true;
}

bool FailurePresenter::HandleErrMsgPreProcess(CLMsgCommonReplyData const& data) {
    bool const answer =
        std::count(std::begin(kChangePwdAnswers), std::end(kChangePwdAnswers), data.statusCode) > 0;
    if (!answer || !dialogs_.changePwdDialog) {
        return false;
    }
    Q_EMIT ChangePWDRetSignal(static_cast<int>(data.statusCode));
    return true;
}

void FailurePresenter::HandleErrMsgPostProcess(CLMsgCommonReplyData const& data, bool shown) {
    if (data.statusCode == MsgCode::ERR_HOSTCHECK && shown && !data.hostCheckDownloadUrl.empty()) {
        OpenUrl(prompts_, utf8(data.hostCheckDownloadUrl), false);
    }
    if (data.statusCode == MsgCode::ERR_NO_IP_ADDR || data.statusCode == MsgCode::ERR_IP_IN_USE) {
        state_.errorShown = true;
    }
}

void FailurePresenter::ProcessErrorMsg(common::CodeType /*type*/, std::string const& text) {
    if (state_.offline) {
        Log().info("Do not need to pop error msg box when offline");
        return;
    }
    Log().debug("error msg recved");
    Log().debug("get pop up widget1 {}", static_cast<void const*>(boxParent()));
    ShowCriticalBox(GetErrMsg(MsgCode::UI_ERROR), utf8(text), GetErrMsg(MsgCode::UI_INFO_OK));
    window_->showNormal();
    window_->raise();
    window_->activateWindow();
}

void FailurePresenter::ProcessCriticalMsg(common::CodeType /*type*/, std::string const& text) {
    if (state_.offline) {
        Log().info("Do not need to pop msg box when offline");
        return;
    }
    Log().debug("critical msg recved");
    state_.errorShown = true;  // its own text is the only one
    flow_.StopConnect();
    bool const shown = ShowPopMsgBox(BoxKind::kCritical, GetErrMsg(MsgCode::UI_ERROR), utf8(text),
                                     GetErrMsg(MsgCode::UI_INFO_OK));
    if (state_.Idle()) {
        if (shown) {  // what stands in its way is read first
            closeAllBoxes();
        }
        closeDialogs();
    }
}

void FailurePresenter::EndSession(std::uint64_t attempt) {
    if (attempt == state_.attempt) {
        flow_.StopConnect();
    }
    if (state_.Idle()) {
        closeDialogs();
    }
}

void FailurePresenter::closeDialogs() {
    reject(dialogs_.authDialog);
    reject(dialogs_.changePwdDialog);
}

void FailurePresenter::PopDisconnectErrorForDialog() {
    Log().debug("Pop disconnect error for dialog");
    if (!dialogs_.authDialog) {
        return;
    }
    if (!state_.errorShown) {
        ShowCriticalBox(GetErrMsg(MsgCode::UI_ERROR),
                        GetErrMsg(MsgCode::UI_INFO_CONNECTION_TERMINATED),
                        GetErrMsg(MsgCode::UI_INFO_OK));
    } else if (state_.link != LinkState::kReconnecting) {
        return;  // the dialog is about to show its own text, and closes itself
    }
    reject(dialogs_.authDialog);
}

bool FailurePresenter::HandleUnmarked(CLMsgCommonReplyData const& data) {
    int const type = static_cast<int>(common::g_IPCMessageMap.Get(data.statusCode).type);
    QString const text = textOf(data);
    if (std::count(std::begin(kEndsOfLogin), std::end(kEndsOfLogin), data.statusCode) > 0) {
        QString const shown = firstNonEmpty({text, GetErrMsg(MsgCode::SECOND_AUTH_TIMEOUT)});
        ProcessCriticalMsg(static_cast<common::CodeType>(type), shown.toStdString());
        return true;
    }
    bool const failure = std::count(std::begin(kFailureTypes), std::end(kFailureTypes), type) > 0;
    if (failure && !text.isEmpty() && !state_.beenOnline) {
        state_.untoldFailure = text.toStdString();
    }
    return false;
}

void FailurePresenter::TellUntoldFailure() {
    std::string const text = std::exchange(state_.untoldFailure, {});
    if (!text.empty() && !state_.errorShown) {
        ShowPopMsgBox(BoxKind::kCritical, GetErrMsg(MsgCode::UI_ERROR), utf8(text),
                      GetErrMsg(MsgCode::UI_INFO_OK));
    }
}

void FailurePresenter::HandleTunnelDisconnect(
    core::sslvpn::CLMsgReplyTunnelDisconnectData const& data) {
    if (state_.offline || state_.stopSent) {  // the user wanted it so
        Log().info("Do not need to pop disconnect msg box when offline");
        flow_.StopConnect();
        return;
    }
    auto const* const row =
        std::find_if(std::begin(kReasons), std::end(kReasons),
                     [&data](ReasonRow const& r) { return r.reason == data.reason; });
    std::uint64_t const attempt = state_.attempt;
    if (row != std::end(kReasons)) {
        Log().info("{}", row->log_line);
        warn(GetErrMsg(row->text));
    } else {
        Log().info("Tunnel disconnect: unkown");
    }
    EndSession(attempt);
}

void FailurePresenter::HandleDisconnectReason(CLMsgCommonReplyData const& data) {
    Log().info("Client will disconnect due to reason: {}",
               GetErrMsg(data.statusCode).toStdString());
}

void FailurePresenter::HandleErrMsgByServer(core::sslvpn::CLMsgNotifyErrorMsgData const& data) {
    Log().info("Handle error msg by server");
    if (data.statusCode != MsgCode::ERR_MSG_BY_SERVER) {
        Log().debug("status code invalid");
        return;
    }
    QString text =
        firstNonEmpty({IsChineseDisplayLangguage() ? utf8(data.errorMsgChinese) : QString(),
                       utf8(data.errorMsgEnglish), GetErrMsg(data.statusCode)});
    if (text.isEmpty()) {
        Log().warning("Recv server custom error msg, but is empty");
        text = GetErrMsg(MsgCode::UI_ERROR_EMPTY_ERR_MSG);
    }
    if (text.endsWith(QLatin1Char('\n'))) {
        text.chop(1);
    }
    std::uint64_t const attempt = state_.attempt;
    warn(text);
    Log().info("Incompatible server and client, stop the connect");
    EndSession(attempt);
}

bool FailurePresenter::ShowPopMsgBox(BoxKind kind, QString const& title, QString const& text,
                                     QString const& button) {
    Log().info("Show pop msg window, visible {}, hide {}, mini {}", window_->isVisible(),
               window_->isHidden(), window_->isMinimized());
    BringIntoView(window_);
    BoxRequest request;
    request.kind = kind;
    request.title = title;
    request.text = text;
    request.buttons = {button};
    return show(std::move(request));
}

void FailurePresenter::ShowCriticalBox(QString const& title, QString const& text,
                                       QString const& button) {
    ShowPopMsgBox(BoxKind::kCritical, title, text, button);
    Q_EMIT CriticalBoxShown();
}

bool FailurePresenter::show(BoxRequest request) {
    state_.errorShown = true;
    if (standing_) {
        Log().info("A box stands already, next text: {}", request.text.toStdString());
        if (request.text != *standing_) {
            next_ = std::move(request);
        }
        return false;
    }
    standing_ = request.text;
    request.parent = boxParent();
    prompts_.Box(request);
    standing_.reset();
    if (next_) {
        // Queued: who showed this one goes on first.
        auto following = [this, next = *std::exchange(next_, {})] { show(next); };
        QMetaObject::invokeMethod(this, std::move(following), Qt::QueuedConnection);
    }
    return true;
}

QWidget* FailurePresenter::boxParent() const {
    // Without the focus of the desktop none of our windows is active, but one may be modal.
    for (QWidget* const widget :
         {QApplication::activeWindow(), QApplication::activeModalWidget()}) {
        if (widget != nullptr) {
            return widget;
        }
    }
    return window_;
}

void FailurePresenter::warn(QString const& text) {
    ShowPopMsgBox(BoxKind::kWarning, GetErrMsg(MsgCode::UI_WARNING), text,
                  GetErrMsg(MsgCode::UI_INFO_OK));
}

}  // namespace zorvanelink::ui

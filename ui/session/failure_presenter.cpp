#include "ui/session/failure_presenter.h"

#include <QWidget>

#include "app/environment/app_ctrl.h"
#include "components/logger/logger.h"
#include "components/utils/text.h"
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

// As the catalogue names them; empty for a number that nobody knows.
QString nameOf(std::int32_t reason) {
    constexpr std::int32_t kNamed = 13;
    return reason < 1 || reason > kNamed
               ? QString()
               : GetTrMsg(static_cast<MsgCode>(
                     static_cast<std::int32_t>(MsgCode::DISCONNECT_REASON_UNKNOWN) - 1 + reason));
}

QString firstNonEmpty(std::initializer_list<QString> texts) {
    for (QString const& text : texts) {
        if (!text.trimmed().isEmpty()) {
            return text;
        }
    }
    return {};
}

// More than a box shows is not even converted.
QString utf8(std::string const& text) {
    constexpr std::size_t kMostBytes = 16 * 1024;
    std::string_view const most = components::utils::CutUtf8(text, kMostBytes);
    return QString::fromUtf8(most.data(), static_cast<int>(most.size()));
}

// The service's own words for the code, else ours.
QString textOf(CLMsgCommonReplyData const& data) {
    QString const sent = utf8(IsChineseDisplayLangguage() ? data.errMsgInCn : data.errMsgInEn);
    QString text = firstNonEmpty({sent, GetTrMsg(data.statusCode)});
    if (data.statusCode == MsgCode::UI_TR_VERITY_SERVER_CERTIFICATE_FAILED) {
        return text + QLatin1String(kMessageSeparator) +
               GetTrMsg(MsgCode::UI_TR_IMPORT_TRUSTED_CERT_TIPS);
    }
    return text;
}

// Failures that end a login although no row of the catalogue shows them.
constexpr MsgCode kEndsOfLogin[] = {
    MsgCode::ERR_SMS_TIMEOUT,     MsgCode::ERR_EMAIL_AUTH_CODE_TIMEOUT,
    MsgCode::SECOND_AUTH_AAA_ERR, MsgCode::SECOND_AUTH_TIMEOUT,
    MsgCode::TOKEN_AUTH_FAILED,   MsgCode::ERR_RECV_INVALID_OAUTH_INFO,
    MsgCode::ERR_WRITE_OAUTH_INFO};

// Types of codes that speak of a failure.
constexpr int kFailureTypes[] = {5, 7};

template <class Range, class Value>
bool contains(Range const& range, Value const& value) {
    return std::count(std::begin(range), std::end(range), value) > 0;
}

}  // namespace

FailurePresenter::FailurePresenter(SessionCore& core, ConnectFlow& flow, BoxQueue& boxes)
    : core_(core), flow_(flow), boxes_(boxes) {
}

void FailurePresenter::HandleErrMsg(Data const& data, common::Show show, Then then) {
    QString const text = firstNonEmpty({textOf(data), GetTrMsg(MsgCode::UI_ERROR_EMPTY_ERR_MSG)});
    then = withPage(data, std::move(then));
    if (show == common::Show::kCritical) {
        ProcessCriticalMsg(text, std::move(then));
    } else {
        ProcessErrorMsg(text, std::move(then));
    }
    if (data.statusCode == MsgCode::ERR_NO_IP_ADDR || data.statusCode == MsgCode::ERR_IP_IN_USE) {
        core_.state.errorShown = true;
    }
}

// What the check of the host wants can be fetched there.
FailurePresenter::Then FailurePresenter::withPage(Data const& data, Then then) {
    if (data.statusCode != MsgCode::ERR_HOSTCHECK || data.hostCheckDownloadUrl.empty()) {
        return then;
    }
    return [this, here = core_.Now(), url = utf8(data.hostCheckDownloadUrl)] {
        if (here.NotBegunAnew()) {
            OpenUrl(core_.prompts, url, false);
        }
    };
}

// Nobody is told why what he has ended, or what is known to be down, has failed.
bool FailurePresenter::mayTell(char const* logLine) const {
    if (!core_.state.SessionStands()) {
        Log().info("{}", logLine);
    }
    return core_.state.SessionStands();
}

void FailurePresenter::ProcessErrorMsg(QString const& text, Then then) {
    if (!mayTell("Do not need to pop error msg box when offline")) {
        return;
    }
    Log().debug("error msg recved");
    if (!core_.state.beenOnline) {  // a login may end with it
        core_.NoteReason(text);
    }
    Log().debug("get pop up widget1 {}", static_cast<void const*>(boxes_.Parent()));
    ShowPopMsgBox(OkBox(BoxKind::kCritical, text), [this, then = std::move(then)] {
        core_.conversation.StopDeadline();
        BringForward(core_.window);
        if (then) {
            then();
        }
    });
}

void FailurePresenter::ProcessCriticalMsg(QString const& text, Then then) {
    if (!mayTell("Do not need to pop msg box when offline")) {
        flow_.StopConnect();
        return;
    }
    Log().debug("critical msg recved");
    EndWith(BoxKind::kCritical, text, std::move(then));
}

void FailurePresenter::EndWith(BoxKind kind, QString const& text, Then then) {
    EndWith(OkBox(kind, text), std::move(then));
}

void FailurePresenter::EndWith(BoxRequest request, Then then) {
    core_.state.errorShown = true;  // its own text is the only one
    core_.NoteReason(request.text);
    auto behind = core_.conversation.EndBehind();
    flow_.StopConnect();
    tellEnd(std::move(behind), std::move(request), std::move(then));
}

void FailurePresenter::EndConversation(BoxRequest request) {
    // Of a login that ends here; a session that goes on without the dialog ends for another reason.
    if (!core_.state.beenOnline && core_.state.endReason.empty()) {
        core_.NoteReason(request.text);
    }
    // Queued: what is going down has gone before its text is read.
    QMetaObject::invokeMethod(
        &core_,
        [this, behind = core_.conversation.EndBehind(), request = std::move(request)]() mutable {
            tellEnd(std::move(behind), std::move(request), {});
        },
        Qt::QueuedConnection);
}

void FailurePresenter::tellEnd(std::shared_ptr<void> behind, BoxRequest request, Then then) {
    ShowPopMsgBox(std::move(request),
                  [this, behind = std::move(behind), then = std::move(then)]() mutable {
                      // A dead session leaves nothing behind that could still send a code or a
                      // password.
                      if (core_.state.Idle() && !core_.conversation.OutlivesSession()) {
                          core_.prompts.CloseAll();
                      }
                      behind.reset();
                      if (then) {
                          then();
                      }
                  });
}

void FailurePresenter::HandleUnmarked(Data const& data) {
    MsgCode const code = data.statusCode;
    int const type = static_cast<int>(common::g_IPCMessageMap.Get(code).type);
    QString const text = textOf(data);
    if (code >= MsgCode::DISCONNECT_REASON_UNKNOWN &&
        code <= MsgCode::DISCONNECT_REASON_FORCE_RECONNECT) {
        HandleDisconnectReason(code);
    } else if (!core_.state.LoginIsOver() && contains(kEndsOfLogin, code)) {
        ProcessCriticalMsg(firstNonEmpty({text, GetTrMsg(MsgCode::SECOND_AUTH_TIMEOUT)}));
    } else if (!core_.state.beenOnline && contains(kFailureTypes, type) && !text.isEmpty()) {
        core_.state.untoldFailure = text.toStdString();
    } else {
        Log().debug("Not supported status: {}", static_cast<int>(code));
    }
}

void FailurePresenter::HandleDisconnectReason(MsgCode reason) {
    Log().info("Client will disconnect due to reason: {}", GetTrMsg(reason).toStdString());
    core_.NoteReason(GetTrMsg(reason));
}

void FailurePresenter::TellUntoldFailure() {
    std::string const text = std::exchange(core_.state.untoldFailure, {});
    if (!text.empty() && !core_.state.errorShown) {
        ShowPopMsgBox(OkBox(BoxKind::kCritical, utf8(text)));
    }
}

void FailurePresenter::HandleTunnelDisconnect(
    core::sslvpn::CLMsgReplyTunnelDisconnectData const& data) {
    if (!mayTell("Do not need to pop disconnect msg box when offline")) {
        flow_.StopConnect();
        return;
    }
    auto const* const row =
        std::find_if(std::begin(kReasons), std::end(kReasons),
                     [&data](ReasonRow const& r) { return r.reason == data.reason; });
    if (row == std::end(kReasons)) {
        Log().info("Tunnel disconnect: unkown");
        core_.NoteReason(nameOf(data.reason));
        flow_.StopConnect();
        return;
    }
    Log().info("{}", row->log_line);
    EndWith(BoxKind::kWarning, GetTrMsg(row->text));
}

void FailurePresenter::HandleErrMsgByServer(core::sslvpn::CLMsgNotifyErrorMsgData const& data) {
    Log().info("Handle error msg by server");
    if (data.statusCode != MsgCode::ERR_MSG_BY_SERVER) {
        Log().debug("status code invalid");
        return;
    }
    QString text =
        firstNonEmpty({IsChineseDisplayLangguage() ? utf8(data.errorMsgChinese) : QString(),
                       utf8(data.errorMsgEnglish), GetTrMsg(data.statusCode)});
    if (text.endsWith(QLatin1Char('\n'))) {
        text.chop(1);
    }
    if (text.trimmed().isEmpty()) {
        Log().warning("Recv server custom error msg, but is empty");
        text = GetTrMsg(MsgCode::UI_ERROR_EMPTY_ERR_MSG);
    }
    constexpr int kLogged = 160;  // characters
    Log().info("The server says: {}", text.left(kLogged).toStdString());
    Log().info("Incompatible server and client, stop the connect");
    if (core_.state.SessionStands()) {
        EndWith(BoxKind::kWarning, text);
        return;
    }
    flow_.StopConnect();
    // Unless the user has ended it: that leaves no reason.
    if (core_.state.lastEnd && !core_.state.lastEnd->why.empty()) {
        ShowPopMsgBox(OkBox(BoxKind::kWarning, text));
    }
}

void FailurePresenter::HandleGatewayDetectStop(
    core::sslvpn::CLMsgGatewayDetectStopData const& data) {
    QString const text = utf8(data.reason).trimmed();
    if (text.isEmpty()) {
        Log().warning("Gateway detection ended without a reason");
    } else if (core_.state.SessionStands()) {
        ShowPopMsgBox(OkBox(BoxKind::kWarning, text));
    }
}

void FailurePresenter::ShowPopMsgBox(BoxRequest request, Then then) {
    if (QWidget const* const window = core_.window) {
        Log().info("Show pop msg window, visible {}, hide {}, mini {}", window->isVisible(),
                   window->isHidden(), window->isMinimized());
    }
    boxes_.Tell(std::move(request), [then = std::move(then)](int) {
        if (then) {
            then();
        }
    });
}

}  // namespace zorvanelink::ui

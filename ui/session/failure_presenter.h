// How a failure that the service reports reaches the user: one box or none. GUI thread; a box runs
// a nested event loop, and further messages are handled while it stands.
#pragma once

#include <QObject>
#include <QString>
#include <QWidget>
#include <optional>
#include <string>

#include "core/reply_records.h"
#include "ui/session/connect_flow.h"
#include "ui/session/connection_state.h"
#include "ui/session/session_dialogs.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

class FailurePresenter : public QObject {
    Q_OBJECT

  public:
    FailurePresenter(ConnectionState& state, ConnectFlow& flow, Prompts& prompts,
                     SessionDialogs& dialogs, QWidget* window, QObject* parent = nullptr);

    // True when the code has been shown: by the open password dialog, or by the handler of its
    // catalogue row.
    bool HandleErrMsg(core::sslvpn::CLMsgCommonReplyData const& data);
    // The session goes on, or its end is the caller's.
    void ProcessErrorMsg(common::CodeType type, std::string const& text);
    // The session is over, and so is every box and every dialog that could still send.
    void ProcessCriticalMsg(common::CodeType type, std::string const& text);
    // On the way down: who is typing a code learns that the connection behind it is gone.
    void PopDisconnectErrorForDialog();
    // After a box that tells the end of the session of that attempt: the way down, and no dialog
    // is left that could still send. Nothing when the session came back or was begun anew.
    void EndSession(std::uint64_t attempt);

    // A code that no row of the catalogue shows. True when it ends the login, which has happened
    // then; another failure's text is kept for TellUntoldFailure.
    bool HandleUnmarked(core::sslvpn::CLMsgCommonReplyData const& data);
    // At the end of an attempt that was never online: why, if nothing has told it.
    void TellUntoldFailure();

    void HandleTunnelDisconnect(core::sslvpn::CLMsgReplyTunnelDisconnectData const& data);
    void HandleDisconnectReason(core::sslvpn::CLMsgCommonReplyData const& data);
    void HandleErrMsgByServer(core::sslvpn::CLMsgNotifyErrorMsgData const& data);

    // Raises a hidden or minimised window first. One box at a time: while one stands, the latest
    // text that differs waits for its end.
    void ShowPopMsgBox(BoxKind kind, QString const& title, QString const& text,
                       QString const& button);
    // The same for what ends or blocks a login; CriticalBoxShown follows.
    void ShowCriticalBox(QString const& title, QString const& text, QString const& button);

  Q_SIGNALS:
    // After the box: the selection of a type stops its timer and may be used again, the third-party
    // login stops, the cards are refreshed.
    void CriticalBoxShown();
    // The answer to a new password, for the open dialog: it stops its timers and shows the text.
    void ChangePWDRetSignal(int code);

  private:
    bool HandleErrMsgPreProcess(core::sslvpn::CLMsgCommonReplyData const& data);
    void HandleErrMsgPostProcess(core::sslvpn::CLMsgCommonReplyData const& data, bool shown);
    void closeDialogs();
    QWidget* boxParent() const;
    void show(BoxRequest request);
    void warn(QString const& text);

    ConnectionState& state_;
    ConnectFlow& flow_;
    Prompts& prompts_;
    SessionDialogs& dialogs_;
    QWidget* const window_;
    std::optional<QString> standing_;  // text of the box that stands
    std::optional<BoxRequest> next_;
};

}  // namespace zorvanelink::ui

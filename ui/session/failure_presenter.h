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
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

class FailurePresenter : public QObject {
    Q_OBJECT

  public:
    FailurePresenter(ConnectionState& state, ConnectFlow& flow, Prompts& prompts, QWidget* window,
                     QObject* parent = nullptr);

    // True when the code's catalogue row has a handler that shows it; it has run then.
    bool HandleErrMsg(core::sslvpn::CLMsgCommonReplyData const& data);
    // The session goes on, or its end is the caller's.
    void ProcessErrorMsg(common::CodeType type, std::string const& text);
    // The session is over.
    void ProcessCriticalMsg(common::CodeType type, std::string const& text);

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

  private:
    QWidget* boxParent() const;
    void show(BoxRequest request);
    void warn(QString const& text);

    ConnectionState& state_;
    ConnectFlow& flow_;
    Prompts& prompts_;
    QWidget* const window_;
    std::optional<QString> standing_;  // text of the box that stands
    std::optional<BoxRequest> next_;
};

}  // namespace zorvanelink::ui

// How a failure that the service reports reaches the user: one box or none. GUI thread; a box runs
// a nested event loop, and further messages are handled while it stands.
#pragma once

#include <QObject>
#include <QString>
#include <QWidget>
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

    void HandleTunnelDisconnect(core::sslvpn::CLMsgReplyTunnelDisconnectData const& data);
    void HandleDisconnectReason(core::sslvpn::CLMsgCommonReplyData const& data);
    void HandleErrMsgByServer(core::sslvpn::CLMsgNotifyErrorMsgData const& data);

    // Raises a hidden or minimised window first.
    void ShowPopMsgBox(BoxKind kind, QString const& title, QString const& text,
                       QString const& button);

  private:
    QWidget* boxParent() const;
    void warn(QString const& text);

    ConnectionState& state_;
    ConnectFlow& flow_;
    Prompts& prompts_;
    QWidget* const window_;
};

}  // namespace zorvanelink::ui

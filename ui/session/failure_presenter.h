// How a failure that the service reports reaches the user: one box or none. GUI thread. What a
// failure does to the session happens at once; what it leads to (`then`) once its text has been
// seen, and not at all when it is not shown.
#pragma once

#include <QString>
#include <functional>
#include <string>

#include "core/reply_records.h"
#include "ui/session/box_queue.h"
#include "ui/session/connect_flow.h"

namespace zorvanelink::ui {

class FailurePresenter {
  public:
    using Data = core::sslvpn::CLMsgCommonReplyData;
    using Then = std::function<void()>;

    FailurePresenter(SessionCore& core, ConnectFlow& flow, BoxQueue& boxes);

    // A code that its row of the catalogue shows, in that way.
    void HandleErrMsg(Data const& data, common::Show show, Then then);
    // A text that ends nothing.
    void Tell(BoxRequest request) { ShowPopMsgBox(std::move(request)); }
    // The session goes on, or its end is the caller's.
    void ProcessErrorMsg(QString const& text, Then then = {});
    // The session is over, and so is every box and every dialog that could still send.
    void ProcessCriticalMsg(QString const& text, Then then = {});
    // The way down, the box that says why, and with it the end of the open conversation.
    void EndWith(BoxKind kind, QString const& text, Then then = {});
    void EndWith(BoxRequest request, Then then = {});
    // The same for a conversation whose session is going down by itself, or goes on without it.
    void EndConversation(BoxRequest request);

    // A code that no row of the catalogue shows and that has no handler: why the connection is
    // about to end, what ends a login, or a failure whose text is kept for TellUntoldFailure.
    void HandleUnmarked(Data const& data);
    // At the end of an attempt that was never online: why, if nothing has told it.
    void TellUntoldFailure();

    void HandleTunnelDisconnect(core::sslvpn::CLMsgReplyTunnelDisconnectData const& data);
    void HandleErrMsgByServer(core::sslvpn::CLMsgNotifyErrorMsgData const& data);
    void HandleGatewayDetectStop(core::sslvpn::CLMsgGatewayDetectStopData const& data);

  private:
    void HandleDisconnectReason(common::MsgCode reason);
    bool mayTell(char const* logLine) const;
    Then withPage(Data const& data, Then then);
    void tellEnd(std::shared_ptr<void> behind, BoxRequest request, Then then);
    void ShowPopMsgBox(BoxRequest request, Then then = {});

    SessionCore& core_;
    ConnectFlow& flow_;
    BoxQueue& boxes_;
};

}  // namespace zorvanelink::ui

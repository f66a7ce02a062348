// What the service asks of a certificate whose private key it does not have. Each request that can
// be read is answered once and in its order: with a signature of the user's own token, or with
// "nothing signed", which is also what a request gets that a new one, a stop or the session's end
// overtakes. GUI thread.
#pragma once

#include "ui/session/box_queue.h"
#include "ui/session/connect_flow.h"
#include "ui/session/token_signer.h"

namespace zorvanelink::ui {

class SigningStatuses {
  public:
    using Data = core::sslvpn::CLMsgCommonReplyData;

    SigningStatuses(SessionCore& core, ConnectFlow& flow, BoxQueue& boxes);

    void HandleSignRequest(Data const& data, Profile& profile);

  private:
    void HandleSignData(Data const& data, Profile const& profile);
    void HandleGmSignData(Data const& data, Profile const& profile);
    void askToken(components::cert::SignJob const& job, Profile const& profile);
    std::optional<std::string> askPin(components::cert::PinQuestion const& question);
    void tell(components::cert::TokenSignature const& signature);
    void answer(std::string const& profileName, std::string const& text);
    void overtake();
    void onChanged();

    SessionCore& core_;
    ConnectFlow& flow_;
    BoxQueue& boxes_;
    TokenSigner tokens_;
    std::optional<std::string> asking_;  // for the login of that name
};

}  // namespace zorvanelink::ui

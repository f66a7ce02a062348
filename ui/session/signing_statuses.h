// What the service asks of a certificate whose private key it does not have. GUI thread.
#pragma once

#include "ui/session/session_core.h"

namespace zorvanelink::ui {

class SigningStatuses {
  public:
    using Data = core::sslvpn::CLMsgCommonReplyData;

    void HandleSignRequest(Data const& data, Profile& profile);

  private:
    void HandleSignData(Data const& data, Profile const& profile);
    void HandleGmSignData(Data const& data, Profile const& profile);
};

}  // namespace zorvanelink::ui

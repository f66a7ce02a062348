// What the service says about pages of the server: redirect, resource list, portal. GUI thread.
#pragma once

#include <string>

#include "ui/session/box_queue.h"

namespace zorvanelink::ui {

class PageStatuses {
  public:
    using Data = core::sslvpn::CLMsgCommonReplyData;

    PageStatuses(SessionCore& core, BoxQueue& boxes) : core_(core), boxes_(boxes) {}

    void onKeyExchangeData(Data const& data, Profile& profile);
    void onResourceList(Data const& data, Profile& profile);
    void onUrlRedirect(Data const& data, Profile& profile);
    void onPortalFiles(Data const& data, Profile& profile);

    // At the first ONLINE; may run an event loop.
    void OpenAfterLogin();

  private:
    // A page opens once a session unasked.
    bool mayOpenUnasked(std::string const& page);
    void openUnasked(std::string const& page, bool local);

    SessionCore& core_;
    BoxQueue& boxes_;
};

// The address for a forgotten password, kept in the profile for the next time.
void KeepForgottenPasswordPage(std::string const& url, Profile& profile, SessionCore& core);

}  // namespace zorvanelink::ui

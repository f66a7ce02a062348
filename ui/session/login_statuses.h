// What the service says during a login: second factor, choice of a type, password, certificates,
// a third party's page. GUI thread.
#pragma once

#include "ui/session/connect_flow.h"
#include "ui/session/failure_presenter.h"
#include "ui/session/third_party_login.h"

namespace zorvanelink::ui {

class LoginStatuses {
  public:
    using Data = core::sslvpn::CLMsgCommonReplyData;

    LoginStatuses(SessionCore& core, ConnectFlow& flow, FailurePresenter& failures,
                  BoxQueue& boxes);

    void onNeedAuthCode(Data const& data, Profile& profile);
    void onNeedSelectAuthType(Data const& data, Profile& profile);
    void onPasswordRefused(Data const& data, Profile& profile);
    void onAccountLocked(Data const& data, Profile& profile);
    void onServerCertificate(Data const& data, Profile& profile);
    void onOauthPage(Data const& data, Profile& profile);
    // An answer to a dialog that has closed.
    void onUnawaitedAnswer(Data const& data, Profile& profile);
    void onAuthCodeRetryLimit(Data const& data, Profile& profile);
    void HandleChangePWD(Data const& data, Profile& profile);
    void HandleAuthData(Data const& data, Profile& profile);

    // What a refused login leads to once its text has been seen: it is begun again, another way.
    // Empty for all other codes, and for a session that is over.
    std::function<void()> TailOf(common::MsgCode code, std::shared_ptr<Profile> const& profile);

    // 0 token, 1 SMS, 2 e-mail; 1 for any other code.
    static std::int32_t ConvertMsgCodeToAuthCodeType(common::MsgCode code);
    ThirdPartyLogin& ThirdParty() { return thirdParty_; }

  private:
    void warnOfExpiry(Data const& data);
    void HandleAcceptServerCert(bool result, std::string const& profileName);

    SessionCore& core_;
    ConnectFlow& flow_;
    FailurePresenter& failures_;
    BoxQueue& boxes_;
    ThirdPartyLogin thirdParty_;
};

}  // namespace zorvanelink::ui

// Turns status codes of the service into changes of the connection. GUI thread. The table is in
// status_handler.cpp; what concerns the login is in login_statuses.cpp, what concerns pages of the
// server in page_statuses.cpp.
#pragma once

#include <QObject>
#include <QString>

#include "core/reply_records.h"
#include "ui/session/connect_flow.h"
#include "ui/session/connection_state.h"
#include "ui/session/failure_presenter.h"
#include "ui/session/session_dialogs.h"
#include "ui/session/status_updater.h"
#include "ui/session/third_party_login.h"

namespace zorvanelink::ui {

class StatusHandler : public QObject {
    Q_OBJECT

  public:
    using Data = core::sslvpn::CLMsgCommonReplyData;

    struct Services {
        ConnectionState& state;
        StatusUpdater& updater;
        ConnectFlow& flow;
        FailurePresenter& failures;
        Config& config;
        Prompts& prompts;
        SessionDialogs& dialogs;
        QWidget* window;  // what boxes stand over
    };

    explicit StatusHandler(Services services, QObject* parent = nullptr);

    // False when the status does not concern the running profile.
    bool HandleCommonReplyData(Data const& data);
    // The replies of these subtypes, and the statuses that mean the same.
    void HandleChangePWD(Data const& data, Profile& profile);
    void HandleAuthData(Data const& data, Profile& profile);
    void HandleSignRequest(Data const& data, Profile& profile);
    void HandlePushReportData(core::sslvpn::CLMsgSessionStatus const& data);

    // The profile that a record of that name concerns: the running one, or null with the reason
    // in the log.
    std::shared_ptr<Profile> Addressee(std::string const& profileName) const;

    // Every code with a row of its own, in the order of the table.
    static std::vector<common::MsgCode> Codes();
    // 0 token, 1 SMS, 2 e-mail; 1 for any other code.
    static std::int32_t ConvertMsgCodeToAuthCodeType(common::MsgCode code);

    ThirdPartyLogin& ThirdParty() { return thirdParty_; }

  Q_SIGNALS:
    // ONLINE has been applied; `first` unless the service brought the tunnel back by itself.
    void CameOnline(bool first);
    void ClientAddressChanged(QString address);

    // Who answers may run a dialog at once: nothing here looks back afterwards.
    void NeedSendAuthCode();
    void AuthCodeVerifyResult(bool ok);
    void AuthCodeRetryLimit();
    void NeedSelectAuthType(bool select);
    void NeedChangePwd(zorvanelink::core::sslvpn::CLMsgCommonReplyData const& data);
    void ChangePWDRetSignal(int code);
    void StopChangePwdResponseTimer();
    // The account's password rules, pages and days left; the pages are in the Context already.
    void AuthDataArrived(zorvanelink::core::sslvpn::CLMsgCommonReplyData const& data);

    // redirectUrl, redirectUrlTitle or resourceListPagePath of the Context have changed.
    void PagesChanged();
    void RefreshTrayMenu();
    void ClearTrayMenuActions();
    // Close any update prompt; an update that runs has failed.
    void UpdatePromptObsolete();
    void PushStatusArrived();
    void ProfileChanged(QString name);

  private:
    using Handle = void (StatusHandler::*)(Data const& data, Profile& profile);
    // kSession: nothing happens once the session is down or its stop has been sent.
    enum class When { kAlways, kSession };
    struct Row {
        common::MsgCode code;
        Handle handle;
        When when = When::kAlways;
    };
    static Row const kRows[];

    // What must be known of the moment before a box.
    struct Tail;
    void runTail(Tail const& tail, Profile& profile);
    static void giveBackRight(Tail const& tail, Profile& profile);

    void onOnline(Data const& data, Profile& profile);
    void onOffline(Data const& data, Profile& profile);
    void onConnecting(Data const& data, Profile& profile);
    void onReconnecting(Data const& data, Profile& profile);
    void onPrepareReconnecting(Data const& data, Profile& profile);
    void onHeartbeatTimeout(Data const& data, Profile& profile);
    void onClientAddress(Data const& data, Profile& profile);

    void onNeedAuthCode(Data const& data, Profile& profile);
    void onAuthCodeRight(Data const& data, Profile& profile);
    void onAuthCodeWrong(Data const& data, Profile& profile);
    void onAuthCodeLimit(Data const& data, Profile& profile);
    void onPasswordRefused(Data const& data, Profile& profile);
    void onServerCertificate(Data const& data, Profile& profile);
    void HandleAcceptServerCert(bool result, std::string const& profileName);
    void onNeedSelectAuthType(Data const& data, Profile& profile);
    void onAccountLocked(Data const& data, Profile& profile);

    void onKeyExchangeData(Data const& data, Profile& profile);
    void onResourceList(Data const& data, Profile& profile);
    void onUrlRedirect(Data const& data, Profile& profile);
    void onOauthPage(Data const& data, Profile& profile);
    void onPortalFiles(Data const& data, Profile& profile);
    void openPagesAfterLogin(Profile& profile);
    void keepForgottenPasswordPage(std::string const& url, Profile& profile);
    void HandleSignData(Data const& data, Profile const& profile);
    void HandleGmSignData(Data const& data, Profile const& profile);

    ConnectionState& state_;
    StatusUpdater& updater_;
    ConnectFlow& flow_;
    FailurePresenter& failures_;
    Config& config_;
    Prompts& prompts_;
    SessionDialogs& dialogs_;
    QWidget* const window_;
    ThirdPartyLogin thirdParty_;
    bool asksForCertificate_ = false;
};

}  // namespace zorvanelink::ui

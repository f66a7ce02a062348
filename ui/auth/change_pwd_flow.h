// Runs a change of the password: one dialog, from the gateway's demand or the user's wish to the
// gateway's verdict. GUI thread.
#pragma once

#include "ui/auth/change_pwd_dialog.h"
#include "ui/auth/dialog_flow.h"

namespace zorvanelink::ui {

class ChangePWDFlow : public DialogFlow<ChangePWDDialog> {
    Q_OBJECT

  public:
    // The gateway gives up shortly after.
    static constexpr std::chrono::milliseconds kChangeTime{590000};
    // The gateway's answer to what was sent.
    static constexpr std::chrono::milliseconds kResponseTime{1000};

    explicit ChangePWDFlow(Session& session);

    bool OutlivesLogin() const override { return !demanded_; }
    bool OnAnswer(common::MsgCode code) override;
    void OnSuperseded() override;

  public Q_SLOTS:
    void HandleChangePWD(core::sslvpn::CLMsgCommonReplyData const& data);
    void onActionActiveChangePWDTriggered();
    void onChangePWD(std::string const& current, std::string const& password);
    void onChangePWDRet(int code);
    void timeout();
    void ResponseTimeOut();

  private:
    void ChangePWD(core::sslvpn::UserPasswordComplexity const& policy, ChangePWdType type,
                   bool demanded);
    void onChanged();
    void onGivenUp();
    void onFinished(int result, bool itself) override;
    void endWith(BoxKind kind, common::MsgCode text);

    Deadline deadline_;
    Deadline response_;
    ChangePWdType type_ = ChangePWdType::kUser;
    bool demanded_ = false;  // by the gateway, whatever the type
    bool changed_ = false;
    bool late_ = false;  // the user has been told that no answer came
    // What the gateway has been asked for and has not refused: it may still say yes, later than the
    // user was ready to wait.
    struct Sent {
        std::shared_ptr<Profile> profile;
        std::string password;  // a sensitive value
        bool second;           // an answer may be that to one before it
    };
    std::optional<Sent> sent_;
};

}  // namespace zorvanelink::ui

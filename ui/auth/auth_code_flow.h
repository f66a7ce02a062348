// Runs the second factor of a login: one dialog, from the demand to the gateway's verdict. GUI
// thread.
#pragma once

#include "ui/auth/auth_dialog.h"
#include "ui/auth/dialog_flow.h"

namespace zorvanelink::ui {

class AuthCodeFlow : public DialogFlow<AuthDialog> {
    Q_OBJECT

  public:
    // The gateway gives up shortly after.
    static constexpr std::chrono::milliseconds kAuthTime{585000};

    explicit AuthCodeFlow(Session& session);

    bool OnAnswer(common::MsgCode code) override;

  public Q_SLOTS:
    // For the running profile, whose context says what kind of code.
    void onNeedSendAuthCode();
    void onSendAuthCode(QString const& code);
    void onRequestAuthCode();
    void onAuthTimerTimeout();

  private:
    void onGivenUp();
    void onFinished(int result, bool itself) override;

    Deadline deadline_;
};

}  // namespace zorvanelink::ui

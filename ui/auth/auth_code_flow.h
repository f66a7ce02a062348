// Runs the second factor of a login: one dialog, from the demand to the gateway's verdict. GUI
// thread; the dialog is modal without an event loop of its own.
#pragma once

#include <QObject>
#include <QPointer>

#include "ui/session/session.h"

namespace zorvanelink::ui {

class AuthDialog;

class AuthCodeFlow : public QObject, public Conversation {
    Q_OBJECT

  public:
    // The gateway gives up shortly after.
    static constexpr std::chrono::milliseconds kAuthTime{585000};

    explicit AuthCodeFlow(Session& session);
    ~AuthCodeFlow() override;

    bool OnAnswer(common::MsgCode code) override;
    void OnLost() override;
    void OnEnded() override { close(); }

  public Q_SLOTS:
    // For the running profile, whose context says what kind of code.
    void onNeedSendAuthCode();
    void onSendAuthCode(QString const& code);
    void onRequestAuthCode();
    void onAuthTimerTimeout();

  private:
    void onAuthCodeRetryLimit();
    void onGivenUp();
    void onFinished(AuthDialog& dialog, int result);
    void close();

    Session& session_;
    Deadline deadline_;
    QPointer<AuthDialog> dialog_;  // while it is open
};

}  // namespace zorvanelink::ui

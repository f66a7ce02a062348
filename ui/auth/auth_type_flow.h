// Runs the choice of the login's type: one dialog at a time, and what follows from its end.
// GUI thread; the dialog is modal, so the service keeps speaking meanwhile.
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "ui/auth/auth_config_base.h"
#include "ui/session/session.h"

namespace zorvanelink::ui {

class AuthTypeDialog;

class AuthTypeFlow : public QObject, public Conversation {
    Q_OBJECT

  public:
    explicit AuthTypeFlow(Session& session);

    // The user may go on choosing: the login that follows is a new attempt.
    bool OutlivesSession() const override { return true; }
    void OnLost() override {}
    void OnEnded() override;
    void StopDeadline() override { selectAuthTypeTimer_.stop(); }

  public Q_SLOTS:
    // For the running profile. With `select` the user may choose among all types, without it the
    // dialog is reduced to the profile's type. A request is ignored while a dialog stands.
    void onNeedSelectAuthType(bool select);
    void onSelectAuthTypeTimerTimeout();

  Q_SIGNALS:
    void SelectAuthTypeTimeout();

  private:
    enum class End { kLogin, kCancelled, kSuperseded };
    End runDialog(std::shared_ptr<Profile> const& profile, bool select);
    void giveUp(Profile& profile);

    Session& session_;
    QPointer<AuthTypeDialog> dialog_;  // while it is open
    bool superseded_ = false;
    QTimer selectAuthTypeTimer_;  // nothing starts it: the user may take any time
};

}  // namespace zorvanelink::ui

// Runs the choice of the login's type: one dialog at a time, and what follows from its end. GUI
// thread.
#pragma once

#include <QTimer>

#include "ui/auth/auth_type_dialog.h"
#include "ui/auth/dialog_flow.h"

namespace zorvanelink::ui {

class AuthTypeFlow : public DialogFlow<AuthTypeDialog> {
    Q_OBJECT

  public:
    explicit AuthTypeFlow(Session& session);

    // The user may go on choosing: the login that follows is a new attempt.
    bool OutlivesSession() const override { return true; }
    void OnLost() override {}
    void StopDeadline() override { selectAuthTypeTimer_.stop(); }

  public Q_SLOTS:
    // For the running profile. With `select` the user may choose among all types, without it the
    // dialog is reduced to the profile's type. A request is ignored while a dialog stands.
    void onNeedSelectAuthType(bool select);
    void onSelectAuthTypeTimerTimeout();

  Q_SIGNALS:
    void SelectAuthTypeTimeout();

  private:
    void onStartConnect(QString const& name);
    void onFinished(int result, bool itself) override;

    std::shared_ptr<Profile> profile_;  // of the dialog
    QTimer selectAuthTypeTimer_;        // nothing starts it: the user may take any time
};

}  // namespace zorvanelink::ui

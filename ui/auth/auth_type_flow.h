// Runs the choice of the login's type: one dialog at a time, and what follows from its end.
// GUI thread; the dialog is modal, so the service keeps speaking meanwhile.
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include "ui/auth/auth_config_base.h"
#include "ui/session/connect_flow.h"
#include "ui/session/session_dialogs.h"

namespace zorvanelink::ui {

class AuthTypeDialog;

class AuthTypeFlow : public QObject {
    Q_OBJECT

  public:
    struct Services {
        ConnectionState& state;
        StatusUpdater& updater;
        ConnectFlow& flow;
        SessionDialogs& dialogs;
        AuthConfigBase::Services input;
        QWidget* dialogParent;
    };

    explicit AuthTypeFlow(Services services, QObject* parent = nullptr);

  public Q_SLOTS:
    // For the running profile. With `select` the user may choose among all types, without it the
    // dialog is reduced to the profile's type. A request is ignored while a dialog stands.
    void onNeedSelectAuthType(bool select);
    void onSelectAuthTypeTimerTimeout();
    void StopSelectAuthTypeTimer() { selectAuthTypeTimer_.stop(); }
    // After the box of a failure: an open dialog may be used again.
    void onCriticalBoxShown();

  Q_SIGNALS:
    // The login that the dialog asked for. Queued: the dialog is gone.
    void StartConnect(QString profileName, bool queryAuthType);
    void SelectAuthTypeTimeout();

  private:
    bool runDialog(std::shared_ptr<Profile> const& profile, bool select);
    void giveUp(std::string const& name);

    Services services_;
    QPointer<AuthTypeDialog> dialog_;  // while it is open
    QTimer selectAuthTypeTimer_;       // nothing starts it: the user may take any time
};

}  // namespace zorvanelink::ui

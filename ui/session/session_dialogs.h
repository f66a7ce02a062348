// The dialogs of a login that may stand while the service speaks. A flow enters its own here while
// it is open; who shows a failure or ends a session looks here. GUI thread.
#pragma once

#include <QDialog>
#include <QPointer>

namespace zorvanelink::ui {

struct SessionDialogs {
    QPointer<QDialog> authDialog;       // second-factor code
    QPointer<QDialog> authTypeDialog;   // choice of the login's type
    QPointer<QDialog> changePwdDialog;  // new password
};

}  // namespace zorvanelink::ui

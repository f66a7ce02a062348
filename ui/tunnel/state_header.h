// The row above the tabs: shield, state, profile and duration.
#pragma once

#include <QLabel>
#include <QWidget>

#include "ui/config/connect_status.h"
#include "ui/widgets/elided_label.h"

namespace zorvanelink::ui {

// The shield of a state: "shield_connected" and so on, below ":/assets/images/".
QString ShieldImage(ConnectStatus status, bool large);

class StateHeader : public QWidget {
    Q_OBJECT

  public:
    explicit StateHeader(QWidget* parent = nullptr);

    void SetState(ConnectStatus status, QString const& stateText, QString const& profileName);
    void SetDuration(QString const& text);  // empty shows the profile alone

  private:
    void refreshDetail();

    QString profile_;
    QString duration_;
    QLabel* shield_;
    QLabel* title_;
    ElidedLabel* detail_;  // a long name is cut, the duration behind it is not
};

}  // namespace zorvanelink::ui

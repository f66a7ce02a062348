// The row above the tabs: shield, state, profile and duration.
#pragma once

#include <QLabel>
#include <QWidget>

#include "ui/widgets/elided_label.h"
#include "ui/widgets/look.h"

namespace zorvanelink::ui {

class StateHeader : public QWidget {
    Q_OBJECT

  public:
    explicit StateHeader(QWidget* parent = nullptr);

    void SetState(Look look, QString const& stateText, QString const& profileName);
    // What stands behind the profile's name, of a connection and of a login; empty for nothing.
    void SetDuration(QString const& text);
    void SetProgress(QString const& text);

  private:
    void refreshDetail();

    QString profile_;
    QString duration_;
    QString progress_;
    QLabel* shield_;
    ElidedLabel* title_;
    ElidedLabel* detail_;  // a long name is cut, the duration behind it is not
};

}  // namespace zorvanelink::ui

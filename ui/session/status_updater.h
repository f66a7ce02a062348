// Applies a state to the connection and announces it: the only place where the state moves.
#pragma once

#include <QObject>
#include <QString>

#include "ui/session/connection_state.h"

namespace zorvanelink::ui {

class StatusUpdater : public QObject {
    Q_OBJECT

  public:
    explicit StatusUpdater(ConnectionState& state, QObject* parent = nullptr);

    // An unknown number clears the display and is told as it came.
    void UpdateConnectStatus(std::string const& name, ConnectStatus status);
    // A start or stop is on its way and has no status yet, or nobody waits for one any more.
    void AnnounceRequest() { Q_EMIT StateChanged(); }
    // For the card of a start that was refused: nothing of the state moves.
    void AnnounceRefusal(std::string const& name);

  Q_SIGNALS:
    void DisplayInfoCleared(bool clearAll);
    void WentOnline(QString name);  // before the views are told, once a status Connected
    // Every card listens.
    void NotifyConnectStatus(QString name, ConnectStatus status);
    // After every change, for the views that follow from the state.
    void StateChanged();

  private:
    ConnectionState& state_;
};

}  // namespace zorvanelink::ui

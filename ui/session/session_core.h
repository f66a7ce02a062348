// What every part of a session works with: what it knows, how that moves, and whom it tells. The
// only place where the connection's state moves. GUI thread.
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "ui/config/config.h"
#include "ui/link/service_link.h"
#include "ui/session/attempt.h"
#include "ui/session/attempt_secrets.h"
#include "ui/session/connection_state.h"
#include "ui/session/context.h"
#include "ui/session/conversation.h"
#include "ui/session/deadline.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

class SessionCore : public QObject {
    Q_OBJECT

  public:
    struct Environment {
        Config& config;
        Prompts& prompts;
        ServiceLink& link;
        QWidget* window;  // what dialogs and boxes stand over; null without widgets
        Deadline::Clock clock = {};
    };

    explicit SessionCore(Environment const& environment);

    Config& config;
    Prompts& prompts;
    ServiceLink& link;
    QWidget* const window;
    Deadline::Clock const clock;  // of what a login waits for

    ConnectionState state;
    Context context;
    AttemptSecrets secrets;
    OpenConversation conversation;

    // For what goes on after a nested event loop.
    Attempt Now() const { return Attempt(state); }
    // The profile of the current connection, or null.
    std::shared_ptr<Profile> RunningProfile() const;
    // The profile that a record of that name concerns: the running one, or null with the reason
    // in the log.
    std::shared_ptr<Profile> Addressee(std::string const& profileName) const;
    // A message of the conversation with the service; logged without its secrets. False when it
    // has not left.
    bool Send(std::string const& json);

    // An unknown number clears the display and is told as it came.
    void UpdateConnectStatus(std::string const& name, ConnectStatus status);
    // Counts a page that nobody clicked: three of them in ten seconds at most.
    bool MayOpenUnasked();
    // The service wants an answer, and the user may be elsewhere. `what` names it in a word or two.
    void Demand(QString const& what);
    // What the state says besides the status has changed.
    void Announce();
    // Why the end that comes next comes: the first line of the text, a detail left out.
    void NoteReason(QString const& text);

  Q_SIGNALS:
    // A status has been applied, before the views are rendered.
    void NotifyConnectStatus(QString name, ConnectStatus status);
    // After every change, for the views that follow from state and context.
    void Changed();
    // A stop is about to be sent: what still owes the service an answer gives it now.
    void Stopping();
    // In the Context already; while online.
    void NetConfigArrived();
    void StatisticsArrived();
    void ClientAddressChanged(QString address);
    void RecvDomianRoute(core::sslvpn::DomainRouteAddRouteData const& route);
    void Demanded(QString const& what);
    // What the service asks of the user. Who answers may run a dialog at once.
    void NeedSelectAuthType(bool select);
    void NeedSendAuthCode();
    // An answer of the gateway to a change of the password.
    void ChangePWDRetSignal(int code);
    void NeedChangePwd(zorvanelink::core::sslvpn::CLMsgCommonReplyData const& data);

  private:
    void noteEnd(std::string const& name);

    std::vector<std::chrono::steady_clock::time_point> openedUnasked_;  // lately
};

}  // namespace zorvanelink::ui

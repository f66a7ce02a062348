// The session with the service: what is known of the connection, every road that moves it, and the
// wiring of these to each other and to the link, once. The window, the tests and the benchmarks
// build this same object. GUI thread.
//
// Outward it has the signals of SessionCore; whoever shows something renders it from `state` and
// `context` at each Changed.
#pragma once

#include "ui/session/message_dispatcher.h"

namespace zorvanelink::ui {

class Session : public SessionCore {
    Q_OBJECT

  public:
    explicit Session(Environment const& environment);

    // What the user asks for, by a card, the tray or the automatic login.
    void Start(QString const& name) { flow_.Start(name.toStdString()); }
    void Stop(QString const& name);
    // A text of the service.
    bool Receive(std::string const& json) { return dispatcher_.ProcessServiceMsg(json); }
    // The default connection is started, once the link and the adapter can carry it and unless the
    // user has started one by then.
    void AutoLogin();
    // The program ends: the way down, without a word.
    void Leave();

    ConnectFlow& Flow() { return flow_; }
    FailurePresenter& Failures() { return failures_; }
    BoxQueue& Boxes() { return boxes_; }
    CertListRoad& Certificates() { return certificates_; }
    ThirdPartyLogin& ThirdParty() { return handlers_.login.ThirdParty(); }

  private:
    void onLinkState();
    void startDueLogin();
    void startDefault();

    // In the order of dependence.
    CertListRoad certificates_;
    BoxQueue boxes_;
    ConnectFlow flow_;
    FailurePresenter failures_;
    StatusHandlers handlers_;
    StatusTable statuses_;
    MessageDispatcher dispatcher_;
    QMetaObject::Connection dueLogin_;  // while the automatic login waits for link or adapter
};

}  // namespace zorvanelink::ui

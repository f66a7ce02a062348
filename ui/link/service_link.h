// The client's end of the link to the service: connects, finds the service again after a loss,
// and carries messages between the link's threads and the GUI.
//
// GUI thread, but for InitIPC. The service is never started from here; while it is absent the
// threads keep knocking, without limit and without a box.
#pragma once

#include <QObject>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <memory>
#include <string>

#include "ui/link/link_core.h"
#include "ui/link/silence_watch.h"

namespace zorvanelink::ui {

enum class LinkState {
    kFirstConnect,  // never linked yet: the wait form tells
    kLinked,
    kReconnecting,
};

class ServiceLink : public QObject, private LinkEvents {
    Q_OBJECT

  public:
    struct Pauses {
        std::chrono::milliseconds first_connect{200};
        std::chrono::milliseconds reconnect{100};
        std::chrono::milliseconds silence{5000};  // how long a service may say nothing
    };
    static constexpr int kReconnectLogPeriod = 100;  // failed tries
    static constexpr int kHeartbeatLossLimit = 3;    // time-outs in a row that are only logged

    ServiceLink(LinkCore::LinkFactory factory, Pauses pauses, QObject* parent = nullptr);
    ~ServiceLink() override;

    // Shows the wait form and starts the thread that connects.
    void Start();
    // Ends the threads (5000 ms and 1000 ms are waited for) and the link. Safe to call twice.
    void Stop();
    // From here on the going of the link raises no reaction.
    void IgnoreLoss();

    bool InitIPC(bool verbose, bool logFailure);
    void IPCReconnect();

    bool SendToService(char const* data, unsigned long len);
    bool SendToService(QString const& text);
    bool IsReady() const { return core_->Ready(); }
    LinkState State() const { return state_; }

    // While it is on, a service that said something all the time and falls silent is told by
    // SilenceChanged: on while a session stands.
    void WatchSilence(bool on) { silence_.Watch(on); }
    // The service's counters have come: it says something all the time. Heartbeats tell that by
    // themselves.
    void NotePeriodic() {
        core_->NotePeriodic();
        silence_.Heard();
    }
    std::optional<QDateTime> SilentSince() const { return silence_.Since(); }

    // The oldest text from the service; empty when none waits.
    std::string GetServiceData() { return core_->GetServiceData(); }

  Q_SIGNALS:
    // From the link's threads. The generation tells which link speaks: one that has been replaced
    // is not listened to.
    void IPCTimeout(int count, quint64 generation);
    void IPCError(int code, quint64 generation);
    void RecvServiceData(QString wakeUp);
    void LinkedUp(bool first);
    void ServiceUse(bool by_another);
    void BytesAwaited();
    // From the GUI thread.
    void StateChanged();
    void Loading(int mode, QString text);  // 0 shows the wait form, 1 hides it
    // Once at the first link, and once more when that link swallowed what they led to: the service
    // closed it at once.
    void CheckUpdate();
    void SignalAutoLogin();
    // After the reconnect has been started. Not of a link that the service closed at once.
    void Lost();
    // Of a link that is up: what it says before that waits until everything of the link-up is told.
    void MessageArrived(std::string const& json);
    // Since when the service has said nothing; nothing when it speaks again, the link has gone or
    // nobody watches any more.
    void SilenceChanged(std::optional<QDateTime> const& since);

  private Q_SLOTS:
    void onProcessIPCTimeout(int count, quint64 generation);
    void onProcessIPCError(int code, quint64 generation);
    void onRecvServiceData(QString const& wakeUp);
    void onIPCLogTimerTimeout();
    void onLinkedUp(bool first);
    void onServiceUse(bool byAnother);

  private:
    // LinkEvents, on the link's threads.
    void LinkUp(bool first) override;
    void MessageWaiting() override;
    void HeartbeatTimeout(int count, std::uint64_t generation) override;
    void LinkError(int code, std::uint64_t generation) override;
    void ServiceInUse(bool in_use) override;
    void BytesArrived() override;

    void announceLinkUp();
    void setState(LinkState state);
    void lose(quint64 generation);
    void endReconnect();
    void drainTextsSoon();

    std::shared_ptr<LinkCore> const core_;
    Pauses const pauses_;
    LinkState state_ = LinkState::kFirstConnect;
    QThread* connectThread_ = nullptr;
    QThread* reconnectThread_ = nullptr;
    bool reconnectAgain_ = false;
    bool ignoreLoss_ = false;
    bool pauseFirst_ = false;   // the next reconnect begins with the pause
    bool firstUpDue_ = true;    // what the first link leads to is still to be told
    bool firstUpTold_ = false;  // on the current link
    bool inUseShown_ = false;
    int early_ = 0;  // wake-ups before the link was up
    SilenceWatch silence_;
    QTimer ipcLogTimer_;
};

}  // namespace zorvanelink::ui

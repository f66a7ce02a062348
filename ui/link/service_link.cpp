#include "ui/link/service_link.h"

#include "components/logger/logger.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using std::chrono::milliseconds;

constexpr unsigned kConnectThreadWaitMs = 5000;
constexpr unsigned kReconnectThreadWaitMs = 1000;
constexpr milliseconds kIPCLogPeriod{1000};

struct Attempts {
    bool first;
    bool pause_first;
    milliseconds pause;
};

// The loop owns the core, not the window's objects: one that is late at the end harms nobody.
void connectLoop(std::shared_ptr<LinkCore> const& core, Attempts attempts) {
    if (attempts.pause_first) {
        core->Pause(attempts.pause);
    }
    bool log_now = true;
    for (int failures = 0; !core->Quitting();) {
        if (core->Connect(log_now)) {
            core->ReportLinkUp(attempts.first);
            return;
        }
        core->Pause(attempts.pause);
        // In a reconnect only the first failure of a series, then one line each ten seconds.
        log_now = attempts.first || ++failures % ServiceLink::kReconnectLogPeriod == 0;
    }
}

void waitAndDelete(QThread* thread, unsigned wait_ms) {
    if (thread != nullptr && thread->wait(wait_ms)) {
        delete thread;
    }
    // One that is still inside a connect dies with the process.
}

}  // namespace

ServiceLink::ServiceLink(LinkCore::LinkFactory factory, Pauses pauses, QObject* parent)
    : QObject(parent),
      core_(std::make_shared<LinkCore>(std::move(factory), static_cast<LinkEvents*>(this))),
      pauses_(pauses),
      silence_(*core_, pauses.silence) {
    ipcLogTimer_.setSingleShot(true);
    ipcLogTimer_.setInterval(kIPCLogPeriod);
    connect(&ipcLogTimer_, &QTimer::timeout, this, &ServiceLink::onIPCLogTimerTimeout);
    // Queued, whatever thread reports: the core holds its lock meanwhile.
    connect(this, &ServiceLink::RecvServiceData, this, &ServiceLink::onRecvServiceData,
            Qt::QueuedConnection);
    connect(this, &ServiceLink::IPCTimeout, this, &ServiceLink::onProcessIPCTimeout,
            Qt::QueuedConnection);
    connect(this, &ServiceLink::IPCError, this, &ServiceLink::onProcessIPCError,
            Qt::QueuedConnection);
    connect(this, &ServiceLink::LinkedUp, this, &ServiceLink::onLinkedUp, Qt::QueuedConnection);
    connect(this, &ServiceLink::ServiceUse, this, &ServiceLink::onServiceUse, Qt::QueuedConnection);
    connect(this, &ServiceLink::BytesAwaited, &silence_, &SilenceWatch::End, Qt::QueuedConnection);
    connect(&silence_, &SilenceWatch::Changed, this, &ServiceLink::SilenceChanged);
}

ServiceLink::~ServiceLink() {
    Stop();
}

void ServiceLink::Start() {
    Q_EMIT Loading(0, GetTrMsg(MsgCode::UI_INFO_CONNECTING_SERVICE));
    connectThread_ =
        QThread::create([core = core_, attempts = Attempts{true, false, pauses_.first_connect}] {
            connectLoop(core, attempts);
        });
    connectThread_->start(QThread::InheritPriority);
}

void ServiceLink::Stop() {
    core_->Quit();
    waitAndDelete(std::exchange(connectThread_, nullptr), kConnectThreadWaitMs);
    waitAndDelete(std::exchange(reconnectThread_, nullptr), kReconnectThreadWaitMs);
    core_->DrainLinkTexts();
    core_->StopLink();
}

void ServiceLink::IgnoreLoss() {
    ignoreLoss_ = true;
}

bool ServiceLink::InitIPC(bool /*verbose*/, bool logFailure) {
    return core_->Connect(logFailure);
}

void ServiceLink::IPCReconnect() {
    setState(LinkState::kReconnecting);
    if (reconnectThread_ != nullptr) {
        reconnectAgain_ = true;
        return;
    }
    Attempts const attempts{false, std::exchange(pauseFirst_, false), pauses_.reconnect};
    reconnectThread_ = QThread::create([core = core_, attempts] { connectLoop(core, attempts); });
    reconnectThread_->start(QThread::InheritPriority);
}

// The reconnect thread has said its last word. A loss that came before it is dealt with now.
void ServiceLink::endReconnect() {
    QThread* const thread = std::exchange(reconnectThread_, nullptr);
    if (thread == nullptr) {
        return;
    }
    thread->wait();
    delete thread;
    if (std::exchange(reconnectAgain_, false) && !core_->Ready()) {
        IPCReconnect();
    }
}

bool ServiceLink::SendToService(char const* data, unsigned long len) {
    bool const sent = core_->Send(data, len);
    drainTextsSoon();
    return sent;
}

bool ServiceLink::SendToService(QString const& text) {
    QByteArray const bytes = text.toUtf8();
    return SendToService(bytes.constData(), static_cast<unsigned long>(bytes.size()));
}

void ServiceLink::LinkUp(bool first) {
    Q_EMIT LinkedUp(first);
}

void ServiceLink::MessageWaiting() {
    Q_EMIT RecvServiceData(QString());
}

void ServiceLink::HeartbeatTimeout(int count, std::uint64_t generation) {
    Q_EMIT IPCTimeout(count, generation);
}

void ServiceLink::LinkError(int code, std::uint64_t generation) {
    Q_EMIT IPCError(code, generation);
}

void ServiceLink::ServiceInUse(bool in_use) {
    Q_EMIT ServiceUse(in_use);
}

void ServiceLink::BytesArrived() {
    Q_EMIT BytesAwaited();
}

void ServiceLink::onLinkedUp(bool first) {
    drainTextsSoon();
    if (!first) {
        endReconnect();
    }
    if (core_->Ready()) {
        setState(LinkState::kLinked);
        announceLinkUp();
        for (; early_ > 0; --early_) {
            MessageWaiting();
        }
    }
}

void ServiceLink::announceLinkUp() {
    firstUpTold_ = std::exchange(firstUpDue_, false);
    bool const formShown = std::exchange(inUseShown_, false) || firstUpTold_;
    if (formShown) {
        Q_EMIT Loading(1, QString());
    }
    if (firstUpTold_) {
        Q_EMIT CheckUpdate();
        Q_EMIT SignalAutoLogin();
    }
}

void ServiceLink::onServiceUse(bool byAnother) {
    if (byAnother) {
        inUseShown_ = true;
        Q_EMIT Loading(
            0, Translate(QT_TRANSLATE_NOOP("ui", "Another session is using the backend service")));
    } else if (std::exchange(inUseShown_, false)) {
        // What the form said before; at a reconnect there was none.
        Q_EMIT Loading(firstUpDue_ ? 0 : 1,
                       firstUpDue_ ? GetTrMsg(MsgCode::UI_INFO_CONNECTING_SERVICE) : QString());
    }
}

void ServiceLink::onProcessIPCTimeout(int count, quint64 generation) {
    if (ignoreLoss_ || !core_->IsCurrent(generation)) {
        return;
    }
    Log().error("ipc timeout num {}", count);
    if (count > kHeartbeatLossLimit) {
        lose(generation);
    }
}

void ServiceLink::onProcessIPCError(int code, quint64 generation) {
    if (ignoreLoss_ || !core_->IsCurrent(generation)) {
        return;
    }
    Log().error("ipc error with code {}", code);
    lose(generation);
}

void ServiceLink::lose(quint64 generation) {
    core_->DrainLinkTexts();
    auto const loss = core_->Lose(generation);
    if (!loss) {
        return;
    }
    // A service that greets and goes is not to be met hundreds of times a second.
    pauseFirst_ = loss->young;
    bool const told = std::exchange(firstUpTold_, false);
    firstUpDue_ = firstUpDue_ || (loss->at_once && told);
    silence_.End();
    IPCReconnect();
    if (!loss->at_once) {
        Q_EMIT Lost();
    }
}

// One text a wake-up: what its handler opens (a box runs the event loop) holds up no other text.
void ServiceLink::onRecvServiceData(QString const& /*wakeUp*/) {
    drainTextsSoon();
    if (state_ != LinkState::kLinked) {
        ++early_;
        return;
    }
    if (std::string const json = GetServiceData(); !json.empty()) {
        Q_EMIT MessageArrived(json);
        Log().debug("on recv service done ");
    }
}

void ServiceLink::onIPCLogTimerTimeout() {
    core_->DrainLinkTexts();
}

// The link's texts follow its activity, so an idle link needs no timer.
void ServiceLink::drainTextsSoon() {
    if (!ipcLogTimer_.isActive() && core_->HasLinkTexts()) {
        ipcLogTimer_.start();
    }
}

void ServiceLink::setState(LinkState state) {
    if (std::exchange(state_, state) != state) {
        Q_EMIT StateChanged();
    }
}

}  // namespace zorvanelink::ui

#include "components/ipc/ipc.h"

#include <algorithm>
#include <utility>

#include "components/ipc/message_queue_ipc.h"

namespace zorvanelink::components::ipc {
namespace {

// A sender that opens its queue at the first message, and again as long as that failed.
class QueueSender {
  public:
    explicit QueueSender(char const* name) : name_(name) {}

    unsigned int Send(char const* data, unsigned int len) {
        std::lock_guard lock(mutex_);
        if (!ipc_ || !ipc_->IsOpen()) {
            ipc_ = std::make_shared<MessageQueueIPC>(kMessageQueueSend, name_, kMessageQueueMaxNum,
                                                     kMessageQueueMaxLen);
        }
        return ipc_->Send(data, len);
    }

  private:
    char const* name_;
    std::mutex mutex_;
    std::shared_ptr<MessageQueueIPC> ipc_;
};

}  // namespace

void LinkTexts::Append(Kind kind, std::string_view text) {
    std::lock_guard lock(mutex_);
    std::string& target = texts_[kind];
    target.append(text);
    if (target.size() > kMaxSize) {
        std::size_t const excess = target.size() - kMaxSize;
        std::size_t const line_end = target.find('\n', excess - 1);
        target.erase(0, line_end < target.size() - 1 ? line_end + 1 : excess);
    }
}

void LinkTexts::Set(Kind kind, std::string_view text) {
    std::lock_guard lock(mutex_);
    texts_[kind] = text;
}

std::string LinkTexts::Take(Kind kind) {
    std::lock_guard lock(mutex_);
    return std::exchange(texts_[kind], {});
}

bool LinkTexts::Empty() const {
    std::lock_guard lock(mutex_);
    return std::all_of(std::begin(texts_), std::end(texts_),
                       [](std::string const& text) { return text.empty(); });
}

unsigned int IPC::Send(char const*, unsigned int) {
    return 0;
}

unsigned int IPC::Recv(char*, unsigned int) {
    return 0;
}

bool IPC::SendCommonIPCMsgTimeout(char const*, unsigned long, unsigned int) {
    return true;
}

int IPC::Ping() {
    return 0;
}

bool IPC::Run() {
    return true;
}

bool IPC::Connect() {
    return false;
}

bool IPC::AsyncAccept() {
    return false;
}

bool IPC::Disconnect() {
    return false;
}

void IPC::Stop() {
}

void IPC::HoldReading(bool) {
}

void IPC::RegisterIPCMsgCallback(IPCMsgType type, MsgCallback const& callback) {
    msg_callbacks_.emplace(type, callback);
}

void IPC::SetHeartbeatTimeoutHandler(HeartbeatHandler const& handler) {
    heartbeat_timeout_handler_ = handler;
}

void IPC::SetHeartbeatErrorHandler(HeartbeatHandler const& handler) {
    heartbeat_error_handler_ = handler;
}

void IPC::SetBytesHandler(std::function<void()> const& handler) {
    bytes_handler_ = handler;
}

void IPC::SetClientConnectedHandler(std::function<void()> const& handler) {
    client_connected_handler_ = handler;
}

void IPC::SetClientDisconnectedHandler(std::string const& name, std::function<void()> handler) {
    std::lock_guard lock(disconnected_mutex_);
    client_disconnected_handlers_[name] = std::move(handler);
}

void IPC::ProcessIPCMsg(IPCMsg const& msg) const {
    dispatch(msg.type, msg.payload(), msg.length);
}

void IPC::dispatch(IPCMsgType type, char const* payload, int length) const {
    if (auto const found = msg_callbacks_.find(type); found != msg_callbacks_.end()) {
        found->second(payload, length);
    }
}

void IPC::noteBytes() const {
    if (bytes_handler_) {
        bytes_handler_();
    }
}

void IPC::noteSignOfLife() {
    last_heartbeat_time_ = Clock::now();
    heartbeat_timeout_count_ = 0;
}

void IPC::runClientDisconnectedHandlers() {
    std::map<std::string, std::function<void()>> handlers;
    {
        std::lock_guard lock(disconnected_mutex_);
        handlers.swap(client_disconnected_handlers_);
    }
    for (auto const& [name, handler] : handlers) {
        try {
            if (handler) {
                handler();
            }
        } catch (...) {
            texts_->Append(LinkTexts::kError, "Exception in client disconnected handler\n");
        }
    }
}

unsigned int send_to_ui(char const* data, unsigned int len) {
    static QueueSender sender(kMessageQueueToUi);
    return sender.Send(data, len);
}

unsigned int send_to_service(char const* data, unsigned int len) {
    static QueueSender sender(kMessageQueueToService);
    return sender.Send(data, len);
}

unsigned int recv_from_ui(std::shared_ptr<IPC> ipc, char* buffer, unsigned int len) {
    return ipc->Recv(buffer, len);
}

unsigned int recv_from_service(std::shared_ptr<IPC> ipc, char* buffer, unsigned int len) {
    return ipc->Recv(buffer, len);
}

}  // namespace zorvanelink::components::ipc

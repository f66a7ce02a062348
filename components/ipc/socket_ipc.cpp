#include "components/ipc/socket_ipc.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <cerrno>
#include <limits>

#include "components/ipc/socket_core.h"
#include "components/logger/logger.h"

namespace zorvanelink::components::ipc {
namespace {

using components::logger::Log;

constexpr auto kHeartbeatTick = std::chrono::milliseconds(200);
constexpr auto kHeartbeatTimeout = std::chrono::nanoseconds(2'000'999'999);
constexpr auto kSendPoll = std::chrono::milliseconds(1);
constexpr int kReadsInATurn = 64;  // then the worker sees what else waits

std::size_t frameSize(IPCMsg const& msg) {
    return kIPCMsgHeaderLen + static_cast<std::size_t>(std::max(msg.length, 0));
}

char const* bytesOf(IPCMsg const& msg) {
    return reinterpret_cast<char const*>(&msg);
}

std::shared_ptr<PendingWrite> makeWrite(char const* data, std::size_t len) {
    auto write = std::make_shared<PendingWrite>();
    write->bytes.assign(data, data + len);
    return write;
}

std::shared_ptr<PendingWrite> makeCommonWrite(char const* data, std::size_t len) {
    auto write = std::make_shared<PendingWrite>();
    auto const header = MakeIPCMsgHeader(kIPCCommon, static_cast<std::int32_t>(len));
    write->bytes.reserve(sizeof header + len);
    write->bytes.assign(bytesOf(header), bytesOf(header) + sizeof header);
    write->bytes.insert(write->bytes.end(), data, data + len);
    return write;
}

}  // namespace

SocketIPC::SocketIPC(Mode mode, boost::asio::io_context* context, PortPlace place)
    : place_(std::move(place)), port_(place_.port), mode_(mode) {
    try {
        core_ = std::make_unique<Core>(context);
    } catch (std::exception const&) {  // out of descriptors; Run says so
    }
}

SocketIPC::~SocketIPC() {
    if (core_ && core_->worker.joinable()) {
        if (core_->worker.get_id() == std::this_thread::get_id()) {
            core_->worker.detach();
        } else {
            core_->worker.join();
        }
    }
}

bool SocketIPC::Run() {
    if (!core_) {
        texts_->Set(LinkTexts::kError, "Failed to new heartbeat");
        return false;
    }
    return startWorker() && Init();
}

bool SocketIPC::startWorker() {
    std::lock_guard lock(core_->mutex);
    if (core_->stopping) {
        return false;
    }
    if (!core_->owned || core_->worker.joinable()) {
        return true;
    }
    try {
        core_->worker = std::thread([self = shared_from_this()] { self->Forever(); });
    } catch (std::exception const& failure) {
        texts_->Set(LinkTexts::kError, failure.what());
        return false;
    }
    return true;
}

void SocketIPC::Forever() {
    for (;;) {
        try {
            core_->context.run();
            break;
        } catch (std::exception const& failure) {
            texts_->Append(LinkTexts::kError,
                           fmt::format("Exception in io context: {}\n", failure.what()));
        }
    }
    texts_->Append(LinkTexts::kError, "io context stopped\n");
}

void SocketIPC::Stop() {
    if (!core_) {
        return;
    }
    zeroReadCount();
    bool const on_worker = core_->OnWorker();
    std::shared_ptr<DeadlineSocket> socket;
    std::thread worker;
    bool first = false;
    {
        std::lock_guard lock(core_->mutex);
        first = !core_->stopping.exchange(true);
        socket = core_->socket;
        if (!on_worker) {
            worker = std::move(core_->worker);
        }
    }
    if (socket) {
        socket->ShutDown();
    }
    if (first) {
        if (on_worker || (core_->owned && !worker.joinable())) {
            closeAll();
        } else {
            boost::asio::post(core_->context, [self = shared_from_this()] { self->closeAll(); });
        }
        // Everything pending has been cancelled: the worker runs out of work by itself, and no
        // handler stays behind that would keep the link alive.
        core_->work.reset();
    }
    if (worker.joinable()) {
        worker.join();
    }
}

void SocketIPC::closeAll() {
    ++core_->heartbeat_generation;
    core_->heartbeat_timer.cancel();
    closeRole();
    std::shared_ptr<DeadlineSocket> socket;
    {
        std::lock_guard lock(core_->mutex);
        socket.swap(core_->socket);
    }
    if (socket) {
        socket->close();
    }
}

bool SocketIPC::isStopping() const {
    return core_->stopping;
}

std::shared_ptr<DeadlineSocket> SocketIPC::currentSocket() const {
    if (!core_) {
        return nullptr;
    }
    std::lock_guard lock(core_->mutex);
    return core_->socket;
}

bool SocketIPC::replaceSocket(std::shared_ptr<DeadlineSocket> socket) {
    {
        std::lock_guard lock(core_->mutex);
        if (core_->stopping) {
            return false;
        }
        socket.swap(core_->socket);
    }
    closeOnWorker(socket);
    return true;
}

bool SocketIPC::dropSocket(std::shared_ptr<DeadlineSocket> const& socket) {
    {
        std::lock_guard lock(core_->mutex);
        if (!socket || core_->socket != socket) {
            return false;
        }
        core_->socket.reset();
    }
    closeOnWorker(socket);
    return true;
}

void SocketIPC::closeOnWorker(std::shared_ptr<DeadlineSocket> const& socket) {
    if (socket) {
        socket->ShutDown();
        runOnWorker([socket] { socket->close(); });
    }
}

bool SocketIPC::runOnWorker(std::function<void()> task) {
    if (core_->OnWorker()) {
        task();
        return true;
    }
    std::lock_guard lock(core_->mutex);
    if (core_->stopping) {
        return false;
    }
    boost::asio::post(core_->context, std::move(task));
    return true;
}

void SocketIPC::callHandler(std::function<void()> const& call) {
    try {
        call();
    } catch (std::exception const& failure) {
        texts_->Append(LinkTexts::kError,
                       fmt::format("Exception in ipc handler: {}\n", failure.what()));
    } catch (...) {
        texts_->Append(LinkTexts::kError, "Exception in ipc handler\n");
    }
}

bool SocketIPC::post(std::shared_ptr<PendingWrite> const& write, char const* null_text) {
    auto const socket = currentSocket();
    if (!socket) {
        texts_->Set(LinkTexts::kError, null_text);
        return false;
    }
    return runOnWorker([socket, write] { socket->ProcessWrite(write); });
}

bool SocketIPC::sendAndWait(std::shared_ptr<PendingWrite> const& write, unsigned int timeout_ms) {
    auto const limit = Clock::now() + std::chrono::milliseconds(timeout_ms);
    if (!post(write, "Get null deadline socket in send timeout")) {
        return false;
    }
    // On the worker nobody else could complete it while we wait.
    bool const may_wait = !core_->OnWorker();
    while (!write->completed) {
        if (!may_wait || Clock::now() > limit) {
            return false;
        }
        std::this_thread::sleep_for(kSendPoll);
    }
    return write->succeeded;
}

bool SocketIPC::SendTimeout(char const* data, unsigned long len, unsigned int timeout_ms) {
    return sendAndWait(makeWrite(data, len), timeout_ms);
}

bool SocketIPC::SendTimeout(IPCMsg const& msg, unsigned int timeout_ms) {
    return SendTimeout(bytesOf(msg), frameSize(msg), timeout_ms);
}

bool SocketIPC::SendCommonIPCMsgTimeout(char const* data, unsigned long len,
                                        unsigned int timeout_ms) {
    if (len > static_cast<unsigned long>(std::numeric_limits<std::int32_t>::max())) {
        texts_->Append(LinkTexts::kError,
                       fmt::format("Message of {} bytes does not fit into a frame\n", len));
        return false;
    }
    return sendAndWait(makeCommonWrite(data, len), timeout_ms);
}

bool SocketIPC::SendAndRecvTimeout(char const* data, unsigned long len, char* reply,
                                   unsigned long& reply_len, unsigned int timeout_ms) {
    if (!currentSocket()) {
        texts_->Set(LinkTexts::kError, "Get null deadline socket in send and recv timeout");
        return false;
    }
    if (!SendTimeout(data, len, timeout_ms / 2) || reply_len == 0 || reply[0] == 0) {
        return false;
    }
    noteSignOfLife();
    return true;
}

bool SocketIPC::SendAndRecvTimeout(IPCMsg const& msg, char* reply, unsigned long& reply_len,
                                   unsigned int timeout_ms) {
    return SendAndRecvTimeout(bytesOf(msg), frameSize(msg), reply, reply_len, timeout_ms);
}

bool SocketIPC::AsyncSend(char const* data, unsigned long len) {
    return post(makeWrite(data, len), "Get null deadline socket in async send");
}

bool SocketIPC::AsyncSend(IPCMsg const& msg) {
    return AsyncSend(bytesOf(msg), frameSize(msg));
}

void SocketIPC::SendHeartbeat() {
    auto const socket = currentSocket();
    if (socket && !socket->IsClosed()) {
        // Behind bytes that the peer does not take, further heartbeats would only pile up.
        if (!socket->WritePending()) {
            socket->ProcessWrite(makeWrite(bytesOf(kIPCHeartbeatMsg), kIPCMsgHeaderLen));
        }
        return;
    }
    texts_->Append(LinkTexts::kInfo, "failed to  send ipc hb\n");
    if (heartbeat_error_handler_) {
        callHandler([this] { heartbeat_error_handler_(0); });
    }
    dropSocket(socket);
}

void SocketIPC::StartHeartbeat() {
    if (!core_) {
        return;
    }
    // Weak: before Run nothing would ever take the task out of the context again.
    runOnWorker([weak = weak_from_this()] {
        auto const self = weak.lock();
        if (self && !self->isStopping()) {
            ++self->core_->heartbeat_generation;
            self->core_->heartbeat_timer.cancel();
            self->noteSignOfLife();
            self->armHeartbeatTimer();
        }
    });
}

void SocketIPC::armHeartbeatTimer() {
    core_->heartbeat_timer.expires_after(kHeartbeatTick);
    core_->heartbeat_timer.async_wait(
        [self = shared_from_this(),
         generation = core_->heartbeat_generation](boost::system::error_code cancelled) {
            if (!cancelled) {
                self->CheckHeartbeatTimer(generation);
            }
        });
}

void SocketIPC::CheckHeartbeatTimer(std::uint64_t generation) {
    if (generation != core_->heartbeat_generation) {
        return;
    }
    if (read_parked_) {
        noteSignOfLife();  // it is we who do not listen
    }
    if (Clock::now() - last_heartbeat_time_.load() > kHeartbeatTimeout) {
        texts_->Append(LinkTexts::kError, "ipc heartbeat timeout\n");
        if (heartbeat_timeout_handler_) {
            int const count = static_cast<int>(++heartbeat_timeout_count_);
            callHandler([this, count] { heartbeat_timeout_handler_(count); });
        }
    }
    // A handler may have stopped the link or started the heartbeat anew.
    if (generation != core_->heartbeat_generation) {
        return;
    }
    if (currentSocket()) {
        SendHeartbeat();
    }
    if (generation == core_->heartbeat_generation) {
        armHeartbeatTimer();
    }
}

void SocketIPC::HoldReading(bool hold) {
    reading_held_ = hold;
    if (hold || !core_) {
        return;
    }
    // Weak: before Run nothing would ever take the task out of the context again.
    runOnWorker([weak = weak_from_this()] {
        auto const self = weak.lock();
        auto const socket = self ? self->currentSocket() : nullptr;
        if (socket && self->read_parked_) {
            self->StartRead(socket);
        }
    });
}

void SocketIPC::StartRead(std::shared_ptr<DeadlineSocket> const& socket) {
    read_parked_ = false;
    if (socket->IsClosed() || isStopping()) {
        return;
    }
    try {
        char* const room = socket->parser().Prepare(DeadlineSocket::kReadChunk);
        socket->stream().async_read_some(
            boost::asio::buffer(room, DeadlineSocket::kReadChunk),
            [self = shared_from_this(), socket](boost::system::error_code const& ec,
                                                std::size_t bytes) {
                self->HandleRead(ec, bytes, socket);
            });
    } catch (std::bad_alloc const&) {
        Log().error("ipc parse buffer data failed");
        readFailed(ENOMEM, 0);
    }
}

void SocketIPC::HandleRead(boost::system::error_code const& ec, std::size_t bytes,
                           std::shared_ptr<DeadlineSocket> const& socket) {
    auto const current = currentSocket();
    if ((current && current != socket) || socket->IsClosed() || isStopping()) {
        return;
    }
    if (ec || bytes == 0) {
        readFailed(ec.value(), bytes);
        return;
    }
    for (int reads = 1;; ++reads) {
        socket->parser().Commit(bytes);
        ++read_count_;
        callHandler([this] { noteBytes(); });
        if (!ParseMsg(*socket)) {
            return;
        }
        if (reading_held_) {
            read_parked_ = true;
            return;
        }
        if (bytes < DeadlineSocket::kReadChunk || reads == kReadsInATurn) {
            break;
        }
        try {
            bytes = socket->ReadNow(socket->parser().Prepare(DeadlineSocket::kReadChunk));
        } catch (std::bad_alloc const&) {
            break;  // StartRead meets it again and reports it
        }
        if (bytes == 0) {
            break;
        }
    }
    StartRead(socket);
}

// False when no further read may follow.
bool SocketIPC::ParseMsg(DeadlineSocket& socket) {
    auto const going = [&] { return !socket.IsClosed() && !isStopping(); };
    bool any = false;
    socket.parser().Parse([&](IPCMsgType type, char const* payload, int length) {
        any = true;
        try {
            dispatch(type, payload, length);
        } catch (std::exception const& failure) {
            texts_->Append(LinkTexts::kError,
                           fmt::format("Exception in ipc callback: {}\n", failure.what()));
        } catch (...) {
            texts_->Append(LinkTexts::kError, "Exception in ipc callback\n");
        }
        return going();
    });
    if (any) {
        noteSignOfLife();
    }
    if (socket.parser().SawBadLength() && !std::exchange(bad_length_told_, true)) {
        texts_->Append(LinkTexts::kError, "Frame header with an impossible length\n");
    }
    return going();
}

void SocketIPC::readFailed(int code, std::size_t bytes) {
    texts_->Append(LinkTexts::kDebug,
                   code == kEndOfFile
                       ? fmt::format("IPC close with [code:{}] size[{}]", code, bytes)
                       : fmt::format("Failed to read in ipc server with error[code:{}] size[{}]",
                                     code, bytes));
    if (heartbeat_error_handler_) {
        callHandler([this, code] { heartbeat_error_handler_(code); });
    }
}

}  // namespace zorvanelink::components::ipc

#include "components/ipc/deadline_socket.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/asio/post.hpp>
#include <thread>

namespace zorvanelink::components::ipc {
namespace {

constexpr auto kConnectPoll = std::chrono::microseconds(1);

// A browser that we open must not hold the connection, and no message waits for an acknowledgement
// of the one before.
int prepared(int descriptor) {
    int const on = 1;
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    ::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return descriptor;
}

}  // namespace

struct DeadlineSocket::ConnectState {
    std::atomic<bool> completed{false};
    std::atomic<bool> succeeded{false};
    std::atomic<bool> abandoned{false};  // the caller has gone, and has said why
};

DeadlineSocket::DeadlineSocket(boost::asio::io_context& context, std::shared_ptr<LinkTexts> texts)
    : stream_(context, Tcp::v4()),
      connect_deadline_(context),
      texts_(std::move(texts)),
      descriptor_(prepared(stream_.native_handle())) {
}

DeadlineSocket::DeadlineSocket(TcpStream stream, std::shared_ptr<LinkTexts> texts)
    : stream_(std::move(stream)),
      connect_deadline_(stream_.get_executor()),
      texts_(std::move(texts)),
      descriptor_(prepared(stream_.native_handle())) {
}

bool DeadlineSocket::connect(Tcp::endpoint const& endpoint) {
    auto const state = std::make_shared<ConnectState>();
    auto const limit = std::chrono::steady_clock::now() + kConnectLimit;
    boost::asio::post(stream_.get_executor(), [self = shared_from_this(), endpoint, state] {
        self->startConnect(endpoint, state);
    });
    while (!state->completed) {
        if (std::chrono::steady_clock::now() > limit) {
            state->abandoned = true;
            texts_->Append(LinkTexts::kError, "Connect time out");
            ShutDown();
            boost::asio::post(stream_.get_executor(),
                              [self = shared_from_this()] { self->close(); });
            return false;
        }
        std::this_thread::sleep_for(kConnectPoll);
    }
    return state->succeeded;
}

void DeadlineSocket::startConnect(Tcp::endpoint const& endpoint,
                                  std::shared_ptr<ConnectState> const& state) {
    if (closed_) {
        state->completed = true;
        return;
    }
    connect_deadline_.expires_after(kConnectDeadline);
    connect_deadline_.async_wait(
        [self = shared_from_this(), state](boost::system::error_code cancelled) {
            if (!cancelled && !state->completed) {
                self->close();
            }
        });
    stream_.async_connect(endpoint,
                          [self = shared_from_this(), state](boost::system::error_code error) {
                              self->connect_deadline_.cancel();
                              self->onConnected(error, *state);
                          });
}

void DeadlineSocket::onConnected(boost::system::error_code error, ConnectState& state) {
    if (!error && !closed_) {
        // A connect to a free local port may meet itself half-way; nobody serves that.
        boost::system::error_code ignored;
        auto const own_end = stream_.local_endpoint(ignored);
        auto const peer_end = stream_.remote_endpoint(error);
        ends_ = {own_end.port(), peer_end.port()};
        if (own_end == peer_end && !error) {
            error = boost::asio::error::connection_refused;
            close();
        }
    }
    if (error && !state.abandoned) {
        texts_->Append(LinkTexts::kError, error.message());
    }
    state.succeeded = !error && !closed_;
    state.completed = true;
}

void DeadlineSocket::ProcessWrite(std::shared_ptr<PendingWrite> const& write) {
    try {
        writes_.push_back(write);
    } catch (...) {
        texts_->Append(LinkTexts::kError, fmt::format("Failed to send {} bytes with  exception ",
                                                      write->bytes.size()));
        write->completed = true;
        return;
    }
    if (writes_.size() == 1) {
        pump();
    }
}

void DeadlineSocket::pump() {
    while (!writes_.empty()) {
        if (closed_) {
            failWrites();
            return;
        }
        SendResult const result = sendSlices(*writes_.front());
        if (result == SendResult::kBlocked) {
            stream_.async_wait(
                TcpStream::wait_write,
                [self = shared_from_this()](boost::system::error_code) { self->pump(); });
            return;
        }
        finishWrite(result == SendResult::kDone);
    }
}

DeadlineSocket::SendResult DeadlineSocket::sendSlices(PendingWrite& write) const {
    while (write.sent < write.bytes.size()) {
        std::size_t const slice = std::min(kWriteSlice, write.bytes.size() - write.sent);
        ssize_t const sent = ::send(descriptor_, write.bytes.data() + write.sent, slice,
                                    MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent >= 0) {
            write.sent += static_cast<std::size_t>(sent);
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            return SendResult::kBlocked;
        } else if (errno != EINTR) {
            return SendResult::kFailed;
        }
    }
    return SendResult::kDone;
}

void DeadlineSocket::finishWrite(bool succeeded) {
    auto const write = std::move(writes_.front());
    writes_.pop_front();
    if (!succeeded) {
        // The second place has never been filled; readers of the log know the line as it is.
        texts_->Append(
            LinkTexts::kError,
            fmt::format("Failed to send {} bytes with error[%d] in write\n", write->bytes.size()));
    }
    write->succeeded = succeeded;
    write->completed = true;
}

void DeadlineSocket::failWrites() {
    while (!writes_.empty()) {
        finishWrite(false);
    }
}

void DeadlineSocket::ShutDown() {
    std::lock_guard lock(descriptor_mutex_);
    if (!closed_) {
        ::shutdown(descriptor_, SHUT_RDWR);
    }
}

void DeadlineSocket::close() {
    {
        std::lock_guard lock(descriptor_mutex_);
        if (closed_.exchange(true)) {
            return;
        }
        boost::system::error_code ignored;
        stream_.close(ignored);
    }
    connect_deadline_.cancel();
    failWrites();
}

bool DeadlineSocket::HasEnded() {
    std::lock_guard lock(descriptor_mutex_);
    pollfd ends{descriptor_, POLLRDHUP, 0};
    return closed_ || ::poll(&ends, 1, 0) != 0;
}

std::size_t DeadlineSocket::ReadNow(char* buffer) {
    ssize_t const bytes = ::recv(descriptor_, buffer, kReadChunk, MSG_DONTWAIT);
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

}  // namespace zorvanelink::components::ipc

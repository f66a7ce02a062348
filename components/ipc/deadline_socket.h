// The connected stream of a link, with a bounded connect, a queue of writes that never blocks the
// worker, and the parser of what arrives. Private to this folder: it knows Asio.
//
// Threads: connect on the owner's thread, ShutDown on any, everything else on the io context's.
#pragma once

#include <atomic>
#include <boost/asio/basic_stream_socket.hpp>
#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <chrono>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

#include "components/ipc/frame_parser.h"
#include "components/ipc/peer_owner.h"

namespace zorvanelink::components::ipc {

using Tcp = boost::asio::ip::tcp;
// The context's own executor type: a type-erased one costs at every read.
using IoExecutor = boost::asio::io_context::executor_type;
using TcpStream = boost::asio::basic_stream_socket<Tcp, IoExecutor>;
using IoClock = std::chrono::steady_clock;
using IoTimer =
    boost::asio::basic_waitable_timer<IoClock, boost::asio::wait_traits<IoClock>, IoExecutor>;

// One send: its bytes and how it ended. Shared by the sender, who may give up, and the worker.
struct PendingWrite {
    std::vector<char> bytes;
    std::size_t sent = 0;
    std::atomic<bool> completed{false};
    std::atomic<bool> succeeded{false};  // read only once completed is set
};

class DeadlineSocket : public std::enable_shared_from_this<DeadlineSocket> {
  public:
    static constexpr std::size_t kReadChunk = 4028;    // bytes, most that one read takes
    static constexpr std::size_t kWriteSlice = 65536;  // bytes, most that one send() gets
    static constexpr std::chrono::milliseconds kConnectDeadline{200};
    static constexpr std::chrono::seconds kConnectLimit{1};  // whatever the worker does

    // For a client. Throws boost::system::system_error when there is no descriptor left.
    DeadlineSocket(boost::asio::io_context& context, std::shared_ptr<LinkTexts> texts);
    // For an accepted connection.
    DeadlineSocket(TcpStream stream, std::shared_ptr<LinkTexts> texts);

    // Waits on the caller's thread until the worker has connected or failed.
    bool connect(Tcp::endpoint const& endpoint);

    // Puts the bytes at the end of the queue and sends what the peer takes now.
    void ProcessWrite(std::shared_ptr<PendingWrite> const& write);
    bool WritePending() const { return !writes_.empty(); }

    // Ends both directions and wakes whatever waits for them; the descriptor itself stays.
    void ShutDown();
    void close();
    bool IsClosed() const { return closed_; }
    // Whether the connection has ended, by us or by the peer. Any thread.
    bool HasEnded();
    // Our port and the peer's, once connected.
    LocalConnection Ends() const { return ends_; }

    TcpStream& stream() { return stream_; }
    FrameParser& parser() { return parser_; }

    // Up to kReadChunk bytes that are already here, without waiting; 0 when there are none or the
    // stream has ended.
    std::size_t ReadNow(char* buffer);

  private:
    struct ConnectState;
    enum class SendResult { kDone, kBlocked, kFailed };

    void startConnect(Tcp::endpoint const& endpoint, std::shared_ptr<ConnectState> const& state);
    void onConnected(boost::system::error_code error, ConnectState& state);
    void pump();
    SendResult sendSlices(PendingWrite& write) const;
    void finishWrite(bool succeeded);
    void failWrites();

    TcpStream stream_;
    IoTimer connect_deadline_;
    std::shared_ptr<LinkTexts> texts_;
    std::mutex descriptor_mutex_;  // a descriptor is not shut down while it is being closed
    int descriptor_;
    LocalConnection ends_{};
    std::atomic<bool> closed_{false};
    std::deque<std::shared_ptr<PendingWrite>> writes_;
    FrameParser parser_;
};

}  // namespace zorvanelink::components::ipc

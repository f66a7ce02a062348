// The working transport of the link: frames over one TCP connection on the loop-back address
// between one client and one server. This class holds what both roles share.
//
// A link lives in a std::shared_ptr: make it, register callbacks and handlers, Run, and in the end
// Stop; it cannot run again. Until Stop its worker keeps it alive.
// Threads: the operations may come from any thread. Callbacks and handlers run on the worker, or
// on the one thread that runs an io context given from outside (which must outlive the link).
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "components/ipc/ipc.h"

namespace boost::asio {
class io_context;
}
namespace boost::system {
class error_code;
}

namespace zorvanelink::components::ipc {

class DeadlineSocket;
struct PendingWrite;

inline constexpr std::uint16_t kDefaultPort = 35421;
inline constexpr char kPortFilePath[] = "/tmp//zlinkipc";

// Where the two ends meet: the first port tried, and the file in which the server leaves the port
// that it got.
struct PortPlace {
    std::uint16_t port = kDefaultPort;
    std::string file = kPortFilePath;
};

class SocketIPC : public IPC, public std::enable_shared_from_this<SocketIPC> {
  public:
    enum class Mode { kClient = 0, kServer = 1 };

    ~SocketIPC() override;

    // Starts the worker and connects or listens. False when that failed: the reason is in the
    // error text, and the worker runs on until Stop.
    bool Run() override;
    // Safe at any time and from any thread, callbacks included; on return no callback runs any
    // more, except the one that called it, and on an outside context.
    void Stop() override;
    bool SendCommonIPCMsgTimeout(char const* data, unsigned long len,
                                 unsigned int timeout_ms) override;
    void HoldReading(bool hold) override;

    // Sends whole frames; true when all bytes have left within the time (milliseconds). After a
    // time-out the bytes still go out when the peer takes them. On the worker it does not wait.
    bool SendTimeout(char const* data, unsigned long len, unsigned int timeout_ms);
    bool SendTimeout(IPCMsg const& msg, unsigned int timeout_ms);
    // Sends with half of the time; no reply is read, a `reply` that holds something is the answer.
    bool SendAndRecvTimeout(char const* data, unsigned long len, char* reply,
                            unsigned long& reply_len, unsigned int timeout_ms);
    bool SendAndRecvTimeout(IPCMsg const& msg, char* reply, unsigned long& reply_len,
                            unsigned int timeout_ms);
    // Sends a copy of the bytes without waiting.
    bool AsyncSend(char const* data, unsigned long len);
    bool AsyncSend(IPCMsg const& msg);

    // Checks every 200 ms for a sign of life within the last 2 s, and sends one of its own.
    void StartHeartbeat();

    Mode mode() const { return mode_; }
    std::uint64_t ReadCount() const { return read_count_; }
    std::uint16_t Port() const { return port_; }

  protected:
    struct Core;
    static constexpr int kEndOfFile = 2;  // of a read, whatever its category

    SocketIPC(Mode mode, boost::asio::io_context* context, PortPlace place);

    virtual bool Init() = 0;
    // Ends what the role has running beside the connection. On the worker, or when none runs.
    virtual void closeRole() {}

    void SendHeartbeat();
    void StartRead(std::shared_ptr<DeadlineSocket> const& socket);
    std::shared_ptr<DeadlineSocket> currentSocket() const;
    // Puts it in the place of the present one, which is closed. False once the link is stopping.
    bool replaceSocket(std::shared_ptr<DeadlineSocket> socket);
    // Takes the connection away if it is still the present one.
    bool dropSocket(std::shared_ptr<DeadlineSocket> const& socket);
    // Runs the task on the worker, at once when this is the worker; false once the link is
    // stopping.
    bool runOnWorker(std::function<void()> task);
    void callHandler(std::function<void()> const& call);
    // Tells the owner that the connection is over.
    void readFailed(int code, std::size_t bytes);
    void zeroReadCount() { read_count_ = 0; }
    void closeOnWorker(std::shared_ptr<DeadlineSocket> const& socket);
    bool isStopping() const;

    std::unique_ptr<Core> core_;  // null when the system gave no context
    PortPlace const place_;
    std::atomic<std::uint16_t> port_;

  private:
    void Forever();
    void HandleRead(boost::system::error_code const& ec, std::size_t bytes,
                    std::shared_ptr<DeadlineSocket> const& socket);
    bool ParseMsg(DeadlineSocket& socket);
    void CheckHeartbeatTimer(std::uint64_t generation);
    void armHeartbeatTimer();
    bool startWorker();
    void closeAll();
    bool post(std::shared_ptr<PendingWrite> const& write, char const* null_text);
    bool sendAndWait(std::shared_ptr<PendingWrite> const& write, unsigned int timeout_ms);

    Mode const mode_;
    std::atomic<std::uint64_t> read_count_{0};
    std::atomic<bool> reading_held_{false};
    bool read_parked_ = false;      // worker; the next read waits for the end of the hold
    bool bad_length_told_ = false;  // worker
};

}  // namespace zorvanelink::components::ipc

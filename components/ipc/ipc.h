// The link between the front-end and the service: frame, frame types, callbacks and the operations
// that every transport offers. Both ends of the link are this one class family.
//
// Threads: callbacks and handlers are registered before Run and are called on the transport's
// thread. The texts may be taken from any thread.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace zorvanelink::components::ipc {

enum IPCMsgType : std::int32_t {
    kIPCHeartbeat = 0,  // sign of life
    kIPCQuit = 1,       // the client says goodbye
    kIPCCommon = 2,     // one application message in the payload
    kIPCAck = 3,        // acknowledgement
};

inline constexpr int kHighestPort = 65534;  // that a server takes
inline constexpr std::size_t kIPCMsgPreableLen = 4;
inline constexpr char kIPCMsgPreable[kIPCMsgPreableLen] = {'d', 'e', 'a', 'f'};

// Header of a frame as it stands on the wire, host byte order; `length` payload bytes follow it in
// memory and on the wire.
struct IPCMsg {
    char preamble[kIPCMsgPreableLen];
    IPCMsgType type;
    std::int32_t length;

    char const* payload() const { return reinterpret_cast<char const*>(this + 1); }
};
static_assert(sizeof(IPCMsg) == 12);
inline constexpr std::size_t kIPCMsgHeaderLen = sizeof(IPCMsg);

constexpr IPCMsg MakeIPCMsgHeader(IPCMsgType type, std::int32_t length) {
    return {
        {kIPCMsgPreable[0], kIPCMsgPreable[1], kIPCMsgPreable[2], kIPCMsgPreable[3]}, type, length};
}

inline constexpr IPCMsg kIPCHeartbeatMsg = MakeIPCMsgHeader(kIPCHeartbeat, 0);
inline constexpr IPCMsg kIPCQuitMsg = MakeIPCMsgHeader(kIPCQuit, 0);
inline constexpr IPCMsg kIPCACKMsg = MakeIPCMsgHeader(kIPCAck, 0);

// Name of the transport of another platform.
inline constexpr char kNamedPipeIPCName[] = "\\\\.\\pipe\\zvlnamedpipe";

// What a link has to say beside its results: three texts that grow until their owner takes them.
// Any thread. Of a text that nobody takes the oldest lines go, so that it ends at
// 64 KiB.
class LinkTexts {
  public:
    enum Kind { kError, kInfo, kDebug };
    static constexpr std::size_t kMaxSize = std::size_t{64} * 1024;

    void Append(Kind kind, std::string_view text);
    void Set(Kind kind, std::string_view text);
    std::string Take(Kind kind);
    bool Empty() const;

  private:
    mutable std::mutex mutex_;
    std::string texts_[3];
};

class IPC {
  public:
    // Gets the payload and its length. The bytes are valid until the callback returns.
    using MsgCallback = std::function<void(char const*, int)>;
    using HeartbeatHandler = std::function<void(int)>;

    IPC() = default;
    IPC(IPC const&) = delete;
    IPC& operator=(IPC const&) = delete;
    virtual ~IPC() = default;

    // Both return the count of bytes; 0 is a failure or nothing there.
    virtual unsigned int Send(char const* data, unsigned int len);
    virtual unsigned int Recv(char* buffer, unsigned int len);
    // Sends one application message; false when it has not left within the time (milliseconds).
    virtual bool SendCommonIPCMsgTimeout(char const* data, unsigned long len,
                                         unsigned int timeout_ms);
    virtual int Ping();
    virtual bool Run();
    virtual bool Connect();
    virtual bool AsyncAccept();
    virtual bool Disconnect();
    virtual void Stop();
    // While held no further read is started; what has been read is still shown. Any thread.
    virtual void HoldReading(bool hold);

    // The first callback of a type stands. Before Run only.
    void RegisterIPCMsgCallback(IPCMsgType type, MsgCallback const& callback);
    // Called with the count of consecutive time-outs, from 1. Before Run only.
    void SetHeartbeatTimeoutHandler(HeartbeatHandler const& handler);
    // Called with the code of a failed read, or 0 when a heartbeat could not be sent; for a
    // connection that ends while Run still looks at it, on Run's thread. Before Run only.
    void SetHeartbeatErrorHandler(HeartbeatHandler const& handler);
    // Called for each read that brought bytes, before its frames. Before Run only.
    void SetBytesHandler(std::function<void()> const& handler);
    // Server: called when a client has been taken, before its first frame is read. Before Run only.
    void SetClientConnectedHandler(std::function<void()> const& handler);
    // Server: called once, in the order of the names, when the present client leaves, and then
    // forgotten. Any thread.
    void SetClientDisconnectedHandler(std::string const& name, std::function<void()> handler);

    // Calls the callback of the message's type, if there is one.
    void ProcessIPCMsg(IPCMsg const& msg) const;

    // Each takes the whole text and leaves it empty. Any thread.
    std::string TakeErrorText() { return texts_->Take(LinkTexts::kError); }
    std::string TakeInfoText() { return texts_->Take(LinkTexts::kInfo); }
    std::string TakeDebugText() { return texts_->Take(LinkTexts::kDebug); }
    bool HasTexts() const { return !texts_->Empty(); }

  protected:
    using Clock = std::chrono::steady_clock;

    void dispatch(IPCMsgType type, char const* payload, int length) const;
    void noteSignOfLife();
    void noteBytes() const;
    void runClientDisconnectedHandlers();

    std::atomic<std::uint32_t> heartbeat_timeout_count_{0};
    std::atomic<Clock::time_point> last_heartbeat_time_{Clock::time_point{}};
    HeartbeatHandler heartbeat_timeout_handler_;
    HeartbeatHandler heartbeat_error_handler_;
    std::function<void()> bytes_handler_;
    std::map<IPCMsgType, MsgCallback> msg_callbacks_;
    std::function<void()> client_connected_handler_;
    // Shared with the connections, which may outlive the link by a moment.
    std::shared_ptr<LinkTexts> const texts_ = std::make_shared<LinkTexts>();

  private:
    std::mutex disconnected_mutex_;
    std::map<std::string, std::function<void()>> client_disconnected_handlers_;
};

// Over message queues: one towards the front-end, one towards the service. 0 when the queue is
// full or cannot be opened; the next call tries to open it again. Any thread.
unsigned int send_to_ui(char const* data, unsigned int len);
unsigned int send_to_service(char const* data, unsigned int len);
unsigned int recv_from_ui(std::shared_ptr<IPC> ipc, char* buffer, unsigned int len);
unsigned int recv_from_service(std::shared_ptr<IPC> ipc, char* buffer, unsigned int len);

}  // namespace zorvanelink::components::ipc

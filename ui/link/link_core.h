// The current link to the service and the queue of what it delivered, free of Qt's event loop.
//
// It is shared: the threads that connect keep it alive, so a thread that outlives the window
// touches nothing that is gone. Every member may be called from any thread. Nobody calls a link's
// Stop with the lock held: Stop waits for the link's worker, and the worker takes the lock.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "components/ipc/ipc.h"

namespace zorvanelink::ui {

// What the link's threads report. Called on them, with the lock held: hand over and return.
class LinkEvents {
  public:
    virtual ~LinkEvents() = default;
    // `first` on the thread of the first connection, else on that of a reconnect.
    virtual void LinkUp(bool first) = 0;
    // A text waits in the queue. Once for each, but for one that takes the place of a dropped one.
    virtual void MessageWaiting() = 0;
    virtual void HeartbeatTimeout(int count, std::uint64_t generation) = 0;
    virtual void LinkError(int code, std::uint64_t generation) = 0;
    // Told at each tenth connection running that the service closed at once, and when that ends.
    virtual void ServiceInUse(bool in_use) = 0;
    // The bytes that end a silence.
    virtual void BytesArrived() = 0;
};

class LinkCore : public std::enable_shared_from_this<LinkCore> {
  public:
    using Link = std::shared_ptr<components::ipc::IPC>;
    using LinkFactory = std::function<Link()>;

    static constexpr std::size_t kServiceDataLimit = 100;                    // texts
    static constexpr std::size_t kServiceDataBytes = std::size_t{16} << 20;  // then reading rests
    // A link is up with its first byte, or when it has stood for this time.
    static constexpr std::chrono::milliseconds kUpTime{150};
    // A link that ends earlier was no good.
    static constexpr std::chrono::milliseconds kYoung{1000};
    static constexpr int kClosingsInUse = 10;
    static constexpr unsigned kSendTimeoutMs = 2000;

    // What kind of link has gone.
    struct Loss {
        bool young;    // it stood for less than kYoung
        bool at_once;  // and the service closed it without having said a byte
    };

    LinkCore(LinkFactory factory, LinkEvents* events);

    // One connection attempt; replaces the current link. True once the link is up.
    bool Connect(bool log_failure);
    // Sleeps between two attempts; false at once when the program is quitting.
    bool Pause(std::chrono::milliseconds time);
    // For the thread whose Connect succeeded, as its last word.
    void ReportLinkUp(bool first);
    // Blocks up to kSendTimeoutMs. False, with a log line, when the link is down or does not take
    // the message.
    bool Send(char const* data, std::size_t length);

    // Stops the link of that generation, with the texts that it left, if it is still the current
    // one; nothing otherwise.
    std::optional<Loss> Lose(std::uint64_t generation);
    // No event and no further attempt from here on.
    void Quit();
    void StopLink();

    // Whether that link is the current one.
    bool IsCurrent(std::uint64_t generation) const;
    bool Ready() const;
    bool Quitting() const;

    // Appends a text; above the limit the oldest is dropped, whatever its kind.
    void InsertServiceData(std::string text);
    // The oldest text; empty when none waits.
    std::string GetServiceData();
    // Moves the link's own three texts into the log.
    void DrainLinkTexts();
    bool HasLinkTexts() const;

    // The service says something all the time on this link. A heartbeat tells by itself.
    void NotePeriodic();
    // How long a service that says something all the time has said nothing, also no part of a
    // message; nothing while that is not expected. From `limit` on BytesArrived tells the end.
    std::optional<std::chrono::milliseconds> SilentFor(std::chrono::milliseconds limit);

  private:
    std::uint64_t install(Link const& link);
    void wire(Link const& link, std::uint64_t generation);
    bool awaitUp(std::uint64_t generation);
    void countClosing(bool at_once);
    void insert(std::string text);
    std::string takeFront();
    void onBytes(std::uint64_t generation);
    void onHeartbeat(std::uint64_t generation);
    void onMessage(std::uint64_t generation, std::string text);
    void onTimeout(std::uint64_t generation, int count);
    void onError(std::uint64_t generation, int code);
    Link current() const;
    Link release();

    using Clock = std::chrono::steady_clock;

    LinkFactory const factory_;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    LinkEvents* events_;  // null once quitting
    std::uint64_t generation_ = 0;
    int closings_ = 0;  // at once, running

    // Of the current link.
    Link link_;
    Clock::time_point since_;
    Clock::time_point last_bytes_;
    bool heard_ = false;   // bytes arrived
    bool failed_ = false;  // it reported an error
    bool ready_ = false;
    bool periodic_ = false;
    bool bytes_awaited_ = false;

    std::mutex serviceDataMutex;  // guards the queue; taken last
    std::list<std::string> serviceData;
    std::size_t service_data_bytes_ = 0;
    bool held_ = false;  // the link rests until the queue has room
};

}  // namespace zorvanelink::ui

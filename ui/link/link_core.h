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
};

class LinkCore : public std::enable_shared_from_this<LinkCore> {
  public:
    using Link = std::shared_ptr<components::ipc::IPC>;
    using LinkFactory = std::function<Link()>;

    static constexpr std::size_t kServiceDataLimit = 100;  // texts
    // A link that ends within this time without having received a byte was no link at all.
    static constexpr std::chrono::milliseconds kProofTime{1000};
    static constexpr unsigned kSendTimeoutMs = 2000;

    LinkCore(LinkFactory factory, LinkEvents* events);

    // One connection attempt; replaces the current link. True once the link has proved itself.
    bool Connect(bool log_failure);
    // Sleeps between two attempts; false at once when the program is quitting.
    bool Pause(std::chrono::milliseconds time);
    // For the thread whose Connect succeeded, as its last word.
    void ReportLinkUp(bool first);
    // Blocks up to kSendTimeoutMs. False, with a log line, when the link is down or does not take
    // the message.
    bool Send(char const* data, std::size_t length);

    // Stops the link of that generation, with the texts that it left, if it is still the current
    // one; false otherwise.
    bool Lose(std::uint64_t generation);
    // No event and no further attempt from here on.
    void Quit();
    void StopLink();

    bool Ready() const;
    bool Quitting() const;

    // Appends a text; above the limit the oldest is dropped, whatever its kind.
    void InsertServiceData(std::string text);
    // The oldest text; empty when none waits.
    std::string GetServiceData();
    // Moves the link's own three texts into the log.
    void DrainLinkTexts();

  private:
    std::uint64_t install(Link const& link);
    void wire(Link const& link, std::uint64_t generation);
    bool awaitProof(std::uint64_t generation);
    void noteProof();
    void insert(std::string text);
    void onBytes(std::uint64_t generation);
    void onMessage(std::uint64_t generation, std::string text);
    void onTimeout(std::uint64_t generation, int count);
    void onError(std::uint64_t generation, int code);
    Link current() const;
    Link release();

    LinkFactory const factory_;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    LinkEvents* events_;  // null once quitting
    Link link_;
    std::uint64_t generation_ = 0;
    bool proven_ = false;  // bytes arrived on the current link
    bool failed_ = false;  // the current link reported an error
    bool ready_ = false;

    std::mutex serviceDataMutex;  // guards the queue; taken last
    std::list<std::string> serviceData;
};

}  // namespace zorvanelink::ui

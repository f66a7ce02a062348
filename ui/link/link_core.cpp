#include "ui/link/link_core.h"

#include <algorithm>

#include "app/environment/globals.h"
#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using components::ipc::IPCMsgType;
using components::logger::Log;

// What a link has to say, without line feeds: a log line stays one line.
std::string oneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

}  // namespace

LinkCore::LinkCore(LinkFactory factory, LinkEvents* events)
    : factory_(std::move(factory)), events_(events) {
}

bool LinkCore::Connect(bool log_failure) {
    Link const link = factory_();
    std::uint64_t const generation = install(link);
    if (generation == 0) {
        return false;
    }
    wire(link, generation);
    if (link->Run() && awaitUp(generation)) {
        return true;
    }
    if (log_failure) {
        std::string const reason = oneLine(link->TakeErrorText());
        Log().debug("Failed to connect to service: {}",
                    reason.empty() ? "the connection was closed at once" : reason);
    }
    Lose(generation);
    return false;
}

// Puts the link in place of the current one and answers its generation; 0 when quitting.
std::uint64_t LinkCore::install(Link const& link) {
    Link old;
    std::uint64_t generation = 0;
    {
        std::lock_guard lock(mutex_);
        old = std::exchange(link_, nullptr);
        ready_ = heard_ = failed_ = periodic_ = bytes_awaited_ = false;
        since_ = last_bytes_ = Clock::now();
        if (events_ != nullptr) {
            link_ = link;
            generation = ++generation_;
        }
        std::lock_guard data_lock(serviceDataMutex);
        held_ = false;
    }
    if (old) {
        old->Stop();
    }
    return generation;
}

void LinkCore::wire(Link const& link, std::uint64_t generation) {
    std::weak_ptr<LinkCore> const weak = weak_from_this();
    link->RegisterIPCMsgCallback(
        IPCMsgType::kIPCCommon, [weak, generation](char const* data, int length) {
            if (auto const self = weak.lock(); self && length > 0) {
                self->onMessage(generation, std::string(data, static_cast<std::size_t>(length)));
            }
        });
    link->RegisterIPCMsgCallback(IPCMsgType::kIPCHeartbeat, [weak, generation](char const*, int) {
        if (auto const self = weak.lock()) {
            self->onHeartbeat(generation);
        }
    });
    link->SetBytesHandler([weak, generation] {
        if (auto const self = weak.lock()) {
            self->onBytes(generation);
        }
    });
    link->SetHeartbeatTimeoutHandler([weak, generation](int count) {
        if (auto const self = weak.lock()) {
            self->onTimeout(generation, count);
        }
    });
    link->SetHeartbeatErrorHandler([weak, generation](int code) {
        if (auto const self = weak.lock()) {
            self->onError(generation, code);
        }
    });
}

// A service that has another client accepts and closes at once.
bool LinkCore::awaitUp(std::uint64_t generation) {
    std::unique_lock lock(mutex_);
    since_ = Clock::now();
    changed_.wait_for(lock, kUpTime, [&] {
        return heard_ || failed_ || events_ == nullptr || generation != generation_;
    });
    ready_ = !failed_ && events_ != nullptr && generation == generation_;
    return ready_;
}

bool LinkCore::Pause(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, time, [this] { return events_ == nullptr; });
    return events_ != nullptr && !g_quit;
}

bool LinkCore::Send(char const* data, std::size_t length) {
    Link const link = Ready() ? current() : nullptr;
    if (link && link->SendCommonIPCMsgTimeout(data, length, kSendTimeoutMs)) {
        return true;
    }
    Log().error("ipc maybe failed");
    return false;
}

std::optional<LinkCore::Loss> LinkCore::Lose(std::uint64_t generation) {
    Link link;
    Loss loss{};
    {
        std::lock_guard lock(mutex_);
        if (generation != generation_ || !link_) {
            return std::nullopt;
        }
        loss.young = Clock::now() - since_ < kYoung;
        loss.at_once = loss.young && failed_ && !heard_;
        countClosing(loss.at_once);
        link = release();
    }
    link->Stop();
    return loss;
}

// With the lock held.
void LinkCore::countClosing(bool at_once) {
    bool const told = closings_ >= kClosingsInUse;
    closings_ = at_once ? closings_ + 1 : 0;
    bool const tell = at_once ? closings_ % kClosingsInUse == 0 : told;
    if (tell && events_ != nullptr) {
        events_->ServiceInUse(at_once);
    }
}

void LinkCore::StopLink() {
    Link link;
    {
        std::lock_guard lock(mutex_);
        link = release();
    }
    if (link) {
        link->Stop();
    }
}

// With the lock held. Until its Stop the link may still speak: from here on it is an earlier one.
LinkCore::Link LinkCore::release() {
    ready_ = false;
    ++generation_;
    std::lock_guard data_lock(serviceDataMutex);
    serviceData.clear();
    service_data_bytes_ = 0;
    return std::exchange(link_, nullptr);
}

void LinkCore::Quit() {
    {
        std::lock_guard lock(mutex_);
        events_ = nullptr;
    }
    changed_.notify_all();
}

void LinkCore::ReportLinkUp(bool first) {
    std::lock_guard lock(mutex_);
    if (events_ != nullptr) {
        events_->LinkUp(first);
    }
}

bool LinkCore::IsCurrent(std::uint64_t generation) const {
    std::lock_guard lock(mutex_);
    return generation == generation_ && link_;
}

bool LinkCore::Ready() const {
    std::lock_guard lock(mutex_);
    return ready_;
}

bool LinkCore::Quitting() const {
    std::lock_guard lock(mutex_);
    return events_ == nullptr || g_quit;
}

LinkCore::Link LinkCore::current() const {
    std::lock_guard lock(mutex_);
    return link_;
}

void LinkCore::onBytes(std::uint64_t generation) {
    std::lock_guard lock(mutex_);
    if (generation != generation_) {
        return;
    }
    last_bytes_ = Clock::now();
    if (!std::exchange(heard_, true)) {
        countClosing(false);
        changed_.notify_all();
    }
    if (std::exchange(bytes_awaited_, false) && events_ != nullptr) {
        events_->BytesArrived();
    }
}

void LinkCore::onHeartbeat(std::uint64_t generation) {
    std::lock_guard lock(mutex_);
    periodic_ = periodic_ || generation == generation_;
}

void LinkCore::onMessage(std::uint64_t generation, std::string text) {
    std::lock_guard lock(mutex_);
    if (generation == generation_) {
        insert(std::move(text));
    }
}

void LinkCore::NotePeriodic() {
    std::lock_guard lock(mutex_);
    periodic_ = true;
}

std::optional<std::chrono::milliseconds> LinkCore::SilentFor(std::chrono::milliseconds limit) {
    std::lock_guard lock(mutex_);
    std::lock_guard data_lock(serviceDataMutex);
    if (!ready_ || !periodic_ || held_) {
        return std::nullopt;
    }
    auto const silent =
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - last_bytes_);
    bytes_awaited_ = silent >= limit;
    return silent;
}

void LinkCore::onTimeout(std::uint64_t generation, int count) {
    std::lock_guard lock(mutex_);
    if (generation == generation_ && ready_ && events_ != nullptr) {
        events_->HeartbeatTimeout(count, generation);
    }
}

void LinkCore::onError(std::uint64_t generation, int code) {
    {
        std::lock_guard lock(mutex_);
        if (generation != generation_) {
            return;
        }
        failed_ = true;
        // Before it was ready, the attempt that made the link answers for it.
        if (ready_ && events_ != nullptr) {
            events_->LinkError(code, generation);
        }
    }
    changed_.notify_all();
}

void LinkCore::InsertServiceData(std::string text) {
    std::lock_guard lock(mutex_);
    insert(std::move(text));
}

// With the lock held.
void LinkCore::insert(std::string text) {
    std::lock_guard data_lock(serviceDataMutex);
    bool const full = serviceData.size() > kServiceDataLimit;
    if (full) {
        Log().info("Service data size[{}] exceeded the limit[{}], drop the front",
                   serviceData.size(), kServiceDataLimit);
        takeFront();
    }
    service_data_bytes_ += text.size();
    serviceData.push_back(std::move(text));
    if (service_data_bytes_ > kServiceDataBytes && link_ && !std::exchange(held_, true)) {
        link_->HoldReading(true);
    }
    if (!full && events_ != nullptr) {
        events_->MessageWaiting();
    }
}

std::string LinkCore::GetServiceData() {
    std::lock_guard lock(mutex_);
    std::lock_guard data_lock(serviceDataMutex);
    if (serviceData.empty()) {
        return {};
    }
    std::string text = takeFront();
    if (service_data_bytes_ <= kServiceDataBytes && std::exchange(held_, false) && link_) {
        last_bytes_ = Clock::now();
        link_->HoldReading(false);
    }
    return text;
}

// With both locks held, of a queue that is not empty.
std::string LinkCore::takeFront() {
    std::string text = std::move(serviceData.front());
    serviceData.pop_front();
    service_data_bytes_ -= text.size();
    return text;
}

bool LinkCore::HasLinkTexts() const {
    Link const link = current();
    return link && link->HasTexts();
}

void LinkCore::DrainLinkTexts() {
    Link const link = current();
    if (!link) {
        return;
    }
    if (std::string const text = oneLine(link->TakeInfoText()); !text.empty()) {
        Log().info("{}", text);
    }
    if (std::string const text = oneLine(link->TakeErrorText()); !text.empty()) {
        Log().error("{}", text);
    }
    if (std::string const text = oneLine(link->TakeDebugText()); !text.empty()) {
        Log().debug("{}", text);
    }
}

}  // namespace zorvanelink::ui

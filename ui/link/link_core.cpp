#include "ui/link/link_core.h"

#include "app/environment/globals.h"
#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using components::ipc::IPCMsgType;
using components::logger::Log;

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
    if (link->Run() && awaitProof(generation)) {
        return true;
    }
    if (log_failure) {
        Log().debug("Failed to connect to service: {}", link->TakeErrorText());
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
        ready_ = proven_ = failed_ = false;
        if (events_ != nullptr) {
            link_ = link;
            generation = ++generation_;
        }
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

// A service that has another client accepts and closes at once: only bytes, or a second without
// an end, make a link of a connection.
bool LinkCore::awaitProof(std::uint64_t generation) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, kProofTime, [&] {
        return proven_ || failed_ || events_ == nullptr || generation != generation_;
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

bool LinkCore::Lose(std::uint64_t generation) {
    Link link;
    {
        std::lock_guard lock(mutex_);
        if (generation != generation_ || !link_) {
            return false;
        }
        link = release();
    }
    link->Stop();
    return true;
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
    if (generation == generation_) {
        noteProof();
    }
}

void LinkCore::onMessage(std::uint64_t generation, std::string text) {
    std::lock_guard lock(mutex_);
    if (generation == generation_) {
        noteProof();
        insert(std::move(text));
    }
}

// With the lock held.
void LinkCore::noteProof() {
    if (!std::exchange(proven_, true)) {
        changed_.notify_all();
    }
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
        serviceData.pop_front();
    }
    serviceData.push_back(std::move(text));
    if (!full && events_ != nullptr) {
        events_->MessageWaiting();
    }
}

std::string LinkCore::GetServiceData() {
    std::lock_guard lock(serviceDataMutex);
    if (serviceData.empty()) {
        return {};
    }
    std::string text = std::move(serviceData.front());
    serviceData.pop_front();
    return text;
}

void LinkCore::DrainLinkTexts() {
    Link const link = current();
    if (!link) {
        return;
    }
    if (std::string const text = link->TakeInfoText(); !text.empty()) {
        Log().info("{}", text);
    }
    if (std::string const text = link->TakeErrorText(); !text.empty()) {
        Log().error("{}", text);
    }
    if (std::string const text = link->TakeDebugText(); !text.empty()) {
        Log().debug("{}", text);
    }
}

}  // namespace zorvanelink::ui

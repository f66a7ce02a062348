// What a socket link keeps of Asio. Private to this folder.
#pragma once

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <memory>
#include <optional>
#include <thread>

#include "components/ipc/deadline_socket.h"
#include "components/ipc/socket_ipc.h"

namespace zorvanelink::components::ipc {

struct SocketIPC::Core {
    explicit Core(boost::asio::io_context* outside)
        : owned(outside != nullptr ? nullptr : std::make_unique<boost::asio::io_context>(1)),
          context(outside != nullptr ? *outside : *owned),
          heartbeat_timer(context) {
        if (owned) {
            work.emplace(owned->get_executor());
        }
    }

    bool OnWorker() const { return context.get_executor().running_in_this_thread(); }

    std::unique_ptr<boost::asio::io_context> owned;
    boost::asio::io_context& context;
    std::optional<boost::asio::executor_work_guard<IoExecutor>> work;
    IoTimer heartbeat_timer;
    std::uint64_t heartbeat_generation = 0;  // worker; a wait of an earlier one is stale

    mutable std::mutex mutex;  // guards what follows
    std::shared_ptr<DeadlineSocket> socket;
    std::thread worker;
    std::atomic<bool> stopping{false};  // set under the mutex, read without
};

}  // namespace zorvanelink::components::ipc

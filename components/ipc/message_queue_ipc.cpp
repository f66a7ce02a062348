#include "components/ipc/message_queue_ipc.h"

#include <algorithm>
#include <boost/interprocess/ipc/message_queue.hpp>
#include <cstring>

#include "components/logger/logger.h"

namespace zorvanelink::components::ipc {

namespace interprocess = boost::interprocess;
using components::logger::Log;

struct MessageQueueIPC::Queue : interprocess::message_queue {
    using interprocess::message_queue::message_queue;
};

MessageQueueIPC::MessageQueueIPC(MessageQueueOp op, char const* name, unsigned int max_num_msg,
                                 unsigned int max_msg_len)
    : op_(op), name_(name), max_num_msg_(max_num_msg), max_msg_len_(max_msg_len) {
    Log().info("Message queue name: {} max_num_msg_: {} max_msg_len_: {}", name_, max_num_msg_,
               max_msg_len_);
    try {
        if (op_ == kMessageQueueRecv) {
            interprocess::message_queue::remove(name);
            queue_ = std::make_shared<Queue>(interprocess::create_only, name, max_num_msg_,
                                             max_msg_len_);
        } else {
            queue_ = std::make_shared<Queue>(interprocess::open_only, name);
        }
    } catch (std::exception const& failure) {
        Log().error("message queue init {}", failure.what());
    }
}

MessageQueueIPC::~MessageQueueIPC() {
    if (op_ == kMessageQueueRecv) {
        interprocess::message_queue::remove(name_.c_str());
    }
}

unsigned int MessageQueueIPC::Send(char const* data, unsigned int len) {
    if (op_ != kMessageQueueSend || !queue_) {
        return 0;
    }
    unsigned int const size = std::min(len, max_msg_len_);
    try {
        return queue_->try_send(data, size, 0) ? size : 0;
    } catch (std::exception const& failure) {
        Log().error("Get exception when send: {}", failure.what());
        return 0;
    }
}

unsigned int MessageQueueIPC::Recv(char* buffer, unsigned int len) {
    if (op_ != kMessageQueueRecv || !queue_) {
        return 0;
    }
    std::memset(buffer, 0, len);
    interprocess::message_queue::size_type received = 0;
    unsigned int priority = 0;
    try {
        queue_->try_receive(buffer, std::min(len, max_msg_len_), received, priority);
    } catch (std::exception const& failure) {
        Log().error("Get exception when recv: {}", failure.what());
        return 0;
    }
    return static_cast<unsigned int>(received);
}

}  // namespace zorvanelink::components::ipc

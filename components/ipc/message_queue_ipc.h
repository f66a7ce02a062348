// A link over a named queue in shared memory, one queue a direction: whole messages, no callbacks;
// the receiving end polls Recv. Every call may come from any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "components/ipc/ipc.h"

namespace zorvanelink::components::ipc {

enum MessageQueueOp : std::uint16_t { kMessageQueueSend = 1, kMessageQueueRecv = 2 };

inline constexpr char kMessageQueueToService[] = "MessageQueueIPC1";
inline constexpr char kMessageQueueToUi[] = "MessageQueueIPC2";
inline constexpr unsigned int kMessageQueueMaxNum = 50;     // messages a queue
inline constexpr unsigned int kMessageQueueMaxLen = 10240;  // bytes a message

class MessageQueueIPC : public IPC {
  public:
    // The receiving end creates the queue anew and removes it at its end; the sending end opens
    // what exists. A failure is logged and leaves the link without a queue.
    MessageQueueIPC(MessageQueueOp op, char const* name, unsigned int max_num_msg,
                    unsigned int max_msg_len);
    ~MessageQueueIPC() override;

    // Sends at most max_msg_len bytes, the rest is cut off; 0 when the queue is full, missing or
    // the receiving end's.
    unsigned int Send(char const* data, unsigned int len) override;
    // Takes one message if there is one; `len` must not be below the queue's message size.
    unsigned int Recv(char* buffer, unsigned int len) override;
    bool IsOpen() const { return queue_ != nullptr; }

  private:
    struct Queue;

    MessageQueueOp op_;
    std::shared_ptr<Queue> queue_;
    std::string name_;
    unsigned int max_num_msg_;
    unsigned int max_msg_len_;
};

}  // namespace zorvanelink::components::ipc

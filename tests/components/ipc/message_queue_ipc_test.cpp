#include "components/ipc/message_queue_ipc.h"

#include <gtest/gtest.h>

namespace zorvanelink::test {
namespace {

using namespace components::ipc;

char const kName[] = "zvl_test_queue";
std::string const kLong(20000, 'x');

struct MessageQueue : testing::Test {
    static MessageQueueIPC make(MessageQueueOp op) {
        return MessageQueueIPC(op, kName, 3, kMessageQueueMaxLen);
    }
    std::vector<char> buffer = std::vector<char>(kMessageQueueMaxLen, '?');
};

TEST_F(MessageQueue, CutsLongMessagesAndKnowsItsDirection) {
    auto receiver = make(kMessageQueueRecv);
    auto sender = make(kMessageQueueSend);
    EXPECT_EQ(receiver.Send("x", 1), 0U);
    EXPECT_EQ(sender.Recv(buffer.data(), kMessageQueueMaxLen), 0U);
    EXPECT_EQ(sender.Send(kLong.data(), 20000), kMessageQueueMaxLen);
    EXPECT_EQ(receiver.Recv(buffer.data(), 100), 0U) << "a buffer below the message size";
    EXPECT_EQ(receiver.Recv(buffer.data(), kMessageQueueMaxLen), kMessageQueueMaxLen);
    EXPECT_EQ(std::string(buffer.begin(), buffer.end()), kLong.substr(0, kMessageQueueMaxLen));
    EXPECT_EQ(receiver.Recv(buffer.data(), kMessageQueueMaxLen), 0U);
    EXPECT_EQ(buffer[0], '\0');
}

TEST_F(MessageQueue, FullQueueGivesZeroWithoutWaiting) {
    auto receiver = make(kMessageQueueRecv);
    auto sender = make(kMessageQueueSend);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(sender.Send("abc", 3), 3U);
    }
    EXPECT_EQ(sender.Send("abc", 3), 0U);
}

TEST_F(MessageQueue, NewReceiverDropsWhatAnEarlierQueueHeld) {
    auto first = make(kMessageQueueRecv);
    EXPECT_EQ(make(kMessageQueueSend).Send("old", 3), 3U);
    auto second = make(kMessageQueueRecv);
    EXPECT_EQ(second.Recv(buffer.data(), kMessageQueueMaxLen), 0U);
}

TEST_F(MessageQueue, FreeFunctionsOpenAgainWhatFailed) {
    EXPECT_EQ(send_to_ui("abc", 3), 0U);
    auto const receiver = std::make_shared<MessageQueueIPC>(
        kMessageQueueRecv, kMessageQueueToUi, kMessageQueueMaxNum, kMessageQueueMaxLen);
    EXPECT_EQ(send_to_ui("abc", 3), 3U);
    EXPECT_EQ(recv_from_service(receiver, buffer.data(), kMessageQueueMaxLen), 3U);
}

}  // namespace
}  // namespace zorvanelink::test

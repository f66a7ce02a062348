// Starting, stopping, losing and destroying links, quickly and from the wrong threads.
#include <boost/asio/executor_work_guard.hpp>
#include <thread>

#include "components/ipc/deadline_socket.h"
#include "tests/components/ipc/link_fixture.h"

namespace zorvanelink::test {
namespace {

using namespace components::ipc;

#if defined(__SANITIZE_THREAD__)
constexpr int kRounds = 150;
#else
constexpr int kRounds = 300;
#endif

TEST_F(LinkTest, StopIsSafeAtAnyTime) {
    auto const never_run = makeServer();
    never_run->StartHeartbeat();
    never_run->Stop();
    never_run->Stop();
    EXPECT_FALSE(never_run->Run()) << "a stopped link cannot run again";
    makeServer()->StartHeartbeat();  // destroyed without Stop, by the fixture's reference only

    auto const failed = makeClient();
    EXPECT_FALSE(failed->Run());
    failed->Stop();
    failed->Stop();

    auto const server = makeServer();
    ASSERT_TRUE(server->Run());
    auto const client = makeClient();
    ASSERT_TRUE(client->Run());
    server->Stop();
    server->Stop();
    ASSERT_TRUE(client_errors.WaitFor(1));
    client->Stop();
    EXPECT_TRUE(server_errors.All().empty()) << "our own closing is no error";
}

TEST_F(LinkTest, RoundsOfReconnectQuitAndVanish) {
    auto const server = makeServer();
    server->SetHeartbeatErrorHandler([&](int) { server->DisconnectClient(); });
    ASSERT_TRUE(server->Run());
    server->StartHeartbeat();
    for (int round = 0; round < kRounds; ++round) {
        auto const client = std::make_shared<Client>("round", nullptr, place);
        client->SetHeartbeatErrorHandler([](int) {});
        ASSERT_TRUE(client->Run());
        client->SendCommonIPCMsgTimeout("hello", 5, 1000);
        server->SendCommonIPCMsgTimeout("hello", 5, 1000);
        if (round % 3 == 0) {
            client->Quit();
        } else if (round % 3 == 1) {
            client->Stop();
        } else {
            std::thread sender([&] { client->SendCommonIPCMsgTimeout("late", 4, 1000); });
            client->Stop();
            sender.join();
        }
        EXPECT_TRUE(Eventually([&] { return client.use_count() == 1; }));
        server->TakeDebugText();
    }
    EXPECT_TRUE(server_messages.WaitFor(1));
}

TEST_F(LinkTest, TwoThreadsSendAndTwoStop) {
    auto const server = makeServer();
    ASSERT_TRUE(server->Run());
    auto const client = makeClient();
    ASSERT_TRUE(client->Run());
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < 50; ++n) {
                EXPECT_TRUE(send(*client, "text"));
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(server_messages.WaitFor(100));
    std::thread other([&] { client->Stop(); });
    client->Stop();
    other.join();
}

TEST_F(LinkTest, StoppedAndDestroyedOnItsOwnWorker) {
    auto const server = makeServer();
    ASSERT_TRUE(server->Run());
    auto client = std::make_shared<Client>("own", nullptr, place);
    std::weak_ptr<Client> const watch = client;
    auto const released = std::make_shared<std::atomic<bool>>(false);
    client->RegisterIPCMsgCallback(kIPCCommon, [released, watch](char const*, int) {
        watch.lock()->Stop();
        Eventually([&] { return released->load(); });
    });
    ASSERT_TRUE(client->Run());
    ASSERT_TRUE(connected.WaitFor(1));
    ASSERT_TRUE(send(*server, "stop"));
    client.reset();
    *released = true;
    EXPECT_TRUE(Eventually([&] { return watch.expired(); }));
}

// Bound to the port that it dials, a socket meets itself half-way.
TEST(DeadlineSocket, ConnectionToItselfIsNone) {
    boost::asio::io_context context;
    auto const work = boost::asio::make_work_guard(context);
    std::thread worker([&] { context.run(); });
    auto const texts = std::make_shared<LinkTexts>();
    auto const socket = std::make_shared<DeadlineSocket>(context, texts);
    socket->stream().bind({boost::asio::ip::address_v4::loopback(), 0});
    EXPECT_FALSE(socket->connect(socket->stream().local_endpoint()));
    EXPECT_NE(texts->Take(LinkTexts::kError), "");
    context.stop();
    worker.join();
}

}  // namespace
}  // namespace zorvanelink::test

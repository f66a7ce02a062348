#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <future>

#include "components/ipc/deadline_socket.h"
#include "tests/components/ipc/link_fixture.h"

namespace zorvanelink::test {
namespace {

using namespace components::ipc;
using testing::ElementsAre;
using testing::HasSubstr;

// What the server sends in the first moment is lost when callbacks come after Run.
TEST_F(LinkTest, FirstMessageOfTheServerIsSeen) {
    auto const server = makeServer();
    server->SetClientConnectedHandler([&] { send(*server, "welcome"); });
    ASSERT_TRUE(server->Run());
    auto const client = makeClient();
    ASSERT_TRUE(client->Run());
    EXPECT_TRUE(client_messages.WaitFor(1));
}

TEST_F(LinkTest, TakenPortsAreProbedUpwards) {
    auto const first = makeServer();
    ASSERT_TRUE(first->Run());
    auto const second = makeServer();
    ASSERT_TRUE(second->Run());
    EXPECT_GT(second->Port(), first->Port());
    auto const client = makeClient();
    ASSERT_TRUE(client->Run());
    EXPECT_EQ(client->Port(), second->Port());
}

TEST_F(LinkTest, PortsEndAt65534) {
    place.port = 65535;
    auto const server = makeServer();
    EXPECT_FALSE(server->Run());
    EXPECT_EQ(server->TakeErrorText(), "Failed to bind port for ipc server");
}

TEST_F(LinkTest, SecondClientIsClosedAndTheFirstStays) {
    auto const server = makeServer();
    ASSERT_TRUE(server->Run());
    auto const client = makeClient();
    ASSERT_TRUE(client->Run());
    ASSERT_TRUE(connected.WaitFor(1));
    BarePeer const second(server->Port());
    EXPECT_EQ(second.Receive(1), "");
    EXPECT_TRUE(send(*client, "still here"));
    EXPECT_TRUE(server_messages.WaitFor(1));
    EXPECT_EQ(connected.All().size(), 1U);
}

TEST_F(LinkTest, QuitFreesThePlaceInTheOrderOfTheHandlers) {
    auto const server = makeServer();
    Reports<std::string> left;
    server->SetClientDisconnectedHandler("b", [&] { left.Add("b"); });
    server->SetClientDisconnectedHandler("a", [&] { left.Add("a"); });
    ASSERT_TRUE(server->Run());
    for (std::size_t round = 1; round <= 2; ++round) {
        auto const client = makeClient();
        ASSERT_TRUE(client->Run());
        ASSERT_TRUE(connected.WaitFor(round));
        client->Quit();
        ASSERT_TRUE(left.WaitFor(2));
        EXPECT_FALSE(send(*client, "gone"));
        EXPECT_TRUE(Eventually([&] { return client.use_count() == 2; }))
            << "ours and the fixture's";
        ASSERT_TRUE(Eventually([&] {
            return server->TakeDebugText().find("Will disconnect ipc client\n") !=
                   std::string::npos;
        }));
    }
    EXPECT_THAT(left.All(), ElementsAre("a", "b")) << "handlers are forgotten after their call";
    EXPECT_TRUE(server_errors.All().empty());
}

TEST_F(LinkTest, VanishedClientHoldsThePlaceUntilTheOwnerActs) {
    auto const server = makeServer();
    ASSERT_TRUE(server->Run());
    auto peer = std::make_unique<BarePeer>(server->Port());
    ASSERT_TRUE(connected.WaitFor(1));
    peer.reset();
    ASSERT_TRUE(server_errors.WaitFor(1));
    EXPECT_THAT(server_errors.All(), ElementsAre(2));
    EXPECT_THAT(server->TakeDebugText(), HasSubstr("IPC close with [code:2] size[0]"));
    EXPECT_EQ(BarePeer(server->Port()).Receive(1), "");
    EXPECT_TRUE(Eventually([&] { return !send(*server, "to nobody"); }));
    server->DisconnectClient();
    auto const client = makeClient();
    ASSERT_TRUE(client->Run());
    EXPECT_TRUE(connected.WaitFor(2));
}

TEST_F(LinkTest, HostileBytesDoNotDisturb) {
    auto const server = makeServer();
    server->RegisterIPCMsgCallback(kIPCAck,
                                   [](char const*, int) { throw std::runtime_error("owner"); });
    ASSERT_TRUE(server->Run());
    BarePeer const peer(server->Port());
    auto const bytes =
        std::string(9000, 'd') + MakeFrame(2, -5, "") + MakeFrame(3, 0, "") + MakeFrame("{irst");
    for (char const byte : bytes) {
        peer.Send({byte});
    }
    ASSERT_TRUE(server_messages.WaitFor(1));
    EXPECT_EQ(server_messages.All()[0].size(), 5U);
    std::string told;  // behind the message
    for (char const* const text :
         {"Exception in ipc callback: owner\n", "Frame header with an impossible length\n"}) {
        EXPECT_TRUE(Eventually([&] {
            told += server->TakeErrorText();
            return told.find(text) != std::string::npos;
        }));
    }
    EXPECT_TRUE(server_errors.All().empty());
}

// A peer that takes nothing: the send runs into its time, reading goes on, and all bytes arrive in
// order once the peer reads.
TEST_F(LinkTest, ABurstThatWaitedArrivesWhole) {
    auto const server = makeServer();
    std::promise<void> released;
    server->RegisterIPCMsgCallback(
        kIPCCommon, [&, busy = released.get_future().share()](char const* data, int length) {
            busy.wait();
            server_messages.Add({data, static_cast<std::size_t>(length)});
        });
    ASSERT_TRUE(server->Run());
    BarePeer const peer(server->Port());
    std::vector<std::string> sent;
    for (int i = 0; i < 200; ++i) {  // many reads, and less than a kernel holds back
        sent.push_back('{' + std::to_string(i) + std::string(200, 'x'));
        peer.Send(MakeFrame(sent.back()));
    }
    released.set_value();
    ASSERT_TRUE(server_messages.WaitFor(sent.size()));
    EXPECT_EQ(server_messages.All(), sent);
}

// What a program that we start inherits keeps the connection open after our end.
TEST_F(LinkTest, NoSocketIsInherited) {
    auto const server = makeServer();
    ASSERT_TRUE(server->Run());
    auto const client = makeClient();
    ASSERT_TRUE(client->Run());
    ASSERT_TRUE(connected.WaitFor(1));
    int sockets = 0;
    for (int number = 3; number < 256; ++number) {
        struct stat info {};
        if (fstat(number, &info) == 0 && S_ISSOCK(info.st_mode)) {
            ++sockets;
            EXPECT_EQ(fcntl(number, F_GETFD), FD_CLOEXEC) << number;
        }
    }
    EXPECT_GE(sockets, 3);
}

// Nothing is read while the owner has no room, nothing is lost, and the peer is not called dead.
TEST_F(LinkTest, HeldReadingGoesOnWhereItStopped) {
    auto const server = makeServer();
    Reports<int> timeouts;
    server->SetHeartbeatTimeoutHandler([&](int count) { timeouts.Add(count); });
    server->RegisterIPCMsgCallback(kIPCHeartbeat,
                                   [&](char const*, int) { server->HoldReading(true); });
    ASSERT_TRUE(server->Run());
    server->StartHeartbeat();
    BarePeer const peer(server->Port());
    peer.Send(MakeFrame(0, 0, ""));
    ASSERT_TRUE(Eventually([&] { return server->ReadCount() == 1; }));
    peer.Send(MakeFrame("{waits"));
    auto const past_the_limit = static_cast<std::size_t>(12 * 14);  // a heartbeat each 200 ms
    EXPECT_EQ(peer.Receive(past_the_limit).size(), past_the_limit);
    EXPECT_TRUE(timeouts.All().empty());
    EXPECT_TRUE(server_messages.All().empty());
    server->HoldReading(false);
    EXPECT_TRUE(server_messages.WaitFor(1));
}

TEST_F(LinkTest, TimedOutSendOwnsItsBytes) {
    auto const server = makeServer();
    ASSERT_TRUE(server->Run());
    BarePeer const peer(server->Port());
    ASSERT_TRUE(connected.WaitFor(1));
    std::string big(16 << 20, 'x');
    EXPECT_FALSE(server->SendCommonIPCMsgTimeout(big.data(), big.size(), 10));
    std::fill(big.begin(), big.end(), 'y');
    EXPECT_FALSE(server->SendCommonIPCMsgTimeout("z", 1, 1));
    peer.Send(MakeFrame("{read meanwhile"));
    EXPECT_TRUE(server_messages.WaitFor(1));
    std::fill(big.begin(), big.end(), 'x');
    auto const expected = MakeFrame(big) + MakeFrame("z");
    EXPECT_TRUE(peer.Receive(expected.size()) == expected);
    EXPECT_TRUE(server->AsyncSend(kIPCHeartbeatMsg));
    EXPECT_EQ(peer.Receive(12), MakeFrame(0, 0, ""));
}

TEST_F(LinkTest, HeartbeatCountsTimeoutsUntilASignOfLife) {
    auto const server = makeServer();
    Reports<int> timeouts;
    server->SetHeartbeatTimeoutHandler([&](int count) { timeouts.Add(count); });
    ASSERT_TRUE(server->Run());
    server->StartHeartbeat();
    server->StartHeartbeat();
    BarePeer const peer(server->Port());
    EXPECT_EQ(peer.Receive(24), MakeFrame(0, 0, "") + MakeFrame(0, 0, ""));
    ASSERT_TRUE(timeouts.WaitFor(2));
    peer.Send(MakeFrame(0, 0, ""));
    ASSERT_TRUE(Eventually([&] {
        auto const all = timeouts.All();
        return std::count(all.begin(), all.end(), 1) == 2;
    }));
    auto const all = timeouts.All();
    EXPECT_THAT(std::vector<int>(all.begin(), all.begin() + 2), ElementsAre(1, 2));
    EXPECT_THAT(server->TakeErrorText(), HasSubstr("ipc heartbeat timeout\n"));
}

TEST_F(LinkTest, OutsideContextRunsTheLinkOnItsThread) {
    boost::asio::io_context context;
    auto const server = std::make_shared<Server>(&context, place);
    server->RegisterIPCMsgCallback(kIPCCommon, [&](char const*, int) { server->Stop(); });
    ASSERT_TRUE(server->Run());
    BarePeer const peer(server->Port());
    peer.Send(MakeFrame("stop"));
    context.run_for(kPatience);
    EXPECT_TRUE(context.stopped());
    EXPECT_EQ(server.use_count(), 1);
}

// The worker of an outside context that nobody runs never connects.
TEST_F(LinkTest, ConnectIsBoundedWhateverTheWorkerDoes) {
    auto const server = makeServer();
    ASSERT_TRUE(server->Run());
    boost::asio::io_context context;
    auto const client = std::make_shared<Client>("test", &context, place);
    EXPECT_FALSE(client->Run());
    EXPECT_EQ(client->TakeErrorText(), "Connect time out");
    client->Stop();
}

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

#if !defined(__SANITIZE_ADDRESS__)  // whose own checks need a descriptor
TEST_F(LinkTest, WithoutDescriptorsRunFailsQuietly) {
    rlimit old{};
    getrlimit(RLIMIT_NOFILE, &old);
    rlimit const none{3, old.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    auto const client = makeClient();
    EXPECT_FALSE(client->Run());
    setrlimit(RLIMIT_NOFILE, &old);
    EXPECT_EQ(client->TakeErrorText(), "Failed to new heartbeat");
    client->StartHeartbeat();
    client->Quit();
    EXPECT_FALSE(send(*client, "nothing"));
}
#endif

}  // namespace
}  // namespace zorvanelink::test

// The whole service over the real link, with the client's own end of it.
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <condition_variable>

#include "components/ipc/socket_ipc_client.h"
#include "components/utils/file.h"
#include "components/utils/sensitive_value.h"
#include "core/clmsg_json.h"
#include "tests/support/test_environment.h"
#include "tools/simservice/control.h"
#include "tools/simservice/server.h"

namespace zorvanelink::simservice {
namespace {

using components::ipc::SocketIPCClient;
using testing::HasSubstr;

constexpr auto kDeadline = std::chrono::seconds(20);

// Texts that come in on some thread; a wait for one of them takes all up to it.
class Inbox {
  public:
    void Put(std::string const& text) {
        {
            std::lock_guard lock(mutex_);
            text_ += text + "\n";
        }
        changed_.notify_all();
    }
    bool WaitFor(std::string const& part) {
        std::unique_lock lock(mutex_);
        auto at = std::string::npos;
        changed_.wait_for(lock, kDeadline,
                          [&] { return (at = text_.find(part)) != std::string::npos; });
        bool const found = at != std::string::npos;
        text_.erase(0, found ? at + part.size() : 0);
        return found;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::string text_;
};

class LinkTest : public testing::Test {
  protected:
    LinkTest() {
        static int number = 0;
        auto const folder = test::TestEnvironment::Home() / std::to_string(++number);
        std::filesystem::create_directories(folder);
        options.port = 37021;
        options.port_file = folder / "port";
        options.record = folder / "record.jsonl";
        options.control = folder / "control";
        std::string error;
        EXPECT_TRUE(ParseScenario(R"({"users": [{"name": "alice", "password": "made-up"}],
            "delays": {"answer_ms": 0, "connecting_ms": 0, "online_ms": 0, "stop_ms": 0},
            "counters": {"interval_ms": 20}})",
                                  "f", scenario, error))
            << error;
        EXPECT_TRUE(recorder.Open(options.record));
        EXPECT_TRUE(server.Start(error)) << error;
        EXPECT_TRUE(control.Start(options.control, error)) << error;
        thread = std::thread([this] { loop.Run(); });
    }
    ~LinkTest() override {
        loop.Quit();
        thread.join();
    }

    std::shared_ptr<SocketIPCClient> connect() {
        auto const client = std::make_shared<SocketIPCClient>(
            "test", nullptr, components::ipc::PortPlace{options.port, options.port_file});
        client->RegisterIPCMsgCallback(components::ipc::kIPCCommon,
                                       [this](char const* data, int length) {
                                           inbox.Put({data, static_cast<std::size_t>(length)});
                                       });
        client->RegisterIPCMsgCallback(components::ipc::kIPCHeartbeat,
                                       [this](char const*, int) { inbox.Put("heartbeat"); });
        client->SetHeartbeatErrorHandler([this](int) { inbox.Put("lost"); });
        return client->Run() ? client : nullptr;
    }
    std::shared_ptr<SocketIPCClient> connectBeforeDeadline() {
        auto const end = std::chrono::steady_clock::now() + kDeadline;
        auto client = connect();
        while (!client && std::chrono::steady_clock::now() < end) {
            client = connect();
        }
        return client;
    }
    void start(SocketIPCClient& client) {
        core::sslvpn::CLMsgStartData data;
        data.profileName = "Office";
        data.server = "vpn.example.com";
        data.port = 443;
        data.authType = common::SupportedAuthType::kPwd;
        data.user = "alice";
        data.encryptedPassword = components::utils::EncodeSensitiveValue("made-up");
        auto const json = core::sslvpn::CLMsgJson::BuildStart(data);
        EXPECT_TRUE(client.SendCommonIPCMsgTimeout(json.data(), json.size(), 2000));
    }
    // One control line over the socket; the whole answer.
    std::string order(std::string const& line) {
        int const socket_number = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        options.control.copy(address.sun_path, sizeof(address.sun_path) - 1);
        EXPECT_EQ(::connect(socket_number, reinterpret_cast<sockaddr*>(&address), sizeof(address)),
                  0);
        EXPECT_GT(write(socket_number, line.data(), line.size()), 0);
        shutdown(socket_number, SHUT_WR);
        std::string answer;
        char buffer[256];
        for (ssize_t size = 0; (size = read(socket_number, buffer, sizeof(buffer))) > 0;) {
            answer.append(buffer, static_cast<std::size_t>(size));
        }
        close(socket_number);
        return answer;
    }

    Options options;
    Scenario scenario;
    Inbox inbox;
    EventLoop loop;
    Terminal terminal{true};
    Recorder recorder{loop};
    Server server{options, scenario, loop, terminal, recorder};
    ControlChannel control{loop,
                           {[this](std::string const& line) { return server.Order(line); },
                            [](int) {}, [](std::string_view) {}}};
    std::thread thread;
};

TEST_F(LinkTest, OneSessionFromLinkToGoodbye) {
    auto const client = connect();
    ASSERT_TRUE(client);
    EXPECT_TRUE(inbox.WaitFor("vnicState"));
    EXPECT_TRUE(inbox.WaitFor("heartbeat"));
    start(*client);
    EXPECT_TRUE(inbox.WaitFor("40971"));
    EXPECT_TRUE(inbox.WaitFor("tunnelStatistics"));
    EXPECT_THAT(order("state\n"), HasSubstr("ok link=up session=online"));
    EXPECT_THAT(order("stats"), HasSubstr("did you mean"));
    EXPECT_EQ(order("offline\n"), "ok\n");
    EXPECT_TRUE(inbox.WaitFor("40973"));
    client->Quit();
    auto const next = connectBeforeDeadline();
    ASSERT_TRUE(next);
    next->Stop();
    std::string record;
    EXPECT_TRUE(components::utils::ReadContentFromFile(options.record, record));
    EXPECT_THAT(record, HasSubstr("\"event\":\"connected\""));
    EXPECT_THAT(record, HasSubstr("\"type\":\"start\",\"message\":{\"type\":\"start\""));
    EXPECT_THAT(record, HasSubstr("\"encryptedPassword\":\"****\""));
    EXPECT_THAT(record, HasSubstr("\"event\":\"quit\""));
}

TEST_F(LinkTest, AClientIsCutOffAndTakenAgain) {
    auto const first = connect();
    ASSERT_TRUE(first);
    EXPECT_TRUE(inbox.WaitFor("vnicState"));
    order("vanish\n");
    EXPECT_TRUE(inbox.WaitFor("lost"));
    first->Stop();

    auto const second = connectBeforeDeadline();
    ASSERT_TRUE(second);
    start(*second);
    EXPECT_TRUE(inbox.WaitFor("40971"));
    second->Stop();  // without a stop and without a goodbye

    EXPECT_EQ(order("restart 1 37100\n"), "ok\n");
    auto const third = connectBeforeDeadline();
    ASSERT_TRUE(third);
    start(*third);
    EXPECT_TRUE(inbox.WaitFor("40971"));
    third->Quit();
}

}  // namespace
}  // namespace zorvanelink::simservice

// A server link, client links and a bare peer on one port file of their own.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <condition_variable>
#include <vector>

#include "components/ipc/port_file.h"
#include "components/ipc/socket_ipc_client.h"
#include "components/ipc/socket_ipc_server.h"
#include "tests/components/ipc/frame_model.h"
#include "tests/support/test_environment.h"

namespace zorvanelink::test {

constexpr auto kPatience = std::chrono::seconds(30);  // ends a test that would hang

// Collects what handlers on other threads report; a test waits for what it expects.
template <class T>
class Reports {
  public:
    void Add(T value) {
        std::lock_guard lock(mutex_);
        values_.push_back(std::move(value));
        changed_.notify_all();
    }
    bool WaitFor(std::size_t count) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kPatience, [&] { return values_.size() >= count; });
    }
    std::vector<T> All() {
        std::lock_guard lock(mutex_);
        return values_;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<T> values_;
};

inline bool Eventually(std::function<bool()> const& condition) {
    auto const limit = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > limit) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

// One end of a connection without any of our code behind it.
class BarePeer {
  public:
    explicit BarePeer(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        auto const address = At(port);
        connected_ =
            ::connect(socket_, reinterpret_cast<sockaddr const*>(&address), sizeof address) == 0;
        timeval const patience{30, 0};
        setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    }
    // What comes to a listening socket.
    static BarePeer Accepted(int listener) {
        return BarePeer(Descriptor{::accept(listener, nullptr, nullptr)});
    }
    ~BarePeer() { ::close(socket_); }
    BarePeer(BarePeer const&) = delete;
    BarePeer& operator=(BarePeer const&) = delete;

    static sockaddr_in At(std::uint16_t port) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return address;
    }
    bool Connected() const { return connected_; }
    void Send(std::string const& bytes) const {
        ASSERT_EQ(::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
    }
    bool HasBytes() const {
        char byte = 0;
        return ::recv(socket_, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 1;
    }
    // Everything up to `size` bytes or the end of the stream.
    std::string Receive(std::size_t size) const {
        std::string bytes(size, '\0');
        std::size_t got = 0;
        while (got < size) {
            ssize_t const now = ::recv(socket_, bytes.data() + got, size - got, 0);
            if (now <= 0) {
                break;
            }
            got += static_cast<std::size_t>(now);
        }
        bytes.resize(got);
        return bytes;
    }

  private:
    struct Descriptor {
        int number;
    };
    explicit BarePeer(Descriptor socket) : socket_(socket.number), connected_(socket.number >= 0) {}

    int socket_;
    bool connected_ = false;
};

// A service without any of our code: a listening socket, its port in the port file.
class BareService {
  public:
    explicit BareService(components::ipc::PortPlace const& place) {
        auto address = BarePeer::At(0);
        socklen_t length = sizeof address;
        auto* const where = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(::bind(listener_, where, length), 0);
        EXPECT_EQ(::listen(listener_, 8), 0);
        EXPECT_EQ(::getsockname(listener_, where, &length), 0);
        EXPECT_TRUE(components::ipc::WritePortFile(place.file, ntohs(address.sin_port)));
    }
    ~BareService() { ::close(listener_); }
    BareService(BareService const&) = delete;
    BareService& operator=(BareService const&) = delete;

    BarePeer Accept() const { return BarePeer::Accepted(listener_); }

  private:
    int const listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
};

class LinkTest : public testing::Test {
  protected:
    using Server = components::ipc::SocketIPCServer;
    using Client = components::ipc::SocketIPCClient;

    LinkTest() : place{components::ipc::kDefaultPort, TestEnvironment::Home() / "port"} {
        unlink(place.file.c_str());
    }
    ~LinkTest() override {
        for (auto const& link : links_) {
            link->Stop();
        }
    }

    std::shared_ptr<Server> makeServer() {
        auto server = std::make_shared<Server>(nullptr, place);
        server->SetClientConnectedHandler([this] { connected.Add(0); });
        return keep(server, server_messages, server_errors);
    }
    std::shared_ptr<Client> makeClient(
        components::ipc::FindOwner find_owner = components::ipc::FindPeerOwner) {
        return keep(std::make_shared<Client>("test", nullptr, place, std::move(find_owner)),
                    client_messages, client_errors);
    }
    static bool send(components::ipc::IPC& link, std::string const& text) {
        return link.SendCommonIPCMsgTimeout(text.data(), text.size(), 20'000);
    }

    components::ipc::PortPlace place;
    Reports<std::string> server_messages, client_messages;
    Reports<int> server_errors, client_errors, connected;

  private:
    template <class Link>
    std::shared_ptr<Link> keep(std::shared_ptr<Link> link, Reports<std::string>& messages,
                               Reports<int>& errors) {
        link->RegisterIPCMsgCallback(components::ipc::kIPCCommon,
                                     [&messages](char const* data, int length) {
                                         messages.Add({data, static_cast<std::size_t>(length)});
                                     });
        link->SetHeartbeatErrorHandler([&errors](int code) { errors.Add(code); });
        links_.push_back(link);
        return link;
    }

    std::vector<std::shared_ptr<components::ipc::IPC>> links_;
};

}  // namespace zorvanelink::test

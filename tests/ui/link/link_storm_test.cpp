// The link under a service that comes and goes all the time, over real sockets, while the window
// sends and quits at moments that a seed chooses. What is tested is that it ends, and, under the
// thread sanitizer, that nobody reads what another writes.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <random>

#include "components/ipc/socket_ipc_client.h"
#include "components/ipc/socket_ipc_server.h"
#include "components/logger/logger.h"
#include "tests/support/test_environment.h"
#include "tools/support/wait.h"
#include "ui/link/service_link.h"

namespace zorvanelink::ui {
namespace {

using components::ipc::PortPlace;
using components::ipc::SocketIPCClient;
using components::ipc::SocketIPCServer;
using components::logger::Logger;
using test::WaitUntil;

constexpr ServiceLink::Pauses kNoPause{std::chrono::milliseconds(1), std::chrono::milliseconds(1)};
constexpr unsigned kSeeds = 40;
constexpr int kLosses = 25;

// A service that greets with statuses, and dies and returns when its own thread feels like it.
class MoodyService {
  public:
    MoodyService(PortPlace place, unsigned seed)
        : place_(std::move(place)), seed_(seed), life_([this] { live(); }) {}
    ~MoodyService() {
        over_ = true;
        life_.join();
    }
    int Lives() const { return lives_; }

  private:
    void live() {
        std::minstd_rand chance(seed_);
        while (!over_) {
            auto const server = std::make_shared<SocketIPCServer>(nullptr, place_);
            std::atomic<int> asked{0};
            std::atomic<bool> met{false};
            server->RegisterIPCMsgCallback(components::ipc::kIPCCommon,
                                           [&](char const*, int) { ++asked; });
            server->SetClientConnectedHandler([&] { met = true; });
            server->SetHeartbeatErrorHandler([&](int) { server->DisconnectClient(); });
            if (server->Run() && chance() % 2 == 0) {
                server->StartHeartbeat();
            }
            // Some lives end before anybody came, some in the middle of a talk.
            int const texts = static_cast<int>(chance() % 120);
            int const questions = static_cast<int>(chance() % 3);
            QDeadlineTimer const end(static_cast<int>(chance() % 40));
            for (int said = 0; !over_ && !end.hasExpired();) {
                if (met && said < texts) {
                    speak(*server, said++);
                } else if (asked >= questions && said == texts) {
                    break;
                } else {
                    std::this_thread::yield();
                }
            }
            server->Stop();
            ++lives_;
        }
    }
    static void speak(SocketIPCServer& server, int number) {
        std::string const text = "status " + std::to_string(number);
        server.SendCommonIPCMsgTimeout(text.data(), text.size(), 100);
    }

    PortPlace const place_;
    unsigned const seed_;
    std::atomic<bool> over_{false};
    std::atomic<int> lives_{0};
    std::thread life_;
};

class LinkStorm : public testing::Test {
  protected:
    // Every loss and every refused send is a line.
    LinkStorm() { Logger::enable_console_log_ = false; }
    ~LinkStorm() override { Logger::enable_console_log_ = true; }

    PortPlace const place{components::ipc::kDefaultPort, test::TestEnvironment::Home() / "port"};
    LinkCore::LinkFactory const factory = [this] {
        return std::make_shared<SocketIPCClient>("storm", nullptr, place);
    };
};

TEST_F(LinkStorm, EveryLossIsToldOnceAndTheLinkComesBack) {
    MoodyService const service(place, 1);
    ServiceLink link(factory, kNoPause);
    int losses = 0;
    int texts = 0;
    bool ready_when_told = false;
    QObject::connect(&link, &ServiceLink::Lost, &link, [&] {
        ++losses;
        ready_when_told = ready_when_told || link.State() != LinkState::kReconnecting;
        link.SendToService(QStringLiteral("stop"));
    });
    QObject::connect(&link, &ServiceLink::MessageArrived, &link, [&](std::string const& text) {
        texts += text.starts_with("status") ? 1 : 0;
        link.SendToService(QStringLiteral("seen"));
    });
    link.Start();
    EXPECT_TRUE(WaitUntil([&] { return losses >= kLosses && texts >= kLosses; }, 60000))
        << losses << " losses, " << texts << " texts, " << service.Lives() << " lives";
    EXPECT_FALSE(ready_when_told);
}

TEST_F(LinkStorm, QuittingAtAnyMomentEnds) {
    for (unsigned seed = 1; seed <= kSeeds; ++seed) {
        SCOPED_TRACE(seed);
        std::minstd_rand chance(seed);
        MoodyService const service(place, seed);
        auto link = std::make_unique<ServiceLink>(factory, kNoPause);
        QObject::connect(link.get(), &ServiceLink::MessageArrived, link.get(),
                         [&] { link->SendToService(QStringLiteral("seen")); });
        link->Start();
        QDeadlineTimer const moment(static_cast<int>(chance() % 60));
        WaitUntil([&] {
            link->SendToService(QStringLiteral("hello"));
            return moment.hasExpired();
        });
        QElapsedTimer clock;
        clock.start();
        if (chance() % 2 == 0) {
            link->Stop();
        }
        link.reset();
        // A thread that had to be left behind would have taken the whole of its time.
        EXPECT_LT(clock.elapsed(), 5000);
    }
}

}  // namespace
}  // namespace zorvanelink::ui

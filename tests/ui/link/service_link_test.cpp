#include "ui/link/service_link.h"

#include <gtest/gtest.h>

#include <QObject>

#include "tests/support/log_capture.h"
#include "tools/support/fake_ipc.h"
#include "tools/support/wait.h"

namespace zorvanelink::ui {
namespace {

using test::FakeIpc;
using test::WaitUntil;

// Hands out links as the test lays them down, the last one again and again.
class Links {
  public:
    explicit Links(std::vector<std::shared_ptr<FakeIpc>> links) : links_(std::move(links)) {}

    LinkCore::LinkFactory Factory() {
        return [this]() -> LinkCore::Link {
            std::size_t const index = std::min<std::size_t>(made++, links_.size() - 1);
            return links_[index];
        };
    }

    std::atomic<std::size_t> made{0};

  private:
    std::vector<std::shared_ptr<FakeIpc>> links_;
};

std::shared_ptr<FakeIpc> good() {
    return std::make_shared<FakeIpc>();
}
std::shared_ptr<FakeIpc> bad() {
    return std::make_shared<FakeIpc>(false);
}

constexpr ServiceLink::Pauses kNoPause{std::chrono::milliseconds(1), std::chrono::milliseconds(1)};

bool linked(ServiceLink const& link) {
    return link.State() == LinkState::kLinked;
}

class ServiceLinkTest : public testing::Test {
  protected:
    // A link that is up, and the calls it has made on the way.
    void Begin(std::vector<std::shared_ptr<FakeIpc>> list) {
        links = std::make_unique<Links>(std::move(list));
        link = std::make_unique<ServiceLink>(links->Factory(), pauses);
        // With a receiver, so that what the link's threads report is counted on this one.
        QObject::connect(link.get(), &ServiceLink::Loading, link.get(),
                         [this](int mode, QString const& text) {
                             loading.push_back(mode);
                             said.push_back(text.toStdString());
                         });
        QObject::connect(link.get(), &ServiceLink::CheckUpdate, link.get(), [this] { ++updates; });
        QObject::connect(link.get(), &ServiceLink::MessageArrived, link.get(),
                         [this](std::string const& json) {
                             early = early || !linked(*link) || !link->IsReady();
                             seen.push_back(json);
                         });
        QObject::connect(link.get(), &ServiceLink::SignalAutoLogin, link.get(),
                         [this] { ++auto_logins; });
        QObject::connect(link.get(), &ServiceLink::Lost, link.get(), [this] { ++losses; });
        link->Start();
        ASSERT_TRUE(WaitUntil([this] { return linked(*link) && auto_logins == 1; }));
    }

    ServiceLink::Pauses pauses = kNoPause;
    std::vector<int> loading;
    std::vector<std::string> said, seen;
    bool early = false;  // a text came before the link was up
    int updates = 0;
    int auto_logins = 0;
    int losses = 0;
    std::unique_ptr<Links> links;
    std::unique_ptr<ServiceLink> link;
};

TEST_F(ServiceLinkTest, KnocksUntilTheServiceAnswers) {
    Begin({bad(), bad(), bad(), good()});
    EXPECT_EQ(links->made, 4U);
    EXPECT_EQ(loading, (std::vector<int>{0, 1}));
}

// The service has another client: it accepts and closes at once.
class ClosedAtOnce : public FakeIpc {
  public:
    ClosedAtOnce() : FakeIpc(true, false) {}
    bool Run() override {
        FailRead(2);
        return true;
    }
};

TEST_F(ServiceLinkTest, ALinkThatIsClosedAtOnceIsAFailedTry) {
    test::LogCapture const log;
    auto const closed = std::make_shared<ClosedAtOnce>();
    Begin({closed, good()});
    EXPECT_TRUE(closed->stopped);
    EXPECT_EQ(losses, 0);
    EXPECT_EQ(log.Count("Failed to connect to service: the connection was closed at once"), 1);
}

// Up after a moment, and closed without a word: what that link led to is done again.
TEST_F(ServiceLinkTest, WhatASilentFirstLinkSwallowedIsMadeUpForOnce) {
    auto const silent = std::make_shared<FakeIpc>(true, false);
    auto const second = good();
    Begin({silent, second, good()});
    silent->FailRead(2);
    ASSERT_TRUE(WaitUntil([this] { return auto_logins == 2; }));
    EXPECT_TRUE(linked(*link));
    EXPECT_EQ(loading, (std::vector<int>{0, 1, 1}));
    EXPECT_EQ(updates, 2);
    EXPECT_EQ(losses, 0);
    second->FailRead(2);
    ASSERT_TRUE(WaitUntil([this] { return losses == 1 && linked(*link); }));
    EXPECT_EQ(auto_logins, 2);
}

TEST_F(ServiceLinkTest, AServiceThatClosesTenTimesRunningIsInUse) {
    auto const closed = [] { return std::make_shared<ClosedAtOnce>(); };
    std::vector<std::shared_ptr<FakeIpc>> list;
    std::generate_n(std::back_inserter(list), 9, closed);
    list.push_back(bad());  // ends the run
    std::generate_n(std::back_inserter(list), 10, closed);
    list.push_back(good());
    Begin(list);
    EXPECT_EQ(loading, (std::vector<int>{0, 0, 0, 1}));
    EXPECT_EQ(said[1], "Another session is using the backend service");
    EXPECT_EQ(said[2], said[0]);
}

// A service that greets and goes is not met without end.
TEST_F(ServiceLinkTest, AfterAShortLinkTheReconnectBeginsWithThePause) {
    auto const first = good();
    pauses.reconnect = std::chrono::hours(1);
    Begin({first, good()});
    first->FailRead(2);
    ASSERT_TRUE(WaitUntil([this] { return losses == 1; }));
    EXPECT_FALSE(WaitUntil([this] { return links->made > 1; }, 20));
}

TEST_F(ServiceLinkTest, ALossReconnectsOnceAndTellsTheSession) {
    auto const first = good();
    Begin({first, bad(), good()});
    bool ready_when_told = true;
    QObject::connect(link.get(), &ServiceLink::Lost, [&] { ready_when_told = link->IsReady(); });
    test::LogCapture const log;
    first->FailRead(2);
    first->FailRead(2);  // the second report is of a link that is gone
    ASSERT_TRUE(WaitUntil([this] { return losses == 1 && linked(*link); }));
    EXPECT_EQ(log.Count("ipc error with code 2"), 1);
    EXPECT_FALSE(ready_when_told);
    EXPECT_TRUE(first->stopped);
    EXPECT_EQ(links->made, 3U);
    EXPECT_EQ(auto_logins, 1) << "a reconnect logs nobody in";
}

TEST_F(ServiceLinkTest, TheFourthTimeOutInARowEndsTheLink) {
    auto const first = good();
    Begin({first, good()});
    for (int count = 1; count <= 3; ++count) {
        first->TimeOut(count);
    }
    QCoreApplication::processEvents();
    EXPECT_TRUE(link->IsReady());
    first->TimeOut(4);
    ASSERT_TRUE(WaitUntil([this] { return losses == 1 && linked(*link); }));
    EXPECT_TRUE(first->stopped);
}

TEST_F(ServiceLinkTest, AFloodDropsTheOldestAndKeepsTheOrder) {
    auto const service = good();
    Begin({service});
    for (int i = 0; i < 10000; ++i) {
        service->Deliver(std::to_string(i));
    }
    ASSERT_TRUE(WaitUntil([&] { return !seen.empty() && seen.back() == "9999"; }));
    ASSERT_EQ(seen.size(), LinkCore::kServiceDataLimit + 1);
    EXPECT_EQ(seen.front(), "9899");
    service->Deliver("");
    service->Deliver("after an empty one");
    EXPECT_TRUE(WaitUntil([&] { return seen.back() == "after an empty one"; }));
}

TEST_F(ServiceLinkTest, ABoxOpenedByATextHoldsUpNoOther) {
    auto const service = good();
    Begin({service});
    QObject::connect(link.get(), &ServiceLink::MessageArrived, [&](std::string const& json) {
        if (json == "box") {
            EXPECT_TRUE(WaitUntil([&] { return seen.back() == "later"; }));
        } else if (json == "second") {
            service->Deliver("later");
        }
    });
    service->Deliver("box");
    service->Deliver("second");
    EXPECT_TRUE(WaitUntil([&] { return seen.size() == 3; }));
    EXPECT_EQ(seen, (std::vector<std::string>{"box", "second", "later"}));
}

TEST_F(ServiceLinkTest, WhatALostLinkSaysBehindItsEndIsDropped) {
    class LateSpeaker : public FakeIpc {
      public:
        void Stop() override {
            Deliver("late");
            FailRead(2);
            FakeIpc::Stop();
        }
    };
    auto const late = std::make_shared<LateSpeaker>();
    Begin({late, good()});
    late->FailRead(2);
    late->Deliver("waits when the loss is seen");
    ASSERT_TRUE(WaitUntil([this] { return losses == 1 && linked(*link); }));
    EXPECT_TRUE(late->stopped);
    late->Stop();
    QCoreApplication::processEvents();
    EXPECT_TRUE(seen.empty());
    EXPECT_TRUE(link->IsReady());
}

TEST_F(ServiceLinkTest, TheFirstBytesOfALinkMayBeAMessage) {
    class Speaker : public FakeIpc {
      public:
        bool Run() override {
            Deliver("first");
            return true;
        }
    };
    Begin({std::make_shared<Speaker>()});
    EXPECT_TRUE(WaitUntil([this] { return !seen.empty(); }));
    EXPECT_EQ(seen, std::vector<std::string>{"first"});
    EXPECT_FALSE(early);
}

TEST_F(ServiceLinkTest, ReadingRestsWhileTheQueueIsTooLong) {
    auto const service = good();
    auto const next = good();
    Begin({service, next});
    std::string const big((LinkCore::kServiceDataBytes / 2) + 1, 'x');
    service->Deliver(big);
    EXPECT_FALSE(service->held);
    service->Deliver(big);
    EXPECT_TRUE(service->held);
    EXPECT_TRUE(WaitUntil([&] { return seen.size() == 2; }));
    EXPECT_FALSE(service->held);

    // What a lost link left waiting does not count for the next one.
    service->FailRead(2);
    service->Deliver(big);
    ASSERT_TRUE(WaitUntil([this] { return losses == 1 && linked(*link); }));
    next->Deliver(big);
    EXPECT_FALSE(next->held);
}

TEST_F(ServiceLinkTest, ASilentServiceIsToldUntilTheNextByte) {
    auto const service = good();
    pauses.silence = std::chrono::milliseconds(1);
    Begin({service, good()});
    std::vector<bool> silent;
    QObject::connect(
        link.get(), &ServiceLink::SilenceChanged,
        [&](std::optional<QDateTime> const& since) { silent.push_back(since.has_value()); });
    link->WatchSilence(true);
    ASSERT_TRUE(WaitUntil([&] { return silent.size() == 1; }));
    EXPECT_LE(*link->SilentSince(), QDateTime::currentDateTime());
    service->Deliver("again");
    ASSERT_TRUE(WaitUntil([&] { return silent.size() >= 3; }));
    EXPECT_EQ(silent, (std::vector<bool>{true, false, true}));
    link->WatchSilence(false);
    EXPECT_FALSE(silent.back());
}

TEST_F(ServiceLinkTest, SendsOnlyWhileReady) {
    auto const service = good();
    Begin({service, bad()});
    EXPECT_TRUE(link->SendToService(QStringLiteral("\u4f60\u597d")));
    EXPECT_EQ(service->Sent().back(), "\xe4\xbd\xa0\xe5\xa5\xbd");
    service->accepts = false;
    EXPECT_FALSE(link->SendToService(QStringLiteral("x")));
    EXPECT_TRUE(link->IsReady()) << "a failed send is no loss";
    service->FailRead(104);
    ASSERT_TRUE(WaitUntil([this] { return losses == 1; }));
    EXPECT_FALSE(link->SendToService(QStringLiteral("x")));
}

}  // namespace
}  // namespace zorvanelink::ui

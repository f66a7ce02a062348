// What is done to the bytes on their way out, and when.
#include <gmock/gmock.h>

#include "components/ipc/frame_parser.h"
#include "tests/tools/fake_scheduler.h"
#include "tools/simservice/faults.h"
#include "tools/simservice/outbox.h"

namespace zorvanelink::simservice {
namespace {

using testing::ElementsAre;

// Reads what was written as the client would, piece by piece.
class OutboxTest : public testing::Test {
  protected:
    test::FakeScheduler scheduler;
    std::vector<std::string> pieces;
    std::vector<std::string> messages;
    int heartbeats = 0;
    components::ipc::FrameParser parser;
    Outbox outbox{scheduler, [this](std::string_view bytes) {
                      pieces.emplace_back(bytes);
                      bytes.copy(parser.Prepare(bytes.size()), bytes.size());
                      parser.Commit(bytes.size());
                      parser.Parse([&](auto type, char const* data, int length) {
                          if (type == components::ipc::kIPCCommon) {
                              messages.emplace_back(data, static_cast<std::size_t>(length));
                          } else {
                              ++heartbeats;
                          }
                          return true;
                      });
                  }};
};

TEST_F(OutboxTest, EveryMessageSurvivesTheFaultsOfTheWire) {
    std::string const text(300, 'x');
    for (auto const& [junk, split, slow] :
         {std::tuple{0, 0, 0}, std::tuple{7, 0, 0}, std::tuple{0, 5, 0}, std::tuple{11, 64, 2},
          std::tuple{100, 1, 0}, std::tuple{0, 0, 3}, std::tuple{13, 1000, 0}}) {
        messages.clear();
        outbox.SetJunk(junk);
        outbox.SetSplit(split);
        outbox.SetSlow(slow);
        outbox.SendMessage(text);
        outbox.SendMessage("{}");
        scheduler.Advance(10'000);
        EXPECT_THAT(messages, ElementsAre(text, "{}")) << junk << " " << split << " " << slow;
    }
}

TEST_F(OutboxTest, PiecesKeepTheirPaceAndHeartbeatsStayOutOfThem) {
    outbox.SetSplit(10);
    outbox.SetSlow(50);
    outbox.SendMessage(std::string(100, 'x'));
    outbox.SendHeartbeat();
    EXPECT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].size(), 10U);
    scheduler.Advance(49);
    EXPECT_EQ(pieces.size(), 1U);
    scheduler.Advance(1);
    EXPECT_EQ(pieces.size(), 2U);
    scheduler.Advance(5000);
    EXPECT_EQ(messages.size(), 1U);
    EXPECT_EQ(heartbeats, 0);
    outbox.SendHeartbeat();
    EXPECT_EQ(heartbeats, 1);
}

TEST(Faults, WaitOnlyForWhatTheyWereMeantFor) {
    test::FakeScheduler scheduler;
    std::vector<int> done;
    auto const fault = [](Moment on, int times, int number) {
        return Fault{on, 100, times, {ActionKind::kJunk, number}};
    };
    Faults faults(
        {fault(Moment::kLink, 1, 1), fault(Moment::kOnline, 0, 2), fault(Moment::kSignal, 1, 3)},
        scheduler, [&](Action const& action) { done.push_back(action.first); });
    faults.Happened(Moment::kLink);
    faults.Happened(Moment::kOnline);
    faults.Happened(Moment::kSignal);
    faults.Happened(Moment::kSessionEnd);
    scheduler.Advance(100);
    EXPECT_THAT(done, ElementsAre(1, 3));

    done.clear();
    faults.Happened(Moment::kLink);
    faults.Happened(Moment::kOnline);
    scheduler.Advance(100);
    faults.Happened(Moment::kOnline);
    scheduler.Advance(100);
    EXPECT_THAT(done, ElementsAre(2, 2));

    done.clear();
    faults.Happened(Moment::kOnline);
    faults.Happened(Moment::kLinkEnd);
    scheduler.Advance(100);
    EXPECT_THAT(done, ElementsAre());
}

}  // namespace
}  // namespace zorvanelink::simservice

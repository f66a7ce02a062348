#include "components/ipc/peer_owner.h"

#include <gmock/gmock.h>

#include <future>

#include "tests/components/ipc/link_fixture.h"

namespace zorvanelink::test {
namespace {

using namespace components::ipc;
using testing::HasSubstr;

constexpr char kHead[] =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout "
    "inode\n";
constexpr char kListener[] =
    "   0: 0100007F:8A5D 00000000:0000 0A 00000000:00000000 00:00000000 00000000     0        0 1 "
    "1 0 100 0 0 10 0\n";

std::string row(std::string const& ends, char const* state, char const* owner) {
    return "  17: " + ends + " " + state + " 00000000:0000000C 00:00000000 00000000 " + owner +
           "\n";
}

// Our end is port 50000, the peer's 35421.
TEST(PeerOwner, TheTable) {
    std::string const ends = "0100007F:8A5D 0100007F:C350";
    std::string const own_row = "0100007F:C350 0100007F:8A5D";
    std::string const mapped =
        "0000000000000000FFFF00000100007F:8A5D 0000000000000000FFFF00000100007F:C350";
    struct {
        char const* name;
        std::string rows;
        std::optional<uid_t> uid;
    } const cases[] = {
        {"taken", row(ends, "01", " 1000        0 4711 1 0 20 4 30 10 -1"), 1000},
        {"root's", row(ends, "01", "    0        0 4711"), 0},
        {"a service on all addresses", row(mapped, "01", " 1000        0 4711"), 1000},
        {"behind our own row",
         row(own_row, "01", "   7        0 99") + row(ends, "01", "   8        0 4711"), 8},
        {"not yet accepted", row(ends, "01", " 0        0 0"), {}},
        {"closed", row(ends, "06", " 1000        0 4711"), {}},
        {"not a user's number", row(ends, "01", " root        0 4711"), {}},
        {"cut", row(ends, "01", " 1000"), {}},
        {"another port of ours", row("0100007F:8A5D 0100007F:C351", "01", "5 0 4711"), {}},
        {"another address", row("0200007F:8A5D 0100007F:C350", "01", "5 0 4711"), {}},
        {"none", "", {}},
    };
    for (auto const& it : cases) {
        EXPECT_EQ(PeerOwnerIn(kHead + (kListener + it.rows), {50000, 35421}), it.uid) << it.name;
    }
}

// The greeting heartbeat is the first that a service gets, and comes only when we know whose the
// service is; what it says at once waits as long.
TEST_F(LinkTest, NothingCrossesBeforeThePeerIsKnown) {
    BareService const service(place);
    std::promise<void> waiting, known;
    auto const client = makeClient([&, asked = 0](LocalConnection ends) mutable {
        if (++asked == 1) {
            return PeerOwner{true, std::nullopt};
        }
        waiting.set_value();
        known.get_future().wait();
        return FindPeerOwner(ends);
    });
    std::thread running([&] { EXPECT_TRUE(client->Run()); });
    BarePeer const peer = service.Accept();
    peer.Send(MakeFrame("{first") + MakeFrame("{second"));
    waiting.get_future().wait();
    EXPECT_FALSE(peer.HasBytes());
    EXPECT_TRUE(client_messages.All().empty());
    known.set_value();
    running.join();
    EXPECT_EQ(peer.Receive(12), MakeFrame(0, 0, ""));
    ASSERT_TRUE(client_messages.WaitFor(2));
    EXPECT_EQ(client_messages.All()[0], "{first");
}

TEST_F(LinkTest, WhoIsNotTheServiceGetsNothing) {
    uid_t const stranger = geteuid() + 1;
    struct {
        PeerOwner owner;
        char const* reason;
    } const cases[] = {{{true, stranger}, "belongs to uid "},
                       {{true, std::nullopt}, "nobody has taken"},
                       {{false, std::nullopt}, "cannot be read"}};
    for (auto const& it : cases) {
        BareService const service(place);
        auto const client = makeClient([&](LocalConnection) { return it.owner; });
        std::thread running([&] { EXPECT_FALSE(client->Run()); });
        BarePeer const peer = service.Accept();
        peer.Send(MakeFrame("{first"));
        running.join();
        EXPECT_THAT(client->TakeErrorText(), HasSubstr(it.reason));
        EXPECT_EQ(peer.Receive(1), "");
    }
    EXPECT_TRUE(client_messages.All().empty());
    EXPECT_TRUE(client_errors.All().empty());
}

TEST_F(LinkTest, AConnectionThatEndsBeforeTheLookIsOver) {
    BareService const service(place);
    std::promise<void> gone;
    auto const client = makeClient([&](LocalConnection) {
        gone.get_future().wait();
        return PeerOwner{true, std::nullopt};
    });
    std::thread running([&] { EXPECT_FALSE(client->Run()); });
    service.Accept();
    gone.set_value();
    running.join();
    EXPECT_EQ(client_errors.All(), std::vector<int>{2});
    EXPECT_EQ(client->TakeErrorText(), "");
}

}  // namespace
}  // namespace zorvanelink::test

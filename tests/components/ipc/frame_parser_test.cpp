#include "components/ipc/frame_parser.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/components/ipc/frame_model.h"

namespace zorvanelink::test {
namespace {

using components::ipc::FrameParser;
using components::ipc::IPCMsgType;

std::vector<ShownFrame> receive(FrameParser& parser, std::string const& bytes) {
    std::memcpy(parser.Prepare(bytes.size()), bytes.data(), bytes.size());
    parser.Commit(bytes.size());
    std::vector<ShownFrame> shown;
    parser.Parse([&](IPCMsgType type, char const* payload, int length) {
        shown.push_back({type, length, {payload, static_cast<std::size_t>(length)}});
        return true;
    });
    return shown;
}

std::string zeros(std::size_t count) {
    return std::string(count, '\0');
}

struct Case {
    char const* name;
    std::vector<std::string> reads;
    std::vector<ShownFrame> shown;
};

std::vector<Case> cases() {
    std::string const hello = MakeFrame("{ello");
    std::string const big = '{' + std::string(5000, 'x');
    std::string const big_frame = MakeFrame(big);
    std::int32_t const limit = FrameParser::kMaxLength;
    ShownFrame const shown{2, 5, "{ello"};
    return {
        {"two frames in one read, in order", {hello + MakeFrame(0, 0, "")}, {shown, {0, 0, ""}}},
        {"junk ahead is skipped", {"dedeadeaxfd" + hello}, {shown}},
        {"header split", {hello.substr(0, 7), hello.substr(7)}, {shown}},
        {"behind its header", {hello.substr(0, 12), hello.substr(12)}, {shown}},
        {"preamble split behind junk", {"junkjunkde", hello.substr(2)}, {shown}},
        {"5001 bytes in two reads",
         {big_frame.substr(0, 4028), big_frame.substr(4028)},
         {{2, 5001, big}}},
        {"last byte late, behind another frame",
         {hello + hello.substr(0, 16), hello.substr(16)},
         {shown, shown}},
        {"JSON may begin with a blank",
         {MakeFrame(" \n{}").substr(0, 14), "{}"},
         {{2, 4, " \n{}"}}},
        {"a whole one is shown, whatever is in it", {MakeFrame("5") + hello}, {{2, 1, "5"}, shown}},
        {"not the beginning of a message",
         {MakeFrame(2, 40, "5") + hello, MakeFrame(2, 40, zeros(1)) + hello},
         {shown, shown}},
        {"a control frame has no payload to wait for",
         {MakeFrame(0, 100, "") + MakeFrame(1, 100, "") + MakeFrame(3, 100, "") + hello},
         {shown}},
        {"unknown types come through",
         {MakeFrame(-7, 0, "") + MakeFrame(9, 64 << 10, "wait") + hello},
         {{-7, 0, ""}}},
        {"unknown types have a limit", {MakeFrame(9, (64 << 10) + 1, "") + hello}, {shown}},
        {"lengths that no frame has",
         {MakeFrame(2, -1, "") + MakeFrame(2, std::numeric_limits<std::int32_t>::min(), "") +
          MakeFrame(2, limit + 1, "{") + hello},
         {shown}},
        {"the longest waits", {MakeFrame(2, limit, "{") + hello}, {}},
    };
}

TEST(FrameParser, Cases) {
    for (auto const& row : cases()) {
        SCOPED_TRACE(row.name);
        FrameParser parser;
        FrameModel model;
        std::vector<ShownFrame> shown;
        for (auto const& read : row.reads) {
            auto const now = receive(parser, read);
            EXPECT_EQ(now, model.Receive(read));
            shown.insert(shown.end(), now.begin(), now.end());
        }
        EXPECT_EQ(shown, row.shown);
    }
}

TEST(FrameParser, ALengthThatWasMerelyDeclaredAllocatesNothing) {
    FrameParser parser;
    receive(parser, MakeFrame(2, FrameParser::kMaxLength, "{"));
    receive(parser, std::string(20'000, 'x'));
    EXPECT_LT(parser.Capacity(), 100'000U);
    EXPECT_FALSE(parser.SawBadLength());
    receive(parser, std::string(FrameParser::kMaxLength, 'x') + MakeFrame(2, -1, ""));
    EXPECT_TRUE(parser.SawBadLength());
}

// Waiting frames and junk must not be moved or looked at again at each read.
TEST(FrameParser, MegabytesInSmallReads) {
    std::string const payload = '{' + std::string(8 << 20, 'd');
    auto const stream = std::string(8 << 20, 'd') + MakeFrame(payload) + MakeFrame("end");
    FrameParser parser;
    std::vector<ShownFrame> shown;
    for (std::size_t at = 0; at < stream.size(); at += 100) {
        auto const now = receive(parser, stream.substr(at, 100));
        shown.insert(shown.end(), now.begin(), now.end());
    }
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0].payload, payload);
    EXPECT_EQ(shown[1].payload, "end");
    parser.Prepare(1);
    EXPECT_LT(parser.Capacity(), 1U << 20) << "memory of a large frame is given back";
}

TEST(Frame, ConstantsAsOnTheWire) {
    using namespace components::ipc;
    for (auto const& [frame, type] :
         {std::pair{kIPCHeartbeatMsg, 0}, {kIPCQuitMsg, 1}, {kIPCACKMsg, 3}}) {
        EXPECT_EQ(std::string(reinterpret_cast<char const*>(&frame), sizeof frame),
                  MakeFrame(type, 0, ""));
    }
}

TEST(Frame, FirstCallbackOfATypeStands) {
    components::ipc::IPC ipc;
    std::string seen;
    for (char const* name : {"first", "second"}) {
        ipc.RegisterIPCMsgCallback(components::ipc::kIPCCommon,
                                   [&seen, name](char const*, int) { seen += name; });
    }
    ipc.ProcessIPCMsg(components::ipc::kIPCQuitMsg);
    ipc.ProcessIPCMsg(components::ipc::MakeIPCMsgHeader(components::ipc::kIPCCommon, 0));
    EXPECT_EQ(seen, "first");
}

TEST(LinkTexts, ReadingEmptiesAndGrowthIsBounded) {
    components::ipc::LinkTexts texts;
    texts.Append(texts.kDebug, "a");
    texts.Append(texts.kDebug, "b");
    EXPECT_FALSE(texts.Empty());
    EXPECT_EQ(texts.Take(texts.kDebug), "ab");
    EXPECT_TRUE(texts.Empty());
    for (int i = 0; i < 1000; ++i) {
        texts.Append(texts.kError, std::to_string(i) + std::string(100, 'x') + '\n');
    }
    auto const kept = texts.Take(texts.kError);
    EXPECT_LE(kept.size(), texts.kMaxSize);
    EXPECT_GT(kept.size(), texts.kMaxSize - 200);
    EXPECT_TRUE(kept.starts_with(std::to_string(1000 - kept.size() / 104) + "x")) << "whole lines";
    EXPECT_TRUE(kept.ends_with("x\n"));
    texts.Append(texts.kError, std::string(2 * texts.kMaxSize, 'y'));
    EXPECT_EQ(texts.Take(texts.kError), std::string(texts.kMaxSize, 'y'));
}

}  // namespace
}  // namespace zorvanelink::test

#include "common/message_catalogue.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace zorvanelink::common {
namespace {

std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

// 64-bit FNV-1a: the same in any language.
std::uint64_t digest(std::string const& text) {
    std::uint64_t sum = 0xcbf29ce484222325;
    for (unsigned char const byte : text) {
        sum = (sum ^ byte) * 0x100000001b3;
    }
    return sum;
}

TEST(MessageCatalogue, RowsAreTheContractWithTheService) {
    std::string rows;
    for (auto const& row : g_IPCMessageMap.All()) {
        constexpr char kShown[] = {'-', 'E', 'C'};
        rows += fmt::format("{}\t{}\t{}\t{}\t{}\n", static_cast<int>(row.code), row.symbol,
                            row.type, kShown[static_cast<int>(row.show)], row.english);
    }
    EXPECT_EQ(digest(rows), 0x389802d005ed01c8U)
        << "number, symbol, type, box or English text of a row differs "
           "from what services know:\n"
        << rows;
}

TEST(MessageCatalogue, BothLanguagesAreCompleteAndAgreeInTheirPlaces) {
    for (auto const& row : g_IPCMessageMap.All()) {
        SCOPED_TRACE(row.symbol);
        EXPECT_EQ(row.english.empty(), row.chinese.empty());
        for (char const* place : {"%1", "%2", "%3", "#@@#", "<a href='%1'>", "</a>", ";;"}) {
            EXPECT_EQ(countOf(row.english, place), countOf(row.chinese, place)) << place;
        }
        EXPECT_EQ(row.chinese, row.chinese.substr(0, row.chinese.find_last_not_of(' ') + 1));
    }
}

TEST(MessageCatalogue, AnUnknownCodeHasNoTexts) {
    auto const unknown = static_cast<MsgCode>(-12345);
    IPCMessage const row = g_IPCMessageMap.Get(unknown);
    EXPECT_EQ(row.code, unknown);
    EXPECT_TRUE(row.english.empty() && row.chinese.empty() && row.symbol.empty());
}

}  // namespace
}  // namespace zorvanelink::common

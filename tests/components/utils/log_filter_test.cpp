#include <gtest/gtest.h>

#include <random>

#include "components/utils/log_filter.h"

namespace zorvanelink::components::utils {
namespace {

// The masking told as plainly as it can be, on the changing text itself.
std::string reference(std::vector<std::string> const& words, std::string json) {
    constexpr auto none = std::string::npos;
    for (std::string const& word : words) {
        std::size_t position = 0;
        std::size_t hit = 0;
        while (position <= json.size() && (hit = json.find(word, position)) != none) {
            position = hit + word.size();
            std::string const ahead = json.substr(0, hit);
            std::size_t const colon = ahead.rfind(':');
            std::size_t const comma = ahead.rfind(',');
            if (colon != none && (comma == none || comma < colon)) {
                continue;
            }
            std::size_t const start = json.find(':', hit) + 1;
            std::size_t const next = json.find(',', hit);
            std::size_t end = next == none ? json.rfind('}') : next;
            if (start != 0 && end < start) {
                if (next != none) {
                    continue;
                }
                end = none;
            }
            end = std::min(end, json.size());
            bool const text = json.substr(start, end - start).find('"') != none;
            json.replace(start, end - start, text ? "\"****\"" : "****");
        }
    }
    return json;
}

TEST(LogFilter, MasksTheSixWords) {
    EXPECT_EQ(
        FilterJsonStr(
            g_filter_word,
            R"({"password":1,"a":"pinCode","pinCode":"v","encryptedPinCode":"w","encryptedPassword":"x","newPassword":"y","currentPassword":"z"})"),
        R"({"password":****,"a":"pinCode","pinCode":"****","encryptedPinCode":"****","encryptedPassword":"****","newPassword":"****","currentPassword":"****"})");
    EXPECT_EQ(FilterJsonStr({""}, "{}"), "{}");
}

TEST(LogFilter, AgreesWithThePlainAlgorithmOnAnyText) {
    std::mt19937 random(20260102);
    char const* const pieces[] = {"password", "newPassword", "pin", "Code", ":", ":", ",",      ",",
                                  "\"",       "{",           "}",   "x",    "1", " ", "pinCode"};
    for (int round = 0; round < 20000; ++round) {
        std::string json;
        for (unsigned i = random() % 24; i > 0; --i) {
            json += pieces[random() % std::size(pieces)];
        }
        ASSERT_EQ(FilterJsonStr(g_filter_word, json), reference(g_filter_word, json)) << json;
    }
    // Ends soon only because its effort grows with the text and not with its square.
    std::string hits = "},";
    for (int i = 0; i < 1 << 17; ++i) {
        hits += "password ";
    }
    EXPECT_EQ(FilterJsonStr(g_filter_word, hits), "****" + hits);
}

}  // namespace
}  // namespace zorvanelink::components::utils

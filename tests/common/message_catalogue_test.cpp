#include "common/message_catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace zorvanelink::common {
namespace {

std::size_t countOf(std::string const& text, std::string const& part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(MessageCatalogue, HoldsEveryRowAndHandlerOnce) {
    auto const rows = IPCMessageMap().All();
    EXPECT_EQ(rows.size(), 442U);
    auto const shownBy = [&rows](ShowHandler const* handler) {
        return std::ranges::count_if(
            rows, [handler](auto const& row) { return row.second.show == handler; });
    };
    EXPECT_EQ(shownBy(&ShowCriticalMsgBox), 39);
    EXPECT_EQ(shownBy(&ShowErrorMsgBox), 3);
    for (auto const& [number, row] : rows) {
        EXPECT_EQ(static_cast<std::int32_t>(row.code), number);
        EXPECT_TRUE(row.type >= 0 && row.type <= 8) << number;
    }
}

TEST(MessageCatalogue, BothLanguagesAreCompleteAndAgreeInTheirPlaces) {
    IPCMessageMap const map;
    for (auto const& [number, row] : map.All()) {
        SCOPED_TRACE(map.Name(row.code));
        EXPECT_EQ(row.english.empty(), row.chinese.empty());
        for (char const* place : {"%1", "%2", "%3", "#@@#", "<a href='%1'>", "</a>", ";;"}) {
            EXPECT_EQ(countOf(row.english, place), countOf(row.chinese, place)) << place;
        }
        EXPECT_EQ(row.chinese, row.chinese.substr(0, row.chinese.find_last_not_of(' ') + 1));
    }
}

TEST(MessageCatalogue, KeepsTheSharedNumbersNamesAndTexts) {
    struct Expected {
        std::int32_t number;
        char const* name;
        CodeType type;
        ShowHandler const* show;
        char const* english;
    };
    Expected const expected[] = {
        {-3, "ERR_AUTH_USER_OR_PASS", 5, &ShowCriticalMsgBox,
         "The username or password is invalid"},
        {-27, "ERR_HISTORY_PASSWORD", 1, &ShowErrorMsgBox,
         "The new password cannot be the same as the historical password(s)"},
        {40971, "ONLINE", 1, nullptr, "Online"},
        {41003, "PUBLIC_KEY_GET_FAILE", 5, nullptr,
         "Failed to retrieve the public key of the certificate"},
        {41032, "NEED_SELECT_AUTH_TYPE", 4, nullptr, ""},
        {45259, "UI_TR_PREFIX_LENGTH", 0, nullptr, "Preifx Length:"},
        {45282, "UI_TR_UPDATE_NEVER", 5, nullptr, "Nerver"},
        {53282, "DISCONNECT_REASON_NETWORK_ERROR", 1, nullptr, "Network Error"},
        {2147483647, "UNSPECIFIED", 8, nullptr, ""},
    };
    IPCMessageMap map;
    for (Expected const& row : expected) {
        SCOPED_TRACE(row.name);
        auto const code = static_cast<MsgCode>(row.number);
        IPCMessage const message = map.Get(code);
        EXPECT_EQ(map.Name(code), row.name);
        EXPECT_EQ(message.type, row.type);
        EXPECT_EQ(message.show, row.show);
        EXPECT_EQ(message.english, row.english);
    }
    EXPECT_EQ(map.Get(MsgCode::ERR_AUTH_USER_OR_PASS).chinese, "错误的用户名或密码");
}

TEST(MessageCatalogue, ARowSeesTheHandlerThatIsSetLater) {
    IPCMessage const row = IPCMessageMap().Get(MsgCode::ERR_PASSWORD_COMPLEXITY);
    EXPECT_FALSE(*row.show);
    std::string shown;
    ShowErrorMsgBox = [&shown](CodeType, std::string const& text) { shown = text; };
    (*row.show)(row.type, row.english);
    ShowErrorMsgBox = nullptr;
    EXPECT_EQ(shown, "Failed to pass the password complexity policy");
}

TEST(MessageCatalogue, AnUnknownCodeBecomesAnEmptyRow) {
    IPCMessageMap map;
    auto const unknown = static_cast<MsgCode>(-12345);
    EXPECT_EQ(map.Name(unknown), "");
    IPCMessage const row = map.Get(unknown);
    EXPECT_EQ(row.code, unknown);
    EXPECT_TRUE(row.english.empty() && row.chinese.empty() && row.show == nullptr);
    EXPECT_EQ(map.All().size(), 443U);
    map.Get(unknown);
    EXPECT_EQ(map.All().size(), 443U);
    EXPECT_EQ(map.Name(unknown), "");
}

TEST(MessageCatalogue, LookupsRunOnSeveralThreads) {
    IPCMessageMap map;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&map] {
            for (int number = 100; number < 200; ++number) {
                map.Get(static_cast<MsgCode>(number));
                EXPECT_EQ(map.Get(MsgCode::ONLINE).english, "Online");
                EXPECT_EQ(map.Name(MsgCode::ONLINE), "ONLINE");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(map.All().size(), 542U);
}

}  // namespace
}  // namespace zorvanelink::common

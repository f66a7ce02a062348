#include "ui/cards/card_view.h"

#include <gtest/gtest.h>

using namespace zorvanelink::ui;
using zorvanelink::common::MsgCode;

TEST(CardView, FollowsFromTheStateAlone) {
    using S = ConnectStatus;
    constexpr std::optional<bool> kSame;
    struct Row {
        S own;
        bool otherRuns;
        bool adapter;
        std::optional<MsgCode> label;
        char const* lamp;
        bool menu;
        CardAction action;
        std::optional<bool> enabled;
    };
    constexpr auto kDo = CardAction::kConnect;
    constexpr auto kUndo = CardAction::kDisconnect;
    constexpr auto kAgain = MsgCode::UI_INFO_RECONNECTING;
    for (auto const& row : {
             Row{S::Disconnected, false, true, {}, nullptr, true, kDo, true},
             Row{S::Disconnected, true, true, {}, nullptr, true, kDo, false},
             Row{S::Disconnected, false, false, {}, nullptr, true, kDo, false},
             Row{S::Connecting, false, true, MsgCode::UI_INFO_LOWER_CONNECTING, "lamp_connecting",
                 false, kUndo, true},
             Row{S::PrepareReconnecting, false, true, kAgain, "lamp_reconnecting", false, kUndo,
                 kSame},
             Row{S::Reconnecting, false, true, kAgain, "lamp_reconnecting", false, kUndo, kSame},
             Row{S::Connected, false, true, MsgCode::UI_INFO_ONLINE, "lamp_connected", false, kUndo,
                 true},
             // An adapter that fails leaves the way down open.
             Row{S::Connected, false, false, MsgCode::UI_INFO_ONLINE, "lamp_connected", false,
                 kUndo, true},
         }) {
        auto const view = cardViewFor(row.own, row.otherRuns, row.adapter);
        SCOPED_TRACE(static_cast<int>(row.own));
        EXPECT_EQ(view.stateText, row.label);
        EXPECT_STREQ(view.lamp, row.lamp);
        EXPECT_EQ(view.menuEnabled, row.menu);
        EXPECT_EQ(view.action, row.action);
        EXPECT_EQ(view.buttonEnabled, row.enabled);
        EXPECT_EQ(view.buttonText,
                  row.action == kDo ? MsgCode::UI_INFO_CONNECT : MsgCode::UI_INFO_LOWER_DISCONNECT);
    }
}

#include <gtest/gtest.h>

#include "core/clmsg.h"

namespace zorvanelink::core {
namespace {

using common::MsgCode;

struct GuiRow {
    char const* json;
    bool understood;
    CLMsg::SubType subtype = CLMsg::SubType::kUnknown;
    MsgCode status = MsgCode::UNSPECIFIED;
    char const* error = "";  // what err_str_ says afterwards
    char const* note = "";   // what debug_str_ says afterwards
};

constexpr char kNoSubType[] = "Failed to find key subtype in clmsgjson parse";
constexpr char kNoStatus[] = "Failed to find key statusCode in clmsgjson parse";
constexpr char kNoType[] = "Failed to find key type in clmsgjson parse";

TEST(Envelope, FirstStageOfTheGui) {
    using enum CLMsg::SubType;
    GuiRow const rows[] = {
        {R"({"type":"reply"})", true, kUnknown, MsgCode::UNSPECIFIED, "", kNoStatus},
        {R"({"type":"reply","subtype":"netconfig"})", true, kNetConfig, MsgCode::UNSPECIFIED, "",
         kNoStatus},
        {R"({"type":"reply","statusCode":-3})", true, kUnknown, MsgCode::ERR_AUTH_USER_OR_PASS, "",
         kNoSubType},
        {R"({"statusCode":40971,"subtype":"connectStatus","type":"reply","more":{}})", true,
         kConnectStatus, MsgCode::ONLINE},
        {R"({"type":"reply","subtype":"disconnectReason"})", true, kUnknown, MsgCode::UNSPECIFIED,
         "", kNoStatus},
        {R"({"type":"start1"})", false},
        {R"({"type":"reply","subtype":7})", false, kUnknown, MsgCode::UNSPECIFIED, "",
         "Key [subtype]'s value type[6] is invalid in clmsgjson parse"},
        {R"({"type":"reply","subtype":"auth","statusCode":1.0})", false, kAuth,
         MsgCode::UNSPECIFIED, "",
         "Key [statusCode]'s value type[6] is invalid in clmsgjson parse"},
        {R"({"type":"reply","subtype":"auth","statusCode":2147483648})", false, kAuth,
         MsgCode::UNSPECIFIED, "",
         "Key [statusCode]'s value type[6] is invalid in clmsgjson parse"},
        {R"({"type":null})", false, kUnknown, MsgCode::UNSPECIFIED,
         "Key [type]'s value type[0] is invalid in clmsgjson parse"},
        {"{}", false, kUnknown, MsgCode::UNSPECIFIED, kNoType},
        {"[]", false, kUnknown, MsgCode::UNSPECIFIED, "Failed to parse clmsgjson[[]]"},
        {"", false, kUnknown, MsgCode::UNSPECIFIED, "Failed to parse clmsgjson[]"},
        {R"({"type":"reply"} x)", false, kUnknown, MsgCode::UNSPECIFIED,
         R"(Failed to parse clmsgjson[{"type":"reply"} x])"},
    };
    for (GuiRow const& row : rows) {
        SCOPED_TRACE(row.json);
        CLMsgJsonParse::err_str_.clear();
        CLMsgJsonParse::debug_str_.clear();
        auto type = CLMsg::Type::kUnknown;
        auto subtype = CLMsg::SubType::kUnknown;
        auto status = MsgCode::UNSPECIFIED;
        EXPECT_EQ(CLMsgJsonParse::Parse(row.json, &type, &subtype, &status), row.understood);
        EXPECT_EQ(type == CLMsg::Type::kReply, row.understood || row.note[0] != '\0');
        EXPECT_EQ(subtype, row.subtype);
        EXPECT_EQ(status, row.status);
        EXPECT_EQ(CLMsgJsonParse::err_str_, row.error);
        EXPECT_EQ(CLMsgJsonParse::debug_str_, row.note);
    }
}

}  // namespace
}  // namespace zorvanelink::core

// The first stage of both ends, and the masking of what they log.
#include "core/clmsg.h"
#include "core/json_text.h"
#include "tests/fuzz/fuzz_target.h"

void zorvanelink::test::Fuzz(std::string const& text) {
    auto type = core::CLMsg::Type::kUnknown;
    auto subtype = core::CLMsg::SubType::kUnknown;
    auto status = common::MsgCode::UNSPECIFIED;
    Require(!core::CLMsgJsonParse::Parse(text, &type, &subtype, &status) ||
            type != core::CLMsg::Type::kUnknown);
    auto client = core::CLMsg::ClientType::kUnknown;
    core::CLMsgJsonParse::Parse(text, &type, &client);
    Require(core::json::IsUtf8(core::json::RepairUtf8(text)));
    core::json::MaskSecrets(text);
}

// The first stage of both ends, and the masking of what they log.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/clmsg.h"
#include "core/json_text.h"

using namespace zorvanelink;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(reinterpret_cast<char const*>(data), size);
    auto type = core::CLMsg::Type::kUnknown;
    auto subtype = core::CLMsg::SubType::kUnknown;
    auto status = common::MsgCode::UNSPECIFIED;
    bool const understood = core::CLMsgJsonParse::Parse(text, &type, &subtype, &status);
    if (understood && type == core::CLMsg::Type::kUnknown) {
        std::abort();
    }
    auto client = core::CLMsg::ClientType::kUnknown;
    core::CLMsgJsonParse::Parse(text, &type, &client);
    if (!core::json::IsUtf8(core::json::RepairUtf8(text))) {
        std::abort();
    }
    core::json::MaskSecrets(text);
    return 0;
}

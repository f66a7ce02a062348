#include "core/clmsg_document.h"

#include <fmt/format.h>
#include <rapidjson/encodedstream.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>

#include "components/logger/logger.h"
#include "core/clmsg.h"
#include "core/json_document.h"
#include "core/json_sieve.h"
#include "core/message_log.h"

namespace zorvanelink::core {
namespace {

// Empty when `document` holds the one object that the text is, else what is wrong with it.
std::string parse(std::string const& json, rapidjson::Document& document) {
    rapidjson::MemoryStream stream(json.data(), json.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> input(stream);
    rapidjson::ParseResult result;
    auto const generate = [&](rapidjson::Document& kept) {
        json::Sieve sieve(kept);
        // Iteratively: the depth of a hostile text must not become the depth of our stack.
        result = rapidjson::Reader().Parse<rapidjson::kParseIterativeFlag>(input, sieve);
        return !result.IsError();
    };
    document.Populate(generate);
    if (result.IsError()) {
        return fmt::format("{} (offset {})", rapidjson::GetParseError_En(result.Code()),
                           result.Offset());
    }
    // The parser takes a zero byte for the end. Zero bytes that end the text are a peer's
    // terminator, others would hide what stands behind them.
    if (json.find_first_not_of('\0', stream.Tell()) != std::string::npos) {
        return fmt::format("Zero byte inside the text. (offset {})", stream.Tell());
    }
    return document.IsObject() ? "" : "The document root is no object.";
}

}  // namespace

CLMsgDocument::CLMsgDocument() = default;
CLMsgDocument::~CLMsgDocument() = default;
CLMsgDocument::CLMsgDocument(CLMsgDocument&& other) noexcept = default;
CLMsgDocument& CLMsgDocument::operator=(CLMsgDocument&& other) noexcept = default;

bool CLMsgDocument::Parse(std::string const& json) {
    content_ = std::make_unique<Content>();
    std::string fault = parse(json, content_->root);
    if (fault.empty()) {
        return true;
    }
    content_.reset();
    json_str_ = std::move(fault);
    CLMsgJsonParse::err_str_ = fmt::format("Failed to parse clmsgjson[{}]", RefusedMessage(json));
    components::logger::Log().error("{}", CLMsgJsonParse::err_str_);
    return false;
}

}  // namespace zorvanelink::core

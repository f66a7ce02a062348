#include "core/message_log.h"

#include <algorithm>
#include <vector>

#include "components/utils/log_filter.h"
#include "components/utils/text.h"
#include "core/secret_fields.h"

namespace zorvanelink::core {
namespace {

constexpr std::string_view kMask = "\"****\"";
constexpr std::size_t kMaxRefusedBytes = 1024;

std::vector<std::string_view> const& secretKeys() {
    static std::vector<std::string_view> const keys = [] {
        auto const& words = components::utils::g_filter_word;
        std::vector<std::string_view> all(words.begin(), words.end());
        sslvpn::AddStartSecrets(all);
        sslvpn::AddSetSecrets(all);
        sslvpn::AddReplySecrets(all);
        std::ranges::sort(all);
        return all;
    }();
    return keys;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::size_t skipBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && isBlank(text[at])) {
        ++at;
    }
    return at;
}

// One past the end of the text in quotes that starts at `at`.
std::size_t textEnd(std::string_view text, std::size_t at) {
    for (++at; at < text.size(); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            return at + 1;
        }
    }
    return text.size();
}

// One past the end of the value that starts at `at`, with all that is nested in it.
std::size_t valueEnd(std::string_view text, std::size_t at) {
    if (at < text.size() && text[at] == '"') {
        return textEnd(text, at);
    }
    std::size_t depth = 0;
    while ((at = text.find_first_of("\",[]{}", at)) != std::string_view::npos) {
        char const c = text[at];
        if (c == '"') {
            at = textEnd(text, at);
            continue;
        }
        if (depth == 0 && (c == ',' || c == ']' || c == '}')) {
            return at;
        }
        depth += c == '[' || c == '{' ? 1U : 0U;
        depth -= c == ']' || c == '}' ? 1U : 0U;
        ++at;
        if (depth == 0 && c != ',') {
            return at;
        }
    }
    return text.size();
}

}  // namespace

bool IsSecretKey(std::string_view key) {
    return std::ranges::binary_search(secretKeys(), key);
}

std::string MaskSecrets(std::string_view json) {
    std::string masked;
    masked.reserve(json.size());
    std::size_t copied = 0;
    for (std::size_t quote = json.find('"'); quote != std::string_view::npos;
         quote = json.find('"', quote)) {
        std::size_t const closing = json.find('"', ++quote);
        if (closing == std::string_view::npos) {
            break;
        }
        std::string_view const key = json.substr(quote, closing - quote);
        std::size_t const colon = skipBlanks(json, closing + 1);
        if (!IsSecretKey(key) || colon >= json.size() || json[colon] != ':') {
            continue;
        }
        std::size_t const value = skipBlanks(json, colon + 1);
        masked.append(json, copied, value - copied).append(kMask);
        copied = quote = valueEnd(json, value);
    }
    return masked.append(json, copied);
}

std::string RefusedMessage(std::string_view json) {
    using namespace components::utils;
    // A secret that is cut is still masked: its key stands ahead of it.
    return std::string(
        CutUtf8(EscapeControls(MaskSecrets(CutUtf8(json, kMaxRefusedBytes))), kMaxRefusedBytes));
}

}  // namespace zorvanelink::core

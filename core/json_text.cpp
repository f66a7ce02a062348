#include "core/json_text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zorvanelink::core::json {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::string_view kMask = "\"****\"";
constexpr std::array<std::string_view, 9> kSensitiveKeys{
    "password",           "pinCode",           "newPassword",
    "currentPassword",    "encryptedPassword", "encryptedPinCode",
    "pkcs12CertFileData", "certData",          "secondAuthCode"};

// Smallest code point that may be written with that many bytes; shorter forms exist for the rest.
constexpr std::array<std::uint32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};

// Length of the valid sequence at the start of a text that is not empty; 0 when there is none.
std::size_t sequenceLength(std::string_view text) {
    auto const lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) {
        return 1;
    }
    std::size_t const length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return 0;
    }
    std::uint32_t code = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        auto const next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) {
            return 0;
        }
        code = code << 6 | (next & 0x3FU);
    }
    bool const surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < kSmallest[length] || code > 0x10FFFF || surrogate ? 0 : length;
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

// One past the end of the value that starts at `at`.
std::size_t valueEnd(std::string_view text, std::size_t at) {
    if (at >= text.size() || text[at] != '"') {
        return std::min(text.find_first_of(",}]", at), text.size());
    }
    for (++at; at < text.size(); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            return at + 1;
        }
    }
    return text.size();
}

}  // namespace

bool IsUtf8(std::string_view text) {
    auto const isAscii = [](char c) { return static_cast<signed char>(c) >= 0; };
    auto const* at = std::ranges::find_if_not(text, isAscii);
    while (at != text.end()) {
        std::size_t const length = sequenceLength({at, text.end()});
        if (length == 0) {
            return false;
        }
        at += length;
    }
    return true;
}

std::string RepairUtf8(std::string_view text) {
    std::string repaired;
    repaired.reserve(text.size() + kReplacement.size());
    while (!text.empty()) {
        std::size_t const length = sequenceLength(text);
        repaired += length == 0 ? kReplacement : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return repaired;
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
        if (std::ranges::find(kSensitiveKeys, key) == kSensitiveKeys.end() ||
            colon >= json.size() || json[colon] != ':') {
            continue;
        }
        std::size_t const value = skipBlanks(json, colon + 1);
        masked.append(json, copied, value - copied).append(kMask);
        copied = quote = valueEnd(json, value);
    }
    return masked.append(json, copied);
}

}  // namespace zorvanelink::core::json

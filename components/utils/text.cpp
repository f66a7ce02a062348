#include "components/utils/text.h"

#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace zorvanelink::components::utils {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

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

}  // namespace

std::string StrToLower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

void replace_all(std::string& text, std::string_view from, std::string_view to) {
    if (from.empty() || to.find(from) != std::string_view::npos) {
        return;  // would never end
    }
    std::size_t position = text.find(from);
    while (position != std::string::npos) {
        text.replace(position, from.size(), to);
        // A new occurrence can begin in what stands ahead of the replaced one.
        position = text.find(from, position - std::min(position, from.size() - 1));
    }
}

std::vector<std::string> SplitStringByChar(std::string_view text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = 0; end != std::string_view::npos; start = end + 1) {
        end = text.find(separator, start);
        parts.emplace_back(text.substr(start, end - start));
    }
    return parts;
}

std::int32_t String2Int(std::string_view text) {
    std::int32_t number = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

std::string ConvertHexToStr(std::string_view bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (unsigned char const byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::string ConvertHexToStr(unsigned char const* bytes, std::size_t length) {
    return ConvertHexToStr({reinterpret_cast<char const*>(bytes), length});
}

std::string GetStrMd5_32(std::string_view text) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    if (EVP_Digest(text.data(), text.size(), digest.data(), &size, EVP_md5(), nullptr) != 1) {
        return {};
    }
    return ConvertHexToStr(digest.data(), size);
}

std::string_view CutUtf8(std::string_view text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) {
        return text;
    }
    constexpr std::size_t kMostAhead = 3;  // bytes of a character that has begun
    for (std::size_t ahead = 1; ahead <= std::min(kMostAhead, maxBytes); ++ahead) {
        if (sequenceLength(text.substr(maxBytes - ahead)) > ahead) {
            return text.substr(0, maxBytes - ahead);
        }
    }
    return text.substr(0, maxBytes);
}

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

std::string EscapeControls(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (char const c : RepairUtf8(text)) {
        auto const byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            escaped += "\\n";
        } else if (byte < ' ' || byte == 0x7F) {
            escaped += "\\x" + ConvertHexToStr({&c, 1});
        } else {
            escaped += c;
        }
    }
    return escaped;
}

}  // namespace zorvanelink::components::utils

#include "components/utils/text.h"

#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace zorvanelink::components::utils {

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
    std::size_t end = maxBytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end;
    }
    return text.substr(0, end);
}

}  // namespace zorvanelink::components::utils

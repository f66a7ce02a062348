// Small text helpers without locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorvanelink::components::utils {

// ASCII letters only.
std::string StrToLower(std::string_view text);
// Every occurrence of from, over and over until none is left: "a///b" and "//" to "/" give "a/b".
void replace_all(std::string& text, std::string_view from, std::string_view to);
// The parts between the separators, empty ones too: one more than there are separators.
std::vector<std::string> SplitStringByChar(std::string_view text, char separator);
// Decimal number; 0 for what is none, or does not fit.
std::int32_t String2Int(std::string_view text);

// Upper case, without separators.
std::string ConvertHexToStr(std::string_view bytes);
std::string ConvertHexToStr(unsigned char const* bytes, std::size_t length);
// MD5 as 32 hexadecimal digits, upper case; a name for data, never a protection.
std::string GetStrMd5_32(std::string_view text);

// The longest start of the UTF-8 text that fits and does not end inside a character.
std::string_view CutUtf8(std::string_view text, std::size_t maxBytes);
bool IsUtf8(std::string_view text);
// Each byte that belongs to no valid sequence becomes U+FFFD.
std::string RepairUtf8(std::string_view text);
// Such a text on one line that moves no cursor: control characters become "\\n" or "\\x1B".
std::string EscapeControls(std::string_view text);

}  // namespace zorvanelink::components::utils

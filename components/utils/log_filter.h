// Keeps secrets out of logged JSON.
#pragma once

#include <string>
#include <vector>

namespace zorvanelink::components::utils {

// The keys whose values are secrets; never changed after the start.
extern std::vector<std::string> const g_filter_word;

// A copy of the JSON text with the values of those keys masked: "****" for a text, **** for the
// rest. Textual: a value reaches to the next comma. Words are matched byte by byte. One pass a
// word.
std::string FilterJsonStr(std::vector<std::string> const& words, std::string const& json);

}  // namespace zorvanelink::components::utils

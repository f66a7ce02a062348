// Standard Base64. Any thread; malformed text decodes to nothing.
#pragma once

#include <cstddef>
#include <string>

namespace zorvanelink::components::utils {

// With newlines: lines of 64 characters, the last one ended too.
std::string Base64Encode(char const* data, std::size_t length, bool withNewlines);
std::string Base64Encode(std::string const& data, bool withNewlines);

// withNewlines tells the form of the text; outLength gets the size of the answer in bytes.
std::string Base64Decode(char const* data, std::size_t length, std::size_t& outLength,
                         bool withNewlines);
std::string Base64Decode(std::string const& text, bool withNewlines);

}  // namespace zorvanelink::components::utils

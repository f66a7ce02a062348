// Network addresses as text. Any thread; nothing throws.
#pragma once

#include <cstdint>
#include <string>

namespace zorvanelink::components::utils {

// The address in its shortest usual form, such as "10.8.0.2" or "fd00::2"; empty when the text is
// no IPv4 or IPv6 address.
std::string NormalizeAddr(std::string const& text);
// "0.0.0.0", "::" and every other way to write them.
bool IsWildcardAddr(std::string const& text);
// Host byte order; 0 to 32 bits, other numbers count as the nearest of them.
std::uint32_t NetmaskFromPrefix(int prefix);
// Dotted text of an address in host byte order.
std::string GetStrFromIpv4(std::uint32_t address);

}  // namespace zorvanelink::components::utils

#include "components/utils/address.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>

namespace zorvanelink::components::utils {
namespace {

constexpr int kIpv4Bits = 32;

std::string print(int family, void const* address) {
    std::array<char, INET6_ADDRSTRLEN> buffer{};
    return inet_ntop(family, address, buffer.data(), buffer.size()) != nullptr ? buffer.data() : "";
}

}  // namespace

std::string NormalizeAddr(std::string const& text) {
    in6_addr address{};  // has room for either family
    for (int const family : {AF_INET, AF_INET6}) {
        if (inet_pton(family, text.c_str(), &address) == 1) {
            return print(family, &address);
        }
    }
    return {};
}

bool IsWildcardAddr(std::string const& text) {
    std::string const address = NormalizeAddr(text);
    return address == "0.0.0.0" || address == "::";
}

std::uint32_t NetmaskFromPrefix(int prefix) {
    int const bits = std::clamp(prefix, 0, kIpv4Bits);
    return bits == 0 ? 0 : ~std::uint32_t{0} << (kIpv4Bits - bits);
}

std::string GetStrFromIpv4(std::uint32_t address) {
    in_addr const network{htonl(address)};
    return print(AF_INET, &network);
}

}  // namespace zorvanelink::components::utils

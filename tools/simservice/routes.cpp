#include "tools/simservice/routes.h"

#include <fmt/format.h>

#include <charconv>

namespace zorvanelink::simservice {
namespace {

constexpr int kLongestPrefix = 128;

}  // namespace

bool ParseRoute(std::string_view text, core::sslvpn::NetConfigRoute& route) {
    auto const slash = text.find('/');
    if (slash == 0 || slash == std::string_view::npos) {
        return false;
    }
    int prefix = 0;
    auto const* const end = text.data() + text.size();
    auto const [stopped, error] = std::from_chars(text.data() + slash + 1, end, prefix);
    if (error != std::errc() || stopped != end || prefix < 0 || prefix > kLongestPrefix) {
        return false;
    }
    route = {std::string(text.substr(0, slash)), prefix, 1};
    return true;
}

std::vector<core::sslvpn::NetConfigRoute> MadeUpRoutes(int count, bool ipv6) {
    std::vector<core::sslvpn::NetConfigRoute> routes;
    for (int number = 0; number < count; ++number) {
        int const metric = 1 + number % 9;
        if (ipv6) {
            auto const text = fmt::format("fd00:{:x}:{:x}::", number >> 16, number & 0xffff);
            routes.push_back({text, 48, metric});
        } else {
            auto const text =
                fmt::format("10.{}.{}.{}", number >> 12, number >> 4 & 0xff, (number & 0xf) << 4);
            routes.push_back({text, 28, metric});
        }
    }
    return routes;
}

}  // namespace zorvanelink::simservice

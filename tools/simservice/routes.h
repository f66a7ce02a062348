// Routes as people write them, and as many as a test of the views wants.
#pragma once

#include <string_view>
#include <vector>

#include "core/reply_records.h"

namespace zorvanelink::simservice {

// "10.0.0.0/8"; the metric becomes 1. False, with the route unchanged, for what is none.
bool ParseRoute(std::string_view text, core::sslvpn::NetConfigRoute& route);

// Different routes below 10.0.0.0/8, or fd00::/16; at most a million.
std::vector<core::sslvpn::NetConfigRoute> MadeUpRoutes(int count, bool ipv6);

}  // namespace zorvanelink::simservice

#include "core/json_sieve.h"

#include <algorithm>
#include <string_view>

namespace zorvanelink::core::json {
namespace {

using Size = rapidjson::SizeType;

// More members than any record has keys, with room for those of later versions.
constexpr Size kMostMembers = 512;
// Gateways, members of a cluster, and lists that nobody knows.
constexpr Size kMostElements = 512;
// More than fit a message that an honest gateway sends; whoever shows them says how many there are.
constexpr Size kMostRoutes = 500'000;

struct Limit {
    std::string_view key;
    Size most;
};
constexpr std::array kLimits{
    Limit{"routeList", kMostRoutes}, Limit{"ipv6RouteList", kMostRoutes},
    Limit{"dnsList", kMostRoutes},   Limit{"ipv6DnsList", kMostRoutes},
    Limit{"winsList", kMostRoutes},  Limit{"bypassIpList", kMostRoutes},
    Limit{"warningCode", 16},        Limit{"certList", 256},
    Limit{"deviceList", 256},        Limit{"appList", 256},
    Limit{"containerList", 256},
};

Size mostElementsOf(std::string_view key) {
    auto const* const limit = std::ranges::find(kLimits, key, &Limit::key);
    return limit == kLimits.end() ? kMostElements : limit->most;
}

}  // namespace

bool Sieve::admit() {
    if (dropping_ > 0 || std::exchange(drop_value_, false)) {
        return false;
    }
    if (depth_ == 0 || !levels_[depth_ - 1].array) {
        return true;
    }
    Level& list = levels_[depth_ - 1];
    bool const fits = list.kept < list.most;
    list.kept += fits ? 1 : 0;
    return fits;
}

bool Sieve::Key(char const* text, Size length, bool copy) {
    if (dropping_ > 0) {
        return true;
    }
    Level& object = levels_[depth_ - 1];
    if (object.kept == object.most) {
        drop_value_ = true;
        return true;
    }
    ++object.kept;
    most_elements_ = mostElementsOf({text, length});
    return kept_.Key(text, length, copy);
}

bool Sieve::open(bool array, Size most) {
    if (!admit()) {
        ++dropping_;
        return false;
    }
    if (depth_ == kDeepest) {
        ++dropping_;
        kept_.Null();
        return false;
    }
    levels_[depth_++] = {array, most, 0};
    return true;
}

bool Sieve::close() {
    if (dropping_ > 0) {
        --dropping_;
        return false;
    }
    --depth_;
    return true;
}

bool Sieve::StartObject() {
    return open(false, kMostMembers) ? kept_.StartObject() : drop();
}

bool Sieve::StartArray() {
    return open(true, std::exchange(most_elements_, kMostElements)) ? kept_.StartArray() : drop();
}

}  // namespace zorvanelink::core::json

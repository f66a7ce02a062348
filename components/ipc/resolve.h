// The one host that the link knows, always through the resolver. Private to this folder.
#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <optional>
#include <string>

namespace zorvanelink::components::ipc {

inline constexpr char kHost[] = "127.0.0.1";

// The first endpoint of the host with that port; nothing when it does not resolve.
inline std::optional<boost::asio::ip::tcp::endpoint> ResolveLocal(boost::asio::io_context& context,
                                                                  std::uint16_t port) {
    using Resolver = boost::asio::ip::tcp::resolver;
    boost::system::error_code error;
    Resolver resolver(context);
    auto const found = resolver.resolve(kHost, std::to_string(port),
                                        Resolver::numeric_host | Resolver::numeric_service, error);
    if (error || found.empty()) {
        return std::nullopt;
    }
    return found.begin()->endpoint();
}

}  // namespace zorvanelink::components::ipc

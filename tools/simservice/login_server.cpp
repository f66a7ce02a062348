#include "tools/simservice/login_server.h"

#include <arpa/inet.h>
#include <fmt/format.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string_view>

namespace zorvanelink::simservice {
namespace {

constexpr int kPatience = 5;  // seconds for a request
constexpr std::size_t kMaxRequest = 8192;

// {}: mark.
constexpr char kLogin[] = R"(<!DOCTYPE html>
<meta charset="utf-8">
<title>Example Identity</title>
<style>body {{ font: 16px sans-serif; margin: 15vh auto; width: 20em; text-align: center }}
button {{ font: inherit; padding: .5em 1.5em; margin: .5em }}</style>
<h1>Example Identity</h1>
<p>A made-up provider. Let the VPN client log in?</p>
<form action="/answer">
  <input type="hidden" name="mark" value="{}">
  <button name="yes" value="1">Log in</button>
  <button name="yes" value="0">Refuse</button>
</form>
)";

constexpr char kDone[] = R"(<!DOCTYPE html>
<meta charset="utf-8">
<title>Example Identity</title>
<p>Done. You can close this page.</p>
)";

std::string valueOf(std::string_view query, std::string_view key) {
    auto at = query.find(key);
    if (at == std::string_view::npos) {
        return {};
    }
    at += key.size();
    auto const end = query.find_first_not_of("0123456789", at);
    return std::string(query.substr(at, end == std::string_view::npos ? end : end - at));
}

void answer(int peer, std::string_view status, std::string const& page) {
    auto const text = fmt::format(
        "HTTP/1.1 {}\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: {}\r\n"
        "Connection: close\r\n\r\n{}",
        status, page.size(), page);
    for (std::size_t sent = 0; sent < text.size();) {
        auto const part = send(peer, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (part <= 0) {
            return;
        }
        sent += static_cast<std::size_t>(part);
    }
}

// The first line's target; empty for what is no request.
std::string targetOf(int peer) {
    timeval const patience{kPatience, 0};
    setsockopt(peer, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
    std::string request;
    char part[1024];
    while (request.find("\r\n\r\n") == std::string::npos && request.size() < kMaxRequest) {
        auto const count = recv(peer, part, sizeof(part), 0);
        if (count <= 0) {
            return {};
        }
        request.append(part, static_cast<std::size_t>(count));
    }
    constexpr std::string_view kGet = "GET ";
    return request.starts_with(kGet)
               ? request.substr(kGet.size(), request.find(' ', kGet.size()) - kGet.size())
               : std::string();
}

}  // namespace

LoginServer::LoginServer(Answered answered)
    : answered_(std::move(answered)), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto* const where = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, where, size) == 0 && listen(listener_, 8) == 0 &&
        getsockname(listener_, where, &size) == 0) {
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] { run(); });
    }
}

LoginServer::~LoginServer() {
    ends_ = true;
    shutdown(listener_, SHUT_RDWR);
    if (thread_.joinable()) {
        thread_.join();
    }
    close(listener_);
}

std::string LoginServer::Address(std::string const& mark) const {
    return port_ == 0 ? std::string()
                      : fmt::format("http://127.0.0.1:{}/login?mark={}", port_, mark);
}

void LoginServer::run() {
    while (!ends_) {
        int const peer = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (peer >= 0) {
            serve(peer);
            close(peer);
        }
    }
}

void LoginServer::serve(int peer) const {
    std::string const target = targetOf(peer);
    std::string const mark = valueOf(target, "mark=");
    if (target.starts_with("/login?")) {
        answer(peer, "200 OK", fmt::format(kLogin, mark));
    } else if (target.starts_with("/answer?")) {
        answer(peer, "200 OK", kDone);
        answered_(mark, valueOf(target, "yes=") == "1");
    } else {
        answer(peer, "404 Not Found", {});
    }
}

}  // namespace zorvanelink::simservice

#include "tools/simservice/control.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <vector>

namespace zorvanelink::simservice {
namespace {

constexpr std::size_t kMaxLine = 1024 * 1024;

sigset_t heldSignals() {
    sigset_t set;
    sigemptyset(&set);
    for (int const signal : {SIGINT, SIGTERM, SIGHUP, SIGUSR1}) {
        sigaddset(&set, signal);
    }
    return set;
}

void sendAll(int socket, std::string_view text) {
    while (!text.empty()) {
        auto const sent = send(socket, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent <= 0) {
            return;  // whoever does not read answers does not get them
        }
        text.remove_prefix(static_cast<std::size_t>(sent));
    }
}

}  // namespace

void HoldSignals() {
    auto const set = heldSignals();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    // In the background of a shell a read of the terminal then fails instead of stopping us.
    std::signal(SIGTTIN, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}

ControlChannel::Descriptor::~Descriptor() {
    if (number_ >= 0) {
        close(number_);
    }
}

ControlChannel::ControlChannel(EventLoop& loop, Hooks hooks)
    : loop_(loop), hooks_(std::move(hooks)) {
}

ControlChannel::~ControlChannel() {
    if (thread_.joinable()) {
        eventfd_write(wake_->Get(), 1);
        thread_.join();
    }
    if (!socket_path_.empty()) {
        unlink(socket_path_.c_str());
    }
}

bool ControlChannel::Start(std::string const& socket_path, std::string& error) {
    auto const set = heldSignals();
    wake_ = std::make_unique<Descriptor>(eventfd(0, EFD_CLOEXEC));
    signals_ = std::make_unique<Descriptor>(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
    listener_ = std::make_unique<Descriptor>();
    if (wake_->Get() < 0 || signals_->Get() < 0) {
        error = "no descriptors left";
        return false;
    }
    if (!socket_path.empty() && !listenOn(socket_path)) {
        error = fmt::format("{}: cannot be made: {}", socket_path, std::strerror(errno));
        return false;
    }
    peers_.push_back({STDIN_FILENO, nullptr, {}});
    thread_ = std::thread([this] { run(); });
    return true;
}

bool ControlChannel::listenOn(std::string const& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) {
        errno = ENAMETOOLONG;
        return false;
    }
    path.copy(address.sun_path, path.size());
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode)) {
        unlink(path.c_str());  // left behind by one that was killed
    }
    listener_ = std::make_unique<Descriptor>(
        socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (listener_->Get() < 0 ||
        bind(listener_->Get(), reinterpret_cast<sockaddr const*>(&address), sizeof(address)) != 0) {
        return false;
    }
    socket_path_ = path;
    return chmod(path.c_str(), 0600) == 0 && listen(listener_->Get(), 8) == 0;
}

void ControlChannel::run() {
    for (;;) {
        std::vector<pollfd> watched{
            {wake_->Get(), POLLIN, 0}, {signals_->Get(), POLLIN, 0}, {listener_->Get(), POLLIN, 0}};
        for (auto const& peer : peers_) {
            watched.push_back({peer.input, POLLIN, 0});
        }
        if (poll(watched.data(), watched.size(), -1) < 0 && errno != EINTR) {
            return;
        }
        if (watched[0].revents != 0) {
            return;
        }
        if (watched[1].revents != 0) {
            takeSignal();
        }
        std::size_t at = 3;
        for (auto peer = peers_.begin(); peer != peers_.end(); ++at) {
            bool const open = watched[at].revents == 0 || serve(*peer);
            peer = open ? std::next(peer) : peers_.erase(peer);
        }
        if (watched[2].revents != 0) {
            takeClient();
        }
    }
}

bool ControlChannel::serve(Peer& peer) {
    std::array<char, 4096> buffer{};
    auto const size = read(peer.input, buffer.data(), buffer.size());
    if (size < 0 && (errno == EINTR || errno == EAGAIN)) {
        return true;
    }
    if (size <= 0 || peer.unread.size() > kMaxLine) {
        if (size == 0 && !peer.unread.empty()) {
            order(peer.socket, peer.unread);  // a last line without its end
        }
        return false;
    }
    peer.unread.append(buffer.data(), static_cast<std::size_t>(size));
    for (auto end = peer.unread.find('\n'); end != std::string::npos;
         end = peer.unread.find('\n')) {
        order(peer.socket, peer.unread.substr(0, end));
        peer.unread.erase(0, end + 1);
    }
    return true;
}

void ControlChannel::order(std::shared_ptr<Descriptor> const& socket, std::string line) {
    loop_.Post([this, socket, line = std::move(line)] {
        auto const answer = hooks_.order(line);
        if (socket) {
            sendAll(socket->Get(), answer);
        } else {
            hooks_.print(answer);
        }
    });
}

void ControlChannel::takeClient() {
    int const number = accept4(listener_->Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (number >= 0) {
        peers_.push_back({number, std::make_shared<Descriptor>(number), {}});
    }
}

void ControlChannel::takeSignal() {
    signalfd_siginfo info{};
    if (read(signals_->Get(), &info, sizeof(info)) == sizeof(info)) {
        loop_.Post([this, signal = static_cast<int>(info.ssi_signo)] { hooks_.signal(signal); });
    }
}

}  // namespace zorvanelink::simservice

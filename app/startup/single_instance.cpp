#include "app/startup/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cerrno>
#include <thread>
#include <utility>

namespace zorvanelink::ui {
namespace {

using components::utils::Descriptor;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr char kLockFile[] = "/zorvanelink.lock";
constexpr char kSocketFile[] = "/zorvanelink.sock";
constexpr milliseconds kRetry{20};
constexpr int kWaiting = 16;  // connections that nobody has accepted yet

// An address has little room. The folder's descriptor, which it names, makes any path fit.
class Address {
  public:
    explicit Address(std::string const& folder)
        : folder_(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {
        std::string const path = "/proc/self/fd/" + std::to_string(folder_.Get()) + kSocketFile;
        address_.sun_family = AF_UNIX;
        path.copy(address_.sun_path, sizeof address_.sun_path - 1);
    }
    sockaddr const* Get() const { return reinterpret_cast<sockaddr const*>(&address_); }
    static constexpr socklen_t kSize = sizeof(sockaddr_un);

  private:
    Descriptor folder_;
    sockaddr_un address_{};
};

bool isOurUser(Descriptor const& peer) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    return getsockopt(peer.Get(), SOL_SOCKET, SO_PEERCRED, &credentials, &size) == 0 &&
           credentials.uid == geteuid();
}

bool sendAll(Descriptor const& peer, std::string_view text) {
    while (!text.empty()) {
        ssize_t const sent = send(peer.Get(), text.data(), text.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(sent > 0 ? static_cast<std::size_t>(sent) : 0);
    }
    return true;
}

enum class Received { kPart, kEnd, kNothing, kFailure };

Received receive(Descriptor const& peer, std::string& text) {
    std::array<char, SingleInstance::kMaxRequest> buffer{};
    ssize_t const got = recv(peer.Get(), buffer.data(), buffer.size(), 0);
    if (got > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(got));
        return Received::kPart;
    }
    if (got == 0) {
        return Received::kEnd;
    }
    return errno == EAGAIN || errno == EINTR ? Received::kNothing : Received::kFailure;
}

// One accepted connection; ends itself after the answer, or when the request does not arrive.
class Visit : public QObject {
  public:
    Visit(Descriptor peer, SingleInstance::Answer const& answer, QObject* parent)
        : QObject(parent),
          peer_(std::move(peer)),
          answer_(answer),
          arrivals_(peer_.Get(), QSocketNotifier::Read) {
        connect(&arrivals_, &QSocketNotifier::activated, this, [this] { read(); });
        QTimer::singleShot(SingleInstance::kAnswerTime, this, [this] { end(); });
    }

  private:
    void read() {
        Received const received = receive(peer_, request_);
        if (received == Received::kNothing ||
            (received == Received::kPart && request_.size() <= SingleInstance::kMaxRequest)) {
            return;
        }
        end();
        if (received == Received::kEnd) {
            // It may run an event loop of its own; nobody is called a second time meanwhile.
            sendAll(peer_, answer_(request_));
            peer_.Close();
        }
    }
    void end() {
        arrivals_.setEnabled(false);
        deleteLater();
    }

    Descriptor peer_;
    SingleInstance::Answer answer_;
    QSocketNotifier arrivals_;
    std::string request_;
};

}  // namespace

SingleInstance::SingleInstance(std::string folder) : folder_(std::move(folder)) {
}

SingleInstance::~SingleInstance() {
    if (socket_) {  // while the lock is still ours: the next client makes its own
        unlink((folder_ + kSocketFile).c_str());
    }
}

SingleInstance::Place SingleInstance::Enter(std::string const& request, milliseconds patience) {
    lock_ = Descriptor(
        open((folder_ + kLockFile).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    auto const deadline = Clock::now() + patience;
    do {
        if (flock(lock_.Get(), LOCK_EX | LOCK_NB) == 0) {
            if (!listen()) {  // alone all the same; a later start gets no answer
                socket_.Close();
            }
            return Place::kFirst;
        }
        if (errno != EWOULDBLOCK) {
            return Place::kNoLock;
        }
        auto const left = std::chrono::duration_cast<milliseconds>(deadline - Clock::now());
        if (Ask(folder_, request, std::max(left, kRetry))) {
            return Place::kAnswered;
        }
        std::this_thread::sleep_for(kRetry);
    } while (Clock::now() < deadline);
    return Place::kSilent;
}

std::optional<std::string> SingleInstance::Ask(std::string const& folder,
                                               std::string const& request, milliseconds patience) {
    Descriptor const peer(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(patience);
    timeval const limit{seconds.count(), (patience % std::chrono::seconds(1)).count() * 1000};
    setsockopt(peer.Get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    setsockopt(peer.Get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    if (connect(peer.Get(), Address(folder).Get(), Address::kSize) != 0 || !isOurUser(peer) ||
        !sendAll(peer, request) || shutdown(peer.Get(), SHUT_WR) != 0) {
        return std::nullopt;
    }
    std::string answer;
    Received received = Received::kPart;
    while (received == Received::kPart) {
        received = receive(peer, answer);
    }
    return received == Received::kEnd && !answer.empty() ? std::optional(answer) : std::nullopt;
}

bool SingleInstance::listen() {
    unlink((folder_ + kSocketFile).c_str());  // of a client that ended without a word
    socket_ = Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // Before it has a name, so that nobody finds it more open.
    return socket_ && fchmod(socket_.Get(), S_IRUSR | S_IWUSR) == 0 &&
           bind(socket_.Get(), Address(folder_).Get(), Address::kSize) == 0 &&
           ::listen(socket_.Get(), kWaiting) == 0;
}

void SingleInstance::Serve(QObject& owner, Answer const& answer) const {
    if (!socket_) {
        return;
    }
    auto* const arrivals = new QSocketNotifier(socket_.Get(), QSocketNotifier::Read, &owner);
    QObject::connect(arrivals, &QSocketNotifier::activated, &owner, [this, &owner, answer] {
        Descriptor peer(accept4(socket_.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (peer && isOurUser(peer)) {
            new Visit(std::move(peer), answer, &owner);  // owned by its parent
        }
    });
}

}  // namespace zorvanelink::ui

// Receiving on the link, beside a bare socket that reads in the same pieces from the same writer.
#include <arpa/inet.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <thread>

#include "benchmarks/bench_table.h"
#include "components/ipc/socket_ipc_server.h"
#include "components/logger/logger.h"

namespace {

using namespace zorvanelink::components::ipc;
using zorvanelink::bench::BenchTable;
using zorvanelink::bench::SecondsOf;

constexpr std::size_t kRead = 4028;         // bytes, as the link reads
constexpr std::size_t kBatch = 64 * 1024;   // bytes a write, at least one frame
constexpr std::size_t kTotal = 256U << 20;  // bytes a round
constexpr int kRounds = 20;                 // the best one counts
constexpr double kLeastRatio = 0.8;
constexpr std::size_t kPayloads[] = {200, 1024, 5000, 65536};

struct Load {
    std::string batch;
    std::size_t batches;
    std::size_t frames;
    std::size_t bytes() const { return batch.size() * batches; }
};

Load makeLoad(std::size_t payload) {
    IPCMsg const header = MakeIPCMsgHeader(kIPCCommon, static_cast<std::int32_t>(payload));
    std::string const frame = std::string(reinterpret_cast<char const*>(&header), sizeof header) +
                              '{' + std::string(payload - 1, 'x');
    std::size_t const in_batch = std::max<std::size_t>(1, kBatch / frame.size());
    Load load{"", std::max<std::size_t>(1, kTotal / (frame.size() * in_batch)), 0};
    for (std::size_t i = 0; i < in_batch; ++i) {
        load.batch += frame;
    }
    load.frames = load.batches * in_batch;
    return load;
}

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

void require(bool good, char const* what) {
    if (!good) {
        std::perror(what);
        std::exit(2);
    }
}

int connectTo(std::uint16_t port) {
    int const socket = ::socket(AF_INET, SOCK_STREAM, 0);
    auto const address = loopback(port);
    require(::connect(socket, reinterpret_cast<sockaddr const*>(&address), sizeof address) == 0,
            "connect");
    return socket;
}

void writeLoad(int socket, Load const& load) {
    for (std::size_t i = 0; i < load.batches; ++i) {
        for (std::size_t sent = 0; sent < load.batch.size();) {
            ssize_t const now =
                ::send(socket, load.batch.data() + sent, load.batch.size() - sent, MSG_NOSIGNAL);
            require(now > 0, "send");
            sent += static_cast<std::size_t>(now);
        }
    }
}

double bareSeconds(Load const& load) {
    int const listener = ::socket(AF_INET, SOCK_STREAM, 0);
    auto address = loopback(0);
    socklen_t length = sizeof address;
    require(::bind(listener, reinterpret_cast<sockaddr*>(&address), length) == 0, "bind");
    require(::listen(listener, 1) == 0, "listen");
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    int const writer = connectTo(ntohs(address.sin_port));
    int const reader = ::accept(listener, nullptr, nullptr);
    require(reader >= 0, "accept");
    double const seconds = SecondsOf([&] {
        std::thread writing([&] { writeLoad(writer, load); });
        std::vector<char> buffer(kRead);
        for (std::size_t got = 0; got < load.bytes();) {
            ssize_t const now = ::recv(reader, buffer.data(), buffer.size(), 0);
            require(now > 0, "recv");
            got += static_cast<std::size_t>(now);
        }
        writing.join();
    });
    for (int const socket : {writer, reader, listener}) {
        ::close(socket);
    }
    return seconds;
}

double linkSeconds(Load const& load, PortPlace const& place) {
    std::size_t frames = 0;  // the worker's
    std::atomic<bool> done{false};
    auto const server = std::make_shared<SocketIPCServer>(nullptr, place);
    server->RegisterIPCMsgCallback(kIPCCommon, [&](char const*, int) {
        if (++frames == load.frames) {
            done = true;
            done.notify_one();
        }
    });
    require(server->Run(), "Run");
    int const writer = connectTo(server->Port());
    double const seconds = SecondsOf([&] {
        std::thread writing([&] { writeLoad(writer, load); });
        done.wait(false);
        writing.join();
    });
    server->Stop();
    ::close(writer);
    return seconds;
}

}  // namespace

int main() {
    zorvanelink::components::logger::Logger::enable_console_log_ = false;
    char folder[] = "/tmp/zvl-bench-XXXXXX";
    require(mkdtemp(folder) != nullptr, "mkdtemp");
    PortPlace const place{kDefaultPort, std::string(folder) + "/port"};
    BenchTable table("Receiving on the link, against a bare socket with the same reads");
    for (std::size_t const payload : kPayloads) {
        Load const load = makeLoad(payload);
        double bare = 1e9;
        double link = 1e9;
        for (int round = 0; round < kRounds; ++round) {
            bare = std::min(bare, bareSeconds(load));
            link = std::min(link, linkSeconds(load, place));
        }
        auto const name = fmt::format("payload {} B", payload);
        double const megabytes = static_cast<double>(load.bytes()) / 1e6;
        auto const frames = static_cast<double>(load.frames);
        table.Add(name + ", frames", frames / link, "1/s");
        table.AddAtLeast(name + ", bytes", megabytes / link, "MB/s", megabytes / bare, kLeastRatio);
    }
    unlink(place.file.c_str());
    rmdir(folder);
    return table.Print();
}

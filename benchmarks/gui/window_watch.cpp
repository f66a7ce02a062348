// Starts a program several times and prints, for each, the milliseconds from the start of the
// process to its first window on the screen, as the X server tells it.
// usage: window_watch RUNS PROGRAM
#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto kPatience = std::chrono::seconds(20);

using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

Connection watchScreen() {
    Connection connection(xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) {
        return {nullptr, &xcb_disconnect};
    }
    auto const root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    std::uint32_t const events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection.get(), root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection.get());
    return connection;
}

// True when a window was mapped among what has arrived.
bool sawWindow(xcb_connection_t* connection) {
    bool seen = false;
    while (auto* const event = xcb_poll_for_event(connection)) {
        seen = seen || (event->response_type & 0x7fU) == XCB_MAP_NOTIFY;
        std::free(event);
    }
    return seen;
}

pid_t start(char* program) {
    pid_t const child = fork();
    if (child == 0) {
        int const nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        char* const arguments[] = {program, nullptr};
        execv(program, arguments);
        _exit(127);
    }
    return child;
}

std::optional<double> measure(xcb_connection_t* connection, char* program) {
    sawWindow(connection);
    auto const begin = Clock::now();
    pid_t const child = start(program);
    std::optional<double> time;
    while (!time && Clock::now() - begin < kPatience) {
        pollfd ready{xcb_get_file_descriptor(connection), POLLIN, 0};
        poll(&ready, 1, 100);
        if (sawWindow(connection)) {
            time = Milliseconds(Clock::now() - begin).count();
        }
    }
    if (child > 0) {
        kill(child, SIGTERM);
        waitpid(child, nullptr, 0);
    }
    return time;
}

}  // namespace

int main(int argc, char** argv) {
    auto const connection = watchScreen();
    if (argc != 3 || !connection) {
        fmt::print(stderr, "usage: window_watch RUNS PROGRAM, on an X display\n");
        return 2;
    }
    for (int run = std::atoi(argv[1]); run > 0; --run) {
        auto const time = measure(connection.get(), argv[2]);
        if (!time) {
            fmt::print(stderr, "no window appeared\n");
            return 1;
        }
        fmt::print("{:.2f}\n", *time);
    }
    return 0;
}

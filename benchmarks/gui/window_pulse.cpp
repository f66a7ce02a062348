// Asks a window for a sign of life every few milliseconds, as a window manager does, until its
// standard input ends. It prints a line at the first answer, and at the end the longest time
// without one, in milliseconds; the pause between two questions is part of it.
// usage: window_pulse WINDOW
#include <fmt/format.h>
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto kPause = std::chrono::milliseconds(5);
constexpr int kPatience = 20'000;  // ms without an answer, then it is no more asked

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

class Pulse {
  public:
    Pulse(xcb_connection_t* connection, xcb_window_t window)
        : connection_(connection),
          window_(window),
          root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
          protocols_(atom("WM_PROTOCOLS")),
          ping_(atom("_NET_WM_PING")) {
        // Answers go to the root window.
        std::uint32_t const events =
            XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection, root_, XCB_CW_EVENT_MASK, &events);
    }

    Milliseconds LongestSilence() {
        std::optional<Clock::time_point> last;
        Clock::duration longest{};
        bool asked = false;
        for (;;) {
            auto const now = Clock::now();
            if (answered()) {
                if (!last) {
                    fmt::print("it answers\n");
                    std::fflush(stdout);
                }
                longest = std::max(longest, now - last.value_or(now));
                last = now;
                asked = false;
            }
            if (!asked && now - last.value_or(Clock::time_point{}) >= kPause) {
                ask();
                asked = true;
            }
            pollfd ready[] = {{STDIN_FILENO, POLLIN, 0},
                              {xcb_get_file_descriptor(connection_), POLLIN, 0}};
            bool const silent = poll(ready, 2, asked ? kPatience : 1) == 0 && asked;
            if (silent || ready[0].revents != 0 || xcb_connection_has_error(connection_) != 0) {
                return std::max(longest, Clock::now() - last.value_or(Clock::time_point{}));
            }
        }
    }

  private:
    xcb_atom_t atom(std::string_view name) const {
        auto const cookie = xcb_intern_atom(connection_, 0, name.size(), name.data());
        std::unique_ptr<xcb_intern_atom_reply_t, Free> const reply(
            xcb_intern_atom_reply(connection_, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    void ask() {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window_;
        event.type = protocols_;
        event.data.data32[0] = ping_;
        event.data.data32[2] = window_;
        xcb_send_event(connection_, 0, window_, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<char const*>(&event));
        xcb_flush(connection_);
    }

    bool answered() {
        bool found = false;
        while (std::unique_ptr<xcb_generic_event_t, Free> const event{
            xcb_poll_for_event(connection_)}) {
            auto const* const message =
                reinterpret_cast<xcb_client_message_event_t const*>(event.get());
            found = found || ((event->response_type & 0x7fU) == XCB_CLIENT_MESSAGE &&
                              message->window == root_ && message->data.data32[0] == ping_ &&
                              message->data.data32[2] == window_);
        }
        return found;
    }

    xcb_connection_t* connection_;
    xcb_window_t window_;
    xcb_window_t root_;
    xcb_atom_t protocols_;
    xcb_atom_t ping_;
};

}  // namespace

int main(int argc, char** argv) {
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> const connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (argc != 2 || xcb_connection_has_error(connection.get()) != 0) {
        fmt::print(stderr, "usage: window_pulse WINDOW, on an X display\n");
        return 2;
    }
    auto const window = static_cast<xcb_window_t>(std::strtoul(argv[1], nullptr, 0));
    fmt::print("{:.2f}\n", Pulse(connection.get(), window).LongestSilence().count());
    return 0;
}

// Starts programs in turns, so that noise is shared, and prints a line for each start: the number
// of the program on the command line, from 0, and the milliseconds from the start of the process
// until its first window is on the screen and until that window shows its picture, as the X server
// tells both. A first round, not printed, fills the caches and learns what the finished pictures
// show. usage: window_watch RUNS PROGRAM...
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
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto kPatience = std::chrono::seconds(20);
constexpr auto kSettled = std::chrono::seconds(1);
constexpr int kAboveTheBottom = 24;  // pixels: below the middle of a window stands its plain ground

using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;
template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

struct Place {
    std::int16_t x;
    std::int16_t y;
};

struct Times {
    Clock::time_point begin;
    Clock::time_point window;
    Clock::time_point picture;
};

class Screen {
  public:
    Screen() : connection_(xcb_connect(nullptr, nullptr), &xcb_disconnect) {
        if (!Works()) {
            return;
        }
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
        std::uint32_t const events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_.get(), root_, XCB_CW_EVENT_MASK, &events);
        xcb_flush(connection_.get());
    }

    bool Works() const { return xcb_connection_has_error(connection_.get()) == 0; }

    // Where to look for the picture of a window that was mapped among what has arrived.
    std::optional<Place> Mapped() {
        std::optional<Place> found;
        while (auto* const event = xcb_poll_for_event(connection_.get())) {
            if ((event->response_type & 0x7fU) == XCB_MAP_NOTIFY) {
                found = ground(reinterpret_cast<xcb_map_notify_event_t*>(event)->window);
            }
            std::free(event);
        }
        return found;
    }

    void Wait() const {
        pollfd ready{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
        poll(&ready, 1, 100);
    }

    std::uint32_t Colour(Place place) const {
        auto const cookie = xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root_,
                                          place.x, place.y, 1, 1, ~0U);
        Reply<xcb_get_image_reply_t> const image(
            xcb_get_image_reply(connection_.get(), cookie, nullptr), &std::free);
        return image ? *reinterpret_cast<std::uint32_t*>(xcb_get_image_data(image.get())) : 0;
    }

  private:
    std::optional<Place> ground(xcb_window_t window) const {
        auto const cookie = xcb_get_geometry(connection_.get(), window);
        Reply<xcb_get_geometry_reply_t> const box(
            xcb_get_geometry_reply(connection_.get(), cookie, nullptr), &std::free);
        if (!box || box->height < 2 * kAboveTheBottom) {
            return std::nullopt;
        }
        return Place{static_cast<std::int16_t>(box->x + box->width / 2),
                     static_cast<std::int16_t>(box->y + box->height - kAboveTheBottom)};
    }

    Connection connection_;
    xcb_window_t root_ = 0;
};

class Program {
  public:
    explicit Program(char* path) {
        child_ = fork();
        if (child_ == 0) {
            int const nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
            dup2(nowhere, STDOUT_FILENO);
            dup2(nowhere, STDERR_FILENO);
            char* const arguments[] = {path, nullptr};
            execv(path, arguments);
            _exit(127);
        }
    }
    ~Program() {
        kill(child_, SIGTERM);
        waitpid(child_, nullptr, 0);
    }
    Program(Program const&) = delete;
    Program& operator=(Program const&) = delete;

  private:
    pid_t child_;
};

// With a colour, until the picture shows it; without one, for the time it takes to settle, and the
// colour is then known.
std::optional<Times> measure(Screen& screen, char* path, std::optional<std::uint32_t>& colour) {
    screen.Mapped();
    Times times{.begin = Clock::now(), .window = {}, .picture = {}};
    Program const program(path);
    std::optional<Place> place;
    while (!(place = screen.Mapped())) {
        if (Clock::now() - times.begin > kPatience) {
            return std::nullopt;
        }
        screen.Wait();
    }
    times.window = Clock::now();
    if (!colour) {
        std::this_thread::sleep_for(kSettled);
        colour = screen.Colour(*place);
    }
    while (screen.Colour(*place) != *colour) {
        if (Clock::now() - times.begin > kPatience) {
            return std::nullopt;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    times.picture = Clock::now();
    return times;
}

}  // namespace

int main(int argc, char** argv) {
    Screen screen;
    if (argc < 3 || !screen.Works()) {
        fmt::print(stderr, "usage: window_watch RUNS PROGRAM..., on an X display\n");
        return 2;
    }
    std::vector<std::optional<std::uint32_t>> colours(static_cast<std::size_t>(argc - 2));
    int const runs = std::atoi(argv[1]);
    for (int run = 0; run <= runs; ++run) {
        for (std::size_t i = 0; i < colours.size(); ++i) {
            auto const times = measure(screen, argv[i + 2], colours[i]);
            if (!times) {
                fmt::print(stderr, "{}: no window, or no picture in it\n", argv[i + 2]);
                return 1;
            }
            if (run > 0) {
                fmt::print("{} {:.2f} {:.2f}\n", i,
                           Milliseconds(times->window - times->begin).count(),
                           Milliseconds(times->picture - times->begin).count());
            }
        }
    }
    return 0;
}

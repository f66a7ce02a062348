// Log lines of both ends: one Logger a log name, writing to a rotating file and to standard error.
//
// Threads: every call may come from any thread. Errors: a log call never reports, what fails while
// it writes goes to spdlog's error handler; a file that cannot be created leaves the logger with
// the console alone, which says so. Control characters of a line are escaped, line ends above all:
// no text of a peer can pass for a line of ours. A line is in the file within three seconds.
#pragma once

#include <fmt/core.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace spdlog {
class logger;
}

namespace zorvanelink::components::logger {

// max is no level that can be set.
enum class LOG_LEVEL : int { verbose, debug, info, warning, error, fatal, max };

class Logger {
  public:
    static constexpr unsigned kDefaultMaxSize = 0x500000;  // bytes a file before it is rotated
    static constexpr unsigned kDefaultMaxFiles = 3;        // rotated files beside the current one

    // Folder (or file, when it ends in ".log") and name of the default logger. Set before the
    // first log line.
    static void SetDefaultLogPath(std::string path);
    static void SetDefaultLogName(std::string name);

    // The shared logger of that name; path and sizes (bytes, files) count only when it is new.
    static std::shared_ptr<Logger> Instance(std::string const& name, std::string const& path,
                                            unsigned max_size, unsigned max_files);
    static std::shared_ptr<Logger> Instance(std::string const& name, std::string const& path);

    // Flushes every log and drops spdlog's registry; for the end of the process.
    static void ShutDown();

    Logger(std::string const& name, std::string const& path, unsigned max_size, unsigned max_files);

    template <class... Args>
    void verbose(fmt::format_string<Args...> format, Args&&... args) {
        write(LOG_LEVEL::verbose, format, args...);
    }
    template <class... Args>
    void debug(fmt::format_string<Args...> format, Args&&... args) {
        write(LOG_LEVEL::debug, format, args...);
    }
    template <class... Args>
    void info(fmt::format_string<Args...> format, Args&&... args) {
        write(LOG_LEVEL::info, format, args...);
    }
    template <class... Args>
    void warning(fmt::format_string<Args...> format, Args&&... args) {
        write(LOG_LEVEL::warning, format, args...);
    }
    template <class... Args>
    void error(fmt::format_string<Args...> format, Args&&... args) {
        write(LOG_LEVEL::error, format, args...);
    }
    template <class... Args>
    std::string format(fmt::format_string<Args...> format, Args&&... args) {
        return fmt::format(format, args...);
    }

    // Hex dump of single bytes, 32 a line, put into the one place of `format`; always at verbose
    // level.
    template <class Container>
    void binary(std::string const& format, Container const& data) {
        static_assert(sizeof(*data.data()) == 1);
        writeBytes(format, {reinterpret_cast<char const*>(data.data()), data.size()});
    }

    void setLogLevel(LOG_LEVEL level);
    void setLogLevel(std::string const& name);
    LOG_LEVEL level() const { return level_.load(std::memory_order_relaxed); }

    // Gets level number and finished text of each line that spdlog's global level lets through.
    // Set before other threads log.
    void setSdkCallback(std::function<void(int, std::string const&)> callback);

    static bool enable_console_log_;
    static bool enable_file_log_;

  private:
    template <class... Args>
    void write(LOG_LEVEL level, fmt::string_view format, Args const&... args) {
        if (this->level() <= level) {
            vwrite(level, format, fmt::make_format_args(args...));
        }
    }
    void vwrite(LOG_LEVEL level, fmt::string_view format, fmt::format_args args);
    void writeBytes(std::string const& format, std::string_view bytes);
    // Answers why there is no file; empty when there is one.
    std::string initFileLogger(std::string const& name, std::string const& path, unsigned max_size,
                               unsigned max_files);
    void initConsoleLogger(std::string const& name);

    std::string name_;
    std::shared_ptr<spdlog::logger> file_;
    std::shared_ptr<spdlog::logger> console_;
    std::atomic<LOG_LEVEL> level_{LOG_LEVEL::info};
    std::function<void(int, std::string const&)> sdk_callback_;
};

// The process's logger: the first one by name, or the default one when there is none yet.
Logger& Log();
std::shared_ptr<Logger> default_logger();
std::shared_ptr<Logger> Log(std::string const& name);
std::shared_ptr<Logger> Log(std::string const& name, std::string const& path);
std::shared_ptr<Logger> Log(std::string const& name, std::string const& path, unsigned max_size,
                            unsigned max_files);

}  // namespace zorvanelink::components::logger

// Written as its number.
template <>
struct fmt::formatter<zorvanelink::components::logger::LOG_LEVEL> : fmt::formatter<int> {
    auto format(zorvanelink::components::logger::LOG_LEVEL level,
                fmt::format_context& context) const {
        return fmt::formatter<int>::format(static_cast<int>(level), context);
    }
};

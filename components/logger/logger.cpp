#include "components/logger/logger.h"

#include <fcntl.h>
#include <spdlog/fmt/bin_to_hex.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>
#include <spdlog/spdlog.h>

#include <array>
#include <condition_variable>
#include <cstdio>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>

namespace zorvanelink::components::logger {
namespace {

constexpr char kFilePattern[] = "%Y/%m/%d %H:%M:%S.%e %5l@%n[%5P:%5t] %v";
constexpr char kConsolePattern[] = "%Y/%m/%d %H:%M:%S.%e %^%5l%$@%n[%5P:%5t] %v";
constexpr unsigned kBacktraceLines = 30;
constexpr unsigned kHexBytesPerLine = 32;
constexpr std::size_t kLongestLine = 16 * 1024;  // bytes; of a longer text the rest is counted
constexpr auto kFlushDelay = std::chrono::seconds(1);  // of what was written

struct LevelRow {
    char const* name;
    spdlog::level::level_enum level;
};
constexpr std::array<LevelRow, 6> SPDLOG_LEVEL{{
    {"verbose", spdlog::level::trace},
    {"debug", spdlog::level::debug},
    {"info", spdlog::level::info},
    {"warning", spdlog::level::warn},
    {"error", spdlog::level::err},
    {"fatal", spdlog::level::critical},
}};

std::mutex g_mutex;  // guards the map and the two defaults
// Never destroyed: a thread that outlives main may still log.
std::map<std::string, std::shared_ptr<Logger>>& g_log_map =
    *new std::map<std::string, std::shared_ptr<Logger>>;
std::string g_default_log_path;
std::string g_default_log_name = "zlink";
// What Log() answers: a read without the lock, since every log line passes here.
std::atomic<Logger*> g_first{nullptr};

std::string defaultPath() {
    std::lock_guard lock(g_mutex);
    return g_default_log_path;
}

// A program that we start must not hold the log open, nor write to it.
void closeOnExec(spdlog::filename_t const& /*file*/, std::FILE* stream) {
    fcntl(fileno(stream), F_SETFD, FD_CLOEXEC);
}

// Flushes the logs a moment after a line, and sleeps as long as nobody writes. Once stopped it
// stays so.
class Flusher {
  public:
    void Wrote() try {
        if (!dirty_.exchange(true)) {
            std::lock_guard lock(mutex_);
            if (!stopped_ && !thread_.joinable()) {
                thread_ = std::thread([this] { run(); });
            }
            changed_.notify_one();
        }
    } catch (std::system_error const&) {  // no thread to be had: ShutDown flushes
    }
    void Stop() {
        {
            std::lock_guard lock(mutex_);
            stopped_ = true;
        }
        changed_.notify_one();
        if (thread_.joinable()) {
            thread_.join();
        }
    }
    static void Flush() {
        spdlog::apply_all([](std::shared_ptr<spdlog::logger> const& logger) { logger->flush(); });
    }

  private:
    void run() {
        std::unique_lock lock(mutex_);
        while (!stopped_) {
            changed_.wait(lock, [this] { return stopped_ || dirty_; });
            changed_.wait_for(lock, kFlushDelay, [this] { return stopped_; });
            dirty_ = false;  // a line that comes during the flush asks for the next one
            lock.unlock();
            Flush();
            lock.lock();
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::atomic<bool> dirty_{false};
    bool stopped_ = false;
    std::thread thread_;
};
// Never destroyed, like the map.
Flusher& g_flusher = *new Flusher;

// What a peer sends may hold line ends, which would make a line of ours out of it, and the control
// sequences of a terminal, in the one byte or (C1, in UTF-8) the two.
void appendEscaped(std::string_view text, fmt::format_context& context) {
    auto out = context.out();
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto const byte = static_cast<unsigned char>(text[i]);
        auto const next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {
            out = fmt::format_to(out, "\\x{:02x}", next);
            ++i;
        } else if (byte == '\n') {
            out = fmt::format_to(out, "\\n");
        } else if (byte < 0x20 || byte == 0x7F) {
            out = fmt::format_to(out, "\\x{:02x}", byte);
        } else {
            *out++ = text[i];
        }
    }
    context.advance_to(out);
}

// A line that is formatted inside spdlog's call, where a failure goes to spdlog's error handler
// and not to the caller.
struct DeferredText {
    fmt::string_view format;
    fmt::format_args args;
};

}  // namespace
}  // namespace zorvanelink::components::logger

template <>
struct fmt::formatter<zorvanelink::components::logger::DeferredText> {
    constexpr auto parse(fmt::format_parse_context& context) { return context.begin(); }
    auto format(zorvanelink::components::logger::DeferredText const& text,
                fmt::format_context& context) const {
        using namespace zorvanelink::components::logger;
        std::array<char, kLongestLine + 1> line;
        std::size_t const whole =
            fmt::vformat_to_n(line.data(), line.size(), text.format, text.args).size;
        std::size_t kept = whole;
        if (whole > kLongestLine) {
            kept = kLongestLine;
            while (kept > 0 && (static_cast<unsigned char>(line[kept]) & 0xC0U) == 0x80) {
                --kept;  // not inside a character
            }
        }
        appendEscaped({line.data(), kept}, context);
        if (kept < whole) {
            context.advance_to(fmt::format_to(context.out(), "… ({} bytes more)", whole - kept));
        }
        return context.out();
    }
};

namespace zorvanelink::components::logger {

bool Logger::enable_console_log_ = true;
bool Logger::enable_file_log_ = true;

void Logger::SetDefaultLogPath(std::string path) {
    std::lock_guard lock(g_mutex);
    g_default_log_path = std::move(path);
}

void Logger::SetDefaultLogName(std::string name) {
    std::lock_guard lock(g_mutex);
    g_default_log_name = std::move(name);
}

std::shared_ptr<Logger> Logger::Instance(std::string const& name, std::string const& path,
                                         unsigned max_size, unsigned max_files) {
    std::lock_guard lock(g_mutex);
    auto& entry = g_log_map[name];
    if (!entry) {
        entry = std::make_shared<Logger>(name, path, max_size, max_files);
        g_first = g_log_map.begin()->second.get();
    }
    return entry;
}

std::shared_ptr<Logger> Logger::Instance(std::string const& name, std::string const& path) {
    return Instance(name, path, kDefaultMaxSize, kDefaultMaxFiles);
}

void Logger::ShutDown() {
    try {
        g_flusher.Stop();
        Flusher::Flush();
        spdlog::shutdown();
    } catch (...) {  // nothing is left to report to
    }
}

Logger::Logger(std::string const& name, std::string const& path, unsigned max_size,
               unsigned max_files)
    : name_(name) {
    std::string failure;
    if (enable_file_log_ && !path.empty()) {
        failure = initFileLogger(name, path, max_size, max_files);
    }
    if (enable_console_log_ && !name.empty()) {
        initConsoleLogger(name);
    }
    if (!failure.empty()) {  // only now is there a console to say it on
        error("Log goes to the console alone: {}", failure);
    }
}

std::string Logger::initFileLogger(std::string const& name, std::string const& path,
                                   unsigned max_size, unsigned max_files) {
    std::string const file = path.ends_with(".log") ? path : path + "/" + name + ".log";
    try {
        spdlog::file_event_handlers events;
        events.after_open = &closeOnExec;
        file_ = spdlog::rotating_logger_mt("file" + name, file, max_size, max_files, false, events);
    } catch (spdlog::spdlog_ex const& error) {  // the console alone has to do
        return error.what();
    }
    file_->enable_backtrace(kBacktraceLines);
    file_->set_pattern(kFilePattern);
    setLogLevel(LOG_LEVEL::info);
    return {};
}

void Logger::initConsoleLogger(std::string const& name) {
    try {
        console_ = spdlog::stderr_color_mt(name, spdlog::color_mode::automatic);
    } catch (spdlog::spdlog_ex const&) {
        return;
    }
    console_->set_pattern(kConsolePattern);
    setLogLevel(LOG_LEVEL::info);
}

void Logger::vwrite(LOG_LEVEL level, fmt::string_view format, fmt::format_args args) {
    auto const spdlog_level = SPDLOG_LEVEL[static_cast<std::size_t>(level)].level;
    DeferredText const text{format, args};
    if (enable_file_log_ && file_) {
        file_->log(spdlog_level, "{}", text);
        g_flusher.Wrote();
    }
    if (enable_console_log_ && console_) {
        console_->log(spdlog_level, "{}", text);
    }
    if (!sdk_callback_) {
        return;
    }
    auto const global = spdlog::default_logger();  // none after ShutDown
    if (global && global->should_log(spdlog_level)) {
        sdk_callback_(static_cast<int>(level), fmt::format("{}", text));
    }
}

void Logger::writeBytes(std::string const& format, std::string_view bytes) {
    auto const hex = spdlog::to_hex(bytes.begin(), bytes.end(), kHexBytesPerLine);
    for (auto const& logger : {file_, console_}) {
        if (logger) {
            logger->trace(fmt::runtime(format), hex);
        }
    }
    g_flusher.Wrote();
    if (sdk_callback_) {
        sdk_callback_(static_cast<int>(LOG_LEVEL::verbose),
                      "Binary output is not supported for sdk");
    }
}

void Logger::setLogLevel(LOG_LEVEL level) {
    auto const index = static_cast<std::size_t>(level);
    if (index >= SPDLOG_LEVEL.size()) {
        error("Faile to set log level [{}]", level);
        return;
    }
    auto const spdlog_level = SPDLOG_LEVEL[index].level;
    for (auto const& logger : {file_, console_, spdlog::default_logger()}) {
        if (logger) {
            logger->set_level(spdlog_level);
        }
    }
    level_ = level;
}

void Logger::setLogLevel(std::string const& name) {
    std::size_t index = 0;
    while (index < SPDLOG_LEVEL.size() && name != SPDLOG_LEVEL[index].name) {
        ++index;
    }
    setLogLevel(static_cast<LOG_LEVEL>(index));
}

void Logger::setSdkCallback(std::function<void(int, std::string const&)> callback) {
    sdk_callback_ = std::move(callback);
}

Logger& Log() {
    Logger* first = g_first.load(std::memory_order_acquire);
    return first != nullptr ? *first : *default_logger();
}

std::shared_ptr<Logger> default_logger() {
    std::string name;
    {
        std::lock_guard lock(g_mutex);
        name = g_default_log_name;
    }
    return Log(name);
}

std::shared_ptr<Logger> Log(std::string const& name) {
    return Logger::Instance(name, defaultPath());
}

std::shared_ptr<Logger> Log(std::string const& name, std::string const& path) {
    return Logger::Instance(name, path);
}

std::shared_ptr<Logger> Log(std::string const& name, std::string const& path, unsigned max_size,
                            unsigned max_files) {
    return Logger::Instance(name, path, max_size, max_files);
}

}  // namespace zorvanelink::components::logger

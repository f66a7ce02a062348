#include "components/logger/logger.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <spdlog/spdlog.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

#include "tests/support/test_environment.h"

namespace zorvanelink::components::logger {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

// Each case writes to a folder of its own, to loggers named after the case: they live as long as
// the process.
class LoggerTest : public testing::Test {
  protected:
    LoggerTest() { Logger::enable_console_log_ = false; }
    ~LoggerTest() override { Logger::enable_console_log_ = true; }

    static std::vector<std::string> linesOf(fs::path const& file) {
        spdlog::apply_all([](auto const& logger) { logger->flush(); });
        std::ifstream in(file);
        std::vector<std::string> lines;
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    // What stands behind the head of each line of the case's own file.
    std::vector<std::string> texts() const {
        std::vector<std::string> texts = linesOf(file_);
        for (std::string& line : texts) {
            line.erase(0, line.find("] ") + 2);
        }
        return texts;
    }

    std::string const name_ = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::string const folder_ = (test::TestEnvironment::Home() / "logs" / name_).string();
    fs::path const file_ = fs::path(folder_) / (name_ + ".log");
};

TEST_F(LoggerTest, LogStartsWithTheDefaultLoggerAndThenTakesTheFirstName) {
    Logger::SetDefaultLogPath(folder_);
    Logger::SetDefaultLogName("0-default");
    Log().info("hello");
    EXPECT_EQ(&Log(), default_logger().get());
    EXPECT_THAT(linesOf(folder_ + "/0-default.log"), ElementsAre(HasSubstr("@file0-default[")));
    EXPECT_EQ(&Log(), Log("0-default").get());
    auto const later = Log("1-later");
    EXPECT_NE(&Log(), later.get());
    auto const earlier = Log("!-earlier");
    EXPECT_EQ(&Log(), earlier.get());
    EXPECT_TRUE(fs::exists(folder_ + "/!-earlier.log"));
}

TEST_F(LoggerTest, GatesLetThroughTheirLevelAndAbove) {
    std::vector<std::string> const all{"v 1", "d two", "i true", "w 4", "e 5"};
    auto const log = Logger::Instance(name_, folder_);
    EXPECT_EQ(log->level(), LOG_LEVEL::info);
    char const* const names[] = {"verbose", "debug", "info", "warning", "error", "fatal"};
    for (std::size_t level = 0; level < std::size(names); ++level) {
        SCOPED_TRACE(names[level]);
        log->setLogLevel(std::string(names[level]));
        EXPECT_EQ(log->level(), static_cast<LOG_LEVEL>(level));
        auto const before = texts().size();
        log->verbose("v {}", 1);
        log->debug("d {}", std::string("two"));
        log->info("i {}", true);
        log->warning("w {}", LOG_LEVEL::error);
        log->error("e {}", "5");
        auto const after = texts();
        EXPECT_EQ(std::vector(after.begin() + static_cast<std::ptrdiff_t>(before), after.end()),
                  std::vector(all.begin() + static_cast<std::ptrdiff_t>(level), all.end()));
    }
    log->setLogLevel(LOG_LEVEL::error);
    log->setLogLevel("Debug");
    log->setLogLevel(LOG_LEVEL::max);
    EXPECT_EQ(log->level(), LOG_LEVEL::error);
    EXPECT_EQ(texts().back(), "Faile to set log level [6]");
}

TEST_F(LoggerTest, LinesHaveTheirHead) {
    auto const log = Logger::Instance(name_, folder_ + "/the-file.log");
    log->info("{} of {}", "{} not a place", 2);
    log->warning("w");
    std::string const time = "[0-9]{4}/[0-9]{2}/[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}[.][0-9]{3} ";
    std::string const ids = "@fileLinesHaveTheirHead\\[[ 0-9]{4,}[0-9]:[ 0-9]{4,}[0-9]\\] ";
    EXPECT_THAT(linesOf(folder_ + "/the-file.log"),
                ElementsAre(MatchesRegex(time + " info" + ids + "[{][}] not a place of 2"),
                            MatchesRegex(time + "warning" + ids + "w")));
    EXPECT_FALSE(fs::exists(file_));
}

TEST_F(LoggerTest, AFullFileRollsAndNoChildInheritsIt) {
    auto const log = Logger::Instance(name_, folder_, 300, 3);
    for (int line = 0; line < 40; ++line) {
        log->info("line {}", line);
    }
    EXPECT_EQ(texts().back(), "line 39");
    EXPECT_TRUE(fs::exists(folder_ + "/" + name_ + ".3.log"));
    EXPECT_FALSE(fs::exists(folder_ + "/" + name_ + ".4.log"));
    int found = 0;
    for (int fd = 0; fd < 256; ++fd) {
        std::error_code none;
        if (fs::read_symlink("/proc/self/fd/" + std::to_string(fd), none) == file_) {
            ++found;
            EXPECT_EQ(fcntl(fd, F_GETFD), FD_CLOEXEC);
        }
    }
    EXPECT_EQ(found, 1);
}

TEST_F(LoggerTest, NoTextPassesForALineOfOurs) {
    auto const log = Logger::Instance(name_, folder_);
    std::vector<std::string> got;
    log->setSdkCallback([&got](int level, std::string const& text) {
        got.push_back(fmt::format("{} {}", level, text));
    });
    log->debug("gated");
    log->info("{}", "a\n2026/01/01 b\r\t\x1b[2K\x7f\xC2\x9b \xC2\xA0\xE5\xBC\xA0");
    std::string const escaped = "a\\n2026/01/01 b\\x0d\\x09\\x1b[2K\\x7f\\x9b \xC2\xA0\xE5\xBC\xA0";
    EXPECT_THAT(texts(), ElementsAre(escaped));
    log->binary("{}", std::string("x"));
    EXPECT_THAT(got, ElementsAre("2 " + escaped, "0 Binary output is not supported for sdk"));
    // Of a text that is too long, the whole characters that fit.
    std::string const most(16 * 1024 - 2, 'x');
    log->info("{}\xE5\xBC\xA0{}", most, std::string(15 << 20, 'y'));
    EXPECT_EQ(got.back(), "2 " + most + "… (15728643 bytes more)");
    log->info("{}\xE5", most);
    EXPECT_EQ(got.back(), "2 " + most + "\xE5");
}

TEST_F(LoggerTest, ALineReachesTheFileByItself) {
    auto const log = Logger::Instance(name_, folder_);
    for (char const* const text : {"first", "second"}) {
        log->info(fmt::runtime(text));
        std::string content;
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (content.find(text) == std::string::npos &&
               std::chrono::steady_clock::now() < deadline) {
            std::this_thread::yield();
            std::ifstream in(file_);
            content.assign(std::istreambuf_iterator<char>(in), {});
        }
        EXPECT_THAT(content, HasSubstr(text));
    }
}

TEST_F(LoggerTest, WithoutAFileTheConsoleGoesOn) {
    Logger::enable_console_log_ = true;
    testing::internal::CaptureStderr();
    auto const log = Logger::Instance(name_, "/dev/null/no/folder");
    log->info("still here");
    log->debug("not this");
    log->setLogLevel("debug");
    log->debug("but this");
    std::istringstream captured(testing::internal::GetCapturedStderr());
    std::string reason;
    std::string first;
    std::string second;
    std::getline(captured, reason);
    std::getline(captured, first);
    std::getline(captured, second);
    EXPECT_THAT(reason, HasSubstr("] Log goes to the console alone: "));
    EXPECT_THAT(first,
                testing::AllOf(HasSubstr("@" + name_ + "["), testing::EndsWith("] still here")));
    EXPECT_THAT(second, testing::EndsWith("] but this"));
}

TEST_F(LoggerTest, BinaryIsAHexDumpAtVerboseLevelOnly) {
    auto const log = Logger::Instance(name_, folder_);
    log->binary("sent {}", std::string("no"));
    log->setLogLevel(LOG_LEVEL::verbose);
    log->binary("sent {}", std::string(33, '\xab'));
    EXPECT_THAT(linesOf(file_), ElementsAre(HasSubstr("] sent "), testing::StartsWith("0000: ab"),
                                            testing::StartsWith("0020: ab")));
}

TEST_F(LoggerTest, ALineThatCannotBeFormattedStaysInside) {
    auto const log = Logger::Instance(name_, folder_);
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(log->error("{:{}}", 1, -1));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("LOG ERROR"));
    log->error("next");
    EXPECT_THAT(texts(), ElementsAre("next"));
}

TEST_F(LoggerTest, ShutDownWritesOutAndLeavesALoggerThatCanBeCalled) {
    auto const log = Logger::Instance(name_, folder_);
    log->info("last words");
    Logger::ShutDown();
    EXPECT_THAT(texts(), ElementsAre("last words"));
    log->setLogLevel(LOG_LEVEL::debug);
    log->debug("too late, but no fault");
    Logger::Instance(name_ + "-new", folder_)->info("nor this");
}

}  // namespace
}  // namespace zorvanelink::components::logger

#include "components/utils/process_check.h"

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>
#include <vector>

#include "tests/support/test_environment.h"
#include "tools/support/files.h"

namespace zorvanelink::components::utils {
namespace {

namespace fs = std::filesystem;

// A process of the real table that waits for its end.
class Waiting {
  public:
    explicit Waiting(std::vector<std::string> words, char const* program = "/bin/sleep") {
        std::vector<char*> argv;
        for (std::string& word : words) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        EXPECT_EQ(posix_spawn(&pid_, program, nullptr, nullptr, argv.data(), environ), 0);
        // The table has the command line a moment after the program is in place.
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        std::string const line = "/proc/" + std::to_string(pid_) + "/cmdline";
        while (!test::ReadFile(line).starts_with(words.front() + '\0') &&
               std::chrono::steady_clock::now() < deadline) {
            std::this_thread::yield();
        }
    }
    ~Waiting() {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    Waiting(Waiting const&) = delete;
    Waiting& operator=(Waiting const&) = delete;

  private:
    pid_t pid_ = -1;
};

TEST(ProcessCheck, ByTheNameOfTheProgramOnly) {
    std::string const name = "zvl-x-" + std::to_string(getpid());
    auto const runs = [&name] { return CheckRunningUIProcessByName(name, true); };
    {
        std::string const fifo = test::TestEnvironment::Home() / "fifo";
        mkfifo(fifo.c_str(), 0600);
        std::string const wait = "read line <" + fifo;
        Waiting const shell({"sh", "-c", wait, name}, "/bin/sh");
        Waiting const launcher({"sudo", "-c", wait, name}, "/bin/sh");
        Waiting const editor({"vi", "-c", wait, "/usr/bin/" + name}, "/bin/sh");
        Waiting const longer({"/opt/" + name + "y", "100"});
        EXPECT_FALSE(runs());
    }
    {
        Waiting const other({"/opt/" + name, "100"});
        EXPECT_TRUE(runs());
        EXPECT_FALSE(CheckRunningUIProcessByName(name, false));
        Waiting const second({name, "100"});
        EXPECT_TRUE(CheckRunningUIProcessByName(name, false));
    }
    EXPECT_FALSE(runs());
}

TEST(ProcessCheck, NeitherItselfNorWhatStartedIt) {
    std::string const name = GetFileName(fs::read_symlink("/proc/self/exe").string());
    EXPECT_FALSE(CheckRunningUIProcessByName(name, false));
    // Two generations further down, all of that name.
    pid_t const test = getpid();
    pid_t child = fork();
    if (child == 0 && (child = fork()) == 0) {
        _exit(CheckRunningUIProcessByName(name, true) ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    if (getpid() != test) {
        _exit(status == 0 ? 0 : 1);
    }
    EXPECT_EQ(status, 0);
}

TEST(ProcessCheck, NamesThatAreNoNames) {
    for (std::string const name : {"", "x;true", "x y", "(x)", "\xC3\xA4"}) {
        Waiting const other({name, "100"});
        EXPECT_FALSE(CheckRunningUIProcessByName(name, true)) << name;
    }
}

}  // namespace
}  // namespace zorvanelink::components::utils

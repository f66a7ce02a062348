#include "components/utils/process_check.h"

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
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
        // Answers when the program is in place.
        EXPECT_EQ(posix_spawn(&pid_, program, nullptr, nullptr, argv.data(), environ), 0);
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
        Waiting const shell({"sh", "-c", "read line; exec " + name}, "/bin/sh");
        Waiting const launcher({"sudo", "-u", "anna", name}, "/bin/cat");
        Waiting const longer({"/opt/" + name + "y", "100"});
        std::string const file = test::TestEnvironment::Home() / name;
        Waiting const editor({"vi", "-f", "/dev/null", file}, "/usr/bin/tail");
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
    pid_t const child = fork();
    if (child == 0) {
        _exit(CheckRunningUIProcessByName(name, true) ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
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

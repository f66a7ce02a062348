#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "components/utils/process_check.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_environment.h"
#include "tools/support/files.h"

namespace zorvanelink::components::utils {
namespace {

namespace fs = std::filesystem;

// Puts a ps that prints the given table ahead of the real one.
class ProcessCheck : public testing::Test {
  protected:
    void SetUp() override {
        path_ = std::getenv("PATH");
        folder_ = test::TestEnvironment::Home() / "bin";
        own_ = std::to_string(getpid());
    }
    void TearDown() override { setenv("PATH", path_.c_str(), 1); }

    bool check(std::string const& table, bool skipSelf = true, std::string const& name = "zvl-x") {
        std::string const list = test::WriteFile(folder_ / "table", table);
        std::string const ps = test::WriteFile(folder_ / "ps", "#!/bin/sh\ncat " + list + "\n");
        fs::permissions(ps, fs::perms::owner_all);
        setenv("PATH", (folder_.string() + ":" + path_).c_str(), 1);
        return CheckRunningUIProcessByName(name, skipSelf);
    }
    std::string line(std::string const& pid, std::string const& command) const {
        return "anna  " + pid + "  1  0 10:00 ?  00:00:00 " + command + "\n";
    }

    std::string path_;
    std::string own_;
    fs::path folder_;
};

TEST_F(ProcessCheck, CountsOthersOnly) {
    std::string const own = line(own_, "/opt/zvl/bin/zvl-x");
    struct Case {
        char const* what;
        std::string table;
        bool running;
    } const cases[] = {
        {"nothing", "", false},
        {"self", own, false},
        {"another ahead", line("7", "/opt/zvl/bin/zvl-x") + own, true},
        {"another behind", own + line("7", "zvl-x"), true},
        {"a pid that holds ours", own + line(own_ + "1", "zvl-x"), true},
        {"our pid in the command line", own + line("7", own_ + "/zvl-x"), true},
        {"with arguments", own + line("7", "/opt/zvl/bin/zvl-x --style fusion"), true},
        {"self with arguments", line(own_, "zvl-x --style fusion"), false},
        {"launcher as another user", own + line("7", "sudo -u anna zvl-x"), false},
        {"another name", own + line("7", "zvl-xy"), false},
        {"own line in pieces", line(own_, std::string(400, 'a') + "/zvl-x"), false},
        {"long line of another", line("7", std::string(400, 'a') + "/zvl-x"), true},
        {"launcher in the first piece only",
         line("7", "sudo -u anna " + std::string(400, 'a') + "/zvl-x"), true},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(check(c.table), c.running) << c.what;
    }
}

TEST_F(ProcessCheck, WithSelfTheSecondCounts) {
    std::string const own = line(own_, "zvl-x");
    EXPECT_FALSE(check(own, false));
    EXPECT_TRUE(check(own + line("7", "zvl-x"), false));
    EXPECT_FALSE(check(line("7", "zvl-x"), false));
    EXPECT_TRUE(check(line("7", "zvl-x") + line("8", "zvl-x"), false));
}

TEST_F(ProcessCheck, NamesThatAreNoNamesAndNoPs) {
    std::string const table = line("7", "x");
    for (std::string const name : {"", "x;true", "$(x)", "x y", "\"x", "x/", "\xC3\xA4"}) {
        EXPECT_FALSE(check(table, true, name)) << name;
    }
    test::LogCapture const log;
    setenv("PATH", (folder_ / "none").c_str(), 1);
    EXPECT_FALSE(CheckRunningUIProcessByName("zvl-x", true));
    EXPECT_TRUE(log.Has("Will excute cmd ps -ef|grep \"zvl-x$\" |grep -v grep in check process"));
    EXPECT_TRUE(log.Has("No process zvl-x in the process table, is ps missing"));
}

}  // namespace
}  // namespace zorvanelink::components::utils

#include "components/ipc/port_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "tests/support/test_environment.h"

namespace zorvanelink::test {
namespace {

using components::ipc::ReadPortFile;
using components::ipc::WritePortFile;

std::string path(char const* name) {
    return TestEnvironment::Home() / name;
}

std::string fresh(char const* name) {
    unlink(path(name).c_str());
    return path(name);
}

TEST(PortFile, Content) {
    struct {
        char const* text;
        long port;
    } const rows[] = {{"35421\n", 35421}, {" 77 x", 77},
                      {"text", 0},        {"", 0},
                      {"-5", -5},         {"99999999999999999999", LONG_MAX}};
    for (auto const& row : rows) {
        std::ofstream(path("content")) << row.text;
        ASSERT_EQ(chmod(path("content").c_str(), 0644), 0);
        EXPECT_EQ(ReadPortFile(path("content")), row.port) << row.text;
    }
}

TEST(PortFile, OnlyAFileThatNobodyElseCanWriteCounts) {
    EXPECT_FALSE(ReadPortFile(path("missing")));
    std::ofstream(fresh("target")) << "1234\n";
    ASSERT_EQ(symlink(path("target").c_str(), fresh("link").c_str()), 0);
    EXPECT_FALSE(ReadPortFile(path("link")));
    ASSERT_EQ(mkfifo(fresh("fifo").c_str(), 0600), 0);
    EXPECT_FALSE(ReadPortFile(path("fifo")));
    EXPECT_FALSE(ReadPortFile(TestEnvironment::Home()));
    for (mode_t const mode : {0664, 0646}) {
        ASSERT_EQ(chmod(path("target").c_str(), mode), 0);
        EXPECT_FALSE(ReadPortFile(path("target"))) << mode;
    }
    ASSERT_EQ(chmod(path("target").c_str(), 0644), 0);
    EXPECT_EQ(ReadPortFile(path("target")), 1234);
    if (geteuid() == 0) {
        ASSERT_EQ(chown(path("target").c_str(), 12345, 12345), 0);
        EXPECT_FALSE(ReadPortFile(path("target")));
    }
}

TEST(PortFile, WriteMovesAsideWhatIsNoFileOfOursAndIsReadable) {
    std::ofstream(fresh("victim")) << "untouched";
    ASSERT_EQ(symlink(path("victim").c_str(), fresh("link").c_str()), 0);
    ASSERT_EQ(mkdir(path("folder").c_str(), 0755), 0);
    std::ofstream(path("folder") + "/full") << "x";
    std::ofstream(fresh("own")) << "old";
    for (char const* name : {"link", "folder", "own", "nothing"}) {
        SCOPED_TRACE(name);
        auto const old_mask = umask(077);
        EXPECT_TRUE(WritePortFile(path(name), 4711));
        umask(old_mask);
        struct stat info {};
        ASSERT_EQ(lstat(path(name).c_str(), &info), 0);
        EXPECT_TRUE(S_ISREG(info.st_mode));
        EXPECT_EQ(info.st_mode & 0777, 0644U);
        EXPECT_EQ(ReadPortFile(path(name)), 4711);
    }
    std::string text;
    std::getline(std::ifstream(path("victim")), text);
    EXPECT_EQ(text, "untouched");
    EXPECT_FALSE(WritePortFile(path("no/such/folder"), 1));
}

}  // namespace
}  // namespace zorvanelink::test

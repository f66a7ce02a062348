#include "components/sysinfo/sysinfo.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "tests/support/test_environment.h"

namespace zorvanelink::components::sysinfo {
namespace {

TEST(SysInfo, ReadsWhatIsThereAndIsEmptyOtherwise) {
    auto const root = test::TestEnvironment::Home() / "sysinfo";
    auto const write = [&root](std::string const& file, char const* text) {
        std::filesystem::create_directories((root / file).parent_path());
        std::ofstream(root / file) << text;
        return (root / file).string();
    };
    EXPECT_EQ(GetHostId(write("id", "0123456789abcdef0123456789abcdef\n")),
              "0123456789abcdef0123456789abcdef");
    EXPECT_THAT(GetSysVersion(write("os", "NAME=x\nPRETTY_NAME=\"Some OS 1\"\n")),
                testing::MatchesRegex("Some OS 1 .+"));
    EXPECT_EQ(GetSysVersion(write("none", "NAME=x\n")), "");

    write("net/lo/address", "00:00:00:00:00:00\n");
    EXPECT_EQ(GetMacAddresses((root / "net").string()), "");
    write("net/br0/address", "02:00:00:00:00:01\n");
    write("net/br1/address", "02:00:00:00:00:02\n");
    EXPECT_EQ(GetMacAddresses((root / "net").string()), "02:00:00:00:00:01");
    write("net/eth0/address", "02:00:00:00:00:03\n");
    write("net/eth0/device/vendor", "");
    EXPECT_EQ(GetMacAddresses((root / "net").string()), "02:00:00:00:00:03");

    EXPECT_EQ(GetHostId("/nowhere") + GetMacAddresses("/nowhere"), "");
    EXPECT_NE(GetHostName(), "");
}

}  // namespace
}  // namespace zorvanelink::components::sysinfo

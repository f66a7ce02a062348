#include <gtest/gtest.h>

#include <cstdlib>

#include "common/auth_type_list.h"
#include "components/utils/paths.h"
#include "components/utils/process_check.h"
#include "components/utils/text.h"

namespace zorvanelink::components::utils {
namespace {

using common::SupportedAuthType;

TEST(Text, SmallHelpers) {
    std::string path = "a////b//c";
    replace_all(path, "//", "/");
    EXPECT_EQ(path, "a/b/c");
    std::string endless = "aa";
    replace_all(endless, "a", "aa");
    EXPECT_EQ(endless, "aa");
    EXPECT_EQ(ConvertHexToStr(std::string("\x00\x9f\xff", 3)), "009FFF");
    EXPECT_EQ(GetStrMd5_32("abc"), "900150983CD24FB0D6963F7D28E17F72");
    EXPECT_EQ(String2Int("443"), 443);
    EXPECT_EQ(String2Int("443x"), 0);
    EXPECT_EQ(String2Int("99999999999"), 0);
    EXPECT_EQ(CutUtf8("ab\xE5\xAF\x86", 4), "ab");
    EXPECT_EQ(CutUtf8("ab\xE5\xAF\x86", 5), "ab\xE5\xAF\x86");
    EXPECT_EQ(GetFileName("/opt/a\\b"), "b");
    EXPECT_EQ(GetFileName("b"), "b");
    EXPECT_EQ(GetFileName("a/"), "");
}

TEST(Text, AuthTypeLists) {
    EXPECT_EQ(ConvertSupportedAuthTypeToStrList({SupportedAuthType::kOauth, SupportedAuthType::kPwd,
                                                 SupportedAuthType::kPwd, SupportedAuthType::kNone,
                                                 SupportedAuthType::kUnknown}),
              (std::vector<std::string>{"pwd", "oauth"}));
    EXPECT_EQ(ConvertStrListToSupportedAuthType({"oauth", "nonsense", "none", "pwd"}),
              (std::vector{SupportedAuthType::kPwd, SupportedAuthType::kOauth}));
    EXPECT_EQ(ConvertSupportedAuthTypeStrListToIntBitmap({"pwd", "none", "onlyUkey"}), 2 + 8);
    EXPECT_TRUE(ConvertIntBitmapToSupportedAuthTypeStrList(1).empty());
    EXPECT_EQ(ConvertIntBitmapToSupportedAuthTypeStrList(-1).size(), 6U);
}

TEST(Paths, EnvironmentAndFixedPlaces) {
    struct Case {
        char const* variable;
        std::string (*path)();
        char const* fallback;
    } const cases[] = {
        {"XDG_CONFIG_HOME", &linux::GetXdgConfigDirPath, "/home/anna/.config"},
        {"XDG_DATA_HOME", &linux::GetXdgDataDirPath, "/home/anna/.local/share"},
        {"XDG_CACHE_HOME", &linux::GetXdgCacheDirPath, "/home/anna/.cache"},
    };
    std::string const home = std::getenv("HOME");
    setenv("HOME", "/home//anna", 1);
    for (Case const& c : cases) {
        std::string const before = std::getenv(c.variable);
        setenv(c.variable, "/elsewhere//deep", 1);
        EXPECT_EQ(c.path(), "/elsewhere/deep");
        setenv(c.variable, "", 1);
        EXPECT_EQ(c.path(), c.fallback);
        setenv(c.variable, before.c_str(), 1);
    }
    setenv("HOME", home.c_str(), 1);
    EXPECT_EQ(GetServiceLogDirPath(), "/tmp/ZorvaneLink/log");
    EXPECT_EQ(GetUpdateInstallerDirPath(), "/tmp/ZorvaneLink/installer");
    EXPECT_EQ(GetReseScriptsDirPathWithPrefix("/opt//x/"), "/opt/x/script");
    EXPECT_TRUE(GetAppFilePath().ends_with("/utils_test"));
    EXPECT_EQ(GetResDirPath(), GetAppFilePath() + "/../resources");
}

}  // namespace
}  // namespace zorvanelink::components::utils

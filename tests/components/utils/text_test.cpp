#include <gtest/gtest.h>

#include <cstdlib>

#include "components/utils/paths.h"
#include "components/utils/process_check.h"
#include "components/utils/text.h"

namespace zorvanelink::components::utils {
namespace {

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
    EXPECT_EQ(GetFileName("/opt/a\\b"), "b");
    EXPECT_EQ(GetFileName("b"), "b");
    EXPECT_EQ(GetFileName("a/"), "");
}

TEST(Text, Utf8) {
    std::string const text = "a\xC3\xA4\xE5\xAF\x86\xF0\x9F\x98\x80";  // 1, 2, 3 and 4 bytes
    EXPECT_TRUE(IsUtf8(text));
    std::size_t const cuts[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10};
    for (std::size_t most = 0; most < std::size(cuts); ++most) {
        EXPECT_EQ(CutUtf8(text, most).size(), cuts[most]) << most;
    }
    EXPECT_EQ(CutUtf8(std::string(8, '\x80'), 4).size(), 4U) << "what is no text is cut anywhere";
    // Alone, too long, a half of a pair, above the last one, broken off.
    for (char const* bad : {"\x80", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE5\xAF"}) {
        EXPECT_FALSE(IsUtf8(bad)) << ConvertHexToStr(bad);
        EXPECT_TRUE(RepairUtf8(bad).starts_with("\uFFFD")) << ConvertHexToStr(bad);
    }
    EXPECT_EQ(RepairUtf8("x\xE5\xAFy" + text), "x\uFFFD\uFFFDy" + text);
    EXPECT_EQ(EscapeControls("a\r\n\x1B[31m\x7F\t\xC3\xA4\xFF"),
              "a\\x0D\\n\\x1B[31m\\x7F\\x09\xC3\xA4\uFFFD");
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

#include "tests/support/test_environment.h"

#include <unistd.h>

#include <cstdlib>
#include <string>

namespace zorvanelink::test {
namespace {

std::filesystem::path g_home;

void setFolder(char const* variable, char const* below) {
    auto const folder = g_home / below;
    std::filesystem::create_directories(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    setenv(variable, folder.c_str(), 1);
}

}  // namespace

TestEnvironment::TestEnvironment() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zvl-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        std::abort();
    }
    g_home = pattern;
    setenv("HOME", g_home.c_str(), 1);
    setFolder("XDG_CONFIG_HOME", "config");
    setFolder("XDG_DATA_HOME", "data");
    setFolder("XDG_CACHE_HOME", "cache");
    setFolder("XDG_RUNTIME_DIR", "run");
}

TestEnvironment::~TestEnvironment() {
    std::error_code ignored;
    std::filesystem::remove_all(g_home, ignored);
}

std::filesystem::path const& TestEnvironment::Home() {
    return g_home;
}

}  // namespace zorvanelink::test

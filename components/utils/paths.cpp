#include "components/utils/paths.h"

#include <unistd.h>

#include <array>
#include <cstdlib>

#include "components/utils/text.h"

namespace zorvanelink::components::utils {
namespace {

constexpr char kProductFolder[] = "ZorvaneLink";

template <class... Parts>
std::string join(std::string path, Parts const&... parts) {
    ((path += '/', path += parts), ...);
    replace_all(path, "//", "/");
    return path;
}

std::string environmentOr(char const* variable, std::string (*fallback)()) {
    char const* const value = std::getenv(variable);
    return value != nullptr && *value != '\0' ? join(value) : fallback();
}

std::string belowHome(char const* name) {
    char const* const home = std::getenv("HOME");
    return join(home != nullptr ? home : "", name);
}

}  // namespace

std::string GetAppFilePath() {
    std::array<char, 1024> buffer{};
    ssize_t const length = readlink("/proc/self/exe", buffer.data(), buffer.size() - 1);
    std::string path(buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    replace_all(path, "//", "/");
    return path;
}

std::string GetAppDirPath() {
    return join(GetAppFilePath(), "..");
}
std::string GetTempDirPath() {
    return "/tmp";
}
std::string GetAppTempDirPath() {
    return join(GetTempDirPath(), kProductFolder);
}
std::string GetAllUserDataDirPath() {
    return "/tmp";
}
std::string GetServiceLogDirPath() {
    return join(GetAllUserDataDirPath(), kProductFolder, "log");
}
std::string GetUpdateInstallerDirPath() {
    return join(GetAllUserDataDirPath(), kProductFolder, "installer");
}
std::string GetResDirPath() {
    return GetResDirPathWithPrefix(GetAppDirPath());
}
std::string GetResScriptsDirPath() {
    return GetReseScriptsDirPathWithPrefix(GetAppDirPath());
}
std::string GetResDirPathWithPrefix(std::string const& prefix) {
    return join(prefix, "resources");
}
std::string GetReseScriptsDirPathWithPrefix(std::string const& prefix) {
    return join(prefix, "script");
}

namespace linux {

std::string GetXdgConfigDirPath() {
    return environmentOr("XDG_CONFIG_HOME", &GetXdgConfigDirPathWithDefault);
}
std::string GetXdgDataDirPath() {
    return environmentOr("XDG_DATA_HOME", &GetXdgDataDirPathWithDefault);
}
std::string GetXdgCacheDirPath() {
    return environmentOr("XDG_CACHE_HOME", &GetXdgCacheDirPathWithDefault);
}
std::string GetXdgConfigDirPathWithDefault() {
    return belowHome(".config");
}
std::string GetXdgDataDirPathWithDefault() {
    return belowHome(".local/share");
}
std::string GetXdgCacheDirPathWithDefault() {
    return belowHome(".cache");
}

}  // namespace linux
}  // namespace zorvanelink::components::utils

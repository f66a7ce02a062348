// Where files lie, without Qt: shared by the client and its service. No function creates anything;
// no answer holds a doubled separator.
#pragma once

#include <string>

namespace zorvanelink::components::utils {

// The running program's file, by "/proc/self/exe"; empty when that cannot be read.
std::string GetAppFilePath();
std::string GetAppDirPath();
std::string GetTempDirPath();
std::string GetAppTempDirPath();
std::string GetAllUserDataDirPath();
std::string GetServiceLogDirPath();
std::string GetUpdateInstallerDirPath();
std::string GetResDirPath();
std::string GetResScriptsDirPath();
std::string GetResDirPathWithPrefix(std::string const& prefix);
std::string GetReseScriptsDirPathWithPrefix(std::string const& prefix);

namespace linux {

// The XDG variable when it is set and not empty, else the default below HOME.
std::string GetXdgConfigDirPath();
std::string GetXdgDataDirPath();
std::string GetXdgCacheDirPath();
std::string GetXdgConfigDirPathWithDefault();
std::string GetXdgDataDirPathWithDefault();
std::string GetXdgCacheDirPathWithDefault();

}  // namespace linux
}  // namespace zorvanelink::components::utils

#include "components/utils/process_check.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace zorvanelink::components::utils {
namespace {

namespace fs = std::filesystem;

// No other text is the name of a program of ours.
bool isPlainName(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](unsigned char c) {
        return c < 0x80 && (std::isalnum(c) != 0 || c == '.' || c == '_' || c == '-');
    });
}

std::string contentOf(fs::path const& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

fs::path folderOf(pid_t pid) {
    return fs::path("/proc") / std::to_string(pid);
}

bool isOurs(fs::path const& process) {
    struct stat status {};
    return stat(process.c_str(), &status) == 0 && status.st_uid == geteuid();
}

// The first word of its command line, whose words end in NUL; a process that is ending has none.
std::string nameOf(fs::path const& process) {
    return GetFileName(contentOf(process / "cmdline").c_str());
}

// 0 at the end of the chain.
pid_t parentOf(pid_t pid) {
    std::string const line = contentOf(folderOf(pid) / "stat");
    // "pid (name) state parent ...", where the name may hold anything.
    std::size_t const behind_name = line.rfind(") ");
    pid_t parent = 0;
    if (behind_name != std::string::npos && behind_name + 4 < line.size()) {
        std::from_chars(line.data() + behind_name + 4, line.data() + line.size(), parent);
    }
    return parent;
}

std::set<std::string> ancestors() {
    std::set<std::string> pids;
    for (pid_t pid = getppid(); pid > 0 && pids.insert(std::to_string(pid)).second;) {
        pid = parentOf(pid);
    }
    return pids;
}

}  // namespace

std::string GetFileName(std::string_view path) {
    std::size_t const separator = path.find_last_of("/\\");
    return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

bool CheckRunningUIProcessByName(std::string const& name, bool skipSelf) {
    if (!isPlainName(name)) {
        return false;
    }
    std::set<std::string> ignored = ancestors();
    if (skipSelf) {
        ignored.insert(std::to_string(getpid()));
    }
    int missing = skipSelf ? 1 : 2;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && missing > 0 && entry != end;
         entry.increment(error)) {
        std::string const pid = entry->path().filename().string();
        bool const is_process = std::isdigit(static_cast<unsigned char>(pid.front())) != 0;
        if (is_process && !ignored.contains(pid) && isOurs(entry->path()) &&
            nameOf(entry->path()) == name) {
            --missing;
        }
    }
    return missing == 0;
}

}  // namespace zorvanelink::components::utils

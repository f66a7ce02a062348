#include "components/ipc/port_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <random>

namespace zorvanelink::components::ipc {
namespace {

constexpr std::size_t kMaxPortText = 64;
constexpr mode_t kPortFileMode = 0644;

bool isTrusted(int file) {
    struct stat info {};
    return fstat(file, &info) == 0 && S_ISREG(info.st_mode) &&
           (info.st_uid == 0 || info.st_uid == geteuid()) &&
           (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Anybody may have made a folder of that name, which no file replaces.
void renameForeign(std::string const& path) {
    struct stat info {};
    if (lstat(path.c_str(), &info) != 0 || (S_ISREG(info.st_mode) && info.st_uid == geteuid())) {
        return;
    }
    // A name that nobody can have taken before.
    auto const aside = fmt::format("{}.old.{:08x}", path, std::random_device()());
    renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE);
}

}  // namespace

std::optional<long> ReadPortFile(std::string const& path) {
    int const file = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) {
        return std::nullopt;
    }
    std::optional<long> port;
    if (isTrusted(file)) {
        char text[kMaxPortText + 1] = {};
        port = read(file, text, kMaxPortText) > 0 ? std::strtol(text, nullptr, 10) : 0;
    }
    close(file);
    return port;
}

bool WritePortFile(std::string const& path, std::uint16_t port) {
    std::string temporary = path + ".XXXXXX";
    int const file = mkostemp(temporary.data(), O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    std::string const text = fmt::format("{}\n", port);
    bool const written =
        write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
        fchmod(file, kPortFileMode) == 0;
    close(file);
    renameForeign(path);
    if (!written || std::rename(temporary.c_str(), path.c_str()) != 0) {
        unlink(temporary.c_str());
        return false;
    }
    return true;
}

}  // namespace zorvanelink::components::ipc

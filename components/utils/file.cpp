#include "components/utils/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "components/utils/descriptor.h"

namespace zorvanelink::components::utils {
namespace {

bool writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        ssize_t const written = write(descriptor, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        content.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

}  // namespace

bool ReadContentFromFile(std::string const& path, std::string& content) {
    // Without O_NONBLOCK a named pipe would hold the caller up for ever.
    Descriptor const file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        static_cast<std::size_t>(status.st_size) > kMaxContentSize) {
        return false;
    }
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        ssize_t const got = read(file.Get(), bytes.data() + size, bytes.size() - size);
        if (got < 0 && errno != EINTR) {
            return false;
        }
        if (got == 0) {
            break;
        }
        size += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    bytes.resize(size);
    content = std::move(bytes);
    return true;
}

bool WritePrivateFile(std::string const& path, std::string_view content, bool* opened) {
    std::string temporary = path + ".XXXXXX";
    Descriptor file(mkostemp(temporary.data(), O_CLOEXEC));  // 0600
    if (opened != nullptr) {
        *opened = static_cast<bool>(file);
    }
    if (!file) {
        return false;
    }
    bool const written = writeAll(file.Get(), content) && fsync(file.Get()) == 0 && file.Close();
    if (written && std::rename(temporary.c_str(), path.c_str()) == 0) {
        return true;
    }
    unlink(temporary.c_str());
    return false;
}

}  // namespace zorvanelink::components::utils

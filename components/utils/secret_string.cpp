#include "components/utils/secret_string.h"

#include <openssl/crypto.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace zorvanelink::components::utils {

void KeepOutOfDumps(std::string const& text) {
    static auto const page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    auto const begin = reinterpret_cast<std::uintptr_t>(text.data());
    auto const first = begin / page * page;
    madvise(reinterpret_cast<void*>(first), begin + text.size() + 1 - first, MADV_DONTDUMP);
}

void Wipe(std::string& text) {
    // The spare room may hold the end of an earlier, longer secret.
    text.resize(text.capacity());
    OPENSSL_cleanse(text.data(), text.size());
    text.clear();
}

}  // namespace zorvanelink::components::utils

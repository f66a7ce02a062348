// Cipher blocks: whatever is decoded, nothing is left on failure, and good blocks come back.
#include <cstdint>
#include <cstdlib>

#include "components/utils/value_cipher.h"

using namespace zorvanelink::components::utils;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    std::string const input(reinterpret_cast<char const*>(bytes), size);
    std::string data = input;
    if (!ZVLDecrypt(data) && !data.empty()) {
        std::abort();
    }
    // The same bytes as cipher text of a well-formed block reach the padding.
    data = std::string("ZVLA0\0", 6) + input.substr(0, size - size % kAesBlockSize);
    ZVLDecrypt(data);
    data = input;
    if (ZVLEncrypt(0, data) && (!ZVLDecrypt(data) || data != input)) {
        std::abort();
    }
    return 0;
}

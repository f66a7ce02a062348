// Base64 text of any kind, and that every byte string comes back.
#include <cstdint>
#include <cstdlib>

#include "components/utils/base64.h"

using namespace zorvanelink::components::utils;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    std::string const input(reinterpret_cast<char const*>(bytes), size);
    for (bool const newlines : {false, true}) {
        if (Base64Decode(input, newlines).size() > size) {
            std::abort();
        }
        if (Base64Decode(Base64Encode(input, newlines), newlines) != input) {
            std::abort();
        }
    }
    return 0;
}

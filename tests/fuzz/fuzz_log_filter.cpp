// Masking of any text ends, and grows it by no more than its masks.
#include <cstdint>
#include <cstdlib>

#include "components/utils/log_filter.h"

using namespace zorvanelink::components::utils;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    std::string const input(reinterpret_cast<char const*>(bytes), size);
    std::string const masked = FilterJsonStr(g_filter_word, input);
    // A mask is six characters, and each belongs to a key of at least seven.
    if (masked.size() > 2 * size + 6) {
        std::abort();
    }
    return 0;
}

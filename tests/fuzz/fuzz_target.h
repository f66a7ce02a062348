// What every fuzz target is made of: Fuzz() gets each input, Require() ends the program where a
// promise is broken, and libFuzzer keeps the input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace zorvanelink::test {

void Fuzz(std::string const& input);

inline void Require(bool promise) {
    if (!promise) {
        std::abort();
    }
}

}  // namespace zorvanelink::test

extern "C" inline __attribute__((used)) int LLVMFuzzerTestOneInput(std::uint8_t const* bytes,
                                                                   std::size_t size) {
    zorvanelink::test::Fuzz({reinterpret_cast<char const*>(bytes), size});
    return 0;
}

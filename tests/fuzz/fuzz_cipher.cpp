// Cipher blocks: whatever is decoded, nothing is left on failure, and good blocks come back.
#include "components/utils/value_cipher.h"
#include "tests/fuzz/fuzz_target.h"

using namespace zorvanelink::components::utils;

void zorvanelink::test::Fuzz(std::string const& input) {
    std::string data = input;
    Require(ZVLDecrypt(data) || data.empty());
    // The same bytes as cipher text of a well-formed block reach the padding.
    data = std::string("ZVLA0\0", 6) + input.substr(0, input.size() - input.size() % kAesBlockSize);
    ZVLDecrypt(data);
    data = input;
    Require(!ZVLEncrypt(0, data) || (ZVLDecrypt(data) && data == input));
}

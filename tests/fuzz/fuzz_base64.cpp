// Base64 text of any kind, and that every byte string comes back.
#include "components/utils/base64.h"
#include "tests/fuzz/fuzz_target.h"

using namespace zorvanelink::components::utils;

void zorvanelink::test::Fuzz(std::string const& input) {
    for (bool const newlines : {false, true}) {
        Require(Base64Decode(input, newlines).size() <= input.size());
        Require(Base64Decode(Base64Encode(input, newlines), newlines) == input);
    }
}

// Masking of any text ends, and grows it by no more than its masks.
#include "components/utils/log_filter.h"
#include "tests/fuzz/fuzz_target.h"

using namespace zorvanelink::components::utils;

void zorvanelink::test::Fuzz(std::string const& input) {
    // A mask is six characters, and each belongs to a key of at least seven.
    Require(FilterJsonStr(g_filter_word, input).size() <= 2 * input.size() + 6);
}

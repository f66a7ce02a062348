// Messages as they go over the link, byte for byte: one a file of tests/data/messages.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace zorvanelink::test {

inline std::string Golden(std::string const& name) {
    std::ifstream file(ZVL_TEST_DATA "/messages/" + name + ".json");
    EXPECT_TRUE(file) << name;
    std::ostringstream text;
    text << file.rdbuf();
    std::string message = text.str();
    if (!message.empty() && message.back() == '\n') {
        message.pop_back();  // files end in a line break, messages do not
    }
    return message;
}

// What the readers say of "key", which is missing, and of "key:6", whose value is of that type.
inline std::string ErrorOf(std::string const& fault) {
    auto const colon = fault.find(':');
    if (colon == std::string::npos) {
        return fault.empty() ? "" : "Failed to find key " + fault + " in clmsgjson parse";
    }
    return "Key [" + fault.substr(0, colon) + "]'s value type[" + fault.substr(colon + 1) +
           "] is invalid in clmsgjson parse";
}

}  // namespace zorvanelink::test

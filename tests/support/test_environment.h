// What every test program stands on: folders of its own, so that no test reads or writes what
// belongs to the user or to another test.
#pragma once

#include <filesystem>

namespace zorvanelink::test {

// Points HOME and the XDG folders below a fresh temporary folder, removed at the end.
class TestEnvironment {
  public:
    TestEnvironment();
    ~TestEnvironment();
    TestEnvironment(TestEnvironment const&) = delete;
    TestEnvironment& operator=(TestEnvironment const&) = delete;

    static std::filesystem::path const& Home();
};

}  // namespace zorvanelink::test

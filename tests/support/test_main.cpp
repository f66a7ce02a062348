#include <gmock/gmock.h>

#include "tests/support/test_environment.h"

int main(int argc, char** argv) {
    zorvanelink::test::TestEnvironment const environment;
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

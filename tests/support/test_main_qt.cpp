#include <gmock/gmock.h>

#include <QApplication>

#include "tests/support/test_environment.h"

int main(int argc, char** argv) {
    zorvanelink::test::TestEnvironment const environment;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleMock(&argc, argv);
    QApplication const application(argc, argv);
    return RUN_ALL_TESTS();
}

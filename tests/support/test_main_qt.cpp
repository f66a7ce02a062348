#include <gmock/gmock.h>

#include <QApplication>

#include "tests/support/test_environment.h"

// Leaks of Qt's own offscreen platform at its end; none of ours has these names.
extern "C" char const* __lsan_default_suppressions();
extern "C" char const* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\n"
           "leak:QWindowSystemInterface::handleScreenAdded\n"
           "leak:QPlatformScreen::QPlatformScreen\n"
           "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n"
           "leak:libfontconfig.so\n";
}

int main(int argc, char** argv) {
    zorvanelink::test::TestEnvironment const environment;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleMock(&argc, argv);
    QApplication const application(argc, argv);
    return RUN_ALL_TESTS();
}

#include <gmock/gmock.h>

#include <QApplication>
#include <memory>

#include "tests/support/test_environment.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

// The offscreen platform never frees its screens.
std::unique_ptr<QApplication> makeApplication(int& argc, char** argv) {
#ifdef __SANITIZE_ADDRESS__
    __lsan::ScopedDisabler const screensLeak;
#endif
    return std::make_unique<QApplication>(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    zorvanelink::test::TestEnvironment const environment;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleMock(&argc, argv);
    auto const application = makeApplication(argc, argv);
    int const result = RUN_ALL_TESTS();
    // What the last test left to deleteLater goes now, not into the leak report.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return result;
}

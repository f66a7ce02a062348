#include "app/startup/end_signals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>
#include <csignal>

#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

// Stays open: a signal may come until the very end.
int g_event = -1;

// All that may be called here is a system call.
void onSignal(int /*number*/) {
    int const error = errno;
    eventfd_t const once = 1;
    static_cast<void>(!write(g_event, &once, sizeof once));
    errno = error;
}

}  // namespace

void LeaveOnSignals(QObject& owner, std::function<void()> const& leave) {
    g_event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (g_event < 0) {
        components::logger::Log().error("Signals end this client without a stop, no eventfd");
        return;
    }
    auto* const arrivals = new QSocketNotifier(g_event, QSocketNotifier::Read, &owner);
    QObject::connect(arrivals, &QSocketNotifier::activated, &owner, [leave] {
        eventfd_t value = 0;
        if (eventfd_read(g_event, &value) == 0) {
            components::logger::Log().info("Leaving, a signal asks for it");
            leave();
        }
    });
    for (int const number : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction action {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            action = {};
            action.sa_handler = &onSignal;
            action.sa_flags = SA_RESTART;
            sigaction(number, &action, nullptr);
        }
    }
}

}  // namespace zorvanelink::ui

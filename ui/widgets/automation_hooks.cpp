#include "ui/widgets/automation_hooks.h"

namespace zorvanelink::ui {

AutomationHooks& automationHooks() {
    static AutomationHooks hooks;
    return hooks;
}

void ReportOpened(QDialog& dialog, QString const& text) {
    // Queued: an answer given before a nested loop runs would leave that loop without an end.
    auto const report = [&dialog, text] {
        if (auto const& opened = automationHooks().dialogOpened) {
            opened(dialog, text);
        }
    };
    QMetaObject::invokeMethod(&dialog, report, Qt::QueuedConnection);
}

}  // namespace zorvanelink::ui

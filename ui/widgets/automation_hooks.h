// Where dialogs meet the automation bridge: empty functions unless the bridge is enabled.
#pragma once

#include <QDialog>
#include <QString>
#include <functional>

namespace zorvanelink::ui {

struct AutomationHooks {
    // A dialog has opened; `text` is what it says. The bridge connects its signals to the dialog.
    std::function<void(QDialog& dialog, QString const& text)> dialogOpened;
    // The client's answer to a pending command.
    std::function<void(int result, QString const& text)> setResult;
};

// The one set, filled by the bridge at start. GUI thread.
AutomationHooks& automationHooks();

// Tells the bridge of a dialog that is about to be shown, once it stands.
void ReportOpened(QDialog& dialog, QString const& text);

}  // namespace zorvanelink::ui

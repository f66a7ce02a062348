#include "ui/widgets/automation_hooks.h"

namespace zorvanelink::ui {

AutomationHooks& automationHooks() {
    static AutomationHooks hooks;
    return hooks;
}

}  // namespace zorvanelink::ui

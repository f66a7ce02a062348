// Every window and dialog of the program in a state worth looking at; tests that hold for all of
// them walk this list. A new dialog gets a row.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "tests/support/scripted_prompts.h"
#include "tools/support/fake_ipc.h"
#include "ui/cert/client_certs.h"
#include "ui/config/config.h"

namespace zorvanelink::test {

// What the windows work on, with two connections and two certificates; outlives them.
struct WindowWorld {
    WindowWorld();

    ui::Config config;
    ScriptedPrompts prompts;
    CertInfo target;
    ui::CertListRoad road;
    std::shared_ptr<FakeIpc> service = std::make_shared<FakeIpc>();
};

struct WindowRow {
    char const* name;
    std::function<std::unique_ptr<QWidget>(WindowWorld& world)> make;
};

std::vector<WindowRow> const& AllWindows();

// Shows the window and lets everything that a start posts take place.
void Settle(QWidget& window);

}  // namespace zorvanelink::test

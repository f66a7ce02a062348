#include <string>
#include <vector>

#include "app/startup/logic_main.h"

int main(int argc, char** argv) {
    std::vector<std::string> const args(argv, argv + argc);
    return zorvanelink::ui::LogicMain(argc, argv, args);
}

// The life of the process: from its entry to the end of the event loop.
#pragma once

#include <string>
#include <vector>

namespace zorvanelink::ui {

// Answers the exit code. args[0] names the program in the process table; every other argument is
// Qt's.
int LogicMain(int argc, char** argv, std::vector<std::string> args);

// Each is one phase; a phase that fails is logged and the start goes on.
void SetHighDpiSupport();
void InitDefaultFont();
void LoadExternFontFile(std::string const& path);
void InitPlatformSetting();

}  // namespace zorvanelink::ui

// The few process-wide variables, made before main runs.
#pragma once

#include <atomic>

namespace zorvanelink::ui {

class MainWindow;

// Set first thing in the main window's destructor; every background loop polls it.
extern std::atomic<bool> g_quit;
// The one main window, for free functions that show boxes. GUI thread; null before and after it.
extern MainWindow* g_mainwindow;
// Follows QGuiApplication::applicationStateChanged. GUI thread.
extern bool g_is_application_active;
// False once the service reported an unusable virtual network adapter. Read by the link's threads.
extern std::atomic<bool> g_vnic_state;
// Number of running connections, 0 or 1. GUI thread.
extern int g_running_client;
// The log level's number, 0 verbose to 4 error; 15 while none was chosen. GUI thread.
extern int g_log_level;
// The display language, decided once at start.
extern std::atomic<bool> g_is_chinese;
// Start-up has put kGlIntegrationVariable into our environment; a program that we open must not
// inherit it. GUI thread.
extern bool g_gl_integration_set;
inline constexpr char kGlIntegrationVariable[] = "QT_XCB_GL_INTEGRATION";

}  // namespace zorvanelink::ui

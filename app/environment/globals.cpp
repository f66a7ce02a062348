#include "app/environment/globals.h"

namespace zorvanelink::ui {

std::atomic<bool> g_quit{false};
MainWindow* g_mainwindow = nullptr;
bool g_is_application_active = true;
std::atomic<bool> g_vnic_state{true};
int g_running_client = 0;
int g_log_level = 15;
std::atomic<bool> g_is_chinese{false};
bool g_gl_integration_set = false;

}  // namespace zorvanelink::ui

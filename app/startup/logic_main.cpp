#include "app/startup/logic_main.h"

#include <fontconfig/fontconfig.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QIcon>
#include <QPixmapCache>
#include <QTimer>
#include <QTranslator>
#include <csignal>
#include <thread>

#include "app/environment/app_ctrl.h"
#include "app/environment/globals.h"
#include "app/environment/migration.h"
#include "app/environment/paths.h"
#include "app/startup/activation.h"
#include "app/startup/end_signals.h"
#include "app/startup/single_instance.h"
#include "components/logger/logger.h"
#include "components/utils/process_check.h"
#include "ui/config/config.h"
#include "ui/shell/main_window.h"
#include "ui/text/texts.h"
#include "ui/widgets/fonts.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using components::logger::Logger;
namespace utils = components::utils;

constexpr std::chrono::seconds kHandOverTime{3};
constexpr std::chrono::seconds kSettled{2};

void guardProcess() {
    mallopt(M_ARENA_MAX, 1);        // a heap for each thread is memory that nobody uses
    std::signal(SIGPIPE, SIG_IGN);  // standard error that nobody reads is no reason to end
    rlimit const no_core{0, 0};     // it would hold what the user types
    setrlimit(RLIMIT_CORE, &no_core);
    Logger::enable_console_log_ = isatty(STDERR_FILENO) != 0;
}

enum class Entry { kAlone, kHandedOver, kRefused };

// Nothing is logged, moved or copied before this is known.
Entry enter(SingleInstance& instance, std::string const& path) {
    switch (instance.Enter(ShowRequest(), kHandOverTime)) {
        case SingleInstance::Place::kFirst:
            return Entry::kAlone;
        case SingleInstance::Place::kAnswered:
            return Entry::kHandedOver;
        case SingleInstance::Place::kSilent:
            return Entry::kRefused;
        case SingleInstance::Place::kNoLock:
            break;
    }
    return utils::CheckRunningUIProcessByName(utils::GetFileName(path), true) ? Entry::kRefused
                                                                              : Entry::kAlone;
}

std::string instanceFolder() {
    QString const folder = GetRuntimeDirPath();
    if (folder == GetAppConfigDirPath()) {
        MakePrivateDir(folder);
    }
    return folder.toStdString();
}

// Before anything logs: the folder and the name that tell these files from the service's.
void initLogger() {
    bool const isPrivate =
        MakePrivateDir(GetAppDataDirPath()) && MakePrivateDir(GetAppLogDirPath());
    Logger::SetDefaultLogPath(GetAppLogDirPath().toStdString());
    Logger::SetDefaultLogName("uizlink");
    if (!isPrivate) {
        Log().error("Failed to make a private folder [{}]", GetAppLogDirPath().toStdString());
    }
}

// The control file may have put the data elsewhere. A folder that stands keeps its mode: it may be
// one that others use.
void makeDataFolder() {
    QString const folder = GetAppDataDirPath();
    if (!QFileInfo::exists(folder) && !MakePrivateDir(folder)) {
        Log().error("Failed to make a private folder [{}]", folder.toStdString());
    }
}

// Widgets need no OpenGL, and looking for it costs most of the start and of the memory.
void avoidOpenGl() {
    if (!qEnvironmentVariableIsSet(kGlIntegrationVariable)) {
        g_gl_integration_set = qputenv(kGlIntegrationVariable, "none");
    }
}

// Pages and scripts that a browser or the service reads from the user's folder.
void copyResources() {
    for (char const* const folder : {"resourceList", "portal", "oauth", "script"}) {
        if (QDir(GetResourceDirPath()).exists(QLatin1String(folder))) {
            CopyDir(GetResourceDirPath(), GetAppDataDirPath(), QLatin1String(folder), true);
        }
    }
}

void installTranslators() {
    InitAssets();
    g_is_chinese = IsChineseDisplayLangguage();
    for (char const* const file : {":/translations/zh_Hans.qm", ":/translations/qt_zh_CN.qm"}) {
        auto* const translator = new QTranslator(qApp);  // lives as long as the application
        if (g_is_chinese && !translator->load(QLatin1String(file))) {
            Log().error("Failed to load the translation {}", file);
        }
        QCoreApplication::installTranslator(translator);
    }
}

int refuseSecondClient(Prompts& prompts) {
    prompts.Information(nullptr, GetTrMsg(MsgCode::UI_INFO),
                        GetTrMsg(MsgCode::UI_TR_PROGRAM_IS_RUNNING), GetTrMsg(MsgCode::UI_INFO_OK));
    return 0;
}

int runMainWindow(Prompts& prompts, SingleInstance const& instance) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // It would close the window, which may be in the tray, and hold up the user's logout.
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    MainWindow window({.config = Config::Instance(),
                       .prompts = prompts,
                       .link = nullptr,
                       .opening = MainWindow::Opening::kAtOnce});
    g_mainwindow = &window;
    LeaveOnSignals(window, [&window] { window.close(); });
    instance.Serve(window, [&window](std::string const& request) {
        return AnswerShow(request, window, [&window] { window.BringUp(); });
    });
    // What only the start needed goes back to the system.
    QTimer::singleShot(kSettled, &window, [] { malloc_trim(0); });
    window.activateWindow();
    window.raise();
    int const exit_code = QApplication::exec();
    g_mainwindow = nullptr;
    return exit_code;
}

}  // namespace

int LogicMain(int argc, char** argv, std::vector<std::string> args) {
    // One client a user.
    guardProcess();
    std::string const path = args.empty() ? std::string() : args.front();
    SingleInstance instance(instanceFolder());
    Entry const entry = enter(instance, path);
    if (entry == Entry::kHandedOver) {
        return 0;
    }
    bool const alone = entry == Entry::kAlone;
    std::thread font_list(&FcInit);  // a tenth of the start, while Qt talks with the display

    // What must stand before the application object.
    if (alone) {
        initLogger();
        Log().info("full path is {}, name is {}", path, utils::GetFileName(path));
    }
    SetHighDpiSupport();
    avoidOpenGl();
    // Font, style and palette are our own; asking the desktop's icon theme costs more than the
    // icon.
    QGuiApplication::setDesktopSettingsAware(false);
    QApplication const application(argc, argv);
    // What is shown is held by its widget; the cache would only wake an idle client to shrink.
    QPixmapCache::setCacheLimit(0);
    font_list.join();

    // What the user's machine and the packager say.
    AppCtrl::Instance().Init();
    InitDefaultFont();
    if (alone) {
        makeDataFolder();
        MigrateOldAppResource();
        copyResources();
    }
    installTranslators();
    // For desktops that do not find the program's menu entry by its windows.
    // As a picture: a file would have Qt load every plug-in for images to ask for its format.
    QApplication::setWindowIcon(LoadImage(QStringLiteral(":/assets/images/app.png")));
    InitPlatformSetting();

    DialogPrompts prompts;
    int const exit_code = alone ? runMainWindow(prompts, instance) : refuseSecondClient(prompts);
    Logger::ShutDown();
    return exit_code;
}

void SetHighDpiSupport() {
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void InitDefaultFont() {
    for (char const* const file : {"Alibaba-PuHuiTi-Medium.otf", "Alibaba-PuHuiTi-Regular.otf"}) {
        LoadExternFontFile(GetResourceFontDirPath().toStdString() + "/" + file);
    }
    SetApplicationFont();
    SetApplicationStyle();
}

void LoadExternFontFile(std::string const& path) {
    if (QFontDatabase::addApplicationFont(QString::fromStdString(path)) == -1) {
        Log().error("Failed to load Font file: {}", path);
    }
}

// Nothing to do on Linux; the place where another platform sets things up.
void InitPlatformSetting() {
}

}  // namespace zorvanelink::ui

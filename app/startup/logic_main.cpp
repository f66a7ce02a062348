#include "app/startup/logic_main.h"

#include <QApplication>
#include <QFileInfo>
#include <QFontDatabase>
#include <QIcon>
#include <QTranslator>

#include "app/environment/app_ctrl.h"
#include "app/environment/globals.h"
#include "app/environment/migration.h"
#include "app/environment/paths.h"
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
        CopyDir(GetResourceDirPath(), GetAppDataDirPath(), QLatin1String(folder), true);
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

bool anotherClientRuns(std::string const& path) {
    std::string const name = utils::GetFileName(path);
    Log().info("full path is {}, name is {}", path, name);
    return utils::CheckRunningUIProcessByName(name, true);
}

int refuseSecondClient(Prompts& prompts) {
    prompts.Information(nullptr, GetErrMsg(MsgCode::UI_INFO),
                        GetErrMsg(MsgCode::UI_TR_PROGRAM_IS_RUNNING),
                        GetErrMsg(MsgCode::UI_INFO_OK));
    return 0;
}

int runMainWindow(Prompts& prompts) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // It would close the window, which may be in the tray, and hold up the user's logout.
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    MainWindow window({Config::Instance(), prompts, nullptr});
    g_mainwindow = &window;
    window.show();
    window.activateWindow();
    window.raise();
    int const exit_code = QApplication::exec();
    g_mainwindow = nullptr;
    return exit_code;
}

}  // namespace

int LogicMain(int argc, char** argv, std::vector<std::string> args) {
    // What must stand before the application object.
    initLogger();
    SetHighDpiSupport();
    avoidOpenGl();
    QApplication const application(argc, argv);

    // What the user's machine and the packager say.
    AppCtrl::Instance().Init();
    makeDataFolder();
    InitDefaultFont();
    MigrateOldAppResource();
    copyResources();
    installTranslators();
    // For desktops that do not find the program's menu entry by its windows.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/assets/images/app.png")));
    InitPlatformSetting();

    // One client a user, and then the window.
    DialogPrompts prompts;
    int const exit_code = anotherClientRuns(args.empty() ? std::string() : args.front())
                              ? refuseSecondClient(prompts)
                              : runMainWindow(prompts);
    Logger::ShutDown();
    return exit_code;
}

void SetHighDpiSupport() {
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
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

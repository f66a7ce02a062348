#include "app/environment/app_ctrl.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLocale>

#include "app/environment/paths.h"
#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

QString const kLanguageKey = QStringLiteral("LANGUAGE");
QString const kOverseaWord = QStringLiteral("oversea");
QString const kRequireAdminWord = QStringLiteral("require_admin");

bool isNumber(QVariant const& value) {
    return value.type() == QVariant::Int || value.type() == QVariant::LongLong ||
           value.type() == QVariant::Double;
}

// From anywhere else a relative path would lie elsewhere.
QString absoluteOrNone(QString const& path) {
    if (path.isEmpty() || QDir::isAbsolutePath(path)) {
        return path;
    }
    Log().warning("DATA_PATH [{}] is not absolute", path.toStdString());
    return {};
}

}  // namespace

AppCtrl& AppCtrl::Instance() {
    static AppCtrl instance;
    return instance;
}

bool AppCtrl::Init() {
    return Init(GetResourceDirPath() + QStringLiteral("/AppCtrl.json"));
}

bool AppCtrl::Init(QString const& file_path) {
    *this = AppCtrl();
    path = file_path;
    QFile file(path);
    QByteArray bytes;
    if (file.open(QIODevice::ReadOnly)) {
        bytes = file.readAll();
    }
    if (bytes.isNull()) {
        Log().error("Failed to read app control config [{}]", path.toStdString());
        return false;
    }
    QJsonParseError error;
    QJsonDocument const json = QJsonDocument::fromJson(bytes, &error);
    document = json.object();
    if (error.error != QJsonParseError::NoError) {
        Log().error("App control config [{}] is no JSON: {} at byte {}", path.toStdString(),
                    error.errorString().toStdString(), error.offset);
    } else if (!json.isObject()) {
        Log().error("App control config [{}] holds no object", path.toStdString());
    }
    QVariantMap const map = document.toVariantMap();
    auto const flag = [&map](char const* key) {
        return ParseValue(map, QLatin1String(key), false).toBool();
    };
    language = ParseSysLang(map);
    appMode = ParseAppMode(map);
    requireAdmin = flag("REQUIRE_ADMIN");
    overseaVersion = flag("OVERSEA_VERSION");
    msiVersion = flag("MSI_VERSION");
    disableTray = flag("DISABLE_TRAY");
    logLevel = ParseValue(map, QStringLiteral("LOG_LEVEL"), QStringLiteral("info")).toString();
    namesLogLevel = map.value(QStringLiteral("LOG_LEVEL")).type() == QVariant::String;
    dataPath = absoluteOrNone(ParseValue(map, QStringLiteral("DATA_PATH"), QString()).toString());
    Log().info(
        "App control config [{}]: language {}, require admin {}, oversea {}, msi {}, no tray {}, "
        "log level [{}], data path [{}]",
        path.toStdString(), static_cast<int>(language), requireAdmin, overseaVersion, msiVersion,
        disableTray, logLevel.toStdString(), dataPath.toStdString());
    return true;
}

QVariant AppCtrl::ParseValue(QVariantMap const& map, QString const& key, QVariant const& fallback) {
    auto const value = map.find(key);
    if (value == map.end()) {
        Log().warning("Can not get [{}] from AppCtrl", key.toStdString());
        return fallback;
    }
    // A whole number comes in another type than one with a fraction.
    bool const are_numbers = isNumber(*value) && isNumber(fallback);
    if (value->type() != fallback.type() && !are_numbers) {
        Log().warning("[{}] of AppCtrl is no {}", key.toStdString(), fallback.typeName());
        return fallback;
    }
    return *value;
}

SysLang AppCtrl::ParseSysLang(QVariantMap const& map) {
    double const number = ParseValue(map, kLanguageKey, 0).toDouble();
    return number == 1   ? SysLang::kSimplifiedChinese
           : number == 2 ? SysLang::kEnglish
                         : SysLang::kSystem;
}

std::int32_t AppCtrl::ParseAppMode(QVariantMap const& map) {
    return ParseSysLang(map) == SysLang::kSimplifiedChinese ? 1 : 0;
}

bool IsChineseDisplayLangguage() {
    SysLang const language = AppCtrl::Instance().language;
    return language == SysLang::kSystem ? isSimpleChineseDisplayLangguage()
                                        : language == SysLang::kSimplifiedChinese;
}

bool isSimpleChineseDisplayLangguage() {
    return GetCurrentSystemDiaplayLanguage().startsWith(QLatin1String("zh"), Qt::CaseInsensitive);
}

QString GetCurrentSystemDiaplayLanguage() {
    // Asked for every text on the screen, and does not change while the program runs.
    static QString const language = QLocale::system().uiLanguages().value(0);
    return language;
}

QString ClientVersionInfo::toString() const {
    return QStringLiteral("%1,%2,%3,%4")
        .arg(version, oversea ? kOverseaWord : QString(), QString(),
             requireAdmin ? kRequireAdminWord : QString());
}

void ClientVersionInfo::fromString(QString const& text) {
    QStringList const fields = text.split(QLatin1Char(','));
    *this = ClientVersionInfo();
    version = fields.first().trimmed();
    for (QString const& field : fields.mid(1)) {
        oversea = oversea || field.trimmed() == kOverseaWord;
        requireAdmin = requireAdmin || field.trimmed() == kRequireAdminWord;
    }
}

}  // namespace zorvanelink::ui

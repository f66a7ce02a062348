// The application control file: the switchboard that a packager sets per product variant.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QVariant>
#include <cstdint>

namespace zorvanelink::ui {

enum class SysLang : std::int32_t { kSystem = 0, kSimplifiedChinese = 1, kEnglish = 2 };

// Read once at start, never written. GUI thread after Init.
class AppCtrl {
  public:
    static AppCtrl& Instance();

    bool Init();
    // False, with a log line and every field at its default, when the file cannot be read.
    bool Init(QString const& path);

    QString path;
    SysLang language = SysLang::kSystem;
    std::int32_t appMode = 0;  // 1 when LANGUAGE is 1: the two share a key
    bool requireAdmin = false;
    bool overseaVersion = false;
    bool msiVersion = false;
    bool disableTray = false;
    QString logLevel = QStringLiteral("info");
    bool namesLogLevel = false;  // the file has one, rather than the default
    QString dataPath;            // absolute or empty
    QJsonObject document;

    // The map's value of the key; for one that is missing or of another type than the fallback, the
    // fallback, with a warning in the log.
    static QVariant ParseValue(QVariantMap const& map, QString const& key,
                               QVariant const& fallback);
    static SysLang ParseSysLang(QVariantMap const& map);
    static std::int32_t ParseAppMode(QVariantMap const& map);
};

// Whether texts are shown in Chinese: the control file's language, or the system's.
bool IsChineseDisplayLangguage();
bool isSimpleChineseDisplayLangguage();
// First of the system locale's interface languages, such as "zh-Hans-CN".
QString GetCurrentSystemDiaplayLanguage();

// A client build, as the settings file keeps it: "1.2.3,oversea,,require_admin".
struct ClientVersionInfo {
    QString version;
    bool oversea = false;
    bool requireAdmin = false;

    QString toString() const;
    void fromString(QString const& text);
};

}  // namespace zorvanelink::ui

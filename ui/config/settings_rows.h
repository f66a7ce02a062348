// Scalar settings as tables: key, member and the value that an absent key reads as, once for
// reading and for writing.
#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <string>
#include <variant>

namespace zorvanelink::ui::settings {

// A text as the user wrote it: QSettings takes an unquoted comma for a list.
QString TextOf(QVariant const& value);
std::string Utf8Of(QVariant const& value);
std::uint16_t Uint16Of(QVariant const& value);  // the low 16 bits of the number

// Sections are parsed when they are first asked for; only then does the status count.
inline bool Parses(QSettings const& file) {
    static_cast<void>(file.allKeys());
    return file.status() != QSettings::FormatError;
}

enum class Use { kBoth, kReadOnly, kWriteOnly };
enum class Trim { kNo, kYes };

template <class Object>
struct Row {
    char const* key;
    std::variant<bool Object::*, std::uint16_t Object::*, std::int32_t Object::*,
                 std::string Object::*, QString Object::*>
        member;
    QVariant fallback;
    Use use = Use::kBoth;
    Trim trim = Trim::kNo;
};

inline void Assign(bool& member, QVariant const& value, Trim) {
    member = value.toBool();
}
inline void Assign(std::uint16_t& member, QVariant const& value, Trim) {
    member = Uint16Of(value);
}
inline void Assign(std::int32_t& member, QVariant const& value, Trim) {
    member = value.toInt();
}
inline void Assign(std::string& member, QVariant const& value, Trim) {
    member = Utf8Of(value);
}
inline void Assign(QString& member, QVariant const& value, Trim trim) {
    member = trim == Trim::kYes ? TextOf(value).trimmed() : TextOf(value);
}

inline QVariant ValueOf(bool member) {
    return member;
}
inline QVariant ValueOf(std::uint16_t member) {
    return int{member};
}
inline QVariant ValueOf(std::int32_t member) {
    return QString::number(member);
}
inline QVariant ValueOf(std::string const& member) {
    return QString::fromStdString(member);
}
inline QVariant ValueOf(QString const& member) {
    return member;
}

template <class Object, class Rows>
void Read(QSettings& settings, Rows const& rows, Object& object) {
    for (auto const& row : rows) {
        if (row.use != Use::kWriteOnly) {
            QVariant const value = settings.value(QLatin1String(row.key), row.fallback);
            std::visit([&](auto member) { Assign(object.*member, value, row.trim); }, row.member);
        }
    }
}

template <class Object, class Rows>
void Write(QSettings& settings, Rows const& rows, Object const& object) {
    for (auto const& row : rows) {
        if (row.use != Use::kReadOnly) {
            std::visit(
                [&](auto member) {
                    settings.setValue(QLatin1String(row.key), ValueOf(object.*member));
                },
                row.member);
        }
    }
}

}  // namespace zorvanelink::ui::settings

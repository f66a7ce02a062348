#include "ui/tunnel/format.h"

#include <QLocale>
#include <QTime>

#include "ui/text/texts.h"

namespace zorvanelink::ui {

QString GetDataSizeStrFrom(unsigned long long size) {
    constexpr auto kLargest = static_cast<unsigned long long>(std::numeric_limits<qint64>::max());
    QString text = QLocale(QLocale::English)
                       .formattedDataSize(static_cast<qint64>(qMin(size, kLargest)), 2,
                                          QLocale::DataSizeTraditionalFormat);
    text.replace(QStringLiteral("kB"), QStringLiteral("KB"));
    return text.replace(QStringLiteral("bytes"), Translate(QT_TRANSLATE_NOOP("ui", "bytes")));
}

QString GetDateTimeString(QDateTime const& start) {
    return GetDateTimeString(start, QDateTime::currentDateTime());
}

QString GetDateTimeString(QDateTime const& start, QDateTime const& now) {
    constexpr qint64 kDay = 86400;
    // A clock that was set back gives no negative duration.
    qint64 const seconds = qMax<qint64>(0, start.secsTo(now));
    QString days;
    if (seconds >= kDay) {
        days = GetTrMsg(common::MsgCode::UI_INFO_SOME_DAY).arg(seconds / kDay) + QLatin1Char(' ');
    }
    QTime const rest = QTime(0, 0, 0, 0).addSecs(static_cast<int>(seconds % kDay));
    QLatin1Char const zero('0');
    return days + QStringLiteral("%1:%2:%3")
                      .arg(rest.hour(), 2, 10, zero)
                      .arg(rest.minute(), 2, 10, zero)
                      .arg(rest.second(), 2, 10, zero);
}

QString AndMore(std::size_t count) {
    return Translate(QT_TRANSLATE_NOOP("ui", "and %L1 more")).arg(count);
}

}  // namespace zorvanelink::ui

// How counters and times of a tunnel are written.
#pragma once

#include <QDateTime>
#include <QString>

namespace zorvanelink::ui {

// "1.50 KB" for 1536: English, two digits, steps of 1024.
QString GetDataSizeStrFrom(unsigned long long size);

// The time since `start` as "00:12:34", with the days in front from one day on.
QString GetDateTimeString(QDateTime const& start);
QString GetDateTimeString(QDateTime const& start, QDateTime const& now);

// "and 36 more", the last line of a list that is shown in part.
QString AndMore(std::size_t count);

}  // namespace zorvanelink::ui

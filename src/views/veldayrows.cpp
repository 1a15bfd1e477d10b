// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayrows.h"

#include <algorithm>

namespace
{
constexpr int MinutesPerHour = 60;
constexpr int SecondsPerHour = 3600;
constexpr int HoursPerDay = 24;
} // namespace

QTime VelDayRows::getTime(int y) const
{
    if (pixelsPerHour <= 0)
        return {0, 0};
    y = std::clamp(y, 0, HoursPerDay * pixelsPerHour - 1);
    const double share = double(y % pixelsPerHour) / pixelsPerHour;
    const int row = static_cast<int>(share / (interval / double(MinutesPerHour)));
    return QTime(y / pixelsPerHour, 0).addSecs(row * interval * MinutesPerHour);
}

QTime VelDayRows::addInterval(QTime time) const
{
    if (time.hour() == HoursPerDay - 1 && time.minute() + interval > MinutesPerHour - 1)
        return {HoursPerDay - 1, MinutesPerHour - 1};
    return time.addSecs(interval * MinutesPerHour);
}

QTime VelDayRows::stepped(QTime time, int rows) const
{
    constexpr int minutesPerDay = HoursPerDay * MinutesPerHour;
    int minute = time.hour() * MinutesPerHour + time.minute();
    if (minute == minutesPerDay - 1)
        minute = minutesPerDay;
    minute = std::clamp(minute + rows * interval, 0, minutesPerDay - 1);
    return {minute / MinutesPerHour, minute % MinutesPerHour};
}

int VelDayRows::top(QTime time) const
{
    return static_cast<int>(qint64(QTime(0, 0).secsTo(time)) * pixelsPerHour / SecondsPerHour);
}

int VelDayRows::rowHeight() const
{
    return static_cast<int>(interval / double(MinutesPerHour) * pixelsPerHour);
}

int VelDayRows::rowsPerHour() const
{
    return std::max(1, MinutesPerHour / interval);
}

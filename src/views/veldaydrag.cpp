// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldaydrag.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr int SecondsPerMinute = 60;
constexpr int MinutesPerHour = 60;
constexpr int MinutesPerDay = 24 * MinutesPerHour;
constexpr int LeadingZone = 5; // pixels of the left and of the top edge
constexpr int TrailingZone = 4; // pixels of the right and of the bottom edge
constexpr int DayThreshold = 5; // pixels that the pointer goes beyond an edge before a day is passed

/** Minutes since midnight; the last minute of the day stands for its end, so that steps stay on the grid. */
int minuteOf(QTime time)
{
    const int minute = time.hour() * MinutesPerHour + time.minute();
    return minute == MinutesPerDay - 1 ? MinutesPerDay : minute;
}

QTime timeOf(int minute)
{
    minute = std::clamp(minute, 0, MinutesPerDay - 1);
    return {minute / MinutesPerHour, minute % MinutesPerHour};
}

/** Whole steps of an edge at @p edge (pixels) that bring it within half a row of the pointer. */
int stepsTo(int y, double edge, double rowHeight)
{
    const double distance = y - edge;
    if (std::abs(distance) <= rowHeight / 2)
        return 0;
    const int steps = static_cast<int>(std::lround(std::abs(distance) / rowHeight));
    return distance < 0 ? -steps : steps;
}

bool isLongEnough(const VelDayDrag::Times &times, int intervalMinutes)
{
    return times.start.secsTo(times.end) >= qint64(intervalMinutes) * SecondsPerMinute;
}
} // namespace

namespace VelDayDrag
{
Mode hitZone(QPoint point, const Shape &shape)
{
    if (point.x() < LeadingZone && shape.isFirstDay)
        return MoveStartDay;
    if (point.x() > shape.size.width() - TrailingZone && shape.isLastDay)
        return MoveEndDay;
    if (shape.hasTimes && point.y() < LeadingZone && shape.isFirstDay)
        return ResizeStart;
    if (shape.hasTimes && point.y() > shape.size.height() - TrailingZone && shape.isLastDay)
        return ResizeEnd;
    return shape.isFirstDay && shape.isLastDay ? Drag : NoMode;
}

Times resized(Mode mode, const Times &times, int y, const VelDayRows &rows)
{
    const VelDateTime &edge = mode == ResizeStart ? times.start : times.end;
    const double pixelsPerMinute = rows.pixelsPerHour / double(MinutesPerHour);
    const int minute = minuteOf(edge.time());
    int steps = stepsTo(y, minute * pixelsPerMinute, rows.interval * pixelsPerMinute);
    // Back from what the pointer asks for to the first that is allowed.
    for (; steps != 0; steps += steps < 0 ? 1 : -1) {
        int target = minute + steps * rows.interval;
        if (mode == ResizeEnd && target >= MinutesPerDay && minute < MinutesPerDay)
            target = MinutesPerDay;
        const bool isInDay =
            target >= 0 && (mode == ResizeStart ? target < MinutesPerDay : target <= MinutesPerDay);
        Times result = times;
        (mode == ResizeStart ? result.start : result.end) = edge.withTime(timeOf(target));
        if (isInDay && isLongEnough(result, rows.interval))
            return result;
    }
    return times;
}

Times movedDays(Mode mode, const Times &pressed, int x, int columnWidth, bool hasTimes, int intervalMinutes)
{
    int days = 0;
    if (x < -DayThreshold)
        days = -1 - (-x - DayThreshold - 1) / std::max(1, columnWidth);
    else if (x > DayThreshold)
        days = 1 + (x - DayThreshold - 1) / std::max(1, columnWidth);
    for (; days != 0; days += days < 0 ? 1 : -1) {
        Times result = pressed;
        VelDateTime &edge = mode == MoveStartDay ? result.start : result.end;
        edge = edge.addDays(days);
        const bool isInOrder =
            hasTimes ? isLongEnough(result, intervalMinutes) : result.start.date() <= result.end.date();
        if (edge.isValid() && isInOrder)
            return result;
    }
    return pressed;
}
} // namespace VelDayDrag

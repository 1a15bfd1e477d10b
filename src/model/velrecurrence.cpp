// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velrecurrence.h"

#include <algorithm>
#include <limits>

namespace
{
/** Beyond every supported date; series are compared with it but never hold it. */
constexpr qint32 FarFuture = std::numeric_limits<qint32>::max();
constexpr int LastYear = 9999;

/**
 * The calendar repeats after 400 years, so no pattern of months or years takes more steps than this to show
 * itself.
 */
constexpr qint64 CalendarCycle = 400;

qint64 floorDiv(qint64 a, qint64 b)
{
    return a / b - (a % b != 0 && a < 0 ? 1 : 0);
}

qint64 ceilDiv(qint64 a, qint64 b)
{
    return -floorDiv(-a, b);
}

int daysInMonth(qint64 monthIndex)
{
    static constexpr std::array<qint8, 12> Days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const auto month = static_cast<std::size_t>(monthIndex % 12);
    return Days[month] + (month == 1 && QDate::isLeapYear(static_cast<int>(monthIndex / 12)) ? 1 : 0);
}

qint32 dayOf(qint64 monthIndex, int day)
{
    return static_cast<qint32>(
        QDate(static_cast<int>(monthIndex / 12), static_cast<int>(monthIndex % 12) + 1, day).toJulianDay());
}

bool isSupported(qint64 monthIndex)
{
    return monthIndex / 12 <= LastYear;
}

bool areDaysInRange(const QVector<int> &days, int highest)
{
    return !days.isEmpty()
        && std::all_of(days.begin(), days.end(), [highest](int day) { return day >= 1 && day <= highest; });
}
} // namespace

VelRecurrence::VelRecurrence(const VelRecurrenceRule &rule, QDate start, int spanDays, QDate today)
    : m_span(spanDays)
    , m_every(rule.occurevery)
{
    if (!start.isValid() || start.year() < 1 || start.year() > LastYear)
        return;
    m_kind = kindOf(rule);
    if (m_kind == Kind::None)
        return;
    m_start = static_cast<qint32>(start.toJulianDay());
    m_startYear = start.year();
    m_startMonth = static_cast<quint8>(start.month());
    m_startDayOfMonth = static_cast<quint8>(start.day());
    if (m_kind == Kind::Weekly)
        setWeekdays(rule, start.dayOfWeek());
    if (m_kind == Kind::MonthDay || m_kind == Kind::MonthWeekday)
        m_day = static_cast<quint8>(rule.occurdays.first());
    if (m_kind == Kind::Yearly)
        setYearlyClip();
    m_weekOfMonth = static_cast<qint8>(std::clamp(rule.occurdaynumber, -1, 5));
    setCount(rule, today);
}

VelRecurrence::Kind VelRecurrence::kindOf(const VelRecurrenceRule &rule)
{
    if (rule.occurevery < 1)
        return Kind::None;
    switch (rule.recurringtype) {
    case VelRecurrenceRule::Daily:
        return Kind::Daily;
    case VelRecurrenceRule::Weekly:
        return areDaysInRange(rule.occurdays, 7) ? Kind::Weekly : Kind::None;
    case VelRecurrenceRule::Monthly:
        if (rule.occurdaynumber == 0)
            return areDaysInRange(rule.occurdays, 31) ? Kind::MonthDay : Kind::None;
        return areDaysInRange(rule.occurdays, 7) ? Kind::MonthWeekday : Kind::None;
    case VelRecurrenceRule::Yearly:
        return Kind::Yearly;
    default:
        return Kind::None;
    }
}

/**
 * The weeks of a weekly rule are counted from that of the first occurrence. When the entry's own weekday is
 * one of the rule's, the first step already jumps a whole period, so the later weekdays of the entry's own
 * week are left out.
 */
void VelRecurrence::setWeekdays(const VelRecurrenceRule &rule, int startWeekday)
{
    std::array<bool, 8> wanted{};
    for (const int day : rule.occurdays)
        wanted[static_cast<std::size_t>(day)] = true;
    for (quint8 day = 1; day <= 7; ++day) {
        if (wanted[day])
            m_weekdays[m_weekdayCount++] = day;
    }
    const auto *const begin = m_weekdays.data();
    const auto *const end = begin + m_weekdayCount;
    const auto *const first = std::lower_bound(begin, end, startWeekday);
    m_firstPosition = first == end ? 0 : static_cast<quint8>(first - begin);
    const bool inStartWeek = first != end && *first > startWeekday;
    const qint64 monday = m_start - startWeekday + 1 + (inStartWeek ? 0 : 7LL * m_every);
    m_firstMonday = static_cast<qint32>(std::min<qint64>(monday, FarFuture));
}

/** A yearly series that starts on 29 February falls to the 28th in the first short year and stays there. */
void VelRecurrence::setYearlyClip()
{
    if (m_startMonth != 2 || m_startDayOfMonth != 29)
        return;
    for (qint64 number = 1; number <= CalendarCycle; ++number) {
        const qint64 year = m_startYear + number * m_every;
        if (year > LastYear)
            return;
        if (!QDate::isLeapYear(static_cast<int>(year))) {
            m_clipFrom = static_cast<qint32>(number);
            return;
        }
    }
}

void VelRecurrence::setCount(const VelRecurrenceRule &rule, QDate today)
{
    const quint32 limit =
        rule.occurendcount > 0 ? static_cast<quint32>(rule.occurendcount) - 1 : MaximumCount;
    const QDate horizon = rule.occurenddate.isValid() ? rule.occurenddate : today.addDays(HorizonDays);
    m_count = limit;
    if (limit == 0 || horizon.toJulianDay() <= m_start) {
        m_count = 0;
        return;
    }
    const QDate afterAll(LastYear + 1, 1, 1);
    m_count = std::min(
        limit, firstFrom(VelJulianDay(static_cast<qint32>(std::min(horizon, afterAll).toJulianDay()))) - 1);
}

qint32 VelRecurrence::startDay(quint32 number) const
{
    switch (m_kind) {
    case Kind::Daily:
        return static_cast<qint32>(
            std::min<qint64>(m_start + static_cast<qint64>(number) * m_every, FarFuture));
    case Kind::Weekly:
        return weeklyDay(number);
    case Kind::MonthDay:
        return monthDay(number);
    case Kind::MonthWeekday:
        return monthWeekday(number);
    case Kind::Yearly:
        return yearlyDay(number);
    case Kind::None:
        break;
    }
    return m_start;
}

quint32 VelRecurrence::firstFrom(const VelJulianDay &day) const
{
    qint64 number = 1;
    switch (m_kind) {
    case Kind::Daily:
        number = ceilDiv(static_cast<qint64>(day.number) - m_start, m_every);
        break;
    case Kind::Weekly:
        number = firstWeeklyFrom(day.number);
        break;
    case Kind::MonthDay:
    case Kind::MonthWeekday:
    case Kind::Yearly:
        number = lastNumberUpToPeriodOf(day);
        if (number < 1 || (number <= m_count && startDay(static_cast<quint32>(number)) < day.number))
            ++number;
        break;
    case Kind::None:
        break;
    }
    return static_cast<quint32>(std::clamp<qint64>(number, 1, static_cast<qint64>(m_count) + 1));
}

/**
 * The occurrence in the month or year of @p day, else the one before it; 0 or less when it would precede the
 * first.
 */
qint64 VelRecurrence::lastNumberUpToPeriodOf(const VelJulianDay &day) const
{
    if (m_kind == Kind::Yearly)
        return floorDiv(static_cast<qint64>(day.year) - m_startYear, m_every);
    return floorDiv((day.year * 12LL + day.month - 1) - monthIndex(0), m_every);
}

qint64 VelRecurrence::firstWeeklyFrom(qint32 day) const
{
    const qint64 period = 7LL * m_every;
    const qint64 week = std::max<qint64>(0, floorDiv(static_cast<qint64>(day) - m_firstMonday, period));
    const qint64 monday = m_firstMonday + week * period;
    qint64 position = week * m_weekdayCount;
    for (quint8 i = 0; i < m_weekdayCount && monday + m_weekdays[i] - 1 < day; ++i)
        ++position;
    return position - m_firstPosition + 1;
}

qint32 VelRecurrence::weeklyDay(qint64 number) const
{
    const qint64 position = m_firstPosition + number - 1;
    const qint64 monday = m_firstMonday + position / m_weekdayCount * 7 * m_every;
    const auto weekday = m_weekdays[static_cast<std::size_t>(position % m_weekdayCount)];
    return static_cast<qint32>(std::min<qint64>(monday + weekday - 1, FarFuture));
}

qint64 VelRecurrence::monthIndex(qint64 number) const
{
    return m_startYear * 12LL + m_startMonth - 1 + number * m_every;
}

/**
 * A month that lacks the rule's day takes the day of the occurrence before it, clipped to the month's end.
 * That day is the rule's own if some month before had it, shortened by every month since.
 */
qint32 VelRecurrence::monthDay(qint64 number) const
{
    if (!isSupported(monthIndex(number)))
        return FarFuture;
    int day = m_day;
    const qint64 oldest = std::max<qint64>(1, number - CalendarCycle);
    for (qint64 i = number; daysInMonth(monthIndex(i)) < m_day; --i) {
        day = std::min(day, daysInMonth(monthIndex(i)));
        if (i == oldest) {
            day = std::min<int>(day, m_startDayOfMonth);
            break;
        }
    }
    return dayOf(monthIndex(number), day);
}

qint32 VelRecurrence::monthWeekday(qint64 number) const
{
    const qint64 month = monthIndex(number);
    if (!isSupported(month))
        return FarFuture;
    const qint32 firstOfMonth = dayOf(month, 1);
    const int weekday = firstOfMonth % 7 + 1; // Julian day 0 was a Monday
    const int first = (m_day - weekday + 7) % 7;
    const int lastWeek = (daysInMonth(month) - 1 - first) / 7;
    const int week = m_weekOfMonth < 0 ? lastWeek : std::min(m_weekOfMonth - 1, lastWeek);
    return firstOfMonth + first + 7 * week;
}

qint32 VelRecurrence::yearlyDay(qint64 number) const
{
    const qint64 year = m_startYear + number * m_every;
    if (year > LastYear)
        return FarFuture;
    const bool clipped = m_clipFrom != 0 && number >= m_clipFrom;
    return static_cast<qint32>(
        QDate(static_cast<int>(year), m_startMonth, clipped ? 28 : m_startDayOfMonth).toJulianDay());
}

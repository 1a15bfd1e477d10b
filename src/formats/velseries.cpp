// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velseries.h"

#include "model/veldatetime.h"

#include <algorithm>

namespace
{
/** Months and leap years repeat after 48 months, so what an open monthly series does shows within this many steps. */
constexpr quint32 MonthsOfOpenSeries = 48;
/** Few enough to leave aside that one century in four begins without a leap year. */
constexpr quint32 YearsOfOpenSeries = 10;

VelRecurrenceRule withEnd(VelRecurrenceRule rule)
{
    if (!rule.occurenddate.isValid())
        rule.occurenddate = QDate(9999, 12, 31);
    return rule;
}

VelRecurrenceRule withoutEnd(VelRecurrenceRule rule)
{
    rule.occurendcount = 0;
    rule.occurenddate = QDate();
    return withEnd(rule);
}
} // namespace

VelSeries::VelSeries(const VelRecurrenceRule &rule, QDate start)
    : m_rule(rule)
    , m_start(start)
    , m_bounded(withEnd(rule), start, 0, start)
    , m_endless(withoutEnd(rule), start, 0, start)
{
}

VelSeries::Adopted VelSeries::adopted(VelRecurrenceRule rule, QDate start, Form form)
{
    QVector<QDate> days = VelSeries(rule, start).skipped(form);
    if (rule.occurendcount > 0) {
        days = days.mid(0, rule.occurendcount - 1);
        rule.occurendcount -= static_cast<int>(days.size());
    }
    const QDate end = rule.occurenddate;
    const auto isBehindEnd = [end](QDate day) { return end.isValid() && day >= end; };
    days.erase(std::remove_if(days.begin(), days.end(), isBehindEnd), days.end());
    if (!days.isEmpty() && VelSeries(rule, start).count() == 0)
        rule.clear();
    return {rule, days};
}

bool VelSeries::isOpen() const
{
    return m_rule.occurendcount <= 0 && !m_rule.occurenddate.isValid();
}

bool VelSeries::isByDayOfMonth() const
{
    return m_rule.recurringtype == VelRecurrenceRule::Monthly && m_rule.occurdaynumber == 0;
}

bool VelSeries::follows(Form form) const
{
    if (!isByDayOfMonth() && m_rule.recurringtype != VelRecurrenceRule::Yearly)
        return true;
    const quint32 enough = isByDayOfMonth() ? MonthsOfOpenSeries : YearsOfOpenSeries;
    const quint32 last = isOpen() ? std::min(count(), enough) : count();
    for (quint32 number = 1; number <= last; ++number) {
        if (day(number) != expected(day(number), form))
            return false;
    }
    return true;
}

/** The day that the rule of that form has in the month of @p day; none when it passes the month over. */
QDate VelSeries::expected(QDate day, Form form) const
{
    const bool isMonthly = isByDayOfMonth();
    int wanted = isMonthly ? m_rule.occurdays.first() : m_start.day();
    if (form == Form::Clipped)
        wanted = isMonthly ? std::min(wanted, day.daysInMonth()) : std::min(wanted, 28);
    return QDate(day.year(), day.month(), wanted);
}

bool VelSeries::isIn(const VelRecurrence &recurrence, QDate day)
{
    if (!day.isValid() || recurrence.isEmpty())
        return false;
    const VelJulianDay wanted(static_cast<qint32>(day.toJulianDay()));
    const quint32 number = recurrence.firstFrom(wanted);
    return number <= recurrence.count() && recurrence.startDay(number) == wanted.number;
}

QVector<QDate> VelSeries::skipped(Form form) const
{
    QVector<QDate> days;
    for (const QDate day : periodDays(form)) {
        if (VelDateTime::isSupported(day) && day > m_start && !isIn(m_endless, day))
            days.append(day);
    }
    return days;
}

QVector<QDate> VelSeries::periodDays(Form form) const
{
    QVector<QDate> days;
    switch (m_rule.recurringtype) {
    case VelRecurrenceRule::Weekly:
        for (const int weekday : m_rule.occurdays) {
            const QDate first = m_start.addDays(weekday - m_start.dayOfWeek());
            days.append(first);
            days.append(first.addDays(7LL * m_rule.occurevery));
        }
        std::sort(days.begin(), days.end());
        return days;
    case VelRecurrenceRule::Monthly:
        return {isByDayOfMonth() ? expected(m_start, form) : monthWeekday()};
    case VelRecurrenceRule::Yearly:
        return {expected(m_start, form)};
    default:
        return {m_start};
    }
}

/** The rule's weekday in the month of the start. */
QDate VelSeries::monthWeekday() const
{
    const QDate first(m_start.year(), m_start.month(), 1);
    const int offset = (m_rule.occurdays.first() - first.dayOfWeek() + 7) % 7;
    const int lastWeek = (first.daysInMonth() - 1 - offset) / 7;
    const int week = m_rule.occurdaynumber < 0 ? lastWeek : std::min(m_rule.occurdaynumber - 1, lastWeek);
    return first.addDays(offset + 7 * week);
}

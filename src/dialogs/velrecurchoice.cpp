// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velrecurchoice.h"

#include "model/velrecurrence.h"

#include <algorithm>

namespace
{
constexpr int LongestMonth = 31;
constexpr int DaysPerWeek = 7;

/** Every field as it suits an event that starts on that day. */
VelRecurChoice choiceFor(QDate start)
{
    VelRecurChoice choice;
    choice.weekdays = {start.dayOfWeek()};
    choice.dayOfMonth = start.day();
    choice.ordinal = (start.day() - 1) / DaysPerWeek;
    choice.weekday = start.dayOfWeek() - 1;
    choice.endDate = start.addYears(1);
    return choice;
}

void readWeekdays(VelRecurChoice &choice, const VelRecurrenceRule &rule)
{
    QVector<int> days;
    for (int day = 1; day <= DaysPerWeek; ++day) {
        if (rule.occurdays.contains(day))
            days.append(day);
    }
    if (!days.isEmpty())
        choice.weekdays = days;
}

void readMonth(VelRecurChoice &choice, const VelRecurrenceRule &rule)
{
    const int day = rule.occurdays.value(0);
    if (rule.occurdaynumber == 0) {
        choice.monthBy = VelRecurChoice::MonthBy::Day;
        if (day >= 1 && day <= LongestMonth)
            choice.dayOfMonth = day;
        return;
    }
    choice.monthBy = VelRecurChoice::MonthBy::Weekday;
    const bool isLast = rule.occurdaynumber < 0 || rule.occurdaynumber > VelRecurChoice::LastOrdinal;
    choice.ordinal = isLast ? VelRecurChoice::LastOrdinal : rule.occurdaynumber - 1;
    if (day >= 1 && day <= DaysPerWeek)
        choice.weekday = day - 1;
}

void readEnd(VelRecurChoice &choice, const VelRecurrenceRule &rule)
{
    if (rule.occurendcount > 0) {
        choice.end = VelRecurChoice::End::Count;
        choice.count = rule.occurendcount;
    } else if (rule.occurenddate.isValid()) {
        choice.end = VelRecurChoice::End::Date;
        choice.endDate = rule.occurenddate;
    }
}
} // namespace

VelRecurChoice VelRecurChoice::fromRule(const VelRecurrenceRule &rule, QDate start)
{
    VelRecurChoice choice = choiceFor(start);
    if (rule.recurringtype < VelRecurrenceRule::Daily || rule.recurringtype > VelRecurrenceRule::Yearly)
        return choice;
    choice.rule = rule.recurringtype - 1;
    choice.every = std::max(1, rule.occurevery);
    if (rule.recurringtype == VelRecurrenceRule::Weekly)
        readWeekdays(choice, rule);
    else if (rule.recurringtype == VelRecurrenceRule::Monthly)
        readMonth(choice, rule);
    readEnd(choice, rule);
    return choice;
}

VelRecurrenceRule VelRecurChoice::toRule() const
{
    VelRecurrenceRule stored;
    stored.recurringtype = rule + 1;
    stored.occurevery = every;
    if (stored.recurringtype == VelRecurrenceRule::Weekly) {
        stored.occurdays = weekdays;
        // Where the week begins on Sunday the controls name that day first.
        std::sort(stored.occurdays.begin(), stored.occurdays.end());
    } else if (stored.recurringtype == VelRecurrenceRule::Monthly) {
        const bool isByDay = monthBy == MonthBy::Day;
        stored.occurdays = {isByDay ? dayOfMonth : weekday + 1};
        if (!isByDay)
            stored.occurdaynumber = ordinal == LastOrdinal ? -1 : ordinal + 1;
    }
    if (end == End::Count)
        stored.occurendcount = count;
    if (end == End::Date)
        stored.occurenddate = endDate;
    return stored;
}

VelRecurChoice::Problem VelRecurChoice::getProblem(QDate start) const
{
    if (rule + 1 == VelRecurrenceRule::Weekly && weekdays.isEmpty())
        return Problem::NoWeekday;
    return end == End::Date && endDate < start ? Problem::EndBeforeStart : Problem::None;
}

VelNextDates::VelNextDates(const VelRecurrenceRule &rule, QDate start, QDate today)
{
    // When it starts again does not depend on how long it takes.
    const VelRecurrence series(rule, start, 0, today);
    const quint32 first = series.firstFrom(VelJulianDay(static_cast<qint32>(today.toJulianDay())));
    quint32 number = first;
    for (; number <= series.count() && number < first + MaximumCount; ++number)
        dates.append(QDate::fromJulianDay(series.startDay(number)));
    isMore = number <= series.count();
}

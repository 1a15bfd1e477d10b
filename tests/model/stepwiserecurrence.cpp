// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/stepwiserecurrence.h"

#include <QRandomGenerator>
#include <QStringList>

#include <algorithm>

namespace
{
const QDate LastSupported(9999, 12, 31);

bool canBeFollowed(const VelRecurrenceRule &rule)
{
    const bool needsDays =
        rule.recurringtype == VelRecurrenceRule::Weekly || rule.recurringtype == VelRecurrenceRule::Monthly;
    const bool byDayOfMonth = rule.recurringtype == VelRecurrenceRule::Monthly && rule.occurdaynumber == 0;
    const int highest = byDayOfMonth ? 31 : 7;
    if (rule.occurevery < 1 || (needsDays && rule.occurdays.isEmpty()))
        return false;
    return !needsDays || std::all_of(rule.occurdays.begin(), rule.occurdays.end(), [highest](int day) {
        return day >= 1 && day <= highest;
    });
}

QDate nextWeekly(const VelRecurrenceRule &rule, QDate current, int &position)
{
    const int day = rule.occurdays.at(position);
    const int weekday = current.dayOfWeek();
    position = position + 1 == rule.occurdays.size() ? 0 : position + 1;
    return current.addDays(day > weekday ? day - weekday : 7LL * rule.occurevery - weekday + day);
}

QDate nextMonthlyByDay(const VelRecurrenceRule &rule, QDate current)
{
    const QDate next = current.addMonths(rule.occurevery);
    if (next.day() == rule.occurdays.first())
        return next;
    const QDate wanted(next.year(), next.month(), rule.occurdays.first());
    return wanted.isValid() ? wanted : next;
}

QDate nextMonthlyByWeekday(const VelRecurrenceRule &rule, QDate current)
{
    const int target = rule.occurdays.first();
    const QDate sameDay = current.addMonths(rule.occurevery);
    QDate next(sameDay.year(), sameDay.month(), 1);
    const int weekday = next.dayOfWeek();
    next = next.addDays(weekday > target ? target + 7 - weekday : target - weekday);
    const int month = next.month();
    for (int i = 1; (i < rule.occurdaynumber || rule.occurdaynumber < 0) && next.month() == month; ++i)
        next = next.addDays(7);
    return next.month() == month ? next : next.addDays(-7);
}

QDate nextOf(const VelRecurrenceRule &rule, QDate current, int &weekdayPosition)
{
    switch (rule.recurringtype) {
    case VelRecurrenceRule::Daily:
        return current.addDays(rule.occurevery);
    case VelRecurrenceRule::Weekly:
        return nextWeekly(rule, current, weekdayPosition);
    case VelRecurrenceRule::Monthly:
        return rule.occurdaynumber == 0 ? nextMonthlyByDay(rule, current)
                                        : nextMonthlyByWeekday(rule, current);
    default:
        return current.addYears(rule.occurevery);
    }
}

int firstWeekdayPosition(const VelRecurrenceRule &rule, QDate start)
{
    for (int i = 0; i < rule.occurdays.size(); ++i) {
        if (rule.occurdays.at(i) >= start.dayOfWeek())
            return i;
    }
    return 0;
}
} // namespace

QString RecurrenceCase::describe() const
{
    QStringList days;
    for (const int day : rule.occurdays)
        days.append(QString::number(day));
    return QStringLiteral("type %1 every %2 days [%3] daynumber %4 until %5 count %6 from %7 today %8")
        .arg(rule.recurringtype)
        .arg(rule.occurevery)
        .arg(days.join(QLatin1Char(' ')))
        .arg(rule.occurdaynumber)
        .arg(rule.occurenddate.toString(QStringLiteral("yyyy-MM-dd")))
        .arg(rule.occurendcount)
        .arg(start.toString(Qt::ISODate), today.toString(Qt::ISODate));
}

StepwiseRecurrence::StepwiseRecurrence(const RecurrenceCase &recurrence, std::size_t most)
{
    const VelRecurrenceRule &rule = recurrence.rule;
    if (!canBeFollowed(rule))
        return;
    const int limit = rule.occurendcount > 0 ? rule.occurendcount - 1 : 999999;
    QDate horizon = rule.occurenddate.isValid() ? rule.occurenddate : recurrence.today.addDays(750);
    horizon = std::min(horizon, LastSupported.addDays(1));
    QDate current = recurrence.start;
    int weekdayPosition = firstWeekdayPosition(rule, current);
    int made = 0;
    while (made < limit && current < horizon) {
        current = nextOf(rule, current, weekdayPosition);
        if (current >= horizon)
            continue;
        if (days.size() == most) {
            isComplete = false;
            return;
        }
        ++made;
        days.push_back(current.toJulianDay());
    }
}

namespace
{
int randomInterval(QRandomGenerator &random)
{
    const int choice = random.bounded(100);
    if (choice < 3)
        return random.bounded(-3, 1);
    if (choice < 55)
        return random.bounded(1, 5);
    return choice < 94 ? random.bounded(1, 61) : random.bounded(61, 30000);
}

QDate randomStart(QRandomGenerator &random)
{
    const QDate any = QDate(1, 1, 1).addDays(random.bounded(9990 * 365));
    switch (random.bounded(4)) {
    case 0:
        return QDate(any.year(), any.month(), any.daysInMonth());
    case 1:
        return QDate(any.year(), any.month(), std::min(any.daysInMonth(), random.bounded(28, 32)));
    case 2:
        return QDate::isLeapYear(any.year()) ? QDate(any.year(), 2, 29) : any;
    default:
        return any;
    }
}

QVector<int> randomWeekdays(QRandomGenerator &random)
{
    if (random.bounded(30) == 0)
        return random.bounded(2) == 0 ? QVector<int>{} : QVector<int>{1, 3, 8};
    const int set = random.bounded(1, 1 << 7);
    QVector<int> days;
    for (int day = 1; day <= 7; ++day) {
        if (set & (1 << (day - 1)))
            days.append(day);
    }
    return days;
}

VelRecurrenceRule randomRule(RuleKind kind, QRandomGenerator &random)
{
    VelRecurrenceRule rule;
    rule.occurevery = randomInterval(random);
    switch (kind) {
    case RuleKind::Daily:
        rule.recurringtype = VelRecurrenceRule::Daily;
        break;
    case RuleKind::Weekly:
        rule.recurringtype = VelRecurrenceRule::Weekly;
        rule.occurdays = randomWeekdays(random);
        break;
    case RuleKind::MonthlyByDay:
        rule.recurringtype = VelRecurrenceRule::Monthly;
        rule.occurdays = {random.bounded(2) == 0 ? random.bounded(0, 33) : random.bounded(28, 32)};
        break;
    case RuleKind::MonthlyByWeekday:
        rule.recurringtype = VelRecurrenceRule::Monthly;
        rule.occurdaynumber = random.bounded(3) == 0 ? random.bounded(-2, 0) : random.bounded(1, 7);
        rule.occurdays = {random.bounded(40) == 0 ? 8 * random.bounded(2) : random.bounded(1, 8)};
        break;
    case RuleKind::Yearly:
        rule.recurringtype = VelRecurrenceRule::Yearly;
        break;
    }
    return rule;
}

/** Days of about one step of the rule, so that ends can be set some steps away. */
qint64 daysPerStep(const VelRecurrenceRule &rule)
{
    static constexpr int Days[] = {1, 1, 7, 31, 366};
    return static_cast<qint64>(Days[rule.recurringtype]) * std::max(rule.occurevery, 1);
}
} // namespace

RecurrenceCase randomCase(RuleKind kind, QRandomGenerator &random)
{
    RecurrenceCase result;
    result.rule = randomRule(kind, random);
    result.start = randomStart(random);
    result.today = result.start.addDays(random.bounded(-800, 4000));
    if (random.bounded(3) != 0)
        result.rule.occurenddate =
            result.start.addDays(daysPerStep(result.rule) * random.bounded(-2, 300) + random.bounded(3));
    if (random.bounded(2) == 0)
        result.rule.occurendcount = random.bounded(3) == 0 ? random.bounded(0, 4) : random.bounded(0, 150);
    return result;
}

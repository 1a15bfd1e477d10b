// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velrecurrence.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <limits>
#include <vector>

using Rule = VelRecurrenceRule;
using enum Rule::Type;

Q_DECLARE_METATYPE(Rule)

namespace
{
constexpr int Huge = std::numeric_limits<int>::max();
const QDate Last(9999, 12, 31);
const auto AfterAll = static_cast<qint32>(Last.toJulianDay() + 1);

QDate nextMonthly(const Rule &rule, QDate current)
{
    QDate next = current.addMonths(rule.occurevery);
    if (rule.occurdaynumber == 0) {
        const QDate wanted(next.year(), next.month(), rule.occurdays.first());
        return wanted.isValid() ? wanted : next;
    }
    next = QDate(next.year(), next.month(), 1);
    next = next.addDays((rule.occurdays.first() - next.dayOfWeek() + 7) % 7);
    const int wanted = rule.occurdaynumber < 0 ? 5 : rule.occurdaynumber;
    for (int i = 1; i < wanted && next.addDays(7).month() == next.month(); ++i)
        next = next.addDays(7);
    return next;
}

// Steps from one occurrence to the next. Slow, but each line says what the calendar promises.
std::vector<qint64> stepThrough(const Rule &rule, QDate start, QDate today, std::size_t most)
{
    std::vector<qint64> days;
    const QDate end = rule.occurenddate.isValid() ? rule.occurenddate : today.addDays(750);
    if (rule.occurendcount > 0)
        most = std::min(most, static_cast<std::size_t>(rule.occurendcount) - 1);
    const auto notBefore = [start](int day) { return day >= start.dayOfWeek(); };
    const auto first = std::find_if(rule.occurdays.begin(), rule.occurdays.end(), notBefore);
    int position = first == rule.occurdays.end() ? 0 : static_cast<int>(first - rule.occurdays.begin());
    for (QDate day = start; days.size() < most; days.push_back(day.toJulianDay())) {
        if (rule.recurringtype == Weekly) {
            const int forward = rule.occurdays.at(position) - day.dayOfWeek();
            day = day.addDays(forward > 0 ? forward : 7LL * rule.occurevery + forward);
            position = (position + 1) % rule.occurdays.size();
        } else if (rule.recurringtype == Monthly) {
            day = nextMonthly(rule, day);
        } else {
            day = rule.recurringtype == Daily ? day.addDays(rule.occurevery) : day.addYears(rule.occurevery);
        }
        if (day >= end || day > Last)
            break;
    }
    return days;
}

// The number of the first occurrence that is wrong or not found; 0 when all of the first @p most are right.
std::size_t firstWrong(const VelRecurrence &actual, const std::vector<qint64> &expected, std::size_t most)
{
    if (std::min<std::size_t>(actual.count(), most) != expected.size())
        return std::min<std::size_t>(actual.count(), expected.size()) + 1;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const auto number = static_cast<quint32>(i + 1);
        const qint64 before = i > 0 ? expected[i - 1] : expected[i] - 400;
        bool isRight = actual.startDay(number) == expected[i];
        for (const qint64 day : {before + 1, (before + expected[i] + 2) / 2, expected[i]})
            isRight = isRight && actual.firstFrom(VelJulianDay(static_cast<qint32>(day))) == number;
        if (!isRight)
            return i + 1;
    }
    return 0;
}

// Rules with the corners of the calendar well represented.
Rule randomRule(QDate start, QRandomGenerator &random)
{
    static constexpr int DaysPerStep[] = {1, 1, 7, 31, 366};
    const auto below = [&random](int bound) { return random.bounded(bound); };
    Rule rule;
    const int type = rule.recurringtype = Daily + below(4);
    rule.occurevery = 1 + (below(2) == 0 ? below(4) : below(below(10) == 0 ? 30000 : 60));
    if (type == Monthly && below(2) == 0)
        rule.occurdaynumber = below(8) - 2;
    if (type == Monthly)
        rule.occurdays = {1
                          + (rule.occurdaynumber != 0 ? below(7)
                                 : below(2) == 0      ? below(31)
                                                      : 27 + below(4))};
    for (int day = 1; type == Weekly && day <= 7; ++day) {
        if (below(3) == 0 || (day == 7 && rule.occurdays.isEmpty()))
            rule.occurdays.append(day);
    }
    const qint64 days = DaysPerStep[type] * rule.occurevery * (below(300) - 2LL) + below(3);
    if (const int choice = below(20); choice > 6)
        rule.occurenddate = choice == 7 ? Last : start.addDays(days);
    rule.occurendcount = below(2) * below(150);
    return rule;
}

QString allDates(const VelRecurrence &recurrence)
{
    QStringList dates;
    for (quint32 number = 1; number <= std::min(recurrence.count(), 10U); ++number)
        dates.append(QDate::fromJulianDay(recurrence.startDay(number)).toString(Qt::ISODate));
    return dates.join(QLatin1Char(' '));
}
} // namespace

class VelRecurrenceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldAgreeWithSteppingThroughTheRule()
    {
        constexpr std::size_t most = 2000;
        std::size_t compared = 0;
        for (quint32 seed = 0; seed < 24000; ++seed) {
            QRandomGenerator random(seed);
            const QDate any = QDate(1, 1, 1).addDays(random.bounded(9990 * 365));
            const bool isLate = random.bounded(2) == 0;
            const QDate start(any.year(), any.month(), isLate ? any.daysInMonth() : any.day());
            const QDate today = start.addDays(random.bounded(-800, 4000));
            const Rule rule = randomRule(start, random);
            const auto expected = stepThrough(rule, start, today, most);
            const std::size_t wrong = firstWrong(VelRecurrence(rule, start, 0, today), expected, most);
            QVERIFY2(wrong == 0, qPrintable(QStringLiteral("number %1 of seed %2").arg(wrong).arg(seed)));
            compared += expected.size();
        }
        QVERIFY2(compared > 500000, "the cases hardly repeat and prove little");
    }

    // Rules are written as type, interval, days, which such weekday, end date and count.
    // Without an end, 2 January 2025 as today ends a rule before 22 January 2027.
    void shouldFallOnTheseDates_data()
    {
        QTest::addColumn<Rule>("rule");
        QTest::addColumn<QDate>("start");
        QTest::addColumn<QString>("dates");
        const auto row = [](const char *name, const Rule &rule, QDate start, const char *dates = "") {
            QTest::newRow(name) << rule << start << QString::fromLatin1(dates);
        };
        const QDate may(2025, 5, 5);
        const QDate late(12000, 1, 1);
        row("a count includes the entry", {Daily, 2, {}, 0, {}, 3}, may, "2025-05-07 2025-05-09");
        row("the end date is exclusive", {Daily, 1, {}, 0, {2025, 5, 7}, 0}, may, "2025-05-06");
        row("the day of the horizon is out", {Yearly, 1, {}, 0, {}, 0}, {2025, 1, 22}, "2026-01-22");
        row("weekly on its own weekday", {Weekly, 1, {1, 3}, 0, {}, 3}, may, "2025-05-12 2025-05-14");
        row("weekly on others, however stored", {Weekly, 2, {5, 3, 1, 3}, 0, {}, 4}, {2025, 3, 4},
            "2025-03-05 2025-03-07 2025-03-17");
        row("a clipped day stays", {Monthly, 2, {31}, 0, {}, 3}, {2024, 12, 31}, "2025-02-28 2025-04-28");
        row("the fifth may be the fourth", {Monthly, 1, {2}, 5, {}, 3}, {2025, 1, 28},
            "2025-02-25 2025-03-25");
        row("29 February stays on the 28th once it fell there", {Yearly, 1, {}, 0, {2029, 1, 1}, 0},
            {2024, 2, 29}, "2025-02-28 2026-02-28 2027-02-28 2028-02-28");
        row("28 February after a leap year comes", {Yearly, 4, {}, 0, {2105, 1, 1}, 0}, {2092, 2, 29},
            "2096-02-29 2100-02-28 2104-02-28");

        // What only a broken file says.
        row("huge number of days", {Daily, Huge, {}, 0, Last, 0}, may);
        row("huge number of weeks", {Weekly, Huge, {1, 6}, 0, Last, 0}, may);
        row("huge number of months", {Monthly, Huge, {31}, 0, Last, 0}, may);
        row("huge number of years", {Yearly, Huge, {}, 0, Last, 0}, {2024, 2, 29});
        row("huge week of the month", {Monthly, 1, {3}, -Huge - 1, {}, 2}, may, "2025-06-25");
        row("interval 0", {Daily, 0, {}, 0, {}, 0}, may);
        row("weekly without a weekday", {Weekly, 1, {}, 0, {}, 0}, may);
        row("weekday 0", {Weekly, 1, {0, 3}, 0, {}, 0}, may);
        row("day 32 of the month", {Monthly, 1, {32}, 0, {}, 0}, may);
        row("no start", {Daily, 1, {}, 0, {}, 0}, {});
        row("daily up to the last date", {Daily, 1, {}, 0, late, 0}, {9999, 12, 30}, "9999-12-31");
        row("weekly up to the last date", {Weekly, 1, {5}, 0, late, 0}, {9999, 12, 24}, "9999-12-31");
    }

    void shouldFallOnTheseDates()
    {
        QFETCH(Rule, rule);
        QFETCH(QDate, start);
        const VelRecurrence recurrence(rule, start, 0, QDate(2025, 1, 2));
        QTEST(allDates(recurrence), "dates");
        QCOMPARE(recurrence.firstFrom(VelJulianDay(AfterAll)), recurrence.count() + 1);
        QCOMPARE(recurrence.firstFrom(VelJulianDay(0)), 1U);
    }

    void shouldStopAtTheGreatestNumber()
    {
        const VelRecurrence recurrence({Daily, 1, {}, 0, Last, 0}, QDate(1, 1, 1), 0, QDate());
        QCOMPARE(recurrence.count(), 999999U);
        QCOMPARE(recurrence.firstFrom(VelJulianDay(AfterAll)), 1000000U);
    }
};

QTEST_GUILESS_MAIN(VelRecurrenceTest)

#include "velrecurrencetest.moc"

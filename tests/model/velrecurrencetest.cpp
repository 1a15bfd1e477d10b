// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velrecurrence.h"
#include "model/recurrencerules.h"
#include "model/stepwiserecurrence.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <limits>

Q_DECLARE_METATYPE(RuleKind)

namespace
{
constexpr int Huge = std::numeric_limits<int>::max();

/** The dates of the occurrences, at most @p most, in one line. */
QString firstDates(const VelRecurrence &recurrence, quint32 most)
{
    QStringList dates;
    for (quint32 number = 1; number <= std::min(recurrence.count(), most); ++number)
        dates.append(QDate::fromJulianDay(recurrence.startDay(number)).toString(Qt::ISODate));
    return dates.join(QLatin1Char(' '));
}

quint32 firstFromByLookingThrough(const std::vector<qint64> &days, qint64 wanted)
{
    const auto found = std::find_if(days.begin(), days.end(), [wanted](qint64 day) { return day >= wanted; });
    return static_cast<quint32>(found - days.begin()) + 1;
}

QString text(const char *what, quint32 number, qint64 actual, qint64 expected)
{
    return QStringLiteral("%1 %2 is %3 instead of %4")
        .arg(QLatin1String(what))
        .arg(number)
        .arg(actual)
        .arg(expected);
}

/** What differs first, or nothing. */
QString differenceInDays(const VelRecurrence &actual, const StepwiseRecurrence &expected)
{
    const auto known = static_cast<quint32>(expected.days.size());
    if (expected.isComplete ? actual.count() != known : actual.count() <= known)
        return text("count up to", known, actual.count(), known);
    for (quint32 number = 1; number <= known; ++number) {
        if (actual.startDay(number) != expected.days[number - 1])
            return text("day of occurrence", number, actual.startDay(number), expected.days[number - 1]);
    }
    return {};
}

/** Days around occurrences, around the entry, and anywhere between. */
std::vector<qint64> daysToAskFor(const StepwiseRecurrence &expected, qint64 start, QRandomGenerator &random)
{
    std::vector<qint64> days{start - 400, start - 1, start, start + 1};
    if (expected.days.empty())
        return days;
    const qint64 last = expected.days.back();
    for (int i = 0; i < 8; ++i) {
        const auto position =
            static_cast<std::size_t>(random.bounded(static_cast<int>(expected.days.size())));
        for (int beside = -1; beside <= 1; ++beside)
            days.push_back(expected.days[position] + beside);
        days.push_back(start
                       + static_cast<qint64>(random.generateDouble() * static_cast<double>(last - start)));
    }
    days.push_back(last);
    if (expected.isComplete) {
        days.push_back(last + 1);
        days.push_back(last + 5000);
    } else {
        days.erase(std::remove_if(days.begin(), days.end(), [last](qint64 day) { return day > last; }),
                   days.end());
    }
    return days;
}

QString differenceInSearch(const VelRecurrence &actual, const StepwiseRecurrence &expected, qint64 start,
                           QRandomGenerator &random)
{
    for (const qint64 day : daysToAskFor(expected, start, random)) {
        const quint32 found = actual.firstFrom(VelDay(static_cast<qint32>(day)));
        const quint32 wanted = firstFromByLookingThrough(expected.days, day);
        if (found != wanted)
            return text("first from day", static_cast<quint32>(day), found, wanted);
    }
    return {};
}
} // namespace

class VelRecurrenceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldAgreeWithSteppingThroughTheRule_data();
    void shouldAgreeWithSteppingThroughTheRule();
    void shouldAgreeThroughTheWholeCalendar_data();
    void shouldAgreeThroughTheWholeCalendar();
    void shouldFallOnTheseDates_data();
    void shouldFallOnTheseDates();
    void shouldSurviveValuesFromABrokenFile_data();
    void shouldSurviveValuesFromABrokenFile();
    void shouldCountWeekdaysInAscendingOrderHoweverStored();
    void shouldStopAtTheGreatestNumber();
    void shouldBeEmptyUntilMadeFromARule();
    void shouldKeepTheSpanOfTheEntry_data();
    void shouldKeepTheSpanOfTheEntry();
};

void VelRecurrenceTest::shouldAgreeWithSteppingThroughTheRule_data()
{
    QTest::addColumn<RuleKind>("kind");
    QTest::addColumn<quint32>("seed");
    QTest::newRow("daily") << RuleKind::Daily << 20261U;
    QTest::newRow("weekly") << RuleKind::Weekly << 20262U;
    QTest::newRow("monthly by day") << RuleKind::MonthlyByDay << 20263U;
    QTest::newRow("monthly by weekday") << RuleKind::MonthlyByWeekday << 20264U;
    QTest::newRow("yearly") << RuleKind::Yearly << 20265U;
}

void VelRecurrenceTest::shouldAgreeWithSteppingThroughTheRule()
{
    QFETCH(RuleKind, kind);
    QFETCH(quint32, seed);
    constexpr std::size_t most = 500;
    QRandomGenerator random(seed);
    std::size_t compared = 0;
    for (int i = 0; i < 5000; ++i) {
        const RecurrenceCase one = randomCase(kind, random);
        const StepwiseRecurrence expected(one, most);
        const VelRecurrence actual(one.rule, one.start, 0, one.today);
        QString difference = differenceInDays(actual, expected);
        if (difference.isEmpty())
            difference = differenceInSearch(actual, expected, one.start.toJulianDay(), random);
        QVERIFY2(difference.isEmpty(), qPrintable(one.describe() + QLatin1String(": ") + difference));
        compared += expected.days.size();
    }
    QVERIFY2(compared > 50000, "the cases hardly repeat and prove little");
}

void VelRecurrenceTest::shouldAgreeThroughTheWholeCalendar_data()
{
    QTest::addColumn<VelRecurrenceRule>("rule");
    QTest::addColumn<QDate>("start");
    QTest::newRow("each 31st") << Rules::monthly(1, 31) << QDate(1, 1, 31);
    QTest::newRow("31st every 7 months") << Rules::monthly(7, 31) << QDate(1, 2, 15);
    QTest::newRow("29 February every 12 months") << Rules::monthly(12, 29) << QDate(4, 2, 29);
    QTest::newRow("29 February every 48 months") << Rules::monthly(48, 29) << QDate(4, 2, 29);
    QTest::newRow("30 February every 12 months") << Rules::monthly(12, 30) << QDate(4, 2, 29);
    QTest::newRow("31 June every 12 months") << Rules::monthly(12, 31) << QDate(1, 6, 30);
    QTest::newRow("31 June every 12 months from the 12th") << Rules::monthly(12, 31) << QDate(1, 6, 12);
    QTest::newRow("second Tuesday") << Rules::monthlyWeekday(1, 2, 2) << QDate(1, 1, 9);
    QTest::newRow("fifth Sunday") << Rules::monthlyWeekday(1, 5, 7) << QDate(1, 1, 9);
    QTest::newRow("last Monday every 5 months") << Rules::monthlyWeekday(5, -1, 1) << QDate(1, 1, 31);
    QTest::newRow("29 February yearly") << Rules::yearly(1) << QDate(4, 2, 29);
    QTest::newRow("29 February every 4 years") << Rules::yearly(4) << QDate(4, 2, 29);
    QTest::newRow("29 February every 400 years") << Rules::yearly(400) << QDate(400, 2, 29);
    QTest::newRow("three weekdays every 9 weeks") << Rules::weekly(9, {2, 4, 7}) << QDate(1, 1, 5);
    QTest::newRow("every 11 days") << Rules::daily(11) << QDate(1, 1, 1);
}

void VelRecurrenceTest::shouldAgreeThroughTheWholeCalendar()
{
    QFETCH(VelRecurrenceRule, rule);
    QFETCH(QDate, start);
    rule.occurenddate = QDate(9999, 12, 31);
    const StepwiseRecurrence expected({rule, start, start}, VelRecurrence::MaximumCount);
    QVERIFY(expected.days.size() >= 20);
    QCOMPARE(differenceInDays(VelRecurrence(rule, start, 0, start), expected), QString());
}

void VelRecurrenceTest::shouldFallOnTheseDates_data()
{
    QTest::addColumn<VelRecurrenceRule>("rule");
    QTest::addColumn<QDate>("start");
    QTest::addColumn<QString>("dates");
    QTest::addColumn<quint32>("count");
    // Where a rule has no end, 2 January 2025 as today ends it before 22 January 2027.
    QTest::newRow("the count includes the entry")
        << Rules::times(Rules::daily(2), 3) << QDate(2025, 3, 1) << "2025-03-03 2025-03-05" << 2U;
    QTest::newRow("a count of 1 is the entry alone")
        << Rules::times(Rules::daily(1), 1) << QDate(2025, 3, 1) << "" << 0U;
    QTest::newRow("the end date is exclusive")
        << Rules::until(Rules::daily(1), {2025, 3, 10}) << QDate(2025, 3, 8) << "2025-03-09" << 1U;
    QTest::newRow("ends on the day of the entry")
        << Rules::until(Rules::daily(1), {2025, 3, 8}) << QDate(2025, 3, 8) << "" << 0U;
    QTest::newRow("ends before the entry")
        << Rules::until(Rules::daily(1), {2024, 3, 8}) << QDate(2025, 3, 8) << "" << 0U;
    QTest::newRow("the end date stops a longer count")
        << Rules::times(Rules::until(Rules::daily(3), {2025, 3, 14}), 99) << QDate(2025, 3, 5)
        << "2025-03-08 2025-03-11" << 2U;
    QTest::newRow("an end date replaces the horizon")
        << Rules::until(Rules::yearly(1), {2035, 1, 1}) << QDate(2025, 5, 5)
        << "2026-05-05 2027-05-05 2028-05-05" << 9U;
    QTest::newRow("the horizon stops a count")
        << Rules::times(Rules::yearly(1), 50) << QDate(2025, 1, 21) << "2026-01-21 2027-01-21" << 2U;
    QTest::newRow("the day of the horizon is out")
        << Rules::yearly(1) << QDate(2025, 1, 22) << "2026-01-22" << 1U;
    QTest::newRow("an entry beyond the horizon") << Rules::daily(1) << QDate(2027, 1, 22) << "" << 0U;

    QTest::newRow("weekly leaves out the later days of its own week")
        << Rules::until(Rules::weekly(1, {1, 3}), {2025, 3, 20}) << QDate(2025, 3, 3)
        << "2025-03-10 2025-03-12 2025-03-17" << 4U;
    QTest::newRow("weekly from another weekday takes the rest of its week")
        << Rules::times(Rules::weekly(2, {1, 3, 5}), 5) << QDate(2025, 3, 4)
        << "2025-03-05 2025-03-07 2025-03-17" << 4U;
    QTest::newRow("weekly from a weekday after all of the rule's")
        << Rules::times(Rules::weekly(3, {1, 2}), 4) << QDate(2025, 3, 7)
        << "2025-03-24 2025-03-25 2025-04-14" << 3U;

    QTest::newRow("the 31st is clipped") << Rules::times(Rules::monthly(1, 31), 7) << QDate(2025, 1, 31)
                                         << "2025-02-28 2025-03-31 2025-04-30" << 6U;
    QTest::newRow("the 31st is clipped in a leap year")
        << Rules::times(Rules::monthly(1, 31), 3) << QDate(2024, 1, 31) << "2024-02-29 2024-03-31" << 2U;
    QTest::newRow("a clipped day stays where the rule's does not exist")
        << Rules::times(Rules::monthly(2, 31), 4) << QDate(2024, 12, 31) << "2025-02-28 2025-04-28 2025-06-28"
        << 3U;
    QTest::newRow("a clipped day recovers where the rule's exists")
        << Rules::times(Rules::monthly(4, 31), 4) << QDate(2025, 6, 30) << "2025-10-31 2026-02-28 2026-06-28"
        << 3U;
    QTest::newRow("a month without the rule's day keeps the entry's")
        << Rules::times(Rules::monthly(1, 31), 3) << QDate(2025, 1, 15) << "2025-02-15 2025-03-31" << 2U;
    QTest::newRow("an earlier day of the month than the entry's")
        << Rules::times(Rules::monthly(1, 5), 3) << QDate(2025, 1, 15) << "2025-02-05 2025-03-05" << 2U;

    QTest::newRow("second Tuesday") << Rules::times(Rules::monthlyWeekday(1, 2, 2), 4) << QDate(2025, 1, 14)
                                    << "2025-02-11 2025-03-11 2025-04-08" << 3U;
    QTest::newRow("first Monday of a month that begins with it")
        << Rules::times(Rules::monthlyWeekday(1, 1, 1), 2) << QDate(2025, 8, 4) << "2025-09-01" << 1U;
    QTest::newRow("the fifth is the last where there are four")
        << Rules::times(Rules::monthlyWeekday(1, 5, 2), 4) << QDate(2025, 1, 28)
        << "2025-02-25 2025-03-25 2025-04-29" << 3U;
    QTest::newRow("the last, be it the fifth or the fourth")
        << Rules::times(Rules::monthlyWeekday(1, -1, 5), 4) << QDate(2025, 1, 31)
        << "2025-02-28 2025-03-28 2025-04-25" << 3U;

    QTest::newRow("29 February stays on the 28th once it fell there")
        << Rules::until(Rules::yearly(1), {2030, 1, 1}) << QDate(2024, 2, 29)
        << "2025-02-28 2026-02-28 2027-02-28" << 5U;
    QTest::newRow("28 February after a leap year comes")
        << Rules::until(Rules::yearly(4), {2105, 1, 1}) << QDate(2092, 2, 29)
        << "2096-02-29 2100-02-28 2104-02-28" << 3U;
    QTest::newRow("no rule") << VelRecurrenceRule() << QDate(2025, 1, 1) << "" << 0U;
}

void VelRecurrenceTest::shouldFallOnTheseDates()
{
    QFETCH(VelRecurrenceRule, rule);
    QFETCH(QDate, start);
    QFETCH(QString, dates);
    QFETCH(quint32, count);
    const VelRecurrence recurrence(rule, start, 0, QDate(2025, 1, 2));
    QCOMPARE(firstDates(recurrence, 3), dates);
    QCOMPARE(recurrence.count(), count);
    QCOMPARE(recurrence.isEmpty(), count == 0);
}

void VelRecurrenceTest::shouldSurviveValuesFromABrokenFile_data()
{
    QTest::addColumn<VelRecurrenceRule>("rule");
    QTest::addColumn<QDate>("start");
    QTest::addColumn<QDate>("today");
    QTest::addColumn<QString>("dates");
    const QDate start(2025, 1, 1);
    const QDate end(9999, 12, 31);
    QTest::newRow("huge number of days") << Rules::until(Rules::daily(Huge), end) << start << start << "";
    QTest::newRow("huge number of weeks, and days left in this one")
        << Rules::until(Rules::weekly(Huge, {5, 6}), end) << start << start << "2025-01-03 2025-01-04";
    QTest::newRow("huge number of weeks")
        << Rules::until(Rules::weekly(Huge, {3, 6}), end) << start << start << "";
    QTest::newRow("huge number of months")
        << Rules::until(Rules::monthly(Huge, 31), end) << start << start << "";
    QTest::newRow("huge number of months by weekday")
        << Rules::until(Rules::monthlyWeekday(Huge, 2, 3), end) << start << start << "";
    QTest::newRow("huge number of years") << Rules::until(Rules::yearly(Huge), end) << start << start << "";
    QTest::newRow("huge number of years from 29 February")
        << Rules::until(Rules::yearly(Huge), end) << QDate(2024, 2, 29) << start << "";
    QTest::newRow("huge week of the month")
        << Rules::times(Rules::monthlyWeekday(1, Huge, 3), 2) << start << start << "2025-02-26";
    QTest::newRow("huge negative week of the month")
        << Rules::times(Rules::monthlyWeekday(1, -Huge - 1, 3), 2) << start << start << "2025-02-26";
    QTest::newRow("huge count") << Rules::times(Rules::yearly(1), Huge) << start << start
                                << "2026-01-01 2027-01-01";
    QTest::newRow("negative count is none")
        << Rules::times(Rules::yearly(1), -5) << start << start << "2026-01-01 2027-01-01";
    QTest::newRow("interval 0") << Rules::daily(0) << start << start << "";
    QTest::newRow("negative interval") << Rules::weekly(-1, {1}) << start << start << "";
    QTest::newRow("weekly without a weekday") << Rules::weekly(1, {}) << start << start << "";
    QTest::newRow("weekday 0") << Rules::weekly(1, {0, 3}) << start << start << "";
    QTest::newRow("weekday 8") << Rules::weekly(1, {3, 8}) << start << start << "";
    QTest::newRow("monthly without a day")
        << Rules::make(VelRecurrenceRule::Monthly, 1) << start << start << "";
    QTest::newRow("day 0 of the month") << Rules::monthly(1, 0) << start << start << "";
    QTest::newRow("day 32 of the month") << Rules::monthly(1, 32) << start << start << "";
    QTest::newRow("weekday 8 of the month") << Rules::monthlyWeekday(1, 1, 8) << start << start << "";
    QTest::newRow("unknown type") << Rules::make(5, 1) << start << start << "";
    QTest::newRow("negative type") << Rules::make(-1, 1) << start << start << "";
    QTest::newRow("no start") << Rules::daily(1) << QDate() << start << "";
    QTest::newRow("start before year 1")
        << Rules::until(Rules::daily(1), start) << QDate(-1, 12, 30) << start << "";
    QTest::newRow("start after year 9999")
        << Rules::daily(1) << QDate(10000, 1, 1) << QDate(10000, 1, 1) << "";
    QTest::newRow("end date before year 1")
        << Rules::until(Rules::daily(1), {-4, 1, 1}) << start << start << "";
    QTest::newRow("daily up to the last date")
        << Rules::daily(1) << QDate(9999, 12, 29) << QDate(9999, 12, 29) << "9999-12-30 9999-12-31";
    QTest::newRow("weekly up to the last date") << Rules::until(Rules::weekly(1, {5}), {12000, 1, 1})
                                                << QDate(9999, 12, 17) << start << "9999-12-24 9999-12-31";
    QTest::newRow("monthly up to the last date") << Rules::until(Rules::monthly(1, 31), {12000, 1, 1})
                                                 << QDate(9999, 10, 31) << start << "9999-11-30 9999-12-31";
    QTest::newRow("last weekday up to the last date")
        << Rules::until(Rules::monthlyWeekday(1, -1, 5), {12000, 1, 1}) << QDate(9999, 11, 26) << start
        << "9999-12-31";
    QTest::newRow("yearly up to the last date") << Rules::until(Rules::yearly(1), {12000, 1, 1})
                                                << QDate(9997, 12, 31) << start << "9998-12-31 9999-12-31";
}

void VelRecurrenceTest::shouldSurviveValuesFromABrokenFile()
{
    QFETCH(VelRecurrenceRule, rule);
    QFETCH(QDate, start);
    QFETCH(QDate, today);
    QFETCH(QString, dates);
    const VelRecurrence recurrence(rule, start, 0, today);
    QCOMPARE(firstDates(recurrence, 100), dates);
    QCOMPARE(recurrence.firstFrom(VelDay(static_cast<qint32>(QDate(9999, 12, 31).toJulianDay() + 1))),
             recurrence.count() + 1);
    QCOMPARE(recurrence.firstFrom(VelDay(static_cast<qint32>(QDate(-4000, 1, 1).toJulianDay()))), 1U);
}

void VelRecurrenceTest::shouldCountWeekdaysInAscendingOrderHoweverStored()
{
    const QDate start(2025, 3, 4);
    const VelRecurrence tidy(Rules::weekly(2, {1, 4, 7}), start, 0, start);
    const VelRecurrence untidy(Rules::weekly(2, {7, 4, 1, 4, 7}), start, 0, start);
    QVERIFY(tidy.count() > 100);
    QCOMPARE(firstDates(untidy, 200), firstDates(tidy, 200));
}

void VelRecurrenceTest::shouldStopAtTheGreatestNumber()
{
    const QDate start(1, 1, 1);
    const VelRecurrence recurrence(Rules::until(Rules::daily(1), {9999, 12, 31}), start, 0, start);
    QCOMPARE(recurrence.count(), 999999U);
    QCOMPARE(QDate::fromJulianDay(recurrence.startDay(999999)), start.addDays(999999));
    QCOMPARE(recurrence.firstFrom(VelDay(recurrence.startDay(999999) + 1)), 1000000U);
}

void VelRecurrenceTest::shouldBeEmptyUntilMadeFromARule()
{
    const VelRecurrence none;
    QVERIFY(none.isEmpty());
    QCOMPARE(none.count(), 0U);
    QCOMPARE(none.firstFrom(VelDay(2460000)), 1U);
}

void VelRecurrenceTest::shouldKeepTheSpanOfTheEntry_data()
{
    QTest::addColumn<int>("span");
    QTest::newRow("overnight") << 1;
    QTest::newRow("ends before it starts") << -3;
    QTest::newRow("huge") << Huge;
}

void VelRecurrenceTest::shouldKeepTheSpanOfTheEntry()
{
    QFETCH(int, span);
    const QDate start(2025, 3, 4);
    const VelRecurrence recurrence(Rules::times(Rules::daily(1), 3), start, span, start);
    QCOMPARE(recurrence.spanDays(), span);
    QCOMPARE(recurrence.entryDay(), static_cast<qint32>(start.toJulianDay()));
    QCOMPARE(firstDates(recurrence, 9), QStringLiteral("2025-03-05 2025-03-06"));
}

QTEST_GUILESS_MAIN(VelRecurrenceTest)

#include "velrecurrencetest.moc"

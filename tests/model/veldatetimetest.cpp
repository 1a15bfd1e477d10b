// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/veldatetime.h"

#include <QTest>
#include <QTimeZone>

#include <ctime>
#include <limits>
#include <vector>

Q_DECLARE_METATYPE(VelDateTime)

namespace
{
const QTime NoTime;
const QDate NoDate;

VelDateTime at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return {QDate(year, month, day), QTime(hour, minute, second)};
}

const qint64 Day = 24 * 60 * 60;
} // namespace

class VelDateTimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void shouldKeepThePartsAsGiven_data();
    void shouldKeepThePartsAsGiven();
    void shouldKeepTimesThatDaylightSavingSkips_data();
    void shouldKeepTimesThatDaylightSavingSkips();
    void shouldShowWhatTheOtherClockShows();
    void shouldAddSeconds_data();
    void shouldAddSeconds();
    void shouldAddDays_data();
    void shouldAddDays();
    void shouldReplaceTheTimeOnly();
    void shouldCountSeconds_data();
    void shouldCountSeconds();
    void shouldSortByDateThenTimeWithMissingPartsFirst();
};

void VelDateTimeTest::initTestCase()
{
    qputenv("TZ", "Europe/Helsinki");
    tzset();
}

void VelDateTimeTest::shouldKeepThePartsAsGiven_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QDate>("keptDate");
    QTest::addColumn<QTime>("keptTime");
    QTest::addColumn<bool>("valid");
    const QDate date(2026, 3, 1);
    const QTime time(9, 30);
    QTest::newRow("both") << date << time << date << time << true;
    QTest::newRow("to the millisecond")
        << date << QTime(23, 59, 59, 999) << date << QTime(23, 59, 59, 999) << true;
    QTest::newRow("midnight is a time") << date << QTime(0, 0) << date << QTime(0, 0) << true;
    QTest::newRow("no time") << date << NoTime << date << NoTime << false;
    QTest::newRow("no date") << NoDate << time << NoDate << time << false;
    QTest::newRow("nothing") << NoDate << NoTime << NoDate << NoTime << false;
    QTest::newRow("a date that is none") << QDate(2026, 2, 29) << time << NoDate << time << false;
    QTest::newRow("a time that is none") << date << QTime(24, 0) << date << NoTime << false;
    QTest::newRow("first date") << QDate(1, 1, 1) << time << QDate(1, 1, 1) << time << true;
    QTest::newRow("last date") << QDate(9999, 12, 31) << time << QDate(9999, 12, 31) << time << true;
    QTest::newRow("before the first date") << QDate(-1, 12, 31) << time << NoDate << time << false;
    QTest::newRow("after the last date") << QDate(10000, 1, 1) << time << NoDate << time << false;
    QTest::newRow("far from a 32-bit day number")
        << QDate(1, 1, 1).addDays(Q_INT64_C(100000000000)) << time << NoDate << time << false;
}

void VelDateTimeTest::shouldKeepThePartsAsGiven()
{
    QFETCH(QDate, date);
    QFETCH(QTime, time);
    const VelDateTime dateTime(date, time);
    QTEST(dateTime.date(), "keptDate");
    QTEST(dateTime.time(), "keptTime");
    QTEST(dateTime.isValid(), "valid");
}

void VelDateTimeTest::shouldKeepTimesThatDaylightSavingSkips_data()
{
    QTest::addColumn<VelDateTime>("dateTime");
    QTest::newRow("skipped in spring") << at(2026, 3, 29, 3, 30);
    QTest::newRow("the moment of the change") << at(2026, 3, 29, 3, 0);
    QTest::newRow("shown twice in autumn") << at(2026, 10, 25, 3, 30);
}

void VelDateTimeTest::shouldKeepTimesThatDaylightSavingSkips()
{
    QFETCH(VelDateTime, dateTime);
    QVERIFY(dateTime.isValid());
    const QDateTime carried = dateTime.toQDateTime();
    QVERIFY(carried.isValid());
    QCOMPARE(carried.date(), dateTime.date());
    QCOMPARE(carried.time(), dateTime.time());
    QVERIFY(VelDateTime::fromQDateTime(carried) == dateTime);
    QVERIFY(dateTime.addSecs(-3600).addSecs(3600) == dateTime);
    QCOMPARE(dateTime.addSecs(-3600).secsTo(dateTime.addSecs(3600)), Q_INT64_C(7200));
}

void VelDateTimeTest::shouldShowWhatTheOtherClockShows()
{
    const QDate date(2026, 7, 1);
    const VelDateTime expected(date, QTime(9, 0));
    QVERIFY(VelDateTime::fromQDateTime(QDateTime(date, QTime(9, 0))) == expected);
    QVERIFY(VelDateTime::fromQDateTime(QDateTime(date, QTime(9, 0), QTimeZone::utc())) == expected);
    QVERIFY(VelDateTime::fromQDateTime(QDateTime(date, QTime(9, 0), QTimeZone(-5 * 3600))) == expected);
    QVERIFY(VelDateTime::fromQDateTime(QDateTime()) == VelDateTime());
}

void VelDateTimeTest::shouldAddSeconds_data()
{
    QTest::addColumn<VelDateTime>("from");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<VelDateTime>("to");
    const qint64 most = std::numeric_limits<qint64>::max();
    QTest::newRow("nothing") << at(2026, 3, 1, 9) << Q_INT64_C(0) << at(2026, 3, 1, 9);
    QTest::newRow("within the day") << at(2026, 3, 1, 9) << Q_INT64_C(5400) << at(2026, 3, 1, 10, 30);
    QTest::newRow("to midnight") << at(2026, 3, 1, 23, 59, 59) << Q_INT64_C(1) << at(2026, 3, 2);
    QTest::newRow("back over midnight") << at(2026, 3, 1) << Q_INT64_C(-1) << at(2026, 2, 28, 23, 59, 59);
    QTest::newRow("back whole days") << at(2026, 3, 1) << -2 * Day << at(2026, 2, 27);
    QTest::newRow("over a leap day") << at(2028, 2, 28, 12) << 2 * Day << at(2028, 3, 1, 12);
    QTest::newRow("over the spring change") << at(2026, 3, 28, 12) << Day << at(2026, 3, 29, 12);
    QTest::newRow("over the autumn change") << at(2026, 10, 24, 12) << Day << at(2026, 10, 25, 12);
    QTest::newRow("up to the last second") << at(9999, 12, 31) << Day - 1 << at(9999, 12, 31, 23, 59, 59);
    QTest::newRow("beyond the last second") << at(9999, 12, 31) << Day << VelDateTime();
    QTest::newRow("before the first second") << at(1, 1, 1) << Q_INT64_C(-1) << VelDateTime();
    QTest::newRow("from the first date to the last") << at(1, 1, 1) << 3652058 * Day << at(9999, 12, 31);
    QTest::newRow("more than any calendar") << at(2026, 3, 1) << most << VelDateTime();
    QTest::newRow("less than any calendar") << at(2026, 3, 1) << -most - 1 << VelDateTime();
    QTest::newRow("to a missing time")
        << VelDateTime(QDate(2026, 3, 1), NoTime) << Q_INT64_C(60) << VelDateTime();
    QTest::newRow("to a missing date") << VelDateTime(NoDate, QTime(9, 0)) << Q_INT64_C(60) << VelDateTime();
}

void VelDateTimeTest::shouldAddSeconds()
{
    QFETCH(VelDateTime, from);
    QFETCH(qint64, seconds);
    QFETCH(VelDateTime, to);
    QCOMPARE(from.addSecs(seconds).toQDateTime(), to.toQDateTime());
    QVERIFY(from.addSecs(seconds) == to);
}

void VelDateTimeTest::shouldAddDays_data()
{
    QTest::addColumn<VelDateTime>("from");
    QTest::addColumn<qint64>("days");
    QTest::addColumn<VelDateTime>("to");
    QTest::newRow("one") << at(2026, 2, 28, 9) << Q_INT64_C(1) << at(2026, 3, 1, 9);
    QTest::newRow("back") << at(2026, 1, 1, 9) << Q_INT64_C(-1) << at(2025, 12, 31, 9);
    QTest::newRow("a date alone") << VelDateTime(QDate(2026, 2, 28), NoTime) << Q_INT64_C(1)
                                  << VelDateTime(QDate(2026, 3, 1), NoTime);
    QTest::newRow("a time alone") << VelDateTime(NoDate, QTime(9, 0)) << Q_INT64_C(1)
                                  << VelDateTime(NoDate, QTime(9, 0));
    QTest::newRow("beyond the calendar keeps the time")
        << at(9999, 12, 31, 9) << Q_INT64_C(1) << VelDateTime(NoDate, QTime(9, 0));
}

void VelDateTimeTest::shouldAddDays()
{
    QFETCH(VelDateTime, from);
    QFETCH(qint64, days);
    QFETCH(VelDateTime, to);
    QCOMPARE(from.addDays(days).date(), to.date());
    QCOMPARE(from.addDays(days).time(), to.time());
}

void VelDateTimeTest::shouldReplaceTheTimeOnly()
{
    QVERIFY(at(2026, 3, 1, 9).withTime(QTime(11, 5)) == at(2026, 3, 1, 11, 5));
    QVERIFY(at(2026, 3, 1, 9).withTime(NoTime) == VelDateTime(QDate(2026, 3, 1), NoTime));
}

void VelDateTimeTest::shouldCountSeconds_data()
{
    QTest::addColumn<VelDateTime>("from");
    QTest::addColumn<VelDateTime>("to");
    QTest::addColumn<qint64>("seconds");
    const VelDateTime almostOneSecond(QDate(2026, 3, 1), QTime(0, 0, 0, 999));
    QTest::newRow("none") << at(2026, 3, 1, 9) << at(2026, 3, 1, 9) << Q_INT64_C(0);
    QTest::newRow("an hour and a half") << at(2026, 3, 1, 9) << at(2026, 3, 1, 10, 30) << Q_INT64_C(5400);
    QTest::newRow("backwards") << at(2026, 3, 1, 10, 30) << at(2026, 3, 1, 9) << Q_INT64_C(-5400);
    QTest::newRow("over midnight") << at(2026, 2, 28, 23) << at(2026, 3, 1, 1) << Q_INT64_C(7200);
    QTest::newRow("a spring day has 24 hours") << at(2026, 3, 29) << at(2026, 3, 30) << Day;
    QTest::newRow("an autumn day has 24 hours") << at(2026, 10, 25) << at(2026, 10, 26) << Day;
    QTest::newRow("truncated") << at(2026, 3, 1) << almostOneSecond << Q_INT64_C(0);
    QTest::newRow("truncated backwards") << almostOneSecond << at(2026, 3, 1) << Q_INT64_C(0);
    QTest::newRow("the whole calendar") << at(1, 1, 1) << at(9999, 12, 31) << 3652058 * Day;
    QTest::newRow("from nothing") << VelDateTime() << at(2026, 3, 1) << Q_INT64_C(0);
    QTest::newRow("to a missing time")
        << at(2026, 3, 1) << VelDateTime(QDate(2026, 3, 2), NoTime) << Q_INT64_C(0);
}

void VelDateTimeTest::shouldCountSeconds()
{
    QFETCH(VelDateTime, from);
    QFETCH(VelDateTime, to);
    QTEST(from.secsTo(to), "seconds");
}

void VelDateTimeTest::shouldSortByDateThenTimeWithMissingPartsFirst()
{
    const QDate date(2026, 3, 1);
    const std::vector<VelDateTime> ascending{VelDateTime(),
                                             VelDateTime(NoDate, QTime(9, 0)),
                                             at(1, 1, 1),
                                             VelDateTime(date, NoTime),
                                             at(2026, 3, 1),
                                             at(2026, 3, 1, 9),
                                             VelDateTime(date, QTime(9, 0, 0, 1)),
                                             at(2026, 3, 2),
                                             at(9999, 12, 31)};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            QCOMPARE(ascending[i] < ascending[j], i < j);
            QCOMPARE(ascending[i] == ascending[j], i == j);
            QCOMPARE(ascending[i] >= ascending[j], i >= j);
        }
    }
}

QTEST_GUILESS_MAIN(VelDateTimeTest)

#include "veldatetimetest.moc"

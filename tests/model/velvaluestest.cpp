// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velaccount.h"
#include "model/velrecurrencerule.h"
#include "model/velsettings.h"
#include "model/veltext.h"
#include "model/wsecurity.h"

#include <QLocale>
#include <QTest>

#include <limits>
#include <tuple>
#include <vector>

using enum VelRecurrenceRule::Type;

namespace
{
const QDate March1(2026, 3, 1);
constexpr qint64 Day = 24 * 60 * 60;

VelDateTime at(int year, int month, int day, int hour = 0, int minute = 0)
{
    return {QDate(year, month, day), QTime(hour, minute)};
}

// 1 January, 4 January, first Sunday, first Monday, 28, 29, 30 and 31 December.
QString weeksAtTheEnds(int year, bool isMondayFirst)
{
    const QDate first(year, 1, 1);
    const int weekday = first.dayOfWeek();
    const int last = first.daysInYear() - 1;
    QStringList weeks;
    for (const int day : {0, 3, 7 - weekday, (8 - weekday) % 7, last - 3, last - 2, last - 1, last})
        weeks.append(QString::number(VelSettings::weekOfYear(first.addDays(day), isMondayFirst)));
    return weeks.join(QLatin1Char(' '));
}
} // namespace

class VelValuesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom)); }

    // Years with the same number of days and the same weekday at their start have the same numbers.
    void shouldNumberTheWeeksAtBothEndsOfTheYear_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<QString>("weeks"); // that begin on Monday, and on Sunday
        const auto row = [](const char *begin, int year, const char *weeks) {
            QTest::newRow(begin) << year << QString::fromLatin1(weeks);
        };
        row("Monday", 2018, "1 1 1 1 52 52 52 1, 1 1 2 1 52 52 1 1");
        row("Tuesday", 2019, "1 1 1 2 52 52 1 1, 1 1 2 2 52 1 1 1");
        row("Wednesday", 2025, "1 1 1 2 52 1 1 1, 1 1 2 2 1 1 1 1");
        row("Thursday", 2026, "1 1 1 2 53 53 53 53, 1 2 2 2 53 53 53 53");
        row("Friday", 2021, "1 1 0 1 52 52 52 52, 1 1 1 1 52 52 52 52");
        row("Saturday", 2022, "1 1 0 1 52 52 52 52, 1 1 1 1 52 52 52 52");
        row("Sunday", 2023, "0 1 0 1 52 52 52 52, 1 1 1 1 52 52 52 53");
        row("leap, Monday", 2024, "1 1 1 1 52 52 1 1, 1 1 2 1 52 1 1 1");
        row("leap, Tuesday", 2008, "1 1 1 2 52 1 1 1, 1 1 2 2 1 1 1 1");
        row("leap, Wednesday", 2020, "1 1 1 2 53 53 53 53, 1 1 2 2 53 53 53 53");
        row("leap, Saturday", 2028, "1 1 0 1 52 52 52 52, 1 1 1 1 52 52 52 53");
        row("leap, Sunday", 2012, "0 1 0 1 52 52 52 1, 1 1 1 1 52 52 1 1");
    }

    void shouldNumberTheWeeksAtBothEndsOfTheYear()
    {
        QFETCH(int, year);
        QTEST(QString(weeksAtTheEnds(year, true) + QLatin1String(", ") + weeksAtTheEnds(year, false)),
              "weeks");
    }

    void shouldFollowTheLocale()
    {
        QCOMPARE(VelSettings::weekOfYear({2018, 1, 7}), 1);
        QCOMPARE(VelText::getDateTime(at(2026, 3, 29, 3, 30)), QStringLiteral("29/03/2026 03:30"));
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QCOMPARE(VelSettings::weekOfYear({2018, 1, 7}), 2);
        QCOMPARE(VelText::getDay({2026, 3, 5}), QStringLiteral("3/5/2026"));
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(VelText::getDay({2026, 3, 5}), QStringLiteral("05.03.2026"));
    }

    void shouldWorkWholeHoursOnWorkingDaysOfWhichThereIsAlwaysOne()
    {
        VelSettings settings;
        settings.workdayBegin = QTime(8, 30);
        settings.workdayEnd = QTime(16, 30);
        settings.setWorkdays({7, 0, 3, 7, 8});
        QCOMPARE(settings.getWorkdays(), (QVector<int>{3, 7}));
        for (int hour = 0; hour < 24; ++hour)
            QCOMPARE(settings.isWorkingHour(March1, QTime(hour, 0)), hour >= 8 && hour < 16);
        QVERIFY(!settings.isWorkingHour(March1.addDays(1), QTime(10, 0)));
        settings.setWorkdays({0, 9});
        QCOMPARE(settings.getWorkdays(), (QVector<int>{1, 2, 3, 4, 5}));
    }

    void shouldWordLeadTimesInTheLargestUnitThatFits()
    {
        const std::pair<quint32, const char *> words[] = {
            {0, ""}, {60, "1 hours"}, {90, "90 minutes"}, {1500, "25 hours"}, {1440, "1 days"}};
        for (const auto &[minutes, text] : words)
            QCOMPARE(VelReminder::toString(minutes), QLatin1String(text));
    }

    void shouldDescribeTheRule()
    {
        const std::pair<VelRecurrenceRule, const char *> rules[] = {
            {{Monthly, 1, {}, 0, {}, 3}, ""},
            {{Weekly, 2, {1, 3}, 0, {}, 0}, "every 2 week(s) on following day(s) Monday,Wednesday."},
            {{Monthly, 3, {31}, 0, {}, 0}, "every 3 month(s) on 31 day of the month."},
            {{Monthly, 1, {2}, 4, {}, 0}, "every 1 month(s) on fourth Tuesday."},
            {{Monthly, 1, {5}, -1, {}, 0}, "every 1 month(s) on last Friday."},
            {{Yearly, 4, {}, 0, {}, 0}, "every 4 year(s) on 29 February."},
            {{Daily, 2, {}, 0, March1, 0}, "every 2 day(s). Recurrence will end on 01/03/2026."},
            {{Daily, 2, {}, 0, March1, 3}, "every 2 day(s). Recurrence will end after 3 occurences."}};
        for (const auto &[rule, text] : rules) {
            QString said = rule.getRecurrenceText(QDate(2024, 2, 29));
            QCOMPARE(said.remove(QLatin1String("Event will reoccur ")), QLatin1String(text));
        }
    }

    void shouldAddSecondsOnTheWallClock()
    {
        const std::tuple<VelDateTime, qint64, VelDateTime> sums[] = {
            {at(2026, 3, 29, 2, 30), 3600, at(2026, 3, 29, 3, 30)}, // skipped by daylight saving
            {at(2026, 10, 24, 12), Day, at(2026, 10, 25, 12)},
            {at(2026, 3, 1), -1, {QDate(2026, 2, 28), QTime(23, 59, 59)}},
            {at(1, 1, 1), 3652058 * Day, at(9999, 12, 31)},
            {at(9999, 12, 31), Day, {}},
            {at(2026, 3, 1), std::numeric_limits<qint64>::max(), {}},
            {{March1, QTime()}, 60, {}}};
        for (const auto &[from, seconds, to] : sums) {
            QVERIFY2(from.addSecs(seconds) == to, qPrintable(VelText::getDateTime(from)));
            QCOMPARE(from.secsTo(to), to.isValid() ? seconds : 0);
            QVERIFY(VelDateTime::fromQDateTime(to.toQDateTime()) == to);
        }
    }

    void shouldTakeUnsupportedPartsForMissingOnesAndSortThoseFirst()
    {
        const QTime nine(9, 0);
        const std::vector<VelDateTime> ascending{
            {}, {QDate(-1, 12, 31), nine}, at(1, 1, 1), {March1, QTime(24, 0)}, {March1, nine}};
        for (std::size_t i = 1; i < ascending.size(); ++i)
            QVERIFY(ascending[i - 1] < ascending[i]);
        QVERIFY(VelDateTime(QDate(10000, 1, 1), nine) == ascending[1]);
    }

    void shouldCompareAndSortAccountsByNameCaseSensitively()
    {
        const VelAccount al(QStringLiteral("al"), QString(), 1);
        const VelAccount bo(QStringLiteral("Bo"), QString(), 9);
        QCOMPARE(VelAccountList::compareItems(bo, al), -1);
        VelAccountList accounts{al, bo};
        accounts.sort();
        QCOMPARE(accounts.first(), bo);
    }

    void shouldDigestAsRfc1321AndInLatin1()
    {
        const std::pair<const char *, const char *> digests[] = {
            {"", "d41d8cd98f00b204e9800998ecf8427e"},
            {"a", "0cc175b9c0f1b6a831c399e269772661"},
            {"abc", "900150983cd24fb0d6963f7d28e17f72"},
            {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
            {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
            {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
             "d174ab98d277d9f5a5611c2c9f419d9f"},
            {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
             "57edf4a22be3c955ac49da2e2107b67a"},
            {"p\u00e4ssword", "0126cf1f6e0dba240af4c5537ca51d0e"}};
        for (const auto &[password, digest] : digests)
            QCOMPARE(WSecurity::md5(QString::fromUtf8(password)), QLatin1String(digest));
    }
};

QTEST_GUILESS_MAIN(VelValuesTest)

#include "velvaluestest.moc"

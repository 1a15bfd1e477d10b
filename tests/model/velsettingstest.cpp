// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velsettings.h"

#include <QLocale>
#include <QTest>
#include <QTimeZone>

namespace
{
/** Each week number of a year that this calendar counts in a way of its own. */
QString oddWeeks(int year, bool isMondayFirst)
{
    const QDate first(year, 1, 1);
    const QDate dates[] = {first,
                           first.addDays(3),
                           first.addDays(7 - first.dayOfWeek()),
                           first.addDays((8 - first.dayOfWeek()) % 7),
                           QDate(year, 12, 28),
                           QDate(year, 12, 29),
                           QDate(year, 12, 30),
                           QDate(year, 12, 31)};
    QStringList weeks;
    for (const QDate &date : dates)
        weeks.append(QString::number(VelSettings::weekOfYear(date, isMondayFirst)));
    return weeks.join(QLatin1Char(' '));
}
} // namespace

class VelSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void shouldNumberTheWeeksAtBothEndsOfTheYear_data();
    void shouldNumberTheWeeksAtBothEndsOfTheYear();
    void shouldChangeTheNumberOnTheFirstDayOfTheWeekOnly_data();
    void shouldChangeTheNumberOnTheFirstDayOfTheWeekOnly();
    void shouldTakeTheFirstDayOfTheWeekFromTheLocale();
    void shouldCallSundaysRed();
    void shouldKnowWorkingHours_data();
    void shouldKnowWorkingHours();
    void shouldTakeWorkingDays_data();
    void shouldTakeWorkingDays();
    void shouldStartWithTheDefaultsOfANewClient();
};

void VelSettingsTest::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

/**
 * Two years with the same number of days and the same weekday at their start have the same numbers, so one
 * line says it for all of them. Columns: 1 January, 4 January, first Sunday, first Monday, 28, 29, 30 and 31
 * December.
 */
void VelSettingsTest::shouldNumberTheWeeksAtBothEndsOfTheYear_data()
{
    QTest::addColumn<QVector<int>>("years");
    QTest::addColumn<QString>("mondayFirst");
    QTest::addColumn<QString>("sundayFirst");
    using Years = QVector<int>;
    QTest::newRow("Monday") << Years{1990, 2001, 2007, 2018, 2029} << "1 1 1 1 52 52 52 1"
                            << "1 1 2 1 52 52 1 1";
    QTest::newRow("Tuesday") << Years{1991, 2002, 2013, 2019, 2030} << "1 1 1 2 52 52 1 1"
                             << "1 1 2 2 52 1 1 1";
    QTest::newRow("Wednesday") << Years{1997, 2003, 2014, 2025} << "1 1 1 2 52 1 1 1"
                               << "1 1 2 2 1 1 1 1";
    QTest::newRow("Thursday") << Years{1998, 2009, 2015, 2026} << "1 1 1 2 53 53 53 53"
                              << "1 2 2 2 53 53 53 53";
    QTest::newRow("Friday") << Years{1993, 1999, 2010, 2021, 2027} << "1 1 0 1 52 52 52 52"
                            << "1 1 1 1 52 52 52 52";
    QTest::newRow("Saturday") << Years{1994, 2005, 2011, 2022} << "1 1 0 1 52 52 52 52"
                              << "1 1 1 1 52 52 52 52";
    QTest::newRow("Sunday") << Years{1995, 2006, 2017, 2023} << "0 1 0 1 52 52 52 52"
                            << "1 1 1 1 52 52 52 53";
    QTest::newRow("leap, Monday") << Years{1996, 2024} << "1 1 1 1 52 52 1 1"
                                  << "1 1 2 1 52 1 1 1";
    QTest::newRow("leap, Tuesday") << Years{2008} << "1 1 1 2 52 1 1 1"
                                   << "1 1 2 2 1 1 1 1";
    QTest::newRow("leap, Wednesday") << Years{1992, 2020} << "1 1 1 2 53 53 53 53"
                                     << "1 1 2 2 53 53 53 53";
    QTest::newRow("leap, Thursday") << Years{2004} << "1 1 1 2 53 53 53 53"
                                    << "1 2 2 2 53 53 53 53";
    QTest::newRow("leap, Friday") << Years{2016} << "1 1 0 1 52 52 52 52"
                                  << "1 1 1 1 52 52 52 52";
    QTest::newRow("leap, Saturday") << Years{2000, 2028} << "1 1 0 1 52 52 52 52"
                                    << "1 1 1 1 52 52 52 53";
    QTest::newRow("leap, Sunday") << Years{2012} << "0 1 0 1 52 52 52 1"
                                  << "1 1 1 1 52 52 1 1";
}

void VelSettingsTest::shouldNumberTheWeeksAtBothEndsOfTheYear()
{
    QFETCH(QVector<int>, years);
    for (const int year : years) {
        QTEST(oddWeeks(year, true), "mondayFirst");
        QTEST(oddWeeks(year, false), "sundayFirst");
    }
}

void VelSettingsTest::shouldChangeTheNumberOnTheFirstDayOfTheWeekOnly_data()
{
    QTest::addColumn<bool>("isMondayFirst");
    QTest::addColumn<int>("firstDay");
    QTest::newRow("Monday") << true << int(Qt::Monday);
    QTest::newRow("Sunday") << false << int(Qt::Sunday);
}

void VelSettingsTest::shouldChangeTheNumberOnTheFirstDayOfTheWeekOnly()
{
    QFETCH(bool, isMondayFirst);
    QFETCH(int, firstDay);
    for (int year = 1990; year <= 2030; ++year) {
        // The days before the first full week have rules of their own.
        for (QDate date(year, 1, 8); date < QDate(year, 12, 31); date = date.addDays(1)) {
            const int week = VelSettings::weekOfYear(date, isMondayFirst);
            const int next = VelSettings::weekOfYear(date.addDays(1), isMondayFirst);
            const bool begins = date.addDays(1).dayOfWeek() == firstDay;
            const bool restarts = begins && date.month() == 12 && next == 1;
            QVERIFY2(restarts || next == (begins ? week + 1 : week), qPrintable(date.toString(Qt::ISODate)));
        }
    }
}

void VelSettingsTest::shouldTakeTheFirstDayOfTheWeekFromTheLocale()
{
    const QDate sunday(2018, 1, 7);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(VelSettings::weekOfYear(sunday), 1);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCOMPARE(VelSettings::weekOfYear(sunday), 2);
}

void VelSettingsTest::shouldCallSundaysRed()
{
    const VelSettings settings;
    const QDate monday(2026, 3, 2);
    for (int i = 0; i < 14; ++i)
        QCOMPARE(settings.isRedDay(monday.addDays(i)), i % 7 == 6);
}

void VelSettingsTest::shouldKnowWorkingHours_data()
{
    QTest::addColumn<QTime>("begin");
    QTest::addColumn<QTime>("end");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<bool>("working");
    const QDate monday(2026, 3, 2);
    const QTime nine(9, 0);
    const QTime five(17, 0);
    QTest::newRow("before") << nine << five << monday << QTime(8, 59) << false;
    QTest::newRow("at the beginning") << nine << five << monday << nine << true;
    QTest::newRow("just before the end") << nine << five << monday << QTime(16, 59) << true;
    QTest::newRow("at the end") << nine << five << monday << five << false;
    QTest::newRow("Friday") << nine << five << monday.addDays(4) << QTime(10, 0) << true;
    QTest::newRow("Saturday") << nine << five << monday.addDays(5) << QTime(10, 0) << false;
    QTest::newRow("minutes of the beginning do not count")
        << QTime(8, 30) << QTime(16, 30) << monday << QTime(8, 0) << true;
    QTest::newRow("minutes of the end do not count")
        << QTime(8, 30) << QTime(16, 30) << monday << QTime(16, 0) << false;
    QTest::newRow("night shift has no hours")
        << QTime(22, 0) << QTime(6, 0) << monday << QTime(23, 0) << false;
}

void VelSettingsTest::shouldKnowWorkingHours()
{
    QFETCH(QDate, date);
    QFETCH(QTime, time);
    QFETCH(QTime, begin);
    QFETCH(QTime, end);
    VelSettings settings;
    settings.workdayBegin = begin;
    settings.workdayEnd = end;
    QTEST(settings.isWorkingHour(date, time), "working");
    QTEST(settings.isWorkingHour(QDateTime(date, time, QTimeZone::utc())), "working");
}

void VelSettingsTest::shouldTakeWorkingDays_data()
{
    QTest::addColumn<QVector<int>>("given");
    QTest::addColumn<QVector<int>>("kept");
    using Days = QVector<int>;
    QTest::newRow("ascending") << Days{2, 3, 6} << Days{2, 3, 6};
    QTest::newRow("any order") << Days{7, 1, 3} << Days{1, 3, 7};
    QTest::newRow("twice the same") << Days{5, 5, 4, 5} << Days{4, 5};
    QTest::newRow("no weekdays among them") << Days{0, 8, -1, 6} << Days{6};
    QTest::newRow("none") << Days{} << Days{1, 2, 3, 4, 5};
    QTest::newRow("none that is a weekday") << Days{0, 9} << Days{1, 2, 3, 4, 5};
}

void VelSettingsTest::shouldTakeWorkingDays()
{
    QFETCH(QVector<int>, given);
    QFETCH(QVector<int>, kept);
    VelSettings settings;
    settings.setWorkdays({7});
    settings.setWorkdays(given);
    QCOMPARE(settings.getWorkdays(), kept);
    QCOMPARE(settings.getFirstWorkingDay(), kept.first());
    QCOMPARE(settings.getLastWorkingDay(), kept.last());
    for (int day = 1; day <= 7; ++day)
        QCOMPARE(settings.isWorkingDay(QDate(2026, 3, 1).addDays(day)), kept.contains(day));
}

void VelSettingsTest::shouldStartWithTheDefaultsOfANewClient()
{
    const VelSettings settings;
    QCOMPARE(settings.interval, 30);
    QCOMPARE(settings.getWorkdays(), (QVector<int>{1, 2, 3, 4, 5}));
    QVERIFY(settings.isWorkingHour(QDate(2026, 3, 2), QTime(9, 0)));
    QVERIFY(!settings.isWorkingHour(QDate(2026, 3, 2), QTime(17, 0)));
}

QTEST_GUILESS_MAIN(VelSettingsTest)

#include "velsettingstest.moc"

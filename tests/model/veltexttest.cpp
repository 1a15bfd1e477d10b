// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/veltext.h"
#include "model/recurrencerules.h"

#include <QLocale>
#include <QTest>

Q_DECLARE_METATYPE(VelReminder::Unit)

class VelTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase();
    void shouldWriteDatesWithAFullYear_data();
    void shouldWriteDatesWithAFullYear();
    void shouldWriteTimesWithoutSeconds();
    void shouldNameDaysAndMonths();
    void shouldNameNothingForNoDate();
    void shouldWordLeadTimes_data();
    void shouldWordLeadTimes();
    void shouldRoundLeadTimesDown();
    void shouldDescribeTheRule_data();
    void shouldDescribeTheRule();
    void shouldDescribeTheRuleInTheNamesOfTheLocale();
    void shouldMapWeekdayCodes_data();
    void shouldMapWeekdayCodes();
    void shouldKnowNoOtherWeekdayCodes();
};

void VelTextTest::init()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
}

void VelTextTest::cleanupTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void VelTextTest::shouldWriteDatesWithAFullYear_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");
    QTest::newRow("British") << QLocale(QLocale::English, QLocale::UnitedKingdom) << "05/03/2026";
    QTest::newRow("American") << QLocale(QLocale::English, QLocale::UnitedStates) << "3/5/2026";
    QTest::newRow("German") << QLocale(QLocale::German, QLocale::Germany) << "05.03.2026";
}

void VelTextTest::shouldWriteDatesWithAFullYear()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    QTEST(VelText::getDay(QDate(2026, 3, 5)), "text");
}

void VelTextTest::shouldWriteTimesWithoutSeconds()
{
    QCOMPARE(VelText::getTime(QTime(9, 5, 59)), QStringLiteral("09:05"));
    QCOMPARE(VelText::getHour(0), QStringLiteral("00:00"));
    QCOMPARE(VelText::getHour(17), QStringLiteral("17:00"));
    QCOMPARE(VelText::getDateTime({QDate(2026, 3, 29), QTime(3, 30)}), QStringLiteral("29/03/2026 03:30"));
}

void VelTextTest::shouldNameDaysAndMonths()
{
    QCOMPARE(VelText::getWeekDay(1), QStringLiteral("Monday"));
    QCOMPARE(VelText::getWeekDay(7), QStringLiteral("Sunday"));
    QCOMPARE(VelText::getWeekDay(QDate(2026, 3, 4)), QStringLiteral("Wednesday"));
    QCOMPARE(VelText::getMonth(QDate(2026, 8, 4), true), QStringLiteral("August"));
    QCOMPARE(VelText::getMonth(QDate(2026, 8, 4), false), QStringLiteral("Aug"));
}

void VelTextTest::shouldNameNothingForNoDate()
{
    QCOMPARE(VelText::getDay(QDate()), QString());
    QCOMPARE(VelText::getWeekDay(0), QString());
    QCOMPARE(VelText::getWeekDay(8), QString());
    QCOMPARE(VelText::getWeekDay(QDate()), QString());
    QCOMPARE(VelText::getMonth(QDate(), true), QString());
}

void VelTextTest::shouldWordLeadTimes_data()
{
    QTest::addColumn<quint32>("minutes");
    QTest::addColumn<VelReminder::Unit>("unit");
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0U << VelReminder::Days << 0U << "";
    QTest::newRow("1") << 1U << VelReminder::Minutes << 1U << "1 minutes";
    QTest::newRow("15") << 15U << VelReminder::Minutes << 15U << "15 minutes";
    QTest::newRow("60") << 60U << VelReminder::Hours << 1U << "1 hours";
    QTest::newRow("90") << 90U << VelReminder::Minutes << 90U << "90 minutes";
    QTest::newRow("120") << 120U << VelReminder::Hours << 2U << "2 hours";
    QTest::newRow("1439") << 1439U << VelReminder::Minutes << 1439U << "1439 minutes";
    QTest::newRow("1440") << 1440U << VelReminder::Days << 1U << "1 days";
    QTest::newRow("1500") << 1500U << VelReminder::Hours << 25U << "25 hours";
    QTest::newRow("32000 days") << 46080000U << VelReminder::Days << 32000U << "32000 days";
    QTest::newRow("the most that fits")
        << 4294967295U << VelReminder::Minutes << 4294967295U << "4294967295 minutes";
}

void VelTextTest::shouldWordLeadTimes()
{
    QFETCH(quint32, minutes);
    QFETCH(VelReminder::Unit, unit);
    QCOMPARE(int(VelReminder::reminderType(minutes)), int(unit));
    QTEST(VelReminder::valueForType(unit, minutes), "value");
    QTEST(VelReminder::toString(minutes), "text");
}

void VelTextTest::shouldRoundLeadTimesDown()
{
    QCOMPARE(VelReminder::valueForType(VelReminder::Hours, 119), 1U);
    QCOMPARE(VelReminder::valueForType(VelReminder::Days, 1439), 0U);
}

void VelTextTest::shouldDescribeTheRule_data()
{
    QTest::addColumn<VelRecurrenceRule>("rule");
    QTest::addColumn<QString>("text");
    QTest::newRow("daily") << Rules::daily(1) << "Event will reoccur every 1 day(s).";
    QTest::newRow("weekly") << Rules::weekly(2, {1, 3})
                            << "Event will reoccur every 2 week(s) on following day(s) Monday,Wednesday.";
    QTest::newRow("monthly by day") << Rules::monthly(3, 31)
                                    << "Event will reoccur every 3 month(s) on 31 day of the month.";
    QTest::newRow("first") << Rules::monthlyWeekday(1, 1, 7)
                           << "Event will reoccur every 1 month(s) on first Sunday.";
    QTest::newRow("second") << Rules::monthlyWeekday(1, 2, 2)
                            << "Event will reoccur every 1 month(s) on second Tuesday.";
    QTest::newRow("third") << Rules::monthlyWeekday(1, 3, 4)
                           << "Event will reoccur every 1 month(s) on third Thursday.";
    QTest::newRow("fourth") << Rules::monthlyWeekday(1, 4, 6)
                            << "Event will reoccur every 1 month(s) on fourth Saturday.";
    QTest::newRow("fifth") << Rules::monthlyWeekday(1, 5, 5)
                           << "Event will reoccur every 1 month(s) on last Friday.";
    QTest::newRow("last") << Rules::monthlyWeekday(1, -1, 5)
                          << "Event will reoccur every 1 month(s) on last Friday.";
    QTest::newRow("yearly") << Rules::yearly(4) << "Event will reoccur every 4 year(s) on 29 February.";
    QTest::newRow("counted") << Rules::times(Rules::daily(2), 3)
                             << "Event will reoccur every 2 day(s). Recurrence will end after 3 occurences.";
    QTest::newRow("with an end date")
        << Rules::until(Rules::daily(2), {2026, 3, 5})
        << "Event will reoccur every 2 day(s). Recurrence will end on 05/03/2026.";
    QTest::newRow("the count goes before the end date")
        << Rules::times(Rules::until(Rules::daily(2), {2026, 3, 5}), 3)
        << "Event will reoccur every 2 day(s). Recurrence will end after 3 occurences.";
    QTest::newRow("no rule") << VelRecurrenceRule() << "";
    QTest::newRow("no rule, whatever its end") << Rules::times(VelRecurrenceRule(), 3) << "";
    QTest::newRow("unknown type") << Rules::make(9, 1) << "";
    QTest::newRow("monthly without a day") << Rules::make(VelRecurrenceRule::Monthly, 1) << "";
}

void VelTextTest::shouldDescribeTheRule()
{
    QFETCH(VelRecurrenceRule, rule);
    QTEST(rule.getRecurrenceText(QDate(2024, 2, 29)), "text");
}

void VelTextTest::shouldDescribeTheRuleInTheNamesOfTheLocale()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(Rules::weekly(1, {1, 7}).getRecurrenceText(QDate(2024, 2, 29)),
             QStringLiteral("Event will reoccur every 1 week(s) on following day(s) Montag,Sonntag."));
    QCOMPARE(Rules::yearly(1).getRecurrenceText(QDate(2024, 2, 29)),
             QStringLiteral("Event will reoccur every 1 year(s) on 29 Februar."));
}

void VelTextTest::shouldMapWeekdayCodes_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("code");
    QTest::newRow("Monday") << 1 << "MO";
    QTest::newRow("Tuesday") << 2 << "TU";
    QTest::newRow("Wednesday") << 3 << "WE";
    QTest::newRow("Thursday") << 4 << "TH";
    QTest::newRow("Friday") << 5 << "FR";
    QTest::newRow("Saturday") << 6 << "SA";
    QTest::newRow("Sunday") << 7 << "SU";
}

void VelTextTest::shouldMapWeekdayCodes()
{
    QFETCH(int, number);
    QFETCH(QString, code);
    QCOMPARE(VelRecurrenceRule::getDayString(number), code);
    QCOMPARE(VelRecurrenceRule::getDayNumber(code), number);
}

void VelTextTest::shouldKnowNoOtherWeekdayCodes()
{
    QCOMPARE(VelRecurrenceRule::getDayString(0), QString());
    QCOMPARE(VelRecurrenceRule::getDayString(8), QString());
    QCOMPARE(VelRecurrenceRule::getDayNumber(QString()), 0);
    QCOMPARE(VelRecurrenceRule::getDayNumber(QStringLiteral("mo")), 0);
    QCOMPARE(VelRecurrenceRule::getDayNumber(QStringLiteral("MON")), 0);
}

QTEST_GUILESS_MAIN(VelTextTest)

#include "veltexttest.moc"

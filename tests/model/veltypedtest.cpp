// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/veltyped.h"
#include "model/veltext.h"

#include <QTest>

namespace
{
const QDate Today(2026, 11, 22); // a Sunday
const VelTyped::Days Days{Today, Today};

/** A row of texts that all say the same there. */
template <typename Value>
void row(const char *locale, const char *texts, Value value)
{
    QTest::addRow("%s: %s", locale, texts)
        << QLocale(QLatin1String(locale)) << QString::fromUtf8(texts).split(QLatin1Char('|')) << value;
}
} // namespace

class VelTypedTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldReadTimes_data();
    void shouldReadTimes();
    void shouldReadDates_data();
    void shouldReadDates();
    void shouldFindTheYearThatIsMeant();
    void shouldReadWhatEachLocaleWrites();
};

void VelTypedTest::shouldReadTimes_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QTime>("expected");
    for (const char *locale : {"en_US", "en_GB", "de_DE", "C", "ar_EG"}) {
        row(locale, "9|09|9:00|9.00|900|0900|9h|9 am|9a|9AM|9 a.m.|9 A. M.|9 Uhr|9 o'clock| 9 |9:0",
            QTime(9, 0));
        row(locale,
            "915|0915|9:15|9.15|9,15|9 15|9h15|9 h 15|9:15:59|9:15 "
            "Uhr|0915am|9:15\u00a0AM|\u0669:\u0661\u0665",
            QTime(9, 15));
        row(locale,
            "14.30|1430|14:30:00|2:30 pm|230pm|2:30 PM|2:30p|2:30\u202fPM|2.30 p.m.|14:30 "
            "pm|\uff11\uff14\uff1a\uff13\uff10",
            QTime(14, 30));
        row(locale, "0|0h|0am|0:00|000|12 am|12:00a", QTime(0, 0));
        row(locale, "12|12pm|12:00|0 pm", QTime(12, 0));
        row(locale,
            "|  |25:99|24|24:00|9:60|960|9:15:60|12345|9-15|9/15|-9|9:150|14:30 am|0x9|9:15 "
            "tea|am|h|:|1:2:3:4|"
            "\u00bd|9999999999",
            QTime());
    }
    row("ko_KR", "\uc624\ud6c4 2:30|2:30 \uc624\ud6c4", QTime(14, 30));
    row("bg_BG", "14:30 \u0447.|14:30", QTime(14, 30));
}

void VelTypedTest::shouldReadTimes()
{
    QFETCH(QLocale, locale);
    QFETCH(QStringList, texts);
    QFETCH(QTime, expected);
    for (const QString &text : texts) {
        QVERIFY2(VelTyped::readTime(text, locale) == expected, qPrintable(text));
        QCOMPARE(VelTyped::timeProblem(text, locale).isEmpty(), expected.isValid());
    }
}

void VelTypedTest::shouldReadDates_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QDate>("expected");
    for (const char *locale : {"en_US", "en_GB", "de_DE", "C", "sv_SE"}) {
        row(locale,
            "24.12.|24.12|24.12.2026|12/24|24/12|24-12-2026|2026-12-24|2026/12/24|20261224|24 "
            "Dec|Dec 24|"
            "dec. 24th|24th of December|December 24, 2026|24dec26|24 Dec '26|2026 Dec 24|Thu "
            "24.12.|Thursday, 24 Dec|"
            "\uff12\uff14\uff0e\uff11\uff12\uff0e|\u0662\u0664/\u0661\u0662",
            QDate(2026, 12, 24));
        row(locale, "today|TODAY|22|22.|22nd", Today);
        row(locale, "tomorrow|mon|Monday| monday |Mon.", Today.addDays(1));
        row(locale, "yesterday|21", Today.addDays(-1));
        row(locale, "sun|Sunday", Today.addDays(7));
        row(locale, "sat|Satur", Today.addDays(6));
        row(locale,
            "||31.2.|29.2.2026|32|0|0.0.|24.0.|13.13.|2026-13-01|24.12.026|24.12.12345|1.2.2026x|1.2.3.4|Fri "
            "24.12.|Dec|"
            "Dec 2026|24 Foo|Dec Jan 24|mon tue|t|day|-5|24:12|9999999999|00000101|\u00bd",
            QDate());
    }
    row("de_DE",
        "24. Dezember|24. Dez. 2026|24 dezember 26|Do 24.12.|Donnerstag, 24. Dezember 2026|Donnerst., "
        "24.12.26",
        QDate(2026, 12, 24));
    row("de_DE", "mo|Mo.|Montag", Today.addDays(1));
    row("de_DE", "1.3.27|1.3.|1/3|1. M\u00e4rz|1. marz", QDate(2027, 3, 1));
    row("en_GB", "1/3/27|1/3|1.3.", QDate(2027, 3, 1));
    row("en_US", "3/1/27|3/1|3.1.|2027-3-1", QDate(2027, 3, 1));
    row("sv_SE", "27-03-01|03-01|1.3.2027|1 mars", QDate(2027, 3, 1));
    row("ja_JP", "12\u670824\u65e5|2026\u5e7412\u670824\u65e5", QDate(2026, 12, 24));
    row("pt_BR", "24 de dezembro|24 de dezembro de 2026", QDate(2026, 12, 24));
    row("pt_BR", "segunda-feira|segunda|seg", Today.addDays(1));
    row("es_ES", "mar", Today.addDays(2)); // a Tuesday, or with a day March
    row("es_ES", "24 mar|mi\u00e9 24 mar|mie 24 mar 27", QDate(2027, 3, 24));
    row("de_DE", "24. 12. 26", QDate(2026, 12, 24));
    row("de_DE", "1.2.69", QDate(1969, 2, 1));
    row("de_DE", "29.2.00", QDate(2000, 2, 29));
    row("de_DE", "29.2.", QDate(2028, 2, 29));
}

void VelTypedTest::shouldReadDates()
{
    QFETCH(QLocale, locale);
    QFETCH(QStringList, texts);
    QFETCH(QDate, expected);
    for (const QString &text : texts) {
        QVERIFY2(VelTyped::readDate(text, Days, locale) == expected, qPrintable(text));
        QCOMPARE(VelTyped::dateProblem(text, Days, locale).isEmpty(), expected.isValid());
    }
}

void VelTypedTest::shouldFindTheYearThatIsMeant()
{
    const auto read = [](const char *text, QDate near) {
        return VelTyped::readDate(QLatin1String(text), {Today, near}, QLocale(QLocale::German));
    };
    QCOMPARE(read("24.8.", Today), QDate(2026, 8, 24)); // 90 days ago
    QCOMPARE(read("23.8.", Today), QDate(2027, 8, 23));
    QCOMPARE(read("2.1.", QDate(2031, 12, 30)), QDate(2032, 1, 2));
    QCOMPARE(read("30.12.", QDate(2032, 1, 2)), QDate(2031, 12, 30));
    QCOMPARE(read("17", QDate(2031, 2, 3)), QDate(2031, 2, 17));
    QCOMPARE(read("Mo", QDate(2031, 2, 3)), Today.addDays(1));
    QCOMPARE(read("31.12.", QDate(9999, 12, 1)), QDate(9999, 12, 31));
}

void VelTypedTest::shouldReadWhatEachLocaleWrites()
{
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    for (const QLocale &locale : locales) {
        for (const QTime time : {QTime(0, 5), QTime(9, 15), QTime(12, 0), QTime(23, 59)})
            QVERIFY2(VelTyped::readTime(VelText::getTime(time, locale), locale) == time,
                     qPrintable(locale.name()));
        for (const QDate date : {QDate(2027, 3, 4), QDate(1968, 12, 31)})
            QVERIFY2(VelTyped::readDate(VelText::getDay(date, locale), Days, locale) == date,
                     qPrintable(locale.name()));
    }
}

QTEST_GUILESS_MAIN(VelTypedTest)

#include "veltypedtest.moc"

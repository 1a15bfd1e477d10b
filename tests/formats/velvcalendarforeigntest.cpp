// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velvcalendar.h"

#include <QTest>

namespace
{
const QTimeZone TwoHoursEast(2 * 3600);

QByteArray written(const VelEntry &entry)
{
    return VelVCalendar::asvCalendar(entry, 3, true).toUtf8();
}

std::unique_ptr<VelEntry> readBody(const QByteArray &lines, const QByteArray &component = "VEVENT")
{
    const QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nBEGIN:" + component + "\r\n" + lines
        + "END:" + component + "\r\nEND:VCALENDAR\r\n";
    VelVCalendar::Result result = VelVCalendar::readAll(text, TwoHoursEast);
    return result.entries.empty() ? nullptr : std::move(result.entries.front());
}

std::unique_ptr<VelEntry> readEvent(const QByteArray &lines)
{
    return readBody("DTSTART:20020305T090500\r\nDTEND:20020305T100000\r\n" + lines);
}
} // namespace

/** What other programs write. */
class VelVCalendarForeignTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadRules_data();
    void shouldReadRules();
    void shouldReadForeignTexts_data();
    void shouldReadForeignTexts();
    void shouldReadForeignTimes_data();
    void shouldReadForeignTimes();
    void shouldReadForeignStates_data();
    void shouldReadForeignStates();
    void shouldReadForeignAttendees_data();
    void shouldReadForeignAttendees();
    void shouldPassOverNestedComponents();
};

void VelVCalendarForeignTest::shouldReadRules_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("rule"); // as we write it; the entry starts on Tuesday 5 March 2002

    const auto row = [](const char *line, const char *rule) {
        QTest::newRow(line) << QByteArray(line) << QByteArray(rule);
    };
    row("D1 #0", "D1 #0");
    row("RRULE:D1 #0", "D1 #0");
    row("rrule:W2 TH MO th #5", "W2 MO TH #5");
    row("RRULE:W1 #3", "W1 TU #3");
    row("RRULE:MP1 2+ TU WE 4+ FR #0", "MP1 2+ TU #0");
    row("RRULE:MP1 #0", "MP1 1+ TU #0");
    row("RRULE:MD1 15 20 #0", "MD1 15 #0");
    row("RRULE:MD1 15+ 20+ #0", "MD1 15 #0");
    row("RRULE:MD1 LD #0", "MD1 31 #0");
    row("RRULE:MD1 1- #0", "MD1 31 #0");
    row("RRULE:MD3 #0", "MD3 5 #0");
    row("RRULE:MD1 45 #0", "MD1 5 #0");
    row("RRULE:M1 15 #4", "MD1 15 #4");
    row("RRULE:M1 1- FR #4", "MP1 1- FR #4");
    row("RRULE:YD1 64 #0", "YD1 64 #0");
    row("RRULE:YM2 3 #0", "YD2 64 #0");
    row("RRULE:YP1 3 #0", "YD1 64 #0");
    row("RRULE:D1 20020310T000000", "D1 20020310T000000");
    row("RRULE:D1 20020310T090500", "D1 20020311T000000");
    row("RRULE:D1 20020310T220000Z", "D1 20020311T000000");
    row("RRULE:D1 20020310", "D1 20020311T000000");
    row("RRULE:D1", "D1 #2");
    row("RRULE:D1 #4 20020310T000000", "D1 20020310T000000");
    row("RRULE:W1 MO 0900 1200 #4", "W1 MO #4");
    row("RRULE:D0 #0", "");
    row("RRULE:D99999999999 #0", "");
    row("RRULE:X1 #0", "");
    row("RRULE:FREQ=DAILY", "");
    row("RRULE:", "");
    row("Dear me", "");
}

void VelVCalendarForeignTest::shouldReadRules()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, rule);

    const auto entry = readEvent(line + "\r\n");
    QVERIFY(entry);
    QCOMPARE(entry->rule.recurringtype == VelRecurrenceRule::None, rule.isEmpty());
    const QByteArray text = written(*entry);
    QVERIFY2(text.contains("DTEND:20020305T100000\n" + rule + (rule.isEmpty() ? "" : "\n") + "END:"),
             text.constData());
}

void VelVCalendarForeignTest::shouldReadForeignTexts_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("description");

    const auto row = [](const char *name, const char *lines, const char *title, const char *description) {
        QTest::newRow(name) << QByteArray(lines) << QString::fromUtf8(title)
                            << QString::fromUtf8(description);
    };
    row("plain", "SUMMARY:Title \n", "Title ", "");
    row("lower case, parameters", "summary;language=en:Title\n", "Title", "");
    row("colon in quotes", "SUMMARY;X=\"a:b;c\":Title\n", "Title", "");
    row("open quote", "SUMMARY;X=\"a:Title\n", "Title", "");
    row("carriage returns alone", "SUMMARY:Title\rDESCRIPTION:Text\r", "Title", "Text");
    row("folded keeps blank", "SUMMARY:One\r\n two\r\n", "One two", "");
    row("folded in version 2.0 drops it", "VERSION:2.0\nSUMMARY:On\r\n e\\, two\r\n", "One, two", "");
    row("folded before the colon", "SUMMARY;\n LANGUAGE=en:Title\n", "Title", "");
    row("soft line breaks", "SUMMARY;ENCODING=QUOTED-PRINTABLE:Ti=\r\ntle=20=\r\n x\r\nDESCRIPTION:d\n",
        "Title  x", "d");
    row("quoted-printable, named after the value", "DESCRIPTION;encoding=quoted-printable:a=0D=0Ab=3d\r\n",
        "", "a\r\nb=");
    row("quoted-printable UTF-8", "SUMMARY;CHARSET=UTF-8;QUOTED-PRINTABLE:=C3=A4\n", "\u00E4", "");
    row("quoted-printable Latin-1", "SUMMARY;CHARSET=ISO-8859-1;QUOTED-PRINTABLE:=E4=A4\n", "\u00E4\u00A4",
        "");
    row("quoted-printable Latin-9", "SUMMARY;CHARSET=iso-8859-15;QUOTED-PRINTABLE:=A4\n", "\u20AC", "");
    row("quoted-printable Windows-1252", "SUMMARY;CHARSET=Windows-1252;QUOTED-PRINTABLE:=80=E4=93\n",
        "\u20AC\u00E4\u201C", "");
    row("raw UTF-8", "SUMMARY:\xE2\x82\xAC\n", "\u20AC", "");
    row("raw Latin-9", "SUMMARY:\xE4\xA4\n", "\u00E4\u20AC", "");
    row("base64", "DESCRIPTION;ENCODING=BASE64:\r\n  SGVs\r\n  bG8=\r\n\r\n", "", "Hello");
    row("base64 without blanks", "DESCRIPTION;BASE64:SGVs\nbG8=\n\nSUMMARY:T\n", "T", "Hello");
    row("empty encoded text", "DESCRIPTION;QUOTED-PRINTABLE:\nSUMMARY:T\n", "T", "");
    row("value ends in an equals sign", "SUMMARY:1+1=\nDESCRIPTION:d\n", "1+1=", "d");
}

void VelVCalendarForeignTest::shouldReadForeignTexts()
{
    QFETCH(QByteArray, lines);
    QFETCH(QString, title);
    QFETCH(QString, description);

    const auto entry = readEvent(lines);
    QVERIFY(entry);
    QCOMPARE(entry->getTitle(), title);
    QCOMPARE(entry->getDescription(), description);
}

void VelVCalendarForeignTest::shouldReadForeignTimes_data()
{
    QTest::addColumn<QByteArray>("component");
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("times");
    QTest::addColumn<bool>("notime");
    QTest::addColumn<quint32>("reminder");

    const auto row = [](const char *name, const char *component, const char *lines, const char *times,
                        bool notime, quint32 reminder = 0) {
        QTest::newRow(name) << QByteArray(component) << QByteArray(lines) << QString::fromLatin1(times)
                            << notime << reminder;
    };
    row("UTC", "VEVENT", "DTSTART:20020305T230000Z\nDTEND:20020305T233000Z\n",
        "20020306T010000 20020306T013000", false);
    row("named zone", "VEVENT", "DTSTART;TZID=UTC:20020305T100000\nDTEND:20020305T140000\n",
        "20020305T120000 20020305T140000", false);
    row("unknown zone", "VEVENT", "DTSTART;TZID=Nowhere:20020305T100000\n", "20020305T100000 20020305T100000",
        false);
    row("separators", "VEVENT", "DTSTART:2002-03-05T09:05:00\nDTEND:2002-03-05T10:00:00Z\n",
        "20020305T090500 20020305T120000", false);
    row("dates", "VEVENT", "DTSTART;VALUE=DATE:20020305\nDTEND;VALUE=DATE:20020307\n",
        "20020305T000000 20020306T235900", true);
    row("one date", "VEVENT", "DTSTART;VALUE=DATE:20020305\n", "20020305T000000 20020305T235900", true);
    row("date twice", "VEVENT", "DTSTART:20020305\nDTEND:20020305\n", "20020305T000000 20020305T235900",
        true);
    row("no end", "VEVENT", "DTSTART:20020305T090000\n", "20020305T090000 20020305T090000", false);
    row("no start", "VEVENT", "DTEND:20020305T090000\n", "20020305T090000 20020305T090000", false);
    row("impossible start", "VEVENT", "DTSTART:20020230T090000\nDTEND:20020305T090000\n",
        "20020305T090000 20020305T090000", false);
    row("end before start", "VEVENT", "DTSTART:20020305T090000\nDTEND:20020305T080000\n",
        "20020305T090000 20020305T090000", false);
    row("duration", "VEVENT", "DTSTART:20020305T090000\nDURATION:P1DT1H30M\n",
        "20020305T090000 20020306T103000", false);
    row("broken duration", "VEVENT", "DTSTART:20020305T090000\nDURATION:P99999999999W\n",
        "20020305T090000 20020305T090000", false);
    row("to-do", "VTODO", "DTSTART:20020305T090000\nDUE:20020306T120000\n", "20020305T090000 20020306T120000",
        true);
    row("to-do with due date", "VTODO", "DUE;VALUE=DATE:20020306\n", "20020306T000000 20020306T235900", true);
    row("alarm before", "VEVENT", "DALARM:20020305T084500\nDTSTART:20020305T090000\n",
        "20020305T090000 20020305T090000", false, 15);
    row("alarm behind, with more fields", "VEVENT",
        "DTSTART:20020305T090000\nDALARM:20020305T093000;PT5M;2;beep\n", "20020305T090000 20020305T090000",
        false, 30);
    row("alarm at start, UTC", "VEVENT",
        "DTSTART:20020305T090000\nAALARM;TYPE=WAVE:20020305T070000Z;;;file\n",
        "20020305T090000 20020305T090000", false, 1);
    row("first alarm of two", "VEVENT",
        "DTSTART:20020305T090000\nAALARM:\nDALARM:20020305T085930\nAALARM:20020305T080000\n",
        "20020305T090000 20020305T090000", false, 1);
}

void VelVCalendarForeignTest::shouldReadForeignTimes()
{
    QFETCH(QByteArray, component);
    QFETCH(QByteArray, lines);
    QFETCH(QString, times);
    QFETCH(bool, notime);
    QFETCH(quint32, reminder);

    const auto entry = readBody(lines, component);
    QVERIFY(entry);
    QCOMPARE(VelVCalendar::toISO8601(entry->getStart()) + QLatin1Char(' ')
                 + VelVCalendar::toISO8601(entry->getEnd()),
             times);
    QCOMPARE(entry->notime, notime);
    QCOMPARE(entry->reminder, reminder);
}

void VelVCalendarForeignTest::shouldReadForeignStates_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("access");
    QTest::addColumn<int>("priority");
    QTest::addColumn<bool>("complete");
    QTest::addColumn<int>("display");

    const auto row = [](const char *line, int access, int priority, bool complete, int display) {
        QTest::newRow(line) << QByteArray(line) << access << priority << complete << display;
    };
    row("", 0, 0, false, 0);
    row("CLASS:PRIVATE", 2, 0, false, 0);
    row("CLASS:CONFIDENTAL", 2, 0, false, 0);
    row("CLASS: Confidential", 2, 0, false, 0);
    row("CLASS:PUBLIC", 1, 0, false, 0);
    row("CLASS:X-SOMETHING", 1, 0, false, 0);
    row("PRIORITY:5", 0, 5, false, 0);
    row("PRIORITY:77", 0, 9, false, 0);
    row("PRIORITY:-3", 0, 0, false, 0);
    row("PRIORITY:99999999999", 0, 0, false, 0);
    row("PRIORITY:high", 0, 0, false, 0);
    row("COMPLETED:20020305T120000Z", 0, 0, true, 0);
    row("COMPLETED:", 0, 0, false, 0);
    row("STATUS:Completed", 0, 0, true, 0);
    row("STATUS:TENTATIVE", 0, 0, false, 3);
    row("TRANSP:0", 0, 0, false, 1);
    row("TRANSP:1", 0, 0, false, 2);
    row("transp:TRANSPARENT", 0, 0, false, 2);
    row("X-PRIORITY:5", 0, 0, false, 0);
}

void VelVCalendarForeignTest::shouldReadForeignStates()
{
    QFETCH(QByteArray, line);
    QFETCH(int, access);
    QFETCH(int, priority);
    QFETCH(bool, complete);
    QFETCH(int, display);

    const auto entry = readEvent(line + "\r\n");
    QVERIFY(entry);
    QCOMPARE(entry->access, access);
    QCOMPARE(entry->priority, priority);
    QCOMPARE(entry->complete, complete);
    QCOMPARE(entry->display, display);
    QCOMPARE(entry->dirty, 1);
}

void VelVCalendarForeignTest::shouldReadForeignAttendees_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("email");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("attendee");

    const auto row = [](const char *line, const char *name, const char *email, int status, int attendee) {
        QTest::newRow(line) << QByteArray(line) << QString::fromUtf8(name) << QString::fromUtf8(email)
                            << status << attendee;
    };
    row("ATTENDEE:Ann <ann@example.org>", "Ann", "ann@example.org", 0, 0);
    row("ATTENDEE;STATUS=CONFIRMED;EXPECT=FYI:<ann@example.org>", "ann@example.org", "ann@example.org", 4, 1);
    row("ATTENDEE;ROLE=OWNER;STATUS=declined:a <b> <ann@example.org>", "a <b>", "ann@example.org", 2, 0);
    row("ATTENDEE;STATUS=NEEDS ACTION:ann@example.org", "ann@example.org", "ann@example.org", 0, 0);
    row("ATTENDEE;CN=\"Ann: A.\";PARTSTAT=TENTATIVE;ROLE=OPT-PARTICIPANT:MAILTO:ann@example.org", "Ann: A.",
        "ann@example.org", 3, 1);
    row("ATTENDEE;QUOTED-PRINTABLE;CHARSET=UTF-8:=C3=84nn <ann@example.org>", "\u00C4nn", "ann@example.org",
        0, 0);
    row("ATTENDEE: Ann ", "Ann", "", 0, 0);
    row("ATTENDEE:>", ">", "", 0, 0);
}

void VelVCalendarForeignTest::shouldReadForeignAttendees()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, name);
    QFETCH(QString, email);
    QFETCH(int, status);
    QFETCH(int, attendee);

    const auto entry = readEvent(line + "\n");
    QVERIFY(entry);
    QCOMPARE(int(entry->accounts.size()), 1);
    const VelAccount &account = entry->accounts.first();
    QCOMPARE(account.name, name);
    QCOMPARE(account.email, email);
    QCOMPARE(account.status, status);
    QCOMPARE(account.attendee, attendee);
    QCOMPARE(account.id, 0U);
}

void VelVCalendarForeignTest::shouldPassOverNestedComponents()
{
    const auto entry =
        readEvent("SUMMARY:Outer\nBEGIN:VALARM\nSUMMARY:Inner\nBEGIN:X\nEND:X\nDTSTART:19990101T000000\n"
                  "END:VALARM\nPRIORITY:3\n");
    QVERIFY(entry);
    QCOMPARE(entry->getTitle(), QStringLiteral("Outer"));
    QCOMPARE(entry->getStart().date(), QDate(2002, 3, 5));
    QCOMPARE(entry->priority, 3);
}

QTEST_GUILESS_MAIN(VelVCalendarForeignTest)

#include "velvcalendarforeigntest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendar.h"
#include "formats/velvcalendar.h"
#include "formats/velvcalendarrule.h"
#include "support/velrandomentry.h"

#include <QTest>

namespace
{
const QTimeZone TwoHoursEast(2 * 3600);
const QDate Today(2010, 1, 1);

VelEntry plainEvent()
{
    VelEntry entry(0, VelEntry::Event, {QDate(2002, 3, 5), QTime(9, 5)}, {QDate(2002, 3, 5), QTime(10, 0)});
    entry.setTitle(QStringLiteral("Meeting"));
    entry.access = VelEntry::Public;
    entry.display = VelEntry::Busy;
    return entry;
}

QByteArray written(const std::vector<VelEntry> &entries)
{
    VelEntryList list;
    for (const VelEntry &entry : entries) {
        list.emplace_back(&entry);
        list.emplace_back(&entry, 1, entry.getStart().julianDay() + 1); // an occurrence, not to be written
    }
    return VelICalendar::write(list, 1, Today);
}

QByteArray calendarWith(const QByteArray &lines, const QByteArray &component = "VEVENT")
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\nBEGIN:" + component + "\r\nUID:1\r\n" + lines
        + "END:" + component + "\r\nEND:VCALENDAR\r\n";
}

QByteArray zoneNamed(const QByteArray &name, const QByteArray &rule)
{
    return "BEGIN:VTIMEZONE\nTZID:" + name + "\nBEGIN:STANDARD\nDTSTART:19701025T030000\nTZOFFSETFROM:+0200\n"
        + "TZOFFSETTO:+0100\nRRULE:" + rule + "\nEND:STANDARD\nBEGIN:DAYLIGHT\nDTSTART:19700329T020000\n"
        + "TZOFFSETFROM:+0100\nTZOFFSETTO:+0200\nRRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3\nEND:DAYLIGHT\n"
        + "END:VTIMEZONE\n";
}

/** Of every entry the times and what else is not as in a plain event, then what was counted. */
QString described(const VelForeignContent &result)
{
    QString text;
    const auto add = [&text](const char *name, qint64 value, qint64 usual = 0) {
        if (value != usual)
            text += QStringLiteral(" %1=%2").arg(QLatin1String(name)).arg(value);
    };
    for (const auto &entry : result.entries) {
        text += (text.isEmpty() ? QString() : QStringLiteral("; "))
            + VelVCalendar::toISO8601(entry->getStart()) + QLatin1Char(' ')
            + VelVCalendar::toISO8601(entry->getEnd());
        add("notime", entry->notime ? 1 : 0);
        add("access", entry->access, VelEntry::Public);
        add("display", entry->display, VelEntry::Busy);
        add("reminder", entry->reminder);
        if (entry->isRecurring())
            text += QLatin1Char(' ') + VelVCalendarRule::toText(entry->rule, entry->getStart().date());
        for (const VelAccount &one : entry->accounts)
            text += QStringLiteral(" %1<%2>").arg(one.name, one.email)
                + QStringLiteral("%1/%2/%3/%4").arg(one.id).arg(one.status).arg(one.attendee).arg(one.type);
    }
    add("leftOut", result.leftOut);
    add("simplified", result.simplified.size());
    add("singles", result.singles);
    return text;
}
} // namespace

class VelICalendarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadBackRandomEntries();
    void shouldReadBackTimesThatDaylightSavingSkips();
    void shouldNameWhatItCannotWrite();
    void shouldReadWhatOthersWrite_data();
    void shouldReadWhatOthersWrite();
    void shouldSurviveHostileText_data();
    void shouldSurviveHostileText();
    void shouldSurviveRandomDamage();
};

void VelICalendarTest::shouldReadBackRandomEntries()
{
    VelRandomEntry random(20020305);
    std::vector<VelEntry> entries;
    for (int i = 0; i < 500; ++i) {
        entries.push_back(random.entry());
        entries.back().setTitle(QString::number(i) + QLatin1Char(' ') + entries.back().getTitle());
        if (random.chance(20))
            entries.back().setDescription(QStringLiteral(" one\r\ntwo\rthree\x01\t"));
    }
    const VelForeignContent result = VelICalendar::read(written(entries));
    QCOMPARE(result.leftOut, 0);
    QVERIFY(result.simplified.isEmpty() && result.singles == 0);
    QCOMPARE(result.entries.size(), entries.size());
    for (const auto &read : result.entries) {
        const int number = read->getTitle().section(QLatin1Char(' '), 0, 0).toInt();
        const VelEntry &entry = entries.at(static_cast<std::size_t>(number));
        QVERIFY2(*read == entry, written({entry}).constData());
    }
}

void VelICalendarTest::shouldReadBackTimesThatDaylightSavingSkips()
{
    // In the time zone of the tests, clocks go from 3:00 to 4:00 on that night.
    for (int minute = 150; minute < 260; minute += 10) {
        VelEntry entry = plainEvent();
        entry.type = minute % 30 == 0 ? VelEntry::Todo : VelEntry::Event;
        entry.setStart({QDate(2026, 3, 29), QTime(0, 0).addSecs(60 * minute)});
        entry.setEnd(entry.getStart().addSecs(minute % 20 == 0 ? 0 : 3600));
        if (minute % 60 == 0)
            entry.rule = {VelRecurrenceRule::Daily, 1, {}, 0, {}, 5};
        const VelForeignContent result = VelICalendar::read(written({entry}));
        QCOMPARE(int(result.entries.size()), 1);
        QVERIFY2(*result.entries.front() == entry, written({entry}).constData());
    }
}

void VelICalendarTest::shouldNameWhatItCannotWrite()
{
    VelEntry last = plainEvent();
    last.setTitle(QStringLiteral("Last"));
    last.setStart({QDate(9999, 12, 31), QTime(0, 0)});
    last.setEnd({QDate(9999, 12, 31), QTime(23, 59)});
    last.notime = true;
    VelEntry first = plainEvent();
    first.setStart({QDate(1, 1, 1), QTime(0, 0)});
    first.setEnd({QDate(3000, 12, 31), QTime(23, 59)});
    first.complete = true;
    first.type = VelEntry::Todo;
    QStringList leftOut;
    const QByteArray text =
        VelICalendar::write({VelEntryRef(&last), VelEntryRef(&first)}, 1, Today, &leftOut);
    QCOMPARE(leftOut, QStringList{QStringLiteral("Last")});
    const VelForeignContent result = VelICalendar::read(text);
    QVERIFY2(result.entries.size() == 1 && *result.entries.front() == first, text.constData());
}

void VelICalendarTest::shouldReadWhatOthersWrite_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");

    const auto row = [](const QByteArray &lines, const char *expected, const char *component = "VEVENT") {
        QTest::newRow(QByteArray(lines).replace('\n', ' ').constData())
            << calendarWith(lines + "\n", component) << QString::fromLatin1(expected);
    };
    row("DTSTART:20020305T090000\nDTEND:20020305T093000", "20020305T090000 20020305T093000");
    row("DTSTART:20020305T230000Z\nDURATION:PT30M", "20020306T010000 20020306T013000");
    row("DTSTART;TZID=America/New_York:20020305T090000", "20020305T160000 20020305T160000");
    row("DTSTART;TZID=W. Europe Standard Time:20020305T090000", "20020305T100000 20020305T100000");
    row("DTSTART;\n TZID=\"Our: zone\":20020305T090000\nEND:VEVENT\n"
            + zoneNamed("Our: zone", "FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10")
            + "BEGIN:VEVENT\nDTSTART:20020305T090000Z",
        "20020305T100000 20020305T100000; 20020305T110000 20020305T110000");
    row("SEQUENCE:1\nDTSTART:20020305T090000\nEND:VEVENT\nBEGIN:VEVENT\nUID:1\nSEQUENCE:2\n"
        "DTSTART:20020306T090000\nEND:VEVENT\nBEGIN:VEVENT\nUID:1\nDTSTART:20020307T090000",
        "20020306T090000 20020306T090000");
    row("DTSTART;VALUE=DATE:20020305\nDTEND;VALUE=DATE:20020307", "20020305T000000 20020306T235900 notime=1");
    row("DTSTART:20020305T090000\nDTEND:20020305T080000", "20020305T090000 20020305T090000");
    row("DUE:20020306T120000Z", "20020306T140000 20020306T140000 display=0", "VTODO");
    row("DUE;VALUE=DATE:20020306", "20020306T000000 20020306T235900 notime=1 display=0", "VTODO");
    row("DTSTART;VALUE=DATE:20020306", "20020306T000000 20020306T235900 notime=1 display=0", "VTODO");
    row("SUMMARY:undated", " leftOut=1", "VTODO");
    row("DTSTART:20020305T090000", " leftOut=1", "VJOURNAL");
    row("DTSTART:20020305T090000\nSTATUS:CANCELLED", " leftOut=1");
    row("DTSTART:20020305T230000Z\nRRULE:FREQ=WEEKLY;BYDAY=TU", "20020306T010000 20020306T010000 W1 WE #0");
    row("DTSTART:20020305T230000Z\nRRULE:FREQ=MONTHLY;BYMONTHDAY=5",
        "20020306T010000 20020306T010000 simplified=1");
    row("DTSTART:20020305T090000\nRRULE:FREQ=DAILY\nEND:VEVENT\nBEGIN:VEVENT\nUID:1\n"
        "RECURRENCE-ID:20020307T090000\nDTSTART:20020307T140000",
        "20020305T090000 20020305T090000; 20020307T140000 20020307T140000 simplified=1");

    const auto tuesday = [&row](const QByteArray &lines, const QByteArray &expected) {
        row(QByteArray("DTSTART:20020305T090000\nDTEND:20020305T100000\n" + lines),
            QByteArray("20020305T090000 20020305T100000" + expected).constData());
    };
    tuesday("CLASS:CONFIDENTIAL\nTRANSP:TRANSPARENT", " access=2 display=2");
    tuesday("STATUS:TENTATIVE\nX-DELMAST-DISPLAY:nonsense", " display=3");
    const QByteArray alarm = "BEGIN:VALARM\nACTION:DISPLAY\nDESCRIPTION:x\nTRIGGER%1\nEND:VALARM";
    tuesday(QByteArray(alarm).replace("%1", ";RELATED=END:-PT90M"), " reminder=30");
    tuesday(QByteArray(alarm).replace("%1", ";VALUE=DATE-TIME:20020305T063000Z"), " reminder=30");
    tuesday("ORGANIZER;CN=\"Boss, The\":mailto:boss@example.org\n"
            "ATTENDEE;CN=Ann;PARTSTAT=DECLINED;ROLE=OPT-PARTICIPANT:mailto:ann@example.org\n"
            "ATTENDEE;CUTYPE=ROOM;PARTSTAT=ACCEPTED:mailto:room@example.org",
            " Ann<ann@example.org>0/2/1/1 room@example.org<room@example.org>0/4/2/2 "
            "Boss, The<boss@example.org>0/4/0/1");
    tuesday("RRULE:FREQ=DAILY;UNTIL=20020310T085959", " D1 20020310T000000");
    tuesday("RRULE:FREQ=WEEKLY;BYDAY=MO,TU\nEXDATE:20020311T090000", " W1 MO TU #0");
    tuesday("RRULE:FREQ=WEEKLY;BYDAY=MO,TU", " W1 MO TU #0; 20020311T090000 20020311T100000 singles=1");
    tuesday("RRULE:FREQ=WEEKLY;BYDAY=TU,TH;COUNT=6",
            " W1 TU TH #5; 20020307T090000 20020307T100000 singles=1");
    tuesday("RRULE:FREQ=WEEKLY;BYDAY=TU,WE,TH;COUNT=2", "; 20020306T090000 20020306T100000 singles=1");
    tuesday("RRULE:FREQ=WEEKLY;BYDAY=TU,WE,TH;UNTIL=20020306T230000",
            "; 20020306T090000 20020306T100000 singles=1");
    tuesday("RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=1TU", " MP12 1+ TU #0");
    for (const char *rule :
         {"HOURLY;INTERVAL=2", "DAILY;BYHOUR=9,12", "DAILY;BYMONTH=3", "MONTHLY;BYMONTHDAY=5,10",
          "MONTHLY;BYDAY=1TU,1TH", "MONTHLY;BYDAY=-2TU", "YEARLY;BYYEARDAY=64", "YEARLY;BYWEEKNO=10",
          "DAILY\nEXDATE:20020308T090000", "WEEKLY\nRDATE:20020308T090000", "DAILY\nRRULE:FREQ=WEEKLY"})
        tuesday(QByteArray("RRULE:FREQ=") + rule, " simplified=1");

    // What only we can express counts until somebody changes what it refines.
    VelEntry own = plainEvent();
    own.notime = true;
    own.display = VelEntry::NoDisplay;
    own.accounts = {VelAccount(QStringLiteral("P"), QStringLiteral("p@a.org"), 5)};
    own.rule = {VelRecurrenceRule::Daily, 1, {}, 0, QDate(2002, 4, 1), 2};
    const auto changed = [&own](const char *before, const char *after, const char *expected) {
        QTest::newRow(after) << written({own}).replace(before, after) << QString::fromLatin1(expected);
    };
    changed("OPAQUE", "TRANSPARENT",
            "20020305T090500 20020305T100000 notime=1 display=2 D1 20020401T000000 P<p@a.org>5/0/0/0");
    changed("NEEDS-ACTION", "ACCEPTED",
            "20020305T090500 20020305T100000 notime=1 display=0 D1 20020401T000000 P<p@a.org>0/4/0/1");
    changed("UNTIL=20020306", "UNTIL=20020308",
            "20020305T090500 20020305T100000 notime=1 display=0 D1 20020309T000000 P<p@a.org>5/0/0/0");
}

void VelICalendarTest::shouldReadWhatOthersWrite()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);

    QCOMPARE(described(VelICalendar::read(text, TwoHoursEast)), expected);
}

void VelICalendarTest::shouldSurviveHostileText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("leftOut");
    QTest::addColumn<bool>("isCut");

    const QByteArray text = written({plainEvent(), plainEvent()});
    QTest::newRow("cut off") << text.left(text.lastIndexOf("DTSTART")) << 1 << 1 << false;
    QTest::newRow("cut off in the first entry") << text.left(text.indexOf("DTSTART")) << 0 << 1 << false;
    QTest::newRow("garbage") << QByteArray(text.left(80) + QByteArray(999, '\xff')) << 0 << 0 << false;
    QTest::newRow("too big") << QByteArray(text + QByteArray(VelICalendar::MaximumSize, '\n')) << 0 << 0
                             << false;
    QTest::newRow("older version") << VelVCalendar::asvCalendar(plainEvent(), 1, true).toUtf8() << 0 << 0
                                   << false;
    const auto row = [](const char *name, const QByteArray &filling, int entries = 1, bool isCut = true) {
        QTest::newRow(name) << calendarWith("DTSTART:20020305T090000\n" + filling + '\n') << entries << 0
                            << isCut;
    };
    const int many = 200000; // so many that whatever takes the square of it does not end in time
    row("long line", "SUMMARY:" + QByteArray(2 << 20, 'x'));
    row("exceptions", "RRULE:FREQ=DAILY\n" + QByteArray("EXDATE:20010101T000000\n").repeated(many));
    row("attendees", QByteArray("ATTENDEE:mailto:a@example.org\n").repeated(many));
    row("parameters", "SUMMARY;X=\":\"" + QByteArray(";A=B").repeated(many) + ":x");
    row("weekdays", "RRULE:FREQ=DAILY;BYDAY=MO" + QByteArray(",MO").repeated(many));
    row("depth", QByteArray("BEGIN:X-A\n").repeated(many) + QByteArray("END:X-A\n").repeated(many));
    row("alarms", QByteArray("BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\nEND:VALARM\n").repeated(many));
    row("titles", QByteArray("SUMMARY:x\n").repeated(many));
    row("completed long ago",
        "END:VEVENT\nBEGIN:VTODO\nUID:2\nRRULE:FREQ=SECONDLY\nDTSTART:19000101T000000\n"
        "COMPLETED:19000101T000000Z\nEND:VTODO\nBEGIN:VEVENT\nUID:1\nDTSTART:20020305T090000",
        2, false);
    QByteArray days;
    QByteArray zones;
    constexpr int someThousand = 10000;
    for (int i = 0; i < someThousand; ++i) {
        const QByteArray number = QByteArray::number(i);
        days += "END:VEVENT\nBEGIN:VEVENT\nUID:1\nDTSTART:20020305T090000\nRECURRENCE-ID:"
            + QDate(2002, 3, 5).addDays(i).toString(QStringLiteral("yyyyMMdd")).toLatin1() + "T090000\n";
        zones += "END:VEVENT\n"
            + zoneNamed(number, i % 2 == 0 ? "FREQ=DAILY" : "FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10")
            + "BEGIN:VEVENT\nDTSTART;TZID=" + number + ":20020305T090000\n";
    }
    row("days of one series", days, someThousand + 1, false);
    row("time zones", zones, someThousand + 1);
}

void VelICalendarTest::shouldSurviveHostileText()
{
    QFETCH(QByteArray, text);
    QFETCH(int, entries);
    QFETCH(int, leftOut);

    const VelForeignContent result = VelICalendar::read(text);
    QCOMPARE(int(result.entries.size()), entries);
    QCOMPARE(result.leftOut, leftOut);
    QTEST(result.passedOver > 0, "isCut");
}

void VelICalendarTest::shouldSurviveRandomDamage()
{
    VelRandomEntry random(3);
    std::vector<VelEntry> entries(5);
    std::generate(entries.begin(), entries.end(), [&random] { return random.entry(); });
    const QByteArray text = written(entries);
    const int size = static_cast<int>(text.size());
    for (int round = 0; round < 200; ++round) {
        QByteArray changed = text.left(round % 2 == 0 ? size : random.number(1, size));
        for (int i = random.number(0, 8); i > 0; --i)
            changed[random.number(0, static_cast<int>(changed.size()) - 1)] =
                static_cast<char>(random.number(1, 255));
        const VelForeignContent result = VelICalendar::read(changed);
        for (const auto &entry : result.entries) {
            QVERIFY(entry->isValid() && entry->getStart() <= entry->getEnd());
            entry->updRecurrence(Today);
        }
    }
}

QTEST_GUILESS_MAIN(VelICalendarTest)

#include "velicalendartest.moc"

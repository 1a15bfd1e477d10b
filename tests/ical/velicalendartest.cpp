// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendar.h"
#include "formats/velvcalendar.h"
#include "ical/velrandomentry.h"

#include <QLoggingCategory>
#include <QTest>

namespace
{
const QTimeZone TwoHoursEast(2 * 3600);
const QDate Today(2010, 1, 1);

VelEntry plainEvent()
{
    VelEntry entry(7, VelEntry::Event, {QDate(2002, 3, 5), QTime(9, 5)}, {QDate(2002, 3, 5), QTime(10, 0)});
    entry.setTitle(QStringLiteral("Meeting"));
    entry.access = VelEntry::Public;
    entry.display = VelEntry::Busy;
    return entry;
}

VelAccount person(quint32 id, int status, int attendee = VelAccount::RequiredAttendee)
{
    VelAccount account(QStringLiteral("Person %1").arg(id), QStringLiteral("p%1@example.org").arg(id), id);
    account.type = VelAccount::Person;
    account.status = status;
    account.attendee = attendee;
    return account;
}

QByteArray written(const std::vector<VelEntry> &entries)
{
    VelEntryList list;
    for (const VelEntry &entry : entries)
        list.emplace_back(&entry);
    return VelICalendar::write(list, 1, Today);
}

/** The text's lines, put together again where they were folded. */
QList<QByteArray> linesOf(QByteArray text)
{
    return text.replace("\r\n ", "").replace("\r\n", "\n").split('\n');
}

QByteArray calendarWith(const QByteArray &lines, const QByteArray &component = "VEVENT")
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\nBEGIN:" + component + "\r\nUID:1\r\n" + lines
        + "END:" + component + "\r\nEND:VCALENDAR\r\n";
}

VelEntry readOne(const QByteArray &text)
{
    const VelICalendar::Result result = VelICalendar::read(text, TwoHoursEast);
    return result.entries.size() == 1 ? *result.entries.front() : VelEntry();
}

VelEntry asCarried(const VelEntry &entry)
{
    VelEntry carried(entry);
    carried.localid = 0;
    carried.globalid = 0;
    carried.dirty = 1;
    return carried;
}
} // namespace

class VelICalendarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void shouldWriteEveryField_data();
    void shouldWriteEveryField();
    void shouldAddOwnPropertiesOnlyWhereNeeded();
    void shouldGiveTheSameEntryTheSameId();
    void shouldLeaveOutWhatIsNoEntry();
    void shouldReadBackRandomEntries();
    void shouldReadBackTimesThatDaylightSavingSkips();
    void shouldIgnoreOwnPropertiesThatAreOutOfDate_data();
    void shouldIgnoreOwnPropertiesThatAreOutOfDate();
    void shouldReadForeignTimes_data();
    void shouldReadForeignTimes();
    void shouldReadForeignFields_data();
    void shouldReadForeignFields();
    void shouldReadForeignAttendees();
    void shouldCountWhatItLeavesOut();
    void shouldTellVersionsApart_data();
    void shouldTellVersionsApart();
    void shouldKeepWholeEntriesOfTruncatedText();
    void shouldSurviveBrokenText();
    void shouldReadHugeInputInBoundedTime_data();
    void shouldReadHugeInputInBoundedTime();
};

void VelICalendarTest::initTestCase()
{
    // The toolkit complains of broken input at length.
    QLoggingCategory::setFilterRules(QStringLiteral("kf.calendarcore=false"));
}

void VelICalendarTest::shouldWriteEveryField_data()
{
    QTest::addColumn<QByteArray>("line");

    for (const char *line :
         {"SUMMARY:Budget\\; 2002\\, first", "DESCRIPTION:One\\nTwo", "DTSTART:20020305T090500",
          "DTEND:20020305T100000", "CLASS:PRIVATE", "STATUS:TENTATIVE", "PRIORITY:9", "TRIGGER:-PT15M",
          "ACTION:DISPLAY", "ORGANIZER;CN=Person 1:MAILTO:p1@example.org",
          "RRULE:FREQ=WEEKLY;COUNT=5;INTERVAL=2;BYDAY=TU"})
        QTest::newRow(line) << QByteArray(line);
    QTest::newRow("attendee") << QByteArray("ATTENDEE;CN=B;RSVP=FALSE;PARTSTAT=DECLINED;ROLE=OPT-PARTICIPANT;"
                                            "CUTYPE=INDIVIDUAL;X-UID=2:mailto:b@a.org");
}

void VelICalendarTest::shouldWriteEveryField()
{
    QFETCH(QByteArray, line);

    VelEntry entry = plainEvent();
    entry.setTitle(QStringLiteral("Budget; 2002, first"));
    entry.setDescription(QStringLiteral("One\nTwo"));
    entry.access = VelEntry::Private;
    entry.display = VelEntry::TentativeTime;
    entry.priority = 9;
    entry.reminder = 15;
    entry.accounts = {person(1, VelAccount::Accepted),
                      person(2, VelAccount::Declined, VelAccount::OptionalAttendee)};
    entry.accounts[1].name = QStringLiteral("B");
    entry.accounts[1].email = QStringLiteral("b@a.org");
    entry.rule = {VelRecurrenceRule::Weekly, 2, {2}, 0, {}, 5};
    const QByteArray text = written({entry});
    QVERIFY2(linesOf(text).contains(line), text.constData());
}

void VelICalendarTest::shouldAddOwnPropertiesOnlyWhereNeeded()
{
    VelEntry entry = plainEvent();
    entry.rule = {VelRecurrenceRule::Monthly, 1, {5}, 0, {}, 0};
    entry.reminder = 10;
    QVERIFY(!written({entry}).contains("X-DELMAST"));
    entry.display = VelEntry::NoDisplay;
    QCOMPARE(written({entry}).count("X-DELMAST"), 1);
    QVERIFY(written({entry}).contains("X-DELMAST-DISPLAY:"));
}

void VelICalendarTest::shouldGiveTheSameEntryTheSameId()
{
    const auto uids = [](const std::vector<VelEntry> &entries) {
        QList<QByteArray> lines = linesOf(written(entries));
        lines.erase(std::remove_if(lines.begin(), lines.end(),
                                   [](const auto &line) { return !line.startsWith("UID:"); }),
                    lines.end());
        return lines;
    };
    const VelEntry entry = plainEvent();
    const QList<QByteArray> twice = uids({entry, entry});
    QCOMPARE(int(twice.size()), 2);
    QVERIFY(twice.at(0) != twice.at(1));
    QCOMPARE(uids({entry}).first(), twice.first());
}

void VelICalendarTest::shouldLeaveOutWhatIsNoEntry()
{
    VelEntry notice = plainEvent();
    notice.type = VelEntry::Deleted;
    VelEntry undated = plainEvent();
    undated.setStart({});
    VelEntry series = plainEvent();
    series.rule = {VelRecurrenceRule::Daily, 1, {}, 0, {}, 5};
    series.updRecurrence(Today);
    const VelEntryList list{VelEntryRef(&notice), VelEntryRef(&undated), VelEntryRef(&series),
                            VelEntryRef(&series, 1, series.getStart().julianDay() + 1)};
    QCOMPARE(VelICalendar::write(list, 1, Today).count("BEGIN:VEVENT"), 1);
}

void VelICalendarTest::shouldReadBackRandomEntries()
{
    VelRandomEntry random(20020305);
    std::vector<VelEntry> entries;
    for (int i = 0; i < 1000; ++i) {
        entries.push_back(random.entry());
        entries.back().setTitle(QString::number(i) + QLatin1Char(' ') + entries.back().getTitle());
        if (random.chance(20))
            entries.back().setDescription(QStringLiteral(" one\r\ntwo\rthree\x01\t"));
    }
    const VelICalendar::Result result = VelICalendar::read(written(entries));
    QVERIFY(result.isCalendar);
    QCOMPARE(result.leftOut, 0);
    QCOMPARE(result.simplified, 0);
    QCOMPARE(result.entries.size(), entries.size());
    for (const auto &read : result.entries) {
        const int number = read->getTitle().section(QLatin1Char(' '), 0, 0).toInt();
        const VelEntry &entry = entries.at(static_cast<std::size_t>(number));
        QVERIFY2(*read == asCarried(entry), written({entry}).constData());
    }
}

void VelICalendarTest::shouldReadBackTimesThatDaylightSavingSkips()
{
    // In the time zone of the tests, clocks go from 3:00 to 4:00 on that night.
    const QDate night(2026, 3, 29);
    for (int minute = 150; minute < 260; minute += 10) {
        VelEntry entry = plainEvent();
        entry.type = minute % 30 == 0 ? VelEntry::Todo : VelEntry::Event;
        entry.setStart({night, QTime(0, 0).addSecs(60 * minute)});
        entry.setEnd(entry.getStart().addSecs(minute % 20 == 0 ? 0 : 3600));
        if (minute % 60 == 0)
            entry.rule = {VelRecurrenceRule::Daily, 1, {}, 0, {}, 5};
        const VelICalendar::Result result = VelICalendar::read(written({entry}));
        QCOMPARE(int(result.entries.size()), 1);
        QVERIFY2(*result.entries.front() == asCarried(entry), written({entry}).constData());
    }
}

void VelICalendarTest::shouldIgnoreOwnPropertiesThatAreOutOfDate_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    QTest::newRow("time") << QByteArray("DTSTART;VALUE=DATE:20020305")
                          << QByteArray("DTSTART;VALUE=DATE:20020304");
    QTest::newRow("transparency") << QByteArray("TRANSP:OPAQUE") << QByteArray("TRANSP:TRANSPARENT");
    QTest::newRow("answer") << QByteArray("PARTSTAT=TENTATIVE") << QByteArray("PARTSTAT=ACCEPTED");
    QTest::newRow("rule") << QByteArray("UNTIL=20020306") << QByteArray("UNTIL=20020308");
}

void VelICalendarTest::shouldIgnoreOwnPropertiesThatAreOutOfDate()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);

    VelEntry entry = plainEvent();
    entry.notime = true;
    entry.display = VelEntry::NoDisplay;
    entry.accounts = {person(5, VelAccount::Tentative)};
    entry.rule = {VelRecurrenceRule::Daily, 1, {}, 0, QDate(2002, 4, 1), 2};
    QByteArray text = written({entry});
    QVERIFY2(text.contains(before), text.constData());
    const VelEntry unchanged = readOne(text);
    QVERIFY(unchanged == asCarried(entry));

    const VelEntry changed = readOne(text.replace(before, after));
    const int differences = int(changed.getStart() != unchanged.getStart())
        + int(changed.display != unchanged.display)
        + int(changed.accounts.value(0).id != unchanged.accounts.value(0).id)
        + int(changed.rule != unchanged.rule);
    QCOMPARE(differences, 1);
    QCOMPARE(changed.getStart().time() == QTime(0, 0), before.startsWith("DTSTART"));
    QCOMPARE(changed.display == VelEntry::Free, before.startsWith("TRANSP"));
    QCOMPARE(changed.accounts.value(0).id == 0, before.startsWith("PARTSTAT"));
    QCOMPARE(changed.rule.occurenddate == QDate(2002, 3, 9), before.startsWith("UNTIL"));
}

void VelICalendarTest::shouldReadForeignTimes_data()
{
    QTest::addColumn<QByteArray>("component");
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("times");
    QTest::addColumn<bool>("notime");

    const auto row = [](const char *name, const char *component, const char *lines, const char *times,
                        bool notime) {
        QTest::newRow(name) << QByteArray(component) << QByteArray(lines) << QString::fromLatin1(times)
                            << notime;
    };
    row("floating", "VEVENT", "DTSTART:20020305T090000\nDTEND:20020305T093000\n",
        "20020305T090000 20020305T093000", false);
    row("UTC", "VEVENT", "DTSTART:20020305T230000Z\nDURATION:PT30M\n", "20020306T010000 20020306T013000",
        false);
    row("named zone", "VEVENT", "DTSTART;TZID=America/New_York:20020305T090000\n",
        "20020305T160000 20020305T160000", false);
    row("dates", "VEVENT", "DTSTART;VALUE=DATE:20020305\nDTEND;VALUE=DATE:20020307\n",
        "20020305T000000 20020306T235900", true);
    row("one date", "VEVENT", "DTSTART;VALUE=DATE:20020305\n", "20020305T000000 20020305T235900", true);
    row("end before start", "VEVENT", "DTSTART:20020305T090000\nDTEND:20020305T080000\n",
        "20020305T090000 20020305T090000", false);
    row("to-do", "VTODO", "DTSTART:20020305T090000\nDUE:20020306T120000Z\n",
        "20020305T090000 20020306T140000", false);
    row("to-do, due only", "VTODO", "DUE;VALUE=DATE:20020306\n", "20020306T000000 20020306T235900", true);
    row("to-do, start only", "VTODO", "DTSTART;VALUE=DATE:20020306\n", "20020306T000000 20020306T235900",
        true);
}

void VelICalendarTest::shouldReadForeignTimes()
{
    QFETCH(QByteArray, component);
    QFETCH(QByteArray, lines);
    QFETCH(QString, times);
    QFETCH(bool, notime);

    const VelEntry entry = readOne(calendarWith(lines, component));
    QCOMPARE(VelVCalendar::toISO8601(entry.getStart()) + QLatin1Char(' ')
                 + VelVCalendar::toISO8601(entry.getEnd()),
             times);
    QCOMPARE(entry.notime, notime);
    QCOMPARE(entry.dirty, 1);
}

void VelICalendarTest::shouldReadForeignFields_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("fields"); // access, display, priority, reminder

    const auto row = [](const QByteArray &lines, const char *fields) {
        QTest::newRow(QByteArray(lines).replace('\n', ' ').constData())
            << lines << QString::fromLatin1(fields);
    };
    const QByteArray alarm = "BEGIN:VALARM\nACTION:DISPLAY\nDESCRIPTION:x\n%1\nEND:VALARM";
    row("X-NOTHING:1", "1 1 0 0");
    row("CLASS:PRIVATE", "2 1 0 0");
    row("CLASS:CONFIDENTIAL", "2 1 0 0");
    row("TRANSP:TRANSPARENT", "1 2 0 0");
    row("STATUS:TENTATIVE", "1 3 0 0");
    row("PRIORITY:7", "1 1 7 0");
    row(QByteArray(alarm).replace("%1", "TRIGGER:-PT15M"), "1 1 0 15");
    row(QByteArray(alarm).replace("%1", "TRIGGER:-P1D"), "1 1 0 1440");
    row(QByteArray(alarm).replace("%1", "TRIGGER:PT0S"), "1 1 0 1");
    row(QByteArray(alarm).replace("%1", "TRIGGER:PT5M"), "1 1 0 1");
    row(QByteArray(alarm).replace("%1", "TRIGGER;RELATED=END:-PT90M"), "1 1 0 30");
    row(QByteArray(alarm).replace("%1", "TRIGGER;VALUE=DATE-TIME:20020305T063000Z"), "1 1 0 30");
    row("X-DELMAST-DISPLAY:nonsense", "1 1 0 0");
}

void VelICalendarTest::shouldReadForeignFields()
{
    QFETCH(QByteArray, lines);
    QFETCH(QString, fields);

    const VelEntry entry =
        readOne(calendarWith("DTSTART:20020305T090000\nDTEND:20020305T100000\n" + lines + "\nSUMMARY:T\n"));
    QCOMPARE(entry.getTitle(), QStringLiteral("T"));
    QCOMPARE(QStringLiteral("%1 %2 %3 %4")
                 .arg(entry.access)
                 .arg(entry.display)
                 .arg(entry.priority)
                 .arg(entry.reminder),
             fields);
}

void VelICalendarTest::shouldReadForeignAttendees()
{
    const VelEntry entry =
        readOne(calendarWith("DTSTART:20020305T090000\nORGANIZER;CN=\"Boss, The\":mailto:boss@example.org\n"
                             "ATTENDEE;CN=Ann;PARTSTAT=DECLINED;ROLE=OPT-PARTICIPANT:mailto:ann@example.org\n"
                             "ATTENDEE;CUTYPE=ROOM;PARTSTAT=ACCEPTED:mailto:room@example.org\n"));
    QCOMPARE(int(entry.accounts.size()), 3);
    const VelAccount &ann = entry.accounts.at(0);
    QVERIFY(ann == VelAccount(QStringLiteral("Ann"), QStringLiteral("ann@example.org"), 0));
    QCOMPARE(ann.status, int(VelAccount::Declined));
    QCOMPARE(ann.attendee, int(VelAccount::OptionalAttendee));
    const VelAccount &room = entry.accounts.at(1);
    QCOMPARE(room.name, QStringLiteral("room@example.org"));
    QCOMPARE(room.type, int(VelAccount::Resource));
    QCOMPARE(room.attendee, int(VelAccount::ResourceAttendee));
    const VelAccount &boss = entry.accounts.at(2);
    QVERIFY(boss == VelAccount(QStringLiteral("Boss, The"), QStringLiteral("boss@example.org"), 0));
    QCOMPARE(boss.status, int(VelAccount::Accepted));
}

void VelICalendarTest::shouldCountWhatItLeavesOut()
{
    const VelICalendar::Result result =
        VelICalendar::read(calendarWith("DTSTART:20020305T090000\nEND:VEVENT\n"
                                        "BEGIN:VTODO\nUID:2\nSUMMARY:undated\nEND:VTODO\n"
                                        "BEGIN:VJOURNAL\nUID:3\nDTSTART:20020305T090000\nEND:VJOURNAL\n"
                                        "BEGIN:VEVENT\nUID:4\nDTSTART:20020305T090000\nSTATUS:CANCELLED\n"));
    QVERIFY(result.isCalendar);
    QCOMPARE(int(result.entries.size()), 1);
    QCOMPARE(result.leftOut, 3);
}

void VelICalendarTest::shouldTellVersionsApart_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isICalendar");

    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("2.0") << calendarWith("DTSTART:20020305T090000\n") << true;
    QTest::newRow("1.0") << VelVCalendar::asvCalendar(plainEvent(), 1, true).toUtf8() << false;
    QTest::newRow("lower case, behind others")
        << QByteArray("begin:vcalendar\nX-A:b\nversion: 2.0\n") << true;
    QTest::newRow("no version") << QByteArray("BEGIN:VCALENDAR\nBEGIN:VEVENT\nVERSION:2.0\n") << false;
    QTest::newRow("no calendar") << QByteArray("VERSION:2.0\n") << false;
}

void VelICalendarTest::shouldTellVersionsApart()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, isICalendar);
    QCOMPARE(VelICalendar::isICalendar(text), isICalendar);
}

void VelICalendarTest::shouldKeepWholeEntriesOfTruncatedText()
{
    VelEntry second = plainEvent();
    second.setStart(second.getStart().addDays(-1));
    const QByteArray text = written({plainEvent(), second});
    const VelICalendar::Result result = VelICalendar::read(text.left(text.lastIndexOf("DTSTART")));
    QVERIFY(result.isCalendar);
    QCOMPARE(int(result.entries.size()), 1);
    QVERIFY(*result.entries.front() == asCarried(plainEvent()));
    QCOMPARE(result.leftOut, 1);
}

void VelICalendarTest::shouldSurviveBrokenText()
{
    VelRandomEntry random(3);
    std::vector<VelEntry> entries(5);
    std::generate(entries.begin(), entries.end(), [&random] { return random.entry(); });
    const QByteArray text = written(entries);
    const int size = static_cast<int>(text.size());
    for (int round = 0; round < 300; ++round) {
        QByteArray changed = round % 2 == 0 ? text : text.left(random.number(0, size));
        for (int i = random.number(0, 8); i > 0 && !changed.isEmpty(); --i)
            changed[random.number(0, static_cast<int>(changed.size()) - 1)] =
                static_cast<char>(random.number(1, 255));
        const VelICalendar::Result result = VelICalendar::read(changed);
        for (const auto &entry : result.entries) {
            QVERIFY(entry->isValid());
            QVERIFY(entry->getStart() <= entry->getEnd());
            entry->updRecurrence(Today);
        }
    }
}

void VelICalendarTest::shouldReadHugeInputInBoundedTime_data()
{
    QTest::addColumn<QByteArray>("filling");

    QTest::newRow("long line") << "SUMMARY:" + QByteArray(8 << 20, 'x') + "\n";
    QTest::newRow("folded") << "SUMMARY:x" + QByteArray("\n xxxxxxxxxxxxxxxx").repeated(100000) + "\n";
    const int many = 500000;
    const QByteArray rule = "RRULE:FREQ=DAILY;BYDAY=MO";
    QTest::newRow("exceptions") << "RRULE:FREQ=DAILY\n"
            + QByteArray("EXDATE:20010101T000000\n").repeated(many);
    QTest::newRow("exceptions on one line")
        << "RRULE:FREQ=DAILY\nEXDATE:20010101T000000" + QByteArray(",20010101T000000").repeated(many) + "\n";
    QTest::newRow("attendees") << QByteArray("ATTENDEE:mailto:a@example.org\n").repeated(many);
    QTest::newRow("parameters") << "SUMMARY" + QByteArray(";A=B").repeated(many) + ":x\n";
    QTest::newRow("parameters behind a quoted colon")
        << "SUMMARY;X=\":\"" + QByteArray(";A=B").repeated(many) + ":x\n";
    QTest::newRow("weekdays") << rule + QByteArray(",MO").repeated(many) + "\n";
    QTest::newRow("categories") << "CATEGORIES:a" + QByteArray(",a").repeated(many) + "\n";
    QTest::newRow("depth") << QByteArray("BEGIN:X-A\n").repeated(many)
            + QByteArray("END:X-A\n").repeated(many);
    QTest::newRow("completed long ago") << QByteArray(
        "END:VEVENT\nBEGIN:VTODO\nUID:2\nRRULE:FREQ=SECONDLY\nDTSTART:19000101T000000\n"
        "COMPLETED:19000101T000000Z\nEND:VTODO\nBEGIN:VEVENT\nUID:1\nDTSTART:20020305T090000\n");
    QTest::newRow("rule without days") << QByteArray("RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30\n");
    QTest::newRow("rule of seconds") << QByteArray("RRULE:FREQ=SECONDLY\n");
    QTest::newRow("far count") << QByteArray("RRULE:FREQ=DAILY;COUNT=2147483647;INTERVAL=32767\n");
    QTest::newRow("far end") << QByteArray("RRULE:FREQ=DAILY;UNTIL=99991231T235959\n");
}

void VelICalendarTest::shouldReadHugeInputInBoundedTime()
{
    QFETCH(QByteArray, filling);

    const VelICalendar::Result result =
        VelICalendar::read(calendarWith("DTSTART:20020305T090000\n" + filling));
    QVERIFY(result.isCalendar);
    QVERIFY(!result.entries.empty());
    QCOMPARE(result.leftOut, 0);
    QVERIFY(!VelICalendar::read(QByteArray(VelICalendar::MaximumSize + 1, '\n')).isCalendar);
}

QTEST_GUILESS_MAIN(VelICalendarTest)

#include "velicalendartest.moc"

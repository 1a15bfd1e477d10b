// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velvcalendar.h"
#include "ical/velrandomentry.h"

#include <QFile>
#include <QTest>

Q_DECLARE_METATYPE(VelEntry)

namespace
{
const QTimeZone TwoHoursEast(2 * 3600);

VelDateTime at(int year, int month, int day, int hour = 0, int minute = 0)
{
    return {QDate(year, month, day), QTime(hour, minute)};
}

VelEntry plainEvent()
{
    VelEntry entry(7, VelEntry::Event, at(2002, 3, 5, 9, 5), at(2002, 3, 5, 10, 0));
    entry.setTitle(QStringLiteral("Weekly meeting"));
    return entry;
}

VelEntry fullEvent()
{
    VelEntry entry = plainEvent();
    entry.setTitle(QStringLiteral("Budget: 2002,\nfirst \u20AC"));
    entry.setDescription(QStringLiteral("a=b; rate = 5\nEND:VEVENT\n\n indented\n"));
    entry.access = VelEntry::Private;
    entry.priority = 9;
    entry.reminder = 15;
    entry.user = 3;
    for (quint32 id = 0; id < 4; ++id) {
        VelAccount account(QStringLiteral("Person %1").arg(id), QStringLiteral("p%1@example.org").arg(id),
                           id);
        account.status = static_cast<int>(id) + 1;
        account.attendee = id % 2 == 0 ? VelAccount::RequiredAttendee : VelAccount::OptionalAttendee;
        entry.accounts.append(account);
    }
    entry.rule = {VelRecurrenceRule::Weekly, 2, {1, 4}, 0, {}, 5};
    return entry;
}

VelEntry todo()
{
    VelEntry entry(8, VelEntry::Todo, at(2002, 3, 5, 0, 0), at(2002, 3, 8, 23, 59));
    entry.setTitle(QStringLiteral("Write report"));
    entry.access = VelEntry::Public;
    entry.complete = true;
    return entry;
}

/** What is left of the entry when all is gone that the text has no room for. */
VelEntry asCarried(const VelEntry &entry)
{
    VelEntry carried(entry);
    carried.localid = 0;
    carried.globalid = 0;
    carried.user = 0;
    carried.dirty = 1;
    carried.display = VelEntry::NoDisplay;
    const bool fillsDays = entry.getStart().time() == QTime(0, 0) && entry.getEnd().time() == QTime(23, 59);
    carried.notime = entry.type == VelEntry::Todo || fillsDays;
    QString title = entry.getTitle();
    carried.setTitle(title.replace(QLatin1Char('\n'), QLatin1Char(' ')));
    for (VelAccount &account : carried.accounts) {
        account.id = 0;
        account.type = VelAccount::NoType;
        account.status = account.status == 1 ? 0 : account.status;
        account.attendee = account.attendee == VelAccount::ResourceAttendee ? 0 : account.attendee;
    }
    return carried;
}

QByteArray written(const VelEntry &entry)
{
    return VelVCalendar::asvCalendar(entry, 3, true).toUtf8();
}

QByteArray file(const QString &name)
{
    QFile data(QStringLiteral(TEST_DATA_DIR "/") + name);
    return data.open(QIODevice::ReadOnly) ? data.readAll() : QByteArray();
}
} // namespace

class VelVCalendarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteGoldenText_data();
    void shouldWriteGoldenText();
    void shouldWriteRuleLine_data();
    void shouldWriteRuleLine();
    void shouldWriteNothingForDeletionNotices();
    void shouldLeaveFrameToCaller();
    void shouldNameOwnerByEntryThenByCalendar_data();
    void shouldNameOwnerByEntryThenByCalendar();
    void shouldLeaveOutReminderBeyondLastYear();
    void shouldKeepEverySecondOfDateTimes();
    void shouldRefuseImpossibleDateTimes_data();
    void shouldRefuseImpossibleDateTimes();
    void shouldDecodeWhatItEncodes_data();
    void shouldDecodeWhatItEncodes();
    void shouldReadBackRandomEntries();
    void shouldCountBrokenEntries_data();
    void shouldCountBrokenEntries();
    void shouldKeepWholeEntriesOfTruncatedText();
    void shouldSurviveChangedBytes();
    void shouldReadHugeInputInLinearTime_data();
    void shouldReadHugeInputInLinearTime();
};

void VelVCalendarTest::shouldWriteGoldenText_data()
{
    QTest::addColumn<VelEntry>("entry");
    QTest::addColumn<QString>("golden");

    QTest::newRow("event") << plainEvent() << QStringLiteral("event.vcs");
    QTest::newRow("event with everything") << fullEvent() << QStringLiteral("event-full.vcs");
    QTest::newRow("to-do") << todo() << QStringLiteral("todo.vcs");
}

void VelVCalendarTest::shouldWriteGoldenText()
{
    QFETCH(VelEntry, entry);
    QFETCH(QString, golden);

    QCOMPARE(written(entry), file(golden));
    const auto read = VelVCalendar::fromvCalendar(file(golden), TwoHoursEast);
    QVERIFY(read);
    QVERIFY(*read == asCarried(entry));
}

void VelVCalendarTest::shouldWriteRuleLine_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("every");
    QTest::addColumn<QVector<int>>("days");
    QTest::addColumn<int>("position");
    QTest::addColumn<QDate>("end");
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("line");

    const QVector<int> none;
    const QDate open;
    QTest::newRow("daily, open") << 1 << 3 << none << 0 << open << 0 << QByteArray("D3 #0\n");
    QTest::newRow("weekly, counted") << 2 << 2 << QVector<int>{1, 4} << 0 << open << 5
                                     << QByteArray("W2 MO TH #5\n");
    QTest::newRow("last Friday") << 3 << 1 << QVector<int>{5} << -1 << open << 0
                                 << QByteArray("MP1 1- FR #0\n");
    QTest::newRow("third Sunday") << 3 << 2 << QVector<int>{7} << 3 << open << 4
                                  << QByteArray("MP2 3+ SU #4\n");
    QTest::newRow("day of month") << 3 << 1 << QVector<int>{31} << 0 << open << 0
                                  << QByteArray("MD1 31 #0\n");
    QTest::newRow("yearly") << 4 << 1 << none << 0 << open << 0 << QByteArray("YD1 64 #0\n");
    QTest::newRow("end date wins") << 1 << 1 << none << 0 << QDate(2002, 3, 10) << 7
                                   << QByteArray("D1 20020310T000000\n");
    QTest::newRow("no rule") << 0 << 1 << none << 0 << open << 0 << QByteArray();
    QTest::newRow("unknown kind") << 9 << 1 << none << 0 << open << 0 << QByteArray();
    QTest::newRow("weekly without days") << 2 << 1 << none << 0 << open << 0 << QByteArray();
    QTest::newRow("monthly without day") << 3 << 1 << none << 0 << open << 0 << QByteArray();
}

void VelVCalendarTest::shouldWriteRuleLine()
{
    QFETCH(int, type);
    QFETCH(int, every);
    QFETCH(QVector<int>, days);
    QFETCH(int, position);
    QFETCH(QDate, end);
    QFETCH(int, count);
    QFETCH(QByteArray, line);

    VelEntry entry = plainEvent();
    entry.rule = {type, every, days, position, end, count};
    QVERIFY(written(entry).endsWith("DTEND:20020305T100000\n" + line + "END:VEVENT\nEND:VCALENDAR\n"));
}

void VelVCalendarTest::shouldWriteNothingForDeletionNotices()
{
    VelEntry notice = plainEvent();
    notice.type = VelEntry::Deleted;
    QCOMPARE(VelVCalendar::asvCalendar(notice, 3, true), QString());
}

void VelVCalendarTest::shouldLeaveFrameToCaller()
{
    const QString framed = VelVCalendar::asvCalendar(plainEvent(), 3, true);
    const QString bare = VelVCalendar::asvCalendar(plainEvent(), 3, false);
    QVERIFY(bare.startsWith(QLatin1String("BEGIN:VEVENT\n")));
    QCOMPARE(VelVCalendar::vCalendarHead() + bare + VelVCalendar::vCalendarTail(), framed);
}

void VelVCalendarTest::shouldNameOwnerByEntryThenByCalendar_data()
{
    QTest::addColumn<quint32>("entryUser");
    QTest::addColumn<quint32>("calendarUser");
    QTest::addColumn<QByteArray>("owner");

    QTest::newRow("entry's") << 1U << 2U << QByteArray("Person 1");
    QTest::newRow("calendar's") << 0U << 2U << QByteArray("Person 2");
    QTest::newRow("nobody, though an account has no id") << 0U << 0U << QByteArray();
    QTest::newRow("not invited") << 9U << 2U << QByteArray();
}

void VelVCalendarTest::shouldNameOwnerByEntryThenByCalendar()
{
    QFETCH(quint32, entryUser);
    QFETCH(quint32, calendarUser);
    QFETCH(QByteArray, owner);

    VelEntry entry = fullEvent();
    entry.user = entryUser;
    const QByteArray text = VelVCalendar::asvCalendar(entry, calendarUser, true).toUtf8();
    QCOMPARE(text.count("ROLE=OWNER"), owner.isEmpty() ? 0 : 1);
    QCOMPARE(text.count("ROLE=ATTENDEE"), owner.isEmpty() ? 4 : 3);
    if (!owner.isEmpty())
        QVERIFY(text.mid(text.indexOf("ROLE=OWNER")).split('\n').first().contains(':' + owner + " <"));
}

void VelVCalendarTest::shouldLeaveOutReminderBeyondLastYear()
{
    VelEntry entry = plainEvent();
    entry.reminder = std::numeric_limits<quint32>::max();
    QVERIFY(!written(entry).contains("DALARM"));
    entry.reminder = 10;
    QVERIFY(written(entry).contains("\nDALARM:20020305T091500;;1;beep!\n"));
}

void VelVCalendarTest::shouldKeepEverySecondOfDateTimes()
{
    const VelDateTime time(QDate(987, 1, 2), QTime(3, 4, 5));
    QCOMPARE(VelVCalendar::toISO8601(time), QStringLiteral("09870102T030405"));
    QVERIFY(VelVCalendar::fromISO8601("09870102T030405", TwoHoursEast) == time);
    QVERIFY(VelVCalendar::fromISO8601("20020305T233000Z", TwoHoursEast) == at(2002, 3, 6, 1, 30));
    QCOMPARE(VelVCalendar::toISO8601({}), QStringLiteral("00000000T000000"));
}

void VelVCalendarTest::shouldRefuseImpossibleDateTimes_data()
{
    QTest::addColumn<QByteArray>("text");

    for (const char *text :
         {"", "20020305", "20020305T09050", "20020230T090500", "20020305T240000", "00000101T000000",
          "2002-305T090500", "20020305 090500", "-0020305T090500", "2002030xT090500"})
        QTest::newRow(text) << QByteArray(text);
}

void VelVCalendarTest::shouldRefuseImpossibleDateTimes()
{
    QFETCH(QByteArray, text);
    QVERIFY(!VelVCalendar::fromISO8601(text.toStdString(), TwoHoursEast).isValid());
}

void VelVCalendarTest::shouldDecodeWhatItEncodes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoded");

    const auto row = [](const char *text, const char *encoded) {
        QTest::newRow(QByteArray(encoded).replace('\n', "\\n").constData())
            << QString::fromUtf8(text) << QString::fromUtf8(encoded);
    };
    row("", "");
    row("one\ntwo", "one=0A=\ntwo");
    row("\n", "=0A=\n");
    row("2 = 2, x=y", "2 = 2, x=y");
    row("a=b", "a=b");
    row("a=41", "a=3D41");
    row("a=0A=", "a=3D0A=3D");
    row("end=\n=next", "end=3D=0A=\n=next");
    row("==41", "==3D41");
    row("\r\n", "=0D=0A=\n");
    row("=\r", "=3D=0D");
    row("\xC3\xA4\xE2\x82\xAC", "\xC3\xA4\xE2\x82\xAC");
}

void VelVCalendarTest::shouldDecodeWhatItEncodes()
{
    QFETCH(QString, text);
    QFETCH(QString, encoded);

    QCOMPARE(VelVCalendar::encode(text), encoded);
    QCOMPARE(VelVCalendar::decode(encoded), text);
}

void VelVCalendarTest::shouldReadBackRandomEntries()
{
    VelRandomEntry random(20020305);
    std::vector<VelEntry> entries;
    QString text = VelVCalendar::vCalendarHead();
    for (int i = 0; i < 3000; ++i) {
        entries.push_back(random.entry());
        if (random.chance(20))
            entries.back().setDescription(QChar(0xFEFF) + QStringLiteral("marked\rtext\r\n"));
        text += VelVCalendar::asvCalendar(entries.back(), 2, false);
    }
    const VelVCalendar::Result result =
        VelVCalendar::readAll((text + VelVCalendar::vCalendarTail()).toUtf8());
    QCOMPARE(result.leftOut, 0);
    QCOMPARE(result.entries.size(), entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i)
        QVERIFY2(*result.entries[i] == asCarried(entries[i]), written(entries[i]).constData());
}

void VelVCalendarTest::shouldCountBrokenEntries_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("read");
    QTest::addColumn<int>("leftOut");

    const QByteArray good = "BEGIN:VEVENT\nDTSTART:20020305T090500\nEND:VEVENT\n";
    const QByteArray undated = "BEGIN:VTODO\nSUMMARY:x\nEND:VTODO\n";
    const QByteArray open = "BEGIN:VEVENT\nDTSTART:20020305T090500\n";
    QTest::newRow("nothing") << QByteArray() << 0 << 0;
    QTest::newRow("no calendar") << QByteArray("Dear reader,\nEND:VEVENT\n\x00\xFF:;=\n") << 0 << 0;
    QTest::newRow("without frame") << good + good << 2 << 0;
    QTest::newRow("byte order mark") << "\xEF\xBB\xBF" + good << 1 << 0;
    QTest::newRow("no date") << good + undated + good << 2 << 1;
    QTest::newRow("no end at end of text") << good + open << 1 << 1;
    QTest::newRow("no end before next") << open + good << 1 << 1;
    QTest::newRow("no end before end of calendar") << open + "END:VCALENDAR\n" + good << 1 << 1;
    QTest::newRow("wrong end") << open + "END:VTODO\n" + good << 1 << 1;
    QTest::newRow("component without end") << open + "BEGIN:VALARM\nEND:VEVENT\n" + good << 2 << 0;
    QTest::newRow("component without begin") << open + "END:VALARM\nEND:VEVENT\n" + good << 2 << 0;
    QTest::newRow("other components")
        << "BEGIN:VJOURNAL\nDTSTART:20020305T090500\nEND:VJOURNAL\n" + good << 1 << 0;
}

void VelVCalendarTest::shouldCountBrokenEntries()
{
    QFETCH(QByteArray, text);
    QFETCH(int, read);
    QFETCH(int, leftOut);

    const VelVCalendar::Result result = VelVCalendar::readAll(text, TwoHoursEast);
    QCOMPARE(int(result.entries.size()), read);
    QCOMPARE(result.leftOut, leftOut);
}

void VelVCalendarTest::shouldKeepWholeEntriesOfTruncatedText()
{
    const QByteArray first = written(plainEvent());
    const QByteArray text = first + written(fullEvent());
    for (int size = first.size(); size < text.size(); ++size) {
        const VelVCalendar::Result result = VelVCalendar::readAll(text.left(size));
        QVERIFY(!result.entries.empty());
        QVERIFY(*result.entries.front() == asCarried(plainEvent()));
        const int begun = text.left(size).contains("BEGIN:VEVENT\nCATEGORIES:APPOINTMENT\nCLASS:") ? 2 : 1;
        QVERIFY(int(result.entries.size()) + result.leftOut >= begun);
    }
}

void VelVCalendarTest::shouldSurviveChangedBytes()
{
    const QByteArray text = written(fullEvent()) + written(todo());
    VelRandomEntry random(1);
    for (int round = 0; round < 5000; ++round) {
        QByteArray changed = text;
        for (int i = random.number(1, 8); i > 0; --i)
            changed[random.number(0, static_cast<int>(text.size()) - 1)] =
                static_cast<char>(random.number(0, 255));
        const VelVCalendar::Result result = VelVCalendar::readAll(changed);
        for (const auto &entry : result.entries) {
            QVERIFY(entry->isValid());
            QVERIFY(entry->getStart() <= entry->getEnd());
            QVERIFY(entry->priority >= 0 && entry->priority <= 9);
        }
    }
}

void VelVCalendarTest::shouldReadHugeInputInLinearTime_data()
{
    QTest::addColumn<QByteArray>("filling");
    QTest::addColumn<bool>("isWhole");

    const int many = 300000;
    QTest::newRow("one long line") << "SUMMARY:" + QByteArray(40 << 20, 'x') + "\n" << false;
    QTest::newRow("long line of another property") << "X-DATA:" + QByteArray(1 << 20, 'x') + "\n" << true;
    QTest::newRow("soft line breaks") << "DESCRIPTION;QUOTED-PRINTABLE:" + QByteArray("a=\n").repeated(many)
            + "\n" << true;
    QTest::newRow("too many soft line breaks") << "DESCRIPTION;QUOTED-PRINTABLE:"
            + QByteArray(QByteArray(1 << 10, 'a') + "=\n").repeated(20000)
            + "\n" << false;
    QTest::newRow("folded without colon") << "SUMMARY" + QByteArray("\n a").repeated(many) + "\n" << true;
    QTest::newRow("folded with open quote") << "SUMMARY;X=\":" + QByteArray("\n a").repeated(many) + "\n"
                                            << true;
    QTest::newRow("parameters") << "ATTENDEE" + QByteArray(";A=B").repeated(many) + ":x\n" << true;
    QTest::newRow("nested components") << QByteArray("BEGIN:A\n").repeated(many) << true;
    QTest::newRow("carriage returns") << QByteArray("X:1\r").repeated(many) << true;
    QTest::newRow("empty lines") << QByteArray(8 << 20, '\n') << true;
    QTest::newRow("rule of many days") << "RRULE:W1" + QByteArray(" MO").repeated(many) + " #0\n" << true;
    QTest::newRow("base64") << "DESCRIPTION;BASE64:" + QByteArray("\nAAAA").repeated(many) + "\n\n" << true;
}

void VelVCalendarTest::shouldReadHugeInputInLinearTime()
{
    QFETCH(QByteArray, filling);
    QFETCH(bool, isWhole);

    const QByteArray good = "BEGIN:VEVENT\nDTSTART:20020305T090500\nEND:VEVENT\n";
    const QByteArray text = "BEGIN:VEVENT\nDTSTART:20020305T090500\n" + filling + "END:VEVENT\n" + good;
    const VelVCalendar::Result result = VelVCalendar::readAll(text, TwoHoursEast);
    QCOMPARE(int(result.entries.size()), isWhole ? 2 : 1);
    QCOMPARE(result.leftOut, isWhole ? 0 : 1);
}

QTEST_GUILESS_MAIN(VelVCalendarTest)

#include "velvcalendartest.moc"

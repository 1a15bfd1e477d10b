// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velvcalendar.h"
#include "formats/velvcalendarrule.h"
#include "support/velrandomentry.h"

#include <QFile>
#include <QTest>
#include <QTextStream>

namespace
{
const QTimeZone TwoHoursEast(2 * 3600);
const QByteArray Start = "DTSTART:20020305T090500\n";
const QByteArray Good = "BEGIN:VEVENT\n" + Start + "END:VEVENT\n";

VelDateTime at(int day, int hour, int minute)
{
    return {QDate(2002, 3, day), QTime(hour, minute)};
}

VelEntry plainEvent()
{
    VelEntry entry(7, VelEntry::Event, at(5, 9, 5), at(5, 10, 0));
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
        account.attendee = static_cast<int>(id % 2);
        entry.accounts.append(account);
    }
    entry.rule = {VelRecurrenceRule::Weekly, 2, {1, 4}, 0, {}, 5};
    return entry;
}

VelEntry todo()
{
    VelEntry entry(8, VelEntry::Todo, at(5, 0, 0), at(8, 23, 59));
    entry.setTitle(QStringLiteral("Write report"));
    entry.access = VelEntry::Public;
    entry.complete = true;
    return entry;
}

QByteArray written(const VelEntry &entry, quint32 user = 3)
{
    return VelVCalendar::asvCalendar(entry, user, true).toUtf8();
}

// What an entry has besides the start of a good one.
QString summary(const VelEntry &entry)
{
    QString text;
    QTextStream out(&text);
    const QString start = VelVCalendar::toISO8601(entry.getStart());
    const QString end = VelVCalendar::toISO8601(entry.getEnd());
    if (start + end != QLatin1String("20020305T09050020020305T090500"))
        out << start << '-' << end << ' ';
    const std::pair<const char *, int> fields[] = {
        {"notime", entry.notime},     {"reminder", int(entry.reminder)}, {"access", entry.access},
        {"priority", entry.priority}, {"complete", entry.complete},      {"display", entry.display}};
    for (const auto &[name, value] : fields) {
        if (value != 0)
            out << name << value << ' ';
    }
    for (const VelAccount &one : entry.accounts)
        out << one.name << '/' << one.email << '/' << one.status << one.attendee << ' ';
    out << VelVCalendarRule::toText(entry.rule, entry.getStart().date());
    return text + entry.getTitle() + entry.getDescription();
}
} // namespace

class VelVCalendarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteAndReadGoldenText()
    {
        for (const auto &[entry, name] :
             {std::pair(plainEvent(), "event.vcs"), {fullEvent(), "event-full.vcs"}, {todo(), "todo.vcs"}}) {
            QFile file(QLatin1String(TEST_DATA_DIR "/") + QLatin1String(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QByteArray golden = file.readAll();
            QCOMPARE(written(entry), golden);
            const auto read = VelVCalendar::fromvCalendar(golden, TwoHoursEast);
            QVERIFY(read && read->dirty == 1);
            QCOMPARE(written(*read), golden.replace("ROLE=OWNER", "ROLE=ATTENDEE"));
        }
    }

    void shouldReadBackRandomEntries()
    {
        VelRandomEntry random(20020305);
        QString text = VelVCalendar::vCalendarHead();
        for (int i = 0; i < 3000; ++i) {
            VelEntry entry = random.entry();
            entry.user = 0;
            if (random.chance(20))
                entry.setStored(QStringLiteral("a\r\nb=0A="), QChar(0xFEFF) + QStringLiteral("c\rd\r\n"),
                                entry.getStart(), entry.getEnd());
            if (random.chance(20))
                entry.setDescription(QStringLiteral("=41=3D\nDTSTART:20020305T090500")
                                     + QStringLiteral("=0A=").repeated(random.number(0, 1)));
            text += VelVCalendar::asvCalendar(entry, 0, false);
        }
        text += VelVCalendar::vCalendarTail();
        VelForeignContent result = VelVCalendar::readAll(text.toUtf8());
        QVERIFY(result.simplified.isEmpty() && result.singles == 0);
        QString again = VelVCalendar::vCalendarHead();
        for (const auto &entry : result.entries)
            again += VelVCalendar::asvCalendar(*entry, 0, false);
        QCOMPARE(result.leftOut, 0);
        QCOMPARE(QString(again + VelVCalendar::vCalendarTail()).split(QLatin1Char('\n')),
                 text.split(QLatin1Char('\n')));
    }

    void shouldTellLatin1FromUtf8()
    {
        // Half of them is also good UTF-8, or good Latin-9; the last has no place in Latin-1.
        for (const char16_t *text :
             {u"\u00BD", u"\u00C3\u00A4", u"\u00BD\n\u00C3\u00A4", u"a\u00E4\u00A4", u"\u20AC"}) {
            VelEntry entry = plainEvent();
            entry.setTitle(QString::fromUtf16(text).section(QLatin1Char('\n'), -1));
            entry.setDescription(QString::fromUtf16(text));
            const QByteArray bytes = VelVCalendar::toBytes(VelVCalendar::asvCalendar(entry, 0, true));
            for (const QByteArray &form : {bytes, QByteArray(bytes).replace("\n", "\r\n")}) {
                const auto read = VelVCalendar::fromvCalendar(form);
                QCOMPARE(read->getTitle() + read->getDescription(),
                         entry.getTitle() + entry.getDescription());
            }
        }
        QVERIFY(VelVCalendar::toBytes(QStringLiteral("\u00BD")) == "\xBD");
    }

    void shouldNameTheOwnerByEntryThenByCalendar()
    {
        VelEntry entry = fullEvent();
        entry.user = 1;
        QVERIFY(written(entry, 2).contains("ROLE=OWNER;STATUS=DECLINED;EXPECT=FYI:Person 1 <"));
        entry.user = 0;
        QVERIFY(written(entry, 2).contains("ROLE=OWNER;STATUS=TENTATIVE;EXPECT=REQUEST:Person 2 <"));
        QVERIFY2(!written(entry, 0).contains("OWNER"), "no id is nobody's");
    }

    void shouldNotWriteDeletionNoticesNorWhatHasNoPlace()
    {
        VelEntry entry = plainEvent();
        entry.reminder = std::numeric_limits<quint32>::max();
        for (const VelRecurrenceRule &rule :
             {VelRecurrenceRule{9, 1, {}, 0, {}, 0}, {2, 1, {}, 0, {}, 0}, {3, 1, {}, 0, {}, 0}}) {
            entry.rule = rule;
            QCOMPARE(written(entry), written(plainEvent()));
        }
        entry.type = VelEntry::Deleted;
        QCOMPARE(written(entry), QByteArray());
    }

    void shouldReadFixedDateTimes()
    {
        const VelDateTime time(QDate(987, 1, 2), QTime(3, 4, 5));
        QCOMPARE(VelVCalendar::toISO8601(time), QStringLiteral("09870102T030405"));
        QVERIFY(VelVCalendar::fromISO8601("09870102T030405", TwoHoursEast) == time);
        QVERIFY(VelVCalendar::fromISO8601("20020305T233000Z", TwoHoursEast) == at(6, 1, 30));
        for (const char *text : {"", "20020305", "20020305T09050", "20020230T090500", "20020305T240000",
                                 "00000101T000000", "2002030xT090500"})
            QVERIFY2(!VelVCalendar::fromISO8601(text, TwoHoursEast).isValid(), text);
    }

    void shouldDecodeWhatItEncodes()
    {
        for (const auto &[text, encoded] : {std::pair("one\ntwo", "one=0A=\ntwo"),
                                            {"a=41=3D", "a=41=3D"},
                                            {"end=\n=0A=\nnext", "end==0A=\n=0A==0A=\nnext"},
                                            {"\r\n", "\r=0A=\n"}}) {
            QCOMPARE(VelVCalendar::encode(QString::fromUtf8(text)), QString::fromUtf8(encoded));
            QCOMPARE(VelVCalendar::decode(QString::fromUtf8(encoded)), QString::fromUtf8(text));
        }
    }

    // What other programs write, between a good start and the end of an event or task, and what becomes of it.
    void shouldReadForeignLines_data()
    {
        QTest::addColumn<QByteArray>("component");
        QTest::addColumn<QString>("entry");
        const auto row = [](const char *lines, const char *entry, const char *component = "VEVENT") {
            QTest::newRow(lines) << QByteArray(component) << QString::fromUtf8(entry);
        };
        row("SUMMARY;X=\"a:b;c\":Title", "Title");
        row("SUMMARY;X=\"a:Title", "Title");
        row("SUMMARY:Title\rDESCRIPTION:Text\r", "TitleText");
        row("SUMMARY:One\r\n two\r\n", "One two");
        row("VERSION:2.0\nSUMMARY:On\r\n e\\, two\\n", "One, two\n");
        row("SUMMARY;\n LANGUAGE=en:Title", "Title");
        row("SUMMARY;ENCODING=QUOTED-PRINTABLE:Ti=\r\ntle=20=\r\n x\r\nDESCRIPTION:d", "Title  xd");
        row("DESCRIPTION;encoding=quoted-printable:a=0D=0Ab=3d\r\n", "a\r\nb=");
        row("SUMMARY;CHARSET=ISO-8859-1;QUOTED-PRINTABLE:=E4=A4", "\u00E4\u00A4");
        row("SUMMARY;CHARSET=Windows-1252;QUOTED-PRINTABLE:=80=E4=93", "\u20AC\u00E4\u201C");
        row("SUMMARY:\xE4\xA4", "\u00E4\u20AC");
        row("DESCRIPTION;ENCODING=BASE64:\r\n  SGVs\r\n  bG8=\r\n", "Hello");
        row("DESCRIPTION;BASE64:SGVs\nbG8=\nSUMMARY:T", "THello");
        row("DESCRIPTION;QUOTED-PRINTABLE:\nSUMMARY:1+1=\nPRIORITY:5", "priority5 1+1=");
        row("SUMMARY:Outer\nBEGIN:VALARM\nSUMMARY:Inner\nBEGIN:X\nEND:X\nDTSTART:19990101T000000\nEND:VALARM",
            "Outer");
        row("DTSTART:20020305T230000Z\nDTEND:20020305T233000Z", "20020306T010000-20020306T013000 ");
        row("DTSTART;TZID=UTC:20020305T100000", "20020305T120000-20020305T120000 ");
        row("DTSTART:2002-03-05T09:05:00\nDTEND:2002-03-05T10:00:00Z", "20020305T090500-20020305T120000 ");
        row("DTSTART;VALUE=DATE:20020305\nDTEND;VALUE=DATE:20020307",
            "20020305T000000-20020306T235900 notime1 ");
        row("DTSTART:20020230T090000\nDTEND:20020305T090500", "");
        row("DTEND:20020305T080000", "");
        row("DURATION:P1DT1H30M", "20020305T090500-20020306T103500 ");
        row("DURATION:P1H", "");
        row("DUE:20020306T120000", "20020305T090500-20020306T120000 notime1 ", "VTODO");
        row("DTSTART:20020305\nDUE:20020306", "20020305T000000-20020306T235900 notime1 ", "VTODO");
        row("DALARM:20020305T093500;PT5M;2;beep", "reminder30 ");
        row("AALARM;TYPE=WAVE:20020305T070500Z;;;file", "reminder1 ");
        row("AALARM:\nDALARM:20020305T090330\nAALARM:20020305T080000", "reminder2 ");
        row("CLASS:CONFIDENTAL", "access2 ");
        row("PRIORITY:77", "priority9 ");
        row("STATUS:Completed", "complete1 ");
        row("STATUS:TENTATIVE", "display3 ");
        row("transp:TRANSPARENT", "display2 ");
        row("ATTENDEE;STATUS=CONFIRMED;EXPECT=FYI:<a@example.org>", "a@example.org/a@example.org/41 ");
        row("ATTENDEE;ROLE=OWNER;STATUS=declined:a <b> <a@example.org>", "a <b>/a@example.org/20 ");
        row("ATTENDEE;CN=\"Ann: A.\";PARTSTAT=TENTATIVE;ROLE=OPT-PARTICIPANT:MAILTO:a@example.org",
            "Ann: A./a@example.org/31 ");
        row("ATTENDEE;QUOTED-PRINTABLE;CHARSET=UTF-8:=C3=84nn <a@example.org>", "\u00C4nn/a@example.org/00 ");
        row("rrule:W2 TH MO th #5", "W2 MO TH #5");
        row("RRULE:W1 #3", "W1 TU #3");
        row("RRULE:W1 MO TU TH #4", "W1 MO TU TH #2 and 20020307 20020311");
        row("RRULE:W1 TU TH 20020307T235959\nEXDATE:20020307T090500;20020307T100000", "");
        row("RRULE:W1 TU TH #0\nEXDATE:20020307T090500", "W1 TU TH #0");
        row("W1 TU TH #0", "W1 TU TH #0");
        row("RRULE:MP1 2+ TU WE 4+ FR #0", "MP1 2+ TU #0 and 20020312 simplified");
        row("RRULE:MD1 15 #0", "MD1 15 #0 and 20020315");
        row("RRULE:MD1 10 20 #0", "MD1 10 #0 and 20020310 simplified");
        row("RRULE:MD1 1- #0", "MD1 31 #0 and 20020331");
        row("RRULE:M1 1- FR #4", "MP1 1- FR #3 and 20020329");
        row("RRULE:YM1 3 #0", "YD1 64 #0");
        row("RRULE:YM1 3 9 #0", "YD1 64 #0 simplified");
        row("RRULE:D1 20020310T230000Z", "D1 20020312T000000");
        row("RRULE:D1", "D1 #2");
        row("RRULE:W1 MO 0900 1200 #4", "W1 MO #4 simplified");
        row("D1 #3\nRDATE:20020306T090500", "D1 #3 simplified");
        row("D1 #3\nEXDATE:20020306T090500", "D1 #3 simplified");
        for (const char *unknown : {"RRULE:D0 #0", "RRULE:D99999999999 #0", "RRULE:FREQ=DAILY"})
            row(unknown, " simplified");
        row("RRULE:\nDear me", "");
    }

    void shouldReadForeignLines()
    {
        QFETCH(QByteArray, component);
        const QByteArray text =
            "BEGIN:" + component + "\n" + Start + QTest::currentDataTag() + "\nEND:" + component + "\n";
        const VelForeignContent result = VelVCalendar::readAll(text, TwoHoursEast);
        QVERIFY(int(result.entries.size()) == 1 + result.singles && result.simplified.size() <= 1);
        QString end(result.singles > 0 ? QStringLiteral(" and") : QString());
        for (int i = 1; i <= result.singles; ++i) {
            const VelEntry &single = *result.entries[static_cast<std::size_t>(i)];
            QVERIFY(!single.isRecurring() && single.getTitle() == result.entries.front()->getTitle());
            end += QLatin1Char(' ') + VelVCalendar::toISO8601(single.getStart()).left(8);
        }
        end += QLatin1String(result.simplified.isEmpty() ? "" : " simplified");
        QTEST(QString(summary(*result.entries.front()) + end), "entry");
    }

    void shouldCountBrokenEntriesAndReadHugeOnesInLinearTime_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("read");
        QTest::addColumn<int>("leftOut");
        const auto row = [](const char *name, const QByteArray &text, int read, int leftOut = 0) {
            QTest::newRow(name) << text << read << leftOut;
        };
        const QByteArray open = "BEGIN:VEVENT\n" + Start;
        row("no calendar", QByteArray("Dear reader,\nEND:VEVENT\n\x00\xFF:;=\n"), 0);
        row("byte order mark", "\xEF\xBB\xBF" + Good, 1);
        row("no date", Good + "BEGIN:VTODO\nSUMMARY:x\nEND:VTODO\n" + Good, 2, 1);
        row("only an end", "BEGIN:VEVENT\nDTEND:20020305T090000\nEND:VEVENT\n", 1);
        row("no end at end of text", Good + open, 1, 1);
        row("no end before next", open + Good, 1, 1);
        row("no end before end of calendar", open + "END:VCALENDAR\n" + Good, 1, 1);
        row("wrong end", open + "END:VTODO\n" + Good, 1, 1);
        row("component without end", open + "BEGIN:VALARM\nEND:VEVENT\n" + Good, 2);
        const auto filled = [&](const char *name, const QByteArray &filling, bool isWhole = true) {
            row(name, open + filling + "\nEND:VEVENT\n" + Good, isWhole ? 2 : 1, isWhole ? 0 : 1);
        };
        const int many = 300000;
        const QByteArray quoted = "DESCRIPTION;QUOTED-PRINTABLE:";
        filled("one long line", "SUMMARY:" + QByteArray(17 << 20, 'x'), false);
        filled("soft line breaks", quoted + QByteArray("a=\n").repeated(many));
        filled("too many soft line breaks", quoted + QByteArray("=41=\n").repeated(many * 12), false);
        filled("folded without colon", "SUMMARY" + QByteArray("\n a").repeated(many));
        filled("folded with open quote", "SUMMARY;X=\":" + QByteArray("\n a").repeated(many));
        filled("nested components", QByteArray("BEGIN:A\n").repeated(many));
        filled("base64", "DESCRIPTION;BASE64:" + QByteArray("\nAAAA").repeated(many));
    }

    void shouldCountBrokenEntriesAndReadHugeOnesInLinearTime()
    {
        QFETCH(QByteArray, text);
        const VelForeignContent result = VelVCalendar::readAll(text, TwoHoursEast);
        QTEST(int(result.entries.size()), "read");
        QTEST(result.leftOut, "leftOut");
    }

    void shouldMakeSenseOfTruncatedAndChangedText()
    {
        const QByteArray text = written(plainEvent()) + written(fullEvent());
        const int whole = written(plainEvent()).size();
        VelRandomEntry random(1);
        for (int round = 0; round < 5000; ++round) {
            QByteArray changed = round < 1000 ? text.left(whole + round) : text;
            for (int i = round < 1000 ? 0 : random.number(1, 8); i > 0; --i)
                changed[random.number(0, text.size() - 1)] = static_cast<char>(random.number(0, 255));
            const VelForeignContent result = VelVCalendar::readAll(changed);
            QVERIFY(round >= 1000 || written(*result.entries.front()) == written(plainEvent()));
            for (const auto &entry : result.entries)
                QVERIFY(entry->isValid() && entry->getStart() <= entry->getEnd());
        }
    }
};

QTEST_GUILESS_MAIN(VelVCalendarTest)

#include "velvcalendartest.moc"

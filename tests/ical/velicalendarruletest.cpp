// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendar.h"
#include "support/velrandomentry.h"

#include <KCalendarCore/ICalFormat>
#include <KCalendarCore/MemoryCalendar>
#include <KCalendarCore/Recurrence>

#include <QTest>

namespace
{
const QDate Today(2010, 1, 1);

using Days = QVector<QDate>;

/** The entry's own day and those of its occurrences before @p limit. */
Days ourDays(const VelEntry &entry, QDate limit)
{
    VelRecurrenceRule rule = entry.rule;
    if (!rule.occurenddate.isValid() || rule.occurenddate > limit)
        rule.occurenddate = limit;
    const QDate start = entry.getStart().date();
    const VelRecurrence recurrence(rule, start, 0, start);
    Days days{start};
    for (quint32 number = 1; number <= recurrence.count(); ++number)
        days.append(QDate::fromJulianDay(recurrence.startDay(number)));
    return days;
}

/** The days on which another program shows what the text says; the start is one even without a rule. */
Days theirDays(const QByteArray &text, QDate start, QDate limit)
{
    const KCalendarCore::MemoryCalendar::Ptr calendar(
        new KCalendarCore::MemoryCalendar(QTimeZone::systemTimeZone()));
    KCalendarCore::ICalFormat format;
    if (!format.fromRawString(calendar, text) || calendar->rawIncidences().size() != 1)
        return {};
    const KCalendarCore::Incidence::Ptr incidence = calendar->rawIncidences().first();
    if (!incidence->recurs())
        return {start};
    Days days;
    const auto times = incidence->recurrence()->timesInInterval(QDateTime(start, QTime(0, 0)),
                                                                QDateTime(limit.addDays(-1), QTime(23, 59)));
    for (const QDateTime &time : times)
        days.append(time.date());
    return days;
}
} // namespace

/** That a series means the same days to us and to others. */
class VelICalendarRuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteTheDaysOfRandomRules();
    void shouldNeverShowDaysThatOthersDoNot();
};

void VelICalendarRuleTest::shouldWriteTheDaysOfRandomRules()
{
    VelRandomEntry random(5545);
    for (int i = 0; i < 250; ++i) {
        const QDate start = random.chance(3)
            ? QDate(2000 + random.number(0, 9), random.number(1, 12), 1).addDays(-1)
            : QDate(2000, 1, 1).addDays(random.number(0, 4000));
        VelEntry entry(1, VelEntry::Event, {start, QTime(9, 0)}, {start, QTime(10, 0)});
        entry.notime = random.chance(3);
        entry.rule = random.rule(start);
        const QByteArray text = VelICalendar::write({VelEntryRef(&entry)}, 1, Today);
        const QDate limit = std::max(start, Today).addDays(700);
        QVERIFY2(theirDays(text, start, limit) == ourDays(entry, limit), text.constData());
    }
}

/** Whatever the rule: what is read has no days but those of the file, and all of them unless it is counted. */
void VelICalendarRuleTest::shouldNeverShowDaysThatOthersDoNot()
{
    VelRandomEntry random(2445);
    static const QList<QByteArray> rules =
        QByteArray("DAILY WEEKLY WEEKLY;BYDAY=MO,WE,FR WEEKLY;BYDAY=TU,SU MONTHLY MONTHLY;BYMONTHDAY=31 "
                   "MONTHLY;BYMONTHDAY=-1 MONTHLY;BYMONTHDAY=12 MONTHLY;BYDAY=3WE MONTHLY;BYDAY=-1SU YEARLY "
                   "YEARLY;BYMONTH=2 MONTHLY;BYMONTHDAY=28,29;BYSETPOS=-1 YEARLY;BYMONTH=5;BYDAY=2MO")
            .split(' ');
    static const QList<QByteArray> ends{"", ";COUNT=7", ";UNTIL=20040610T120000"};
    for (int i = 0; i < 250; ++i) {
        const QDate start = QDate(2002, 1, 1).addDays(random.number(0, 1200));
        const QByteArray rule = rules.at(random.number(0, int(rules.size()) - 1))
            + ends.at(random.number(0, 2))
            + ";INTERVAL=" + QByteArray::number(random.chance(2) ? 1 : random.number(1, 14))
            + (random.chance(4) ? ";WKST=SU" : "");
        const QByteArray day = start.toString(QStringLiteral("yyyyMMdd")).toLatin1() + "T090000\r\n";
        // The start is a day of the series for most programs, though for the toolkit only if the rule has it.
        const QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:1\r\nDTSTART:" + day
            + "RDATE:" + day + "RRULE:FREQ=" + rule + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
        const VelForeignContent result = VelICalendar::read(text);
        QCOMPARE(int(result.entries.size()), 1 + result.singles);
        const QDate limit(2012, 1, 1);
        Days ours;
        for (const auto &entry : result.entries)
            ours += ourDays(*entry, limit);
        std::sort(ours.begin(), ours.end());
        const Days theirs = theirDays(text, start, limit);
        const bool isSubset =
            std::all_of(ours.begin(), ours.end(), [&theirs](QDate one) { return theirs.contains(one); });
        const bool isUnsynchronised = rule.contains("COUNT") && ours != theirs && result.simplified.isEmpty();
        // Whether the start counts differs between programs.
        const bool isOneOff = qAbs(int(ours.size()) - int(theirs.size())) == 1;
        QVERIFY2(isUnsynchronised ? isOneOff : isSubset, text.constData());
        QVERIFY2(!result.simplified.isEmpty() || isUnsynchronised || ours == theirs, text.constData());
    }
}

QTEST_GUILESS_MAIN(VelICalendarRuleTest)

#include "velicalendarruletest.moc"

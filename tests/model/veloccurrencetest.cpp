// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/recurrencerules.h"
#include "model/velentrylist.h"

#include <QTest>

Q_DECLARE_METATYPE(VelDateTime)

namespace
{
const QDate Today(2026, 3, 1);

/** A time in March 2026. */
VelDateTime at(int day, int hour)
{
    return {QDate(2026, 3, day), QTime(hour, 0)};
}

VelEntry repeating(const VelDateTime &start, const VelDateTime &end, const VelRecurrenceRule &rule)
{
    VelEntry entry(12, VelEntry::Event, start, end);
    entry.setTitle(QStringLiteral("Watch"));
    entry.rule = rule;
    entry.updRecurrence(Today);
    return entry;
}

VelEntry nightWatch()
{
    return repeating(at(2, 22), at(3, 2), Rules::times(Rules::daily(1), 4));
}
} // namespace

class VelOccurrenceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldMakeRecordsOfOccurrences();
    void shouldKeepTheRecordWhereItIs();
    void shouldHaveNoOtherNumbers();
    void shouldMoveTheEntryAsItWasGiven_data();
    void shouldMoveTheEntryAsItWasGiven();
    void shouldFollowTheRuleAnew();
    void shouldForgetTheRule();
    void shouldNotRepeatAnOccurrence();
    void shouldLookAheadFromTheGivenDay();
    void shouldNameTimesWithoutARecord();
    void shouldSortByStart();
    void shouldKeepTheOrderOfManyEqualStarts();
    void shouldFindTheFirstWithAnIdOnTheServer();
};

void VelOccurrenceTest::shouldMakeRecordsOfOccurrences()
{
    VelEntry entry = nightWatch();
    entry.accounts.append(VelAccount(QStringLiteral("Al"), QString(), 5));
    QCOMPARE(entry.getRecurrence().count(), 3U);
    for (quint32 number = 1; number <= 3; ++number) {
        const VelEntry *const record = entry.getOccurrence(number);
        QCOMPARE(record->localid, number);
        QCOMPARE(record->originalid, 12U);
        QCOMPARE(record->dirty, 0);
        QVERIFY(record->getStart() == at(2 + static_cast<int>(number), 22));
        QVERIFY(record->getEnd() == at(3 + static_cast<int>(number), 2));
        QCOMPARE(record->getTitle(), QStringLiteral("Watch"));
        QCOMPARE(static_cast<int>(record->accounts.size()), 1);
        QVERIFY(record->isOccurrence() && record->isRecurring());
    }
    QVERIFY(!entry.isOccurrence() && entry.isRecurring());
    QCOMPARE(entry.dirty, 1);
}

void VelOccurrenceTest::shouldKeepTheRecordWhereItIs()
{
    const VelEntry entry = repeating(at(2, 9), at(2, 10), Rules::daily(1));
    const VelEntry *const first = entry.getOccurrence(1);
    for (quint32 number = 2; number <= entry.getRecurrence().count(); ++number)
        QVERIFY(entry.getOccurrence(number));
    QCOMPARE(entry.getOccurrence(1), first);
}

void VelOccurrenceTest::shouldHaveNoOtherNumbers()
{
    const VelEntry entry = nightWatch();
    QVERIFY(entry.getOccurrence(3));
    QVERIFY(!entry.getOccurrence(0));
    QVERIFY(!entry.getOccurrence(4));
    QVERIFY(!VelEntry().getOccurrence(1));
}

void VelOccurrenceTest::shouldMoveTheEntryAsItWasGiven_data()
{
    QTest::addColumn<VelDateTime>("start");
    QTest::addColumn<VelDateTime>("end");
    QTest::addColumn<VelDateTime>("nextStart");
    QTest::addColumn<VelDateTime>("nextEnd");
    const QTime none;
    QTest::newRow("several days") << at(2, 9) << at(7, 8) << at(3, 9) << at(8, 8);
    QTest::newRow("ends before it starts") << at(5, 9) << at(2, 9) << at(6, 9) << at(3, 9);
    QTest::newRow("dates without times")
        << VelDateTime(QDate(2026, 3, 2), none) << VelDateTime(QDate(2026, 3, 4), none)
        << VelDateTime(QDate(2026, 3, 3), none) << VelDateTime(QDate(2026, 3, 5), none);
    QTest::newRow("beyond the calendar") << at(2, 9) << VelDateTime(QDate(9999, 12, 31), QTime(9, 0))
                                         << at(3, 9) << VelDateTime(QDate(), QTime(9, 0));
}

void VelOccurrenceTest::shouldMoveTheEntryAsItWasGiven()
{
    QFETCH(VelDateTime, start);
    QFETCH(VelDateTime, end);
    QFETCH(VelDateTime, nextStart);
    QFETCH(VelDateTime, nextEnd);
    const VelEntry entry = repeating(start, end, Rules::times(Rules::daily(1), 2));
    const VelEntry *const next = entry.getOccurrence(1);
    QCOMPARE(next->getStart().date(), nextStart.date());
    QCOMPARE(next->getStart().time(), nextStart.time());
    QCOMPARE(next->getEnd().date(), nextEnd.date());
    QCOMPARE(next->getEnd().time(), nextEnd.time());
}

void VelOccurrenceTest::shouldFollowTheRuleAnew()
{
    VelEntry entry = nightWatch();
    QCOMPARE(entry.getOccurrence(1)->getTitle(), QStringLiteral("Watch"));
    entry.setTitle(QStringLiteral("Guard"));
    entry.rule = Rules::times(Rules::weekly(1, {3}), 2);
    entry.updRecurrence(Today);
    QCOMPARE(entry.getRecurrence().count(), 1U);
    QCOMPARE(entry.getOccurrence(1)->getTitle(), QStringLiteral("Guard"));
    QVERIFY(entry.getOccurrence(1)->getStart() == at(4, 22));
}

void VelOccurrenceTest::shouldForgetTheRule()
{
    VelEntry entry = nightWatch();
    entry.rule.occurenddate = QDate(2026, 4, 1);
    entry.clearRecurring();
    QVERIFY(entry.rule == VelRecurrenceRule());
    QVERIFY(entry.getRecurrence().isEmpty());
    QVERIFY(!entry.getOccurrence(1));
    QVERIFY(!entry.isRecurring());
    QCOMPARE(entry.getRecurrenceText(), QString());
}

void VelOccurrenceTest::shouldNotRepeatAnOccurrence()
{
    const VelEntry entry = nightWatch();
    VelEntry occurrence = *entry.getOccurrence(1);
    occurrence.updRecurrence(Today);
    QVERIFY(occurrence.getRecurrence().isEmpty());
    occurrence.clearRecurring();
    QCOMPARE(occurrence.originalid, 12U);
}

void VelOccurrenceTest::shouldLookAheadFromTheGivenDay()
{
    VelEntry entry = repeating(at(1, 9), at(1, 10), Rules::daily(1));
    QCOMPARE(entry.getRecurrence().count(), 749U);
    entry.updRecurrence(Today.addDays(10));
    QCOMPARE(entry.getRecurrence().count(), 759U);
    entry.updRecurrence(Today.addDays(-750));
    QVERIFY(entry.getRecurrence().isEmpty());
}

void VelOccurrenceTest::shouldNameTimesWithoutARecord()
{
    const VelEntry entry = nightWatch();
    const VelEntryRef itself(&entry);
    QCOMPARE(itself.getEntry(), &entry);
    QVERIFY(itself.getStart() == entry.getStart() && itself.getEnd() == entry.getEnd());
    for (quint32 number = 1; number <= 3; ++number) {
        const VelEntryRef ref(&entry, number, entry.getRecurrence().startDay(number));
        QCOMPARE(ref.getOriginal(), &entry);
        QCOMPARE(ref.getEntry(), entry.getOccurrence(number));
        QVERIFY(ref.getStart() == ref.getEntry()->getStart());
        QVERIFY(ref.getEnd() == ref.getEntry()->getEnd());
        QVERIFY(!(ref == itself));
    }
}

void VelOccurrenceTest::shouldSortByStart()
{
    const VelEntry watch = nightWatch();
    const VelEntry late(2, VelEntry::Event, at(3, 23), at(3, 23));
    const VelEntry early(3, VelEntry::Event, at(3, 8), at(3, 9));
    const VelEntry same(4, VelEntry::Event, at(3, 22), at(9, 9));
    const VelEntry undated(5, VelEntry::Todo, VelDateTime(), VelDateTime());
    const VelEntryRef second(&watch, 1, watch.getRecurrence().startDay(1));
    VelEntryList list{VelEntryRef(&late),    second,
                      VelEntryRef(&same),    VelEntryRef(&early),
                      VelEntryRef(&undated), VelEntryRef(&watch)};
    list.sort();
    const VelEntryList expected{VelEntryRef(&undated), VelEntryRef(&watch), VelEntryRef(&early), second,
                                VelEntryRef(&same),    VelEntryRef(&late)};
    QVERIFY(list == expected);
}

void VelOccurrenceTest::shouldKeepTheOrderOfManyEqualStarts()
{
    const VelEntry early(1, VelEntry::Event, at(3, 8), at(3, 9));
    const VelEntry late(2, VelEntry::Event, at(3, 9), at(3, 10));
    VelEntryList list;
    // The numbers tell the members apart; the day is the same for all.
    for (quint32 number = 1; number <= 100; ++number)
        list.emplace_back(number % 2 == 0 ? &early : &late, number, early.getStart().julianDay());
    list.sort();
    for (quint32 i = 0; i < 50; ++i) {
        QCOMPARE(list[i].getNumber(), 2 * i + 2);
        QCOMPARE(list[50 + i].getNumber(), 2 * i + 1);
    }
}

void VelOccurrenceTest::shouldFindTheFirstWithAnIdOnTheServer()
{
    VelEntry one(1, VelEntry::Event, at(3, 8), at(3, 9));
    VelEntry two(2, VelEntry::Event, at(2, 8), at(2, 9));
    VelEntry three(3, VelEntry::Event, at(1, 8), at(1, 9));
    two.globalid = 70;
    three.globalid = 70;
    const VelEntryList list{VelEntryRef(&one), VelEntryRef(&two), VelEntryRef(&three)};
    QCOMPARE(list.getByGlobalId(70), &two);
    QVERIFY(!list.getByGlobalId(71));
    QVERIFY(!VelEntryList().getByGlobalId(0));
}

QTEST_GUILESS_MAIN(VelOccurrenceTest)

#include "veloccurrencetest.moc"

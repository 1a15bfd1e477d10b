// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velentrylist.h"

#include <QTest>

#include <array>
#include <tuple>
#include <vector>

namespace
{
constexpr std::array Ids{&VelEntry::localid, &VelEntry::globalid, &VelEntry::user, &VelEntry::reminder,
                         &VelEntry::originalid};
constexpr std::array Numbers{&VelEntry::dirty, &VelEntry::type, &VelEntry::access, &VelEntry::display,
                             &VelEntry::priority};
constexpr std::array Flags{&VelEntry::notime, &VelEntry::complete, &VelEntry::reminderfired};
const QDate March1(2026, 3, 1);

// A time in March 2026.
VelDateTime at(int day, int hour, int minute = 0)
{
    return {QDate(2026, 3, day), QTime(hour, minute)};
}

// A night watch, three times more, of which nothing has the value of a fresh entry.
VelEntry fullEntry()
{
    VelEntry entry(12, VelEntry::Event, at(2, 22), at(3, 2));
    for (const auto field : Ids)
        entry.*field += 5;
    for (const auto field : Numbers)
        entry.*field = 1;
    for (const auto field : Flags)
        entry.*field = true;
    entry.originalid = 0;
    entry.accounts = {VelAccount(QStringLiteral("Al"), QStringLiteral("al@example.org"), 5)};
    entry.accounts[0].status = VelAccount::Accepted;
    entry.rule = {VelRecurrenceRule::Daily, 1, {}, 0, {}, 4};
    entry.setStored(QStringLiteral("Watch"), QStringLiteral("Hall 3"), at(2, 22), at(3, 2));
    entry.updRecurrence(March1);
    return entry;
}

std::vector<VelEntry> withOneChangeEach(const VelEntry &entry)
{
    std::vector<VelEntry> changed;
    for (const auto field : Ids)
        changed.emplace_back(entry).*field += 1;
    for (const auto field : Numbers)
        changed.emplace_back(entry).*field += 1;
    for (const auto field : Flags)
        changed.emplace_back(entry).*field = false;
    changed.emplace_back(entry).accounts.removeLast();
    changed.emplace_back(entry).accounts[0].name.clear();
    for (const auto field : {&VelAccount::type, &VelAccount::status, &VelAccount::attendee})
        changed.emplace_back(entry).accounts[0].*field += 1;
    changed.emplace_back(entry).rule.occurdaynumber -= 1;
    changed.emplace_back(entry).setTitle(QString());
    changed.emplace_back(entry).setDescription(QString());
    changed.emplace_back(entry).setStart(at(2, 8));
    changed.emplace_back(entry).setEnd(at(3, 1));
    return changed;
}
} // namespace

class VelEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldCopyAndCompareAllThatIsStored()
    {
        const VelEntry original = fullEntry();
        QVERIFY(VelEntry(original) == original);
        const std::vector<VelEntry> others = withOneChangeEach(original);
        for (std::size_t i = 0; i < others.size(); ++i) {
            VelEntry assigned = fullEntry();
            assigned = others[i];
            QVERIFY2(assigned == others[i] && !(assigned == original),
                     QByteArray::number(int(i)).constData());
        }
        QVERIFY(original == fullEntry());
    }

    void shouldBeMarkedWhenChangedUnlessItIsAnOccurrence()
    {
        const VelEntry entry = fullEntry();
        for (const auto setter : {&VelEntry::setStart, &VelEntry::setEnd}) {
            VelEntry changed;
            changed.setStored(entry.getTitle(), entry.getDescription(), at(2, 22), at(3, 2));
            QCOMPARE(changed.dirty, 0);
            (changed.*setter)(at(9, 8));
            QCOMPARE(changed.dirty, 1);
            VelEntry occurrence = *entry.getOccurrence(1);
            (occurrence.*setter)(at(9, 8));
            QCOMPARE(occurrence.dirty, 0);
        }
        QVERIFY(VelEntry(1, VelEntry::Todo, at(2, 9), at(2, 10)).notime && !VelEntry().notime);
    }

    void shouldGiveTheAnswerOfTheOwnerUnlessAskedForAnother()
    {
        QCOMPARE(fullEntry().getAccountStatus(0), int(VelAccount::Accepted));
        QCOMPARE(fullEntry().getAccountStatus(77), int(VelAccount::Unanswered));
    }

    void shouldCutTimesToTheDay()
    {
        const VelEntry entry(1, VelEntry::Event, at(9, 10), at(11, 8));
        const int hours[][2] = {{10, 23}, {0, 23}, {0, 8}};
        for (const int day : {0, 1, 2}) {
            QCOMPARE(entry.getStartTime(QDate(2026, 3, 9 + day)).hour(), hours[day][0]);
            QCOMPARE(entry.getEndTime(QDate(2026, 3, 9 + day)).hour(), hours[day][1]);
        }
    }

    void shouldOverlapWhatSharesTimeButNotWhatTouches()
    {
        const VelEntry tenToTwelve(2, VelEntry::Event, at(2, 10), at(2, 12));
        const std::tuple<VelDateTime, VelDateTime, bool> others[] = {
            {at(2, 8), at(2, 10), false}, // touches the start
            {at(2, 8), at(2, 10, 1), true}, {at(1, 11), at(3, 11), true}, // encloses by days
            {at(2, 10), at(2, 12), true},   {at(2, 11), at(2, 11), true}, // without length
            {at(2, 12), at(2, 14), false}, // touches the end
            {at(3, 10), at(3, 12), false}};
        for (const auto &[start, end, isOverlapping] : others) {
            const VelEntry other(1, VelEntry::Event, start, end);
            QCOMPARE(tenToTwelve.overlap(other), isOverlapping);
            QCOMPARE(other.overlap(tenToTwelve), isOverlapping);
        }
    }

    void shouldMakeRecordsOfOccurrences()
    {
        const VelEntry entry = fullEntry();
        for (const int number : {1, 2, 3}) {
            const auto id = static_cast<quint32>(number);
            VelEntry expected = entry;
            expected.localid = id;
            expected.originalid = entry.localid;
            expected.dirty = 0;
            expected.setStored(entry.getTitle(), entry.getDescription(), at(2 + number, 22),
                               at(3 + number, 2));
            const VelEntryRef ref(&entry, id, static_cast<qint32>(entry.getRecurrence().startDay(id)));
            QVERIFY(*ref.getEntry() == expected);
            QVERIFY(ref.getStart() == expected.getStart() && ref.getEnd() == expected.getEnd());
        }
        QVERIFY(!entry.getOccurrence(0) && !entry.getOccurrence(4));
        VelEntry occurrence = *entry.getOccurrence(1);
        occurrence.updRecurrence(March1);
        QVERIFY(occurrence.getRecurrence().isEmpty());
    }

    void shouldFollowTheRuleAnewAndForgetIt()
    {
        VelEntry entry = fullEntry();
        entry.rule.occurendcount = 0;
        entry.updRecurrence(March1.addDays(10));
        QCOMPARE(entry.getRecurrence().count(), 758U);
        entry.updRecurrence(March1.addDays(-750));
        QVERIFY(entry.getRecurrence().isEmpty());
        entry.updRecurrence(March1);
        entry.clearRecurring();
        QVERIFY(entry.getRecurrence().isEmpty());
    }

    void shouldSortByStartAndKeepTheOrderOfEqualStarts()
    {
        const VelEntry early(1, VelEntry::Event, at(3, 8), at(3, 9));
        const VelEntry late(2, VelEntry::Event, at(3, 9), at(3, 10));
        VelEntryList list;
        // The numbers tell the members apart.
        for (quint32 number = 1; number <= 100; ++number)
            list.emplace_back(number % 2 == 0 ? &early : &late, number, early.getStart().julianDay());
        list.sort();
        for (quint32 i = 0; i < 50; ++i)
            QCOMPARE(list[i].getNumber(), 2 * i + 2);
    }
};

QTEST_GUILESS_MAIN(VelEntryTest)

#include "velentrytest.moc"

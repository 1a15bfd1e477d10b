// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velreplay.h"
#include "support/velrandomentry.h"

#include <QTest>

namespace
{
// An hour from "day hour" on, in March 2026, of which the 2nd is a Monday; "days" are the weekdays of its rule.
VelEntry entryOf(int day, int hour, const QVector<int> &days = {}, int reminder = 0, bool fired = false)
{
    const VelDateTime start(QDate(2026, 3, day), QTime(hour, 0));
    VelEntry entry(1, VelEntry::Event, start, start.addSecs(3600));
    if (!days.isEmpty())
        entry.rule = {VelRecurrenceRule::Weekly, 1, days, 0, {}, 0};
    entry.reminder = static_cast<quint32>(reminder);
    entry.reminderfired = fired;
    return entry;
}

bool isInOrder(const VelEntry &entry)
{
    return entry.notime ? entry.getStart().date() <= entry.getEnd().date()
                        : entry.getStart() <= entry.getEnd();
}
} // namespace

class VelReplayTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldTakeTogetherWhatBelongsTogether_data();
    void shouldTakeTogetherWhatBelongsTogether();
    void shouldBringTwoChangesTogether();
};

void VelReplayTest::shouldTakeTogetherWhatBelongsTogether_data()
{
    QTest::addColumn<VelEntry>("current");
    QTest::addColumn<VelEntry>("from");
    QTest::addColumn<VelEntry>("to");
    QTest::addColumn<VelEntry>("expected");
    const VelEntry base = entryOf(2, 10);
    VelEntry longer = base;
    longer.setEnd({QDate(2026, 3, 2), QTime(12, 0)});
    VelEntry backwards = base;
    backwards.setEnd({QDate(2026, 3, 1), QTime(12, 0)});
    QTest::newRow("moved here, longer there") << longer << base << entryOf(2, 13) << entryOf(2, 13);
    QTest::newRow("moved there, longer here") << entryOf(2, 13) << base << longer << longer;
    QTest::newRow("moved there, faulty here") << entryOf(2, 13) << base << backwards << entryOf(2, 13);
    QTest::newRow("faulty one put back") << base << base << backwards << backwards;
    const VelEntry weekly = entryOf(2, 10, {1});
    QTest::newRow("later there, repeats here") << entryOf(2, 13) << base << weekly << entryOf(2, 13, {1});
    QTest::newRow("other day there, repeats here") << entryOf(3, 10) << base << weekly << weekly;
    QTest::newRow("repeats there, other day here") << weekly << base << entryOf(3, 10) << entryOf(3, 10);
    QTest::newRow("other day there, repeats no more here")
        << entryOf(3, 10, {1}) << weekly << base << entryOf(3, 10);
    QTest::newRow("rang there, other reminder here") << entryOf(2, 10, {}, 5, true) << entryOf(2, 10, {}, 5)
                                                     << entryOf(2, 10, {}, 9) << entryOf(2, 10, {}, 9);
}

void VelReplayTest::shouldTakeTogetherWhatBelongsTogether()
{
    QFETCH(const VelEntry, current);
    QFETCH(const VelEntry, from);
    QFETCH(const VelEntry, to);
    QFETCH(const VelEntry, expected);
    QVERIFY(*VelReplay::replayed(current, from, to) == expected);
}

void VelReplayTest::shouldBringTwoChangesTogether()
{
    VelRandomEntry random(1);
    for (int i = 0; i < 2000; ++i) {
        const VelEntry from = random.entry();
        const auto change = [&random, &from] {
            VelEntry other = random.entry();
            VelEntry changed = from;
            if (random.chance(2))
                changed.setStored(other.getTitle(), {}, from.getStart(), other.getEnd());
            if (random.chance(2))
                changed.setStored({}, other.getDescription(), other.getStart(), changed.getEnd());
            if (random.chance(2))
                changed.rule = other.rule;
            return changed;
        };
        const VelEntry current = change();
        const VelEntry to = change();
        QVERIFY(*VelReplay::replayed(from, from, to) == to || from.dirty != to.dirty);
        QVERIFY(*VelReplay::replayed(current, from, from) == current);
        const auto both = VelReplay::replayed(current, from, to);
        QCOMPARE(both->getTitle(), (from.getTitle() == to.getTitle() ? current : to).getTitle());
        const bool bothMoved = current.getEnd() != from.getEnd() && to.getEnd() != from.getEnd();
        QVERIFY(isInOrder(*both) || !bothMoved || (!isInOrder(to) && !isInOrder(current)));
    }
}

Q_DECLARE_METATYPE(VelEntry)
QTEST_GUILESS_MAIN(VelReplayTest)
#include "velreplaytest.moc"

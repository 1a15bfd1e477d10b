// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthlayout.h"
#include "support/testcalendar.h"
#include "views/velmonthentries.h"

#include <QTest>

using namespace TestCalendar;

class VelMonthLayoutTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void gridShouldCoverTheMonthAndNoWeekMore();
    void daysAroundNewYearShouldStandInTheirOwnCells();
    void cellShouldHoldTheLinesThatFit();
    void entriesShouldStandByStartThenIdThenOccurrence();
    void longEntryShouldStandOnEachOfItsDaysOnly();
};

namespace
{
/** March 2026, from 23 February to 5 April. */
VelMonthLayout march2026()
{
    return {today(), true};
}

VelEntry numbered(quint32 localid, const VelDateTime &start, const VelDateTime &end)
{
    VelEntry entry = makeEvent(QString::number(localid), start, end);
    entry.localid = localid;
    return entry;
}
} // namespace

void VelMonthLayoutTest::gridShouldCoverTheMonthAndNoWeekMore()
{
    for (QDate first(1990, 1, 1); first.year() < 2040; first = first.addMonths(1)) {
        const QDate last = first.addDays(first.daysInMonth() - 1);
        for (const bool mondayFirst : {true, false}) {
            const VelMonthLayout grid(first.addDays(14), mondayFirst);
            QCOMPARE(grid.startDate().dayOfWeek(), int(mondayFirst ? Qt::Monday : Qt::Sunday));
            QVERIFY2(grid.startDate() <= first && grid.startDate().daysTo(first) < 7,
                     qPrintable(first.toString()));
            QVERIFY2(grid.endDate() >= last && last.daysTo(grid.endDate()) < 7, qPrintable(first.toString()));
            QCOMPARE(grid.startDate().daysTo(grid.endDate()) + 1, qint64(grid.weeks()) * 7);
        }
    }
    QCOMPARE(VelMonthLayout(QDate(2021, 2, 14), true).weeks(), 4);
    QCOMPARE(VelMonthLayout(QDate(2026, 2, 1), false).weeks(), 4);
}

void VelMonthLayoutTest::daysAroundNewYearShouldStandInTheirOwnCells()
{
    // The weeks of these days count to one year by some rules and to the other by others.
    for (const QDate date : {QDate(2002, 12, 30), QDate(2005, 1, 1), QDate(2024, 12, 31)}) {
        for (const bool mondayFirst : {true, false}) {
            VelMonthLayout grid(date, mondayFirst);
            grid.setSize({703, 451}, 40);
            QVERIFY(grid.contains(date));
            QCOMPARE(grid.getDate(grid.getRect(date).topLeft()), date);
            QCOMPARE(grid.getDate(grid.getRect(date).bottomRight()), date);
            for (int day = 0; day < grid.dayCount(); ++day) {
                const QDate other = grid.startDate().addDays(day);
                QCOMPARE(grid.getRect(date).intersects(grid.getRect(other)), other == date);
            }
        }
    }
}

void VelMonthLayoutTest::cellShouldHoldTheLinesThatFit()
{
    // Height of a cell and how many lines of 20 pixels it holds below the day's number.
    const std::pair<int, int> cases[] = {{15, 0}, {39, 0}, {40, 1}, {99, 3}, {100, 4}};
    for (const auto &[cellHeight, lines] : cases) {
        VelMonthLayout grid = march2026();
        grid.setSize({700, 40 + 6 * cellHeight}, 40);
        QCOMPARE(grid.linesPerCell(20), lines);
        QVERIFY(lines == 0 || grid.getRect(today()).contains(grid.lineRect(today(), lines, 20)));
    }
}

void VelMonthLayoutTest::entriesShouldStandByStartThenIdThenOccurrence()
{
    const VelEntry late = numbered(1, march(2, 12), march(2, 13));
    const VelEntry tie = numbered(9, march(2, 8), march(2, 20));
    const VelEntry first = numbered(3, march(2, 8), march(2, 9));
    const VelEntry fromBefore = numbered(8, march(1, 23), march(2, 7));
    VelEntry notice = numbered(2, march(2, 7), march(2, 8));
    notice.type = VelEntry::Deleted;
    VelEntry task = numbered(7, march(1, 23), march(2, 7));
    task.type = VelEntry::Todo;
    const qint32 day = march(2).julianDay();
    const VelEntryList list{VelEntryRef(&late),  VelEntryRef(&tie, 2, day), VelEntryRef(&tie, 1, day),
                            VelEntryRef(&first), VelEntryRef(&fromBefore),  VelEntryRef(&notice),
                            VelEntryRef(&task)};
    const VelMonthEntries entries(list, march2026(), 4);
    QStringList order;
    for (const VelMonthEntries::Line &line : entries.lines()) {
        if (line.date == today())
            order += QStringLiteral("%1:%2/%3")
                         .arg(line.line)
                         .arg(line.ref.getOriginal()->localid)
                         .arg(line.ref.getNumber());
    }
    QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("1:7/0 2:8/0 3:3/0 4:9/1"));
    QCOMPARE(entries.count(today()), 6);
    QCOMPARE(entries.hidden(today()), 2);
}

void VelMonthLayoutTest::longEntryShouldStandOnEachOfItsDaysOnly()
{
    const VelEntry across = numbered(1, march(31, 22), march(31, 22).addDays(30));
    const VelEntry backwards = numbered(2, march(10, 9), march(4, 9));
    const VelMonthEntries entries({VelEntryRef(&across), VelEntryRef(&backwards)}, march2026(), 3);
    for (QDate date = march2026().startDate(); date <= march2026().endDate(); date = date.addDays(1))
        QCOMPARE(entries.count(date), date >= QDate(2026, 3, 31) || date == QDate(2026, 3, 10) ? 1 : 0);
    QCOMPARE(entries.count(march2026().endDate().addDays(1)), 0);
}

QTEST_MAIN(VelMonthLayoutTest)

#include "velmonthlayouttest.moc"

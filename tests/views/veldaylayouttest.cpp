// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldaylayout.h"
#include "support/testcalendar.h"
#include "views/veldaydrag.h"
#include "views/veldayrows.h"
#include "views/veldayselection.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <deque>
#include <map>

using namespace TestCalendar;

namespace
{
/** From and to in minutes of 2 March; beyond midnight on other days. */
struct Span {
    int from;
    int to;
};

/** Entries that a list can refer to. */
class Entries
{
public:
    void add(const VelDateTime &start, const VelDateTime &end, quint32 user = 0)
    {
        VelEntry &entry = m_entries.emplace_back(makeEvent(QStringLiteral("x"), start, end));
        entry.user = user;
        list.emplace_back(&entry);
    }
    void add(const QVector<Span> &spans)
    {
        for (const Span &span : spans)
            add(march(2).addSecs(span.from * 60), march(2).addSecs(span.to * 60));
    }
    VelEntryList list;

private:
    std::deque<VelEntry> m_entries;
};

/** Persons 7 and 8 have a column each. */
class Planner : public VelDaySource
{
public:
    [[nodiscard]] VelEntryList getEntries(QDate) const override { return {}; }
    [[nodiscard]] int getVisibleCount() const override { return count; }
    [[nodiscard]] int getColumn(quint32 account) const override
    {
        return account == 9 ? -1 : int(account) - 7;
    }
    int count = 2;
};

/** The columns by the rules to the letter, which takes the square of the time. */
std::vector<VelOl> comparedEachWithEach(const VelEntryList &list)
{
    std::vector<VelOl> records;
    for (const VelEntryRef &ref : list) {
        VelOl record;
        std::vector<int> taken;
        const auto forOverlapping = [&](const auto &act) {
            for (std::size_t i = 0; i < records.size(); ++i) {
                if (ref.getOriginal()->overlap(*list[i].getOriginal()))
                    act(records[i]);
            }
        };
        forOverlapping([&](const VelOl &other) {
            taken.push_back(other.column);
            if (record.overlaps <= *std::max_element(taken.begin(), taken.end()))
                ++record.overlaps;
        });
        if (!taken.empty())
            taken.push_back(0);
        std::sort(taken.begin(), taken.end());
        for (const int each : taken)
            record.column += each == record.column ? 1 : 0;
        record.overlaps = std::max(record.overlaps, record.column);
        forOverlapping([&](VelOl &other) { other.overlaps = std::max(other.overlaps, record.column); });
        records.push_back(record);
    }
    return records;
}

QDate monday()
{
    return {2026, 3, 2};
}
} // namespace

using Spans = QVector<Span>;
using Columns = QVector<QPair<int, int>>; // column, overlaps
Q_DECLARE_METATYPE(Spans)
Q_DECLARE_METATYPE(VelDayDrag::Mode)
Q_DECLARE_METATYPE(VelDayDrag::Times)

class VelDayLayoutTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void overlappingEntriesShouldStandSideBySide_data();
    void overlappingEntriesShouldStandSideBySide();
    void columnsShouldBeThoseOfComparingEachWithEach_data();
    void columnsShouldBeThoseOfComparingEachWithEach();
    void pixelsShouldBeTruncated_data();
    void pixelsShouldBeTruncated();
    void entriesOverMidnightShouldBeCutToTheDay();
    void missingRecordShouldWarnAndTakeTheWholeWidth();
    void plannerShouldGiveEachPersonAColumn();
    void rowsShouldMatchTheGrid_data();
    void rowsShouldMatchTheGrid();
    void selectionShouldFollowTheMouse_data();
    void selectionShouldFollowTheMouse();
    void zonesShouldBeTestedInOrder_data();
    void zonesShouldBeTestedInOrder();
    void edgesShouldFollowThePointer_data();
    void edgesShouldFollowThePointer();
};

void VelDayLayoutTest::overlappingEntriesShouldStandSideBySide_data()
{
    QTest::addColumn<Spans>("spans");
    QTest::addColumn<Columns>("expected");
    QTest::newRow("alone") << Spans{{540, 600}} << Columns{{0, 0}};
    QTest::newRow("two") << Spans{{540, 600}, {570, 660}} << Columns{{0, 1}, {1, 1}};
    QTest::newRow("touching") << Spans{{540, 600}, {600, 660}} << Columns{{0, 0}, {0, 0}};
    QTest::newRow("a chain never comes back to column 0")
        << Spans{{540, 600}, {570, 660}, {630, 720}} << Columns{{0, 1}, {1, 2}, {2, 2}};
    QTest::newRow("column 1 is free again")
        << Spans{{540, 600}, {540, 600}, {540, 720}, {660, 720}} << Columns{{0, 2}, {1, 2}, {2, 2}, {1, 1}};
    QTest::newRow("no time, none shared") << Spans{{0, 0}, {0, 0}} << Columns{{0, 0}, {0, 0}};
}

void VelDayLayoutTest::overlappingEntriesShouldStandSideBySide()
{
    QFETCH(Spans, spans);
    QFETCH(Columns, expected);
    Entries entries;
    entries.add(spans);
    Columns columns;
    for (const VelOl &ol : VelDayLayout::calcOverlaps(entries.list))
        columns.append({ol.column, ol.overlaps});
    QCOMPARE(columns, expected);
}

void VelDayLayoutTest::columnsShouldBeThoseOfComparingEachWithEach_data()
{
    QTest::addColumn<int>("rounds");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("minutes"); // that they may begin in
    QTest::addColumn<int>("least"); // they last
    QTest::addColumn<int>("most");
    QTest::addColumn<bool>("isSorted");
    QTest::newRow("a day as views have it") << 50 << 60 << 1200 << 10 << 180 << true;
    QTest::newRow("a day in any order") << 50 << 60 << 1200 << 10 << 180 << false;
    QTest::newRow("a crowded hour") << 3 << 800 << 60 << 1 << 60 << true;
    QTest::newRow("some take no time") << 300 << 40 << 20 << 0 << 4 << true;
    QTest::newRow("some end before they start") << 300 << 40 << 20 << -6 << 9 << true;
    QTest::newRow("such in any order") << 300 << 40 << 20 << -6 << 9 << false;
}

void VelDayLayoutTest::columnsShouldBeThoseOfComparingEachWithEach()
{
    QFETCH(int, rounds);
    QFETCH(int, count);
    QFETCH(int, minutes);
    QFETCH(int, least);
    QFETCH(int, most);
    QFETCH(bool, isSorted);
    QRandomGenerator random(7);
    for (int round = 0; round < rounds; ++round) {
        Entries entries;
        for (int i = 0; i < count; ++i) {
            const int from = random.bounded(minutes);
            entries.add({{from, from + random.bounded(least, most + 1)}});
        }
        if (isSorted)
            entries.list.sort();
        QCOMPARE(VelDayLayout::calcOverlaps(entries.list), comparedEachWithEach(entries.list));
    }
}

void VelDayLayoutTest::pixelsShouldBeTruncated_data()
{
    QTest::addColumn<int>("pixelsPerHour");
    QTest::addColumn<int>("fromMinute");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("height");
    QTest::newRow("05:00 is one above the hour") << 11 << 300 << 60 << 54 << 11;
    QTest::newRow("usual scale") << 34 << 570 << 90 << 306 + 17 << 51;
    QTest::newRow("odd minutes") << 34 << 547 << 10 << 306 + 3 << 5;
    QTest::newRow("one hour") << 35 << 60 << 60 << 35 << 35;
}

void VelDayLayoutTest::pixelsShouldBeTruncated()
{
    QFETCH(int, pixelsPerHour);
    QFETCH(int, fromMinute);
    QFETCH(int, minutes);
    Entries entries;
    entries.add({{fromMinute, fromMinute + minutes}});
    const VelOl half{1, 1};
    const QRect rect = VelDayLayout::calcGeometry(QRect(3, 5, 101, 24 * pixelsPerHour), &half, pixelsPerHour,
                                                  entries.list.front(), monday());
    QTEST(rect.top() - 5, "top");
    QTEST(rect.height(), "height");
    QCOMPARE(rect.left(), 53);
    QCOMPARE(rect.width(), 50);
}

void VelDayLayoutTest::entriesOverMidnightShouldBeCutToTheDay()
{
    Entries entries;
    entries.add(march(2, 22), march(4, 1));
    const VelDayLayout layout;
    const auto rectOn = [&](int day) {
        return layout.setGeometry(QRect(0, 0, 60, 24 * 60), 60, entries.list, QDate(2026, 3, day)).front();
    };
    QCOMPARE(rectOn(2), QRect(0, 22 * 60, 60, 119)); // to 23:59
    QCOMPARE(rectOn(3), QRect(0, 0, 60, 24 * 60 - 1));
    QCOMPARE(rectOn(4), QRect(0, 0, 60, 60));
}

void VelDayLayoutTest::missingRecordShouldWarnAndTakeTheWholeWidth()
{
    Entries entries;
    entries.add(march(2, 1), march(2, 2));
    QTest::ignoreMessage(QtWarningMsg, "ASSERT: \"ol\" in veldaylayout (112)");
    QCOMPARE(VelDayLayout::calcGeometry(QRect(0, 0, 60, 240), nullptr, 10, entries.list.front(), monday()),
             QRect(0, 10, 60, 10));
}

void VelDayLayoutTest::plannerShouldGiveEachPersonAColumn()
{
    Planner planner;
    Entries entries;
    entries.add(march(1, 20), march(2, 2), 7);
    entries.add(march(2, 23), march(3, 2), 8);
    entries.add(march(2, 1), march(2, 2), 9);
    const VelDayFindLayout layout(planner);
    std::vector<QRect> rects = layout.setGeometry(QRect(0, 0, 81, 24 * 11), 11, entries.list, monday());
    QCOMPARE(rects[0], QRect(0, 0, 40, 22));
    QCOMPARE(rects[1], QRect(40, 23 * 11, 40, 10));
    QVERIFY(!rects[2].isValid());
    planner.count = 0;
    rects = layout.setGeometry(QRect(0, 0, 81, 24 * 11), 11, entries.list, monday());
    QVERIFY(!rects[0].isValid());
}

void VelDayLayoutTest::rowsShouldMatchTheGrid_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("pixelsPerHour");
    QTest::addColumn<int>("y");
    QTest::addColumn<QTime>("start");
    QTest::addColumn<QTime>("end");
    QTest::newRow("half hour") << 30 << 34 << 50 << QTime(1, 0) << QTime(1, 30);
    QTest::newRow("second half") << 30 << 34 << 51 << QTime(1, 30) << QTime(2, 0);
    QTest::newRow("last row of the day") << 30 << 34 << 24 * 34 - 1 << QTime(23, 30) << QTime(23, 59);
    QTest::newRow("hours") << 60 << 34 << 800 << QTime(23, 0) << QTime(23, 59);
    QTest::newRow("quarters") << 15 << 34 << 34 * 9 + 26 << QTime(9, 45) << QTime(10, 0);
    QTest::newRow("above") << 30 << 34 << -7 << QTime(0, 0) << QTime(0, 30);
    QTest::newRow("below") << 30 << 34 << 5000 << QTime(23, 30) << QTime(23, 59);
    QTest::newRow("no height") << 30 << 0 << 5 << QTime(0, 0) << QTime(0, 30);
}

void VelDayLayoutTest::rowsShouldMatchTheGrid()
{
    QFETCH(int, interval);
    QFETCH(int, pixelsPerHour);
    QFETCH(int, y);
    const VelDayRows rows{pixelsPerHour, interval};
    QTEST(rows.getTime(y), "start");
    QTEST(rows.addInterval(rows.getTime(y)), "end");
}

void VelDayLayoutTest::selectionShouldFollowTheMouse_data()
{
    QTest::addColumn<QVector<int>>("hours"); // the rows that the mouse comes to, one after the other
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("one row") << QVector<int>{9} << 9 << 10;
    QTest::newRow("down") << QVector<int>{9, 10, 11} << 9 << 12;
    QTest::newRow("down and one back") << QVector<int>{9, 10, 11, 10} << 9 << 11;
    QTest::newRow("down and all back") << QVector<int>{9, 10, 9} << 9 << 10;
    QTest::newRow("down with a jump") << QVector<int>{9, 13} << 9 << 14;
    QTest::newRow("up") << QVector<int>{9, 8, 7} << 7 << 10;
    QTest::newRow("the only row again") << QVector<int>{9, 9} << 9 << 10;
    QTest::newRow("into the middle") << QVector<int>{9, 10, 11, 12, 13, 14, 10} << 10 << 15;
}

void VelDayLayoutTest::selectionShouldFollowTheMouse()
{
    QFETCH(QVector<int>, hours);
    QFETCH(int, from);
    QFETCH(int, to);
    VelDaySelection selection;
    bool keepEnd = false;
    for (const int hour : hours)
        keepEnd = selection.toggle(march(2, hour), march(2, hour + 1), keepEnd, 60);
    QCOMPARE(selection.start(), march(2, from));
    QCOMPARE(selection.end(), march(2, to));
    QVERIFY(selection.contains(march(2, from)));
    QVERIFY(!selection.contains(march(2, to)));
}

void VelDayLayoutTest::zonesShouldBeTestedInOrder_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<bool>("isFirst");
    QTest::addColumn<bool>("isLast");
    QTest::addColumn<bool>("hasTimes");
    QTest::addColumn<VelDayDrag::Mode>("mode");
    using VelDayDrag::Mode;
    QTest::newRow("corner goes to the day") << QPoint(4, 0) << true << true << true << Mode::MoveStartDay;
    QTest::newRow("right") << QPoint(97, 20) << true << true << true << Mode::MoveEndDay;
    QTest::newRow("just inside") << QPoint(96, 20) << true << true << true << Mode::Drag;
    QTest::newRow("top") << QPoint(5, 4) << true << true << true << Mode::ResizeStart;
    QTest::newRow("below the top") << QPoint(5, 5) << true << true << true << Mode::Drag;
    QTest::newRow("bottom") << QPoint(50, 37) << true << true << true << Mode::ResizeEnd;
    QTest::newRow("top, no times") << QPoint(50, 0) << true << true << false << Mode::Drag;
    QTest::newRow("left of a later day") << QPoint(0, 20) << false << true << true << Mode::NoMode;
    QTest::newRow("right of an earlier day") << QPoint(99, 20) << true << false << true << Mode::NoMode;
    QTest::newRow("the cut is no top") << QPoint(50, 0) << false << true << true << Mode::NoMode;
    QTest::newRow("the cut is no bottom") << QPoint(50, 39) << true << false << true << Mode::NoMode;
    QTest::newRow("middle of several days") << QPoint(50, 20) << true << false << true << Mode::NoMode;
}

void VelDayLayoutTest::zonesShouldBeTestedInOrder()
{
    QFETCH(QPoint, point);
    QFETCH(bool, isFirst);
    QFETCH(bool, isLast);
    QFETCH(bool, hasTimes);
    QTEST(VelDayDrag::hitZone(point, {QSize(100, 40), isFirst, isLast, hasTimes}), "mode");
}

void VelDayLayoutTest::edgesShouldFollowThePointer_data()
{
    QTest::addColumn<VelDayDrag::Mode>("mode");
    QTest::addColumn<VelDayDrag::Times>("times");
    QTest::addColumn<int>("pointer"); // y for times, x from the edge for days
    QTest::addColumn<VelDayDrag::Times>("expected");
    using VelDayDrag::Mode;
    const auto at = [](int fromDay, int fromMinute, int toDay, int toMinute) {
        return VelDayDrag::Times{march(fromDay).addSecs(fromMinute * 60),
                                 march(toDay).addSecs(toMinute * 60)};
    };
    // 40 pixels to the hour, rows of 30 minutes: 20 pixels each.
    const VelDayDrag::Times nineToTen = at(2, 540, 2, 600);
    QTest::newRow("start: half a row is not enough") << Mode::ResizeStart << nineToTen << 350 << nineToTen;
    QTest::newRow("start: more than half") << Mode::ResizeStart << nineToTen << 349 << at(2, 510, 2, 600);
    QTest::newRow("start: far up") << Mode::ResizeStart << nineToTen << 121 << at(2, 180, 2, 600);
    QTest::newRow("start: not above the day") << Mode::ResizeStart << nineToTen << -500 << at(2, 0, 2, 600);
    QTest::newRow("start: down to one row") << Mode::ResizeStart << nineToTen << 800 << at(2, 570, 2, 600);
    QTest::newRow("start: short stays")
        << Mode::ResizeStart << at(2, 540, 2, 550) << 500 << at(2, 540, 2, 550);
    QTest::newRow("start of a long one")
        << Mode::ResizeStart << at(2, 540, 4, 60) << 800 << at(2, 1200, 4, 60);
    QTest::newRow("start keeps off the grid")
        << Mode::ResizeStart << at(2, 545, 2, 605) << 340 << at(2, 515, 2, 605);
    QTest::newRow("end: later") << Mode::ResizeEnd << nineToTen << 421 << at(2, 540, 2, 630);
    QTest::newRow("end: last minute, not midnight")
        << Mode::ResizeEnd << nineToTen << 2000 << at(2, 540, 2, 1439);
    QTest::newRow("end: back onto the grid")
        << Mode::ResizeEnd << at(2, 540, 2, 1439) << 940 << at(2, 540, 2, 1410);
    QTest::newRow("end: up to one row") << Mode::ResizeEnd << nineToTen << 0 << at(2, 540, 2, 570);
    QTest::newRow("end: short grows") << Mode::ResizeEnd << at(2, 540, 2, 550) << 380 << at(2, 540, 2, 580);
    QTest::newRow("end of a long one") << Mode::ResizeEnd << at(2, 540, 4, 60) << 80 << at(2, 540, 4, 120);
    // Columns of 100 pixels.
    QTest::newRow("day: five pixels") << Mode::MoveStartDay << nineToTen << -5 << nineToTen;
    QTest::newRow("day: six pixels") << Mode::MoveStartDay << nineToTen << -6 << at(1, 540, 2, 600);
    QTest::newRow("day: two columns") << Mode::MoveEndDay << nineToTen << 110 << at(2, 540, 4, 600);
    QTest::newRow("day: start not past the end")
        << Mode::MoveStartDay << at(2, 540, 4, 600) << 450 << at(4, 540, 4, 600);
    QTest::newRow("day: one row is left")
        << Mode::MoveStartDay << at(2, 590, 3, 600) << 6 << at(2, 590, 3, 600);
    QTest::newRow("day: end not before the start")
        << Mode::MoveEndDay << at(2, 540, 4, 500) << -250 << at(2, 540, 3, 500);
}

void VelDayLayoutTest::edgesShouldFollowThePointer()
{
    QFETCH(VelDayDrag::Mode, mode);
    QFETCH(VelDayDrag::Times, times);
    QFETCH(int, pointer);
    QFETCH(VelDayDrag::Times, expected);
    const bool isDays = mode == VelDayDrag::MoveStartDay || mode == VelDayDrag::MoveEndDay;
    const VelDayDrag::Times result = isDays ? VelDayDrag::movedDays(mode, times, pointer, 100, true, 30)
                                            : VelDayDrag::resized(mode, times, pointer, {40, 30});
    QCOMPARE(result.start, expected.start);
    QCOMPARE(result.end, expected.end);
}

QTEST_GUILESS_MAIN(VelDayLayoutTest)

#include "veldaylayouttest.moc"

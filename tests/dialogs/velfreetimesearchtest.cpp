// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velfreetimesearch.h"

#include "support/testcalendar.h"

#include <QTest>

#include <deque>

using namespace TestCalendar;
using Search = VelFreeTimeSearch;

namespace
{
/** "8-10 11:30-16" */
VelTimeSlots slotsOf(const QString &text)
{
    const auto time = [](const QString &part) {
        return QTime(part.section(QLatin1Char(':'), 0, 0).toInt(), part.section(QLatin1Char(':'), 1).toInt());
    };
    VelTimeSlots slots;
    for (const QString &part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        slots.push_back(
            {time(part.section(QLatin1Char('-'), 0, 0)), time(part.section(QLatin1Char('-'), 1))});
    return slots;
}

/** Busy times of some people, of which those from a day on have yet to come. */
class People : public Search::Source
{
public:
    explicit People(const QString &busy = {})
    {
        // "3 9-17" takes that time on the 3rd of March
        for (const QString &each : busy.split(QLatin1String(", "), Qt::SkipEmptyParts)) {
            const int day = each.section(QLatin1Char(' '), 0, 0).toInt();
            const VelTimeSlot time = slotsOf(each.section(QLatin1Char(' '), 1)).front();
            add({march(day).date(), time.start}, {march(day).date(), time.end});
        }
    }
    void add(const VelDateTime &start, const VelDateTime &end)
    {
        entries.push_back(makeEvent({}, start, end));
    }
    [[nodiscard]] bool isWorkingDay(QDate day) const override { return day.dayOfWeek() <= Qt::Friday; }
    [[nodiscard]] bool isWaiting(QDate day) const override { return outFrom.isValid() && outFrom <= day; }
    [[nodiscard]] VelEntryList getBusyEntries(QDate day) override
    {
        VelEntryList list;
        for (const VelEntry &entry : entries) {
            if (entry.getStart().date() <= day && day <= entry.getEnd().date())
                list.emplace_back(&entry);
        }
        asked.push_back(day);
        return list;
    }
    void showDay(QDate day) override { shown = day; }

    std::deque<VelEntry> entries;
    QDate outFrom;
    QDate shown;
    std::vector<QDate> asked;
};

/** From 2 March, between 8 and 16; the entry to plan is of 1 February. */
Search::Terms termsFor(int length, Search::Unit unit)
{
    Search::Terms terms;
    terms.length = length;
    terms.unit = unit;
    terms.begin = QTime(8, 0);
    terms.end = QTime(16, 0);
    terms.from = today();
    terms.proposedStart = at(QDate(2026, 2, 1));
    terms.proposedEnd = at(QDate(2026, 2, 1));
    return terms;
}

QString found(const Search::Outcome &outcome)
{
    if (outcome.result != Search::Result::Proposal)
        return outcome.result == Search::Result::Suspended ? QStringLiteral("later") : QStringLiteral("none");
    const auto text = [](const VelDateTime &time) {
        return time.toQDateTime().toString(QStringLiteral("d/M HH:mm"));
    };
    return text(outcome.start) + QStringLiteral(" to ") + text(outcome.end);
}
} // namespace

class VelFreeTimeSearchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void busyTimesShouldCutTheDay_data();
    void busyTimesShouldCutTheDay();
    void searchShouldProposeTheFirstFreeTime_data();
    void searchShouldProposeTheFirstFreeTime();
    void nextSearchShouldGoOnAfterTheProposal();
    void searchShouldRestUntilTheWeekHasCome();
    void limitShouldBeAYearFromToday();
};

void VelFreeTimeSearchTest::busyTimesShouldCutTheDay_data()
{
    QTest::addColumn<QString>("busy");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<QString>("free");
    const auto row = [](const char *name, const char *busy, int minutes, const char *free) {
        QTest::newRow(name) << QString::fromLatin1(busy) << minutes << QString::fromLatin1(free);
    };
    row("none", "", 60, "8-16");
    row("inside", "10-11", 60, "8-10 11-16");
    row("later part too short", "10-15:30", 60, "8-10");
    row("earlier part too short, later one last", "8:30-10", 60, "10-16");
    row("after the end moves the end", "17-18", 60, "8-17");
    row("moved end is cut in its turn", "17-18 16:30-20", 60, "8-16:30");
    row("end moved over another that came before", "12-13 17-18", 60, "8-17 13-17");
    row("covers the beginning", "7-9", 60, "9-16");
    row("covers the end", "15-18", 60, "8-15");
    row("before the beginning", "6-8", 60, "8-16");
    row("covers it exactly", "8-16", 0, "");
    row("the whole day", "0-23:59", 60, "");
    row("cut twice, the first part lengthened", "10-11 13-14", 60, "8-13 11-13 14-16");
    row("order of coming decides", "13-14 10-11", 60, "8-10 14-16 11-13");
    row("moment cuts too", "12-12", 60, "8-12 12-16");
    row("ends before it starts", "12-10", 60, "8-16");
    row("first slot too short", "17-18", 481, "");
    row("just long enough", "", 480, "8-16");
}

void VelFreeTimeSearchTest::busyTimesShouldCutTheDay()
{
    QFETCH(QString, busy);
    QFETCH(int, minutes);
    QFETCH(QString, free);
    const VelTimeSlots slots = velFreeSlots({QTime(8, 0), QTime(16, 0)}, slotsOf(busy), minutes * 60);
    QCOMPARE(slots, slotsOf(free));
}

void VelFreeTimeSearchTest::searchShouldProposeTheFirstFreeTime_data()
{
    QTest::addColumn<QString>("busy");
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("isDays");
    QTest::addColumn<QString>("proposal");
    const auto row = [](const char *name, const char *busy, int length, bool isDays, const char *proposal) {
        QTest::newRow(name) << QString::fromLatin1(busy) << length << isDays << QString::fromLatin1(proposal);
    };
    row("hour beside a meeting", "2 10-11", 1, false, "2/3 08:00 to 2/3 09:00");
    row("next day", "2 8-16", 8, false, "3/3 08:00 to 3/3 16:00");
    row("weekend left out", "2 8-16, 3 8-16, 4 8-16, 5 8-16, 6 8-16", 1, false, "9/3 08:00 to 9/3 09:00");
    row("no hours past the latest time, though the slot is longer", "2 8-10, 2 17-18", 7, false,
        "3/3 08:00 to 3/3 15:00");
    row("more hours than the range has", "", 9, false, "none");
    row("found days need not follow one another", "3 9-10", 2, true, "3/3 08:00 to 4/3 16:00");
    row("one day", "2 8-9", 1, true, "3/3 08:00 to 3/3 16:00");
    row("over the weekend", "2 8-9, 3 8-9, 4 8-9, 5 8-9", 2, true, "8/3 08:00 to 9/3 16:00");
}

void VelFreeTimeSearchTest::searchShouldProposeTheFirstFreeTime()
{
    QFETCH(QString, busy);
    QFETCH(int, length);
    QFETCH(bool, isDays);
    QFETCH(QString, proposal);
    People people(busy);
    Search search(people);
    const Search::Terms terms = termsFor(length, isDays ? Search::Unit::Days : Search::Unit::Hours);
    const Search::Outcome outcome = search.find(terms, today());
    QCOMPARE(found(outcome), proposal);
    QVERIFY(!search.isSearching());
    if (outcome.result == Search::Result::Proposal)
        QCOMPARE(people.shown, outcome.end.date());
}

void VelFreeTimeSearchTest::nextSearchShouldGoOnAfterTheProposal()
{
    People people(QStringLiteral("2 9-10"));
    people.add(march(2, 22), march(4, 9)); // 00:00 to 23:59 on the day between
    Search search(people);
    Search::Terms terms = termsFor(3, Search::Unit::Hours);
    terms.proposedStart = march(2, 6);
    terms.proposedEnd = march(2, 6); // earlier than the range, and used as it is
    const char *const proposals[] = {"2/3 06:00 to 2/3 09:00", "2/3 10:00 to 2/3 13:00",
                                     "2/3 13:00 to 2/3 16:00", "4/3 09:00 to 4/3 12:00"};
    for (const char *proposal : proposals) {
        const Search::Outcome outcome = search.find(terms, today());
        QCOMPARE(found(outcome), QString::fromLatin1(proposal));
        terms.from = outcome.start.date();
        terms.proposedStart = outcome.start;
        terms.proposedEnd = outcome.end;
    }
}

void VelFreeTimeSearchTest::searchShouldRestUntilTheWeekHasCome()
{
    People people(QStringLiteral("2 8-16, 3 8-16, 5 8-16, 6 8-16, 9 8-10"));
    people.outFrom = today();
    Search search(people);
    Search::Terms terms = termsFor(2, Search::Unit::Days);
    terms.proposedStart = terms.proposedEnd = march(2, 9);
    QCOMPARE(found(search.find(terms, today())), QStringLiteral("later"));
    QVERIFY(search.isSearching() && !people.shown.isValid() && people.asked.back() == today());
    people.outFrom = march(9).date();
    QCOMPARE(found(search.resume(terms, today())), QStringLiteral("later"));
    QCOMPARE(people.asked.back(), march(9).date());
    QCOMPARE(people.shown, march(6).date()); // the last one that it has looked at
    people.outFrom = {};
    // The 4th, found before the rest, counts.
    QCOMPARE(found(search.resume(terms, today())), QStringLiteral("9/3 08:00 to 10/3 16:00"));
    QCOMPARE(found(search.resume(terms, today())), QStringLiteral("none")); // is over

    // The time of day where it begins outlives the rest, on that day only.
    people.outFrom = march(11).date();
    terms = termsFor(1, Search::Unit::Hours);
    terms.from = people.outFrom;
    terms.proposedStart = march(11, 9);
    terms.proposedEnd = march(11, 11);
    QCOMPARE(found(search.find(terms, today())), QStringLiteral("later"));
    people.outFrom = {};
    QCOMPARE(found(search.resume(terms, today())), QStringLiteral("11/3 11:00 to 11/3 12:00"));
    people.outFrom = today();
    QCOMPARE(found(search.find(terms, today())), QStringLiteral("later"));
    search.stop();
    QVERIFY(!search.isSearching());
}

void VelFreeTimeSearchTest::limitShouldBeAYearFromToday()
{
    People people;
    Search search(people);
    Search::Terms terms = termsFor(1, Search::Unit::Hours);
    terms.from = today().addDays(365);
    QCOMPARE(found(search.find(terms, today())), QStringLiteral("2/3 08:00 to 2/3 09:00"));
    terms.from = today().addDays(366);
    people.outFrom = terms.from; // nothing is waited for that will not be proposed
    QCOMPARE(found(search.find(terms, today())), QStringLiteral("none"));
    QVERIFY(!search.isSearching() && people.shown == today().addDays(365)); // as before
}

QTEST_GUILESS_MAIN(VelFreeTimeSearchTest)

#include "velfreetimesearchtest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QTest>

#include <algorithm>

using namespace TestCalendar;

namespace
{
/** A document of its own for each test. */
struct Calendar {
    FakeMessages messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, &TestCalendar::today};
};

/** The titles of what was found, in alphabetical order, occurrences with their number. */
QStringList titles(const VelEntryList &list)
{
    QStringList titles;
    for (const VelEntryRef &ref : list) {
        const QString title = ref.getEntry()->getTitle();
        titles.append(ref.getNumber() == 0 ? title : title + QString::number(ref.getNumber()));
    }
    titles.sort();
    return titles;
}

QStringList titlesOn(const VelDoc &doc, QDate day)
{
    return titles(doc.getEntries(day, 0, true, QDate()));
}

QDate dayInMarch(int day)
{
    return day == 0 ? QDate() : QDate(2026, 3, day);
}

VelEntry completedTodo(const QString &title, quint32 globalid)
{
    VelEntry entry = makeTodo(title, today());
    entry.complete = true;
    entry.globalid = globalid;
    return entry;
}
} // namespace

class VelDocTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldCountLocalIdsFromOneAfterReset();
    void shouldNotReuseLocalIdOfRemovedEntry();
    void shouldKeepNewEntryOutOfTheDocumentUntilAdded();
    void shouldWarnWhenForeignEntryAlreadyHasLocalId();
    void shouldWarnWhenAddedEntryHasNoLocalId();
    void shouldReplaceEntryWithTheSameLocalId();
    void shouldDeleteOrKeepNotice_data();
    void shouldDeleteOrKeepNotice();
    void shouldKeepAllButTypeInDeletionNotice();
    void shouldTellOwners_data();
    void shouldTellOwners();
    void shouldTellOwnAccount();
    void shouldFilterByDate_data();
    void shouldFilterByDate();
    void shouldFilterOccurrencesByTheirOwnDates();
    void shouldFilterByTypeOfTheEntryThatRepeats();
    void shouldReturnDeletionNoticesAmongAllTypesOnly();
    void shouldFindChangedEntryByItsNewDates();
    void shouldWorkOutOccurrencesOfChangedRule();
    void shouldKeepLocalIdWhateverAChangeDoes();
    void shouldNotChangeMissingEntry();
    void shouldPurgeCompletedTodosOnly();
    void shouldFindOriginalOfOccurrence();
    void shouldFindNoOriginalOfRemovedSeries();
    void shouldFindLocalIdOfServerEntry();
    void shouldForgetLocalIdOfGoneServerEntry();
    void shouldNotMistakeLaterEntryForServerEntryOfEarlierCalendar();
};

void VelDocTest::shouldCountLocalIdsFromOneAfterReset()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QCOMPARE(addEvent(doc, QStringLiteral("A"), march(2, 9), march(2, 10))->localid, 1U);
    QCOMPARE(doc.newEntry(VelEntry::Todo, march(2), march(2))->localid, 2U);
    doc.newDocument();
    QCOMPARE(doc.getEntryCount(), std::size_t(0));
    QCOMPARE(doc.newEntry(VelEntry::Event, march(2), march(2))->localid, 1U);
    QCOMPARE(doc.newEntry(std::make_unique<VelEntry>())->localid, 2U);
    doc.closeDocument();
    QCOMPARE(doc.newEntry(VelEntry::Event, march(2), march(2))->localid, 1U);
}

void VelDocTest::shouldNotReuseLocalIdOfRemovedEntry()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const quint32 first = addTodo(doc, QStringLiteral("A"), today())->localid;
    const quint32 second = addTodo(doc, QStringLiteral("B"), today())->localid;
    doc.removeEntry(second);
    doc.deleteEntry(doc.getEntry(first), false);
    QCOMPARE(doc.getEntryCount(), std::size_t(0));
    QCOMPARE(addTodo(doc, QStringLiteral("C"), today())->localid, 3U);
}

void VelDocTest::shouldKeepNewEntryOutOfTheDocumentUntilAdded()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    auto entry = doc.newEntry(VelEntry::Event, march(2, 9), march(2, 10));
    const quint32 localid = entry->localid;
    QVERIFY(!doc.getEntry(localid));
    QVERIFY(titlesOn(doc, today()).isEmpty());
    const VelEntry *added = doc.addEntry(std::move(entry));
    QCOMPARE(doc.getEntry(localid), added);
    QCOMPARE(doc.getEntries(today(), 0, true, QDate()).size(), std::size_t(1));
    // Whoever adds tells so, once, when all of a change is done.
    QVERIFY(!doc.isModified());
}

void VelDocTest::shouldWarnWhenForeignEntryAlreadyHasLocalId()
{
    Calendar calendar;
    auto entry = std::make_unique<VelEntry>(7, VelEntry::Event, march(2), march(2));
    QTest::ignoreMessage(QtWarningMsg, "ASSERT: \"e->localid==0\" in veldoc (47)");
    QCOMPARE(calendar.doc.newEntry(std::move(entry))->localid, 1U);
}

void VelDocTest::shouldWarnWhenAddedEntryHasNoLocalId()
{
    Calendar calendar;
    auto entry = std::make_unique<VelEntry>(0, VelEntry::Event, march(2), march(2));
    QTest::ignoreMessage(QtWarningMsg, "ASSERT: \"e->localid!=0\" in veldoc (52)");
    QVERIFY(calendar.doc.addEntry(std::move(entry)));
    QCOMPARE(calendar.doc.getEntryCount(), std::size_t(1));
}

void VelDocTest::shouldReplaceEntryWithTheSameLocalId()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const quint32 localid = addSynced(doc, QStringLiteral("Old"), 70)->localid;
    auto other = std::make_unique<VelEntry>(makeEvent(QStringLiteral("New"), march(5, 9), march(5, 10)));
    other->localid = localid;
    other->globalid = 71;
    other->rule = dailyRule(1, 2);
    const VelEntry *added = doc.addEntry(std::move(other));
    QCOMPARE(doc.getEntryCount(), std::size_t(1));
    QCOMPARE(doc.getEntry(localid), added);
    QCOMPARE(titlesOn(doc, today()), QStringList());
    QCOMPARE(titlesOn(doc, dayInMarch(5)), QStringList{QStringLiteral("New")});
    QCOMPARE(titlesOn(doc, dayInMarch(6)), QStringList{QStringLiteral("New1")});
    QCOMPARE(doc.getLocalId(71), localid);
    QCOMPARE(doc.getLocalId(70), 0U);
}

void VelDocTest::shouldDeleteOrKeepNotice_data()
{
    QTest::addColumn<quint32>("globalid");
    QTest::addColumn<bool>("force");
    QTest::addColumn<bool>("isKept");

    QTest::newRow("unknown to the server") << 0U << false << false;
    QTest::newRow("unknown to the server, forced") << 0U << true << false;
    QTest::newRow("known to the server") << 70U << false << true;
    QTest::newRow("known to the server, forced") << 70U << true << false;
}

void VelDocTest::shouldDeleteOrKeepNotice()
{
    QFETCH(quint32, globalid);
    QFETCH(bool, force);
    QFETCH(bool, isKept);

    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const VelEntry *entry = addSynced(doc, QStringLiteral("A"), globalid);
    const quint32 localid = entry->localid;
    doc.deleteEntry(entry, force);
    QCOMPARE(doc.getEntryCount(), std::size_t(isKept ? 1 : 0));
    QCOMPARE(doc.getLocalId(70), isKept ? localid : 0U);
    QCOMPARE(doc.isModified(), isKept);
    QVERIFY(doc.getEntries(today(), VelEntry::Event, true, QDate()).empty());
    if (isKept) {
        QCOMPARE(doc.getEntry(localid)->type, int(VelEntry::Deleted));
        QCOMPARE(doc.getEntry(localid)->dirty, 1);
    }
}

void VelDocTest::shouldKeepAllButTypeInDeletionNotice()
{
    Calendar calendar;
    VelEntry expected = makeEvent(QStringLiteral("A"), march(2, 9), march(3, 10));
    expected.globalid = 70;
    expected.user = 5;
    expected.accounts.append(VelAccount(QStringLiteral("Al"), QStringLiteral("al@example.org"), 5));
    const VelEntry *entry = add(calendar.doc, expected);
    expected.localid = entry->localid;
    expected.type = VelEntry::Deleted;
    expected.dirty = 1;
    calendar.doc.deleteEntry(entry, false);
    QVERIFY(*calendar.doc.getEntry(expected.localid) == expected);
}

void VelDocTest::shouldTellOwners_data()
{
    QTest::addColumn<quint32>("calendarUser");
    QTest::addColumn<quint32>("entryUser");
    QTest::addColumn<bool>("isOwner");

    QTest::newRow("nobody's entry") << 5U << 0U << true;
    QTest::newRow("own entry") << 5U << 5U << true;
    QTest::newRow("somebody else's") << 5U << 6U << false;
    QTest::newRow("nobody's in nobody's calendar") << 0U << 0U << true;
    QTest::newRow("somebody's in nobody's calendar") << 0U << 6U << false;
}

void VelDocTest::shouldTellOwners()
{
    QFETCH(quint32, calendarUser);
    QFETCH(quint32, entryUser);

    Calendar calendar;
    calendar.doc.setUserId(calendarUser);
    VelEntry entry;
    entry.user = entryUser;
    QTEST(calendar.doc.isOwner(&entry), "isOwner");
}

void VelDocTest::shouldTellOwnAccount()
{
    Calendar calendar;
    calendar.doc.setUserId(5);
    QVERIFY(calendar.doc.isOwner(VelAccount(QStringLiteral("Al"), QString(), 5)));
    QVERIFY(!calendar.doc.isOwner(VelAccount(QStringLiteral("Al"), QString(), 6)));
    QVERIFY(!calendar.doc.isOwner(VelAccount(QStringLiteral("Al"), QString(), 0)));
}

void VelDocTest::shouldFilterByDate_data()
{
    QTest::addColumn<int>("start"); // days in March, 0 for no date
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("isFound");

    QTest::newRow("any date") << 10 << 12 << 0 << 0 << true;
    QTest::newRow("no first day, last day before it") << 10 << 12 << 0 << 9 << true;
    QTest::newRow("day before") << 10 << 12 << 9 << 0 << false;
    QTest::newRow("first day") << 10 << 12 << 10 << 0 << true;
    QTest::newRow("day in the middle") << 10 << 12 << 11 << 0 << true;
    QTest::newRow("last day") << 10 << 12 << 12 << 0 << true;
    QTest::newRow("day after") << 10 << 12 << 13 << 0 << false;
    QTest::newRow("range before") << 10 << 12 << 5 << 9 << false;
    QTest::newRow("range up to the start") << 10 << 12 << 5 << 10 << true;
    QTest::newRow("range around") << 10 << 12 << 5 << 20 << true;
    QTest::newRow("range inside") << 10 << 12 << 11 << 11 << true;
    QTest::newRow("range from the end") << 10 << 12 << 12 << 20 << true;
    QTest::newRow("range after") << 10 << 12 << 13 << 20 << false;
    QTest::newRow("range of one day") << 10 << 10 << 10 << 10 << true;
    QTest::newRow("range that ends before it begins, both inside") << 10 << 20 << 18 << 12 << true;
    QTest::newRow("range that ends before it begins, around") << 10 << 10 << 11 << 9 << false;
    QTest::newRow("end before start, day of the start") << 12 << 10 << 12 << 0 << false;
    QTest::newRow("end before start, day between") << 12 << 10 << 11 << 0 << false;
    QTest::newRow("end before start, range with the start") << 12 << 10 << 11 << 13 << true;
    QTest::newRow("end before start, range between") << 12 << 9 << 10 << 11 << false;
}

void VelDocTest::shouldFilterByDate()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(bool, isFound);

    Calendar calendar;
    addEvent(calendar.doc, QStringLiteral("A"), march(start, 23, 59), march(end, 0, 0));
    const VelEntryList found = calendar.doc.getEntries(dayInMarch(from), 0, false, dayInMarch(to));
    QCOMPARE(found.size(), std::size_t(isFound ? 1 : 0));
}

void VelDocTest::shouldFilterOccurrencesByTheirOwnDates()
{
    Calendar calendar;
    VelEntry entry = makeEvent(QStringLiteral("A"), march(2, 22), march(3, 2)); // over midnight
    entry.rule = weeklyRule({1, 4}, 4); // 5, 9 and 12 March
    add(calendar.doc, entry);
    const VelDoc &doc = calendar.doc;
    QCOMPARE(titlesOn(doc, dayInMarch(2)), QStringList{QStringLiteral("A")});
    QCOMPARE(titlesOn(doc, dayInMarch(4)), QStringList());
    QCOMPARE(doc.getEntries(dayInMarch(9), 0, false, dayInMarch(12)).size(), std::size_t(0));
    const QStringList inRange = titles(doc.getEntries(dayInMarch(10), 0, true, dayInMarch(12)));
    const QStringList all = titles(doc.getEntries(QDate(), 0, true, QDate()));
    QCOMPARE(all.size(), 4);
    QVERIFY(std::includes(all.begin(), all.end(), inRange.begin(), inRange.end()));
    for (const VelEntryRef &ref : doc.getEntries(dayInMarch(10), 0, true, dayInMarch(12)))
        QVERIFY(ref.getEntry()->getEnd().date() >= dayInMarch(10) && ref.getEntry()->getStart() < march(13));
}

void VelDocTest::shouldFilterByTypeOfTheEntryThatRepeats()
{
    Calendar calendar;
    VelEntry todo = makeTodo(QStringLiteral("T"), today());
    todo.rule = dailyRule(1, 3);
    add(calendar.doc, todo);
    VelEntry event = makeEvent(QStringLiteral("E"), march(2, 9), march(2, 10));
    event.rule = dailyRule(1, 3);
    add(calendar.doc, event);
    const auto find = [&calendar](int type, bool withRecurrences) {
        return titles(calendar.doc.getEntries(dayInMarch(2), type, withRecurrences, dayInMarch(3)));
    };
    QCOMPARE(find(VelEntry::Todo, true), (QStringList{QStringLiteral("T"), QStringLiteral("T1")}));
    QCOMPARE(find(VelEntry::Event, true), (QStringList{QStringLiteral("E"), QStringLiteral("E1")}));
    QCOMPARE(find(VelEntry::Event, false), QStringList{QStringLiteral("E")});
    QCOMPARE(find(0, true).size(), 4);
    QCOMPARE(calendar.doc.getEntries(QDate(), VelEntry::Todo, true, QDate()).size(), std::size_t(3));
}

void VelDocTest::shouldReturnDeletionNoticesAmongAllTypesOnly()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    addEvent(doc, QStringLiteral("Event"), march(2, 9), march(2, 10));
    doc.deleteEntry(addSynced(doc, QStringLiteral("Notice"), 70), false);
    const QStringList both{QStringLiteral("Event"), QStringLiteral("Notice")};
    QCOMPARE(titlesOn(doc, today()), both);
    QCOMPARE(titles(doc.getEntries(QDate(), 0, true, QDate())), both);
    QCOMPARE(titles(doc.getEntries(QDate(), VelEntry::Event, true, QDate())), both.mid(0, 1));
    QCOMPARE(titles(doc.getEntries(today(), VelEntry::Deleted, true, today())), both.mid(1));
}

void VelDocTest::shouldFindChangedEntryByItsNewDates()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const quint32 localid = addEvent(doc, QStringLiteral("A"), march(2, 9), march(2, 10))->localid;
    QVERIFY(doc.changeEntry(localid, [](VelEntry &entry) {
        entry.setStart(march(20, 9));
        entry.setEnd(march(25, 9));
    }));
    QCOMPARE(titlesOn(doc, today()), QStringList());
    QCOMPARE(titlesOn(doc, dayInMarch(23)), QStringList{QStringLiteral("A")});
    QVERIFY(doc.changeEntry(localid, [](VelEntry &entry) { entry.type = VelEntry::Todo; }));
    QVERIFY(doc.getEntries(dayInMarch(23), VelEntry::Event, true, QDate()).empty());
    QCOMPARE(doc.getEntries(dayInMarch(23), VelEntry::Todo, true, QDate()).size(), std::size_t(1));
}

void VelDocTest::shouldWorkOutOccurrencesOfChangedRule()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const quint32 localid = addEvent(doc, QStringLiteral("A"), march(2, 9), march(2, 10))->localid;
    doc.changeEntry(localid, [](VelEntry &entry) { entry.rule = dailyRule(2, 3); });
    QCOMPARE(titlesOn(doc, dayInMarch(6)), QStringList{QStringLiteral("A2")});
    doc.changeEntry(localid, [](VelEntry &entry) { entry.setTitle(QStringLiteral("B")); });
    QCOMPARE(titlesOn(doc, dayInMarch(6)), QStringList{QStringLiteral("B2")});
    doc.changeEntry(localid, [](VelEntry &entry) { entry.clearRecurring(); });
    QCOMPARE(titlesOn(doc, dayInMarch(6)), QStringList());
    QCOMPARE(titlesOn(doc, dayInMarch(2)), QStringList{QStringLiteral("B")});
}

void VelDocTest::shouldKeepLocalIdWhateverAChangeDoes()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const quint32 localid = addEvent(doc, QStringLiteral("A"), march(2, 9), march(2, 10))->localid;
    // An editor may hand back a record that it made anew.
    doc.changeEntry(
        localid, [](VelEntry &entry) { entry = makeEvent(QStringLiteral("B"), march(4, 9), march(4, 10)); });
    QCOMPARE(doc.getEntry(localid)->localid, localid);
    QCOMPARE(titlesOn(doc, dayInMarch(4)), QStringList{QStringLiteral("B")});
}

void VelDocTest::shouldNotChangeMissingEntry()
{
    Calendar calendar;
    bool isCalled = false;
    QVERIFY(!calendar.doc.changeEntry(1, [&isCalled](VelEntry &) { isCalled = true; }));
    QVERIFY(!isCalled);
}

void VelDocTest::shouldPurgeCompletedTodosOnly()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    add(doc, completedTodo(QStringLiteral("Done here"), 0));
    const quint32 known = add(doc, completedTodo(QStringLiteral("Done, known"), 70))->localid;
    addTodo(doc, QStringLiteral("Open"), today());
    VelEntry event = makeEvent(QStringLiteral("Event"), march(2), march(2));
    event.complete = true;
    add(doc, event);

    QCOMPARE(doc.purgeCompleted(), 2);
    QCOMPARE(titles(doc.getEntries(QDate(), VelEntry::Todo, true, QDate())),
             QStringList{QStringLiteral("Open")});
    QCOMPARE(titles(doc.getEntries(QDate(), VelEntry::Event, true, QDate())),
             QStringList{QStringLiteral("Event")});
    QVERIFY(doc.getEntry(known)->isDeleted());
    QVERIFY(doc.isModified());

    doc.setModified(false);
    QCOMPARE(doc.purgeCompleted(), 0);
    QVERIFY(!doc.isModified());
}

void VelDocTest::shouldFindOriginalOfOccurrence()
{
    Calendar calendar;
    addTodo(calendar.doc, QStringLiteral("Other"), today());
    VelEntry entry = makeEvent(QStringLiteral("A"), march(2, 9), march(2, 10));
    entry.rule = dailyRule(1, 5);
    const VelEntry *original = add(calendar.doc, entry);
    // The number of the first occurrence is the local id of the other entry.
    QCOMPARE(calendar.doc.getOriginalEntry(original->getOccurrence(1)), original);
    QCOMPARE(calendar.doc.getOriginalEntry(original), original);
}

void VelDocTest::shouldFindNoOriginalOfRemovedSeries()
{
    Calendar calendar;
    VelEntry occurrence = makeEvent(QStringLiteral("A"), march(2, 9), march(2, 10));
    occurrence.localid = 1;
    occurrence.originalid = 9;
    QVERIFY(!calendar.doc.getOriginalEntry(&occurrence));
}

void VelDocTest::shouldFindLocalIdOfServerEntry()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    addTodo(doc, QStringLiteral("Other"), today());
    QCOMPARE(doc.getLocalId(70), 0U);
    QCOMPARE(doc.getLocalId(0), 0U);
    const quint32 localid = addSynced(doc, QStringLiteral("A"), 70)->localid;
    QCOMPARE(doc.getLocalId(70), localid);
    // When two entries claim the same id, the later one has it.
    const quint32 later = addSynced(doc, QStringLiteral("B"), 70)->localid;
    QCOMPARE(doc.getLocalId(70), later);
}

void VelDocTest::shouldForgetLocalIdOfGoneServerEntry()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const VelEntry *entry = addSynced(doc, QStringLiteral("A"), 70);
    doc.deleteEntry(entry, false);
    QCOMPARE(doc.getLocalId(70), entry->localid); // the notice still is that entry
    doc.removeEntry(entry->localid);
    QCOMPARE(doc.getLocalId(70), 0U);
}

void VelDocTest::shouldNotMistakeLaterEntryForServerEntryOfEarlierCalendar()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    addSynced(doc, QStringLiteral("A"), 70);
    doc.newDocument();
    QCOMPARE(addTodo(doc, QStringLiteral("Takes the same local id"), today())->localid, 1U);
    QCOMPARE(doc.getLocalId(70), 0U);
    addSynced(doc, QStringLiteral("Other number"), 71);
    QCOMPARE(doc.getLocalId(70), 0U);
}

QTEST_GUILESS_MAIN(VelDocTest)

#include "veldoctest.moc"

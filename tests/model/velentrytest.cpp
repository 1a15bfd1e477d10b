// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velentry.h"
#include "model/recurrencerules.h"
#include "model/velentrylist.h"

#include <QLocale>
#include <QTest>

/** A change of an entry, as one row of a table. */
using Change = void (*)(VelEntry &entry);

Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(VelDateTime)

namespace
{
const QDate March1(2026, 3, 1);

/** A time in March 2026. */
VelDateTime at(int day, int hour, int minute = 0)
{
    return {QDate(2026, 3, day), QTime(hour, minute)};
}

VelDateTime on(int day)
{
    return {QDate(2026, 3, day), QTime()};
}

VelEntry eventAt(const VelDateTime &start, const VelDateTime &end)
{
    return {1, VelEntry::Event, start, end};
}

/** An entry of which nothing has the value of a fresh one. */
VelEntry fullEntry()
{
    VelEntry entry(12, VelEntry::Event, at(2, 22), at(3, 2));
    entry.setTitle(QStringLiteral("Night shift"));
    entry.setDescription(QStringLiteral("Hall 3\nBring keys"));
    entry.globalid = 34;
    entry.user = 5;
    entry.access = VelEntry::Private;
    entry.display = VelEntry::TentativeTime;
    entry.priority = 7;
    entry.reminder = 15;
    entry.notime = true;
    entry.complete = true;
    entry.reminderfired = true;
    entry.accounts.append(VelAccount(QStringLiteral("Al"), QStringLiteral("al@example.org"), 5));
    entry.accounts.append(VelAccount(QStringLiteral("Bo"), QString(), 8));
    entry.accounts[0].status = VelAccount::Accepted;
    entry.accounts[1].status = VelAccount::Declined;
    entry.rule = Rules::times(Rules::daily(1), 4);
    return entry;
}
} // namespace

class VelEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase();
    void shouldStartWithNothingSet();
    void shouldBeMarkedWhenMadeHere_data();
    void shouldBeMarkedWhenMadeHere();
    void shouldBeMarkedBySetters_data();
    void shouldBeMarkedBySetters();
    void shouldNotMarkAnOccurrence_data();
    void shouldNotMarkAnOccurrence();
    void shouldKeepTheMarkWhenStoredValuesAreRead();
    void shouldCopyAndCompareAllThatIsStored_data();
    void shouldCopyAndCompareAllThatIsStored();
    void shouldLeaveTheOriginalAloneWhenACopyChanges();
    void shouldNotCopyOccurrences();
    void shouldSurviveAssignmentToItself();
    void shouldMoveOccurrencesAlong();
    void shouldKeepTimesThatDaylightSavingSkips();
    void shouldWordAccessAndDisplay_data();
    void shouldWordAccessAndDisplay();
    void shouldGiveTheAnswerOfAnAccount();
    void shouldClearAnswers();
    void shouldWriteTimes_data();
    void shouldWriteTimes();
    void shouldCutTimesToTheDay_data();
    void shouldCutTimesToTheDay();
    void shouldMeasureItsSpan_data();
    void shouldMeasureItsSpan();
    void shouldBeValidWithAllFourParts_data();
    void shouldBeValidWithAllFourParts();
    void shouldOverlap_data();
    void shouldOverlap();
};

void VelEntryTest::init()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
}

void VelEntryTest::cleanupTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void VelEntryTest::shouldStartWithNothingSet()
{
    const VelEntry entry;
    QCOMPARE(entry.localid + entry.globalid + entry.user + entry.reminder + entry.originalid, 0U);
    QCOMPARE(entry.dirty, 0);
    QCOMPARE(entry.type, 0);
    QCOMPARE(entry.access, 0);
    QCOMPARE(entry.display, 0);
    QCOMPARE(entry.priority, 0);
    QVERIFY(!entry.notime && !entry.complete && !entry.reminderfired);
    QVERIFY(entry.getTitle().isEmpty() && entry.getDescription().isEmpty() && entry.accounts.isEmpty());
    QVERIFY(entry.rule == VelRecurrenceRule());
    QVERIFY(entry.getStart() == VelDateTime() && entry.getEnd() == VelDateTime());
    QVERIFY(!entry.isValid() && !entry.isRecurring() && !entry.isOccurrence() && !entry.isDeleted());
}

void VelEntryTest::shouldBeMarkedWhenMadeHere_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("notime");
    QTest::newRow("event") << int(VelEntry::Event) << false;
    QTest::newRow("to-do has dates only") << int(VelEntry::Todo) << true;
    QTest::newRow("deletion notice") << int(VelEntry::Deleted) << false;
}

void VelEntryTest::shouldBeMarkedWhenMadeHere()
{
    QFETCH(int, type);
    const VelEntry entry(12, type, at(2, 9), at(2, 10));
    QCOMPARE(entry.dirty, 1);
    QCOMPARE(entry.localid, 12U);
    QCOMPARE(entry.type, type);
    QTEST(entry.notime, "notime");
    QVERIFY(entry.getStart() == at(2, 9));
    QVERIFY(entry.getEnd() == at(2, 10));
    QCOMPARE(entry.isDeleted(), type == VelEntry::Deleted);
}

void VelEntryTest::shouldBeMarkedBySetters_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("title") << Change([](VelEntry &e) { e.setTitle(QStringLiteral("New")); });
    QTest::newRow("description") << Change([](VelEntry &e) { e.setDescription(QStringLiteral("New")); });
    QTest::newRow("start") << Change([](VelEntry &e) { e.setStart(at(9, 8)); });
    QTest::newRow("end") << Change([](VelEntry &e) { e.setEnd(at(9, 11)); });
}

void VelEntryTest::shouldBeMarkedBySetters()
{
    QFETCH(Change, change);
    VelEntry entry = fullEntry();
    entry.uDirty(0);
    const VelEntry before = entry;
    change(entry);
    QCOMPARE(entry.dirty, 1);
    entry.uDirty(0);
    QVERIFY2(!(entry == before), "the value was not stored");
}

void VelEntryTest::shouldNotMarkAnOccurrence_data()
{
    shouldBeMarkedBySetters_data();
    QTest::newRow("mark") << Change([](VelEntry &e) {
        e.uDirty(1);
        e.priority = 9;
    });
}

void VelEntryTest::shouldNotMarkAnOccurrence()
{
    QFETCH(Change, change);
    VelEntry entry = fullEntry();
    entry.updRecurrence(March1);
    VelEntry occurrence = *entry.getOccurrence(1);
    const VelEntry before = occurrence;
    change(occurrence);
    QCOMPARE(occurrence.dirty, 0);
    QVERIFY2(!(occurrence == before), "the value was not stored");
}

void VelEntryTest::shouldKeepTheMarkWhenStoredValuesAreRead()
{
    VelEntry entry;
    entry.setStored(QStringLiteral("Title"), QStringLiteral("Text"), at(2, 9), at(2, 10));
    QCOMPARE(entry.dirty, 0);
    QCOMPARE(entry.getTitle(), QStringLiteral("Title"));
    QCOMPARE(entry.getDescription(), QStringLiteral("Text"));
    QVERIFY(entry.getStart() == at(2, 9));
    QVERIFY(entry.getEnd() == at(2, 10));
}

void VelEntryTest::shouldCopyAndCompareAllThatIsStored_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("localid") << Change([](VelEntry &e) { e.localid = 99; });
    QTest::newRow("globalid") << Change([](VelEntry &e) { e.globalid = 99; });
    QTest::newRow("user") << Change([](VelEntry &e) { e.user = 99; });
    QTest::newRow("dirty") << Change([](VelEntry &e) { e.dirty = 0; });
    QTest::newRow("type") << Change([](VelEntry &e) { e.type = VelEntry::Todo; });
    QTest::newRow("access") << Change([](VelEntry &e) { e.access = VelEntry::Public; });
    QTest::newRow("display") << Change([](VelEntry &e) { e.display = VelEntry::Free; });
    QTest::newRow("priority") << Change([](VelEntry &e) { e.priority = 1; });
    QTest::newRow("reminder") << Change([](VelEntry &e) { e.reminder = 99; });
    QTest::newRow("originalid") << Change([](VelEntry &e) { e.originalid = 99; });
    QTest::newRow("notime") << Change([](VelEntry &e) { e.notime = false; });
    QTest::newRow("complete") << Change([](VelEntry &e) { e.complete = false; });
    QTest::newRow("reminderfired") << Change([](VelEntry &e) { e.reminderfired = false; });
    QTest::newRow("one account less") << Change([](VelEntry &e) { e.accounts.removeLast(); });
    QTest::newRow("account name") << Change([](VelEntry &e) { e.accounts[0].name = QStringLiteral("Cy"); });
    QTest::newRow("account type") << Change([](VelEntry &e) { e.accounts[0].type = VelAccount::Resource; });
    QTest::newRow("account answer") << Change(
        [](VelEntry &e) { e.accounts[1].status = VelAccount::Tentative; });
    QTest::newRow("account role") << Change([](VelEntry &e) { e.accounts[1].attendee = 1; });
    QTest::newRow("recurringtype") << Change([](VelEntry &e) { e.rule.recurringtype = 4; });
    QTest::newRow("occurevery") << Change([](VelEntry &e) { e.rule.occurevery = 5; });
    QTest::newRow("occurdays") << Change([](VelEntry &e) { e.rule.occurdays = {1}; });
    QTest::newRow("occurdaynumber") << Change([](VelEntry &e) { e.rule.occurdaynumber = -1; });
    QTest::newRow("occurenddate") << Change([](VelEntry &e) { e.rule.occurenddate = March1; });
    QTest::newRow("occurendcount") << Change([](VelEntry &e) { e.rule.occurendcount = 0; });
    QTest::newRow("title") << Change([](VelEntry &e) { e.setTitle(QString()); });
    QTest::newRow("description") << Change([](VelEntry &e) { e.setDescription(QString()); });
    QTest::newRow("start") << Change([](VelEntry &e) { e.setStart(on(2)); });
    QTest::newRow("end") << Change([](VelEntry &e) { e.setEnd(at(3, 2, 1)); });
}

void VelEntryTest::shouldCopyAndCompareAllThatIsStored()
{
    QFETCH(Change, change);
    const VelEntry original = fullEntry();
    VelEntry changed = original;
    QVERIFY(changed == original);
    change(changed);
    QVERIFY(!(changed == original));
    VelEntry assigned;
    assigned = changed;
    QVERIFY(assigned == changed);
    QVERIFY(VelEntry(changed) == changed);
}

void VelEntryTest::shouldLeaveTheOriginalAloneWhenACopyChanges()
{
    const VelEntry original = fullEntry();
    VelEntry copy = original;
    copy.clearAccountStatuses();
    copy.accounts.get(8)->name = QStringLiteral("Renamed");
    copy.setTitle(QStringLiteral("Other"));
    copy.rule.occurdays.append(3);
    QVERIFY(original == fullEntry());
}

void VelEntryTest::shouldNotCopyOccurrences()
{
    VelEntry original = fullEntry();
    original.updRecurrence(March1);
    QCOMPARE(original.getRecurrence().count(), 3U);
    VelEntry copy = original;
    QVERIFY(copy == original);
    QVERIFY(copy.getRecurrence().isEmpty());
    QVERIFY(!copy.getOccurrence(1));
    copy.updRecurrence(March1);
    QCOMPARE(copy.getRecurrence().count(), 3U);
}

void VelEntryTest::shouldSurviveAssignmentToItself()
{
    VelEntry entry = fullEntry();
    entry.updRecurrence(March1);
    const VelEntry *const occurrence = entry.getOccurrence(2);
    const VelEntry &same = entry;
    entry = same;
    QVERIFY(entry == fullEntry());
    QCOMPARE(entry.getOccurrence(2), occurrence);
}

void VelEntryTest::shouldMoveOccurrencesAlong()
{
    VelEntry entry = fullEntry();
    entry.updRecurrence(March1);
    const VelEntry *const occurrence = entry.getOccurrence(2);
    const VelEntry moved = std::move(entry);
    QVERIFY(moved == fullEntry());
    QCOMPARE(moved.getOccurrence(2), occurrence);
}

void VelEntryTest::shouldKeepTimesThatDaylightSavingSkips()
{
    VelEntry entry = eventAt(at(28, 3, 30), at(28, 4));
    entry.rule = Rules::times(Rules::daily(1), 2);
    entry.updRecurrence(March1);
    const VelEntry *const skipped = entry.getOccurrence(1);
    QVERIFY(skipped->getStart() == at(29, 3, 30));
    QVERIFY(skipped->isValid());
    QCOMPARE(skipped->getStart().secsTo(skipped->getEnd()), Q_INT64_C(1800));
}

void VelEntryTest::shouldWordAccessAndDisplay_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("access");
    QTest::addColumn<QString>("display");
    QTest::newRow("-1") << -1 << ""
                        << "";
    QTest::newRow("0") << 0 << ""
                       << "";
    QTest::newRow("1") << 1 << "Public"
                       << "Busy";
    QTest::newRow("2") << 2 << "Private"
                       << "Free";
    QTest::newRow("3") << 3 << ""
                       << "Tentative";
    QTest::newRow("4") << 4 << ""
                       << "";
}

void VelEntryTest::shouldWordAccessAndDisplay()
{
    QFETCH(int, value);
    VelEntry entry;
    entry.access = value;
    entry.display = value;
    QTEST(entry.getAccessStr(), "access");
    QTEST(entry.getDisplayStr(), "display");
    QCOMPARE(entry.isTentative(), value == 3);
}

void VelEntryTest::shouldGiveTheAnswerOfAnAccount()
{
    VelEntry entry = fullEntry();
    QCOMPARE(entry.getAccountStatus(8), int(VelAccount::Declined));
    QCOMPARE(entry.getAccountStatusStr(8), QStringLiteral("Declined"));
    // 0 asks for the owner, here account 5.
    QCOMPARE(entry.getAccountStatus(0), int(VelAccount::Accepted));
    QCOMPARE(entry.getAccountStatusStr(0), QStringLiteral("Accepted"));
    QCOMPARE(entry.getAccountStatus(77), 0);
    QCOMPARE(entry.getAccountStatusStr(77), QString());
    entry.user = 0;
    QCOMPARE(entry.getAccountStatusStr(0), QString());
}

void VelEntryTest::shouldClearAnswers()
{
    VelEntry entry = fullEntry();
    entry.clearAccountStatuses();
    QCOMPARE(entry.getAccountStatus(5), 0);
    QCOMPARE(entry.getAccountStatus(8), 0);
    QCOMPARE(entry.getAccountStatusStr(8), QStringLiteral("Unanswered"));
    QCOMPARE(static_cast<int>(entry.accounts.size()), 2);
}

void VelEntryTest::shouldWriteTimes_data()
{
    QTest::addColumn<bool>("notime");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::newRow("with times") << false << "02/03/2026 09:05"
                                << "03/03/2026 00:00";
    QTest::newRow("dates only") << true << "02/03/2026"
                                << "03/03/2026";
}

void VelEntryTest::shouldWriteTimes()
{
    QFETCH(bool, notime);
    VelEntry entry = eventAt(at(2, 9, 5), at(3, 0));
    entry.notime = notime;
    QTEST(entry.getStartStr(), "start");
    QTEST(entry.getEndStr(), "end");
}

void VelEntryTest::shouldCutTimesToTheDay_data()
{
    QTest::addColumn<int>("day");
    QTest::addColumn<QTime>("start");
    QTest::addColumn<QTime>("end");
    QTest::newRow("the day before") << 8 << QTime(10, 0) << QTime(23, 59);
    QTest::newRow("first day") << 9 << QTime(10, 0) << QTime(23, 59);
    QTest::newRow("between") << 10 << QTime(0, 0) << QTime(23, 59);
    QTest::newRow("last day") << 11 << QTime(0, 0) << QTime(8, 30);
    QTest::newRow("the day after") << 12 << QTime(0, 0) << QTime(8, 30);
}

void VelEntryTest::shouldCutTimesToTheDay()
{
    QFETCH(int, day);
    const VelEntry entry = eventAt(at(9, 10), at(11, 8, 30));
    QTEST(entry.getStartTime(QDate(2026, 3, day)), "start");
    QTEST(entry.getEndTime(QDate(2026, 3, day)), "end");
}

void VelEntryTest::shouldMeasureItsSpan_data()
{
    QTest::addColumn<VelDateTime>("start");
    QTest::addColumn<VelDateTime>("end");
    QTest::addColumn<int>("span");
    QTest::newRow("one day") << at(2, 9) << at(2, 23) << 0;
    QTest::newRow("a minute over midnight") << at(2, 23, 59) << at(3, 0) << 1;
    QTest::newRow("ends before it starts") << at(5, 9) << at(2, 9) << -3;
    QTest::newRow("dates without times") << on(2) << on(5) << 3;
    QTest::newRow("the whole calendar") << VelDateTime(QDate(1, 1, 1), QTime(0, 0))
                                        << VelDateTime(QDate(9999, 12, 31), QTime(0, 0)) << 3652058;
}

void VelEntryTest::shouldMeasureItsSpan()
{
    QFETCH(VelDateTime, start);
    QFETCH(VelDateTime, end);
    QFETCH(int, span);
    const VelEntry entry = eventAt(start, end);
    QCOMPARE(entry.getSpan(), span);
    QCOMPARE(entry.spanDays(), span != 0);
}

void VelEntryTest::shouldBeValidWithAllFourParts_data()
{
    QTest::addColumn<VelDateTime>("start");
    QTest::addColumn<VelDateTime>("end");
    QTest::addColumn<bool>("valid");
    QTest::newRow("all") << at(2, 9) << at(2, 10) << true;
    QTest::newRow("ends before it starts") << at(2, 10) << at(2, 9) << true;
    QTest::newRow("no start time") << on(2) << at(2, 10) << false;
    QTest::newRow("no end time") << at(2, 9) << on(2) << false;
    QTest::newRow("no start date") << VelDateTime(QDate(), QTime(9, 0)) << at(2, 10) << false;
    QTest::newRow("no end") << at(2, 9) << VelDateTime() << false;
}

void VelEntryTest::shouldBeValidWithAllFourParts()
{
    QFETCH(VelDateTime, start);
    QFETCH(VelDateTime, end);
    QTEST(eventAt(start, end).isValid(), "valid");
}

void VelEntryTest::shouldOverlap_data()
{
    QTest::addColumn<VelDateTime>("start");
    QTest::addColumn<VelDateTime>("end");
    QTest::addColumn<bool>("overlapsTenToTwelve");
    QTest::newRow("before") << at(2, 8) << at(2, 9) << false;
    QTest::newRow("touches the start") << at(2, 8) << at(2, 10) << false;
    QTest::newRow("a minute into the start") << at(2, 8) << at(2, 10, 1) << true;
    QTest::newRow("up to the same end") << at(2, 8) << at(2, 12) << true;
    QTest::newRow("encloses") << at(2, 8) << at(2, 13) << true;
    QTest::newRow("encloses by days") << at(1, 11) << at(3, 11) << true;
    QTest::newRow("same") << at(2, 10) << at(2, 12) << true;
    QTest::newRow("same start, longer") << at(2, 10) << at(2, 13) << true;
    QTest::newRow("same start, shorter") << at(2, 10) << at(2, 11) << true;
    QTest::newRow("inside") << at(2, 10, 30) << at(2, 11) << true;
    QTest::newRow("inside without length") << at(2, 11) << at(2, 11) << true;
    QTest::newRow("inside up to the end") << at(2, 11) << at(2, 12) << true;
    QTest::newRow("out of the end") << at(2, 11) << at(2, 14) << true;
    QTest::newRow("touches the end") << at(2, 12) << at(2, 14) << false;
    QTest::newRow("after") << at(2, 13) << at(2, 14) << false;
    QTest::newRow("same hours of another day") << at(3, 10) << at(3, 12) << false;
}

void VelEntryTest::shouldOverlap()
{
    QFETCH(VelDateTime, start);
    QFETCH(VelDateTime, end);
    const VelEntry other = eventAt(start, end);
    const VelEntry tenToTwelve = eventAt(at(2, 10), at(2, 12));
    QTEST(tenToTwelve.overlap(other), "overlapsTenToTwelve");
    QTEST(other.overlap(tenToTwelve), "overlapsTenToTwelve");
}

QTEST_GUILESS_MAIN(VelEntryTest)

#include "velentrytest.moc"

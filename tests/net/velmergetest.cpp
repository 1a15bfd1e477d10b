// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/testdoc.h"
#include "net/velopeninvitations.h"
#include "support/velrandomentry.h"

#include <QTest>

#include <set>

using namespace TestCalendar;

namespace
{
constexpr quint32 Me = 3;
constexpr quint32 Other = 9;
constexpr quint32 GlobalId = 77;
constexpr int NotInvited = -1;

VelEntry meeting(quint32 owner, int myStatus, int type = VelEntry::Event)
{
    VelEntry entry = makeEvent(QStringLiteral("Meeting"), march(2, 10), march(2, 11));
    entry.globalid = GlobalId;
    entry.user = owner;
    entry.type = type;
    entry.dirty = 0;
    entry.accounts.append(VelAccount(QStringLiteral("Somebody"), {}, 50));
    if (myStatus != NotInvited) {
        entry.accounts.append(VelAccount(QStringLiteral("I"), {}, Me));
        entry.accounts.last().status = myStatus;
    }
    return entry;
}

VelXmlContent answerOf(std::initializer_list<VelEntry> entries)
{
    VelXmlContent content;
    content.userid = Me;
    content.origright = VelDoc::FullRight;
    content.synctime = QStringLiteral("new");
    for (const VelEntry &entry : entries)
        content.entries.push_back(std::make_unique<VelEntry>(entry));
    return content;
}

std::vector<quint32> dirtyOf(const VelDoc &doc)
{
    std::vector<quint32> dirty;
    for (const VelEntryRef &entry : doc.getEntries({}, 0, false, {})) {
        if (entry.getOriginal()->dirty != 0)
            dirty.push_back(entry.getOriginal()->localid);
    }
    return dirty;
}

// Every entry, deleted ones too: type, title, day of the start, own status, globalid and dirty.
QString stateOf(const VelDoc &doc)
{
    QStringList states;
    for (const VelEntryRef &each : doc.getEntries({}, 0, false, {})) {
        const VelEntry &entry = *each.getOriginal();
        states.append(QStringLiteral("%1 %2 %3 %4 %5 %6")
                          .arg(entry.type)
                          .arg(entry.getTitle())
                          .arg(entry.getStart().date().day())
                          .arg(entry.getAccountStatus(Me))
                          .arg(entry.globalid)
                          .arg(entry.dirty));
    }
    return states.join(QLatin1String(", "));
}

struct MergeDoc : public TestDoc {
    MergeDoc()
    {
        setUserId(Me);
        setSynctime(QStringLiteral("old"));
    }
};
} // namespace

class VelMergeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldAskAndMergeByOwnerRecordAndCopy_data();
    void shouldAskAndMergeByOwnerRecordAndCopy();
    void shouldTakeTheAnswer_data();
    void shouldTakeTheAnswer();
    void shouldKeepWhatChangedMeanwhile_data();
    void shouldKeepWhatChangedMeanwhile();
    void shouldAskNothingThatWasAnsweredMeanwhile();
    void shouldKeepAndNameWhatWasNotTaken();
    void shouldTellWhatCameBackOtherwise_data();
    void shouldTellWhatCameBackOtherwise();
    void shouldGoByTheLaterOfTwo();
    void shouldReplaceTheCalendarWhenItIsTotal();
    void shouldApplyNothingBeforeItIsTold();
    void shouldNotTouchAnotherCalendar();
    void shouldLoseNothingThatIsDirty();
};

void VelMergeTest::shouldAskAndMergeByOwnerRecordAndCopy_data()
{
    QTest::addColumn<quint32>("owner");
    QTest::addColumn<int>("status"); // of the user in the entry that comes
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("local"); // the calendar's copy: none, same, moved (from the 5th)
    QTest::addColumn<int>("question"); // a VelMerge::Kind, or -1
    QTest::addColumn<QString>("merged"); // every invitation accepted

    constexpr int none = -1;
    const int invitation = int(VelMerge::Kind::Invitation);
    const int changed = int(VelMerge::Kind::Changed);
    const int cancelled = int(VelMerge::Kind::Cancelled);
    const int removed = int(VelMerge::Kind::Removed);
    const quint32 mine = 0;
    const auto row = [](const char *name, quint32 owner, int status, int type, const char *local,
                        int question, const char *merged) {
        QTest::newRow(name) << owner << status << type << QString::fromLatin1(local) << question
                            << QString::fromLatin1(merged);
    };
    row("own, new", mine, NotInvited, 1, "none", none, "1 Meeting 2 0 77 0");
    row("own by number, new", Me, NotInvited, 1, "none", none, "1 Meeting 2 0 77 0");
    row("own, moved", mine, NotInvited, 1, "moved", none, "1 Meeting 2 0 77 0");
    row("own, deleted", mine, NotInvited, -1, "same", none, "");
    row("own, deleted, unknown here", mine, NotInvited, -1, "none", none, "");
    row("removed from it", Other, NotInvited, 1, "same", removed, "");
    row("not invited, unknown here", Other, NotInvited, 1, "none", none, "");
    row("cancelled, answered", Other, 4, -1, "same", cancelled, "");
    row("cancelled, tentative", Other, 3, -1, "same", cancelled, "");
    row("cancelled, not answered", Other, 0, -1, "same", none, "");
    row("cancelled, unknown here", Other, 4, -1, "none", none, "");
    row("invited", Other, 0, 1, "none", invitation, "1 Meeting 2 4 77 1");
    row("invited again", Other, 0, 1, "same", invitation, "1 Meeting 2 4 77 1");
    row("declined", Other, 2, 1, "same", none, "");
    row("declined, unknown here", Other, 2, 1, "none", none, "");
    row("accepted, unchanged", Other, 4, 1, "same", none, "1 Meeting 2 4 77 0");
    row("accepted, unknown here", Other, 4, 1, "none", none, "1 Meeting 2 4 77 0");
    row("accepted, moved", Other, 4, 1, "moved", changed, "1 Meeting 2 4 77 0");
    row("tentative, moved", Other, 3, 1, "moved", changed, "1 Meeting 2 4 77 1");
    row("seen, moved", Other, 1, 1, "moved", changed, "1 Meeting 2 4 77 1");
}

void VelMergeTest::shouldAskAndMergeByOwnerRecordAndCopy()
{
    QFETCH(const quint32, owner);
    QFETCH(const int, status);
    QFETCH(const int, type);
    QFETCH(const QString, local);
    QFETCH(const int, question);
    MergeDoc doc;
    if (local != QLatin1String("none")) {
        VelEntry copy = meeting(owner, status == NotInvited ? VelAccount::Accepted : status);
        if (local == QLatin1String("moved"))
            copy.setStored(copy.getTitle(), {}, march(5, 10), march(5, 11));
        add(doc, copy);
    }
    doc.beginExchange();
    VelMerge merge(doc, answerOf({meeting(owner, status, type)}), dirtyOf(doc), Me);
    std::vector<VelMerge::Question> asked = merge.notices();
    const VelMerge::Report report = merge.apply();
    asked.insert(asked.end(), report.open.begin(), report.open.end());
    QCOMPARE(int(asked.size()), question < 0 ? 0 : 1);
    if (question >= 0) {
        QCOMPARE(int(asked.front().kind), question);
        QCOMPARE(asked.front().entry.getTitle(), QStringLiteral("Meeting"));
    }
    VelOpenInvitations open;
    open.take(report, doc);
    for (const quint32 globalid : open.ids())
        open.answer(doc, globalid, VelAccount::Accepted);
    QTEST(stateOf(doc), "merged");
    QCOMPARE(doc.getSynctime(), QStringLiteral("new"));
}

void VelMergeTest::shouldTakeTheAnswer_data()
{
    QTest::addColumn<int>("status"); // 0 asks for an invitation, 4 for a change
    QTest::addColumn<int>("answer"); // -1 for a window that was closed
    QTest::addColumn<QString>("merged");
    QTest::addColumn<int>("waiting"); // invitations
    const char *after = "1 Meeting 2 4 77 0";
    QTest::newRow("invited, closed") << 0 << -1 << "" << 1;
    QTest::newRow("invited, no answer") << 0 << 0 << "" << 1;
    QTest::newRow("invited, declined") << 0 << 2 << "-1 Meeting 2 2 77 1" << 0;
    QTest::newRow("invited, tentative") << 0 << 3 << "1 Meeting 2 3 77 1" << 0;
    QTest::newRow("invited, accepted") << 0 << 4 << "1 Meeting 2 4 77 1" << 0;
    QTest::newRow("moved, closed") << 4 << -1 << after << 1;
    QTest::newRow("moved, taken note of") << 4 << 0 << after << 0;
    QTest::newRow("moved, declined") << 4 << 2 << "-1 Meeting 2 2 77 1" << 0;
    QTest::newRow("moved, tentative") << 4 << 3 << "1 Meeting 2 3 77 1" << 0;
}

void VelMergeTest::shouldTakeTheAnswer()
{
    QFETCH(const int, status);
    QFETCH(const int, answer);
    QFETCH(const int, waiting);
    MergeDoc doc;
    if (status != 0) {
        VelEntry copy = meeting(Other, status);
        copy.setStored(copy.getTitle(), {}, march(5, 10), march(5, 11));
        add(doc, copy);
    }
    VelOpenInvitations open;
    const auto merge = [&doc, &open](std::initializer_list<VelEntry> entries) {
        doc.beginExchange();
        const VelMerge::Report report = VelMerge(doc, answerOf(entries), {}, Me).apply();
        open.take(report, doc);
        return report;
    };
    QCOMPARE(merge({meeting(Other, status)}).hasChanged, status != 0);
    QCOMPARE(doc.getSynctime(), QStringLiteral("new"));
    QVERIFY(open.question(GlobalId, doc)->entry.getStart() == march(2, 10));
    if (answer >= 0)
        QCOMPARE(open.answer(doc, GlobalId, answer), answer > 0);
    QTEST(stateOf(doc), "merged");
    QCOMPARE(open.count(), waiting);
    if (waiting == 0)
        return;
    QVERIFY(!merge({meeting(Other, status)}).hasChanged); // what waits already changes nothing
    QCOMPARE(open.count(), 1);
    merge({meeting(Other, VelAccount::Tentative)}); // answered at another device
    QCOMPARE(open.count(), 0);
}

void VelMergeTest::shouldKeepWhatChangedMeanwhile_data()
{
    using Change = std::function<void(VelDoc &, quint32)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("type"); // of what comes: the entry, moved to the 9th, or its deletion
    QTest::addColumn<QString>("merged");
    QTest::addColumn<bool>("fired");
    const Change nothing = [](VelDoc &, quint32) {};
    const Change ring = [](VelDoc &doc, quint32 id) { doc.dismissReminder(id); };
    const Change rename = [](VelDoc &doc, quint32 id) {
        doc.changeEntry(id, [](VelEntry &entry) { entry.setTitle(QStringLiteral("Mine")); });
    };
    const Change remove = [](VelDoc &doc, quint32 id) { doc.deleteEntry(doc.getEntry(id), false); };
    QTest::newRow("nothing, moved") << nothing << 1 << "1 Meeting 9 0 77 0" << false;
    QTest::newRow("nothing, deleted") << nothing << -1 << "" << false;
    QTest::newRow("has rung, moved") << ring << 1 << "1 Meeting 9 0 77 1" << true;
    QTest::newRow("has rung, deleted") << ring << -1 << "" << false;
    QTest::newRow("renamed, moved") << rename << 1 << "1 Mine 9 0 77 1" << false;
    QTest::newRow("renamed, deleted") << rename << -1 << "1 Mine 5 0 0 1" << false;
    QTest::newRow("deleted, moved") << remove << 1 << "-1 Meeting 9 0 77 1" << false;
    QTest::newRow("deleted, deleted") << remove << -1 << "" << false;
}

void VelMergeTest::shouldKeepWhatChangedMeanwhile()
{
    using Change = std::function<void(VelDoc &, quint32)>;
    QFETCH(const Change, change);
    QFETCH(const int, type);
    QFETCH(const bool, fired);
    MergeDoc doc;
    VelEntry entry = meeting(0, NotInvited);
    entry.reminder = 10;
    entry.setStored(entry.getTitle(), {}, march(5, 10), march(5, 11));
    const quint32 localid = add(doc, entry)->localid;
    doc.beginExchange();
    change(doc, localid);
    VelEntry coming = meeting(0, NotInvited, type);
    coming.reminder = 10;
    coming.setStored(coming.getTitle(), {}, march(9, 10), march(9, 11));
    VelMerge merge(doc, answerOf({coming}), {}, Me);
    merge.apply();
    QTEST(stateOf(doc), "merged");
    QCOMPARE(doc.getEntry(localid) && doc.getEntry(localid)->reminderfired, fired);
}

// The server repeats what it has no answer to.
void VelMergeTest::shouldAskNothingThatWasAnsweredMeanwhile()
{
    MergeDoc doc;
    add(doc, meeting(Other, VelAccount::Unanswered));
    VelEntry fresh = meeting(Other, VelAccount::Unanswered);
    fresh.globalid = 5;
    VelOpenInvitations open;
    doc.beginExchange();
    open.take(VelMerge(doc, answerOf({fresh, meeting(Other, VelAccount::Unanswered)}), {}, Me).apply(), doc);
    doc.beginExchange();
    QVERIFY(open.answer(doc, 5, VelAccount::Accepted) && open.answer(doc, GlobalId, VelAccount::Tentative));
    const QString before = stateOf(doc);
    VelMerge merge(doc, answerOf({fresh, meeting(Other, VelAccount::Unanswered)}), {}, Me);
    const VelMerge::Report report = merge.apply();
    QVERIFY(report.open.empty() && !report.hasChanged);
    QCOMPARE(stateOf(doc), before);
}

void VelMergeTest::shouldKeepAndNameWhatWasNotTaken()
{
    MergeDoc doc;
    const quint32 known = addSynced(doc, QStringLiteral("Known"), 1)->localid;
    doc.changeEntry(known, [](VelEntry &entry) { entry.uDirty(1); });
    const quint32 changedLater = addSynced(doc, QStringLiteral("ChangedLater"), 2)->localid;
    doc.changeEntry(changedLater, [](VelEntry &entry) { entry.uDirty(1); });
    doc.deleteEntry(addSynced(doc, QStringLiteral("Deleted"), 3), false);
    const quint32 fresh = addEvent(doc, QStringLiteral("Fresh"), march(3, 9), march(3, 10))->localid;
    addEvent(doc, QString(50, QLatin1Char('x')), march(3, 9), march(3, 10));
    const std::vector<quint32> sent = dirtyOf(doc);
    QCOMPARE(sent.size(), std::size_t(5));
    doc.beginExchange();
    doc.changeEntry(changedLater, [](VelEntry &entry) { entry.setTitle(QStringLiteral("Again")); });
    VelEntry echo(*doc.getEntry(fresh));
    echo.globalid = 4;
    const VelMerge::Report report = VelMerge(doc, answerOf({echo}), sent, Me).apply();
    QCOMPARE(dirtyOf(doc), (std::vector<quint32>{1, 2, 3, 5}));
    QVERIFY(report.hasUnsent);
    QCOMPARE(report.merged, (std::vector<VelMerge::Merged>{{VelMerge::Merged::Replaced, fresh}}));
    VelNotTaken notTaken;
    QCOMPARE(notTaken.tell(report.notTaken, false),
             QStringLiteral("4 changes were not taken: Known, ChangedLater, Deleted, %1...")
                 .arg(QString(40, QLatin1Char('x'))));
    QCOMPARE(notTaken.tell(report.notTaken, false), QString());
    QVERIFY(!notTaken.tell(report.notTaken, true).isEmpty());
    std::vector<VelNotTaken::Item> changed(report.notTaken.begin(), report.notTaken.begin() + 1);
    QCOMPARE(notTaken.tell(changed, false), QString());
    changed[0].entry.setTitle(QStringLiteral("Known better"));
    QCOMPARE(notTaken.tell(changed, false), QStringLiteral("One change was not taken: Known better"));
}

void VelMergeTest::shouldTellWhatCameBackOtherwise_data()
{
    QTest::addColumn<VelEntry>("sent");
    QTest::addColumn<VelEntry>("came");
    QTest::addColumn<bool>("isTaken");
    VelEntry own = meeting(0, NotInvited);
    own.setStored(own.getTitle(), QStringLiteral("a\x1A"), march(2, 10).addSecs(30), march(2, 11));
    VelEntry echo = meeting(Me, NotInvited);
    echo.setStored(own.getTitle(), QStringLiteral("a"), march(2, 10), march(2, 11));
    echo.accounts[0].status = VelAccount::Accepted;
    echo.accounts[0].name = QStringLiteral("Somebody Else");
    QTest::newRow("completed by the server") << own << echo << true;
    echo.setTitle(QStringLiteral("Theirs"));
    QTest::newRow("another title") << own << echo << false;
    QTest::newRow("another guest") << own << meeting(Me, Me) << false;
    QTest::newRow("deleted there") << own << meeting(Me, NotInvited, -1) << false;
    QTest::newRow("deleted here, too") << meeting(0, NotInvited, -1) << meeting(Me, NotInvited, -1) << true;
    QTest::newRow("deletion refused") << meeting(0, NotInvited, -1) << meeting(Me, NotInvited) << false;
    QTest::newRow("accepted") << meeting(Other, 4) << meeting(Other, 4) << true;
    QTest::newRow("answer refused") << meeting(Other, 4) << meeting(Other, 0) << false;
    QTest::newRow("declined") << meeting(Other, 2, -1) << meeting(Other, 2) << true;
}

void VelMergeTest::shouldTellWhatCameBackOtherwise()
{
    QFETCH(const VelEntry, sent);
    QFETCH(const VelEntry, came);
    QTEST(VelNotTaken::isTaken(sent, came, Me), "isTaken");
}

void VelMergeTest::shouldGoByTheLaterOfTwo()
{
    MergeDoc doc;
    const quint32 fresh = add(doc, makeEvent(QStringLiteral("Fresh"), march(3, 9), march(3, 10)))->localid;
    add(doc, meeting(Other, VelAccount::Accepted));
    doc.beginExchange();
    VelEntry echo(*doc.getEntry(fresh));
    echo.globalid = 4;
    VelEntry later = echo;
    later.localid = 0;
    later.setTitle(QStringLiteral("Later"));
    VelEntry moved = meeting(Other, VelAccount::Unanswered);
    VelMerge merge(doc, answerOf({echo, moved, meeting(Other, 4, -1), later, meeting(Other, 3)}), {fresh},
                   Me);
    QVERIFY(merge.notices().empty());
    const VelMerge::Report report = merge.apply();
    QVERIFY(report.open.empty());
    QCOMPARE(stateOf(doc), QStringLiteral("1 Later 3 0 4 0, 1 Meeting 2 3 77 0"));
}

void VelMergeTest::shouldReplaceTheCalendarWhenItIsTotal()
{
    MergeDoc doc;
    add(doc, meeting(Other, VelAccount::Accepted));
    addSynced(doc, QStringLiteral("Clean"), 5);
    const quint32 sentOne = addEvent(doc, QStringLiteral("Sent"), march(3, 9), march(3, 10))->localid;
    doc.beginExchange();
    addEvent(doc, QStringLiteral("Later"), march(4, 9), march(4, 10));
    VelEntry moved = meeting(Other, VelAccount::Accepted);
    moved.setStored(moved.getTitle(), {}, march(9, 10), march(9, 11));
    VelXmlContent content = answerOf({moved});
    content.totalsync = true;
    VelMerge merge(doc, std::move(content), {sentOne}, Me);
    QVERIFY(merge.apply().open.empty()); // it asks by the calendar that it replaces no more
    const QString fresh = QStringLiteral("1 Sent 3 0 0 1, 1 Later 4 0 0 1"); // the server never knew them
    QCOMPARE(stateOf(doc), QStringLiteral("1 Meeting 9 4 77 0, ") + fresh);
    doc.beginExchange();
    VelXmlContent empty = answerOf({});
    empty.totalsync = true;
    VelMerge last(doc, std::move(empty), dirtyOf(doc), Me);
    last.apply();
    QCOMPARE(stateOf(doc), fresh);
    doc.beginExchange();
    VelXmlContent broken = answerOf({});
    broken.totalsync = true;
    broken.error = 0;
    addSynced(doc, QStringLiteral("Kept"), 5);
    VelMerge(doc, std::move(broken), {}, Me).apply();
    QVERIFY(doc.getLocalId(5) != 0); // it may only not have been read
}

void VelMergeTest::shouldApplyNothingBeforeItIsTold()
{
    MergeDoc doc;
    add(doc, meeting(Other, VelAccount::Accepted));
    const QString before = stateOf(doc);
    VelEntry first = meeting(Other, VelAccount::Unanswered);
    first.globalid = 1;
    doc.beginExchange();
    VelMerge merge(doc, answerOf({first, meeting(Other, VelAccount::Accepted, -1)}), {}, Me);
    QCOMPARE(merge.notices().size(), std::size_t(1));
    QCOMPARE(stateOf(doc), before);
    QCOMPARE(doc.getSynctime(), QStringLiteral("old"));
    QCOMPARE(merge.apply().open.size(), std::size_t(1));
    QCOMPARE(stateOf(doc), QString());
    QCOMPARE(doc.getSynctime(), QStringLiteral("new"));
    // What waits in somebody else's calendar is not for the user to answer, unless they want to.
    doc.beginExchange();
    QVERIFY(VelMerge(doc, answerOf({first}), {}, Me + 1).apply().open.empty());
    QCOMPARE(stateOf(doc), QStringLiteral("1 Meeting 2 0 1 0"));
}

void VelMergeTest::shouldNotTouchAnotherCalendar()
{
    MergeDoc doc;
    doc.beginExchange();
    VelMerge merge(doc, answerOf({meeting(0, NotInvited)}), {}, Me);
    doc.newDocument();
    merge.apply();
    QCOMPARE(stateOf(doc), QString());
    QCOMPARE(doc.getSynctime(), QStringLiteral("0"));
}

// Two devices and a server that keeps the last version of each entry: what one of them has edited and not sent yet is still
// there, to be sent, whatever comes.
void VelMergeTest::shouldLoseNothingThatIsDirty()
{
    for (quint32 seed = 1; seed <= 60; ++seed) {
        VelRandomEntry random(seed);
        MergeDoc doc;
        for (quint32 i = 1; i <= 12; ++i) {
            VelEntry entry = random.entry();
            entry.user = 0;
            entry.globalid = random.chance(3) ? 0 : i;
            entry.dirty = entry.globalid == 0 ? 1 : random.number(0, 1);
            add(doc, entry);
        }
        const std::vector<quint32> sent = dirtyOf(doc);
        doc.beginExchange();
        std::map<quint32, VelEntry> edited;
        for (int i = random.number(0, 5); i > 0; --i) {
            const auto localid = static_cast<quint32>(random.number(1, 12));
            const VelEntry times = random.entry();
            doc.changeEntry(localid, [&times, i](VelEntry &entry) {
                entry.setTitle(QStringLiteral("Edit %1").arg(i));
                entry.setStart(times.getStart());
                entry.setEnd(times.getEnd());
            });
            edited.insert_or_assign(localid, *doc.getEntry(localid));
        }
        VelXmlContent content = answerOf({});
        content.totalsync = random.chance(4);
        std::set<quint32> named;
        for (quint32 localid = 1; localid <= 12; ++localid) {
            if (random.chance(2))
                continue;
            VelEntry entry = random.entry();
            const VelEntry &own = *doc.getEntry(localid);
            entry.localid = own.globalid == 0 ? localid : random.chance(2) ? 99 : 0;
            entry.globalid = own.globalid == 0 ? 100 + localid : own.globalid;
            entry.user = Me;
            entry.type = random.chance(5) ? -1 : 1;
            if (random.chance(4)) { // another version before it, which does not count
                content.entries.push_back(std::make_unique<VelEntry>(random.entry()));
                content.entries.back()->localid = entry.localid;
                content.entries.back()->globalid = entry.globalid;
            }
            content.entries.push_back(std::make_unique<VelEntry>(entry));
            named.insert(localid);
        }
        VelMerge(doc, std::move(content), sent, Me).apply();
        for (const auto &[localid, mine] : edited) {
            const VelEntry *entry = doc.getEntry(localid);
            QVERIFY2(entry && !entry->isDeleted(), qPrintable(QStringLiteral("seed %1").arg(seed)));
            QCOMPARE(entry->getTitle(), mine.getTitle());
            QVERIFY(entry->getStart() == mine.getStart() && entry->getEnd() == mine.getEnd());
        }
        for (const VelEntryRef &each : doc.getEntries({}, 0, false, {})) {
            const VelEntry &entry = *each.getOriginal();
            const bool wasSent = std::find(sent.begin(), sent.end(), entry.localid) != sent.end();
            const bool isUnsent =
                edited.count(entry.localid) != 0 || (wasSent && named.count(entry.localid) == 0);
            QCOMPARE(entry.dirty, int(isUnsent));
            QVERIFY(entry.getStart() <= entry.getEnd());
        }
    }
}

Q_DECLARE_METATYPE(VelEntry)
Q_DECLARE_METATYPE(std::function<void(VelDoc &, quint32)>)
QTEST_GUILESS_MAIN(VelMergeTest)
#include "velmergetest.moc"

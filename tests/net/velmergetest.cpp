// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velmerge.h"
#include "document/testdoc.h"
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
    void shouldMarkOnlyWhatWasSent();
    void shouldReplaceTheCalendarWhenItIsTotal();
    void shouldAskInOrderAndApplyNothingBefore();
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
    VelMerge merge(doc, answerOf({meeting(owner, status, type)}), dirtyOf(doc));
    QCOMPARE(int(merge.questions().size()), question < 0 ? 0 : 1);
    for (const VelMerge::Question &asked : merge.questions()) {
        QCOMPARE(int(asked.kind), question);
        QCOMPARE(asked.entry.getTitle(), QStringLiteral("Meeting"));
        merge.setAnswer(asked, VelAccount::Accepted);
    }
    const VelMerge::Report report = merge.apply();
    QCOMPARE(report.open, 0);
    QTEST(stateOf(doc), "merged");
    QCOMPARE(doc.getSynctime(), QStringLiteral("new"));
}

void VelMergeTest::shouldTakeTheAnswer_data()
{
    QTest::addColumn<int>("status"); // 0 asks for an invitation, 4 for a change
    QTest::addColumn<int>("answer"); // -1 for a window that was closed
    QTest::addColumn<QString>("merged");
    QTest::addColumn<QString>("synctime");
    const char *before = "1 Meeting 5 4 77 0";
    QTest::newRow("invited, closed") << 0 << -1 << ""
                                     << "old";
    QTest::newRow("invited, no answer") << 0 << 0 << ""
                                        << "old";
    QTest::newRow("invited, declined") << 0 << 2 << "-1 Meeting 2 2 77 1"
                                       << "new";
    QTest::newRow("invited, tentative") << 0 << 3 << "1 Meeting 2 3 77 1"
                                        << "new";
    QTest::newRow("invited, accepted") << 0 << 4 << "1 Meeting 2 4 77 1"
                                       << "new";
    QTest::newRow("moved, closed") << 4 << -1 << before << "old";
    QTest::newRow("moved, taken note of") << 4 << 0 << "1 Meeting 2 4 77 0"
                                          << "new";
    QTest::newRow("moved, declined") << 4 << 2 << "-1 Meeting 2 2 77 1"
                                     << "new";
    QTest::newRow("moved, tentative") << 4 << 3 << "1 Meeting 2 3 77 1"
                                      << "new";
}

void VelMergeTest::shouldTakeTheAnswer()
{
    QFETCH(const int, status);
    QFETCH(const int, answer);
    MergeDoc doc;
    if (status != 0) {
        VelEntry copy = meeting(Other, status);
        copy.setStored(copy.getTitle(), {}, march(5, 10), march(5, 11));
        add(doc, copy);
    }
    doc.beginExchange();
    VelMerge merge(doc, answerOf({meeting(Other, status)}), {});
    QCOMPARE(merge.questions().size(), std::size_t(1));
    merge.setAnswer(merge.questions().front(), answer < 0 ? std::nullopt : std::optional(answer));
    merge.apply();
    QTEST(stateOf(doc), "merged");
    QTEST(doc.getSynctime(), "synctime");
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
    VelMerge merge(doc, answerOf({coming}), {});
    merge.apply();
    QTEST(stateOf(doc), "merged");
    QCOMPARE(doc.getEntry(localid) && doc.getEntry(localid)->reminderfired, fired);
}

void VelMergeTest::shouldMarkOnlyWhatWasSent()
{
    MergeDoc doc;
    const quint32 known = addSynced(doc, QStringLiteral("Known"), 1)->localid;
    doc.changeEntry(known, [](VelEntry &entry) { entry.uDirty(1); });
    const quint32 changedLater = addSynced(doc, QStringLiteral("ChangedLater"), 2)->localid;
    doc.changeEntry(changedLater, [](VelEntry &entry) { entry.uDirty(1); });
    doc.deleteEntry(addSynced(doc, QStringLiteral("Deleted"), 3), false);
    const quint32 fresh = addEvent(doc, QStringLiteral("Fresh"), march(3, 9), march(3, 10))->localid;
    addEvent(doc, QStringLiteral("NotTaken"), march(3, 9), march(3, 10));
    const std::vector<quint32> sent = dirtyOf(doc);
    QCOMPARE(sent.size(), std::size_t(5));
    doc.beginExchange();
    doc.changeEntry(changedLater, [](VelEntry &entry) { entry.setTitle(QStringLiteral("Again")); });
    VelEntry echo(*doc.getEntry(fresh));
    echo.globalid = 4;
    VelMerge merge(doc, answerOf({echo}), sent);
    const VelMerge::Report report = merge.apply();
    QCOMPARE(stateOf(doc),
             QStringLiteral("1 Known 2 0 1 0, 1 Again 2 0 2 1, 1 Fresh 3 0 4 0, 1 NotTaken 3 0 0 1"));
    QVERIFY(report.hasUnsent);
    QCOMPARE(report.merged, (std::vector<VelMerge::Merged>{{VelMerge::Merged::Replaced, fresh}}));
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
    VelMerge merge(doc, std::move(content), {sentOne});
    QVERIFY(merge.questions().empty()); // it asks by the calendar that it replaces no more
    merge.apply();
    QCOMPARE(stateOf(doc), QStringLiteral("1 Meeting 9 4 77 0, 1 Later 4 0 0 1"));
    doc.beginExchange();
    VelXmlContent empty = answerOf({});
    empty.totalsync = true;
    VelMerge last(doc, std::move(empty), dirtyOf(doc));
    last.apply();
    QCOMPARE(stateOf(doc), QString());
}

void VelMergeTest::shouldAskInOrderAndApplyNothingBefore()
{
    MergeDoc doc;
    add(doc, meeting(Other, VelAccount::Accepted));
    const QString before = stateOf(doc);
    VelEntry first = meeting(Other, VelAccount::Unanswered);
    first.globalid = 1;
    VelEntry third = meeting(Other, VelAccount::Unanswered);
    third.globalid = 3;
    doc.beginExchange();
    VelMerge merge(doc, answerOf({first, meeting(Other, VelAccount::Accepted, -1), third}), {});
    std::vector<std::size_t> order;
    for (const VelMerge::Question &question : merge.questions())
        order.push_back(question.index);
    QCOMPARE(order, (std::vector<std::size_t>{0, 1, 2}));
    QCOMPARE(stateOf(doc), before);
    QCOMPARE(doc.getSynctime(), QStringLiteral("old"));
    merge.setAnswer(merge.questions()[0], VelAccount::Accepted);
    const VelMerge::Report report = merge.apply();
    QCOMPARE(report.open, 1);
    QCOMPARE(stateOf(doc), QStringLiteral("1 Meeting 2 4 1 1"));
    QCOMPARE(doc.getSynctime(), QStringLiteral("old"));
}

void VelMergeTest::shouldNotTouchAnotherCalendar()
{
    MergeDoc doc;
    doc.beginExchange();
    VelMerge merge(doc, answerOf({meeting(0, NotInvited)}), {});
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
        std::map<quint32, QString> edited;
        for (int i = random.number(0, 5); i > 0; --i) {
            const auto localid = static_cast<quint32>(random.number(1, 12));
            const QString title = QStringLiteral("Edit %1").arg(i);
            doc.changeEntry(localid, [&title](VelEntry &entry) { entry.setTitle(title); });
            edited[localid] = title;
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
            content.entries.push_back(std::make_unique<VelEntry>(entry));
            named.insert(localid);
        }
        VelMerge merge(doc, std::move(content), sent);
        merge.apply();
        for (const auto &[localid, title] : edited) {
            const VelEntry *entry = doc.getEntry(localid);
            QVERIFY2(entry && !entry->isDeleted(), qPrintable(QStringLiteral("seed %1").arg(seed)));
            QCOMPARE(entry->getTitle(), title);
            QCOMPARE(entry->dirty, 1);
        }
        for (const VelEntryRef &each : doc.getEntries({}, 0, false, {})) {
            const VelEntry &entry = *each.getOriginal();
            const bool mayBeDirty = edited.count(entry.localid) != 0 || entry.globalid == 0;
            QVERIFY(mayBeDirty || entry.dirty == 0);
        }
    }
}

Q_DECLARE_METATYPE(std::function<void(VelDoc &, quint32)>)
QTEST_GUILESS_MAIN(VelMergeTest)
#include "velmergetest.moc"

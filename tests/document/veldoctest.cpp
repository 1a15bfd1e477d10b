// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/testdoc.h"
#include "document/veldocview.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace TestCalendar;

namespace
{
// The rule for one entry or occurrence, as it reads.
bool passes(const VelEntry &entry, QDate from, QDate to)
{
    const QDate start = entry.getStart().date();
    const QDate end = entry.getEnd().date();
    if (from.isNull())
        return true;
    return to.isNull() ? start <= from && end >= from : (start >= from || end >= from) && start <= to;
}

// A document, and a map that looks at everything it has, to which the same random things happen.
struct Twins {
    QRandomGenerator random;
    TestDoc doc{};
    std::map<quint32, VelEntry> plain{};
    quint32 lastId = 0;

    int upTo(std::size_t highest) { return random.bounded(static_cast<int>(highest) + 1); }
    bool oneIn(int chances) { return random.bounded(chances) == 0; }

    // Mostly around the day of the tests, where entries meet; now and then anywhere.
    QDate day() { return today().addDays(oneIn(20) ? upTo(3600000) - 730000 : upTo(1600) - 800); }

    VelEntry makeEntry()
    {
        // Long ones are around the powers of two, where the index draws lines; some end before they start.
        const int span = oneIn(3) ? (1 << upTo(11)) - upTo(1) : oneIn(10) ? -upTo(40) : upTo(3);
        const VelDateTime start = at(day(), upTo(23));
        const VelDateTime end = start.addDays(span);
        VelEntry entry(0, 1 + upTo(1), start, end.isValid() ? end : start);
        entry.globalid = oneIn(3) ? 70 : 0;
        entry.complete = oneIn(4);
        if (oneIn(4)) {
            entry.rule = dailyRule(1 + upTo(3), oneIn(2) ? upTo(60) : 0);
            entry.rule.recurringtype = upTo(VelRecurrenceRule::Yearly);
            entry.rule.occurdays = {1 + upTo(2), 4 + upTo(3)};
            entry.rule.occurenddate = oneIn(4) ? start.date().addDays(upTo(500)) : QDate();
        }
        return entry;
    }

    // Adds, replaces, changes or deletes.
    void step()
    {
        const int kind = plain.empty() ? 0 : upTo(19);
        const bool isNew = kind < 8;
        const quint32 localid = isNew ? ++lastId : std::next(plain.begin(), upTo(plain.size() - 1))->first;
        if (!isNew && kind < 10) {
            doc.deleteEntry(doc.getEntry(localid), kind == 8);
            // What the server knows stays, as a notice to it, unless forced.
            plain[localid].type = VelEntry::Deleted;
            plain[localid].dirty = 1;
            if (kind == 8 || plain[localid].globalid == 0)
                plain.erase(localid);
            return;
        }
        auto entry = std::make_unique<VelEntry>(makeEntry());
        VelEntry &twin = plain[localid] = *entry;
        twin.localid = localid;
        twin.updRecurrence(today());
        if (isNew)
            doc.addEntry(doc.newEntry(std::move(entry)));
        else if (kind < 12)
            doc.addEntry(std::make_unique<VelEntry>(twin));
        else // by a record made anew, without its id
            doc.changeEntry(localid, [&entry](VelEntry &stored) { stored = *entry; });
    }

    // Asks both at random.
    void compareSearch()
    {
        const QDate from = oneIn(20) ? QDate() : day();
        const QDate to = oneIn(3) ? QDate() : (from.isNull() ? today() : from).addDays(upTo(80) - 20);
        const int type = upTo(3) - 1;
        const bool withRecurrences = !oneIn(4);
        std::vector<std::pair<quint32, quint32>> expected; // local id and number of the occurrence
        for (const auto &[localid, entry] : plain) {
            const quint32 count = withRecurrences ? entry.getRecurrence().count() : 0;
            for (quint32 number = 0; number <= count && (type == 0 || entry.type == type); ++number) {
                if (passes(number == 0 ? entry : *entry.getOccurrence(number), from, to))
                    expected.emplace_back(localid, number);
            }
        }
        std::vector<std::pair<quint32, quint32>> found;
        for (const VelEntryRef &ref : doc.getEntries(from, type, withRecurrences, to)) {
            QVERIFY(ref.getEntry() && ref.getStart() == ref.getEntry()->getStart());
            found.emplace_back(ref.getOriginal()->localid, ref.getNumber());
        }
        std::sort(found.begin(), found.end());
        QVERIFY2(found == expected, qPrintable(from.toString() + to.toString()));
    }
};

struct FakeView : public VelDocView {
    int updates = 0;
    std::function<void()> onUpdate = [] {};

    void updateView() override
    {
        ++updates;
        onUpdate();
    }
};
} // namespace

class VelDocTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFindWhatAPlainSearchFinds()
    {
        Twins twins{QRandomGenerator(1)};
        for (int step = 1; step <= 4000 && !QTest::currentTestFailed(); ++step) {
            twins.step();
            twins.compareSearch();
            twins.compareSearch();
            QCOMPARE(twins.doc.getEntryCount(), twins.plain.size());
            for (const auto &[localid, entry] : twins.plain)
                QVERIFY(*twins.doc.getEntry(localid) == entry);
            if (step % 400 == 0) {
                QVERIFY(twins.plain.size() > 30);
                twins.doc.newDocument();
                twins.plain.clear();
                twins.lastId = 0;
            }
        }
    }

    void shouldFindEntriesAtTheEndsOfTime()
    {
        TestDoc doc;
        const QDate last(9999, 12, 31);
        VelEntry entry = makeEvent(QStringLiteral("Daily"), at(last.addDays(-1)), at(last.addDays(-1)));
        entry.rule = dailyRule(1, 100);
        entry.rule.occurenddate = last.addDays(9);
        add(doc, entry);
        addEvent(doc, QStringLiteral("All years"), at(QDate(1, 1, 1)), at(last));
        const auto count = [&](QDate from, QDate to) { return doc.getEntries(from, 0, true, to).size(); };
        QCOMPARE(count(QDate(1, 1, 1), QDate()), std::size_t(1));
        QCOMPARE(count(last, QDate()), std::size_t(2));
        QCOMPARE(count(QDate(-4000, 1, 1), QDate(20000, 1, 1)), std::size_t(3));
    }

    void shouldFindServerEntryWhileItIsThere()
    {
        TestDoc doc;
        addSynced(doc, QStringLiteral("A"), 70);
        doc.deleteEntry(addSynced(doc, QStringLiteral("B, which claims the same id"), 70), false);
        QCOMPARE(doc.getLocalId(70), 2U); // the notice still is that entry
        doc.removeEntry(2);
        QCOMPARE(doc.getLocalId(70), 0U);
        doc.newDocument();
        for (quint32 localid = 1; localid <= 2; ++localid)
            addTodo(doc, QStringLiteral("Under the local id of an earlier one"), today());
        QCOMPARE(doc.getLocalId(70), 0U);
    }

    void shouldFindOriginalOfOccurrenceWhileItIsThere()
    {
        TestDoc doc;
        addTodo(doc, QStringLiteral("Its local id is the number of the occurrence"), today());
        VelEntry entry = makeEvent(QStringLiteral("A"), march(2, 9), march(2, 10));
        entry.rule = dailyRule(1, 5);
        const VelEntry *original = add(doc, entry);
        const VelEntry occurrence = *original->getOccurrence(1);
        QCOMPARE(doc.getOriginalEntry(&occurrence), original);
        QCOMPARE(doc.getOriginalEntry(original), original);
        doc.removeEntry(original->localid);
        QVERIFY(!doc.getOriginalEntry(&occurrence));
    }

    void shouldTellOfChangesOnceAndBeforeTheyAre()
    {
        TestDoc doc;
        QString said; // what is, and what will be
        connect(&doc, &VelDoc::modifiedChanged, this,
                [&](bool modified) { said += QStringLiteral("%1%2 ").arg(doc.isModified()).arg(modified); });
        VelEntry done = makeTodo(QStringLiteral("Done"), today());
        done.complete = true;
        doc.deleteEntry(add(doc, done), false);
        QCOMPARE(doc.purgeCompleted(), 0);
        QCOMPARE(said, QString()); // whoever adds or deletes says so, when all of a change is done
        doc.deleteEntry(addSynced(doc, QStringLiteral("Known to the server"), 70), false);
        doc.setModified(false); // saved, but not sent
        QVERIFY(!doc.isModsSynced());
        add(doc, done);
        addTodo(doc, QStringLiteral("Open"), today());
        done.user = 6; // somebody else
        add(doc, done);
        done.type = VelEntry::Event;
        add(doc, done);
        QCOMPARE(doc.purgeCompleted(), 1);
        QVERIFY(doc.getEntryCount() == 4 && !doc.getEntry(3));
        QCOMPARE(said, QStringLiteral("01 10 01 "));
    }

    void shouldUpdateViewsThatAreThereOnceButNotTheSender()
    {
        TestDoc doc;
        FakeView sender;
        FakeView other;
        auto closed = std::make_unique<FakeView>();
        // A viewer closes when it finds its entry gone, and takes its parts with it.
        other.onUpdate = [&] {
            doc.removeView(closed.get());
            closed.reset();
        };
        for (FakeView *view : {&other, &sender, closed.get(), &other})
            doc.addView(view);
        doc.slotUpdateAllViews(&sender);
        QVERIFY(sender.updates == 0 && other.updates == 1 && doc.isModified());
        doc.slotUpdateAllViews(nullptr);
        QVERIFY(sender.updates == 1 && other.updates == 2);
    }

    void shouldResetOnNewDocument()
    {
        TestDoc doc;
        addTodo(doc, QStringLiteral("A"), today());
        doc.setUserId(5);
        QVERIFY(doc.saveDocument(doc.url(QStringLiteral("work.xml")), true) && !doc.isUntitled());
        FakeView view;
        doc.addView(&view);
        bool isLocked = true;
        connect(&doc, &VelDoc::editLockWanted, this, [&](bool locked) { isLocked = locked; });
        QVERIFY(doc.newDocument() && doc.getEntryCount() == 0 && doc.getUserId() == 0);
        QVERIFY(doc.isUntitled() && !doc.isModified() && !isLocked && view.updates == 1);
        doc.closeDocument();
        QVERIFY(doc.isModsSynced());
    }
};

QTEST_GUILESS_MAIN(VelDocTest)

#include "veldoctest.moc"

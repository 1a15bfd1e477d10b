// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "support/velrandomentry.h"
#include "testdoc.h"

#include <QTest>

using namespace TestCalendar;

namespace
{
constexpr quint32 GlobalId = 77;

// The entries as they would be written.
QByteArray bytesOf(const VelDoc &doc)
{
    VelXmlWriter writer;
    const VelEntryList all = doc.getEntries({}, 0, false, {});
    for (const VelEntryRef &entry : all)
        writer.writeEntry(*entry.getOriginal());
    return QByteArray::fromStdString(writer.text());
}

// Does to the calendar what the commands do, at random.
void changeSomething(VelDoc &doc, VelRandomEntry &random)
{
    VelEntryList all = doc.getEntries({}, 0, false, {});
    const quint32 localid = all.empty()
        ? 0
        : all[static_cast<std::size_t>(random.number(0, int(all.size()) - 1))].getOriginal()->localid;
    const VelEntry *entry = doc.getEntry(localid);
    switch (random.number(0, 5)) {
    case 0:
        add(doc, random.entry());
        break;
    case 1:
        if (entry && !entry->isDeleted())
            doc.deleteEntry(entry, random.chance(3));
        break;
    case 2:
        doc.purgeCompleted();
        break;
    default:
        doc.changeEntry(localid, [&random](VelEntry &changed) {
            const quint32 globalid = changed.globalid;
            const bool isDeleted = changed.isDeleted();
            if (!isDeleted)
                changed = random.entry();
            changed.globalid = globalid;
            changed.uDirty(1);
        });
    }
}
} // namespace

class VelStepTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldComeBackToTheLetter();
    void shouldReportNothingForWhatCameToNothing();
    void shouldUndoWhatWasExchangedAsANewChange_data();
    void shouldUndoWhatWasExchangedAsANewChange();
    void shouldNotRingAgain();
};

void VelStepTest::shouldComeBackToTheLetter()
{
    for (quint32 seed = 1; seed <= 20; ++seed) {
        VelRandomEntry random(seed);
        TestDoc doc;
        for (int i = 0; i < 8; ++i) {
            VelEntry entry = random.entry();
            entry.globalid = random.chance(2) ? static_cast<quint32>(100 + i) : 0;
            entry.dirty = random.number(0, 1);
            add(doc, entry);
        }
        std::vector<std::shared_ptr<VelStep>> steps;
        connect(&doc, &VelDoc::stepDone, this,
                [&steps](const std::shared_ptr<VelStep> &step) { steps.push_back(step); });
        std::vector<QByteArray> states{bytesOf(doc)};
        for (int i = 0; i < 25; ++i) {
            const std::size_t known = steps.size();
            {
                const VelStepScope scope(&doc, QStringLiteral("change"));
                for (int k = random.number(1, 3); k > 0; --k)
                    changeSomething(doc, random);
            }
            if (steps.size() > known)
                states.push_back(bytesOf(doc));
        }
        QCOMPARE(states.size(), steps.size() + 1);
        QVERIFY(steps.size() > 10);
        std::size_t at = steps.size();
        for (int i = 0; i < 80; ++i) {
            if (at > 0 && (random.chance(2) || at == steps.size()))
                QVERIFY(!steps[--at]->undo(doc).empty());
            else
                QVERIFY(!steps[at++]->redo(doc).empty());
            QCOMPARE(bytesOf(doc), states[at]);
        }
        while (at > 0)
            steps[--at]->undo(doc);
        QCOMPARE(bytesOf(doc), states.front());
    }
}

void VelStepTest::shouldReportNothingForWhatCameToNothing()
{
    TestDoc doc;
    const quint32 localid = addSynced(doc, QStringLiteral("Title"), GlobalId)->localid;
    int steps = 0;
    connect(&doc, &VelDoc::stepDone, this, [&steps] { ++steps; });
    {
        const VelEntry before(*doc.getEntry(localid));
        const VelStepScope scope(&doc, QStringLiteral("drag"));
        doc.changeEntry(localid, [](VelEntry &entry) { entry.setStart(march(3, 9)); });
        doc.changeEntry(localid, [&before](VelEntry &entry) { entry = before; });
        doc.removeEntry(addEvent(doc, QStringLiteral("Short-lived"), march(4, 9), march(4, 10))->localid);
    }
    QCOMPARE(steps, 0);
    doc.changeEntry(localid, [](VelEntry &entry) { entry.setTitle(QStringLiteral("By a synchronisation")); });
    QCOMPARE(steps, 0);
}

void VelStepTest::shouldUndoWhatWasExchangedAsANewChange_data()
{
    using Change = std::function<void(VelDoc &, quint32)>;
    QTest::addColumn<bool>("isKnown"); // to the server, from the beginning
    QTest::addColumn<Change>("change"); // the step
    QTest::addColumn<Change>("meanwhile");
    QTest::addColumn<QString>("undone"); // type, title, start, globalid and dirty, or "gone"
    QTest::addColumn<QString>("redone");

    const Change rename = [](VelDoc &doc, quint32 id) {
        doc.changeEntry(id, [](VelEntry &entry) { entry.setTitle(QStringLiteral("New")); });
    };
    const Change add = [](VelDoc &doc, quint32) {
        addEvent(doc, QStringLiteral("Added"), march(2, 10), march(2, 11));
    };
    const Change remove = [](VelDoc &doc, quint32 id) { doc.deleteEntry(doc.getEntry(id), false); };
    const Change send = [](VelDoc &doc, quint32 id) {
        doc.beginExchange();
        auto sent = std::make_unique<VelEntry>(*doc.getEntry(id));
        sent->globalid = GlobalId;
        sent->dirty = 0;
        doc.addEntry(std::move(sent));
    };
    const Change sendAndForget = [](VelDoc &doc, quint32 id) {
        doc.beginExchange();
        doc.removeEntry(id);
    };
    const Change othersMove = [send](VelDoc &doc, quint32 id) {
        send(doc, id);
        doc.changeEntry(id, [](VelEntry &entry) {
            entry.setStart(march(9, 8));
            entry.dirty = 0;
        });
    };

    QTest::newRow("renamed, untouched")
        << true << rename << Change([](VelDoc &, quint32) {}) << "1 Old 2 77 0"
        << "1 New 2 77 1";
    QTest::newRow("renamed, sent") << true << rename << send << "1 Old 2 77 1"
                                   << "1 New 2 77 1";
    QTest::newRow("renamed, never known, sent") << false << rename << send << "1 Old 2 77 1"
                                                << "1 New 2 77 1";
    QTest::newRow("renamed, moved by others") << true << rename << othersMove << "1 Old 9 77 1"
                                              << "1 New 9 77 1";
    QTest::newRow("renamed, deleted by others") << true << rename << sendAndForget << "gone"
                                                << "gone";
    QTest::newRow("deleted, notice sent") << true << remove << send << "1 Old 2 0 1"
                                          << "gone";
    QTest::newRow("deleted, notice forgotten") << true << remove << sendAndForget << "1 Old 2 0 1"
                                               << "gone";
    QTest::newRow("deleted, attempt to send failed")
        << true << remove << Change([](VelDoc &doc, quint32) { doc.beginExchange(); }) << "1 Old 2 77 1"
        << "-1 Old 2 77 1";
    QTest::newRow("added, sent") << false << add << send << "-1 Added 2 77 1"
                                 << "1 Added 2 77 1";
}

void VelStepTest::shouldUndoWhatWasExchangedAsANewChange()
{
    using Change = std::function<void(VelDoc &, quint32)>;
    QFETCH(const bool, isKnown);
    QFETCH(const Change, change);
    QFETCH(const Change, meanwhile);
    TestDoc doc;
    VelEntry entry = makeEvent(QStringLiteral("Old"), march(2, 10), march(2, 11));
    entry.globalid = isKnown ? GlobalId : 0;
    entry.dirty = isKnown ? 0 : 1;
    const quint32 first = add(doc, entry)->localid;
    std::shared_ptr<VelStep> step;
    connect(&doc, &VelDoc::stepDone, this, [&step](const std::shared_ptr<VelStep> &done) { step = done; });
    {
        const VelStepScope scope(&doc, QStringLiteral("change"));
        change(doc, first);
    }
    QVERIFY(step);
    const VelStep::Change &changed = step->changes().front();
    const quint32 localid = changed.before ? changed.before->localid : changed.after->localid;
    const auto state = [&doc, localid]() -> QString {
        const VelEntry *now = doc.getEntry(localid);
        if (!now)
            return QStringLiteral("gone");
        return QStringLiteral("%1 %2 %3 %4 %5")
            .arg(now->type)
            .arg(now->getTitle())
            .arg(now->getStart().date().day())
            .arg(now->globalid)
            .arg(now->dirty);
    };
    meanwhile(doc, localid);
    step->undo(doc);
    QTEST(state(), "undone");
    step->redo(doc);
    QTEST(state(), "redone");
}

void VelStepTest::shouldNotRingAgain()
{
    TestDoc doc;
    VelEntry entry = makeEvent(QStringLiteral("Title"), march(2, 10), march(2, 11));
    entry.reminder = 10;
    const quint32 localid = add(doc, entry)->localid;
    std::shared_ptr<VelStep> step;
    connect(&doc, &VelDoc::stepDone, this, [&step](const std::shared_ptr<VelStep> &done) { step = done; });
    {
        const VelStepScope scope(&doc, QStringLiteral("edit"));
        doc.changeEntry(localid, [](VelEntry &changed) { changed.setTitle(QStringLiteral("Other")); });
    }
    doc.dismissReminder(localid);
    step->undo(doc);
    QCOMPARE(doc.getEntry(localid)->getTitle(), QStringLiteral("Title"));
    QVERIFY(doc.getEntry(localid)->reminderfired);
    QCOMPARE(doc.getEntry(localid)->dirty, 1);
    step->redo(doc);
    QVERIFY(doc.getEntry(localid)->reminderfired);
}

Q_DECLARE_METATYPE(std::function<void(VelDoc &, quint32)>)
QTEST_GUILESS_MAIN(VelStepTest)
#include "velsteptest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velpaste.h"
#include "document/veldoc.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QTemporaryDir>
#include <QTest>

using namespace TestCalendar;

Q_DECLARE_METATYPE(VelDateTime)

namespace
{
struct Calendar {
    FakeMessages messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, &TestCalendar::today};
};

/** What comes out of the clipboard after this entry was put there. */
std::unique_ptr<VelEntry> onClipboard(const VelEntry *entry)
{
    return std::make_unique<VelEntry>(*entry);
}

VelAccount invited(const QString &name, quint32 id)
{
    VelAccount account(name, QString(), id);
    account.status = VelAccount::Accepted;
    return account;
}
} // namespace

class VelPasteTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldPasteCopyAsNewEntry_data();
    void shouldPasteCopyAsNewEntry();
    void shouldKeepWhatTheCopiedEntrySays();
    void shouldRestoreCutEntryUnderItsIds();
    void shouldRestoreCutEntryOnlyOnce();
    void shouldNotTakeNoticeOfAnotherEntryForItsOwn_data();
    void shouldNotTakeNoticeOfAnotherEntryForItsOwn();
    void shouldAddCopyEvenWhenTheNoticeIsThere();
    void shouldTakeOverWhatOthersOrganised_data();
    void shouldTakeOverWhatOthersOrganised();
    void shouldSavePastedOccurrence_data();
    void shouldSavePastedOccurrence();
    void shouldMoveToSelection_data();
    void shouldMoveToSelection();
};

void VelPasteTest::shouldPasteCopyAsNewEntry_data()
{
    QTest::addColumn<quint32>("globalid");

    QTest::newRow("of an entry of this program") << 0U;
    QTest::newRow("of an entry of the server") << 70U;
}

void VelPasteTest::shouldPasteCopyAsNewEntry()
{
    QFETCH(quint32, globalid);

    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const VelEntry *original = addSynced(doc, QStringLiteral("A"), globalid);
    const VelEntry *pasted = VelPaste::addPasted(doc, onClipboard(original));
    QCOMPARE(doc.getEntryCount(), std::size_t(2));
    QCOMPARE(doc.getEntry(pasted->localid), pasted);
    QVERIFY(pasted->localid != original->localid);
    QCOMPARE(pasted->globalid, 0U);
    QCOMPARE(pasted->dirty, 1);
    QCOMPARE(original->dirty, 0);
    QCOMPARE(doc.getLocalId(70), globalid == 0 ? 0U : original->localid);
}

void VelPasteTest::shouldKeepWhatTheCopiedEntrySays()
{
    Calendar calendar;
    VelEntry entry = makeEvent(QStringLiteral("A"), march(2, 22), march(3, 2));
    entry.setDescription(QStringLiteral("Bring keys"));
    entry.access = VelEntry::Private;
    entry.priority = 3;
    entry.reminder = 15;
    entry.rule = dailyRule(7, 3);
    entry.accounts.append(invited(QStringLiteral("Bo"), 8));
    const VelEntry *pasted = VelPaste::addPasted(calendar.doc, std::make_unique<VelEntry>(entry));
    entry.localid = pasted->localid;
    QVERIFY(*pasted == entry);
    QCOMPARE(pasted->getRecurrence().count(), 2U);
}

void VelPasteTest::shouldRestoreCutEntryUnderItsIds()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const VelEntry *original = addSynced(doc, QStringLiteral("A"), 70);
    const quint32 localid = original->localid;
    auto cut = onClipboard(original);
    doc.deleteEntry(original, false);
    const VelEntry *pasted = VelPaste::addPasted(doc, std::move(cut));
    QCOMPARE(doc.getEntryCount(), std::size_t(1));
    QCOMPARE(pasted->localid, localid);
    QCOMPARE(pasted->globalid, 70U);
    QCOMPARE(pasted->type, int(VelEntry::Event));
    QCOMPARE(pasted->dirty, 1);
    QCOMPARE(doc.getLocalId(70), localid);
    QCOMPARE(doc.getEntries(today(), VelEntry::Event, true, QDate()).size(), std::size_t(1));
}

void VelPasteTest::shouldRestoreCutEntryOnlyOnce()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const VelEntry *original = addSynced(doc, QStringLiteral("A"), 70);
    const auto cut = onClipboard(original);
    doc.deleteEntry(original, false);
    const VelEntry *first = VelPaste::addPasted(doc, onClipboard(cut.get()));
    const VelEntry *second = VelPaste::addPasted(doc, onClipboard(cut.get()));
    QCOMPARE(doc.getEntryCount(), std::size_t(2));
    QCOMPARE(first->globalid, 70U);
    QCOMPARE(second->globalid, 0U);
    QCOMPARE(doc.getLocalId(70), first->localid);
}

void VelPasteTest::shouldNotTakeNoticeOfAnotherEntryForItsOwn_data()
{
    QTest::addColumn<quint32>("noticeId"); // what is cut and still here
    QTest::addColumn<quint32>("pastedId"); // both under local id 1

    QTest::newRow("another entry of the server") << 70U << 71U;
    QTest::newRow("an entry the server does not know") << 70U << 0U;
}

void VelPasteTest::shouldNotTakeNoticeOfAnotherEntryForItsOwn()
{
    QFETCH(quint32, noticeId);
    QFETCH(quint32, pastedId);

    Calendar other;
    auto fromThere = onClipboard(addSynced(other.doc, QStringLiteral("There"), pastedId));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const VelEntry *here = addSynced(doc, QStringLiteral("Here"), noticeId);
    const quint32 localid = here->localid;
    doc.deleteEntry(here, false);
    QCOMPARE(fromThere->localid, localid);

    const VelEntry *pasted = VelPaste::addPasted(doc, std::move(fromThere));
    QCOMPARE(doc.getEntryCount(), std::size_t(2));
    QVERIFY(doc.getEntry(localid)->isDeleted());
    QCOMPARE(doc.getEntry(localid)->getTitle(), QStringLiteral("Here"));
    QVERIFY(pasted->localid != localid);
    QCOMPARE(pasted->globalid, 0U);
}

void VelPasteTest::shouldAddCopyEvenWhenTheNoticeIsThere()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const VelEntry *original = addSynced(doc, QStringLiteral("A"), 70);
    const quint32 localid = original->localid;
    auto imported = onClipboard(original);
    doc.deleteEntry(original, false);
    const VelEntry *added = VelPaste::addCopy(doc, std::move(imported));
    QCOMPARE(added->globalid, 0U);
    QVERIFY(added->localid != localid);
    QVERIFY(doc.getEntry(localid)->isDeleted());
}

void VelPasteTest::shouldTakeOverWhatOthersOrganised_data()
{
    QTest::addColumn<quint32>("calendarUser");
    QTest::addColumn<quint32>("entryUser");
    QTest::addColumn<quint32>("userAfter");
    QTest::addColumn<int>("statusAfter");

    QTest::newRow("own") << 5U << 5U << 5U << int(VelAccount::Accepted);
    QTest::newRow("nobody's") << 5U << 0U << 0U << int(VelAccount::Accepted);
    QTest::newRow("somebody else's") << 5U << 6U << 5U << int(VelAccount::Unanswered);
    QTest::newRow("somebody's, in nobody's calendar") << 0U << 6U << 0U << int(VelAccount::Unanswered);
}

void VelPasteTest::shouldTakeOverWhatOthersOrganised()
{
    QFETCH(quint32, calendarUser);
    QFETCH(quint32, entryUser);

    Calendar calendar;
    calendar.doc.setUserId(calendarUser);
    VelEntry entry = makeEvent(QStringLiteral("A"), march(2, 9), march(2, 10));
    entry.user = entryUser;
    entry.accounts.append(invited(QStringLiteral("Bo"), 8));
    const VelEntry *pasted = VelPaste::addPasted(calendar.doc, std::make_unique<VelEntry>(entry));
    QTEST(pasted->user, "userAfter");
    QTEST(pasted->getAccountStatus(8), "statusAfter");
    QCOMPARE(pasted->accounts.size(), 1);
}

void VelPasteTest::shouldSavePastedOccurrence_data()
{
    QTest::addColumn<bool>("isCut");

    QTest::newRow("copied") << false;
    QTest::newRow("cut") << true;
}

void VelPasteTest::shouldSavePastedOccurrence()
{
    QFETCH(bool, isCut);

    Calendar calendar;
    VelDoc &doc = calendar.doc;
    const VelEntry *original = addSynced(doc, QStringLiteral("A"), 70);
    auto pasted = onClipboard(original);
    pasted->originalid = 99; // the file would leave out what says that it is an occurrence
    if (isCut)
        doc.deleteEntry(original, false);
    QVERIFY(!VelPaste::addPasted(doc, std::move(pasted))->isOccurrence());

    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("copy"));
    QVERIFY(doc.writeCopy(copy));
    QCOMPARE(fileBytes(copy).count("<entry>"), isCut ? 1 : 2);
    QCOMPARE(fileBytes(copy).count("<type>-1"), 0);
}

void VelPasteTest::shouldMoveToSelection_data()
{
    QTest::addColumn<bool>("isAllDay");
    QTest::addColumn<VelDateTime>("start");
    QTest::addColumn<VelDateTime>("end");
    QTest::addColumn<VelDateTime>("selection");
    QTest::addColumn<VelDateTime>("newStart");
    QTest::addColumn<VelDateTime>("newEnd");

    const QDate lastDay(9999, 12, 31);
    QTest::newRow("to a time") << false << march(2, 9) << march(2, 10, 30) << march(5, 14) << march(5, 14)
                               << march(5, 15, 30);
    QTest::newRow("over midnight") << false << march(2, 22) << march(3, 2) << march(9, 23) << march(9, 23)
                                   << march(10, 3);
    QTest::newRow("without length") << false << march(2, 9) << march(2, 9) << march(5, 14) << march(5, 14)
                                    << march(5, 14);
    QTest::newRow("end before start")
        << false << march(2, 9) << march(2, 8) << march(5, 14) << march(5, 14) << march(5, 13);
    QTest::newRow("over the hour that daylight saving skips")
        << false << march(2, 1) << march(2, 5) << march(29, 1) << march(29, 1) << march(29, 5);
    QTest::newRow("all day, to a time")
        << true << march(2) << march(2) << march(5, 14) << march(5) << march(5);
    QTest::newRow("all day, several days")
        << true << march(2) << march(4, 23, 59) << march(9, 8) << march(9) << march(11, 23, 59);
    QTest::newRow("back in time") << false << march(20, 9) << march(21, 9) << march(1, 0) << march(1, 0)
                                  << march(2, 0);
    QTest::newRow("up to the last date")
        << false << march(2, 9) << march(2, 10) << at(lastDay, 22) << at(lastDay, 22) << at(lastDay, 23);
    QTest::newRow("past the last date")
        << false << march(2, 9) << march(2, 11) << at(lastDay, 23) << march(2, 9) << march(2, 11);
    QTest::newRow("to nowhere") << false << march(2, 9) << march(2, 11) << VelDateTime() << march(2, 9)
                                << march(2, 11);
}

void VelPasteTest::shouldMoveToSelection()
{
    QFETCH(bool, isAllDay);
    QFETCH(VelDateTime, start);
    QFETCH(VelDateTime, end);
    QFETCH(VelDateTime, selection);
    QFETCH(VelDateTime, newStart);
    QFETCH(VelDateTime, newEnd);

    VelEntry entry = makeEvent(QStringLiteral("A"), start, end);
    entry.notime = isAllDay;
    VelPaste::moveTo(entry, selection);
    QVERIFY(entry.getStart() == newStart);
    QVERIFY(entry.getEnd() == newEnd);
}

QTEST_GUILESS_MAIN(VelPasteTest)

#include "velpastetest.moc"

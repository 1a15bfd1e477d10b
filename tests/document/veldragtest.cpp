// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldrag.h"
#include "document/testdoc.h"
#include "document/velexchange.h"
#include "document/velimportreport.h"
#include "document/velpaste.h"
#include "formats/velbinary.h"
#include "formats/velvcalendar.h"

#include <QDir>
#include <QTest>

using namespace TestCalendar;

namespace
{
const QString VCalendar = QStringLiteral("text/x-vcalendar");
const QString EntryType = QStringLiteral("application/delmasttime-entry");
const QString File = QStringLiteral("a");
const QString Html = QStringLiteral("text/html");

// An entry with what every format here has room for, and ids.
VelEntry fullEntry()
{
    VelEntry entry = makeEvent(QStringLiteral("Meeting; A, B & <C> Ä € Ж 😀"), march(2, 22, 5), march(3, 2));
    entry.setDescription(QStringLiteral("Hall 3\nBring: keys"));
    entry.localid = 12;
    entry.globalid = 34;
    entry.access = VelEntry::Private;
    entry.priority = 4;
    entry.reminder = 45;
    entry.accounts.append(VelAccount(QStringLiteral("Bo Ek"), QStringLiteral("bo@example.org"), 0));
    entry.accounts[0].status = VelAccount::Accepted;
    entry.rule = weeklyRule({1}, 5);
    return entry;
}

// A file of version 1.0 or 2.0 with an event for each letter.
QByteArray fileOf(const QByteArray &version, const char *titles)
{
    QByteArray text = "BEGIN:VCALENDAR\nVERSION:" + version + "\n";
    for (; *titles != '\0'; ++titles)
        text += QByteArray("BEGIN:VEVENT\nDTSTART:20260305T190000\nSUMMARY:") + *titles + "\nEND:VEVENT\n";
    return text + "END:VCALENDAR\n";
}

QString titlesOf(const std::vector<std::unique_ptr<VelEntry>> &entries)
{
    QString titles;
    for (const auto &entry : entries)
        titles += entry->getTitle();
    return titles;
}

// What is found in data that another program, or another window of this one, offers.
QString titlesOf(const QString &mime, const QByteArray &bytes)
{
    QMimeData data;
    data.setData(mime, bytes);
    return titlesOf(VelDrag::decodeAll(&data));
}
} // namespace

class VelDragTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldOfferAndTakeItsFormats()
    {
        const VelEntry entry = fullEntry();
        const VelDrag drag(entry, 5);
        const QString text = VelVCalendar::asvCalendar(entry, 5, true);
        QCOMPARE(drag.formats(), (QStringList{VCalendar, EntryType, QStringLiteral("text/plain")}));
        for (const QString &mime : drag.formats()) {
            const QByteArray bytes = mime == EntryType ? VelBinary::asByteArray(entry) : text.toUtf8();
            QVERIFY(drag.hasFormat(mime.toUpper()) && drag.encodedData(mime.toUpper()) == bytes);
            QCOMPARE(drag.data(mime.toUpper()), bytes);
        }
        QCOMPARE(drag.text(), text); // all of the entry, not a summary
        QVERIFY(!drag.hasFormat(Html) && drag.data(Html).isEmpty());
        const VelDrag latin(makeEvent(QStringLiteral("Sähkö"), march(2), march(2)), 5);
        QVERIFY(latin.encodedData(VCalendar).contains("S\xe4hk\xf6")); // as other programs read these texts
        QMimeData data; // of another program, or another window
        data.setData(VCalendar, fileOf("1.0", "TU"));
        data.setData(EntryType, "broken, or of a program to come");
        QCOMPARE(titlesOf(VelDrag::decodeAll(&data)), QStringLiteral("TU"));
        data.setData(EntryType, drag.data(EntryType)); // which is better
        QVERIFY(*VelDrag::decode(&data) == entry && *VelDrag::decode(&drag) == entry);
    }

    void shouldDecodeTheFirstCalendarOfDroppedFiles()
    {
        TestDoc doc;
        QVERIFY(doc.put(QStringLiteral("two.VCS"), fileOf("1.0", "AB")));
        QVERIFY(doc.put(QStringLiteral("one.ics"), fileOf("2.0", "C")));
        QVERIFY(QDir().mkdir(doc.path(QStringLiteral("folder.vcs"))));
        const auto found = [&doc](const QString &files) -> QString {
            QList<QUrl> urls;
            for (const QString &file : files.split(QLatin1Char(' ')))
                urls.append(doc.url(file));
            QMimeData data;
            data.setUrls(urls);
            return QLatin1Char(VelDrag::canDecode(&data) ? '+' : '-') + titlesOf(VelDrag::decodeAll(&data));
        };
        QCOMPARE(found(QStringLiteral("two.VCS one.ics")), QStringLiteral("+AB"));
        QCOMPARE(found(QStringLiteral("notes.txt one.ics two.VCS")), QStringLiteral("+C"));
        QCOMPARE(found(QStringLiteral("missing.vcs")), QStringLiteral("+"));
        QCOMPARE(found(QStringLiteral("notes.txt card.vcf a.xml folder.vcs")), QStringLiteral("-"));
    }

    void shouldFindNothingInHostileData()
    {
        QVERIFY(!VelDrag::decode(nullptr) && !VelDrag::canDecode(nullptr)); // an empty clipboard
        QCOMPARE(titlesOf(QStringLiteral("text/plain"), fileOf("1.0", "A")), QString());
        QCOMPARE(titlesOf(VCalendar, "BEGIN:VEVENT\nSUMMARY:Undated\nEND:VEVENT\n"), QString());
        VelEntry entry = fullEntry();
        QCOMPARE(titlesOf(EntryType, VelBinary::asByteArray(entry)), entry.getTitle());
        for (const int type : {-1, 0, 3}) {
            entry.type = type;
            QCOMPARE(titlesOf(EntryType, VelBinary::asByteArray(entry)), QString());
        }
        const QByteArray whole = VelBinary::asByteArray(fullEntry());
        for (int size = 0; size < whole.size(); ++size)
            QCOMPARE(titlesOf(EntryType, whole.left(size)), QString());
    }

    void shouldPasteUnderItsIdsOnlyWhatWasCutHere_data()
    {
        QTest::addColumn<quint32>("here"); // global ids of the entry here and the pasted one, both local id 1
        QTest::addColumn<quint32>("pasted");
        QTest::addColumn<bool>("isCut");
        QTest::newRow("copied") << 70U << 70U << false;
        QTest::newRow("cut") << 70U << 70U << true;
        QTest::newRow("cut, never sent") << 0U << 0U << true;
        QTest::newRow("another was cut") << 70U << 71U << true;
        QTest::newRow("another was cut, never sent") << 70U << 0U << true;
    }

    void shouldPasteUnderItsIdsOnlyWhatWasCutHere()
    {
        QFETCH(quint32, here);
        QFETCH(quint32, pasted);
        QFETCH(bool, isCut);
        TestDoc doc;
        VelEntry entry = *addSynced(doc, QStringLiteral("Here"), here);
        entry.globalid = pasted;
        entry.originalid = 99; // an occurrence, which a file would leave out
        if (isCut)
            doc.deleteEntry(doc.getEntry(1), false);
        const VelEntry *copy = VelPaste::addCopy(doc, std::make_unique<VelEntry>(entry));
        const VelEntry *first = VelPaste::addPasted(doc, std::make_unique<VelEntry>(entry));
        const VelEntry *second = VelPaste::addPasted(doc, std::make_unique<VelEntry>(entry));
        for (const VelEntry *added : {copy, first, second}) {
            const bool isRestored = isCut && here == 70 && pasted == 70 && added == first;
            QVERIFY((added->localid == 1) == isRestored && added->globalid == (isRestored ? 70 : 0));
            QVERIFY(added == doc.getEntry(added->localid) && added->dirty == 1 && !added->isOccurrence());
        }
    }

    void onlyWhatIsMovedShouldStayGiven()
    {
        TestDoc doc;
        VelEntry entry = makeEvent(QStringLiteral("A"), march(1, 9), march(1, 10));
        entry.reminder = 15;
        entry.reminderfired = true;
        for (const bool isCutTakenBack : {false, true}) {
            if (isCutTakenBack)
                entry.localid = add(doc, entry)->localid;
            VelDrag drag(entry, 0);
            drag.setCut();
            const auto paste = [&doc, &drag] {
                return VelPaste::addPasted(doc, VelDrag::decode(&drag), VelDrag::takeCut(&drag))
                    ->reminderfired;
            };
            QCOMPARE(paste(), !isCutTakenBack);
            QVERIFY(!paste() && !VelPaste::addCopy(doc, VelDrag::decode(&drag))->reminderfired);
        }
    }

    void importShouldNotRemindOfWhatIsOver()
    {
        TestDoc doc(&today, [] { return march(2, 12); });
        const auto isGiven = [&doc](const VelDateTime &end, bool notime, const VelRecurrenceRule &rule = {}) {
            VelEntry entry = makeEvent(QStringLiteral("A"), end.withTime(QTime(0, 0)), end);
            entry.notime = notime;
            entry.rule = rule;
            entry.reminder = 15;
            return VelPaste::addImported(doc, std::make_unique<VelEntry>(entry))->reminderfired;
        };
        QVERIFY(isGiven(march(2, 12), false) && !isGiven(march(2, 12, 1), false));
        QVERIFY(isGiven(march(1, 23), true) && !isGiven(march(2), true)); // whole days
        QVERIFY(isGiven(march(1, 10), false, dailyRule(1, 2))
                && !isGiven(march(1, 10), false, dailyRule(1, 3)));
        VelRecurrenceRule until = dailyRule(1, 0);
        until.occurenddate = today();
        QVERIFY(isGiven(march(1, 10), false, until));
        // Without an end, and with one that is too far away to be worked out.
        QVERIFY(!isGiven(march(1, 10), false, dailyRule(800, 0))
                && !isGiven(march(1, 10), false, dailyRule(800, 2)));
    }

    void shouldTakeOverWhatOthersOrganised()
    {
        TestDoc doc;
        doc.setUserId(5);
        for (const quint32 user : {0U, 5U, 6U}) {
            VelEntry entry = fullEntry();
            entry.user = user;
            const VelEntry *pasted = VelPaste::addPasted(doc, std::make_unique<VelEntry>(entry));
            QCOMPARE(pasted->user, user == 0 ? 0U : 5U);
            QVERIFY(pasted->accounts.at(0).status
                    == (user == 6 ? VelAccount::Unanswered : VelAccount::Accepted));
            QVERIFY(pasted->rule == entry.rule && pasted->getDescription() == entry.getDescription());
        }
    }

    void shouldMoveToSelectionAndKeepLength()
    {
        VelEntry entry = makeEvent(QStringLiteral("A"), march(2, 22), march(3, 2));
        const auto isMoved = [&entry](const auto &to, const auto &start, const auto &end) {
            VelPaste::moveTo(entry, to);
            return entry.getStart() == start && entry.getEnd() == end;
        };
        QVERIFY(isMoved(march(9, 23), march(9, 23), march(10, 3)));
        QVERIFY(isMoved(march(29, 1), march(29, 1), march(29, 5))); // over the daylight saving change
        QVERIFY(isMoved(at(QDate(9999, 12, 31), 23), march(29, 1), march(29, 5))); // past the last date
        QVERIFY(isMoved(VelDateTime(), march(29, 1), march(29, 5)));
        entry.notime = true;
        QVERIFY(isMoved(march(5, 14), march(5, 1), march(5, 5)));
    }

    void shouldImportByContent()
    {
        TestDoc doc;
        VelForeignContent content;
        // The titles, and how many were left out; nothing when it could not be read.
        const auto imported = [&](const QByteArray &bytes) {
            if (!doc.put(File, bytes) || !VelExchange::read(doc.path(File), content) || !content.isReadable)
                return QString();
            return QString(titlesOf(content.entries) + QString::number(content.leftOut));
        };
        QCOMPARE(imported(fileOf("1.0", "AB")), QStringLiteral("AB0"));
        QCOMPARE(imported(fileOf("1.0", "AB").replace("DTSTART", "X")), QStringLiteral("2"));
        QCOMPARE(imported(fileOf("2.0", "C")), QStringLiteral("C0"));
        QCOMPARE(imported("\xEF\xBB\xBF" + fileWithIds({1, 2})), QStringLiteral("010"));
        QCOMPARE(imported(canonicalFile().left(700)), QString());
        QCOMPARE(imported(QByteArray(5000, '\0')), QStringLiteral("0"));
        QVERIFY(!VelExchange::read(doc.path(QStringLiteral("missing")), content));
        QCOMPARE(imported(canonicalFile()), QStringLiteral("A<B & C> €😀0")); // not the deletion notice
        QVERIFY(content.entries.front()->localid == 0 && content.entries.front()->globalid == 0);
    }

    void shouldTellWhatBecameOfAnImport()
    {
        VelForeignContent content;
        content.entries.resize(3);
        QCOMPARE(VelImportReport(content).text(), QString());
        content.simplified =
            QStringList{QString(9 << 20, QLatin1Char('x')), QStringLiteral("a\nb"), QString()};
        content.leftOut = 2;
        content.singles = 1;
        content.passedOver = 5;
        const QStringList lines = VelImportReport(content).text().split(QLatin1Char('\n'));
        QCOMPARE(lines.first(),
                 QStringLiteral("3 entries were imported. 2 could not be read and were left out."));
        QCOMPARE(lines.mid(7),
                 (QStringList{QString(59, QLatin1Char('x')) + QChar(0x2026), QStringLiteral("a b"),
                              QStringLiteral("(no title)")}));
        for (int i = 0; i < 9; ++i)
            content.simplified.append(QString::number(i));
        QVERIFY(VelImportReport(content).text().endsWith(QStringLiteral("6\nand 2 more")));
        QVERIFY(VelImportReport::exportText({}).isEmpty());
        QVERIFY(VelImportReport::exportText({QStringLiteral("Last")}).endsWith(QStringLiteral("\nLast")));
    }

    void shouldReadBackWhatItExported()
    {
        for (const auto &[name, pattern, expected] :
             {std::tuple("a", "*.ics", "a.ics"), {"a.b", "*", "a.b.vcs"}, {"a.XML", "*.ics", "a.XML"}}) {
            const QUrl url = VelExchange::withSuffix(QUrl(QLatin1String(name)), QLatin1String(pattern));
            QCOMPARE(url, QUrl(QLatin1String(expected)));
        }
        for (const QString &file :
             {QStringLiteral("A.ICS"), QStringLiteral("ics"), QStringLiteral("a.xml")}) {
            TestDoc doc;
            VelEntry expected = fullEntry();
            expected.localid = 0;
            add(doc, expected);
            expected.globalid = 0;
            doc.deleteEntry(addSynced(doc, QStringLiteral("Notice"), 70), false);
            QVERIFY(VelExchange::write(doc, doc.url(file)).isWritten && doc.isUntitled()); // no save
            QVERIFY(!VelExchange::write(doc, doc.url(QStringLiteral("missing/a.ics"))).isWritten);
            QCOMPARE(doc.bytes(file).contains("VERSION:2.0"), file.endsWith(QStringLiteral(".ICS")));
            VelForeignContent content;
            QVERIFY(VelExchange::read(doc.path(file), content));
            QVERIFY(content.leftOut == 0 && content.simplified.isEmpty());
            QCOMPARE(content.entries.size(), std::size_t(1)); // the series once, and no notice
            QVERIFY(*content.entries.front() == expected);
        }
    }
};

QTEST_GUILESS_MAIN(VelDragTest)

#include "veldragtest.moc"

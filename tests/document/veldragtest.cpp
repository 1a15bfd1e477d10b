// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldrag.h"
#include "formats/velbinary.h"
#include "formats/velvcalendar.h"
#include "support/testcalendar.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace TestCalendar;

namespace
{
const QString VCalendar = QStringLiteral("text/x-vcalendar");
const QString EntryType = QStringLiteral("application/delmasttime-entry");
const QString Plain = QStringLiteral("text/plain");

/** An entry of which nothing has the value of a fresh one. */
VelEntry fullEntry()
{
    VelEntry entry = makeEvent(QStringLiteral("Night shift"), march(2, 22), march(3, 2));
    entry.setDescription(QStringLiteral("Hall 3\nBring keys"));
    entry.localid = 12;
    entry.globalid = 34;
    entry.user = 5;
    entry.access = VelEntry::Private;
    entry.display = VelEntry::TentativeTime;
    entry.priority = 7;
    entry.reminder = 15;
    entry.complete = true;
    entry.reminderfired = true;
    entry.accounts.append(VelAccount(QStringLiteral("Al"), QStringLiteral("al@example.org"), 5));
    entry.accounts[0].status = VelAccount::Accepted;
    entry.rule = weeklyRule({1, 4}, 4);
    return entry;
}

QByteArray vCalendarOf(const QStringList &titles)
{
    QString text = VelVCalendar::vCalendarHead();
    for (const QString &title : titles)
        text += VelVCalendar::asvCalendar(makeEvent(title, march(2, 9), march(2, 10)), 0, false);
    text += VelVCalendar::vCalendarTail();
    return text.toUtf8();
}

QStringList titlesOf(const std::vector<std::unique_ptr<VelEntry>> &entries)
{
    QStringList titles;
    for (const auto &entry : entries)
        titles.append(entry->getTitle());
    return titles;
}

/** The same data as another program, which knows nothing of ours, would offer it. */
std::unique_ptr<QMimeData> foreign(const QString &mime, const QByteArray &bytes)
{
    auto data = std::make_unique<QMimeData>();
    data->setData(mime, bytes);
    return data;
}
} // namespace

class VelDragTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void shouldOfferItsFormatsInOrder();
    void shouldProvideItsFormatsWhateverTheCase_data();
    void shouldProvideItsFormatsWhateverTheCase();
    void shouldGiveEntryBytesForTheirTypeOnly_data();
    void shouldGiveEntryBytesForTheirTypeOnly();
    void shouldHandTheSameOutAsMimeData();
    void shouldKeepTextThatLatin1CannotSay();
    void shouldKeepNothingOfTheEntryItself();
    void shouldDecodeEntryEqualInEveryField();
    void shouldDecodeVCalendarOfAnotherProgram();
    void shouldDecodeAllEntriesOfVCalendar();
    void shouldPreferItsOwnForm();
    void shouldDecodeDroppedFiles_data();
    void shouldDecodeDroppedFiles();
    void shouldRefuseDroppedFolder();
    void shouldRefuseWhatHoldsNoCalendarData_data();
    void shouldRefuseWhatHoldsNoCalendarData();
    void shouldFindNothingInTruncatedEntry();
    void shouldSurviveDamagedEntry();
    void shouldFindNothingInHostileBytes_data();
    void shouldFindNothingInHostileBytes();
    void shouldRefuseInvalidEntries_data();
    void shouldRefuseInvalidEntries();

private:
    [[nodiscard]] QUrl fileUrl(const QString &name) const
    {
        return QUrl::fromLocalFile(m_folder->filePath(name));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void VelDragTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QVERIFY(writeBytes(m_folder->filePath(QStringLiteral("one.vcs")), vCalendarOf({QStringLiteral("One")})));
    QVERIFY(writeBytes(m_folder->filePath(QStringLiteral("two.VCS")),
                       vCalendarOf({QStringLiteral("Two"), QStringLiteral("Three")})));
    QVERIFY(writeBytes(m_folder->filePath(QStringLiteral("empty.vcs")), vCalendarOf({})));
    QVERIFY(writeBytes(m_folder->filePath(QStringLiteral("notes.txt")), "Buy milk\n"));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder.vcs")));
}

void VelDragTest::shouldOfferItsFormatsInOrder()
{
    const VelDrag drag(fullEntry(), 5);
    QCOMPARE(drag.formats(), (QStringList{VCalendar, EntryType, Plain}));
}

void VelDragTest::shouldProvideItsFormatsWhateverTheCase_data()
{
    QTest::addColumn<QString>("mime");
    QTest::addColumn<bool>("isProvided");

    QTest::newRow("vCalendar") << VCalendar << true;
    QTest::newRow("entry") << EntryType << true;
    QTest::newRow("text") << Plain << true;
    QTest::newRow("vCalendar in capitals") << VCalendar.toUpper() << true;
    QTest::newRow("entry in capitals") << EntryType.toUpper() << true;
    QTest::newRow("text, mixed") << QStringLiteral("Text/Plain") << true;
    QTest::newRow("other text") << QStringLiteral("text/html") << false;
    QTest::newRow("only begins alike") << QStringLiteral("text/plain;charset=utf-8") << false;
    QTest::newRow("none") << QString() << false;
}

void VelDragTest::shouldProvideItsFormatsWhateverTheCase()
{
    QFETCH(QString, mime);
    QFETCH(bool, isProvided);

    const VelDrag drag(fullEntry(), 5);
    QCOMPARE(drag.provides(mime), isProvided);
    QCOMPARE(drag.hasFormat(mime), isProvided);
    QCOMPARE(!drag.data(mime).isEmpty(), isProvided);
}

void VelDragTest::shouldGiveEntryBytesForTheirTypeOnly_data()
{
    QTest::addColumn<QString>("mime");
    QTest::addColumn<bool>("isEntry");

    QTest::newRow("entry") << EntryType << true;
    QTest::newRow("entry in capitals") << EntryType.toUpper() << true;
    QTest::newRow("vCalendar") << VCalendar << false;
    QTest::newRow("text") << Plain << false;
    QTest::newRow("not offered") << QStringLiteral("image/png") << false;
}

void VelDragTest::shouldGiveEntryBytesForTheirTypeOnly()
{
    QFETCH(QString, mime);
    QFETCH(bool, isEntry);

    const VelEntry entry = fullEntry();
    const VelDrag drag(entry, 5);
    QCOMPARE(drag.encodedData(mime),
             isEntry ? VelBinary::asByteArray(entry) : VelVCalendar::asvCalendar(entry, 5, true).toLatin1());
}

void VelDragTest::shouldHandTheSameOutAsMimeData()
{
    const VelEntry entry = fullEntry();
    const VelDrag drag(entry, 5);
    QCOMPARE(drag.data(EntryType.toUpper()), VelBinary::asByteArray(entry));
    QCOMPARE(drag.data(VCalendar), drag.encodedData(VCalendar));
    // Who asks for a text gets all of the entry, not a summary.
    QVERIFY(drag.hasText());
    QCOMPARE(drag.text(), VelVCalendar::asvCalendar(entry, 5, true));
}

void VelDragTest::shouldKeepTextThatLatin1CannotSay()
{
    const QString title = QStringLiteral("Kahvi 5 € Привет 😀");
    const VelDrag drag(makeEvent(title, march(2, 9), march(2, 10)), 0);
    QVERIFY(drag.text().contains(title));
    const auto received = VelDrag::decode(foreign(VCalendar, drag.data(VCalendar)).get());
    QVERIFY(received);
    QCOMPARE(received->getTitle(), title);
}

void VelDragTest::shouldKeepNothingOfTheEntryItself()
{
    auto entry = std::make_unique<VelEntry>(fullEntry());
    const VelDrag drag(*entry, 5);
    entry->setTitle(QStringLiteral("Changed"));
    entry.reset();
    QCOMPARE(VelDrag::decode(&drag)->getTitle(), QStringLiteral("Night shift"));
}

void VelDragTest::shouldDecodeEntryEqualInEveryField()
{
    const VelEntry entry = fullEntry();
    const VelDrag drag(entry, 5);
    QVERIFY(VelDrag::canDecode(&drag));
    const auto decoded = VelDrag::decode(&drag);
    QVERIFY(decoded);
    QVERIFY(*decoded == entry);
    QCOMPARE(VelDrag::decodeAll(&drag).size(), std::size_t(1));
    // Another window of this program gets plain data.
    const auto received = VelDrag::decode(foreign(EntryType, drag.data(EntryType)).get());
    QVERIFY(received && *received == entry);
}

void VelDragTest::shouldDecodeVCalendarOfAnotherProgram()
{
    const auto data = foreign(VCalendar,
                              "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nBEGIN:VEVENT\r\nSUMMARY:Lunch\r\n"
                              "DTSTART:20260305T110000\r\nDTEND:20260305T120000\r\nEND:VEVENT\r\n"
                              "END:VCALENDAR\r\n");
    QVERIFY(VelDrag::canDecode(data.get()));
    const auto entry = VelDrag::decode(data.get());
    QVERIFY(entry);
    QCOMPARE(entry->getTitle(), QStringLiteral("Lunch"));
    QVERIFY(entry->getStart() == march(5, 11));
    QVERIFY(entry->getEnd() == march(5, 12));
    QCOMPARE(entry->type, int(VelEntry::Event));
    QCOMPARE(entry->localid, 0U);
    QCOMPARE(entry->globalid, 0U);
}

void VelDragTest::shouldDecodeAllEntriesOfVCalendar()
{
    const QStringList titles{QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")};
    const auto data = foreign(VCalendar, vCalendarOf(titles));
    QCOMPARE(titlesOf(VelDrag::decodeAll(data.get())), titles);
    QCOMPARE(VelDrag::decode(data.get())->getTitle(), titles.first());
}

void VelDragTest::shouldPreferItsOwnForm()
{
    const auto data = foreign(VCalendar, vCalendarOf({QStringLiteral("Text")}));
    data->setData(EntryType, VelBinary::asByteArray(fullEntry()));
    data->setUrls({fileUrl(QStringLiteral("one.vcs"))});
    QCOMPARE(VelDrag::decode(data.get())->getTitle(), QStringLiteral("Night shift"));
    data->removeFormat(EntryType);
    QCOMPARE(VelDrag::decode(data.get())->getTitle(), QStringLiteral("Text"));
    data->removeFormat(VCalendar);
    QCOMPARE(VelDrag::decode(data.get())->getTitle(), QStringLiteral("One"));
}

void VelDragTest::shouldDecodeDroppedFiles_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<bool>("isTaken");
    QTest::addColumn<QStringList>("titles");

    const QString one = QStringLiteral("one.vcs");
    const QString two = QStringLiteral("two.VCS");
    const QString notes = QStringLiteral("notes.txt");
    const QStringList inOne{QStringLiteral("One")};
    const QStringList inTwo{QStringLiteral("Two"), QStringLiteral("Three")};
    QTest::newRow("one entry") << QStringList{one} << true << inOne;
    QTest::newRow("several entries, capital suffix") << QStringList{two} << true << inTwo;
    QTest::newRow("the first of several calendars") << QStringList{two, one} << true << inTwo;
    QTest::newRow("a calendar behind other files") << QStringList{notes, one} << true << inOne;
    QTest::newRow("no calendar") << QStringList{notes} << false << QStringList();
    QTest::newRow("a calendar without entries")
        << QStringList{QStringLiteral("empty.vcs")} << true << QStringList();
    QTest::newRow("a missing file") << QStringList{QStringLiteral("missing.vcs")} << true << QStringList();
    QTest::newRow("nothing") << QStringList() << false << QStringList();
}

void VelDragTest::shouldDecodeDroppedFiles()
{
    QFETCH(QStringList, files);
    QFETCH(bool, isTaken);
    QFETCH(QStringList, titles);

    QMimeData data;
    QList<QUrl> urls;
    for (const QString &file : files)
        urls.append(fileUrl(file));
    data.setUrls(urls);
    QCOMPARE(VelDrag::canDecode(&data), isTaken);
    QCOMPARE(titlesOf(VelDrag::decodeAll(&data)), titles);
    const auto first = VelDrag::decode(&data);
    QCOMPARE(first ? first->getTitle() : QString(), titles.value(0));
}

void VelDragTest::shouldRefuseDroppedFolder()
{
    QMimeData data;
    data.setUrls({fileUrl(QStringLiteral("folder.vcs"))});
    QVERIFY(!VelDrag::canDecode(&data));
    QVERIFY(!VelDrag::decode(&data));
}

void VelDragTest::shouldRefuseWhatHoldsNoCalendarData_data()
{
    QTest::addColumn<QString>("mime");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("text") << Plain << vCalendarOf({QStringLiteral("A")});
    QTest::newRow("picture") << QStringLiteral("image/png") << QByteArray("\x89PNG");
    QTest::newRow("nothing") << QString() << QByteArray();
}

void VelDragTest::shouldRefuseWhatHoldsNoCalendarData()
{
    QFETCH(QString, mime);
    QFETCH(QByteArray, bytes);

    const auto data = mime.isEmpty() ? std::make_unique<QMimeData>() : foreign(mime, bytes);
    QVERIFY(!VelDrag::canDecode(data.get()));
    QVERIFY(!VelDrag::decode(data.get()));
    QVERIFY(!VelDrag::canDecode(nullptr)); // an empty clipboard
    QVERIFY(!VelDrag::decode(nullptr));
}

void VelDragTest::shouldFindNothingInTruncatedEntry()
{
    const QByteArray whole = VelBinary::asByteArray(fullEntry());
    for (int size = 0; size < whole.size(); ++size)
        QVERIFY2(!VelDrag::decode(foreign(EntryType, whole.left(size)).get()),
                 qPrintable(QString::number(size)));
    QVERIFY(VelDrag::decode(foreign(EntryType, whole).get()));
}

void VelDragTest::shouldSurviveDamagedEntry()
{
    const QByteArray whole = VelBinary::asByteArray(fullEntry());
    QRandomGenerator random(3);
    int refused = 0;
    for (int round = 0; round < 3000; ++round) {
        QByteArray damaged = whole;
        for (int i = random.bounded(1, 4); i > 0; --i)
            damaged[random.bounded(damaged.size())] = static_cast<char>(random.bounded(256));
        const auto entry = VelDrag::decode(foreign(EntryType, damaged).get());
        if (entry) {
            QVERIFY(entry->isValid());
            entry->updRecurrence(today());
        }
        refused += entry ? 0 : 1;
    }
    QVERIFY(refused > 0);
}

void VelDragTest::shouldFindNothingInHostileBytes_data()
{
    QTest::addColumn<QString>("mime");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("entry, empty") << EntryType << QByteArray();
    QTest::newRow("entry, all ones") << EntryType << QByteArray(500, '\xff');
    QTest::newRow("entry, all zeros") << EntryType << QByteArray(500, '\0');
    QTest::newRow("entry, title of 4 GiB") << EntryType << QByteArray(16, '\0') + "\xff\xff\xff\xfe" + "abc";
    QTest::newRow("vCalendar, empty") << VCalendar << QByteArray();
    QTest::newRow("vCalendar, zeros") << VCalendar << QByteArray(500, '\0');
    QTest::newRow("vCalendar, without dates")
        << VCalendar << QByteArray("BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY:A\nEND:VEVENT\nEND:VCALENDAR\n");
    QTest::newRow("vCalendar, impossible date")
        << VCalendar
        << QByteArray(
               "BEGIN:VCALENDAR\nBEGIN:VEVENT\nDTSTART:20260231T100000\nDTEND:20260231T110000\nEND:VEVENT\n"
               "END:VCALENDAR\n");
    QTest::newRow("vCalendar, begun and never ended")
        << VCalendar << QByteArray("BEGIN:VEVENT\n").repeated(5000);
}

void VelDragTest::shouldFindNothingInHostileBytes()
{
    QFETCH(QString, mime);
    QFETCH(QByteArray, bytes);

    QVERIFY(!VelDrag::decode(foreign(mime, bytes).get()));
    QVERIFY(VelDrag::decodeAll(foreign(mime, bytes).get()).empty());
}

void VelDragTest::shouldRefuseInvalidEntries_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("hasEnd");
    QTest::addColumn<bool>("isTaken");

    QTest::newRow("event") << int(VelEntry::Event) << true << true;
    QTest::newRow("to-do") << int(VelEntry::Todo) << true << true;
    QTest::newRow("deletion notice") << int(VelEntry::Deleted) << true << false;
    QTest::newRow("of no type") << int(VelEntry::NoType) << true << false;
    QTest::newRow("of an unknown type") << 3 << true << false;
    QTest::newRow("without an end") << int(VelEntry::Event) << false << false;
}

void VelDragTest::shouldRefuseInvalidEntries()
{
    QFETCH(int, type);
    QFETCH(bool, hasEnd);
    QFETCH(bool, isTaken);

    VelEntry entry = fullEntry();
    entry.type = type;
    if (!hasEnd)
        entry.setEnd(VelDateTime());
    const auto data = foreign(EntryType, VelBinary::asByteArray(entry));
    QCOMPARE(VelDrag::decode(data.get()) != nullptr, isTaken);
}

QTEST_GUILESS_MAIN(VelDragTest)

#include "veldragtest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/randomrecords.h"
#include "formats/velxmlwriter.h"
#include "formats/xmltesting.h"

#include <QBuffer>
#include <QTest>

using namespace XmlTesting;

namespace
{
/** Takes @p room bytes and fails from then on, like a full disk. */
class FullDevice : public QIODevice
{
public:
    explicit FullDevice(qint64 room)
        : m_room(room)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 size) override
    {
        if (m_room == 0 && size > 0)
            return -1;
        const qint64 taken = std::min(size, m_room);
        m_room -= taken;
        return taken;
    }

private:
    qint64 m_room;
};

/** A few megabytes of entries; how much depends on nothing. */
void writeManyEntries(VelXmlWriter &writer)
{
    VelEntry entry(1, VelEntry::Event, {QDate(2002, 3, 5), QTime(9, 5)}, {QDate(2002, 3, 5), QTime(10, 0)});
    entry.setTitle(QStringLiteral("Käytävä & €"));
    entry.setDescription(QStringLiteral("a line of text\n").repeated(30));
    for (int i = 0; i < 5000; ++i)
        writer.writeEntry(entry);
}

qint64 sizeOfManyEntries()
{
    VelXmlWriter writer;
    writeManyEntries(writer);
    return static_cast<qint64>(writer.text().size());
}
} // namespace

class VelXmlRoundTripTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadBackWhatWasWritten()
    {
        for (quint32 seed = 0; seed < 400; ++seed) {
            const VelXmlContent given = RandomRecords(seed, RandomRecords::Form::Given).calendar();
            const VelXmlContent kept = RandomRecords(seed, RandomRecords::Form::Kept).calendar();
            const QByteArray bytes = write(given);
            const auto content = read(bytes);
            QVERIFY2(content, QByteArray::number(seed).constData());
            QCOMPARE(difference(*content, kept), QString());
            QCOMPARE(difference(write(*content), bytes), QString());
        }
    }

    void shouldWriteNoByteThatEndsMessages()
    {
        for (quint32 seed = 0; seed < 400; ++seed) {
            const QByteArray bytes = write(RandomRecords(seed, RandomRecords::Form::Given).calendar());
            QVERIFY(!bytes.contains('\x1A'));
            QVERIFY(!bytes.contains('\0'));
        }
    }

    void shouldReadManyNamesWithoutMixingThem()
    {
        // More than the reader keeps to share, long ones that it does not share, and each of them twice.
        constexpr int names = 70000;
        const auto nameOf = [](int i) { return QString::number(i % names).repeated(i % 100 + 1); };
        VelXmlContent content;
        content.accounts.emplace();
        for (int i = 0; i < 2 * names; ++i)
            content.accounts->append(VelAccount(nameOf(i), nameOf(i + 1), 1));
        const auto result = read(write(content));
        QVERIFY(result && result->accounts);
        QVERIFY(*result->accounts == *content.accounts);
    }

    void shouldReadLargeFileInSmallPieces()
    {
        VelXmlWriter writer;
        writer.writeHead();
        writeManyEntries(writer);
        writer.writeTail();
        const QByteArray bytes = QByteArray::fromStdString(writer.text());
        QVERIFY(static_cast<std::size_t>(bytes.size()) > 2 * VelXmlReader::MaximumToken);
        for (const int size : {7, 100, 1448, 65536}) {
            const auto content = readInPieces(bytes, size);
            QVERIFY2(content, QByteArray::number(size).constData());
            QCOMPARE(content->entries.size(), std::size_t(5000));
        }
    }

    void shouldWriteToDeviceWhatItKeepsWithoutOne()
    {
        QBuffer buffer;
        QVERIFY(buffer.open(QIODevice::WriteOnly));
        VelXmlWriter toBuffer(&buffer);
        writeManyEntries(toBuffer);
        QVERIFY(toBuffer.flush());
        VelXmlWriter inMemory;
        writeManyEntries(inMemory);
        QVERIFY(inMemory.flush());
        QCOMPARE(difference(buffer.data(), QByteArray::fromStdString(inMemory.text())), QString());
    }

    void shouldNotKeepWhatTheDeviceHasTaken()
    {
        QBuffer buffer;
        QVERIFY(buffer.open(QIODevice::WriteOnly));
        VelXmlWriter writer(&buffer);
        writeManyEntries(writer);
        QVERIFY(writer.text().size() < static_cast<std::size_t>(buffer.size()));
    }

    void shouldTellOfFullDevice_data()
    {
        QTest::addColumn<qint64>("room");
        QTest::addColumn<bool>("isWritten");
        const qint64 size = sizeOfManyEntries();
        QTest::newRow("no room") << qint64(0) << false;
        QTest::newRow("some") << qint64(1000) << false;
        QTest::newRow("half") << size / 2 << false;
        QTest::newRow("one byte short") << size - 1 << false;
        QTest::newRow("just enough") << size << true;
    }

    void shouldTellOfFullDevice()
    {
        QFETCH(qint64, room);
        QFETCH(bool, isWritten);
        FullDevice device(room);
        VelXmlWriter writer(&device);
        writeManyEntries(writer);
        QCOMPARE(writer.flush(), isWritten);
        QCOMPARE(writer.flush(), isWritten);
    }
};

QTEST_GUILESS_MAIN(VelXmlRoundTripTest)

#include "velxmlroundtriptest.moc"

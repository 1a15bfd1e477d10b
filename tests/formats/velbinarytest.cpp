// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velbinary.h"
#include "formats/goldenrecords.h"
#include "formats/randomrecords.h"
#include "formats/xmltesting.h"

#include <QTest>

using XmlTesting::hexFile;

namespace
{
const QString EntryFile = QStringLiteral("entry.hex");
const QString AccountFile = QStringLiteral("account.hex");

// Where fields of an entry without texts and attendees begin.
constexpr int TitleAt = 16;
constexpr int StartAt = 20;
constexpr int DescriptionAt = 40;
constexpr int NoTimeAt = 56;
constexpr int AccountCountAt = 72;
constexpr int DayCountAt = 84;
constexpr int EndDateAt = 92;
constexpr int BareSize = 104;

VelEntry bareEntry()
{
    return {1, VelEntry::Event, {QDate(2002, 3, 5), QTime(9, 5)}, {QDate(2002, 3, 5), QTime(10, 0)}};
}

/** The bytes of a bare entry with @p field, in hexadecimal, in the place of what begins at @p at. */
QByteArray bareWith(int at, const char *field)
{
    const QByteArray bytes = QByteArray::fromHex(field);
    return VelBinary::asByteArray(bareEntry()).replace(at, bytes.size(), bytes);
}

bool sameAccount(const VelAccount &a, const VelAccount &b)
{
    return a == b && a.type == b.type && a.status == b.status && a.attendee == b.attendee;
}

QByteArray randomBytes(QRandomGenerator &random, int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(random.bounded(256));
    return bytes;
}
} // namespace

class VelBinaryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteGoldenBytes()
    {
        QCOMPARE(VelBinary::asByteArray(GoldenRecords::binaryEntry()).toHex(' '),
                 hexFile(EntryFile).toHex(' '));
        QCOMPARE(VelBinary::asByteArray(GoldenRecords::binaryAccount()).toHex(' '),
                 hexFile(AccountFile).toHex(' '));
    }

    void shouldReadGoldenBytes()
    {
        const auto entry = VelBinary::fromByteArray(hexFile(EntryFile));
        QVERIFY(entry);
        QVERIFY(*entry == GoldenRecords::binaryEntry());
        QVERIFY(entry->getRecurrence().isEmpty());
        const auto account = VelBinary::accountFromByteArray(hexFile(AccountFile));
        QVERIFY(account);
        QVERIFY(sameAccount(*account, GoldenRecords::binaryAccount()));
    }

    void shouldKeepRandomRecords()
    {
        for (quint32 seed = 0; seed < 2000; ++seed) {
            RandomRecords records(seed, RandomRecords::Form::Given);
            VelEntry entry = records.entry();
            entry.originalid = seed;
            const QByteArray bytes = VelBinary::asByteArray(entry);
            const auto read = VelBinary::fromByteArray(bytes);
            QVERIFY(read);
            QVERIFY2(*read == entry, QByteArray::number(seed).constData());
            const VelAccount account = records.account();
            const auto readAccount = VelBinary::accountFromByteArray(VelBinary::asByteArray(account));
            QVERIFY(readAccount);
            QVERIFY(sameAccount(*readAccount, account));
        }
    }

    void shouldKeepTimes_data()
    {
        QTest::addColumn<QTime>("time");
        QTest::newRow("midnight") << QTime(0, 0);
        QTest::newRow("first millisecond") << QTime(0, 0, 0, 1);
        QTest::newRow("last millisecond") << QTime(23, 59, 59, 999);
        QTest::newRow("skipped by daylight saving") << QTime(3, 30);
    }

    void shouldKeepTimes()
    {
        QFETCH(QTime, time);
        VelEntry entry = bareEntry();
        entry.setStart({QDate(2002, 3, 31), time});
        const auto read = VelBinary::fromByteArray(VelBinary::asByteArray(entry));
        QVERIFY(read);
        QCOMPARE(read->getStart(), entry.getStart());
    }

    void shouldKeepMissingDates()
    {
        const VelEntry empty;
        const auto read = VelBinary::fromByteArray(VelBinary::asByteArray(empty));
        QVERIFY(read);
        QVERIFY(*read == empty);
        QVERIFY(!read->getStart().date().isValid());
        QVERIFY(read->rule.occurenddate.isNull());
    }

    void shouldTakeMissingTimeForMidnight()
    {
        VelEntry entry = bareEntry();
        entry.setStart({QDate(2002, 3, 5), QTime()});
        const auto read = VelBinary::fromByteArray(VelBinary::asByteArray(entry));
        QVERIFY(read);
        QCOMPARE(read->getStart(), VelDateTime(QDate(2002, 3, 5), QTime(0, 0)));
    }

    void shouldWriteNullAndEmptyTextsAlike()
    {
        VelEntry null = bareEntry();
        null.accounts.append(VelAccount(QString(), QString(), 1));
        VelEntry empty = bareEntry();
        empty.setTitle(QStringLiteral(""));
        empty.setDescription(QStringLiteral(""));
        empty.accounts.append(VelAccount(QStringLiteral(""), QStringLiteral(""), 1));
        QCOMPARE(VelBinary::asByteArray(null), VelBinary::asByteArray(empty));
        QCOMPARE(VelBinary::asByteArray(null.accounts.first()),
                 VelBinary::asByteArray(empty.accounts.first()));
    }

    void shouldReadWhatOthersMayWrite_data()
    {
        QTest::addColumn<int>("at");
        QTest::addColumn<QByteArray>("field");
        QTest::newRow("null title") << TitleAt << QByteArray("ffffffff");
        QTest::newRow("null description") << DescriptionAt << QByteArray("ffffffff");
    }

    void shouldReadWhatOthersMayWrite()
    {
        QFETCH(int, at);
        QFETCH(QByteArray, field);
        const auto read = VelBinary::fromByteArray(bareWith(at, field.constData()));
        QVERIFY(read);
        QVERIFY(*read == bareEntry());
    }

    void shouldTakeAnyOtherNumberThanZeroForTrue()
    {
        QVERIFY(!VelBinary::fromByteArray(bareWith(NoTimeAt, "00000000"))->notime);
        QVERIFY(VelBinary::fromByteArray(bareWith(NoTimeAt, "00000002"))->notime);
        QVERIFY(VelBinary::fromByteArray(bareWith(NoTimeAt, "ffffffff"))->notime);
        QVERIFY(VelBinary::fromByteArray(bareWith(NoTimeAt, "80000000"))->notime);
    }

    void shouldTakeImpossibleDatesForNone_data()
    {
        QTest::addColumn<QByteArray>("date");
        QTest::newRow("none") << QByteArray("00000000");
        QTest::newRow("before year 1") << QByteArray("001a4451");
        QTest::newRow("year 10000") << QByteArray("0051fe2d");
        QTest::newRow("far away") << QByteArray("7fffffff");
        QTest::newRow("farther") << QByteArray("ffffffff");
    }

    void shouldTakeImpossibleDatesForNone()
    {
        QFETCH(QByteArray, date);
        const auto started = VelBinary::fromByteArray(bareWith(StartAt, date.constData()));
        QVERIFY(started);
        QVERIFY(!started->isValid());
        const auto ended = VelBinary::fromByteArray(bareWith(EndDateAt, date.constData()));
        QVERIFY(ended);
        QVERIFY(ended->rule.occurenddate.isNull());
    }

    void shouldTakeImpossibleTimesForNone()
    {
        QVERIFY(VelBinary::fromByteArray(bareWith(StartAt, "00256b73 05265bff"))->isValid());
        QCOMPARE(VelBinary::fromByteArray(bareWith(StartAt, "00256b73 05265c00"))->getStart(), VelDateTime());
        QCOMPARE(VelBinary::fromByteArray(bareWith(StartAt, "00256b73 ffffffff"))->getStart(), VelDateTime());
    }

    void shouldRefuseEveryTruncation()
    {
        const QByteArray entry = hexFile(EntryFile);
        for (int size = 0; size < entry.size(); ++size)
            QVERIFY2(!VelBinary::fromByteArray(entry.left(size)), QByteArray::number(size).constData());
        const QByteArray account = hexFile(AccountFile);
        for (int size = 0; size < account.size(); ++size)
            QVERIFY2(!VelBinary::accountFromByteArray(account.left(size)),
                     QByteArray::number(size).constData());
    }

    void shouldRefuseHostileCounts_data()
    {
        QTest::addColumn<int>("at");
        QTest::addColumn<QByteArray>("count");
        for (const char *const count : {"ffffffff", "fffffffe", "80000000", "7fffffff", "00010000"}) {
            QTest::addRow("%s attendees", count) << AccountCountAt << QByteArray(count);
            QTest::addRow("%s days", count) << DayCountAt << QByteArray(count);
        }
        for (const char *const count : {"fffffffe", "80000000", "7ffffffe", "00010000", "00000001"}) {
            QTest::addRow("title of %s bytes", count) << TitleAt << QByteArray(count);
            QTest::addRow("description of %s bytes", count) << DescriptionAt << QByteArray(count);
        }
    }

    void shouldRefuseHostileCounts()
    {
        QFETCH(int, at);
        QFETCH(QByteArray, count);
        QVERIFY(!VelBinary::fromByteArray(bareWith(at, count.constData())));
    }

    void shouldKnowWhereFieldsAre()
    {
        // The tables above replace fields by their place: what they count on holds.
        QCOMPARE(VelBinary::asByteArray(bareEntry()).size(), BareSize);
        QVERIFY(*VelBinary::fromByteArray(bareWith(TitleAt, "00000000")) == bareEntry());
        QVERIFY(*VelBinary::fromByteArray(bareWith(StartAt, "00256b73 01f2f660")) == bareEntry());
        QVERIFY(*VelBinary::fromByteArray(bareWith(DescriptionAt, "00000000")) == bareEntry());
        QVERIFY(*VelBinary::fromByteArray(bareWith(AccountCountAt, "00000000")) == bareEntry());
        QVERIFY(*VelBinary::fromByteArray(bareWith(DayCountAt, "00000000")) == bareEntry());
        QCOMPARE(VelBinary::fromByteArray(bareWith(EndDateAt, "00256b73"))->rule.occurenddate,
                 QDate(2002, 3, 5));
    }

    void shouldMakeSenseOfDamagedBytes()
    {
        // Whatever is read from them is a record that can be written and read again.
        QRandomGenerator random(1);
        const QByteArray golden = hexFile(EntryFile);
        for (int round = 0; round < 20000; ++round) {
            QByteArray bytes = golden;
            for (int flips = random.bounded(1, 4); flips > 0; --flips)
                bytes[random.bounded(static_cast<int>(bytes.size()))] =
                    static_cast<char>(random.bounded(256));
            const auto entry = VelBinary::fromByteArray(bytes);
            if (!entry)
                continue;
            const auto again = VelBinary::fromByteArray(VelBinary::asByteArray(*entry));
            QVERIFY2(again && *again == *entry, bytes.toHex().constData());
        }
    }

    void shouldSurviveRandomBytes()
    {
        QRandomGenerator random(2);
        for (int round = 0; round < 20000; ++round) {
            const QByteArray bytes = randomBytes(random, random.bounded(200));
            const auto account = VelBinary::accountFromByteArray(bytes);
            QVERIFY(!account || bytes.size() >= VelBinary::asByteArray(*account).size());
            const auto entry = VelBinary::fromByteArray(bytes);
            QVERIFY(!entry || bytes.size() >= BareSize);
        }
    }
};

QTEST_GUILESS_MAIN(VelBinaryTest)

#include "velbinarytest.moc"

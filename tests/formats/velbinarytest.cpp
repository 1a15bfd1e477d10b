// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velbinary.h"
#include "support/velrandomentry.h"

#include <QFile>
#include <QTest>

namespace
{
// Where fields of an entry without texts and attendees begin.
constexpr int TitleAt = 16;
constexpr int StartAt = 20;
constexpr int DescriptionAt = 40;
constexpr int NoTimeAt = 56;
constexpr int AccountCountAt = 72;
constexpr int DayCountAt = 84;
constexpr int EndDateAt = 92;

// What entry.hex and account.hex hold.
VelAccount goldenAccount()
{
    VelAccount account(QStringLiteral("Åsa"), QStringLiteral("a@b€"), 3000000000);
    account.type = VelAccount::Resource;
    account.status = VelAccount::Tentative;
    account.attendee = -1;
    return account;
}

VelEntry goldenEntry()
{
    VelEntry entry(1, VelEntry::Deleted, {QDate(2002, 3, 5), QTime(9, 5)}, {QDate(2002, 3, 5), QTime(0, 0)});
    entry.setTitle(QStringLiteral("A€😀"));
    entry.setDescription(QStringLiteral("a\nb"));
    entry.globalid = 3000000000;
    entry.user = 4294967295;
    entry.access = VelEntry::Private;
    entry.display = VelEntry::TentativeTime;
    entry.priority = 9;
    entry.notime = true;
    entry.reminder = 3840;
    entry.reminderfired = true;
    entry.accounts = {VelAccount(QStringLiteral("B"), QStringLiteral("c"), 7),
                      VelAccount(QStringLiteral("D"), QString(), 0)};
    entry.accounts[0].type = VelAccount::Person;
    entry.accounts[0].status = VelAccount::Accepted;
    entry.accounts[0].attendee = VelAccount::OptionalAttendee;
    entry.accounts[1].attendee = VelAccount::ResourceAttendee;
    entry.rule = {VelRecurrenceRule::Monthly, 12, {1, -3}, -1, QDate(2002, 12, 31), 10};
    entry.originalid = 5;
    return entry;
}

// The bytes that a file of hexadecimal digits stands for; "#" begins a comment.
QByteArray hexFile(const char *name)
{
    QFile file(QLatin1String(TEST_DATA_DIR "/") + QLatin1String(name));
    QByteArray digits;
    for (bool isOpen = file.open(QIODevice::ReadOnly); isOpen && !file.atEnd();)
        digits += file.readLine().split('#').first();
    return QByteArray::fromHex(digits);
}

// A bare entry with @p field, in hexadecimal, in the place of what begins at @p at.
std::unique_ptr<VelEntry> readWith(int at, const char *field)
{
    const VelEntry bare(1, VelEntry::Event, {QDate(2002, 3, 5), QTime(9, 5)}, {QDate(2002, 3, 6), QTime()});
    const QByteArray bytes = QByteArray::fromHex(field);
    return VelBinary::fromByteArray(VelBinary::asByteArray(bare).replace(at, bytes.size(), bytes));
}
} // namespace

class VelBinaryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteAndReadGoldenBytes()
    {
        const QByteArray entry = hexFile("entry.hex");
        const QByteArray account = hexFile("account.hex");
        QCOMPARE(VelBinary::asByteArray(goldenEntry()).toHex(' '), entry.toHex(' '));
        QCOMPARE(VelBinary::asByteArray(goldenAccount()).toHex(' '), account.toHex(' '));
        QVERIFY(*VelBinary::fromByteArray(entry) == goldenEntry());
        QCOMPARE(VelBinary::asByteArray(*VelBinary::accountFromByteArray(account)), account);
        for (int size = 0; size < entry.size(); ++size)
            QVERIFY2(!VelBinary::fromByteArray(entry.left(size)), QByteArray::number(size).constData());
        QVERIFY(!VelBinary::accountFromByteArray(account.chopped(1)));
    }

    void shouldKeepRandomRecordsAndMakeSenseOfDamagedOnes()
    {
        VelRandomEntry random(1);
        for (int round = 0; round < 5000; ++round) {
            const VelEntry entry = random.chance(20) ? VelEntry() : random.entry();
            QByteArray bytes = VelBinary::asByteArray(entry);
            const auto read = VelBinary::fromByteArray(bytes);
            QVERIFY2(read && *read == entry, QByteArray::number(round).constData());
            for (int flips = random.number(1, 3); flips > 0; --flips)
                bytes[random.number(0, bytes.size() - 1)] = static_cast<char>(random.number(0, 255));
            if (const auto damaged = VelBinary::fromByteArray(bytes)) {
                const auto again = VelBinary::fromByteArray(VelBinary::asByteArray(*damaged));
                QVERIFY2(again && *again == *damaged, bytes.toHex().constData());
            }
        }
    }

    void shouldTakeImpossibleValuesForNoneAndRefuseHostileCounts()
    {
        for (const char *date : {"00000000", "001a4451", "0051fe2d", "7fffffff", "ffffffff"}) {
            QVERIFY2(!readWith(StartAt, date)->isValid(), date);
            QVERIFY2(readWith(EndDateAt, date)->rule == VelRecurrenceRule(), date);
        }
        QCOMPARE(readWith(StartAt, "00256b73 05265bff")->getStart().time(), QTime(23, 59, 59, 999));
        QCOMPARE(readWith(StartAt, "00256b73 05265c00")->getStart(), VelDateTime());
        QVERIFY(readWith(NoTimeAt, "80000000")->notime);
        for (const int text : {TitleAt, DescriptionAt})
            QVERIFY(*readWith(text, "ffffffff") == *readWith(text, "00000000"));
        for (const int at : {TitleAt, DescriptionAt, AccountCountAt, DayCountAt}) {
            for (const char *count : {"fffffffe", "80000000", "7ffffffe", "00010000"})
                QVERIFY2(!readWith(at, count), count);
        }
    }
};

QTEST_GUILESS_MAIN(VelBinaryTest)

#include "velbinarytest.moc"

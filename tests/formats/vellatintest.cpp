// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/vellatin.h"

#include <QTest>

#include <map>

namespace
{
/** Every byte once. */
QByteArray allBytes()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

QByteArray latin9AsUtf8(const QByteArray &bytes)
{
    std::string out;
    VelLatin::appendLatin9AsUtf8(out, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return QByteArray::fromStdString(out);
}

QByteArray latin1AsUtf8(const QByteArray &bytes)
{
    std::string out;
    VelLatin::appendLatin1AsUtf8(out, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return QByteArray::fromStdString(out);
}

/** What the table of ISO-8859-15 says of @p byte. */
ushort characterOf(int byte)
{
    static const std::map<int, ushort> Differences{{0xA4, 0x20AC}, {0xA6, 0x160}, {0xA8, 0x161},
                                                   {0xB4, 0x17D},  {0xB8, 0x17E}, {0xBC, 0x152},
                                                   {0xBD, 0x153},  {0xBE, 0x178}};
    const auto found = Differences.find(byte);
    return found == Differences.end() ? static_cast<ushort>(byte) : found->second;
}
} // namespace

class VelLatinTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadEveryByte()
    {
        const QByteArray bytes = allBytes();
        const QString text = VelLatin::fromLatin9(bytes.constData(), bytes.size());
        QCOMPARE(text.size(), 256);
        for (int byte = 0; byte < 256; ++byte) {
            QCOMPARE(ushort(text.at(byte).unicode()), characterOf(byte));
            QCOMPARE(ushort(VelLatin::fromLatin9(static_cast<unsigned char>(byte))), characterOf(byte));
        }
    }

    void shouldWriteThoseCharactersAndNoOthers()
    {
        std::map<ushort, int> byteOf;
        for (int byte = 0; byte < 256; ++byte)
            byteOf[characterOf(byte)] = byte;
        for (int character = 0; character < 0x10000; ++character) {
            const auto found = byteOf.find(static_cast<ushort>(character));
            QCOMPARE(VelLatin::toLatin9(static_cast<char16_t>(character)),
                     found == byteOf.end() ? -1 : found->second);
        }
    }

    void shouldGiveUtf8OfEveryByte()
    {
        const QByteArray bytes = allBytes();
        QString latin9;
        for (int byte = 0; byte < 256; ++byte)
            latin9 += QChar(characterOf(byte));
        QCOMPARE(latin9AsUtf8(bytes), latin9.toUtf8());
        QCOMPARE(latin1AsUtf8(bytes), QString::fromLatin1(bytes.constData(), bytes.size()).toUtf8());
    }

    void shouldFindOneOtherByteAnywhereInAscii()
    {
        // Words of eight bytes are looked at together: all lengths around one, two and three of them.
        for (int size = 1; size <= 26; ++size) {
            for (int at = 0; at < size; ++at) {
                QByteArray bytes(size, '\x7F');
                bytes[at] = '\xA4';
                QByteArray expected(size - 1, '\x7F');
                expected.insert(at, "\xE2\x82\xAC");
                QCOMPARE(latin9AsUtf8(bytes), expected);
            }
        }
    }

    void shouldAppendToWhatIsThere()
    {
        std::string out = "before ";
        VelLatin::appendLatin9AsUtf8(out, "", 0);
        VelLatin::appendLatin9AsUtf8(out, "\xE4", 1);
        VelLatin::appendLatin1AsUtf8(out, "\xA4 after", 7);
        QCOMPARE(out, std::string("before \xC3\xA4\xC2\xA4 after"));
    }
};

QTEST_GUILESS_MAIN(VelLatinTest)

#include "vellatintest.moc"

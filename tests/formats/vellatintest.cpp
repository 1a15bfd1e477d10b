// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/vellatin.h"

#include <QTest>

namespace
{
QByteArray asUtf8(const QByteArray &bytes)
{
    std::string out;
    VelLatin::appendLatin9AsUtf8(out, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return QByteArray::fromStdString(out);
}
} // namespace

class VelLatinTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldKnowEveryByteAndNoOtherCharacters()
    {
        // What the table of ISO-8859-15 says.
        const QByteArray places("\xA4\xA6\xA8\xB4\xB8\xBC\xBD\xBE");
        const QString characters = QStringLiteral("€ŠšŽžŒœŸ");
        QByteArray bytes;
        QString table;
        for (int byte = 0; byte < 256; ++byte) {
            const auto place = places.indexOf(static_cast<char>(byte));
            bytes += static_cast<char>(byte);
            table += place < 0 ? QChar(byte) : characters.at(place);
        }
        QCOMPARE(VelLatin::fromLatin9(bytes.constData(), bytes.size()), table);
        QCOMPARE(asUtf8(bytes), table.toUtf8());
        for (int unit = 0; unit < 0x10000; ++unit)
            QCOMPARE(VelLatin::toLatin9(static_cast<char16_t>(unit)),
                     static_cast<int>(table.indexOf(QChar(unit))));
    }

    void shouldFindOneOtherByteAnywhereInAscii()
    {
        // Words of eight bytes are looked at together: all lengths around one, two and three of them.
        for (int size = 1; size <= 26; ++size) {
            for (int at = 0; at < size; ++at) {
                QByteArray bytes(size, '\x7F');
                bytes[at] = '\xA4';
                QCOMPARE(asUtf8(bytes), QByteArray(size - 1, '\x7F').insert(at, "\xE2\x82\xAC"));
            }
        }
    }
};

QTEST_GUILESS_MAIN(VelLatinTest)

#include "vellatintest.moc"

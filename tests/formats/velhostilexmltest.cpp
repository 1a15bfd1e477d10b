// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/xmltesting.h"

#include <QRandomGenerator>
#include <QTest>

using namespace XmlTesting;

namespace
{
constexpr qint64 Token = VelXmlReader::MaximumToken;
constexpr qint64 Text = VelXmlReader::MaximumText;
} // namespace

class VelHostileXmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Made while it is read: a head, and what is repeated, with numbers for "%1", up to so many bytes. A tail
    // makes a whole document of what should be skipped; everything else should be refused.
    void shouldEndureHostileInput_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QByteArray>("repeated");
        QTest::addColumn<QByteArray>("tail");
        QTest::addColumn<qint64>("size");
        const auto row = [](const char *name, const QByteArray &head, const char *repeated = "",
                            const char *tail = "", qint64 size = 4 * Token) {
            QTest::newRow(name) << head << QByteArray(repeated) << QByteArray(tail) << size;
        };
        row("nothing", "");
        row("entity bomb",
            "<!DOCTYPE c [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;'>]><c>&b;</c>");
        row("parameter entity", "<!DOCTYPE c [<!ENTITY % a SYSTEM 'file:///etc/passwd'>%a;]><c/>");
        row("null character", QByteArray("<c>a\0b</c>", 10));
        row("null character after the end", QByteArray("<c/>\0", 5));
        row("message's end", "<c>\x1A</c>");
        row("reference to half a pair", "<c>&#55357;</c>");
        row("UTF-16 without a mark", QByteArray("\0<\0c\0/\0>", 8));
        row("two documents", "<c/><c/>");
        row("tags that cross", "<c><a><b></a></b></c>");
        row("too deep", QByteArray("<a>").repeated(65) + QByteArray("</a>").repeated(65));
        row("attribute", "<c a='", "x");
        row("attributes", "<c ", "a%1='' ");
        row("blanks in tag", "<c", " ");
        row("comment", "<c/><!--", "x");
        row("declaration", "<?xml version='1.0' ", " ");
        row("document type", "<!DOCTYPE ", "x");
        row("depth in a value", "<c><entry><title>", "<a>");
        // A parser keeps every name that it has met, at many times its length.
        row("names of skipped elements", "<c><d>", "<a%1></a%1>");
        row("names in a value", "<c><entry><title>", "<a%1/>");
        row("names of attributes", "<c>", "<right a%1=''/>");
        row("title", "<c><entry><title>", "x", "", Text + Token);
        row("text in an unknown element", "<c><a>", "x", "</a></c>", Text + Token);
        row("text behind an element", "<c><entry><title><a/>", "x", "</title></entry></c>", Text + Token);
        row("empty attendees", "<c><entry>", "<account></account>", "</entry></c>");
        row("one right over and over", "<c>", "<right id='1' right='1'/>", "</c>");
    }

    void shouldEndureHostileInput()
    {
        QFETCH(QByteArray, head);
        QFETCH(QByteArray, repeated);
        QFETCH(QByteArray, tail);
        QFETCH(qint64, size);
        VelXmlReader reader;
        const auto take = [&reader](const QByteArray &bytes) {
            return reader.feed(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        };
        bool isGood = take(head);
        int number = 0;
        for (qint64 taken = 0; isGood && !repeated.isEmpty() && taken < size;) {
            QByteArray piece;
            while (piece.size() < 65536)
                piece += QByteArray(repeated)
                             .replace("%1", QByteArray::number(++number))
                             .repeated(repeated.contains('%') ? 1 : 4096);
            taken += piece.size();
            isGood = take(piece);
        }
        QVERIFY2(repeated.isEmpty() || isGood == !tail.isEmpty(), "refused too late or too early");
        QCOMPARE(isGood && take(tail) && reader.finish(), !tail.isEmpty());
        QCOMPARE(reader.takeContent().count(), std::size_t(0));
        QVERIFY(!tail.isEmpty() || !read(head, 1));
    }

    void shouldTakeUsualDepthAndTags()
    {
        QVERIFY(read(QByteArray("<a>").repeated(64) + QByteArray("</a>").repeated(64)));
        const auto tagOf = [](qint64 size) -> QByteArray {
            return "<c a='" + QByteArray(static_cast<int>(size), 'x') + "'/>";
        };
        for (const int size : {1000, 1 << 20, 1 << 29}) {
            QVERIFY(read(tagOf(Token - 100), size));
            QVERIFY(!read(tagOf(4 * Token), size));
        }
    }

    void shouldSayWhatIsWrongAndTakeNothingAfterwards()
    {
        const QByteArray bytes = "<?xml version='1.0' encoding='koi8-r'?><c/>";
        VelXmlReader reader;
        QVERIFY(!reader.feed(bytes.constData(), static_cast<std::size_t>(bytes.size())));
        QVERIFY(reader.errorMessage().contains(QLatin1String("koi8-r"), Qt::CaseInsensitive));
        QVERIFY(!reader.feed("<c/>", 4));
        QVERIFY(!reader.finish());
    }

    void shouldRefuseEveryTruncation()
    {
        // Only the line feed after the last tag may be missing.
        const QByteArray golden = dataFile("golden.xml");
        for (VelSize size = 0; size < golden.size() - 1; ++size)
            QVERIFY2(!read(golden.left(size)), QByteArray::number(size).constData());
    }

    void shouldMakeSenseOfDamagedFile()
    {
        // Whatever can still be read is the same in pieces, and is a calendar that can be written and read again.
        QRandomGenerator random(1);
        const QByteArray golden = dataFile("golden.xml");
        int readable = 0;
        for (int round = 0; round < 3000; ++round) {
            QByteArray bytes = golden;
            for (int flips = random.bounded(1, 4); flips > 0; --flips) {
                const int at = random.bounded(static_cast<int>(bytes.size()));
                bytes[at] = static_cast<char>(bytes.at(at) ^ (1 << random.bounded(8)));
            }
            const auto whole = read(bytes);
            const auto pieces = read(bytes, 61);
            QCOMPARE(whole.has_value(), pieces.has_value());
            if (!whole)
                continue;
            ++readable;
            QCOMPARE(write(*pieces), write(*whole));
            const auto again = read(write(*whole).join('\n'));
            QVERIFY(again && write(*again) == write(*whole));
        }
        QVERIFY(readable > 100);
    }
};

QTEST_GUILESS_MAIN(VelHostileXmlTest)

#include "velhostilexmltest.moc"

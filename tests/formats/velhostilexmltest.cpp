// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/xmltesting.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace XmlTesting;

namespace
{
constexpr qint64 Megabyte = 1 << 20;
constexpr qint64 Hostile = 100 * Megabyte;

/** The most memory that this process has ever had, in bytes; 0 where that says nothing of the program. */
qint64 peakMemory()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return 0;
#else
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const auto at = text.indexOf("VmHWM:");
    return at < 0 ? 0 : text.mid(at + 6, text.indexOf("kB", at) - at - 6).trimmed().toLongLong() * 1024;
#endif
}

/** What became of an input that is made while it is read, so that no test holds more of it than the reader
 * does. */
struct Outcome {
    qint64 taken = 0; ///< bytes fed until the reader refused, or all
    bool isRead = false;
    std::size_t count = 0;
};

/** Feeds @p head, @p repeated until it makes up @p size bytes, and @p tail. */
Outcome feed(const QByteArray &head, const QByteArray &repeated, qint64 size, const QByteArray &tail)
{
    constexpr qint64 pieceSize = 64 * 1024;
    const QByteArray piece =
        repeated.repeated(static_cast<int>(std::max<qint64>(pieceSize / repeated.size(), 1)));
    VelXmlReader reader;
    Outcome outcome;
    const auto take = [&](const QByteArray &bytes) {
        if (!reader.feed(bytes.constData(), static_cast<std::size_t>(bytes.size())))
            return false;
        outcome.taken += bytes.size();
        return true;
    };
    bool isGood = take(head);
    for (qint64 left = size; isGood && left > 0; left -= piece.size())
        isGood = take(piece);
    outcome.isRead = isGood && take(tail) && reader.finish();
    outcome.count = reader.takeContent().count();
    return outcome;
}

QByteArray nested(int depth)
{
    return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
}

/** A calendar of one entry, with an attribute of @p size bytes somewhere in it. */
QByteArray withAttribute(qint64 size)
{
    return calendarOf("<entry><title a='" + QByteArray(static_cast<int>(size), 'x')
                      + "'>t</title><start>2002-3-5 9:5</start><end>2002-3-5 9:5</end></entry>");
}
} // namespace

class VelHostileXmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldRefuseDocument_data();
    void shouldRefuseDocument();
    void shouldRefuseEndlessToken_data();
    void shouldRefuseEndlessToken();
    void shouldSkipEndlessContent_data();
    void shouldSkipEndlessContent();
    void shouldRefuseEndlessNames_data();
    void shouldRefuseEndlessNames();
    void shouldBoundDepth();
    void shouldBoundTagsButNotUsualOnes();
    void shouldRefuseLongTagInSmallPieces();
    void shouldRefuseEveryTruncation();
    void shouldTakeNothingAfterFailure();
    void shouldMakeSenseOfDamagedFile();
    void shouldBoundTextOfOneElement();
};

void VelHostileXmlTest::shouldRefuseDocument_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, const QByteArray &bytes) { QTest::newRow(name) << bytes; };
    row("nothing", "");
    row("blanks", " \n ");
    row("only a declaration", "<?xml version='1.0'?>");
    row("text", "calendar");
    row("entity bomb",
        "<!DOCTYPE c [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
        "<!ENTITY d '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY e "
        "'&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;'>]><c>&e;</c>");
    row("entity of itself", "<!DOCTYPE c [<!ENTITY a '&a;'>]><c>&a;</c>");
    row("external type", "<!DOCTYPE c SYSTEM 'file:///etc/passwd'><c/>");
    row("public type", "<!DOCTYPE c PUBLIC '-//C//C' 'http://localhost/c.dtd'><c/>");
    row("external entity", "<!DOCTYPE c [<!ENTITY a SYSTEM 'file:///etc/passwd'>]><c>&a;</c>");
    row("parameter entity", "<!DOCTYPE c [<!ENTITY % a SYSTEM 'file:///etc/passwd'>%a;]><c/>");
    row("harmless type", "<!DOCTYPE calendar><calendar/>");
    row("unknown entity", "<c>&euro;</c>");
    row("unknown entity in attribute", "<c a='&euro;'/>");
    row("null character", QByteArray("<c>a\0b</c>", 10));
    row("null character in tag", QByteArray("<c\0/>", 5));
    row("null character after the end", QByteArray("<c/>\0", 5));
    row("null characters", QByteArray(5000, '\0'));
    row("message's end", "<c>\x1A</c>");
    row("message's end after the end", "<c/>\x1A");
    row("reference to null", "<c>&#0;</c>");
    row("reference to a control character", "<c>&#x1A;</c>");
    row("reference to half a pair", "<c>&#55357;</c>");
    row("reference to no character", "<c>&#65535;</c>");
    row("reference beyond all", "<c>&#x110000;</c>");
    row("reference far beyond all", "<c>&#99999999999999999999;</c>");
    row("UTF-16, low byte first", QByteArray("\xFF\xFE<\0c\0/\0>\0", 10));
    row("UTF-16, high byte first", QByteArray("\xFE\xFF\0<\0c\0/\0>", 10));
    row("UTF-16 without a mark, low byte first", QByteArray("<\0c\0/\0>\0", 8));
    row("UTF-16 without a mark, high byte first", QByteArray("\0<\0c\0/\0>", 8));
    row("UTF-32", QByteArray("\xFF\xFE\0\0<\0\0\0c\0\0\0/\0\0\0>\0\0\0", 20));
    row("two documents", "<c/><c/>");
    row("text after the end", "<c/>c");
    row("tags that cross", "<c><a><b></a></b></c>");
    row("only an end", "</c>");
    row("open comment", "<c><!-- </c>");
    row("open CDATA", "<c><![CDATA[</c>");
    row("attribute twice", "<c a='1' a='2'/>");
    row("attribute without quotes", "<c a=1/>");
    row("bare ampersand", "<c>a & b</c>");
    row("two declarations", "<?xml version='1.0'?><?xml version='1.0'?><c/>");
}

void VelHostileXmlTest::shouldRefuseDocument()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!read(bytes));
    QVERIFY(!readInPieces(bytes, 1));
    QVERIFY(!readInPieces(bytes, 3));
}

void VelHostileXmlTest::shouldRefuseEndlessToken_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("repeated");
    const auto row = [](const char *name, const char *head, const char *repeated) {
        QTest::newRow(name) << QByteArray(head) << QByteArray(repeated);
    };
    const char *const latin9 = "<?xml version='1.0' encoding='ISO-8859-15'?><c a='";
    row("attribute", "<c a='", "x");
    row("attribute of other characters", latin9, "\xE4");
    row("attribute of references", "<c a='", "&#13;");
    row("attributes", "<c ", "a='' ");
    row("element name", "<", "x");
    row("end tag", "<c></", "c");
    row("blanks in tag", "<c", " ");
    row("comment", "<c><!--", "x");
    row("comment before all", "<!--", "x");
    row("comment after all", "<c/><!--", "x");
    row("instruction", "<c><?a ", "x");
    row("instruction before all", "<?a ", "x");
    row("declaration", "<?xml version='1.0' ", " ");
    row("reference", "<c>&", "x");
    row("numeric reference", "<c>&#", "0");
    row("document type", "<!DOCTYPE ", "x");
    row("depth", "", "<a>");
    row("depth in a value", "<c><entry><title>", "<a>");
}

void VelHostileXmlTest::shouldRefuseEndlessToken()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, repeated);
    const Outcome outcome = feed(head, repeated, Hostile, {});
    QVERIFY(!outcome.isRead);
    QVERIFY2(outcome.taken < 4 * Megabyte, QByteArray::number(outcome.taken).constData());
    QVERIFY2(peakMemory() < 100 * Megabyte, QByteArray::number(peakMemory()).constData());
}

void VelHostileXmlTest::shouldSkipEndlessContent_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("repeated");
    QTest::addColumn<QByteArray>("tail");
    const auto row = [](const char *name, const char *head, const char *repeated, const char *tail) {
        QTest::newRow(name) << QByteArray(head) << QByteArray(repeated) << QByteArray(tail);
    };
    row("text in an unknown element", "<c><a>", "x", "</a></c>");
    row("text between records", "<c>", "x", "</c>");
    row("CDATA in an unknown element", "<c><a><![CDATA[", "x", "]]></a></c>");
    row("blanks after all", "<c/>", " \n", "");
    row("blanks before all", "<!-- -->", " \n", "<c/>");
    row("text after the first element of a value", "<c><entry><title><a/>", "x", "</title></entry></c>");
    row("empty elements", "<c>", "<a/>", "</c>");
    row("empty entries", "<c>", "<entry/>", "</c>");
    row("empty accounts", "<c>", "<account/>", "</c>");
    row("empty attendees", "<c><entry>", "<account></account>", "</entry></c>");
    row("empty titles", "<c><entry>", "<title></title>", "</entry></c>");
    row("short titles", "<c><entry>", "<title>title</title>", "</entry></c>");
    row("one right over and over", "<c>", "<right id='1' right='1'/>", "</c>");
    row("short comments", "<c>", "<!---->", "</c>");
    row("short instructions", "<c>", "<?a?>", "</c>");
}

void VelHostileXmlTest::shouldSkipEndlessContent()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, repeated);
    QFETCH(QByteArray, tail);
    const Outcome outcome = feed(head, repeated, Hostile, tail);
    QVERIFY(outcome.isRead);
    QCOMPARE(outcome.count, std::size_t(0));
    QVERIFY2(peakMemory() < 100 * Megabyte, QByteArray::number(peakMemory()).constData());
}

void VelHostileXmlTest::shouldRefuseEndlessNames_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("element");
    QTest::newRow("unknown elements") << QByteArray("<c>") << QByteArray("<a%1/>");
    QTest::newRow("in a skipped element") << QByteArray("<c><d>") << QByteArray("<a%1></a%1>");
    QTest::newRow("in an entry") << QByteArray("<c><entry>") << QByteArray("<a%1/>");
    QTest::newRow("in a value") << QByteArray("<c><entry><title>") << QByteArray("<a%1/>");
    QTest::newRow("attributes") << QByteArray("<c>") << QByteArray("<right a%1=''/>");
    QTest::newRow("attributes of values") << QByteArray("<c><entry>") << QByteArray("<title a%1=''/>");
}

void VelHostileXmlTest::shouldRefuseEndlessNames()
{
    // A parser keeps every name that it has met, at many times its length.
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, element);
    VelXmlReader reader;
    QVERIFY(reader.feed(head.constData(), static_cast<std::size_t>(head.size())));
    int names = 0;
    for (bool isGood = true; isGood && names < 1000000; ++names) {
        QByteArray next = element;
        next.replace("%1", QByteArray::number(names));
        isGood = reader.feed(next.constData(), static_cast<std::size_t>(next.size()));
    }
    QVERIFY(names > 1000);
    QVERIFY2(names < 100000, QByteArray::number(names).constData());
    QVERIFY(!reader.finish());
}

void VelHostileXmlTest::shouldBoundDepth()
{
    QVERIFY(read(nested(VelXmlReader::MaximumDepth)));
    QVERIFY(!read(nested(VelXmlReader::MaximumDepth + 1)));
    QVERIFY(!read(nested(10000)));
    QVERIFY(!readInPieces(nested(10000), 1));
}

void VelHostileXmlTest::shouldBoundTagsButNotUsualOnes()
{
    constexpr qint64 limit = VelXmlReader::MaximumToken;
    for (const int size : {1000, 65536, 1 << 20}) {
        const auto content = readInPieces(withAttribute(limit - 100), size);
        QVERIFY2(content, QByteArray::number(size).constData());
        QCOMPARE(content->entries.size(), std::size_t(1));
        QVERIFY2(!readInPieces(withAttribute(4 * limit), size), QByteArray::number(size).constData());
    }
    QVERIFY(!read(withAttribute(4 * limit)));
}

void VelHostileXmlTest::shouldRefuseLongTagInSmallPieces()
{
    // A parser that looked at the whole tag again with every piece would take hours over this.
    VelXmlReader reader;
    QVERIFY(reader.feed("<c a='", 6));
    qint64 taken = 0;
    while (taken < 4 * Megabyte && reader.feed("xxxxxxxx", 8))
        taken += 8;
    QVERIFY(taken < 4 * Megabyte);
    QVERIFY(!reader.finish());
}

void VelHostileXmlTest::shouldRefuseEveryTruncation()
{
    // Only the line feed after the last tag may be missing.
    const QByteArray golden = dataFile(QStringLiteral("golden.xml"));
    for (VelSize size = 0; size < golden.size() - 1; ++size)
        QVERIFY2(!read(golden.left(size)), QByteArray::number(size).constData());
    QVERIFY(read(golden.left(golden.size() - 1)));
}

void VelHostileXmlTest::shouldTakeNothingAfterFailure()
{
    VelXmlReader reader;
    QVERIFY(!reader.feed("<c></d>", 7) || !reader.finish());
    const QString message = reader.errorMessage();
    QVERIFY(!message.isEmpty());
    QCOMPARE(reader.errorLine(), 1);
    QVERIFY(!reader.feed("<c/>", 4));
    QVERIFY(!reader.finish());
    QCOMPARE(reader.errorMessage(), message);
}

void VelHostileXmlTest::shouldMakeSenseOfDamagedFile()
{
    // Whatever can still be read is the same in pieces, and is a calendar that can be written and read again.
    QRandomGenerator random(1);
    const QByteArray golden = dataFile(QStringLiteral("golden.xml"));
    int readable = 0;
    for (int round = 0; round < 10000; ++round) {
        QByteArray bytes = golden;
        for (int flips = random.bounded(1, 4); flips > 0; --flips) {
            const int at = random.bounded(static_cast<int>(bytes.size()));
            bytes[at] = static_cast<char>(bytes.at(at) ^ (1 << random.bounded(8)));
        }
        const auto whole = read(bytes);
        const auto pieces = readInPieces(bytes, 61);
        QCOMPARE(whole.has_value(), pieces.has_value());
        if (!whole)
            continue;
        ++readable;
        QCOMPARE(difference(*pieces, *whole), QString());
        const QByteArray written = write(*whole);
        const auto again = read(written);
        QVERIFY(again);
        QCOMPARE(difference(write(*again), written), QString());
    }
    QVERIFY(readable > 100);
}

void VelHostileXmlTest::shouldBoundTextOfOneElement()
{
    // The last test, as memory that the process once had counts for all that come after.
    const auto limit = static_cast<qint64>(VelXmlReader::MaximumText);
    for (const char *const head : {"<c><entry><title>", "<c><account><name>", "<c><meta><synctime>"}) {
        const Outcome outcome = feed(head, "x", Hostile, {});
        QVERIFY(!outcome.isRead);
        QVERIFY2(outcome.taken < limit + Megabyte, QByteArray::number(outcome.taken).constData());
    }
    QVERIFY(feed("<c><entry><title>", "x", limit - Megabyte, "</title></entry></c>").isRead);
    QVERIFY2(peakMemory() < 8 * limit, QByteArray::number(peakMemory()).constData());
}

QTEST_GUILESS_MAIN(VelHostileXmlTest)

#include "velhostilexmltest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/goldenrecords.h"
#include "formats/velxmlwriter.h"
#include "formats/xmltesting.h"

#include <QTest>

using namespace XmlTesting;

namespace
{
#define TIMES "<start>2002-3-5 9:5</start><end>2002-3-5 10:0</end>"

const QString Golden = QStringLiteral("golden.xml");

QString escaped(const QString &text)
{
    std::string out;
    VelXmlWriter::appendEscaped(out, text);
    return QString::fromLatin1(out.data(), static_cast<VelSize>(out.size()));
}

QString written(const VelEntry &entry)
{
    VelXmlWriter writer;
    writer.writeEntry(entry);
    return QString::fromStdString(writer.text());
}

/** The content of a calendar of @p elements, which must be readable. */
VelXmlContent contentOf(const QByteArray &elements)
{
    auto content = read(calendarOf(elements));
    if (!content)
        qFatal("Cannot read %s", elements.constData());
    return std::move(*content);
}

/** The one entry in a calendar that holds it alone. */
VelEntry entryOf(const QByteArray &children)
{
    const VelXmlContent content = contentOf("<entry>" + children + "</entry>");
    return content.entries.size() == 1 ? *content.entries.front() : VelEntry();
}

VelEntry plainEntry()
{
    return {1, VelEntry::Event, {QDate(2002, 3, 5), QTime(9, 5)}, {QDate(2002, 3, 5), QTime(10, 0)}};
}
} // namespace

class VelXmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteGoldenFile()
    {
        QCOMPARE(difference(write(GoldenRecords::calendar()), dataFile(Golden)), QString());
    }

    void shouldReadGoldenFile()
    {
        const auto content = read(dataFile(Golden));
        QVERIFY(content);
        QCOMPARE(difference(*content, GoldenRecords::calendar()), QString());
        QCOMPARE(content->count(), std::size_t(5));
    }

    void shouldEscapeText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("bytes");
        QTest::newRow("nothing") << QString() << QString();
        QTest::newRow("markup") << QStringLiteral("A<B & C>") << QStringLiteral("A&lt;B &amp; C&gt;");
        QTest::newRow("escaped already") << QStringLiteral("&lt;") << QStringLiteral("&amp;lt;");
        QTest::newRow("quotes") << QStringLiteral("\"'") << QStringLiteral("\"'");
        QTest::newRow("blanks") << QStringLiteral(" \t\n ") << QStringLiteral(" \t\n ");
        QTest::newRow("carriage return") << QStringLiteral("a\r\nb") << QStringLiteral("a&#13;\nb");
        QTest::newRow("in the encoding") << QStringLiteral("äÿ€") << QStringLiteral("\u00E4\u00FF\u00A4");
        QTest::newRow("outside it") << QStringLiteral("¤\u0100") << QStringLiteral("&#164;&#256;");
        QTest::newRow("pair") << QStringLiteral("a😀b") << QStringLiteral("a&#128512;b");
        QTest::newRow("last pair") << QStringLiteral("\U0010FFFF") << QStringLiteral("&#1114111;");
        QTest::newRow("control characters")
            << QStringLiteral("a\x01\x1A\x1F\x0B\x7Fz") << QStringLiteral("a\u007Fz");
        QTest::newRow("null character") << QString(QLatin1String("a\0z", 3)) << QStringLiteral("az");
        QTest::newRow("no characters")
            << QStringLiteral("a\uFFFE\uFFFF\uFFFDz") << QStringLiteral("a&#65533;z");
        QTest::newRow("first half") << QLatin1Char('a') + QString(QChar(0xD83D)) << QStringLiteral("a");
        QTest::newRow("first half inside")
            << QString(QChar(0xD83D)) + QLatin1Char('z') << QStringLiteral("z");
        QTest::newRow("second half") << QString(QChar(0xDE00)) + QLatin1Char('z') << QStringLiteral("z");
        QTest::newRow("half before a pair")
            << QString(QChar(0xD83D)) + QStringLiteral("😀") << QStringLiteral("&#128512;");
    }

    void shouldEscapeText()
    {
        QFETCH(QString, text);
        QTEST(escaped(text), "bytes");
    }

    void shouldWriteNothingForOccurrence()
    {
        VelEntry entry = plainEntry();
        entry.originalid = 1;
        QCOMPARE(written(entry), QString());
    }

    void shouldNotWriteWhatIsNotSet()
    {
        VelEntry entry = plainEntry();
        const QString bare = written(entry);
        entry.access = -1;
        entry.display = -1;
        entry.priority = -1;
        entry.rule.recurringtype = -1;
        entry.rule.occurevery = -1;
        entry.rule.occurendcount = -1;
        entry.setDescription(QStringLiteral(""));
        QCOMPARE(written(entry), bare);
    }

    void shouldWriteTimesWithoutSeconds()
    {
        VelEntry entry = plainEntry();
        const QString bare = written(entry);
        entry.setStart({QDate(2002, 3, 5), QTime(9, 5, 59, 999)});
        QCOMPARE(written(entry), bare);
    }

    void shouldGiveDefaultsToWhatIsMissing()
    {
        VelEntry expected = plainEntry();
        expected.localid = 0;
        expected.dirty = 0;
        QVERIFY(entryOf(TIMES) == expected);
        QVERIFY(entryOf(TIMES "<type/><dirty>x</dirty>").type == VelEntry::NoType);
    }

    void shouldKeepWhatTheFileSays_data()
    {
        QTest::addColumn<QByteArray>("children");
        QTest::addColumn<int>("dirty");
        QTest::addColumn<bool>("notime");
        QTest::newRow("event") << QByteArray("<dirty>1</dirty><notime>1</notime>") << 1 << true;
        QTest::newRow("to-do without both") << QByteArray("<type>2</type>") << 0 << false;
        QTest::newRow("to-do with dates only") << QByteArray("<type>2</type><notime>1</notime>") << 0 << true;
        QTest::newRow("to-do with times") << QByteArray("<type>2</type><notime>0</notime>") << 0 << false;
        QTest::newRow("other numbers") << QByteArray("<dirty>7</dirty><notime>-3</notime>") << 7 << true;
        QTest::newRow("no numbers") << QByteArray("<dirty>yes</dirty><notime>true</notime>") << 0 << false;
        QTest::newRow("before the texts") << QByteArray("<dirty>0</dirty><title>t</title>") << 0 << false;
    }

    void shouldKeepWhatTheFileSays()
    {
        QFETCH(QByteArray, children);
        const VelEntry entry = entryOf(children + TIMES);
        QTEST(entry.dirty, "dirty");
        QTEST(entry.notime, "notime");
    }

    void shouldDropEntryWithoutTimes_data()
    {
        QTest::addColumn<QByteArray>("children");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no end") << QByteArray("<start>2002-3-5 9:5</start>");
        QTest::newRow("no start") << QByteArray("<end>2002-3-5 9:5</end>");
        QTest::newRow("empty start") << QByteArray("<start/><end>2002-3-5 9:5</end>");
        QTest::newRow("no time") << QByteArray("<start>2002-3-5</start><end>2002-3-5 9:5</end>");
        QTest::newRow("impossible date") << QByteArray("<start>2002-2-30 9:5</start><end>2002-3-5 9:5</end>");
        QTest::newRow("impossible time") << QByteArray("<start>2002-3-5 9:5</start><end>2002-3-5 24:0</end>");
        QTest::newRow("seconds") << QByteArray("<start>2002-3-5 9:5:0</start><end>2002-3-5 9:5</end>");
        QTest::newRow("spoilt later") << QByteArray(TIMES "<end>later</end>");
    }

    void shouldDropEntryWithoutTimes()
    {
        QFETCH(QByteArray, children);
        const QByteArray elements = "<entry>" TIMES "</entry><entry>" + children
            + "</entry><entry><title>next</title>" TIMES "</entry>";
        const VelXmlContent content = contentOf(elements);
        QCOMPARE(content.entries.size(), std::size_t(2));
        QCOMPARE(content.entries.back()->getTitle(), QStringLiteral("next"));
    }

    void shouldReadText_data()
    {
        QTest::addColumn<QByteArray>("element");
        QTest::addColumn<QString>("title");
        QTest::newRow("empty") << QByteArray("<title/>") << QString();
        QTest::newRow("blanks") << QByteArray("<title> \t a\n </title>") << QStringLiteral(" \t a\n ");
        QTest::newRow("only blanks") << QByteArray("<title>  </title>") << QStringLiteral("  ");
        QTest::newRow("references") << QByteArray("<title>&lt;&gt;&amp;&quot;&apos;&#65;&#x42;</title>")
                                    << QStringLiteral("<>&\"'AB");
        QTest::newRow("line ends") << QByteArray("<title>a\r\nb\rc&#13;d</title>")
                                   << QStringLiteral("a\nb\nc\rd");
        QTest::newRow("CDATA") << QByteArray("<title><![CDATA[<b> & ]]]]></title>")
                               << QStringLiteral("<b> & ]]");
        QTest::newRow("comment") << QByteArray("<title><!-- no -->a</title>") << QStringLiteral("a");
        QTest::newRow("instruction") << QByteArray("<title><?no no?>a</title>") << QStringLiteral("a");
        QTest::newRow("up to an element") << QByteArray("<title>a<b>c</b>d</title>") << QStringLiteral("a");
        QTest::newRow("attributes") << QByteArray("<title lang='fi'>a</title>") << QStringLiteral("a");
        QTest::newRow("repeated") << QByteArray("<title>a</title><title>b</title>") << QStringLiteral("b");
        QTest::newRow("repeated without") << QByteArray("<title>a</title><title/>") << QString();
        QTest::newRow("byte order marks") << QByteArray("<title>\xEF\xBB\xBF\xEF\xBB\xBF"
                                                        "a</title>")
                                          << QStringLiteral("\uFEFF\uFEFFa");
        QTest::newRow("in an unknown element") << QByteArray("<x><title>a</title></x>") << QString();
        QTest::newRow("in an entry inside") << QByteArray("<entry><title>a</title></entry>") << QString();
        QTest::newRow("other case") << QByteArray("<Title>a</Title>") << QString();
        QTest::newRow("other length") << QByteArray("<titles>a</titles><titl>a</titl>") << QString();
    }

    void shouldReadText()
    {
        QFETCH(QByteArray, element);
        QTEST(entryOf(element + TIMES).getTitle(), "title");
    }

    void shouldReadChildrenInAnyOrder()
    {
        const VelEntry entry =
            entryOf("<account><email>e</email><name>n</name><id>3</id></account><occurdays>1,x</occurdays>"
                    "<end>2002-3-5 10:0</end><!-- . -->text<description>d</description>"
                    "<account><name>m</name></account><start>2002-3-5 9:5</start>");
        VelEntry expected = plainEntry();
        expected.localid = 0;
        expected.setDescription(QStringLiteral("d"));
        expected.dirty = 0;
        expected.rule.occurdays = {1, 0};
        expected.accounts = {VelAccount(QStringLiteral("n"), QStringLiteral("e"), 3),
                             VelAccount(QStringLiteral("m"), QString(), 0)};
        QVERIFY(entry == expected);
    }

    void shouldSkipUnknownElements()
    {
        const VelXmlContent content =
            contentOf("text<folder><entry>" TIMES "</entry><account><name>a</name></account>"
                      "</folder><title>a</title><calendar><entry>" TIMES "</entry></calendar>"
                      "<?entry?><!-- <entry/> --><![CDATA[<entry/>]]>");
        QCOMPARE(content.count(), std::size_t(0));
        QVERIFY(!content.accounts);
    }

    void shouldReadWhateverTheDocumentElement()
    {
        const auto content = read("<entry><entry>" TIMES "</entry></entry>");
        QVERIFY(content);
        QCOMPARE(content->entries.size(), std::size_t(1));
    }

    void shouldNotSetWhatIsNotMentioned()
    {
        const VelXmlContent content = contentOf("<meta><unknown>5</unknown></meta><entry>" TIMES "</entry>");
        QVERIFY(!content.synctime && !content.userid && !content.origright && !content.origuserid);
        QVERIFY(!content.error && !content.totalsync && !content.accounts && !content.rights);
    }

    void shouldReadMeta_data()
    {
        QTest::addColumn<QByteArray>("element");
        QTest::newRow("file") << QByteArray("meta");
        QTest::newRow("answer") << QByteArray("action");
    }

    void shouldReadMeta()
    {
        QFETCH(QByteArray, element);
        const QByteArray children =
            "<totalsync/><origuserid>3000000000</origuserid><x><userid>9</userid></x>"
            "<synctime> 1 &lt; 2 </synctime><origright>3</origright><userid>4294967295</userid>";
        const VelXmlContent content = contentOf("<" + element + ">" + children + "</" + element + ">");
        QCOMPARE(content.synctime.value_or(QString()), QStringLiteral(" 1 < 2 "));
        QCOMPARE(content.userid.value_or(0), 4294967295U);
        QCOMPARE(content.origright.value_or(0), 3);
        QCOMPARE(content.origuserid.value_or(0), 3000000000U);
        QVERIFY(content.totalsync);
        QVERIFY(!content.error);
    }

    void shouldTellEmptyFromMissing()
    {
        const VelXmlContent content = contentOf("<meta><synctime/><userid/></meta>");
        QVERIFY(content.synctime);
        QCOMPARE(*content.synctime, QString());
        QVERIFY(content.userid);
        QCOMPARE(*content.userid, 0U);
    }

    void shouldReadRights()
    {
        const VelXmlContent content =
            contentOf("<right id='12' right='3'/><right right=\"-1\" id=\"3000000000\"/>"
                      "<right right='2'/><right id='5'/><right id='6' right='1'/>"
                      "<right id='6' right='4' note='7'><right id='8' right='1'/></right>");
        const std::map<quint32, int> expected{{0, 2}, {5, 0}, {6, 4}, {12, 3}, {3000000000, -1}};
        QVERIFY(content.rights);
        QCOMPARE(*content.rights, expected);
    }

    void shouldReadNothingAfterError_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<int>("error");
        QTest::newRow("2") << QByteArray("2") << 2;
        QTest::newRow("0") << QByteArray("0") << 0;
        QTest::newRow("no number") << QByteArray("x") << 0;
        QTest::newRow("negative") << QByteArray("-7") << -7;
    }

    void shouldReadNothingAfterError()
    {
        QFETCH(QByteArray, code);
        const QByteArray elements = "<account><name>a</name></account><action><userid>1</userid><error>"
            + code
            + "</error><origright>4</origright><totalsync/></action><account><name>b</name></account>"
              "<right id='1' right='1'/><meta><userid>2</userid></meta><entry>" TIMES "</entry>";
        const VelXmlContent content = contentOf(elements);
        QVERIFY(content.error);
        QTEST(*content.error, "error");
        QCOMPARE(content.userid.value_or(0), 1U);
        QVERIFY(!content.origright && !content.totalsync && !content.rights);
        QCOMPARE(content.count(), std::size_t(1));
    }

    void shouldMentionAccountsOnlyWhenOneHasName()
    {
        const char *const nameless =
            "<account/><account><id>1</id><email>e</email></account><account><name/></account>";
        QVERIFY(!contentOf(nameless).accounts);
        const VelXmlContent content = contentOf(nameless + QByteArray("<account><name>n</name></account>"));
        QVERIFY(content.accounts);
        QCOMPARE(content.accounts->size(), 1);
        QCOMPARE(content.accounts->first(), VelAccount(QStringLiteral("n"), QString(), 0));
    }

    void shouldDropNamelessAttendees()
    {
        const VelEntry entry =
            entryOf("<account><id>1</id></account><account><name>n</name></account>" TIMES);
        QCOMPARE(entry.accounts.size(), 1);
    }

    void shouldNotCarryValuesFromOneRecordToTheNext()
    {
        const VelXmlContent content = contentOf(
            "<account><id>5</id><name>a</name><email>e</email><type>2</type></account>"
            "<account><name>b</name></account>"
            "<entry><title>t</title><description>d</description>" TIMES "</entry><entry>" TIMES "</entry>");
        QCOMPARE(content.accounts->at(1), VelAccount(QStringLiteral("b"), QString(), 0));
        QCOMPARE(content.accounts->at(1).type, 0);
        QCOMPARE(content.entries.at(1)->getTitle(), QString());
        QCOMPARE(content.entries.at(1)->getDescription(), QString());
    }
};

QTEST_GUILESS_MAIN(VelXmlTest)

#include "velxmltest.moc"

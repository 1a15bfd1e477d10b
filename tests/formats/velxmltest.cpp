// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/vellatin.h"
#include "formats/velxmlvalues.h"
#include "formats/xmltesting.h"
#include "support/velrandomentry.h"

#include <QBuffer>
#include <QTest>
#include <QTextStream>

using namespace XmlTesting;

namespace
{
#define LATIN9 "<?xml version='1.0' encoding='ISO-8859-15'?>"
#define TWO_NAMES "<account><id>5</id><name>a</name></account><account><name>b</name></account>"
#define TIMES "<start>2002-3-5 9:5</start><end>2002-3-5 10:0</end>"

VelDateTime at(int year, int month, int day, int hour, int minute)
{
    return {QDate(year, month, day), QTime(hour, minute)};
}

VelEntry plainEntry()
{
    return {1, VelEntry::Event, at(2002, 3, 5, 9, 5), at(2002, 3, 5, 10, 0)};
}

VelAccount accountOf(const QString &name, quint32 id, int type, int status, int attendee,
                     const char *email = "")
{
    VelAccount account(name, QString::fromUtf8(email), id);
    account.type = type;
    account.status = status;
    account.attendee = attendee;
    return account;
}

VelEntry fullEvent()
{
    VelEntry entry(1, VelEntry::Event, at(2002, 3, 5, 9, 5), at(2002, 3, 6, 10, 30));
    entry.setTitle(QStringLiteral("A<B & C> \"and\" 'so on'"));
    entry.setDescription(
        QStringLiteral("\tPrice: 5 € ŠšŽžŒœŸ\näöüÄÖÜß µ ¤¦¨´¸¼½¾\n\nПривет 😀\uFEFF\r\n]]> &amp; &#65; "));
    entry.globalid = 3000000000;
    entry.user = 4000000000;
    entry.access = VelEntry::Private;
    entry.display = VelEntry::TentativeTime;
    entry.priority = 9;
    entry.notime = true;
    entry.complete = true;
    entry.reminder = 4294967295;
    entry.reminderfired = true;
    entry.rule = {VelRecurrenceRule::Monthly, 2, {1, 3, 5}, -1, QDate(2003, 12, 31), 10};
    entry.accounts = {accountOf(QStringLiteral("Börje"), 7, VelAccount::Person, VelAccount::Accepted, 1,
                                "borje@example.org"),
                      accountOf(QStringLiteral("\uFEFFАнна"), 0, 0, 0, 0)};
    return entry;
}

// What golden.xml holds, made without a reader.
VelXmlContent goldenCalendar()
{
    VelXmlContent content;
    content.userid = 3000000000;
    content.origright = 4;
    content.synctime = QStringLiteral("2002-03-05 <17> & on");
    content.accounts = {
        accountOf(QStringLiteral("Åsa Öström"), 1, VelAccount::Person, 0, 0, "asa@example.org"),
        accountOf(QStringLiteral("Jäähtymissali <2 & 3>"), 4294967295, VelAccount::Resource, 0, 0)};
    content.entries.push_back(std::make_unique<VelEntry>(fullEvent()));
    VelEntry todo(4294967295, VelEntry::Todo, at(1, 1, 1, 0, 0), at(9999, 12, 31, 23, 59));
    todo.dirty = 0;
    todo.notime = false;
    content.entries.push_back(std::make_unique<VelEntry>(todo));
    VelEntry notice = fullEvent();
    notice.setStored(QStringLiteral("Peruttu päivä"), QStringLiteral("secret"), at(2024, 2, 29, 12, 0),
                     at(2024, 2, 29, 13, 0));
    notice.localid = 3;
    notice.type = VelEntry::Deleted;
    notice.globalid = 77;
    notice.user = 5;
    notice.accounts = {accountOf(QStringLiteral("Čeněk"), 9, 0, VelAccount::Declined, 0)};
    content.entries.push_back(std::make_unique<VelEntry>(notice));
    return content;
}

// All that was read, in one line.
QString summary(const VelXmlContent &content)
{
    QString text;
    QTextStream out(&text);
    const auto add = [&out](const char *name, const auto &value) {
        if (value)
            out << name << '(' << *value << ") ";
    };
    const auto addAccounts = [&out](const VelAccountList &accounts) {
        for (const VelAccount &one : accounts)
            out << one.name << '/' << one.email << '/' << one.id << ' ';
    };
    add("sync", content.synctime);
    add("user", content.userid);
    add("right", content.origright);
    add("owner", content.origuserid);
    add("error", content.error);
    add("archive", content.archive);
    if (!content.account.isNone())
        out << content.account.user << '@' << content.account.server << ' ';
    out << (content.totalsync ? "total " : "");
    for (const auto &[id, right] : content.rights.value_or(std::map<quint32, int>()))
        out << id << ':' << right << ' ';
    addAccounts(content.accounts.value_or(VelAccountList()));
    for (const auto &one : content.entries) {
        out << one->getTitle() << one->getDescription() << '=' << one->type << one->dirty << one->notime
            << ' ';
        addAccounts(one->accounts);
    }
    return text.chopped(text.isEmpty() ? 0 : 1);
}

// A few megabytes of entries.
void writeManyEntries(VelXmlWriter &writer)
{
    VelEntry entry = plainEntry();
    entry.setDescription(QStringLiteral("a line of text €\n").repeated(30));
    for (int i = 0; i < 5000; ++i)
        writer.writeEntry(entry);
}
} // namespace

class VelXmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteGoldenFile() { QCOMPARE(write(goldenCalendar()), dataFile("golden.xml").split('\n')); }

    void shouldReadGoldenFileInPiecesOfEverySize()
    {
        const auto expected = write(goldenCalendar());
        const QByteArray latin9 = dataFile("golden.xml");
        QString text = VelLatin::fromLatin9(latin9.constData(), latin9.size());
        text.replace(QLatin1String("ISO-8859-15"), QLatin1String("utf-8"));
        text.replace(QLatin1String("&#128512;"), QStringLiteral("😀"));
        for (const QByteArray &bytes : {latin9, text.toUtf8()}) {
            for (int size = 1; size <= bytes.size(); ++size) {
                const auto content = read(bytes, size);
                QVERIFY2(content, QByteArray::number(size).constData());
                QCOMPARE(write(*content), expected);
            }
        }
    }

    void shouldReadBackWhatWasWritten()
    {
        VelRandomEntry random(20020305);
        VelXmlContent given;
        given.archive = false;
        given.account = {QStringLiteral("<host>"), QStringLiteral("änna &")};
        for (char16_t unit = 0x20; unit < 0xFFFE; unit += QChar::isSurrogate(unit + 1) ? 0x801 : 1)
            given.synctime = given.synctime.value_or(QString()) + QChar(unit);
        for (int left = 1000; left > 0; --left) {
            VelEntry entry = random.entry();
            entry.setStart(entry.getStart().withTime(QTime(random.number(0, 23), random.number(0, 59))));
            entry.setEnd(at(random.number(1, 9999), 2, 28, 0, 0));
            for (VelAccount &account : entry.accounts)
                account.name += QStringLiteral("]]>\uFEFF&#65;\r\n");
            given.entries.push_back(std::make_unique<VelEntry>(entry));
        }
        const auto content = read(write(given).join('\n'));
        QVERIFY(content);
        QCOMPARE(write(*content), write(given));
        const auto isSame = [](const auto &a, const auto &b) { return *a == *b; };
        QVERIFY(std::equal(given.entries.begin(), given.entries.end(), content->entries.begin(), isSame));
    }

    void shouldEscapeWhatXmlWouldMistakeAndDropWhatItForbids()
    {
        const std::pair<QString, const char *> texts[] = {
            {QStringLiteral("\r\n&lt;"), "&#13;\n&amp;lt;"},
            {QStringLiteral("€¤ä\u0100\U0010FFFF"), "\xA4&#164;\xE4&#256;&#1114111;"},
            {QStringLiteral("a\x01\x1A\x1F\x0B\x7F\uFFFE\uFFFF\uFFFD"), "a\x7F&#65533;"},
            {QString(QLatin1String("a\0z", 3)), "az"},
            {QStringLiteral("a") + QChar(0xD83D), "a"},
            {QChar(0xDE00) + QStringLiteral("z"), "z"},
            {QChar(0xD83D) + QStringLiteral("😀"), "&#128512;"}};
        for (const auto &[text, bytes] : texts) {
            std::string out;
            VelXmlWriter::appendEscaped(out, text);
            QCOMPARE(QByteArray::fromStdString(out), QByteArray(bytes));
        }
    }

    void shouldNotWriteWhatIsNotSetNorSecondsNorOccurrences()
    {
        VelXmlWriter bare;
        bare.writeEntry(plainEntry());
        VelEntry entry = plainEntry();
        entry.access = entry.display = entry.priority = -1;
        entry.rule = {-1, -1, {}, 0, {}, -1};
        entry.setStart({QDate(2002, 3, 5), QTime(9, 5, 59, 999)});
        VelXmlWriter writer;
        writer.writeEntry(entry);
        entry.originalid = 1;
        writer.writeEntry(entry);
        QCOMPARE(writer.text(), bare.text());
    }

    void shouldHandManyEntriesToTheDeviceOrTellOfAFullOne()
    {
        VelXmlWriter inMemory;
        writeManyEntries(inMemory);
        QBuffer buffer;
        QFile full(QStringLiteral("/dev/full"));
        QVERIFY(buffer.open(QIODevice::WriteOnly) && full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        VelXmlWriter writer(&buffer);
        writeManyEntries(writer);
        QVERIFY(writer.text().size() < inMemory.text().size() / 2);
        QVERIFY(writer.flush() && buffer.data() == QByteArray::fromStdString(inMemory.text()));
        const auto content = read(LATIN9 "<c>" + buffer.data() + "</c>", 7);
        QVERIFY(content && content->count() == 5000);
        VelXmlWriter failing(&full);
        writeManyEntries(failing);
        QVERIFY2(!failing.flush() && !failing.flush(), "it remembers that something was lost");
    }

    void shouldReadRecords_data()
    {
        QTest::addColumn<QByteArray>("elements");
        QTest::addColumn<QString>("content");
        const auto row = [](const char *name, const QByteArray &elements, const QByteArray &content) {
            QTest::newRow(name) << elements << QString::fromUtf8(content);
        };
        row("defaults", "<entry>" TIMES "</entry>", "=100");
        row("number flags", "<entry><dirty>7</dirty><notime>-3</notime>" TIMES "</entry>", "=171");
        row("no start", "<entry>" TIMES "</entry><entry><end>2002-3-5 9:5</end></entry>", "=100");
        row("no end", "<entry>" TIMES "</entry><entry><start>2002-3-5 9:5</start></entry>", "=100");
        row("no time", "<entry><start>2002-3-5</start><end>2002-3-5 9:5</end></entry>", "");
        row("spoilt later", "<entry>" TIMES "<end>later</end></entry>", "");
        row("values of the entry before",
            "<entry><title>t</title><description>d</description>" TIMES "</entry><entry>" TIMES "</entry>",
            "td=100 =100");
        row("values of the account before", TWO_NAMES, "a//5 b//0");
        row("values of the attendee before", "<entry>" TWO_NAMES TIMES "</entry>", "=100 a//5 b//0");
        row("nameless accounts", "<account/><account><id>1</id></account><account><name/></account>", "");
        row("any order",
            "<entry>" TWO_NAMES "<end>2002-3-5 10:0</end><!-- . -->text<start>2002-3-5 9:5</start></entry>",
            "=100 a//5 b//0");
        row("unknown elements",
            "text<x><entry>" TIMES "</entry>" TWO_NAMES "</x><title>a</title><![CDATA[<entry/>]]>", "");
        row("empty meta", "<meta><synctime/><x><userid>9</userid></x><origright/></meta>", "sync() right(0)");
        row("answer",
            "<action><totalsync/><origuserid>3000000000</origuserid><userid>4294967295</userid></action>",
            "user(4294967295) owner(3000000000) total");
        row("what only a file says", "<meta><archive>1</archive><server>s</server><user>u</user></meta>",
            "archive(1) u@s");
        row("of itself", "<action><archive>1</archive><server>s</server><user>u</user></action>", "");
        row("rights",
            "<right id='12' right='3'/><right right='2'/><right id='6'/><right id='6' right='4' "
            "a='7'><right/></right>",
            "0:2 6:4 12:3");
        row("nothing after an error",
            "<action><userid>1</userid><error>-7</error><origright>4</origright></action><meta><userid>2</"
            "userid></meta>" TWO_NAMES "<entry>" TIMES "</entry>",
            "user(1) error(-7)");
        const auto title = [&row](const char *name, const QByteArray &element, const QByteArray &text) {
            row(name, "<entry>" + element + TIMES "</entry>", text + "=100");
        };
        title("blanks", "<title> \t a\n </title>", " \t a\n ");
        title("line ends", "<title>a\r\nb\rc&#13;d</title>", "a\nb\nc\rd");
        title("CDATA", "<title><![CDATA[<b> & ]]]]></title>", "<b> & ]]");
        title("up to an element", "<title>a<b>c</b>d</title>", "a");
        title("repeated", "<title>a</title><title>b</title>", "b");
        title("in an entry inside", "<entry><title>a</title></entry>", "");
        title("other names", "<Title>a</Title><titles>a</titles><titl>a</titl>", "");
    }

    void shouldReadRecords()
    {
        QFETCH(QByteArray, elements);
        const auto content = read("<calendar>" + elements + "</calendar>");
        QVERIFY(content);
        QTEST(summary(*content), "content");
    }

    void shouldReadDeclaredEncoding_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("title"); // null when it cannot be read
        const auto row = [](const char *head, const char *bytes, const char *title = nullptr) {
            QTest::addRow("%s with %s", head, QByteArray(bytes).toHex().constData())
                << QByteArray(head) << QByteArray(bytes) << QString::fromUtf8(title);
        };
        row("<?xml version = '1.0' encoding = 'ISO-8859-15' ?>\n", "\xA4\xE4", "€ä");
        row("<?xml version='1.0'\n\tencoding\n=\n'ISO-8859-15' standalone='yes'?>", "\xA4\xE4", "€ä");
        row("<?xml version='1.0' encoding='ISO-8859-1'?>", "\xA4\xE4", "¤ä");
        row("<?xml version='1.0' encoding='UTF-8'?>", "\xE2\x82\xAC\xC3\xA4", "€ä");
        row("", "\xE2\x82\xAC", "€");
        row("<!-- encoding='ISO-8859-15' ?> -->", "\xE2\x82\xAC", "€");
        row("<?xml-style encoding='ISO-8859-15'?>", "\xE2\x82\xAC", "€");
        row("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>", "\xE2\x82\xAC", "€");
        row("<?xml version='1.0' encoding='us-ascii'?>", "a&#xE4;", "aä");
        row("<?xml version='1.0' encoding='windows-1252'?>", "a");
        row("<?xml version='1.0' encoding=''?>", "a");
        row(" <?xml version='1.0' encoding='UTF-8'?>", "a");
        row("<?xml version='1.0' encoding='UTF-8'?>", "\xE4");
        row("<?xml version='1.0' encoding='UTF-8'?>", "\xED\xA0\x80");
        row("<?xml version='1.0' encoding='US-ASCII'?>", "\xE4");
    }

    void shouldReadDeclaredEncoding()
    {
        QFETCH(QByteArray, head);
        QFETCH(QByteArray, bytes);
        const QByteArray file = head + "<c><entry><title>" + bytes + "</title>" TIMES "</entry></c>";
        for (const VelSize size : {1, 1000}) {
            const auto content = read(file, size);
            QTEST(content ? content->entries.front()->getTitle() : QString(), "title");
        }
    }

    void shouldReadValuesAndTakeNothingForWhatIsNone()
    {
        const auto row = [](QString (*form)(std::string_view), const char *text, const char *value) {
            QVERIFY2(form(text) == QLatin1String(value), text);
        };
        // Signed and unsigned.
        const auto number = [](std::string_view text) -> QString {
            return QString::number(VelXmlValues::parseInt(text)) + QLatin1Char(' ')
                + QString::number(VelXmlValues::parseUInt(text));
        };
        row(number, "\t\r\n 0012 \n", "12 12");
        row(number, "-7", "-7 0");
        row(number, "-2147483648", "-2147483648 0");
        row(number, "2147483648", "0 2147483648");
        row(number, "4294967295", "0 4294967295");
        row(number, "99999999999999999999999999", "0 0");
        for (const char *none : {"", "  ", "+", "-", "+-5", "-+5", "++5", "- 5", "1 2", "5x", "0x10", "1.0"})
            row(number, none, "0 0");
        const auto date = [](std::string_view text) -> QString {
            return VelXmlValues::toStringDate(VelXmlValues::parseDate(text));
        };
        row(date, " 2002 - 03 - 5 ", "2002-3-5");
        row(date, "2002-3-5-7", "2002-3-5");
        for (const char *none : {"1900-2-29", "2002-13-1", "2002-1-0", "0-1-1", "-1-1-1", "10000-1-1",
                                 "2002-3", "2002/3/5", "--"})
            row(date, none, "0-0-0");
        const auto dateTime = [](std::string_view text) -> QString {
            const VelDateTime value = VelXmlValues::parseDateTime(text);
            return value.date().toString(Qt::ISODate) + QLatin1Char(' ') + value.time().toString(Qt::ISODate);
        };
        row(dateTime, "2002-03-05 09:05", "2002-03-05 09:05:00");
        row(dateTime, "2002-3-31 3:30", "2002-03-31 03:30:00"); // a time that no clock in Helsinki shows
        row(dateTime, "2002-2-30 9:5", " 09:05:00");
        for (const char *undated :
             {"2002-3-5", "2002-3-5 9", "2002-3-5 9:5:0", "2002-3-5 24:0", "2002-3-5 -1:0"})
            row(dateTime, undated, "2002-03-05 ");
        for (const char *none : {"2002-3-5T9:5", "9:5 2002-3-5", ""})
            row(dateTime, none, " ");
        // As it is written again.
        const auto list = [](std::string_view text) -> QString {
            std::string out;
            VelXmlValues::appendIntList(out, VelXmlValues::parseIntList(text));
            return QString::fromStdString(out);
        };
        row(list, "5,1,5", "5,1,5");
        row(list, " 2147483647 , -2147483648 ,+3", "2147483647,-2147483648,3");
        row(list, "1,x,,3", "1,0,0,3");
        row(list, "1,2,", "1,2,0");
        row(list, ",", "0,0");
    }

    void shouldCutEndlessList()
    {
        // In time that grows with the length alone, also where every piece is empty.
        QCOMPARE(VelXmlValues::parseIntList(std::string(4000000, ',')).size(),
                 VelXmlValues::MaximumListLength);
    }
};

QTEST_GUILESS_MAIN(VelXmlTest)

#include "velxmltest.moc"

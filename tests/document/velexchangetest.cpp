// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velexchange.h"
#include "document/calendarfiles.h"
#include "document/veldoc.h"
#include "document/velpaste.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QDir>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace CalendarFiles;
using namespace TestCalendar;

namespace
{
struct Calendar {
    FakeMessages messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, &TestCalendar::today};
};

QByteArray vCalendarText()
{
    return "BEGIN:VCALENDAR\r\nVERSION:1.0\r\nBEGIN:VEVENT\r\nSUMMARY:Lunch\r\nDTSTART:20260305T110000\r\n"
           "DTEND:20260305T120000\r\nEND:VEVENT\r\nBEGIN:VEVENT\r\nSUMMARY:Undated\r\nEND:VEVENT\r\n"
           "END:VCALENDAR\r\n";
}

QByteArray iCalendarText()
{
    return "BEGIN:VCALENDAR\r\nPRODID:-//Example//EN\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:1\r\n"
           "DTSTAMP:20260301T000000Z\r\nSUMMARY:Dinner\\, late\r\nDTSTART:20260305T190000\r\n"
           "DTEND:20260305T200000\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
}

QStringList titlesOf(const std::vector<std::unique_ptr<VelEntry>> &entries)
{
    QStringList titles;
    for (const auto &entry : entries)
        titles.append(entry->getTitle());
    titles.sort();
    return titles;
}

/** What every format here has room for. */
std::vector<VelEntry> plainEntries()
{
    VelEntry meeting = makeEvent(QStringLiteral("Meeting; A, B & <C>"), march(5, 9, 5), march(5, 10, 30));
    meeting.setDescription(QStringLiteral("First line\nSecond: Ä € Ж 😀"));
    meeting.access = VelEntry::Private;
    meeting.priority = 4;
    meeting.reminder = 45;
    meeting.accounts.append(VelAccount(QStringLiteral("Bo Ek"), QStringLiteral("bo@example.org"), 0));
    meeting.accounts[0].status = VelAccount::Accepted;
    VelEntry weekly = makeEvent(QStringLiteral("Weekly"), march(2, 22), march(3, 2));
    weekly.rule = weeklyRule({1}, 5);
    VelEntry todo = makeTodo(QStringLiteral("Buy milk"), QDate(2026, 3, 6));
    todo.complete = true;
    return {meeting, weekly, todo};
}

/** The fields that are promised to survive, as one text to compare. */
QString described(const VelEntry &entry)
{
    QStringList fields{entry.getTitle(), entry.getDescription(),
                       entry.getStart().toQDateTime().toString(Qt::ISODate),
                       entry.getEnd().toQDateTime().toString(Qt::ISODate),
                       entry.rule.getRecurrenceText(entry.getStart().date())};
    for (const int number : {entry.type, entry.access, entry.priority, static_cast<int>(entry.reminder),
                             static_cast<int>(entry.notime), static_cast<int>(entry.complete)})
        fields.append(QString::number(number));
    for (const VelAccount &account : entry.accounts)
        fields.append(account.name + account.email + QString::number(account.status));
    return fields.join(QLatin1Char('|'));
}

QStringList describedAll(const std::vector<std::unique_ptr<VelEntry>> &entries)
{
    QStringList texts;
    for (const auto &entry : entries)
        texts.append(described(*entry));
    texts.sort();
    return texts;
}
} // namespace

class VelExchangeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void shouldReadByContentNotByName_data();
    void shouldReadByContentNotByName();
    void shouldReadNothingFromWhatIsNoCalendar_data();
    void shouldReadNothingFromWhatIsNoCalendar();
    void shouldFailOnUnreadablePath_data();
    void shouldFailOnUnreadablePath();
    void shouldReadCalendarFileWithoutNoticesAndIds();
    void shouldCountDamagedCalendarFileAsLeftOut();
    void shouldTellCalendarFilesFromOthers_data();
    void shouldTellCalendarFilesFromOthers();
    void shouldChooseFormatBySuffix_data();
    void shouldChooseFormatBySuffix();
    void shouldExportSeriesOnceAndNoNotices_data();
    void shouldExportSeriesOnceAndNoNotices();
    void shouldReadBackWhatItExported_data();
    void shouldReadBackWhatItExported();
    void shouldFailWhereNothingCanBeWritten();

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder->filePath(name); }
    [[nodiscard]] QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }
    static void addSuffixes();

    std::unique_ptr<QTemporaryDir> m_folder;
};

void VelExchangeTest::initTestCase()
{
    // What is wrong with a calendar file is logged, too.
    QLoggingCategory::setFilterRules(QStringLiteral("delmasttime.file=false"));
}

void VelExchangeTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void VelExchangeTest::addSuffixes()
{
    QTest::addColumn<QString>("file");

    QTest::newRow("vCalendar") << QStringLiteral("all.vcs");
    QTest::newRow("iCalendar") << QStringLiteral("all.ics");
}

void VelExchangeTest::shouldReadByContentNotByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<int>("leftOut");

    const QByteArray xml = fileWithIds({1, 2});
    const QStringList inXml{QStringLiteral("0"), QStringLiteral("1")};
    const QStringList lunch{QStringLiteral("Lunch")};
    const QStringList dinner{QStringLiteral("Dinner, late")};
    QTest::newRow("vCalendar") << QStringLiteral("a.vcs") << vCalendarText() << lunch << 1;
    QTest::newRow("vCalendar, named otherwise") << QStringLiteral("a.ics") << vCalendarText() << lunch << 1;
    QTest::newRow("iCalendar") << QStringLiteral("a.ics") << iCalendarText() << dinner << 0;
    QTest::newRow("iCalendar, named otherwise") << QStringLiteral("a.vcs") << iCalendarText() << dinner << 0;
    QTest::newRow("iCalendar, line feeds only")
        << QStringLiteral("a") << iCalendarText().replace("\r\n", "\n") << dinner << 0;
    QTest::newRow("calendar file") << QStringLiteral("a.vcs") << "<?xml version='1.0'?>\n" + xml << inXml
                                   << 0;
    QTest::newRow("calendar file without declaration") << QStringLiteral("a.xml") << xml << inXml << 0;
    QTest::newRow("calendar file with a byte order mark")
        << QStringLiteral("a.xml") << "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>" + xml << inXml
        << 0;
}

void VelExchangeTest::shouldReadByContentNotByName()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);

    QVERIFY(writeBytes(path(name), bytes));
    VelExchange::Content content;
    QVERIFY(VelExchange::read(path(name), content));
    QTEST(titlesOf(content.entries), "titles");
    QTEST(content.leftOut, "leftOut");
    QCOMPARE(content.simplified, 0);
    for (const auto &entry : content.entries) {
        QCOMPARE(entry->localid, 0U);
        QCOMPARE(entry->globalid, 0U);
    }
}

void VelExchangeTest::shouldReadNothingFromWhatIsNoCalendar_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("Buy milk\n");
    QTest::newRow("zeros") << QByteArray(5000, '\0');
    QTest::newRow("other XML") << QByteArray("<html><body/></html>");
    QTest::newRow("calendar without entries") << QByteArray("BEGIN:VCALENDAR\nVERSION:1.0\nEND:VCALENDAR\n");
}

void VelExchangeTest::shouldReadNothingFromWhatIsNoCalendar()
{
    QFETCH(QByteArray, bytes);

    QVERIFY(writeBytes(path(QStringLiteral("a.vcs")), bytes));
    VelExchange::Content content;
    QVERIFY(VelExchange::read(path(QStringLiteral("a.vcs")), content));
    QVERIFY(content.entries.empty());
    QCOMPARE(content.leftOut, 0);
}

void VelExchangeTest::shouldFailOnUnreadablePath_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("missing") << QStringLiteral("missing.vcs");
    QTest::newRow("a folder") << QStringLiteral("folder.vcs");
    QTest::newRow("none") << QString();
}

void VelExchangeTest::shouldFailOnUnreadablePath()
{
    QFETCH(QString, name);

    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder.vcs")));
    VelExchange::Content content;
    QVERIFY(!VelExchange::read(name.isEmpty() ? QString() : path(name), content));
    QVERIFY(content.entries.empty());
}

void VelExchangeTest::shouldReadCalendarFileWithoutNoticesAndIds()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    VelExchange::Content content;
    QVERIFY(VelExchange::read(path(QStringLiteral("a.xml")), content));
    QCOMPARE(content.entries.size(), std::size_t(2));
    for (const auto &entry : content.entries) {
        QVERIFY(!entry->isDeleted());
        QCOMPARE(entry->localid, 0U);
        QCOMPARE(entry->globalid, 0U);
    }
}

void VelExchangeTest::shouldCountDamagedCalendarFileAsLeftOut()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile().left(700)));
    VelExchange::Content content;
    QVERIFY(VelExchange::read(path(QStringLiteral("a.xml")), content));
    QVERIFY(content.entries.empty());
    QCOMPARE(content.leftOut, 1);
}

void VelExchangeTest::shouldTellCalendarFilesFromOthers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isCalendar");

    QTest::newRow("vCalendar") << QStringLiteral("a.vcs") << true;
    QTest::newRow("iCalendar") << QStringLiteral("a.ics") << true;
    QTest::newRow("in capitals") << QStringLiteral("A.VCS") << true;
    QTest::newRow("calendar file") << QStringLiteral("a.xml") << false;
    QTest::newRow("text") << QStringLiteral("a.txt") << false;
    QTest::newRow("address card") << QStringLiteral("a.vcf") << false;
}

void VelExchangeTest::shouldTellCalendarFilesFromOthers()
{
    QFETCH(QString, name);
    QFETCH(bool, isCalendar);

    QCOMPARE(VelExchange::isCalendarFile(url(name)), isCalendar);
    QVERIFY(!VelExchange::isCalendarFile(QUrl()));
}

void VelExchangeTest::shouldChooseFormatBySuffix_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("version");

    QTest::newRow("iCalendar") << QStringLiteral("a.ics") << QByteArray("VERSION:2.0");
    QTest::newRow("iCalendar in capitals") << QStringLiteral("A.ICS") << QByteArray("VERSION:2.0");
    QTest::newRow("vCalendar") << QStringLiteral("a.vcs") << QByteArray("VERSION:1.0");
    QTest::newRow("another") << QStringLiteral("a.ics.txt") << QByteArray("VERSION:1.0");
    QTest::newRow("none") << QStringLiteral("ics") << QByteArray("VERSION:1.0");
}

void VelExchangeTest::shouldChooseFormatBySuffix()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, version);

    Calendar calendar;
    addEvent(calendar.doc, QStringLiteral("Lunch"), march(5, 11), march(5, 12));
    calendar.doc.setModified(true);
    QVERIFY(VelExchange::write(calendar.doc, url(name)));
    const QByteArray bytes = fileBytes(path(name));
    QVERIFY(bytes.startsWith("BEGIN:VCALENDAR"));
    QVERIFY(bytes.contains(version));
    QVERIFY(bytes.contains("SUMMARY:Lunch"));
    // An export is no save.
    QVERIFY(calendar.doc.isModified());
    QVERIFY(calendar.doc.isUntitled());
}

void VelExchangeTest::shouldExportSeriesOnceAndNoNotices_data()
{
    addSuffixes();
}

void VelExchangeTest::shouldExportSeriesOnceAndNoNotices()
{
    QFETCH(QString, file);

    Calendar calendar;
    VelDoc &doc = calendar.doc;
    VelEntry series = makeEvent(QStringLiteral("Series"), march(2, 9), march(2, 10));
    series.rule = dailyRule(1, 10);
    add(doc, series);
    doc.deleteEntry(addSynced(doc, QStringLiteral("Notice"), 70), false);
    QVERIFY(VelExchange::write(doc, url(file)));
    QVERIFY(!fileBytes(path(file)).contains("Notice"));
    QCOMPARE(fileBytes(path(file)).count("BEGIN:VEVENT"), 1);
}

void VelExchangeTest::shouldReadBackWhatItExported_data()
{
    addSuffixes();
}

void VelExchangeTest::shouldReadBackWhatItExported()
{
    QFETCH(QString, file);

    Calendar calendar;
    QStringList expected;
    for (const VelEntry &entry : plainEntries()) {
        add(calendar.doc, entry);
        expected.append(described(entry));
    }
    expected.sort();
    QVERIFY(VelExchange::write(calendar.doc, url(file)));
    VelExchange::Content content;
    QVERIFY(VelExchange::read(path(file), content));
    QCOMPARE(describedAll(content.entries), expected);
    QCOMPARE(content.leftOut, 0);
    QCOMPARE(content.simplified, 0);
    // Importing one's own export adds to the calendar and replaces nothing.
    for (auto &entry : content.entries)
        VelPaste::addCopy(calendar.doc, std::move(entry));
    QCOMPARE(calendar.doc.getEntryCount(), std::size_t(2 * expected.size()));
}

void VelExchangeTest::shouldFailWhereNothingCanBeWritten()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder.ics")));
    Calendar calendar;
    QVERIFY(!VelExchange::write(calendar.doc, url(QStringLiteral("missing/a.vcs"))));
    QVERIFY(!VelExchange::write(calendar.doc, url(QStringLiteral("folder.ics"))));
}

QTEST_GUILESS_MAIN(VelExchangeTest)

#include "velexchangetest.moc"

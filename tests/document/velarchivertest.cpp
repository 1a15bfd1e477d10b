// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velarchiver.h"

#include "testdoc.h"

#include <QTest>

using namespace TestCalendar;
using Result = VelArchiver::Result;

namespace
{
/** A calendar with two entries that are over today, one of them known to the server, and one that is not. */
struct Calendar : public TestDoc {
    Calendar()
    {
        setUserId(4);
        addEvent(*this, QStringLiteral("old"), at({2025, 3, 1}, 9), at({2025, 3, 1}, 10));
        addSynced(*this, QStringLiteral("synced"), 70);
        changeEntry(2, [](VelEntry &entry) {
            entry.setStored(entry.getTitle(), {}, at({2024, 3, 1}), at({2024, 3, 1}));
        });
        addEvent(*this, QStringLiteral("new"), march(3, 9), march(3, 10));
    }
    Result archive(const QString &name = QStringLiteral("archive"))
    {
        VelArchiver archiver(*this, messages, settings);
        const Result result = archiver.open(url(name)) ? archiver.archive(today()) : Result::Failed;
        count = archiver.getCount();
        return result;
    }
    /** The titles in the archive. */
    QString archived()
    {
        VelDoc doc(messages, settings);
        doc.openDocument(url(QStringLiteral("archive.xml")));
        return titles(doc);
    }
    /** Those that are left in the calendar. Deleted ones have brackets. */
    QString left() const { return titles(*this); }
    static QString titles(const VelDoc &doc)
    {
        QStringList texts;
        const VelEntryList entries = doc.getEntries(QDate(), 0, false, QDate());
        for (const VelEntryRef &ref : entries)
            texts.append(QString::fromLatin1(ref.getOriginal()->isDeleted() ? "(%1)" : "%1")
                             .arg(ref.getOriginal()->getTitle()));
        return texts.join(QLatin1Char(' '));
    }
    int count = 0;
};
} // namespace

class VelArchiverTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void entriesShouldBeOverByTheirLastEnd();
    void oldEntriesShouldMoveOnceToWhatIsThere();
    void brokenOffArchivingShouldBeFinishedNextTime();
    void unusableArchiveShouldChangeNothing();
};

void VelArchiverTest::entriesShouldBeOverByTheirLastEnd()
{
    const VelRecurrenceRule once;
    VelRecurrenceRule byDate = dailyRule(1, 0);
    byDate.occurenddate = today().addDays(-1);
    const struct {
        const char *name;
        int type;
        int start; // days from today
        int end;
        VelRecurrenceRule rule;
        bool isOver;
    } rows[] = {
        {"yesterday", 1, -1, -1, once, true},
        {"ends today", 1, -1, 0, once, false},
        {"ends before it starts", 1, 0, -1, once, false},
        {"task due yesterday", 2, -1, -1, once, true},
        {"task due later", 2, -1, 9, once, false},
        {"notice of a deletion", -1, -1, -1, once, false},
        {"endless", 1, -999, -999, dailyRule(1, 0), false},
        {"last time yesterday", 1, -3, -3, dailyRule(1, 3), true},
        {"last time today", 1, -3, -3, dailyRule(1, 4), false},
        {"last time ends today", 1, -3, -2, dailyRule(1, 3), false},
        {"ends by date", 1, -99, -99, byDate, true},
        {"next in nine years, further than views look", 1, -365, -365, dailyRule(3650, 2), false},
    };
    for (const auto &row : rows) {
        VelEntry entry(1, row.type, at(today().addDays(row.start)), at(today().addDays(row.end)));
        entry.rule = row.rule;
        entry.updRecurrence(today());
        QVERIFY2(VelArchiver::isOver(entry, today()) == row.isOver, row.name);
    }
}

void VelArchiverTest::oldEntriesShouldMoveOnceToWhatIsThere()
{
    Calendar calendar;
    add(calendar, *calendar.getEntry(1)); // equal, but another
    QVERIFY(
        calendar.put(QStringLiteral("archive.xml"),
                     fileWithIds({1}).replace("<calendar>", "<calendar><meta><userid>4</userid></meta>")));
    QCOMPARE(calendar.archive(), Result::Archived);
    QVERIFY(calendar.bytes(QStringLiteral("archive.xml")).contains("<archive>1</archive>"));
    QCOMPARE(calendar.count, 3);
    QCOMPARE(calendar.archived(), QStringLiteral("0 old synced old"));
    QCOMPARE(calendar.left(), QStringLiteral("(synced) new")); // the server is still to be told
    QCOMPARE(calendar.archive(), Result::Nothing);
    QCOMPARE(calendar.messages.count(), 0);
}

void VelArchiverTest::brokenOffArchivingShouldBeFinishedNextTime()
{
    Calendar calendar;
    {
        VelArchiver archiver(calendar, calendar.messages, calendar.settings);
        QVERIFY(archiver.open(calendar.url(QStringLiteral("archive"))));
        QVERIFY(archiver.store(VelArchiver::findEntries(calendar, today())));
    }
    QCOMPARE(calendar.left(), QStringLiteral("old synced new"));
    // Meanwhile it got another title.
    calendar.changeEntry(2, [](VelEntry &entry) { entry.setTitle(QStringLiteral("renamed")); });
    QCOMPARE(calendar.archive(), Result::Archived);
    QCOMPARE(calendar.count, 2);
    QCOMPARE(calendar.archived(), QStringLiteral("old renamed"));
    QCOMPARE(calendar.left(), QStringLiteral("(renamed) new"));
}

void VelArchiverTest::unusableArchiveShouldChangeNothing()
{
    Calendar calendar;
    QVERIFY(calendar.saveDocument(calendar.url(QStringLiteral("own.xml")), true));
    QVERIFY(QFile::link(calendar.path(QStringLiteral("own.xml")), calendar.path(QStringLiteral("link.xml"))));
    QVERIFY(calendar.put(QStringLiteral("letters.xml"), "letters"));
    QVERIFY(
        calendar.put(QStringLiteral("other.xml"), "<calendar><meta><userid>5</userid></meta></calendar>"));
    QVERIFY(calendar.put(QStringLiteral("synced.xml"),
                         "<calendar><meta><userid>4</userid><server>s</server></meta></calendar>"));
    QCOMPARE(calendar.archive(QStringLiteral("synced")), Result::Failed);
    QCOMPARE(calendar.messages.last().yes, QStringLiteral("Make it an archive"));
    const char *const rows[][2] = {{"own", "You cannot archive to same file."},
                                   {"link.xml", "You cannot archive to same file."},
                                   {"other.xml", "Selected archive file is not yours."},
                                   {"letters.xml", "Cannot read from the file."},
                                   {"no/folder.xml", "Cannot write to the file."}};
    for (const auto &[file, error] : rows) {
        const QString name = QString::fromLatin1(file);
        const QByteArray before = calendar.bytes(name);
        QVERIFY2(calendar.archive(name) == Result::Failed, file);
        QCOMPARE(calendar.messages.errors().last(), QString::fromLatin1(error));
        QCOMPARE(calendar.bytes(name), before);
        QCOMPARE(calendar.left(), QStringLiteral("old synced new"));
    }
}

QTEST_GUILESS_MAIN(VelArchiverTest)

#include "velarchivertest.moc"

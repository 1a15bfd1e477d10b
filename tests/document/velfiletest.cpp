// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/calendarfiles.h"
#include "document/veldoc.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QDir>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace CalendarFiles;
using namespace TestCalendar;

namespace
{
const QString OpenError = QStringLiteral("Cannot open the file.");
const QString ReadError = QStringLiteral("Cannot read from the file.");

struct Calendar {
    FakeMessages messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, &TestCalendar::today};
};
} // namespace

class VelFileTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void shouldReadWhatTheFileSays();
    void shouldWriteCanonicalFileAsItWas();
    void shouldWriteExampleAsItIs();
    void shouldWriteEntriesInOrderOfLocalId();
    void shouldNotWriteOccurrences();
    void shouldKeepOpenDocumentWhenFileIsUnusable_data();
    void shouldKeepOpenDocumentWhenFileIsUnusable();
    void shouldReplaceOpenDocumentByOpenedOne();
    void shouldKeepWhatTheFileDoesNotMention();
    void shouldContinueLocalIdsAboveTheHighest_data();
    void shouldContinueLocalIdsAboveTheHighest();
    void shouldKeepEntriesWithBadLocalIds_data();
    void shouldKeepEntriesWithBadLocalIds();
    void shouldTakeOverWhatAMessageSaysOfTheCalendar();
    void shouldTellOfAccountsWhenAllIsThere();
    void shouldRecoverCopyAsModifiedDocument();
    void shouldKeepOpenDocumentWhenCopyIsUnusable();
    void shouldCopyWithoutBecomingTheCopy();

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder->filePath(name); }
    [[nodiscard]] QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void VelFileTest::initTestCase()
{
    // What is wrong with a file is logged, too; here most of them are.
    QLoggingCategory::setFilterRules(QStringLiteral("delmasttime.file=false"));
}

void VelFileTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void VelFileTest::shouldReadWhatTheFileSays()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    QCOMPARE(calendar.messages.count(), 0);
    QCOMPARE(doc.URL(), url(QStringLiteral("a.xml")));
    QVERIFY(!doc.isModified());
    QCOMPARE(doc.getUserId(), 5U);
    QCOMPARE(doc.getOrigRight(), 3);
    QCOMPARE(doc.getSynctime(), QStringLiteral("20260301"));
    QCOMPARE(doc.getAccounts().size(), 2);
    QCOMPARE(doc.getAccounts().at(1).name, QStringLiteral("Sähkö €"));
    QCOMPARE(doc.getEntryCount(), std::size_t(3));
    QCOMPARE(doc.getEntry(3)->getTitle(), QStringLiteral("A<B & C> €😀"));
    QCOMPARE(doc.getEntry(3)->getRecurrence().count(), 3U);
    QCOMPARE(doc.getEntries(QDate(2026, 3, 9), 0, true, QDate()).size(), std::size_t(1));
    QVERIFY(doc.getEntry(57)->complete);
    QVERIFY(doc.getEntry(58)->isDeleted());
    QCOMPARE(doc.getLocalId(70), 3U);
}

void VelFileTest::shouldWriteCanonicalFileAsItWas()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    QVERIFY(calendar.doc.openDocument(url(QStringLiteral("a.xml"))));
    QVERIFY(calendar.doc.saveDocument(url(QStringLiteral("b.xml")), false));
    QCOMPARE(fileBytes(path(QStringLiteral("b.xml"))), canonicalFile());
    QVERIFY(calendar.doc.openDocument(url(QStringLiteral("b.xml"))));
    QVERIFY(calendar.doc.saveDocument(url(QStringLiteral("b.xml")), true));
    QCOMPARE(fileBytes(path(QStringLiteral("b.xml"))), canonicalFile());
    QCOMPARE(calendar.messages.count(), 0);
}

void VelFileTest::shouldWriteExampleAsItIs()
{
    const QString example = QStringLiteral(EXAMPLE_FILE);
    Calendar calendar;
    QVERIFY(calendar.doc.openDocument(QUrl::fromLocalFile(example)));
    QVERIFY(calendar.doc.getEntryCount() > 10);
    QVERIFY(calendar.doc.saveDocument(url(QStringLiteral("copy.xml")), false));
    QCOMPARE(fileBytes(path(QStringLiteral("copy.xml"))), fileBytes(example));
}

void VelFileTest::shouldWriteEntriesInOrderOfLocalId()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), fileWithIds({30, 4, 200, 17})));
    Calendar calendar;
    QVERIFY(calendar.doc.openDocument(url(QStringLiteral("a.xml"))));
    QVERIFY(calendar.doc.saveDocument(url(QStringLiteral("a.xml")), true));
    const QByteArray bytes = fileBytes(path(QStringLiteral("a.xml")));
    QVERIFY(bytes.indexOf("<localid>4<") > 0);
    QVERIFY(bytes.indexOf("<localid>4<") < bytes.indexOf("<localid>17<"));
    QVERIFY(bytes.indexOf("<localid>17<") < bytes.indexOf("<localid>30<"));
    QVERIFY(bytes.indexOf("<localid>30<") < bytes.indexOf("<localid>200<"));
}

void VelFileTest::shouldNotWriteOccurrences()
{
    Calendar calendar;
    VelEntry entry = makeEvent(QStringLiteral("A"), march(2, 9), march(2, 10));
    entry.rule = dailyRule(1, 5);
    const VelEntry *stored = add(calendar.doc, entry);
    QVERIFY(stored->getOccurrence(2)); // the record has been made
    QVERIFY(calendar.doc.saveDocument(url(QStringLiteral("a.xml")), false));
    QCOMPARE(fileBytes(path(QStringLiteral("a.xml"))).count("<entry>"), 1);
}

void VelFileTest::shouldKeepOpenDocumentWhenFileIsUnusable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("error");

    const QString file = QStringLiteral("bad.xml");
    const QByteArray good = canonicalFile();
    QTest::newRow("missing") << QStringLiteral("missing.xml") << QByteArray() << OpenError;
    QTest::newRow("in a missing folder") << QStringLiteral("missing/a.xml") << QByteArray() << OpenError;
    QTest::newRow("a folder") << QStringLiteral("folder") << QByteArray() << OpenError;
    QTest::newRow("empty") << file << QByteArray() << ReadError;
    QTest::newRow("no XML") << file << QByteArray("BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n") << ReadError;
    QTest::newRow("zeros") << file << QByteArray(5000, '\0') << ReadError;
    QTest::newRow("cut in an entry") << file << good.left(good.indexOf("<title>Gone")) << ReadError;
    QTest::newRow("cut before the last tag") << file << good.left(good.indexOf("</calendar>")) << ReadError;
    QTest::newRow("with more behind the end") << file << good + good << ReadError;
    QTest::newRow("with a document type")
        << file << QByteArray("<!DOCTYPE calendar [<!ENTITY a 'aaaa'>]><calendar/>") << ReadError;
    QTest::newRow("nested without end") << file << QByteArray("<calendar>").repeated(1000) << ReadError;
}

void VelFileTest::shouldKeepOpenDocumentWhenFileIsUnusable()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, error);

    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
    QVERIFY(writeBytes(path(QStringLiteral("bad.xml")), bytes));
    QVERIFY(writeBytes(path(QStringLiteral("good.xml")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("good.xml"))));
    const VelEntry *entry = addTodo(doc, QStringLiteral("Not saved yet"), today());
    doc.slotUpdateAllViews(nullptr);
    const QSignalSpy modified(&doc, &VelDoc::modifiedChanged);

    QVERIFY(!doc.openDocument(url(name)));
    QCOMPARE(calendar.messages.count(), 1);
    QCOMPARE(calendar.messages.errors(), QStringList{error});
    QCOMPARE(doc.getEntryCount(), std::size_t(4));
    QCOMPARE(doc.getEntry(entry->localid), entry);
    QCOMPARE(doc.getUserId(), 5U);
    QCOMPARE(doc.getAccounts().size(), 2);
    QCOMPARE(doc.URL(), url(QStringLiteral("good.xml")));
    QVERIFY(doc.isModified());
    QVERIFY(!doc.isModsSynced());
    QCOMPARE(modified.count(), 0);
}

void VelFileTest::shouldReplaceOpenDocumentByOpenedOne()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    QVERIFY(writeBytes(path(QStringLiteral("b.xml")), fileWithIds({1})));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    doc.setModified(true);
    QVERIFY(doc.openDocument(url(QStringLiteral("b.xml"))));
    QCOMPARE(doc.getEntryCount(), std::size_t(1));
    QCOMPARE(doc.getUserId(), 0U);
    QCOMPARE(doc.getSynctime(), QStringLiteral("0"));
    QCOMPARE(doc.getOrigRight(), 4);
    QVERIFY(!doc.isModified());
    QVERIFY(doc.getEntries(QDate(2026, 3, 9), 0, true, QDate()).empty()); // an occurrence of the first file
}

void VelFileTest::shouldKeepWhatTheFileDoesNotMention()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")),
                       "<calendar><right id='12' right='3'/><right id='13' right='1'/>"
                       "<account><id>5</id><name>Al</name></account></calendar>"));
    QVERIFY(writeBytes(path(QStringLiteral("b.xml")), "<calendar><account><name/></account></calendar>"));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    const std::map<quint32, int> rights{{12, 3}, {13, 1}};
    QVERIFY(doc.getRights() == rights);
    const QSignalSpy accounts(&doc, &VelDoc::accountsChanged);
    QVERIFY(doc.openDocument(url(QStringLiteral("b.xml"))));
    QVERIFY(doc.getRights() == rights);
    QCOMPARE(doc.getAccounts().size(), 1);
    QCOMPARE(accounts.count(), 0);
    doc.newDocument();
    QVERIFY(doc.getRights() == rights);
}

void VelFileTest::shouldContinueLocalIdsAboveTheHighest_data()
{
    QTest::addColumn<QVector<quint32>>("ids");
    QTest::addColumn<quint32>("next");

    QTest::newRow("none") << QVector<quint32>{} << 1U;
    QTest::newRow("highest last") << QVector<quint32>{1, 2, 57} << 58U;
    QTest::newRow("highest first") << QVector<quint32>{57, 2, 1} << 58U;
    QTest::newRow("with a missing one") << QVector<quint32>{0, 57} << 59U;
    QTest::newRow("with a repeated one") << QVector<quint32>{57, 57, 3} << 59U;
    QTest::newRow("the highest there is") << QVector<quint32>{1, 2, 4294967295U} << 3U;
}

void VelFileTest::shouldContinueLocalIdsAboveTheHighest()
{
    QFETCH(QVector<quint32>, ids);

    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), fileWithIds(ids)));
    Calendar calendar;
    QVERIFY(calendar.doc.openDocument(url(QStringLiteral("a.xml"))));
    QTEST(calendar.doc.newEntry(VelEntry::Event, march(2), march(2))->localid, "next");
}

void VelFileTest::shouldKeepEntriesWithBadLocalIds_data()
{
    QTest::addColumn<QVector<quint32>>("ids");
    QTest::addColumn<QVector<quint32>>("repaired"); // of the entries in file order

    using Ids = QVector<quint32>;
    QTest::newRow("all good") << Ids{2, 1, 9} << Ids{2, 1, 9};
    QTest::newRow("one missing") << Ids{1, 0, 5} << Ids{1, 6, 5};
    QTest::newRow("all missing") << Ids{0, 0, 0} << Ids{1, 2, 3};
    QTest::newRow("one repeated") << Ids{5, 5, 9} << Ids{5, 10, 9};
    QTest::newRow("missing before the highest") << Ids{0, 4294967295U, 1} << Ids{2, 4294967295U, 1};
    QTest::newRow("up to the highest")
        << Ids{4294967294U, 4294967294U, 4294967294U} << Ids{4294967294U, 4294967295U, 1};
    QTest::newRow("all the highest") << Ids{4294967295U, 4294967295U, 4294967295U} << Ids{4294967295U, 1, 2};
}

void VelFileTest::shouldKeepEntriesWithBadLocalIds()
{
    QFETCH(QVector<quint32>, ids);
    QFETCH(QVector<quint32>, repaired);

    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), fileWithIds(ids)));
    Calendar calendar;
    QVERIFY(calendar.doc.openDocument(url(QStringLiteral("a.xml"))));
    QCOMPARE(calendar.doc.getEntryCount(), std::size_t(ids.size()));
    for (int i = 0; i < repaired.size(); ++i) {
        const VelEntry *entry = calendar.doc.getEntry(repaired.at(i));
        QVERIFY2(entry, qPrintable(QString::number(repaired.at(i))));
        QCOMPARE(entry->getTitle(), QString::number(i));
    }
}

void VelFileTest::shouldTakeOverWhatAMessageSaysOfTheCalendar()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    addTodo(doc, QStringLiteral("A"), today());
    doc.setUserId(5);
    VelXmlContent message;
    message.synctime = QStringLiteral("44");
    message.accounts = VelAccountList{VelAccount(QStringLiteral("Al"), QString(), 5)};
    message.rights = std::map<quint32, int>{{12, 3}};
    message.entries.push_back(std::make_unique<VelEntry>(1, VelEntry::Event, march(2), march(2)));
    QCOMPARE(doc.readXml(message), 2); // an account and an entry
    QCOMPARE(doc.getSynctime(), QStringLiteral("44"));
    QCOMPARE(doc.getUserId(), 5U);
    QCOMPARE(doc.getAccounts().size(), 1);
    QCOMPARE(doc.getRights().at(12), 3);
    // What becomes of its entries is for the caller to decide.
    QCOMPARE(message.entries.size(), std::size_t(1));
    QCOMPARE(doc.getEntry(1)->getTitle(), QStringLiteral("A"));
}

void VelFileTest::shouldTellOfAccountsWhenAllIsThere()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    std::size_t entries = 0;
    QUrl shown;
    connect(&calendar.doc, &VelDoc::accountsChanged, this, [&] {
        entries = calendar.doc.getEntryCount();
        shown = calendar.doc.URL();
    });
    QVERIFY(calendar.doc.openDocument(url(QStringLiteral("a.xml"))));
    QCOMPARE(entries, std::size_t(3));
    QCOMPARE(shown, url(QStringLiteral("a.xml")));
}

void VelFileTest::shouldRecoverCopyAsModifiedDocument()
{
    QVERIFY(writeBytes(path(QStringLiteral("own.xml")), fileWithIds({1})));
    QVERIFY(writeBytes(path(QStringLiteral("copy")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.recoverDocument(path(QStringLiteral("copy")), url(QStringLiteral("own.xml"))));
    QCOMPARE(doc.getEntryCount(), std::size_t(3));
    QCOMPARE(doc.URL(), url(QStringLiteral("own.xml")));
    QVERIFY(doc.isModified());
    QVERIFY(doc.saveDocument(doc.URL(), true));
    QCOMPARE(calendar.messages.count(), 0);
    QVERIFY(fileBytes(path(QStringLiteral("own.xml"))).contains("Gone"));
}

void VelFileTest::shouldKeepOpenDocumentWhenCopyIsUnusable()
{
    QVERIFY(writeBytes(path(QStringLiteral("copy")), "<calendar>"));
    Calendar calendar;
    addTodo(calendar.doc, QStringLiteral("A"), today());
    QVERIFY(!calendar.doc.recoverDocument(path(QStringLiteral("copy")), url(QStringLiteral("own.xml"))));
    QCOMPARE(calendar.messages.errors(), QStringList{ReadError});
    QCOMPARE(calendar.doc.getEntryCount(), std::size_t(1));
    QVERIFY(calendar.doc.isUntitled());
}

void VelFileTest::shouldCopyWithoutBecomingTheCopy()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    doc.setModified(true);
    QVERIFY(doc.writeCopy(path(QStringLiteral("copy"))));
    QVERIFY(fileBytes(path(QStringLiteral("copy"))).contains("Gone"));
    QVERIFY(doc.isModified());
    QCOMPARE(doc.URL(), url(QStringLiteral("a.xml")));
    QVERIFY(!doc.writeCopy(path(QStringLiteral("missing/copy"))));
    QCOMPARE(calendar.messages.count(), 0);
}

QTEST_GUILESS_MAIN(VelFileTest)

#include "velfiletest.moc"

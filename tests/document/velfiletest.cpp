// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/testdoc.h"
#include "document/velcalendarfile.h"
#include "document/velfilerights.h"
#include "document/velsavefile.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace TestCalendar;
using Answer = VelMessages::Answer;
using Ids = QVector<quint32>;

namespace
{
// What has become of the open calendar and its file; Auto is to be saved by itself, or over what is there.
constexpr int Untitled = 1, Gone = 2, Foreign = 4, Auto = 8, Cancelled = 16;
constexpr int Open = 0, Saved = 1, Discarded = 2;
const QString Own = QStringLiteral("own.xml");
const QString Other = QStringLiteral("other.xml");

// All that was told and asked: "E" for an error, "Q" for a question, "S" for whether to save.
QString told(const TestDoc &doc)
{
    QString told;
    for (const FakeMessages::Message &message : doc.messages.messages())
        told += QLatin1Char("EIQSC"[static_cast<int>(message.kind)]);
    return told;
}

void fill(VelDoc &doc, int count)
{
    for (int i = 0; i < count; ++i)
        addEvent(doc, QStringLiteral("New"), march(2, 9), march(2, 10));
    doc.setModified(true);
}

// Saves while no file may grow beyond some bytes; when one would, the disk is full or the process is killed.
bool saveWithRoomFor(int bytes, VelDoc &doc, bool isKilled)
{
    const auto handler = std::signal(SIGXFSZ, isKilled ? SIG_DFL : SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{static_cast<rlim_t>(bytes), before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const bool isSaved = doc.saveDocument(doc.URL(), true);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    return isSaved;
}

// Of the owner rw, of the user 1234 r, of the group nothing, with the mask r: as a mode that is 0640.
const QByteArray AccessList = QByteArray::fromHex("0200000001000600ffffffff02000400d204000004000000ffffffff"
                                                  "10000400ffffffff20000000ffffffff");
constexpr char AccessListName[] = "system.posix_acl_access";

QStringList filesOf(const TestDoc &doc)
{
    return QDir(doc.path({})).entryList(QDir::Files | QDir::Hidden);
}

// As of an hour ago.
void makeOld(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadWrite);
    file.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime);
}
} // namespace

class VelFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteFileAsItWas()
    {
        const QString named = QStringLiteral("ä #1 50%?.x");
        for (const QString &file :
             {QStringLiteral(TEST_DATA_DIR "/canonical.xml"), QStringLiteral(EXAMPLE_FILE)}) {
            TestDoc doc;
            QString shown; // when the accounts are told of
            const auto show = [&] { shown = doc.getEntryCount() > 2 ? doc.URL().toLocalFile() : QString(); };
            connect(&doc, &VelDoc::accountsChanged, this, show);
            QVERIFY(doc.openDocument(QUrl::fromLocalFile(file)) && !doc.isModified());
            QCOMPARE(shown, file);
            doc.setModified(true);
            QVERIFY(doc.writeCopy(doc.path(Other)) && !doc.writeCopy(doc.path({})));
            QVERIFY(doc.isModified() && doc.URL().toLocalFile() == file);
            QCOMPARE(doc.bytes(Other), fileBytes(file));
            QVERIFY(doc.saveDocument(doc.url(named), false));
            QVERIFY(doc.openDocument(doc.url(named + QStringLiteral(".xml"))));
            QVERIFY(doc.saveDocument(doc.URL(), true));
            QCOMPARE(fileBytes(doc.URL().toLocalFile()), fileBytes(file));
            QCOMPARE(told(doc), QString());
        }
    }

    void shouldKeepOpenDocumentWhenFileIsUnusable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("error");
        const QString error = QStringLiteral("Cannot read from the file.");
        QTest::newRow("missing") << "missing.xml" << QByteArray() << "Cannot open the file.";
        QTest::newRow("a folder") << "." << QByteArray() << "Cannot open the file.";
        QTest::newRow("empty") << Other << QByteArray() << error;
        QTest::newRow("cut at the end") << Other << canonicalFile().chopped(12) << error;
        QTest::newRow("more behind the end") << Other << canonicalFile().repeated(2) << error;
    }

    void shouldKeepOpenDocumentWhenFileIsUnusable()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, error);
        TestDoc doc;
        QVERIFY(doc.put(Other, bytes) && doc.put(Own, canonicalFile()));
        QVERIFY(doc.openDocument(doc.url(Own)));
        fill(doc, 1);
        QVERIFY(!doc.openDocument(doc.url(name)) && !doc.recoverDocument(doc.path(name), doc.url(Other)));
        QCOMPARE(doc.messages.errors(), (QStringList{error, error}));
        QVERIFY(doc.getEntryCount() == 4 && doc.getAccounts().size() == 2 && doc.getUserId() == 5);
        QVERIFY(doc.isModified() && !doc.isModsSynced() && doc.URL() == doc.url(Own));
    }

    void shouldKeepOnlyWhatTheFileDoesNotMention()
    {
        TestDoc doc;
        QVERIFY(doc.put(Own, canonicalFile().replace("</meta>", "</meta><right id='12' right='3'/>")));
        QVERIFY(doc.put(Other, fileWithIds({1}).insert(10, "<meta><origright>2</origright></meta>")));
        bool isLocked = true;
        connect(&doc, &VelDoc::editLockWanted, this, [&](bool locked) { isLocked = locked; });
        QVERIFY(doc.openDocument(doc.url(Own)) && doc.isWritable() && !isLocked);
        VelXmlContent news; // of the server, which says nothing of the user
        news.synctime = QStringLiteral("44");
        news.entries.push_back(std::make_unique<VelEntry>(3, VelEntry::Event, march(2), march(2)));
        QCOMPARE(doc.readXml(news), 1); // an entry, which is left to the caller
        QVERIFY(doc.getEntry(3)->globalid == 70 && doc.getUserId() == 5
                && doc.getSynctime() == *news.synctime);
        QVERIFY(doc.recoverDocument(doc.path(Other), doc.url(Own)));
        QVERIFY(doc.isModified() && doc.URL() == doc.url(Own) && !doc.isWritable() && isLocked);
        QVERIFY(doc.getAccounts().size() == 2 && doc.getRights() == (std::map<quint32, int>{{12, 3}}));
        QVERIFY(doc.getUserId() == 0 && doc.getSynctime() == QStringLiteral("0"));
        QCOMPARE(doc.getEntries(march(1).date(), 0, true, march(31).date()).size(), std::size_t(1));
        QVERIFY(doc.saveDocument(doc.URL(), true)
                && told(doc).isEmpty()); // in place of what it was recovered for
    }

    void shouldKeepEntriesWithBadLocalIds_data()
    {
        QTest::addColumn<Ids>("ids");
        QTest::addColumn<Ids>("repaired"); // of the entries in file order, and of the next new one
        constexpr quint32 Top = 4294967295U;
        QTest::newRow("all good") << Ids{2, 57, 9} << Ids{2, 57, 9, 58};
        QTest::newRow("one missing") << Ids{1, 0, 5} << Ids{1, 6, 5, 7};
        QTest::newRow("one repeated") << Ids{5, 5, 9} << Ids{5, 10, 9, 11};
        QTest::newRow("past the highest") << Ids{1, Top, Top - 1, 0, 0} << Ids{1, Top, Top - 1, 2, 3, 4};
    }

    void shouldKeepEntriesWithBadLocalIds()
    {
        QFETCH(Ids, ids);
        QFETCH(Ids, repaired);
        TestDoc doc;
        QVERIFY(doc.put(Own, fileWithIds(ids)) && doc.openDocument(doc.url(Own)));
        QCOMPARE(doc.getEntryCount(), std::size_t(ids.size()));
        for (int i = 0; i < ids.size(); ++i) {
            const VelEntry *entry = doc.getEntry(repaired.at(i));
            QCOMPARE(entry ? entry->getTitle() : QString(), QString::number(i));
        }
        QCOMPARE(doc.newEntry(VelEntry::Event, march(2), march(2))->localid, repaired.last());
    }

    void shouldGoOnOrNotWhenModified_data()
    {
        QTest::addColumn<int>("situation");
        QTest::addColumn<QString>("answers"); // y or n; none is to cancel
        QTest::addColumn<int>("outcome");
        QTest::addColumn<QString>("told");
        QTest::newRow("yes") << 0 << "y" << Saved << "S";
        QTest::newRow("no") << 0 << "n" << Discarded << "S";
        QTest::newRow("cancel") << 0 << "" << Open << "S";
        QTest::newRow("fails") << Gone << "y" << Open << "SE";
        QTest::newRow("save as") << Untitled << "y" << Saved << "S";
        QTest::newRow("save as fails") << (Untitled | Gone) << "y" << Open << "SE";
        QTest::newRow("save as cancelled") << (Untitled | Cancelled) << "y" << Open << "S";
        QTest::newRow("auto") << Auto << "" << Saved << "";
        QTest::newRow("auto, untitled") << (Auto | Untitled) << "" << Open << "S";
        QTest::newRow("auto, replace") << (Auto | Foreign) << "y" << Saved << "Q";
        // What cannot be saved by itself must not keep anybody from closing.
        QTest::newRow("auto fails") << (Auto | Gone) << "" << Open << "ES";
        QTest::newRow("auto fails, no") << (Auto | Gone) << "n" << Discarded << "ES";
        QTest::newRow("auto, keep") << (Auto | Foreign) << "n" << Open << "QS";
        QTest::newRow("auto, keep, no") << (Auto | Foreign) << "nn" << Discarded << "QS";
    }

    void shouldGoOnOrNotWhenModified()
    {
        QFETCH(int, situation);
        QFETCH(QString, answers);
        QFETCH(int, outcome);
        TestDoc doc;
        const auto is = [situation](int flag) { return (situation & flag) != 0; };
        QVERIFY(is(Untitled) || doc.saveDocument(doc.url(Own), true));
        QVERIFY(doc.saveModified()); // it is not
        fill(doc, 1);
        QVERIFY(!is(Gone) || doc.folder.remove());
        QVERIFY(!is(Foreign) || doc.put(Own, canonicalFile()));
        const QByteArray before = doc.bytes(Own);
        connect(&doc, &VelDoc::saveAsWanted, this,
                [&] { return is(Cancelled) || doc.saveDocument(doc.url(Own), false); });
        doc.settings.autoSave = is(Auto);
        for (const QChar answer : answers)
            doc.messages.orderAnswer(answer == QLatin1Char('y') ? Answer::Yes : Answer::No);
        QCOMPARE(doc.saveModified(), outcome != Open);
        QTEST(told(doc), "told");
        QCOMPARE(doc.isModified(), outcome != Saved);
        QCOMPARE(doc.isModsSynced(), outcome == Discarded); // dealt with, towards the server too
        QCOMPARE(doc.bytes(Own) != before, outcome == Saved);
    }

    void shouldAskBeforeReplacing_data()
    {
        QTest::addColumn<int>("situation");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<bool>("isSaved");
        QTest::addColumn<QString>("question");
        const QString exists = QStringLiteral("File exists");
        const QString changed = QStringLiteral("File was changed");
        QTest::newRow("own") << Auto << Own << true << "";
        QTest::newRow("vanished") << (Gone | Auto) << Own << true << "";
        QTest::newRow("changed, replace") << (Foreign | Auto) << Own << true << changed;
        QTest::newRow("changed, cancel") << (Foreign | Auto) << Own << false << changed;
        QTest::newRow("other, agreed") << Auto << Other << true << "";
        QTest::newRow("other, yes") << 0 << Other << true << exists;
        QTest::newRow("other, no") << 0 << Other << false << exists;
        // Consent is for the file that was named.
        QTest::newRow("the suffix leads to another") << Auto << "other" << false << exists;
    }

    void shouldAskBeforeReplacing()
    {
        QFETCH(int, situation);
        QFETCH(QString, chosen);
        QFETCH(bool, isSaved);
        QFETCH(QString, question);
        TestDoc doc;
        QVERIFY(doc.put(Own, canonicalFile()) && doc.put(Other, fileWithIds({1})));
        QVERIFY(doc.openDocument(doc.url(Own)));
        doc.setModified(true);
        QVERIFY((situation & Foreign) == 0 || doc.put(Own, fileWithIds({7})));
        QVERIFY((situation & Gone) == 0 || QFile::remove(doc.path(Own)));
        const QByteArray before = doc.bytes(Own) + doc.bytes(Other);
        const bool overwrite = (situation & Auto) != 0;
        doc.messages.orderAnswer(isSaved ? Answer::Yes : Answer::No);
        QCOMPARE(doc.saveDocument(doc.url(chosen), overwrite), isSaved);
        QCOMPARE(doc.messages.last().caption, question);
        QCOMPARE(doc.URL(), doc.url(isSaved ? chosen : Own));
        QVERIFY(isSaved ? doc.bytes(chosen) == canonicalFile() : doc.bytes(Own) + doc.bytes(Other) == before);
        QVERIFY(doc.isModified() == !isSaved && doc.hasDeclinedOverwrite() == (!isSaved && overwrite));
        // What was just written, and what is new, needs no question.
        QVERIFY(doc.saveDocument(isSaved ? doc.URL() : doc.url(QStringLiteral("new.xml")), isSaved));
        QVERIFY(doc.messages.count() == (question.isEmpty() ? 0 : 1) && !doc.hasDeclinedOverwrite());
    }

    void shouldNoticeForeignChangeMadeWhileOpening()
    {
        // The document asks for today between reading the file and showing it.
        TestDoc doc([&doc] { return doc.put(Own, fileWithIds({1})) ? today() : QDate(); });
        QVERIFY(doc.put(Own, canonicalFile()) && doc.openDocument(doc.url(Own)));
        QVERIFY(!doc.saveDocument(doc.URL(), true));
        QCOMPARE(doc.messages.last().yes, QStringLiteral("Replace the file"));
    }

    void shouldKeepOldFileWhenTheDiskIsFullOrTheProcessKilled_data()
    {
        QTest::addColumn<int>("room"); // bytes
        QTest::newRow("at once") << 0;
        QTest::newRow("in the last bytes of a small file") << 600;
        QTest::newRow("in the middle of a large file") << 500000;
    }

    void shouldKeepOldFileWhenTheDiskIsFullOrTheProcessKilled()
    {
        QFETCH(int, room);
        TestDoc doc;
        QVERIFY(doc.put(Own, canonicalFile()) && doc.openDocument(doc.url(Own)));
        const int entries = room / 100 + 10;
        fill(doc, entries);
        QVERIFY(!saveWithRoomFor(room, doc, false));
        QCOMPARE(doc.messages.errors(), QStringList{QStringLiteral("Cannot write to the file.")});
        QVERIFY(doc.isModified() && !doc.isModsSynced());
        QCOMPARE(filesOf(doc), QStringList{Own});
        QCOMPARE(doc.bytes(Own), canonicalFile());

        const pid_t child = ::fork();
        if (child == 0) {
            const rlimit noCore{};
            ::setrlimit(RLIMIT_CORE, &noCore);
            ::_exit(saveWithRoomFor(room, doc, true) ? 1 : 2);
        }
        int status = 0;
        QVERIFY(::waitpid(child, &status, 0) == child && WIFSIGNALED(status));
        QCOMPARE(doc.bytes(Own), canonicalFile());
        QCOMPARE(filesOf(doc).size(), 2);
        // Once there is room again. The file is the one that was opened: nothing is asked. What was left is swept.
        makeOld(doc.path(filesOf(doc).first()));
        QVERIFY(doc.saveDocument(doc.URL(), true) && doc.messages.count() == 1);
        QCOMPARE(filesOf(doc), QStringList{Own});
        QCOMPARE(doc.bytes(Own).count("<entry>"), 3 + entries);
        QVERIFY(!VelCalendarFile::write(doc.path(Own), [&doc](QIODevice &) { return doc.folder.remove(); }));
    }

    void shouldSaveThroughLinkAndKeepPermissions()
    {
        TestDoc doc;
        const QString file = doc.path(Other);
        QVERIFY(doc.put(Other, canonicalFile()) && QFile::link(Other, doc.path(Own)));
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::WriteGroup));
        const QFile::Permissions before = QFile::permissions(file);
        QVERIFY(doc.openDocument(doc.url(Own)));
        fill(doc, 1);
        QVERIFY(doc.saveDocument(doc.URL(), true));
        QVERIFY(QFileInfo(doc.path(Own)).isSymLink() && doc.bytes(Other).contains("New"));
        QCOMPARE(QFile::permissions(file), before);
        // What is watched is the file, not the link.
        QVERIFY(doc.saveQuietly() && doc.put(Other, canonicalFile()));
        QVERIFY(!doc.saveQuietly() && !doc.saveDocument(doc.URL(), true));
        QCOMPARE(told(doc), QStringLiteral("Q"));
    }

    void shouldSweepOnlyItsOwnLeftovers()
    {
        TestDoc doc;
        const QStringList others{
            QStringLiteral(".own.xml.backup.xml"), QStringLiteral(".own.xml.aBCdef.delmast-saving"),
            QStringLiteral(".own.xmlx.abcdef.delmast-saving"), QStringLiteral("own.xml.abcdef")};
        const QString left = QStringLiteral(".own.xml.abc123.delmast-saving");
        for (const QString &name : others + QStringList{left, Own}) {
            QVERIFY(doc.put(name, canonicalFile()));
            makeOld(doc.path(name));
        }
        VelSaveFile running(doc.path(Own));
        QVERIFY(running.open({}) && doc.openDocument(doc.url(Own)));
        QCOMPARE(filesOf(doc).size(), others.size() + 2); // the calendar, and what is being written
        QVERIFY(!filesOf(doc).contains(left) && running.commit());
    }

    void shouldNeverWidenRights_data()
    {
        QTest::addColumn<int>("mask");
        QTest::addColumn<int>("before"); // -1 for a new file
        QTest::addColumn<int>("after");
        QTest::newRow("new") << 0022 << -1 << 0640;
        QTest::newRow("new, with a group") << 0002 << -1 << 0660;
        QTest::newRow("new, without a mask") << 0 << -1 << 0660;
        QTest::newRow("new, private") << 0077 << -1 << 0600;
        QTest::newRow("private") << 0 << 0600 << 0600;
        QTest::newRow("open to all") << 0077 << 0646 << 0646;
    }

    void shouldNeverWidenRights()
    {
        QFETCH(int, mask);
        QFETCH(int, before);
        TestDoc doc;
        const QByteArray path = QFile::encodeName(doc.path(Own));
        QVERIFY(before < 0 || (doc.put(Own, {}) && ::chmod(path.constData(), mode_t(before)) == 0));
        constexpr gid_t group = 1234;
        const bool isGiven = before >= 0 && ::chown(path.constData(), 0, group) == 0; // root may
        const mode_t old = ::umask(mode_t(mask));
        const bool isSaved = doc.saveDocument(doc.url(Own), true);
        ::umask(old);
        QVERIFY(isSaved);
        const auto rights = VelFileRights::of(doc.path(Own));
        QVERIFY(rights && (!isGiven || rights->group == group));
        QTEST(int(rights->mode), "after");
    }

    void shouldKeepAccessList()
    {
        TestDoc doc;
        QVERIFY(doc.put(Own, canonicalFile()));
        VelFileRights rights;
        rights.mode = 0664;
        QCOMPARE(rights.leastOfOthers(), 4U);
        rights.accessList = AccessList; // the mask is not what the group may do
        QCOMPARE(rights.leastOfOthers(), 0U);
        const QByteArray path = QFile::encodeName(doc.path(Own));
        if (::setxattr(path.constData(), AccessListName, AccessList.constData(), size_t(AccessList.size()), 0)
            != 0)
            QSKIP("The file system keeps no access lists.");
        QVERIFY(doc.openDocument(doc.url(Own)) && doc.saveDocument(doc.URL(), true));
        const auto after = VelFileRights::of(doc.path(Own));
        QVERIFY(after && after->accessList == AccessList && after->mode == 0640);
    }

    void shouldNoticeReplacedFile()
    {
        TestDoc doc;
        QVERIFY(doc.put(Own, canonicalFile()) && doc.openDocument(doc.url(Own)));
        // Other rights are no other content.
        QVERIFY(::chmod(QFile::encodeName(doc.path(Own)).constData(), 0600) == 0 && doc.saveQuietly());
        // One of the same size and time takes its place.
        const QByteArray own = QFile::encodeName(doc.path(Own));
        const QByteArray other = QFile::encodeName(doc.path(Other));
        struct stat info {
        };
        QVERIFY(doc.put(Other, doc.bytes(Own)) && ::stat(own.constData(), &info) == 0);
        const timespec times[] = {info.st_atim, info.st_mtim};
        QVERIFY(::utimensat(AT_FDCWD, other.constData(), times, 0) == 0
                && ::rename(other.constData(), own.constData()) == 0);
        QVERIFY(!doc.saveQuietly());
    }
};

QTEST_GUILESS_MAIN(VelFileTest)

#include "velfiletest.moc"

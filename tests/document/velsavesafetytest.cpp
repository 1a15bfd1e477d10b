// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/calendarfiles.h"
#include "document/velcalendarfile.h"
#include "document/veldoc.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <functional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace CalendarFiles;
using namespace TestCalendar;

namespace
{
const QString WriteError = QStringLiteral("Cannot write to the file.");

struct Calendar {
    FakeMessages messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, &TestCalendar::today};
};

void fill(VelDoc &doc, const QString &title, int count)
{
    for (int i = 0; i < count; ++i)
        addEvent(doc, title, march(2, 9), march(2, 10));
}

/** Lets no file of this process grow beyond a size, as a full disk would, until it goes. */
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        m_handler = std::signal(SIGXFSZ, SIG_IGN); // else the process would end where the write fails
        const rlimit limit{bytes, m_before.rlim_max};
        m_isSmall = ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~SmallDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    [[nodiscard]] bool isSmall() const { return m_isSmall; }

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
    bool m_isSmall = false;
};

/**
 * Runs @p work over and over in a process of its own, which it kills when it has called what work is given for the
 * n-th time: wherever it has got to by then. False when there was nothing to kill.
 */
bool runAndKill(int n, const std::function<void(const std::function<void()> &)> &work)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return false;
    const pid_t child = ::fork();
    if (child == 0) {
        const auto tell = [&ends] { [[maybe_unused]] const auto written = ::write(ends[1], "x", 1); };
        for (;;)
            work(tell);
    }
    ::close(ends[1]);
    char byte = 0;
    int told = 0;
    while (child > 0 && told < n && ::read(ends[0], &byte, 1) == 1)
        ++told;
    int status = 0;
    const bool wasKilled = child > 0 && ::kill(child, SIGKILL) == 0 && ::waitpid(child, &status, 0) == child
        && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    ::close(ends[0]);
    return wasKilled && told == n;
}

constexpr int KillRounds = 40;
} // namespace

class VelSaveSafetyTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void shouldKeepOldFileWhenTheDiskIsFull_data();
    void shouldKeepOldFileWhenTheDiskIsFull();
    void shouldLeaveNothingOfNewFileWhenTheDiskIsFull();
    void shouldSaveOnceThereIsRoomAgain();
    void shouldKeepOldFileWhenTheWriterFails();
    void shouldFailWhenTheNewFileCannotTakeItsPlace();
    void shouldLeaveOldOrNewFileWhenKilledWhileSaving();
    void shouldLeaveOldOrNewFileWhenKilledBetweenPieces();
    void shouldSaySoWhenTheFolderMayNotBeWritten();
    void shouldSaySoWhenTheFolderIsGone();
    void shouldSaySoWhenAFolderHasTheName();
    void shouldSaveThroughSymbolicLink();
    void shouldCreateTargetOfDanglingLink();
    void shouldKeepPermissionsOfTheFile_data();
    void shouldKeepPermissionsOfTheFile();

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder->filePath(name); }
    [[nodiscard]] QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }
    [[nodiscard]] QStringList files() const
    {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void VelSaveSafetyTest::initTestCase()
{
    // What could not be written is logged, too.
    QLoggingCategory::setFilterRules(QStringLiteral("delmasttime.file=false"));
}

void VelSaveSafetyTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void VelSaveSafetyTest::shouldKeepOldFileWhenTheDiskIsFull_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("room"); // bytes

    QTest::newRow("at once") << 10 << 0;
    QTest::newRow("in the last bytes of a small file") << 10 << 600;
    QTest::newRow("in the middle of a large file") << 20000 << 1000000;
    QTest::newRow("near the end of a large file") << 20000 << 3000000;
}

void VelSaveSafetyTest::shouldKeepOldFileWhenTheDiskIsFull()
{
    QFETCH(int, entries);
    QFETCH(int, room);

    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    fill(doc, QStringLiteral("New"), entries);
    doc.slotUpdateAllViews(nullptr);
    bool isSaved = true;
    {
        const SmallDisk disk(static_cast<rlim_t>(room));
        QVERIFY(disk.isSmall());
        isSaved = doc.saveModified();
    }
    QVERIFY(!isSaved);
    QCOMPARE(calendar.messages.count(), 1);
    QCOMPARE(calendar.messages.errors(), QStringList{WriteError});
    QVERIFY(doc.isModified());
    QVERIFY(!doc.isModsSynced());
    QCOMPARE(doc.getEntryCount(), std::size_t(3 + entries));
    QCOMPARE(fileBytes(path(QStringLiteral("a.xml"))), canonicalFile());
    QCOMPARE(files(), QStringList{QStringLiteral("a.xml")});
}

void VelSaveSafetyTest::shouldLeaveNothingOfNewFileWhenTheDiskIsFull()
{
    Calendar calendar;
    fill(calendar.doc, QStringLiteral("New"), 100);
    calendar.doc.setModified(true);
    {
        const SmallDisk disk(1000);
        QVERIFY(!calendar.doc.saveDocument(url(QStringLiteral("a.xml")), false));
    }
    QCOMPARE(calendar.messages.errors(), QStringList{WriteError});
    QVERIFY(calendar.doc.isUntitled());
    QVERIFY(calendar.doc.isModified());
    QCOMPARE(files(), QStringList());
}

void VelSaveSafetyTest::shouldSaveOnceThereIsRoomAgain()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    fill(doc, QStringLiteral("New"), 100);
    {
        const SmallDisk disk(1000);
        QVERIFY(!doc.saveDocument(doc.URL(), true));
    }
    QVERIFY(doc.saveDocument(doc.URL(), true)); // the file is the one that was opened: no question
    QCOMPARE(calendar.messages.count(), 1);
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    QCOMPARE(doc.getEntryCount(), std::size_t(103));
}

void VelSaveSafetyTest::shouldKeepOldFileWhenTheWriterFails()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    const auto writeHalf = [](QIODevice &device) {
        device.write("<calendar>");
        return false;
    };
    QVERIFY(!VelCalendarFile::write(path(QStringLiteral("a.xml")), writeHalf));
    QCOMPARE(fileBytes(path(QStringLiteral("a.xml"))), canonicalFile());
    QCOMPARE(files(), QStringList{QStringLiteral("a.xml")});
}

void VelSaveSafetyTest::shouldFailWhenTheNewFileCannotTakeItsPlace()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
    const auto writeAndRemoveFolder = [this](QIODevice &device) {
        device.write("<calendar/>");
        return QDir(path(QStringLiteral("folder"))).removeRecursively();
    };
    QVERIFY(!VelCalendarFile::write(path(QStringLiteral("folder/a.xml")), writeAndRemoveFolder));
}

void VelSaveSafetyTest::shouldLeaveOldOrNewFileWhenKilledWhileSaving()
{
    Calendar one;
    fill(one.doc, QStringLiteral("One"), 3000);
    QVERIFY(one.doc.writeCopy(path(QStringLiteral("one"))));
    Calendar two;
    fill(two.doc, QStringLiteral("Two"), 3500);
    QVERIFY(two.doc.writeCopy(path(QStringLiteral("two"))));
    const QByteArray first = fileBytes(path(QStringLiteral("one")));
    const QByteArray second = fileBytes(path(QStringLiteral("two")));
    const QUrl file = url(QStringLiteral("a.xml"));
    QVERIFY(one.doc.saveDocument(file, true));

    QRandomGenerator random(7);
    for (int round = 0; round < KillRounds; ++round) {
        const auto saveBoth = [&](const std::function<void()> &tell) {
            tell();
            one.messages.orderAnswer(VelMessages::Answer::Yes); // the other one has changed the file
            const bool isSaved = one.doc.saveDocument(file, true);
            tell();
            if (!isSaved || !two.doc.writeCopy(file.toLocalFile()))
                ::_exit(1);
        };
        QVERIFY(runAndKill(random.bounded(5), saveBoth));
        const QByteArray left = fileBytes(file.toLocalFile());
        QVERIFY(left == first || left == second);
    }
    Calendar reader;
    QVERIFY(reader.doc.openDocument(file));
}

void VelSaveSafetyTest::shouldLeaveOldOrNewFileWhenKilledBetweenPieces()
{
    const QString file = path(QStringLiteral("a.xml"));
    const QByteArray first = fileWithIds({1, 2, 3});
    const QByteArray second = fileWithIds({4, 5, 6, 7});
    QVERIFY(writeBytes(file, first));

    QRandomGenerator random(8);
    for (int round = 0; round < KillRounds; ++round) {
        const auto saveInPieces = [&](const QByteArray &bytes, const std::function<void()> &tell) {
            return VelCalendarFile::write(file, [&](QIODevice &device) {
                bool isWritten = true;
                for (int i = 0; i < bytes.size(); i += 100) {
                    const QByteArray piece = bytes.mid(i, 100);
                    isWritten = device.write(piece) == piece.size() && isWritten;
                    tell();
                }
                return isWritten;
            });
        };
        QVERIFY(runAndKill(random.bounded(30), [&](const std::function<void()> &tell) {
            if (!saveInPieces(first, tell) || !saveInPieces(second, tell))
                ::_exit(1);
        }));
        const QByteArray left = fileBytes(file);
        QVERIFY(left == first || left == second);
    }
}

void VelSaveSafetyTest::shouldSaySoWhenTheFolderMayNotBeWritten()
{
    if (::geteuid() == 0)
        QSKIP("The superuser may write everywhere.");
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    QVERIFY(calendar.doc.openDocument(url(QStringLiteral("a.xml"))));
    calendar.doc.setModified(true);
    const QFile::Permissions before = QFile::permissions(m_folder->path());
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner));
    const bool isSaved = calendar.doc.saveDocument(calendar.doc.URL(), true);
    QVERIFY(QFile::setPermissions(m_folder->path(), before));
    QVERIFY(!isSaved);
    QCOMPARE(calendar.messages.errors(), QStringList{WriteError});
    QVERIFY(calendar.doc.isModified());
    QCOMPARE(fileBytes(path(QStringLiteral("a.xml"))), canonicalFile());
}

void VelSaveSafetyTest::shouldSaySoWhenTheFolderIsGone()
{
    Calendar calendar;
    QVERIFY(calendar.doc.saveDocument(url(QStringLiteral("a.xml")), true));
    calendar.doc.setModified(true);
    QVERIFY(m_folder->remove());
    QVERIFY(!calendar.doc.saveDocument(calendar.doc.URL(), true));
    QCOMPARE(calendar.messages.errors(), QStringList{WriteError});
    QVERIFY(calendar.doc.isModified());
}

void VelSaveSafetyTest::shouldSaySoWhenAFolderHasTheName()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("a.xml")));
    Calendar calendar;
    QVERIFY(!calendar.doc.saveDocument(url(QStringLiteral("a.xml")), true));
    QCOMPARE(calendar.messages.errors(), QStringList{WriteError});
    QVERIFY(QFileInfo(path(QStringLiteral("a.xml"))).isDir());
}

void VelSaveSafetyTest::shouldSaveThroughSymbolicLink()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("elsewhere")));
    const QString target = path(QStringLiteral("elsewhere/real.xml"));
    const QString link = path(QStringLiteral("a.xml"));
    QVERIFY(writeBytes(target, canonicalFile()));
    QVERIFY(QFile::link(QStringLiteral("elsewhere/real.xml"), link));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(QUrl::fromLocalFile(link)));
    fill(doc, QStringLiteral("New"), 1);
    QVERIFY(doc.saveDocument(doc.URL(), true));
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(!QFileInfo(target).isSymLink());
    QVERIFY(fileBytes(target).contains("New"));
    // What is watched is the file, not the link.
    QVERIFY(doc.saveDocument(doc.URL(), true));
    QCOMPARE(calendar.messages.count(), 0);
    QVERIFY(writeBytes(target, canonicalFile()));
    QVERIFY(!doc.saveDocument(doc.URL(), true));
    QCOMPARE(calendar.messages.last().caption, QStringLiteral("File was changed"));
}

void VelSaveSafetyTest::shouldCreateTargetOfDanglingLink()
{
    const QString link = path(QStringLiteral("a.xml"));
    QVERIFY(QFile::link(QStringLiteral("real.xml"), link));
    Calendar calendar;
    QVERIFY(calendar.doc.saveDocument(QUrl::fromLocalFile(link), true));
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(fileBytes(path(QStringLiteral("real.xml"))).endsWith("</calendar>\n"));
}

void VelSaveSafetyTest::shouldKeepPermissionsOfTheFile_data()
{
    QTest::addColumn<int>("mode"); // as QFile::Permissions has it

    QTest::newRow("owner only") << int(QFile::ReadOwner | QFile::WriteOwner);
    QTest::newRow("group reads") << int(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    QTest::newRow("all write") << int(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup
                                      | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther);
}

void VelSaveSafetyTest::shouldKeepPermissionsOfTheFile()
{
    QFETCH(int, mode);

    const QString file = path(QStringLiteral("a.xml"));
    QVERIFY(writeBytes(file, canonicalFile()));
    QVERIFY(QFile::setPermissions(file, QFile::Permissions(mode)));
    const QFile::Permissions before = QFile::permissions(file);
    Calendar calendar;
    QVERIFY(calendar.doc.openDocument(QUrl::fromLocalFile(file)));
    fill(calendar.doc, QStringLiteral("New"), 1);
    QVERIFY(calendar.doc.saveDocument(calendar.doc.URL(), true));
    QVERIFY(fileBytes(file).contains("New"));
    QCOMPARE(QFile::permissions(file), before);
}

QTEST_GUILESS_MAIN(VelSaveSafetyTest)

#include "velsavesafetytest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velaboutdata.h"
#include "dialogs/velremotecalendardialog.h"
#include "netwindow.h"

#include <QTemporaryDir>
#include <QTest>

using namespace TestCalendar;
using Answer = VelMessages::Answer;
using Step = ScriptedServer::Step;

namespace
{
const QByteArray Refused = answer("<action><error>3</error></action>");
// The calendar of user 9, which user 3 may change.
const QByteArray Berts = "<action><userid>9</userid><origuserid>3</origuserid><origright>4</origright>"
                         "<synctime>later</synctime></action>";

void addChange(Session &session)
{
    addEvent(session.doc(), QStringLiteral("Mine"), at(testDay(), 8), at(testDay(), 9));
    session.doc().slotUpdateAllViews(nullptr);
}
} // namespace

/** Windows that go, stay, or come up in place of another. */
class VelWindowsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        KAboutData::setApplicationData(velAboutData());
        QVERIFY(m_folder.isValid());
    }
    void init() { forgetPreferences(); }
    void colleaguesCalendarShouldLoseNothingUnasked_data();
    void colleaguesCalendarShouldLoseNothingUnasked();
    void calendarThatDidNotComeShouldTakeNoEntries();
    void closingShouldNotWaitForMereQuestions();
    void quitShouldStopAtAWindowThatIsKept();
    void fileShouldBeShownInOneWindow_data();
    void fileShouldBeShownInOneWindow();
    void remoteCalendarShouldNeedAServer();
    void windowMayGoWhileItAsks_data();
    void windowMayGoWhileItAsks();

private:
    QTemporaryDir m_folder;
};

void VelWindowsTest::colleaguesCalendarShouldLoseNothingUnasked_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("choice");
    QTest::addColumn<QString>("question"); // how it begins
    QTest::addColumn<bool>("closes");
    QTest::addColumn<bool>("saves");
    const QByteArray taken = Berts
        + "<entry><localid>1</localid><globalid>5</globalid><title>Mine</title><start>2026-11-16 8:0</start>"
          "<end>2026-11-16 9:0</end><type>1</type></entry>";
    const QByteArray denied = answer("<action><error>2</error></action>");
    QTest::newRow("taken") << answer(taken) << int(Answer::Cancel) << "" << true << false;
    QTest::newRow("not taken, kept") << answer(Berts) << int(Answer::Cancel) << "The server did not take"
                                     << false << false;
    QTest::newRow("overruled, saved") << answer(QByteArray(taken).replace("Mine", "Theirs"))
                                      << int(Answer::Yes) << "The server did not take" << true << true;
    QTest::newRow("failed, lost") << Refused << int(Answer::No)
                                  << "This calendar could not be synchronized: Server" << true << false;
    QTest::newRow("denied, saved") << denied << int(Answer::Yes) << "The server does not let you" << true
                                   << true;
}

void VelWindowsTest::colleaguesCalendarShouldLoseNothingUnasked()
{
    QFETCH(const QByteArray, reply);
    QFETCH(const int, choice);
    QFETCH(const QString, question);
    const NetWindow net({Step{answer(Berts)}, Step{reply}});
    Session &session = *net.session;
    session.window->setAttribute(Qt::WA_DeleteOnClose, false); // its messages are to be read
    session.window->fetchCalendarOf(9);
    QVERIFY(net.isReady());
    QVERIFY(session.window->mayEdit());
    addChange(session);
    const QString path = m_folder.filePath(QLatin1String(QTest::currentDataTag()) + QLatin1String(".xml"));
    session.choose(path);
    session.messages->orderAnswer(static_cast<Answer>(choice));
    session.trigger("file_close");
    QVERIFY(session.window->isVisible() && !session.window->mayEdit());
    QVERIFY(net.isReady());
    QTRY_VERIFY(!session.window->isVisible() || session.window->mayEdit());
    QTEST(!session.window->isVisible(), "closes");
    QVERIFY(net.server.requests.last().contains("<title>Mine</title>"));
    QVERIFY(question.isEmpty() || session.messages->last().text.startsWith(question));
    QCOMPARE(session.messages->count(), question.isEmpty() ? 0 : 1);
    QVERIFY(question.isEmpty() || session.messages->last().text.contains(QLatin1String("\"Mine\"")));
    QTEST(fileBytes(path).contains("<title>Mine</title>"), "saves");
}

void VelWindowsTest::calendarThatDidNotComeShouldTakeNoEntries()
{
    NetWindow net;
    net.server.script = {{Refused}, {answer(Users)}, {answer(Berts)}};
    net.session->window->fetchCalendarOf(9);
    QVERIFY(net.isReady());
    QCOMPARE(net.session->messages->errors().size(), 1); // though it was the list of users that failed
    QVERIFY(!net.session->window->mayEdit());
    QVERIFY(net.warning().contains(QLatin1String("could not be fetched")));
    QVERIFY(net.synchronize());
    QVERIFY(net.session->window->mayEdit());
    QVERIFY(net.warning().isEmpty());
}

void VelWindowsTest::closingShouldNotWaitForMereQuestions()
{
    NetWindow net;
    net.server.script.clear();
    QTRY_COMPARE(net.server.requests.size(), 1);
    QVERIFY(net.session->window->network()->isBusy());
    QVERIFY(net.session->window->close());
}

void VelWindowsTest::quitShouldStopAtAWindowThatIsKept()
{
    Session filed;
    Session changed;
    const QUrl url = QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("quit.xml")));
    QVERIFY(filed.doc().saveDocument(url, true));
    addChange(changed);
    changed.messages->orderAnswer(Answer::Cancel);
    changed.messages->orderAnswer(Answer::No);
    filed.window->setEditLock(true); // by an open editor
    QVERIFY(!filed.window->close());
    filed.window->setEditLock(false);
    changed.trigger("file_quit");
    QVERIFY(filed.window->isVisible() && changed.window->isVisible());
    changed.trigger("file_quit");
    QVERIFY(!filed.window->isVisible() && !changed.window->isVisible());
    const KConfigGroup options = KSharedConfig::openConfig()->group(QStringLiteral("General Options"));
    QCOMPARE(options.readEntry("DocURL", QString()), url.toString());
}

void VelWindowsTest::fileShouldBeShownInOneWindow_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"chosen", "recent", "session"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void VelWindowsTest::fileShouldBeShownInOneWindow()
{
    QFETCH(const QString, how);
    const QString path = m_folder.filePath(how + QLatin1String(".xml"));
    const QString link = m_folder.filePath(how + QLatin1String("-link"));
    const Session first;
    Session second;
    QVERIFY(first.doc().saveDocument(QUrl::fromLocalFile(path), true));
    QVERIFY(QFile::link(path, link));
    first.window->showMinimized();
    if (how == QLatin1String("chosen")) {
        second.choose(link);
        second.trigger("file_open");
    } else if (how == QLatin1String("recent")) {
        second.window->slotFileOpenRecent(QUrl::fromLocalFile(link));
    } else {
        KConfig config(QString(), KConfig::SimpleConfig);
        KConfigGroup group = config.group(QStringLiteral("1"));
        group.writeEntry("filename", QUrl::fromLocalFile(link).toString());
        second.window->readProperties(group);
        QTRY_VERIFY(!second.window);
    }
    QVERIFY(!first.window->isMinimized());
    QVERIFY(!second.window || second.doc().isUntitled());
}

void VelWindowsTest::remoteCalendarShouldNeedAServer()
{
    Session session;
    session.trigger("file_remote");
    QCOMPARE(session.messages->last().kind, FakeMessages::Kind::Information);
    QVERIFY(!session.window->findChild<VelRemoteCalendarDialog *>());
}

void VelWindowsTest::windowMayGoWhileItAsks_data()
{
    QTest::addColumn<QString>("action");
    for (const char *action :
         {"file_print", "file_open", "file_save_as", "file_import", "file_export", "file_archive"})
        QTest::newRow(action) << QString::fromLatin1(action);
}

void VelWindowsTest::windowMayGoWhileItAsks()
{
    QFETCH(QString, action);
    Session session;
    session.choose(m_folder.filePath(QStringLiteral("asked.xml")));
    session.whilePrinting = session.files->whileChoosing = [&session] { delete session.window; };
    session.window->getAction(action)->trigger();
    QVERIFY(!session.window);
}

QTEST_MAIN(VelWindowsTest)
#include "velwindowstest.moc"

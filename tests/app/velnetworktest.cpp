// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velaboutdata.h"
#include "app/velonlinewidget.h"
#include "netwindow.h"

#include <KAboutData>
#include <KSqueezedTextLabel>

#include <QLabel>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace TestCalendar;

namespace
{
using Step = ScriptedServer::Step;

// The user 3, with full rights.
const QByteArray Head = "<action><userid>3</userid><origuserid>3</origuserid><origright>4</origright>"
                        "<synctime>later</synctime></action>";
QByteArray eventOf(quint32 owner, int status, const QByteArray &title = "Meeting", int globalid = 77)
{
    return "<entry><globalid>" + QByteArray::number(globalid) + "</globalid><title>" + title
        + "</title><start>2026-11-16 10:0</start><end>2026-11-16 11:0</end><type>1</type><user>"
        + QByteArray::number(owner) + "</user><account><id>3</id><name>Anna</name><status>"
        + QByteArray::number(status) + "</status></account></entry>";
}

const QByteArray Cancelled = eventOf(9, 4).replace("<type>1", "<type>-1");

/** What is cancelled by that. */
void addMeeting(VelDoc &doc)
{
    VelEntry meeting = makeEvent(QStringLiteral("Meeting"), at(testDay(), 10), at(testDay(), 11));
    meeting.globalid = 77;
    meeting.user = 9;
    meeting.accounts = {VelAccount(QStringLiteral("Anna"), {}, 3)};
    doc.setUserId(3);
    add(doc, meeting);
}

QStringList textsOf(const FakeMessages &messages)
{
    QStringList texts;
    for (const FakeMessages::Message &message : messages.messages())
        texts.append(message.text);
    return texts;
}
} // namespace

class VelNetworkTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void windowWithoutAServerShouldAskForNothing();
    void newWindowShouldFetchTheUsers();
    void untriedAccountShouldBeTriedFirst();
    void synchronisationShouldLockMergeAndSave();
    void readOnlyCalendarShouldStayLocked();
    void errorShouldUnlockTheCalendar_data();
    void errorShouldUnlockTheCalendar();
    void automaticSynchronisationShouldLockOnlyToMerge();
    void answerShouldWaitForTheEndOfWork();
    void synchronisationByHandShouldStop();
    void newWindowShouldNotFillByItself();
    void quietFailureShouldBeReadOnTheConnection();
    void closingShouldWaitForTheServer_data();
    void closingShouldWaitForTheServer();
    void deniedCalendarShouldStopSynchronisingByItself();
    void windowClosedAtANoticeShouldChangeNothing();
    void invitationsShouldWaitInTheStatusBar();
    void whatWasNotAnsweredShouldBeRepeated_data();
    void whatWasNotAnsweredShouldBeRepeated();
    void whatWasNotTakenShouldBeNamed();
    void passwordShouldChangeWhenTheServerTakesIt_data();
    void passwordShouldChangeWhenTheServerTakesIt();
    void windowsShouldShareTheAccount();
    void calendarOfAnotherShouldOpenInAWindowOfItsOwn();
    void undoAfterASynchronisationShouldBeSent();
    void connectionTestShouldTellTheOutcome_data();
    void connectionTestShouldTellTheOutcome();

private:
    QTemporaryDir m_folder;
};

void VelNetworkTest::initTestCase()
{
    KAboutData::setApplicationData(velAboutData());
    QVERIFY(m_folder.isValid());
}

void VelNetworkTest::init()
{
    forgetPreferences();
}

void VelNetworkTest::windowWithoutAServerShouldAskForNothing()
{
    const Session session;
    session.window->slotAutoSync();
    QVERIFY(!session.window->network()->isBusy());
    QVERIFY(!session.window->isEditLocked());
    session.window->slotSynchronize();
    QCOMPARE(textsOf(*session.messages),
             QStringList{QStringLiteral(
                 "Please set server connection settings in Settings -> Configuring Delmast Time.")});
    QVERIFY(!session.window->isEditLocked());
}

void VelNetworkTest::newWindowShouldFetchTheUsers()
{
    const NetWindow net;
    QSignalSpy ready(net.session->window, &VelApp::accountsReady);
    QVERIFY(net.isReady());
    QCOMPARE(ready.count(), 1);
    QCOMPARE(net.server.requests.size(), 1);
    QVERIFY(net.server.requests.first().contains("<action type=\"userlist\">"));
    QCOMPARE(net.session->window->getAccountName(9), QStringLiteral("Bert"));
    QVERIFY(!net.session->doc().isModified());
    QVERIFY(net.session->doc().getUserId() == 0 && net.session->doc().isWritable());
}

void VelNetworkTest::untriedAccountShouldBeTriedFirst()
{
    KConfigGroup group = KSharedConfig::openConfig()->group(QStringLiteral("Preferences"));
    group.writeEntry("EncryptionUntried", true);
    const NetWindow net({Step{answer(Users)}});
    QVERIFY(!net.session->window->network()->isBusy()); // it waits for the trial
    QCOMPARE(net.status(), QStringLiteral("Finding out whether the server offers encryption..."));
    QTRY_COMPARE(net.server.requests.size(), 2);
    QVERIFY(net.isReady());
    QVERIFY(!net.session->window->settings()->isUntried && !group.readEntry("EncryptionUntried", true));
    QVERIFY(!net.session->window->settings()->encrypt);
}

void VelNetworkTest::synchronisationShouldLockMergeAndSave()
{
    const NetWindow net({Step{answer(Head + eventOf(3, 4, "Own", 76) + eventOf(9, 0))}});
    Session &session = *net.session;
    const QUrl url = QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("synced.xml")));
    addEvent(session.doc(), QStringLiteral("Mine"), at(testDay(), 8), at(testDay(), 9));
    QVERIFY(session.doc().saveDocument(url, true));
    QVERIFY(net.isReady());
    session.trigger("synchronize");
    QCOMPARE(net.status(), QStringLiteral("Synchronizing with server"));
    QVERIFY(session.window->isEditLocked());
    for (const char *action : {"new_entry", "new_todo", "purge_todo", "synchronize"})
        QVERIFY2(!session.isEnabled(action), action);
    QVERIFY(net.isReady());
    QCOMPARE(net.status(), QStringLiteral("Ready."));
    QCOMPARE(net.passing(), QStringLiteral("One entry came from the server."));
    QVERIFY(!session.window->isEditLocked());
    QVERIFY(session.isEnabled("synchronize") && session.isEnabled("new_entry"));
    QVERIFY(net.server.requests.last().contains("<title>Mine</title>"));
    QCOMPARE(session.asked, QStringList{QStringLiteral("Request for new appointment")});
    QVERIFY(net.meeting() && net.meeting()->dirty == 1);
    QVERIFY(!session.doc().isModified());
    const QByteArray saved = fileBytes(url.toLocalFile());
    QVERIFY(saved.contains("<title>Meeting</title>") && saved.contains("<synctime>later</synctime>"));
}

void VelNetworkTest::readOnlyCalendarShouldStayLocked()
{
    const NetWindow net(
        {Step{answer("<action><userid>9</userid><origright>2</origright></action>" + eventOf(9, 4))}});
    QVERIFY(net.synchronize());
    QVERIFY(net.session->window->isEditLocked());
    QVERIFY(!net.session->isEnabled("new_entry"));
    QVERIFY(net.session->isEnabled("synchronize"));
    QVERIFY(net.meeting());
}

void VelNetworkTest::errorShouldUnlockTheCalendar_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QStringList>("errors");
    QTest::addColumn<QString>("notice");
    QTest::newRow("refused") << answer("<action><error>1</error></action>")
                             << QStringList{QStringLiteral("Invalid username or password.")} << QString();
    QTest::newRow("garbage") << QByteArray("<calendar\x1A")
                             << QStringList{QStringLiteral("Error receiving data from server.")} << QString();
    QTest::newRow("without an action")
        << answer(eventOf(3, 4)) << QStringList{QStringLiteral("Error receiving data from server.")}
        << QString();
    QTest::newRow("closed") << QByteArray("<calendar>") << QStringList()
                            << QStringLiteral("The server closed the connection without an answer.");
}

void VelNetworkTest::errorShouldUnlockTheCalendar()
{
    QFETCH(const QByteArray, reply);
    const NetWindow net({Step{reply, ScriptedServer::Close}});
    addEvent(net.session->doc(), QStringLiteral("Mine"), at(testDay(), 8), at(testDay(), 9));
    QVERIFY(net.synchronize());
    QTEST(textsOf(*net.session->messages), "errors");
    QTEST(net.passing(), "notice");
    QVERIFY(!net.session->window->isEditLocked());
    QCOMPARE(net.status(), QStringLiteral("Ready."));
    QCOMPARE(net.session->doc().getEntry(1)->dirty, 1);
    QVERIFY(!net.meeting());
}

void VelNetworkTest::automaticSynchronisationShouldLockOnlyToMerge()
{
    const NetWindow net({Step{answer(Head + Cancelled)}});
    Session &session = *net.session;
    QVERIFY(net.isReady());
    addMeeting(session.doc());
    session.window->setEditLock(true);
    session.window->slotAutoSync();
    QVERIFY(!session.window->network()->isBusy());
    session.window->setEditLock(false);
    bool isLocked = false;
    session.ask = [&](const VelMerge::Question &) {
        isLocked = session.window->isEditLocked() && !session.isEnabled("synchronize");
        return std::nullopt;
    };
    session.window->slotAutoSync();
    QCOMPARE(net.status(), QStringLiteral("Synchronizing with server."));
    QVERIFY(session.window->mayEdit() && session.isEnabled("new_entry"));
    QVERIFY(!session.isEnabled("stop_synchronize"));
    addEvent(session.doc(), QStringLiteral("Meanwhile"), at(testDay(), 8), at(testDay(), 9));
    QVERIFY(net.isReady());
    QVERIFY(isLocked && !net.meeting() && session.window->mayEdit());
    QCOMPARE(session.doc().getEntry(2)->getTitle(), QStringLiteral("Meanwhile"));
}

void VelNetworkTest::answerShouldWaitForTheEndOfWork()
{
    const NetWindow net(
        {Step{answer(Head + eventOf(9, 0)), ScriptedServer::Close}, Step{answer("<action/>")}});
    VelMainWindow &window = *net.session->window;
    QVERIFY(net.isReady());
    window.slotAutoSync();
    window.setEditLock(true);
    QTRY_VERIFY(net.status().startsWith(QLatin1String("The server has answered.")));
    QTRY_COMPARE(window.findChild<VelOnlineWidget *>()->netStatus(), VelOnlineWidget::NoConnection);
    window.netTask(VelNetTask::UserBusy, {}, false); // as the planner of an open editor asks
    QTRY_VERIFY(net.server.requests.last().contains("userbusy"));
    QVERIFY(net.session->asked.isEmpty() && !net.meeting() && window.document()->getUserId() == 0);
    window.setEditLock(false);
    QVERIFY(!net.meeting()); // not under the hands of who releases it
    QVERIFY(net.isReady());
    QVERIFY(net.meeting());
    QCOMPARE(net.status(), QStringLiteral("Ready."));
}

void VelNetworkTest::synchronisationByHandShouldStop()
{
    const NetWindow net({Step{}, Step{answer(Head)}, Step{answer(Head)}});
    Session &session = *net.session;
    addEvent(session.doc(), QStringLiteral("Mine"), at(testDay(), 8), at(testDay(), 9));
    QVERIFY(net.isReady());
    session.trigger("synchronize");
    QTRY_COMPARE(net.server.requests.size(), 2);
    QVERIFY(QTest::qWaitForWindowActive(session.window));
    QTest::keyClick(session.window->mainView()->getCurrentView(), Qt::Key_Escape);
    QVERIFY(net.isReady());
    QCOMPARE(net.passing(), QStringLiteral("Synchronizing was stopped."));
    QVERIFY(session.window->mayEdit() && session.isEnabled("synchronize"));
    QVERIFY(session.doc().getEntry(1)->dirty == 1);
    session.trigger("synchronize");
    session.window->setEditLock(true);
    QTRY_VERIFY(net.status().startsWith(QLatin1String("The server has answered.")));
    session.trigger("stop_synchronize");
    QVERIFY(net.isReady());
    QCOMPARE(session.doc().getEntry(1)->dirty, 1);
    QVERIFY(session.messages->count() == 0 && net.warning().isEmpty());
}

void VelNetworkTest::newWindowShouldNotFillByItself()
{
    const NetWindow net({Step{answer(Head)}, Step{answer(Head)}});
    Session &session = *net.session;
    QVERIFY(net.isReady());
    session.window->network()->slotAutoSync();
    QVERIFY(!session.window->network()->isBusy());
    session.doc().setSynctime(QStringLiteral("before"));
    session.window->network()->slotAutoSync();
    QTRY_COMPARE(net.server.requests.size(), 2);
    // What is wished for now is to be sent, too.
    addEvent(session.doc(), QStringLiteral("Mine"), at(testDay(), 8), at(testDay(), 9));
    session.trigger("synchronize");
    QVERIFY(session.window->isEditLocked() && session.isEnabled("stop_synchronize"));
    QVERIFY(net.isReady());
    QVERIFY(net.server.requests.last().contains("<title>Mine</title>") && session.window->mayEdit());
}

void VelNetworkTest::quietFailureShouldBeReadOnTheConnection()
{
    const Step busy{answer("<action><error>3</error></action>")};
    const NetWindow net({busy, busy, Step{answer(Head)}});
    QVERIFY(net.isReady());
    const auto toolTip = [&net] { return net.session->window->findChild<VelOnlineWidget *>()->toolTip(); };
    net.session->window->slotAutoSync();
    QVERIFY(net.isReady());
    QVERIFY(net.session->messages->count() == 0);
    QVERIFY(toolTip().contains(QLatin1String("temporarily unavailable")) && net.warning().isEmpty());
    net.session->window->slotAutoSync();
    QVERIFY(net.isReady());
    QVERIFY(net.warning().startsWith(QLatin1String("Not synchronised since")));
    QVERIFY(net.warning().contains(QLatin1String("temporarily unavailable")));
    QVERIFY(net.synchronize());
    QCOMPARE(toolTip(), QStringLiteral("Connection established"));
    QVERIFY(net.warning().isEmpty());
}

void VelNetworkTest::closingShouldWaitForTheServer_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("close") << QByteArray("file_close");
    QTest::newRow("quit") << QByteArray("file_quit");
}

void VelNetworkTest::closingShouldWaitForTheServer()
{
    QFETCH(const QByteArray, command);
    const NetWindow net({Step{answer(Head + eventOf(3, 4))}});
    Session &session = *net.session;
    session.doc().setSynctime(QStringLiteral("before"));
    const QUrl url = QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("closing.xml")));
    QVERIFY(session.doc().saveDocument(url, true));
    addEvent(session.doc(), QStringLiteral("Mine"), at(testDay(), 8), at(testDay(), 9));
    session.doc().setModified(true);
    QVERIFY(net.isReady());
    session.trigger(command.constData());
    QCOMPARE(net.status(), QStringLiteral("Waiting for network operations to finish..."));
    QVERIFY(!session.window->close()); // again: asks, and is told to wait
    QCOMPARE(session.messages->count(), 1);
    QVERIFY(session.window->isEditLocked());
    QTRY_VERIFY(!session.window);
    QVERIFY(net.server.requests.last().contains("<title>Mine</title>"));
    QVERIFY(fileBytes(url.toLocalFile()).contains("<title>Meeting</title>"));
}

void VelNetworkTest::deniedCalendarShouldStopSynchronisingByItself()
{
    const NetWindow net({Step{answer("<action><error>2</error></action>")}, Step{answer(Head)}});
    const VelMainWindow &window = *net.session->window;
    QVERIFY(net.synchronize());
    QCOMPARE(textsOf(*net.session->messages), QStringList{QStringLiteral("Access denied.")});
    QVERIFY(window.isVisible() && window.mayEdit());
    net.session->window->slotAutoSync();
    QVERIFY(!window.network()->isBusy());
    QVERIFY(net.warning().startsWith(QLatin1String("Access denied")));
    QVERIFY(net.synchronize());
    QVERIFY(net.warning().isEmpty());
    net.session->window->slotAutoSync();
    QVERIFY(window.network()->isBusy());
}

void VelNetworkTest::windowClosedAtANoticeShouldChangeNothing()
{
    const NetWindow net({Step{answer(Head + eventOf(3, 4, "First", 76) + Cancelled)}});
    Session &session = *net.session;
    addMeeting(session.doc());
    session.doc().setSynctime(QStringLiteral("1"));
    const QUrl url = QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("question.xml")));
    QVERIFY(session.doc().saveDocument(url, true));
    const QByteArray before = fileBytes(url.toLocalFile());
    session.ask = [&session](const VelMerge::Question &) -> std::optional<int> {
        session.window->slotAutoSave();
        delete session.window;
        return std::nullopt;
    };
    QVERIFY(net.isReady());
    session.trigger("synchronize");
    QTRY_VERIFY(!session.window);
    QCOMPARE(fileBytes(url.toLocalFile()), before);
}

void VelNetworkTest::invitationsShouldWaitInTheStatusBar()
{
    const Step invitations{answer(Head + eventOf(9, 0) + eventOf(9, 0, "Other", 78))};
    const NetWindow net({invitations, invitations, invitations});
    Session &session = *net.session;
    const auto *button = session.window->findChild<QToolButton *>(QStringLiteral("openInvitations"));
    QVERIFY(net.isReady() && button->isHidden() && !session.isEnabled("answer_invitations"));
    QVector<int> others;
    session.ask = [&others](const VelMerge::Question &question) -> std::optional<int> {
        others.append(question.others);
        return VelAnswer::AllLater;
    };
    QVERIFY(net.synchronizeByItself()); // the first asks all the same
    QCOMPARE(others, QVector<int>{1});
    QCOMPARE(button->text(), QStringLiteral("2 invitations wait"));
    QVERIFY(!button->isHidden() && button->focusPolicy() == Qt::StrongFocus);
    QVERIFY(net.synchronizeByItself());
    QCOMPARE(others.size(), 1);
    QVERIFY(!session.doc().isModified() && session.doc().getEntryCount() == 0);
    session.ask = [](const VelMerge::Question &question) -> std::optional<int> {
        return question.others > 0 ? std::nullopt : std::optional<int>(VelAccount::Declined);
    };
    session.trigger("answer_invitations");
    QVERIFY(net.isReady());
    QCOMPARE(button->text(), QStringLiteral("1 invitation waits"));
    QVERIFY(session.doc().isModified() && session.doc().getEntryCount() == 1);
    session.ask = {};
    QVERIFY(net.synchronize());
    QVERIFY(button->isHidden());
    QVERIFY(net.server.requests.last().contains("<type>-1"));
    QVERIFY(net.meeting() && net.meeting()->dirty == 1);
}

void VelNetworkTest::whatWasNotAnsweredShouldBeRepeated_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("isRepeated");
    QTest::newRow("closed") << QByteArray("<calendar>") << true;
    QTest::newRow("unreadable") << QByteArray("<calendar\x1A") << true;
    QTest::newRow("refused") << answer("<action><error>3</error></action>") << false;
}

void VelNetworkTest::whatWasNotAnsweredShouldBeRepeated()
{
    QFETCH(const QByteArray, reply);
    QFETCH(const bool, isRepeated);
    const NetWindow net({Step{reply, ScriptedServer::Close},
                         Step{answer(Head + eventOf(3, 4).replace("<entry>", "<entry><localid>1</localid>"))},
                         Step{answer(Head)}});
    VelDoc &doc = net.session->doc();
    addEvent(doc, QStringLiteral("Old"), at(testDay(), 8), at(testDay(), 9));
    QVERIFY(net.synchronize());
    doc.changeEntry(1, [](VelEntry &entry) { entry.setTitle(QStringLiteral("New")); });
    QVERIFY(net.synchronizeByItself());
    const QList<QByteArray> &requests = net.server.requests;
    QCOMPARE(requests.at(2) == requests.at(1), isRepeated);
    QVERIFY(requests.last().contains("<title>New"));
    QCOMPARE(requests.size(), isRepeated ? 4 : 3); // the rest follows at once
}

void VelNetworkTest::whatWasNotTakenShouldBeNamed()
{
    const NetWindow net({Step{answer(Head)}, Step{answer(Head)}, Step{answer(Head)}});
    addEvent(net.session->doc(), QStringLiteral("Mine"), at(testDay(), 8), at(testDay(), 9));
    const QString text = QStringLiteral("One change was not taken: Mine");
    QVERIFY(net.isReady() && net.synchronizeByItself());
    const QStatusBar *bar = net.session->window->statusBar();
    QCOMPARE(bar->currentMessage(), text);
    net.session->window->slotStatusMsg({});
    QVERIFY(net.synchronizeByItself());
    QCOMPARE(bar->currentMessage(), QString());
    QVERIFY(net.synchronize());
    QCOMPARE(textsOf(*net.session->messages), QStringList{text});
}

void VelNetworkTest::passwordShouldChangeWhenTheServerTakesIt_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("password");
    QTest::newRow("taken") << answer("<action/>") << "new";
    QTest::newRow("refused") << answer("<action><error>1</error></action>") << "old";
}

void VelNetworkTest::passwordShouldChangeWhenTheServerTakesIt()
{
    QFETCH(const QByteArray, reply);
    const NetWindow net({Step{reply}});
    QVERIFY(net.isReady());
    net.session->newPassword = WSecurity::md5(QStringLiteral("new"));
    net.session->trigger("changepass");
    QCOMPARE(net.session->oldPassword, WSecurity::md5(QStringLiteral("old")));
    QVERIFY(net.isReady());
    const QByteArray end =
        "</action>\n<newpass>" + net.session->newPassword->toLatin1() + "</newpass></calendar>\n\x1A";
    QVERIFY(net.server.requests.last().endsWith(end));
    QFETCH(const QString, password);
    QCOMPARE(net.session->window->settings()->pass, WSecurity::md5(password));
}

void VelNetworkTest::windowsShouldShareTheAccount()
{
    NetWindow net;
    net.server.script.push_back({answer(Users)});
    net.server.script.push_back({answer("<action/>")});
    QVERIFY(net.isReady());
    const Session other;
    QTRY_VERIFY(!other.window->network()->isBusy());
    net.session->newPassword = WSecurity::md5(QStringLiteral("new"));
    net.session->trigger("changepass");
    QVERIFY(net.isReady());
    QCOMPARE(other.window->settings()->pass, *net.session->newPassword);
    QVERIFY(other.window->close());
    const KConfigGroup group = KSharedConfig::openConfig()->group(QStringLiteral("Preferences"));
    QCOMPARE(group.readEntry("Pass", QString()), *net.session->newPassword);
}

void VelNetworkTest::calendarOfAnotherShouldOpenInAWindowOfItsOwn()
{
    NetWindow net;
    QVERIFY(net.isReady());
    net.server.script = {
        {answer(Users)},
        {answer("<action><userid>9</userid><origright>2</origright></action>" + eventOf(9, 4))}};
    const QPointer<VelMainWindow> other = net.session->window->openRemote(9);
    QTRY_VERIFY(!other->network()->isBusy());
    QVERIFY(net.server.requests.last().contains("<userid>9</userid>"));
    QVERIFY(other->windowTitle().contains(QLatin1String("Calendar of Bert")));
    QVERIFY(other->document()->getLocalId(77) != 0);
    QVERIFY(!other->mayEdit());
    QVERIFY(!net.meeting());
    QVERIFY(other->close()); // and asks nothing: all of it is on the server
    delete other;
}

void VelNetworkTest::undoAfterASynchronisationShouldBeSent()
{
    const NetWindow net({Step{answer(Head + eventOf(3, 4))}, Step{answer(Head + eventOf(3, 4, "Renamed"))},
                         Step{answer(Head + eventOf(3, 4))}});
    QVERIFY(net.synchronize());
    const quint32 localid = net.meeting()->localid;
    {
        const VelStepScope step(&net.session->doc(), QStringLiteral("Move"));
        net.session->doc().changeEntry(localid,
                                       [](VelEntry &entry) { entry.setTitle(QStringLiteral("Renamed")); });
    }
    QVERIFY(net.synchronize());
    QVERIFY(net.server.requests.last().contains("<title>Renamed</title>"));
    QCOMPARE(net.meeting()->dirty, 0);
    net.session->trigger("edit_undo");
    QVERIFY(net.synchronize());
    QVERIFY(net.server.requests.last().contains("<title>Meeting</title>"));
    QCOMPARE(net.meeting()->dirty, 0);
}

void VelNetworkTest::connectionTestShouldTellTheOutcome_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("problem");
    QTest::newRow("good") << answer(Users) << QString();
    QTest::newRow("wrong password") << answer("<action><error>1</error></action>")
                                    << "Invalid username or password.";
    QTest::newRow("garbage") << QByteArray("?\x1A") << "Error receiving data from server.";
    QTest::newRow("encrypted there") << QByteArray("\x15\x03\x03")
                                     << "The server expects an encrypted connection. Turn on \"Encrypt the "
                                        "connection\" on the page \"Server Account\" of the preferences.";
}

void VelNetworkTest::connectionTestShouldTellTheOutcome()
{
    QFETCH(const QByteArray, reply);
    Session session;
    ScriptedServer server;
    server.script = {{reply}};
    VelSettings settings;
    settings.server = QStringLiteral("127.0.0.1");
    settings.port = server.serverPort();
    settings.user = QStringLiteral("anna");
    std::optional<VelConnectionResult> result;
    session.window->testConnection(settings, [&result](const VelConnectionResult &given) { result = given; });
    QVERIFY(!result);
    QTRY_VERIFY(result);
    QTEST(result->problem, "problem");
    QVERIFY(!result->encrypt);
    QCOMPARE(result->port, int(server.serverPort()));
    QVERIFY(session.window->settings()->server.isEmpty());
    QVERIFY(session.messages->count() == 0);
}

QTEST_MAIN(VelNetworkTest)
#include "velnetworktest.moc"

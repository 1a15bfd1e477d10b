// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velsyncguard.h"

#include "app/velaboutdata.h"
#include "netwindow.h"

#include <KAboutData>

#include <QDir>
#include <QTemporaryDir>

using namespace TestCalendar;

namespace
{
using Step = ScriptedServer::Step;

// The user 3, with full rights.
const QByteArray Head = "<action><userid>3</userid><origuserid>3</origuserid><origright>4</origright>"
                        "<synctime>later</synctime></action>";

QByteArray eventOf(quint32 owner, quint32 globalid, const QByteArray &title)
{
    return "<entry><globalid>" + QByteArray::number(globalid) + "</globalid><title>" + title
        + "</title><start>2026-11-16 10:0</start><end>2026-11-16 11:0</end><type>1</type><user>"
        + QByteArray::number(owner)
        + "</user><account><id>3</id><name>Anna</name><status>4</status></account></entry>";
}
} // namespace

class VelSyncGuardTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void archiveShouldStayAsItIs();
    void calendarOfAnotherAccountShouldBeAskedAbout_data();
    void calendarOfAnotherAccountShouldBeAskedAbout();

private:
    QTemporaryDir m_folder;
};

void VelSyncGuardTest::initTestCase()
{
    KAboutData::setApplicationData(velAboutData());
}

void VelSyncGuardTest::init()
{
    forgetPreferences();
}

void VelSyncGuardTest::archiveShouldStayAsItIs()
{
    const NetWindow net;
    Session &session = *net.session;
    const QString path = m_folder.filePath(QStringLiteral("archive.xml"));
    const QByteArray entry = eventOf(3, 77, "Old");
    QVERIFY(writeBytes(path, "<calendar><meta><userid>3</userid></meta>" + entry + "</calendar>"));
    session.open(path);
    session.messages->orderChoice(0); // that it is one
    QTRY_COMPARE(session.messages->last().kind, FakeMessages::Kind::Choice);
    QVERIFY(fileBytes(path).contains("<archive>1</archive>") && !session.doc().isModified());
    session.window->slotAutoSync();
    QCOMPARE(session.messages->count(), 1);
    QVERIFY(net.synchronize());
    QCOMPARE(session.messages->last().kind, FakeMessages::Kind::Information);
    QCOMPARE(net.server.requests.size(), 1); // for the users
}

void VelSyncGuardTest::calendarOfAnotherAccountShouldBeAskedAbout_data()
{
    QTest::addColumn<int>("choice");
    QTest::addColumn<QByteArray>("answered");
    QTest::addColumn<QStringList>("sent"); // parts of the request; none when nothing is sent
    QTest::addColumn<QString>("left"); // titles
    QTest::addColumn<int>("copies");
    const QStringList fresh{QStringLiteral("<userid>0<"), QStringLiteral("<synctime></")};
    QTest::newRow("same") << 0 << answer(Head) << QStringList{QStringLiteral("<synctime>12<")} << "Own Theirs"
                          << 0;
    QTest::newRow("same, and the server has less") << 0 << answer(Head + "<action><totalsync/></action>")
                                                   << QStringList{QStringLiteral("12")} << "" << 1;
    QTest::newRow("keep own") << 1 << answer(Head)
                              << fresh
            + QStringList{QStringLiteral("<globalid>0</globalid>\n <dirty>1</dirty>\n <title>Own<")}
                              << "Own" << 1;
    QTest::newRow("replace") << 2 << answer(Head + eventOf(3, 77, "Meeting")) << fresh << "Meeting" << 1;
    QTest::newRow("replace fails") << 2 << answer("<action><error>3</error></action>") << fresh
                                   << "Own Theirs" << 1;
    QTest::newRow("leave alone") << 3 << answer(Head) << QStringList() << "Own Theirs" << 0;
}

void VelSyncGuardTest::calendarOfAnotherAccountShouldBeAskedAbout()
{
    QFETCH(int, choice);
    QFETCH(const QByteArray, answered);
    QFETCH(const QStringList, sent);
    const NetWindow net({Step{answered}});
    Session &session = *net.session;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("own.xml"));
    QVERIFY(
        writeBytes(path,
                   "<calendar><meta><userid>3</userid><synctime>12</synctime><server>old</server><user>anna"
                   "</user></meta>"
                       + eventOf(3, 77, "Own") + eventOf(9, 78, "Theirs") + "</calendar>"));
    session.open(path);
    QVERIFY(net.isReady());
    session.messages->orderChoice(choice);
    session.window->slotAutoSync();
    QVERIFY(net.isReady());
    QCOMPARE(session.messages->messages().front().caption, QStringLiteral("Calendar of Another Account"));
    QCOMPARE(net.server.requests.size(), sent.isEmpty() ? 1 : 2);
    for (const QString &part : sent)
        QVERIFY2(net.server.requests.last().contains(part.toLatin1()),
                 net.server.requests.last().constData());
    QStringList titles;
    for (const VelEntryRef &entry : session.doc().getEntries({}, 0, false, {}))
        titles.append(entry.getOriginal()->getTitle());
    QTEST(titles.join(QLatin1Char(' ')), "left");
    const QStringList copies = QDir(folder.path()).entryList({QStringLiteral("own.before-sync-*.xml")});
    QTEST(int(copies.size()), "copies");
    // What was synchronised is the account's now; what was not is asked about again only by hand.
    const bool isGood = session.doc().getServerAccount().server == QLatin1String("127.0.0.1");
    QCOMPARE(isGood, fileBytes(path).contains("<server>127.0.0.1</server>"));
    const int asked = session.messages->count();
    session.window->slotAutoSync();
    QCOMPARE(session.messages->count(), asked);
    session.window->slotSynchronize();
    QCOMPARE(session.messages->count() > asked, !isGood);
}

QTEST_MAIN(VelSyncGuardTest)
#include "velsyncguardtest.moc"

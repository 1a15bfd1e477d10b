// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velalarm.h"
#include "app/veldesktopalerts.h"
#include "document/testdoc.h"
#include "support/fakealerts.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace TestCalendar;
using D = VelReminderDialog;

namespace
{
struct Session {
    quint32 addReminder(const QString &title, quint32 minutes)
    {
        VelEntry entry = makeEvent(title, march(2, 10), march(2, 11));
        entry.reminder = minutes;
        return add(doc, entry)->localid;
    }
    void goTo(const VelDateTime &time)
    {
        clock = time;
        QMetaObject::invokeMethod(&alarm, "slotPrepareForSleep", Q_ARG(bool, false)); // the machine wakes up
    }

    VelDateTime clock = march(2, 8);
    TestDoc doc{&today, [this] { return clock; }};
    VelSettings &settings = doc.settings;
    FakeAlerts alerts;
    VelAlarm alarm{doc, settings, [this] { return clock; }, alerts};
};
} // namespace

class VelAlarmTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void alertsShouldBeTheWantedOnes_data();
    void alertsShouldBeTheWantedOnes();
    void answersShouldReachTheDocument();
    void programShouldStartWithoutAShell();
    void dialogShouldAnswerOnce();
};

void VelAlarmTest::alertsShouldBeTheWantedOnes_data()
{
    QTest::addColumn<bool>("isOn");
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QString>("expected");
    const QUrl url(QStringLiteral("file:///bin/a  %20b;c $d "));
    QTest::newRow("all") << true << url << "start /bin/a|b;c|$d,play /bin/a   b;c $d ,show x 0";
    QTest::newRow("not set") << true << QUrl() << "show x 0";
    QTest::newRow("malformed") << true << QUrl(QStringLiteral("http://a:b:c/d")) << "show x 0";
    QTest::newRow("off") << false << url << "";
}

void VelAlarmTest::alertsShouldBeTheWantedOnes()
{
    QFETCH(bool, isOn);
    QFETCH(QUrl, url);
    QFETCH(QString, expected);
    Session session;
    session.settings.doReminderDialog = session.settings.doReminderExec = session.settings.doReminderSound =
        isOn;
    session.settings.reminderExec = session.settings.reminderSound = url;
    const quint32 id = session.addReminder(QStringLiteral("x"), 15);
    session.goTo(march(2, 9, 45));
    QCOMPARE(session.alerts.given.join(QLatin1Char(',')), expected);
    QCOMPARE(session.doc.getEntry(id)->reminderfired, !isOn);
    QCOMPARE(session.doc.isModified(), !isOn);
}

void VelAlarmTest::answersShouldReachTheDocument()
{
    Session session;
    QSignalSpy shown(&session.alarm, &VelAlarm::showWanted);
    QStringList expected;
    for (const char *title : {"a", "b", "c", "d"})
        session.addReminder(QLatin1String(title), 60);
    session.goTo(march(2, 9));
    session.alerts.answer({D::Show});
    QCOMPARE(shown.value(0).value(0).toUInt(), 1U);
    session.goTo(march(2, 9));
    session.alerts.answer({D::Ok});
    session.goTo(march(2, 9));
    session.alerts.answer({D::Snooze, D::QuarterHour});
    session.goTo(march(2, 9, 14));
    session.goTo(march(2, 9, 15));
    QCOMPARE(session.alerts.waiting, 1);
    session.alerts.answer({D::DismissAll});
    session.goTo(march(2, 12));
    QCOMPARE(session.alerts.given.join(QLatin1Char(',')),
             QStringLiteral("show a 3,show b 2,show c 1,show d 0"));
    QCOMPARE(shown.count(), 1);
    QVERIFY(!session.doc.nextReminder() && !session.alerts.answer);
}

void VelAlarmTest::programShouldStartWithoutAShell()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("$a;b"));
    VelDesktopAlerts alerts(nullptr);
    alerts.startProgram(QStringLiteral("touch"), {file});
    QTRY_VERIFY(QFile::exists(file));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot start .*/no/such")));
    alerts.startProgram(QStringLiteral("/no/such"), {});
}

void VelAlarmTest::dialogShouldAnswerOnce()
{
    QWidget window;
    std::vector<int> answers;
    const auto answered = [&answers](const VelReminderAnswer &answer) { answers.push_back(answer.result); };
    const VelReminderNotice notice{makeEvent({}, march(2, 10), march(2, 11)), march(2, 9), 1, QTime(9, 0)};
    VelDesktopAlerts alerts(&window);
    alerts.showReminder(notice, answered);
    alerts.closeReminder();
    QCOMPARE(answers, std::vector<int>());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    alerts.showReminder(notice, answered);
    window.findChild<QPushButton *>(QStringLiteral("dismissAll"))->click();
    alerts.closeReminder();
    QCOMPARE(answers, std::vector<int>{D::DismissAll});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!window.findChild<VelReminderDialog *>());
}

QTEST_MAIN(VelAlarmTest)

#include "velalarmtest.moc"

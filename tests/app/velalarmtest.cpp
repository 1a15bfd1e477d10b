// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velalarm.h"
#include "app/veldesktopalerts.h"
#include "document/testdoc.h"
#include "support/fakealerts.h"
#include "widgets/wraised.h"

#include <KConfig>

#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

using namespace TestCalendar;
using D = VelReminderDialog;

namespace
{
struct Session {
    explicit Session(const KConfigGroup &store = {})
        : given(store)
    {
    }
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

    KConfigGroup given;
    VelDateTime clock = march(2, 8);
    TestDoc doc{&today, [this] { return clock; }};
    VelSettings &settings = doc.settings;
    FakeAlerts alerts;
    VelAlarm alarm{doc, settings, [this] { return clock; }, alerts, VelGivenReminders(given)};
};
} // namespace

class VelAlarmTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void alertsShouldBeTheWantedOnes_data();
    void alertsShouldBeTheWantedOnes();
    void answersShouldReachTheDocument();
    void readOnlyCalendarShouldRingOnce_data();
    void readOnlyCalendarShouldRingOnce();
    void programShouldStartWithoutAShell();
    void dialogShouldAnswerOnce();
    void dialogShouldTakeNoKeysMeantForOthers();
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
    session.goTo(march(2, 9)); // the others wait while it is looked at
    QCOMPARE(session.alerts.given.size(), 1);
    session.alarm.resume();
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

void VelAlarmTest::readOnlyCalendarShouldRingOnce_data()
{
    QTest::addColumn<bool>("hasFile");
    QTest::addColumn<bool>("isModified"); // by a synchronisation: nobody asked for that to be saved
    QTest::addColumn<bool>("isRemembered"); // in the configuration
    QTest::newRow("in its file") << true << false << false;
    QTest::newRow("with more to save") << true << true << true;
    QTest::newRow("without a file") << false << false << true;
}

void VelAlarmTest::readOnlyCalendarShouldRingOnce()
{
    QFETCH(bool, hasFile);
    QFETCH(bool, isModified);
    KConfig config(QString(), KConfig::SimpleConfig);
    KConfigGroup group = config.group(QStringLiteral("Given"));
    group.writeEntry("old", QStringList{QStringLiteral("2026-01-15T10:00 15 g1"), QStringLiteral("x")});
    VelEntry entry = makeEvent(QStringLiteral("x"), march(2, 10), march(2, 11));
    entry.reminder = 15;
    entry.globalid = 7;
    entry.dirty = 0;
    QStringList rung;
    for (int start = 0; start < 2; ++start) {
        Session session(group);
        VelXmlContent content;
        content.origright = VelDoc::ReadRight;
        session.doc.readXml(content);
        session.goTo(march(2, 9, 50));
        const quint32 id = add(session.doc, entry)->localid;
        VelEntry past = entry; // of which nobody is reminded for ever
        past.setStart(march(2).addDays(-31));
        add(session.doc, past);
        if (hasFile)
            QVERIFY(session.doc.saveDocument(session.doc.url(QStringLiteral("a.xml")), true));
        session.doc.setModified(isModified);
        session.goTo(march(2, 9, 50));
        rung += session.alerts.given;
        if (session.alerts.answer)
            session.alerts.answer({D::Ok});
        QVERIFY(session.doc.getEntry(id)->reminderfired && session.doc.getEntry(id)->dirty == 0);
        QCOMPARE(session.doc.isModified(), isModified);
        QCOMPARE(session.doc.bytes(QStringLiteral("a.xml")).contains("<reminderfired>1"),
                 hasFile && !isModified);
        if (hasFile)
            break; // another start has another folder
    }
    QCOMPARE(rung, QStringList(QStringLiteral("show x 0")));
    QFETCH(bool, isRemembered);
    QCOMPARE(group.keyList().size(), 1); // of the old one nothing is left once something is written
    QCOMPARE(!group.hasKey("old"), isRemembered);
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

void VelAlarmTest::dialogShouldTakeNoKeysMeantForOthers()
{
    QWidget window;
    QDialog editor(&window);
    editor.setModal(true);
    editor.show();
    std::vector<int> answers;
    VelDesktopAlerts alerts(&window);
    alerts.showReminder({makeEvent({}, march(2, 10), march(2, 11)), march(2, 9), 1, QTime(9, 0)},
                        [&answers](const VelReminderAnswer &answer) { answers.push_back(answer.result); });
    QPointer<VelReminderDialog> dialog = window.findChild<VelReminderDialog *>();
    auto *raised = dialog->findChild<WRaised *>();
    QVERIFY(!dialog->isModal() && dialog->testAttribute(Qt::WA_ShowWithoutActivating));
    QCOMPARE(dialog->windowHandle()->transientParent(), editor.windowHandle()); // which does not block it
    QCoreApplication::processEvents();
    const auto press = [&dialog](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(dialog->focusWidget(), key, modifiers);
    };
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape, Qt::Key_Tab})
        press(key);
    press(Qt::Key_A, Qt::AltModifier);
    QVERIFY(raised->isDeaf() && answers.empty());
    raised->listen();
    press(Qt::Key_Space);
    QVERIFY(answers.empty());
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(dialog, &activation);
    press(Qt::Key_Return);
    QVERIFY(raised->isDeaf() && answers.empty());
    raised->listen();
    press(Qt::Key_Return);
    QCOMPARE(answers, std::vector<int>{D::Ok});
}

QTEST_MAIN(VelAlarmTest)

#include "velalarmtest.moc"

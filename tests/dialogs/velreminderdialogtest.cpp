// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velreminderdialog.h"
#include "support/testcalendar.h"

#include <QPushButton>
#include <QTest>

using namespace TestCalendar;

using D = VelReminderDialog;

class VelReminderDialogTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void textShouldTellHowLongItIsToTheStart_data();
    void textShouldTellHowLongItIsToTheStart();
    void buttonsShouldGiveTheirResults();
    void snoozeShouldEndOnTime();
};

void VelReminderDialogTest::textShouldTellHowLongItIsToTheStart_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("event") << 1 << 900 << "Event is starting in 15 minutes";
    QTest::newRow("cut off") << 1 << 119 << "Event is starting in 1 minutes";
    QTest::newRow("hour") << 1 << 3600 << "Event is starting in 1 hours";
    QTest::newRow("under a minute") << 1 << 59 << "Event has already started.";
    QTest::newRow("after") << 1 << -3600 << "Event has already started.";
    QTest::newRow("task, due later") << 2 << 5400 << "Task is due in 90 minutes";
    QTest::newRow("task begun") << 2 << 0 << "Task is overdue.";
    QTest::newRow("no type") << 0 << 172800 << "Task is due in 2 days";
}

void VelReminderDialogTest::textShouldTellHowLongItIsToTheStart()
{
    QFETCH(int, type);
    QFETCH(int, seconds);
    QFETCH(QString, expected);
    VelEntry entry(1, type, march(10, 10), march(10, 17));
    entry.setTitle(QStringLiteral("<b>Lunch"));
    const QString text = QLatin1String("<b>Lunch\n") + expected;
    QCOMPARE(D::reminderText(entry, march(10, 10).addSecs(-seconds)), text);
}

void VelReminderDialogTest::buttonsShouldGiveTheirResults()
{
    VelReminderNotice notice{VelEntry(1, 1, march(2, 10), march(2, 17)), march(2, 9), 0, QTime(9, 0)};
    D dialog(nullptr, notice);
    QVERIFY(dialog.findChild<QPushButton *>(QStringLiteral("dismissAll"))->isHidden());
    notice.waiting = 3;
    dialog.setNotice(notice);
    QStringList results;
    const auto buttons = dialog.findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        button->click();
        results += button->text().remove(QLatin1Char('&')) + QString::number(dialog.result())
            + (button->isDefault() ? QLatin1String(" default") : QLatin1String());
    }
    results.sort();
    QCOMPARE(results.join(QLatin1Char(',')),
             QStringLiteral("Dismiss all3,OK0 default,Remind me again in2,Show event1"));
    QCOMPARE(D::waitingText(3), QStringLiteral("3 more reminders are due."));
}

void VelReminderDialogTest::snoozeShouldEndOnTime()
{
    const QTime work(9, 0);
    QVERIFY(D::snoozedUntil(D::FiveMinutes, march(2, 23, 58), work) == march(3, 0, 3));
    QVERIFY(D::snoozedUntil(D::QuarterHour, march(2, 9), work) == march(2, 9, 15));
    QVERIFY(D::snoozedUntil(D::OneHour, march(2, 9), work) == march(2, 10));
    QVERIFY(D::snoozedUntil(D::Tomorrow, march(2, 23), work) == march(3, 9));
}

QTEST_MAIN(VelReminderDialogTest)

#include "velreminderdialogtest.moc"

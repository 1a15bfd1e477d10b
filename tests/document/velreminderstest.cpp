// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/testdoc.h"

#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

using namespace TestCalendar;

using Ids = std::vector<quint32>;

namespace
{
// A document with a clock that the test sets, and what rang.
struct Doc : public TestDoc {
    Doc()
        : TestDoc(&TestCalendar::today, [this] { return clock; })
    {
        connect(this, &VelDoc::alarm, this, [this](quint32 localid) {
            rung.push_back(localid);
            if (isAnsweredAtOnce)
                dismissReminder(localid);
        });
    }
    quint32 addReminder(const VelDateTime &start, quint32 minutes, const VelDateTime &end = {},
                        int type = VelEntry::Event, bool isFired = false)
    {
        VelEntry entry(0, type, start, end.isValid() ? end : start);
        entry.reminder = minutes;
        entry.reminderfired = isFired;
        entry.dirty = 0;
        return add(*this, entry)->localid;
    }
    // What the timer does once it has run out; how much longer it then runs, or -1.
    int passTo(const VelDateTime &time)
    {
        clock = time;
        slotAlarm();
        const auto *timer = findChild<QTimer *>();
        return timer->isActive() ? timer->interval() : -1;
    }
    // What a change brings about by itself.
    Ids settle()
    {
        QCoreApplication::processEvents();
        return rung;
    }
    void move(quint32 localid, const VelDateTime &start)
    {
        changeEntry(localid, [&start](VelEntry &entry) { entry.setStart(start); });
    }

    VelDateTime clock = march(2, 8);
    Ids rung;
    bool isAnsweredAtOnce = true;
};
} // namespace

class VelRemindersTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldRingTheLeadTimeBeforeStartOrDueTime();
    void shouldRingByTheClockOnTheWall_data();
    void shouldRingByTheClockOnTheWall();
    void overdueOnesShouldRingOnceEachInOrder();
    void colleaguesRemindersShouldNotRingHere();
    void othersShouldWaitUntilOneIsAnswered();
    void alertShouldEndWithItsReason();
    void snoozedShouldRingLaterOrAfterARestart();
    void randomEditsShouldFindWhatASearchFinds();
};

void VelRemindersTest::shouldRingTheLeadTimeBeforeStartOrDueTime()
{
    const auto alertTime = [](int type, quint32 minutes, bool isFired = false) {
        Doc doc;
        doc.addReminder(march(10, 10), minutes, march(11, 17), type, isFired);
        return doc.nextReminder().value_or(VelReminders::Alert()).time;
    };
    QVERIFY(alertTime(VelEntry::Event, 15) == march(10, 9, 45));
    QVERIFY(alertTime(VelEntry::Todo, 60) == march(11, 16));
    QVERIFY(alertTime(VelEntry::NoType, 1440) == march(9, 10));
    QVERIFY(alertTime(VelEntry::Event, 4294967295U) == march(10, 10).addSecs(-60LL * 4294967295));
    QVERIFY(!alertTime(VelEntry::Event, 0).isValid());
    QVERIFY(!alertTime(VelEntry::Event, 15, true).isValid());
    QVERIFY(!alertTime(VelEntry::Deleted, 15).isValid());
}

// The reminder is for half past three, a time that daylight saving skips in the zone of the tests.
void VelRemindersTest::shouldRingByTheClockOnTheWall_data()
{
    QTest::addColumn<QTime>("from");
    QTest::addColumn<QTime>("to");
    QTest::addColumn<int>("wait");
    QTest::newRow("a day ahead") << QTime(1, 0) << QTime(2, 59) << 60000;
    QTest::newRow("half a minute") << QTime(3, 29) << QTime(3, 29, 30) << 30000;
    QTest::newRow("half a second") << QTime(3, 29) << QTime(3, 29, 59, 500) << 500;
    QTest::newRow("on time") << QTime(3, 29, 59) << QTime(3, 30) << -1;
    QTest::newRow("skipped hour, sleep") << QTime(2, 59, 59) << QTime(4, 0) << -1;
    QTest::newRow("set back") << QTime(3, 29, 59) << QTime(2, 30) << 60000;
}

void VelRemindersTest::shouldRingByTheClockOnTheWall()
{
    QFETCH(QTime, from);
    QFETCH(QTime, to);
    QFETCH(int, wait);
    Doc doc;
    doc.addReminder(march(29, 4), 30);
    QVERIFY(doc.passTo(march(29).withTime(from)) > 0);
    QCOMPARE(doc.passTo(march(29).withTime(to)), wait);
    QCOMPARE(doc.rung.size(), wait == -1 ? 1U : 0U);
    doc.passTo(march(29, 3)); // the clock is set back: what has rung is over
    QCOMPARE(doc.rung.size(), wait == -1 ? 1U : 0U);
}

void VelRemindersTest::overdueOnesShouldRingOnceEachInOrder()
{
    Doc doc;
    const Ids ids{doc.addReminder(march(2, 9), 15), doc.addReminder(march(2, 10), 75),
                  doc.addReminder(march(1, 9), 15), doc.addReminder(march(3, 9), 15)};
    doc.changeEntry(ids[0], [](VelEntry &entry) { entry.rule = dailyRule(1, 3); });
    const VelEntry *occurrence = doc.getEntry(ids[0])->getOccurrence(1);
    QCOMPARE(doc.rung, Ids()); // not while changes are made
    QCOMPARE(doc.settle(), Ids{ids[2]});
    doc.clock = march(2, 9);
    doc.updateAlarm();
    QCOMPARE(doc.settle(), (Ids{ids[2], ids[0], ids[1]}));
    QVERIFY(doc.isModified() && doc.getEntry(ids[0])->reminderfired && doc.getEntry(ids[0])->dirty == 1);
    QCOMPARE(doc.getEntry(ids[0])->getOccurrence(1), occurrence); // views may hold on to it
    doc.move(ids[0], march(2, 7));
    doc.move(ids[3], march(2, 7));
    QCOMPARE(doc.settle(), (Ids{ids[2], ids[0], ids[1], ids[3]}));
}

void VelRemindersTest::colleaguesRemindersShouldNotRingHere()
{
    Doc doc;
    doc.settings.origUserid = 3;
    doc.setUserId(9);
    const quint32 localid = doc.addReminder(march(1, 9), 15);
    QCOMPARE(doc.settle(), Ids());
    QCOMPARE(doc.passTo(march(2, 9)), -1);
    QVERIFY(!doc.getEntry(localid)->reminderfired);
    doc.setUserId(3);
    doc.updateAlarm();
    QCOMPARE(doc.settle(), Ids{localid});
}

void VelRemindersTest::othersShouldWaitUntilOneIsAnswered()
{
    Doc doc;
    doc.isAnsweredAtOnce = false;
    const Ids ids{doc.addReminder(march(2, 9), 10), doc.addReminder(march(2, 9), 5),
                  doc.addReminder(march(2, 9), 1), doc.addReminder(march(3, 9), 1)};
    QCOMPARE(doc.passTo(march(2, 10)), 60000);
    doc.passTo(march(2, 10, 1));
    QCOMPARE(doc.rung, Ids{ids[0]});
    QCOMPARE(doc.getWaitingReminders(), 2);
    doc.dismissReminder(ids[0]);
    QCOMPARE(doc.settle(), (Ids{ids[0], ids[1]}));
    doc.dismissDueReminders();
    QCOMPARE(doc.settle().size(), 2U);
    QVERIFY(doc.getEntry(ids[1])->reminderfired && doc.getEntry(ids[2])->reminderfired);
    QVERIFY(!doc.getEntry(ids[3])->reminderfired);
}

void VelRemindersTest::alertShouldEndWithItsReason()
{
    Doc doc;
    doc.isAnsweredAtOnce = false;
    const Ids ids{doc.addReminder(march(2, 9), 5), doc.addReminder(march(2, 9), 4),
                  doc.addReminder(march(2, 9), 3)};
    doc.passTo(march(2, 9));
    doc.removeEntry(ids[0]);
    QCOMPARE(doc.settle(), (Ids{ids[0], ids[1]}));
    doc.move(ids[1], march(4, 9));
    QCOMPARE(doc.settle(), ids);
    doc.dismissReminder(ids[0]); // an answer that comes too late
    QCOMPARE(doc.getAlarmEntry(), ids[2]);
    doc.newDocument();
    QCOMPARE(doc.getAlarmEntry(), 0U);
}

void VelRemindersTest::snoozedShouldRingLaterOrAfterARestart()
{
    Doc doc;
    doc.isAnsweredAtOnce = false;
    const quint32 id = doc.addReminder(march(2, 9), 10);
    doc.passTo(march(2, 9));
    QVERIFY(!doc.snoozeReminder(id, march(2, 9)));
    QVERIFY(doc.snoozeReminder(id, march(2, 9, 5)));
    doc.changeEntry(id, [](VelEntry &entry) { entry.setTitle(QStringLiteral("x")); });
    doc.passTo(march(2, 9, 4));
    QCOMPARE(doc.rung, Ids{id});
    QVERIFY(doc.saveDocument(doc.url(QStringLiteral("a.xml")), true));
    Doc restarted;
    QVERIFY(restarted.openDocument(doc.URL()));
    restarted.clock = march(2, 9, 4);
    QCOMPARE(restarted.settle(), Ids{id});
    doc.passTo(march(2, 9, 5));
    QCOMPARE(doc.rung, (Ids{id, id}));
    doc.snoozeReminder(id, march(9, 9));
    doc.move(id, march(4, 9)); // has a new alert time, which is not put off
    QVERIFY(doc.nextReminder()->time == march(4, 8, 50));
}

void VelRemindersTest::randomEditsShouldFindWhatASearchFinds()
{
    QRandomGenerator random(1);
    Doc doc;
    const auto upTo = [&random](int highest) { return static_cast<quint32>(random.bounded(highest + 1)); };
    for (int step = 0; step < 3000; ++step) {
        const quint32 id = 1 + upTo(60);
        const VelDateTime time = march(3, 10).addSecs(600 * upTo(20));
        VelEntry entry(id, static_cast<int>(upTo(3)) - 1, time, time.addSecs(600 * upTo(3)));
        entry.reminder = 10 * upTo(3);
        entry.reminderfired = upTo(4) == 0;
        const quint32 kind = upTo(4);
        if (kind == 0)
            doc.removeEntry(id);
        else if (kind == 1)
            doc.dismissReminder(id);
        else if (kind == 2)
            doc.changeEntry(id, [&entry](VelEntry &stored) { stored = entry; });
        else
            doc.addEntry(std::make_unique<VelEntry>(entry));
        std::optional<VelReminders::Alert> expected;
        for (quint32 localid = 1; localid <= 61; ++localid) {
            const VelEntry *stored = doc.getEntry(localid);
            if (!stored || stored->reminder == 0 || stored->reminderfired || stored->type == -1)
                continue;
            const VelDateTime base = stored->type == 2 ? stored->getEnd() : stored->getStart();
            const VelDateTime alert = base.addSecs(-60LL * stored->reminder);
            if (!expected || alert < expected->time)
                expected = VelReminders::Alert{alert, localid};
        }
        QVERIFY(doc.nextReminder() == expected);
    }
}

QTEST_GUILESS_MAIN(VelRemindersTest)

#include "velreminderstest.moc"

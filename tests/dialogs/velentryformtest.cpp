// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentryform.h"
#include "support/testcalendar.h"

#include <QTest>

using namespace TestCalendar;

class VelEntryFormTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyFieldShouldReachTheEntry_data();
    void everyFieldShouldReachTheEntry();
    void reminderThatRangShouldRingAgainOnlyWhenItChanges();
    void endShouldFollowALaterStartOnly();
};

void VelEntryFormTest::everyFieldShouldReachTheEntry_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("event") << int(VelEntry::Event);
    QTest::newRow("to-do") << int(VelEntry::Todo);
}

void VelEntryFormTest::everyFieldShouldReachTheEntry()
{
    QFETCH(int, type);
    VelEntry entry(7, type, march(2, 9), march(2, 10));
    entry.dirty = 0;
    VelEntryForm form = VelEntryForm::of(entry);
    form.title = QStringLiteral("Title");
    form.description = QStringLiteral("Text\nof two lines");
    form.start = march(3, 11);
    form.end = march(4, 12);
    form.reminder = 15;
    form.notime = !entry.notime;
    form.accounts = {VelAccount(QStringLiteral("Somebody"), QStringLiteral("s@example.org"), 3)};
    form.access = VelEntry::Private;
    form.display = VelEntry::TentativeTime;
    form.rule = weeklyRule({1, 3}, 5);
    form.complete = true;
    form.priority = 4;
    form.applyTo(entry);
    const bool isEvent = type == VelEntry::Event;
    QCOMPARE(entry.getTitle(), form.title);
    QCOMPARE(entry.getDescription(), form.description);
    QCOMPARE(entry.getStart(), form.start);
    QCOMPARE(entry.getEnd(), form.end);
    QCOMPARE(entry.reminder, 15U);
    QCOMPARE(entry.notime, form.notime);
    QCOMPARE(entry.dirty, 1);
    QCOMPARE(entry.accounts.size(), isEvent ? 1 : 0);
    QCOMPARE(entry.access, isEvent ? int(VelEntry::Private) : int(VelEntry::NoAccess));
    QCOMPARE(entry.display, isEvent ? int(VelEntry::TentativeTime) : int(VelEntry::NoDisplay));
    QCOMPARE(entry.rule == form.rule, isEvent);
    QCOMPARE(entry.complete, !isEvent);
    QCOMPARE(entry.priority, isEvent ? 0 : 4);
}

void VelEntryFormTest::reminderThatRangShouldRingAgainOnlyWhenItChanges()
{
    VelEntry entry = makeEvent(QStringLiteral("x"), march(2, 9), march(2, 10));
    entry.reminder = 10;
    entry.reminderfired = true;
    VelEntryForm form = VelEntryForm::of(entry);
    form.title = QStringLiteral("y");
    form.start = march(2, 8);
    form.applyTo(entry);
    QVERIFY(entry.reminderfired);
    form.reminder = 20;
    form.applyTo(entry);
    QVERIFY(!entry.reminderfired);
}

void VelEntryFormTest::endShouldFollowALaterStartOnly()
{
    QCOMPARE(velEndForStart(march(2, 9), march(2, 11), march(2, 10)), march(2, 12));
    QCOMPARE(velEndForStart(march(2, 9), march(2, 8), march(2, 10)), march(2, 10));
    QCOMPARE(velEndForStart(march(2, 9), march(2, 9), march(2, 10)), march(2, 10));
}

QTEST_GUILESS_MAIN(VelEntryFormTest)

#include "velentryformtest.moc"

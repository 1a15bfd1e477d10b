// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentrydialog.h"

#include "dialogs/veladdressbook.h"
#include "dialogs/velentryrecurdialog.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "widgets/wdatetimewidget.h"
#include "widgets/wtimeinput.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace TestCalendar;
using Box = QDialogButtonBox;

namespace
{
struct Editor {
    explicit Editor(const VelEntry &entry = makeEvent(QStringLiteral("Meeting"), march(2, 9), march(2, 10)))
        : stored(add(app.doc, entry))
        , dialog(app, *book, *stored, false, [this](const VelEntry &each) { told += each.getTitle(); })
    {
        dialog.show();
    }

    template <typename Child>
    [[nodiscard]] Child *get(const char *name) const
    {
        return dialog.findChild<Child *>(QLatin1String(name));
    }

    FakeApp app{today()};
    std::unique_ptr<VelAddressBook> book = VelAddressBook::create();
    QString told;
    const VelEntry *stored;
    VelEntryDialog dialog;
};
} // namespace

class VelEntryDialogTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startAfterEndShouldLeaveTheEntryAlone();
    void unreadableTimeShouldKeepTheDialogOpen();
    void laterStartShouldTakeTheEndAlong();
    void noTimesShouldHideTheTimes();
    void everyApplyShouldWriteAgain();
    void otherCalendarShouldCloseWhatIsOpenInside();
    void cancelShouldTakeBackAllButTheRecurrence();
    void kindAndPeopleShouldDecideWhatIsOffered();
};

void VelEntryDialogTest::startAfterEndShouldLeaveTheEntryAlone()
{
    Editor editor;
    const VelEntry expected = *editor.stored;
    editor.get<QLineEdit>("title")->setText(QStringLiteral("Other"));
    auto *time = editor.get<QWidget>("end")->findChild<WTimeInput *>(); // typed, and the focus left there
    time->lineEdit()->selectAll();
    QTest::keyClicks(time, QStringLiteral("859"));
    for (const auto which : {Box::Ok, Box::Apply}) {
        editor.get<Box>("buttons")->button(which)->click();
        QCOMPARE(editor.app.fakeMessages.last().text,
                 QStringLiteral("Start time may not be later than end time."));
        QVERIFY(editor.dialog.isVisible());
        QCOMPARE(*editor.stored, expected);
        QVERIFY(editor.told.isEmpty() && !editor.app.doc.isModified());
    }
    QCOMPARE(editor.app.fakeMessages.errors().size(), 2);
}

void VelEntryDialogTest::unreadableTimeShouldKeepTheDialogOpen()
{
    Editor editor;
    const VelEntry expected = *editor.stored;
    auto *end = editor.get<WDateTimeWidget>("end");
    QVERIFY(QTest::qWaitForWindowActive(&editor.dialog));
    QTest::keyClick(&editor.dialog, Qt::Key_E, Qt::AltModifier); // "&End time:"
    auto *time = end->findChild<WTimeInput *>();
    QVERIFY(end->isAncestorOf(editor.dialog.focusWidget()));
    time->lineEdit()->selectAll();
    QTest::keyClicks(time, QStringLiteral("25:99"));
    for (const auto which : {Box::Ok, Box::Apply}) {
        editor.get<Box>("buttons")->button(which)->click();
        QCOMPARE(editor.app.fakeMessages.last().text, end->getProblem());
        QVERIFY(editor.dialog.isVisible() && *editor.stored == expected);
    }
    editor.get<WDateTimeWidget>("start")->setTime(QTime(11, 0)); // takes the end along, but not its text
    QCOMPARE(time->currentText(), QStringLiteral("25:99"));
    time->lineEdit()->selectAll();
    QTest::keyClicks(time, QStringLiteral("2:30 pm"));
    editor.get<Box>("buttons")->button(Box::Ok)->click();
    QVERIFY(!editor.dialog.isVisible());
    QCOMPARE(editor.stored->getEnd(), march(2, 14).withTime(QTime(14, 30)));
}

void VelEntryDialogTest::laterStartShouldTakeTheEndAlong()
{
    const Editor editor;
    for (const int hour : {11, 7}) {
        editor.get<WDateTimeWidget>("start")->setDateTime(march(2, hour).toQDateTime());
        QCOMPARE(editor.dialog.form().end, march(2, 12));
    }
}

void VelEntryDialogTest::noTimesShouldHideTheTimes()
{
    const Editor editor;
    for (const bool isHidden : {true, false}) {
        editor.get<QAbstractButton>("noTimes")->click();
        for (const char *name : {"start", "end"})
            QCOMPARE(editor.get<QWidget>(name)->findChild<WTimeInput *>()->isVisible(), !isHidden);
    }
}

void VelEntryDialogTest::everyApplyShouldWriteAgain()
{
    Editor editor;
    for (const auto &[which, title] :
         {std::pair(Box::Apply, "1"), std::pair(Box::Apply, "2"), std::pair(Box::Ok, "3")}) {
        QVERIFY(editor.dialog.isVisible());
        editor.app.doc.changeEntry(editor.stored->localid, [](VelEntry &entry) { entry.dirty = 0; });
        editor.get<QLineEdit>("title")->setText(QLatin1String(title));
        editor.get<Box>("buttons")->button(which)->click();
        QCOMPARE(editor.stored->getTitle(), QLatin1String(title));
        QCOMPARE(editor.stored->dirty, 1);
    }
    QVERIFY(!editor.dialog.isVisible() && editor.app.doc.isModified());
    QCOMPARE(editor.told, QStringLiteral("123"));
}

void VelEntryDialogTest::otherCalendarShouldCloseWhatIsOpenInside()
{
    Editor editor;
    editor.get<QAbstractButton>("recurring")->setChecked(true);
    bool wasInside = false;
    QTimer::singleShot(0, &editor.dialog, [&] {
        wasInside = editor.dialog.findChild<VelEntryRecurDialog *>()->isVisible();
        Q_EMIT editor.app.doc.contentsReplaced();
    });
    editor.get<QAbstractButton>("setRecurrence")->click(); // comes back when that is closed
    QVERIFY(wasInside && !editor.dialog.isVisible());
}

void VelEntryDialogTest::cancelShouldTakeBackAllButTheRecurrence()
{
    VelEntry entry = makeEvent(QStringLiteral("Meeting"), march(2, 9), march(2, 10));
    entry.rule = dailyRule(1, 3);
    entry.dirty = 0;
    for (const bool isUnticked : {false, true}) {
        Editor editor(entry);
        editor.get<QLineEdit>("title")->setText(QStringLiteral("Other"));
        editor.get<QAbstractButton>("recurring")->setChecked(!isUnticked);
        QCOMPARE(editor.get<QWidget>("setRecurrence")->isEnabled(), !isUnticked);
        editor.get<Box>("buttons")->button(Box::Cancel)->click();
        QCOMPARE(editor.stored->getTitle(), entry.getTitle());
        QCOMPARE(editor.stored->rule, isUnticked ? VelRecurrenceRule() : entry.rule);
        QCOMPARE(editor.stored->dirty, int(isUnticked));
    }
    entry.rule.recurringtype = 9; // of a program to come: nobody has unticked it
    for (const auto which : {Box::Cancel, Box::Ok}) {
        Editor editor(entry);
        editor.get<Box>("buttons")->button(which)->click();
        QCOMPARE(editor.stored->rule, entry.rule);
    }
}

void VelEntryDialogTest::kindAndPeopleShouldDecideWhatIsOffered()
{
    const Editor todo(makeTodo(QStringLiteral("Task"), today()));
    QCOMPARE(todo.dialog.windowTitle(), QStringLiteral("To-Do task"));
    Editor event;
    QCOMPARE(event.dialog.windowTitle(), QStringLiteral("Event"));
    QVERIFY(!event.get<QWidget>("planner")->isEnabled());
    VelXmlContent content;
    content.accounts = VelAccountList{VelAccount(QStringLiteral("Bo"), {}, 2)};
    event.app.doc.readXml(content);
    Q_EMIT event.app.accountsReady();
    event.get<QAbstractItemView>("people")->selectAll();
    Q_EMIT event.get<QAbstractItemView>("people")->doubleClicked({});
    QVERIFY(event.get<QWidget>("planner")->isEnabled());
}

QTEST_MAIN(VelEntryDialogTest)

#include "velentrydialogtest.moc"

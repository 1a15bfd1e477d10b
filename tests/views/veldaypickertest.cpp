// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldaypicker.h"
#include "model/veltext.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "views/veldaypickeritem.h"
#include "widgets/wpopupmenu.h"

#include <QContextMenuEvent>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

using namespace TestCalendar;
using Dates = QVector<QDate>;

namespace
{
const QLocale German(QLocale::German, QLocale::Germany);
const QLocale American(QLocale::English, QLocale::UnitedStates);

QList<VelDayPickerItem *> itemsOf(const VelDayPicker &picker)
{
    return picker.findChildren<VelDayPickerItem *>();
}

VelDayPickerItem *itemOf(const VelDayPicker &picker, QDate date)
{
    const QList<VelDayPickerItem *> items = itemsOf(picker);
    return items.at(static_cast<int>(items.first()->getDate().daysTo(date)));
}

Dates datesOf(const QSignalSpy &spy)
{
    Dates dates;
    for (const QList<QVariant> &arguments : spy)
        dates.append(arguments.first().toDate());
    return dates;
}

Dates highlightedOf(const VelDayPicker &picker)
{
    Dates dates;
    for (const VelDayPickerItem *item : itemsOf(picker)) {
        if (item->getDay().isHighlighted)
            dates.append(item->getDate());
    }
    return dates;
}

struct Window {
    FakeApp app{today()};
    VelDayPicker picker{&app};
    QSignalSpy changed{&picker, &VelDayPicker::dateChanged};
    QSignalSpy selected{&picker, &VelDayPicker::dateSelected};
};

/** Counts how many of the widgets it watches were painted. */
struct PaintCounter : public QObject {
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

void turnWheel(QWidget *widget, int angle)
{
    QWheelEvent event(QPointF(), QPointF(), {}, {0, angle}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}
} // namespace

class VelDayPickerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void everyMonthShouldHaveItsRows();
    void redDayShouldStayRedWhenHighlighted();
    void cellsShouldKnowTheirDays();
    void shouldNumberWeeksAroundNewYear();
    void shouldStepToTheLastDayOfAShorterMonth();
    void shouldStayWithinTheSupportedYears();
    void shouldRepaintOnlyCellsWhoseMarkChanged();
    void clickShouldChooseAndLeaveTheMonth();
    void wheelShouldStepByWholeNotches();
    void cursorShouldWalkWithoutChangingTheDate();
    void menuShouldGoToTodayOrATypedDate();
    void menuInADialogShouldLeaveTheWindowAlone();
};

void VelDayPickerTest::init()
{
    QLocale::setDefault(German);
}

void VelDayPickerTest::everyMonthShouldHaveItsRows()
{
    for (QDate first(1890, 1, 1); first.year() < 2110; first = first.addMonths(1)) {
        const QDate monday = VelDayPicker::gridStart(first.addDays(27), true);
        QCOMPARE(monday.dayOfWeek(), int(Qt::Monday));
        QVERIFY(monday <= first && monday.daysTo(first) < 7);
        const QDate sunday = VelDayPicker::gridStart(first.addDays(27), false);
        QCOMPARE(sunday.dayOfWeek(), int(Qt::Sunday));
        QVERIFY(sunday < first && sunday.daysTo(first) <= 7); // never in the first cell
    }
}

void VelDayPickerTest::redDayShouldStayRedWhenHighlighted()
{
    Window window;
    VelDayPickerItem *item = itemOf(window.picker, today());
    const auto pictureOf = [item](bool isToday, bool isRed) {
        item->setDay({today(), true, true, isToday, isRed, false});
        return item->grab().toImage();
    };
    for (const bool isToday : {false, true})
        QVERIFY(pictureOf(isToday, true) != pictureOf(isToday, false));
}

void VelDayPickerTest::cellsShouldKnowTheirDays()
{
    QLocale::setDefault(American);
    FakeApp app(QDate(2026, 1, 31));
    VelDayPicker picker(&app);
    picker.setDate(QDate(2026, 2, 10)); // a month that begins on a Sunday
    const QList<VelDayPickerItem *> items = itemsOf(picker);
    QCOMPARE(int(items.size()), 42);
    QCOMPARE(items.at(6)->getDay(), (VelDayPickerDay{QDate(2026, 1, 31), false, false, true, false, false}));
    QCOMPARE(items.at(7)->getDay(), (VelDayPickerDay{QDate(2026, 2, 1), true, false, false, true, false}));
    const QString name = QAccessible::queryAccessibleInterface(items.at(6))->text(QAccessible::Name);
    QCOMPARE(name, QStringLiteral("Saturday, 1/31/2026, today"));
    app.fakeNow = at(QDate(2026, 2, 1));
    picker.updateToday();
    QVERIFY(items.at(7)->getDay().isToday && !items.at(6)->getDay().isToday);
}

void VelDayPickerTest::shouldNumberWeeksAroundNewYear()
{
    Window window;
    VelDayPicker &picker = window.picker;
    picker.setDate(QDate(2027, 1, 15));
    QStringList toolTips;
    for (const VelDayPickerWeek *week : picker.findChildren<VelDayPickerWeek *>())
        toolTips.append(week->toolTip());
    QCOMPARE(toolTips.join(QLatin1Char(' ')), QStringLiteral("Week 53 Week 1 Week 2 Week 3 Week 4 Week 5"));
    QCOMPARE(picker.findChild<VelDayPickerWeek *>()->getDate(), QDate(2026, 12, 28));
    QVERIFY(picker.findChild<QLabel *>()->text().endsWith(QStringLiteral(" 2027")));
}

void VelDayPickerTest::shouldStepToTheLastDayOfAShorterMonth()
{
    Window window;
    VelDayPicker &picker = window.picker;
    picker.setDate(QDate(2024, 1, 31));
    picker.nextMonth();
    picker.nextYear();
    picker.prevMonth();
    picker.prevYear();
    const Dates dates{QDate(2024, 2, 29), QDate(2025, 2, 28), QDate(2025, 1, 28), QDate(2024, 1, 28)};
    QCOMPARE(datesOf(window.changed), dates);
    QCOMPARE(picker.getDate(), dates.last());
}

void VelDayPickerTest::shouldStayWithinTheSupportedYears()
{
    Window window;
    VelDayPicker &picker = window.picker;
    picker.setDate(QDate(9999, 12, 31));
    picker.nextMonth();
    picker.nextYear();
    QTest::keyClick(&picker, Qt::Key_Right);
    QTest::mouseClick(itemOf(picker, QDate(10000, 1, 1)), Qt::LeftButton);
    picker.setDate(QDate());
    QCOMPARE(picker.getShown(), QDate(9999, 12, 31));
    QCOMPARE(window.changed.count(), 0);
}

void VelDayPickerTest::shouldRepaintOnlyCellsWhoseMarkChanged()
{
    Window window;
    VelDayPicker &picker = window.picker;
    window.app.resize(picker.sizeHint());
    window.app.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window.app));
    picker.setHighlight(today(), 3);
    QCOMPARE(highlightedOf(picker), (Dates{today(), today().addDays(1), today().addDays(2)}));
    QCoreApplication::processEvents();
    PaintCounter counter;
    for (VelDayPickerItem *item : itemsOf(picker))
        item->installEventFilter(&counter);
    picker.setHighlight(today().addDays(1), 3);
    QTRY_COMPARE(counter.count, 2);
    picker.setHighlight(today(), 0);
    QCOMPARE(highlightedOf(picker), Dates());
}

void VelDayPickerTest::clickShouldChooseAndLeaveTheMonth()
{
    Window window;
    VelDayPicker &picker = window.picker;
    const Dates dates{QDate(2026, 3, 17), QDate(2026, 4, 3), QDate(2026, 2, 23)};
    QTest::mouseClick(itemOf(picker, dates.at(0)), Qt::LeftButton);
    QTest::mouseClick(itemOf(picker, dates.at(1)), Qt::LeftButton); // of a neighbouring month
    QTest::mouseClick(picker.findChild<VelDayPickerWeek *>(), Qt::LeftButton);
    QTest::mouseClick(itemOf(picker, dates.at(0)), Qt::MiddleButton);
    QCOMPARE(datesOf(window.changed), dates);
    QCOMPARE(datesOf(window.selected), dates);
    QCOMPARE(picker.getDate(), dates.last());
    QCOMPARE(picker.getShown(), today());
}

void VelDayPickerTest::wheelShouldStepByWholeNotches()
{
    Window window;
    VelDayPicker &picker = window.picker;
    turnWheel(&picker, -60);
    QCOMPARE(picker.getDate(), today());
    turnWheel(&picker, -60);
    QCOMPARE(picker.getDate(), today().addMonths(1));
    turnWheel(&picker, 240);
    QCOMPARE(picker.getDate(), today().addMonths(-1));
}

void VelDayPickerTest::cursorShouldWalkWithoutChangingTheDate()
{
    Window window;
    VelDayPicker &picker = window.picker;
    QTest::keyClick(&picker, Qt::Key_Up);
    QCOMPARE(picker.getShown(), QDate(2026, 2, 23));
    QTest::keyClick(&picker, Qt::Key_End);
    QCOMPARE(picker.getDate(), today());
    QTest::keyClick(&picker, Qt::Key_Return);
    QTest::keyClick(&picker, Qt::Key_PageDown, Qt::ShiftModifier);
    QTest::keyClick(&picker, Qt::Key_PageUp);
    QTest::keyClick(&picker, Qt::Key_Space);
    picker.setLayoutDirection(Qt::RightToLeft);
    QTest::keyClick(&picker, Qt::Key_Left);
    QTest::keyClick(&picker, Qt::Key_Enter);
    QCOMPARE(datesOf(window.selected), (Dates{QDate(2026, 3, 1), QDate(2027, 2, 1), QDate(2027, 2, 2)}));
}

void VelDayPickerTest::menuShouldGoToTodayOrATypedDate()
{
    Window window;
    VelDayPicker &picker = window.picker;
    const QSignalSpy goneToday(window.app.getAction(QStringLiteral("go_today")), &QAction::triggered);
    QContextMenuEvent rightButton(QContextMenuEvent::Mouse, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(itemsOf(picker).first(), &rightButton);
    const QList<QAction *> items = picker.findChild<WPopupMenu *>()->actions();
    items.at(0)->trigger();
    QCOMPARE(goneToday.count(), 1);
    for (const char *text : {"20.5.2027", "31.2.", "19/5"}) {
        items.at(1)->trigger();
        auto *dialog = picker.findChild<QDialog *>();
        QCOMPARE(dialog->findChild<QLineEdit *>()->text(), VelText::getDay(picker.getDate()));
        dialog->findChild<QLineEdit *>()->setText(QLatin1String(text));
        const bool isDate = text[0] != '3';
        QCOMPARE(dialog->findChild<QPushButton *>()->isEnabled(), isDate); // OK, the first
        QVERIFY(isDate
                || dialog->findChildren<QLabel *>().last()->text().startsWith(QLatin1String("\"31.2.\"")));
        dialog->accept();
        delete dialog;
    }
    QCOMPARE(datesOf(window.selected), (Dates{QDate(2027, 5, 20), QDate(2027, 5, 19)}));
    QCOMPARE(picker.getShown(), QDate(2027, 5, 19));
}

void VelDayPickerTest::menuInADialogShouldLeaveTheWindowAlone()
{
    FakeApp app(today());
    QDialog dialog(&app);
    VelDayPicker picker(&dialog);
    picker.setDate({2027, 5, 20});
    const QSignalSpy goneToday(app.getAction(QStringLiteral("go_today")), &QAction::triggered);
    QContextMenuEvent rightButton(QContextMenuEvent::Mouse, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(&picker, &rightButton);
    picker.findChild<WPopupMenu *>()->actions().at(0)->trigger();
    QCOMPARE(goneToday.count(), 0);
    QVERIFY(picker.getDate() == today() && picker.getShown() == today());
}

QTEST_MAIN(VelDayPickerTest)

#include "veldaypickertest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthview.h"
#include "document/veldrag.h"
#include "model/veltext.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

using namespace TestCalendar;
using Answer = VelMessages::Answer;

namespace
{
QDate marchDay(int day)
{
    return {2026, 3, day};
}

/** March 2026 in a window, with room for some lines in each cell. */
class MonthWindow
{
public:
    MonthWindow()
        : view(new VelMonthView(&app))
    {
        app.doc.addView(view);
        view->resize(700, 900);
        QObject::connect(view, &VelView::setDateInternal, view, [this](QDate date) {
            view->clearSelectedEntry(false);
            view->setMonth(date);
        });
    }
    ~MonthWindow() { app.doc.removeView(view); }
    Q_DISABLE_COPY_MOVE(MonthWindow)

    const VelEntry *addEvent(const QString &title, const VelDateTime &start, const VelDateTime &end)
    {
        const VelEntry *entry = TestCalendar::addEvent(app.doc, title, start, end);
        view->updateView();
        return entry;
    }

    /** The first line of that entry. */
    [[nodiscard]] QPoint placeOf(const VelEntry *entry) const
    {
        for (const VelMonthEntry &line : view->entries()) {
            if (line.isOf(entry))
                return line.rect().center();
        }
        return {};
    }

    /** A point of the day's cell below its entries. */
    [[nodiscard]] QPoint emptyPlace(int day) const
    {
        return view->getRect(marchDay(day)).bottomLeft() + QPoint(9, -5);
    }
    void click(int day) { QTest::mouseClick(view, Qt::LeftButton, {}, emptyPlace(day)); }
    void key(int key) { QTest::keyClick(view, static_cast<Qt::Key>(key)); }
    [[nodiscard]] int selectedDay() const { return view->getSelectionStart().date().day(); }

    /** Pulls that entry away; without a screen the drag that this begins ends at once. */
    void drag(const VelEntry *entry)
    {
        const QPoint place = placeOf(entry);
        QTest::mousePress(view, Qt::LeftButton, {}, place);
        const QPointF away = place + QPoint(99, 99);
        QMouseEvent move(QEvent::MouseMove, away, away, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &move);
    }

    /** Drags @p data over that day and drops it there; true when it was taken. */
    bool drop(const VelEntry &entry, int day)
    {
        const VelDrag data(entry, 0);
        const QPoint place = emptyPlace(day);
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &enter);
        QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &event);
        return event.isAccepted();
    }

    FakeApp app{today()};
    VelMonthView *view;
};
} // namespace

class VelMonthViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void clickShouldSelectADayAndAnotherLetItGo();
    void dayAndEntryShouldExcludeEachOther();
    void fullCellShouldShowTheFirstAndCountTheRest();
    void linesShouldSayWhenTheEntryStarts();
    void mirroredViewShouldFindItsDays();
    void dropShouldMoveAnOwnEntryToTheDay();
    void leavingDragShouldChangeNothing();
    void dropFromOutsideShouldAskWhere();
    void nothingShouldChangeWhereNothingMay();
    void pasteShouldGoToTheStartOfTheWorkingDay();
    void doubleClickShouldTakeANewEvent();
    void doubleClickOnAnEntryShouldOpenIt();
    void rightPressShouldOpenTheFittingMenu();
    void wheelAndKeysShouldTurnTheMonth();
    void arrowsShouldMoveTheDayAcrossMonths();
    void tabShouldWalkTheEntriesAndLeave();
    void partsShouldBeToldToScreenReaders();
    void hidingShouldSelectNothing();
    void dragShouldHoldTheLockWhileItLasts();
    void todayShouldStayRedOnASunday();
};

void VelMonthViewTest::clickShouldSelectADayAndAnotherLetItGo()
{
    MonthWindow window;
    window.app.fakeSettings.workdayBegin = QTime(7, 45);
    window.click(17);
    QCOMPARE(window.view->getSelectionStart(), march(17, 7, 45));
    QCOMPARE(window.view->getSelectionEnd(), march(17, 9, 45));
    window.click(18);
    QCOMPARE(window.selectedDay(), 18);
    window.click(18);
    QVERIFY(!window.view->hasSelection());
}

void VelMonthViewTest::dayAndEntryShouldExcludeEachOther()
{
    MonthWindow window;
    VelEntry daily = makeEvent(QStringLiteral("daily"), march(2, 9), march(2, 10));
    daily.rule = dailyRule(1, 5);
    const VelEntry *entry = add(window.app.doc, daily);
    window.view->updateView();
    window.click(17);
    const VelMonthEntry third = window.view->entries()[2];
    QTest::mouseClick(window.view, Qt::LeftButton, {}, third.rect().center());
    QVERIFY(!window.view->hasSelection());
    QCOMPARE(window.view->getSelectedEntry(), entry->getOccurrence(third.ref().getNumber()));
    window.click(17);
    QVERIFY(!window.view->hasSelectedEntry());
}

void VelMonthViewTest::fullCellShouldShowTheFirstAndCountTheRest()
{
    MonthWindow window;
    constexpr int count = 20;
    for (int i = 0; i < count; ++i)
        window.addEvent(QString::number(i), march(5, 22 - i), march(5, 23));
    const std::vector<VelMonthEntry> &lines = window.view->entries();
    const int shown = static_cast<int>(lines.size());
    QVERIFY(shown > 1 && shown < count);
    for (int i = 0; i < shown; ++i) {
        QCOMPARE(lines[std::size_t(i)].getEntry()->getTitle(), QString::number(count - 1 - i));
        QVERIFY(window.view->getRect(marchDay(5)).contains(lines[std::size_t(i)].rect()));
    }
    const VelMonthCell cell = window.view->cells()[std::size_t(window.view->startDate().daysTo(marchDay(5)))];
    QCOMPARE(cell.moreText, QStringLiteral("+%1").arg(count - shown));
    QSignalSpy wanted(window.view, &VelMonthView::dayWanted);
    QTest::mouseClick(window.view, Qt::LeftButton, {}, cell.more.center());
    QCOMPARE(wanted.size(), 1);
    QCOMPARE(wanted.first().first().toDate(), marchDay(5));
    QTest::keyClick(window.view, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(wanted.size(), 1); // of no day
    window.click(6);
    QTest::keyClick(window.view, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(wanted.last().first().toDate(), marchDay(6));
    QTest::mouseClick(window.view, Qt::LeftButton, {}, lines.front().rect().center());
    QTest::keyClick(window.view, Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
    QCOMPARE(wanted.size(), 3);
    QCOMPARE(wanted.last().first().toDate(), marchDay(5));
    window.app.show();
    QCOMPARE(window.view->accessibleCount(), 42 + shown + 1);
    const VelAccessibleItem more = window.view->accessibleItem(42 + shown);
    QCOMPARE(more.name, QStringLiteral("%1 more entries").arg(count - shown));
    QCOMPARE(more.rect, cell.more);
}

void VelMonthViewTest::linesShouldSayWhenTheEntryStarts()
{
    VelEntry entry = makeEvent(QStringLiteral("Trip"), march(2, 9, 5), march(4, 10));
    QCOMPARE(VelMonthEntry::lineText(VelEntryRef(&entry), marchDay(2)), QStringLiteral("09:05 Trip"));
    QCOMPARE(VelMonthEntry::lineText(VelEntryRef(&entry), marchDay(3)), QStringLiteral("\u2026 Trip"));
    entry.notime = true;
    QCOMPARE(VelMonthEntry::lineText(VelEntryRef(&entry), marchDay(2)), QStringLiteral("Trip"));
    entry.setTitle(QString());
    QCOMPARE(VelMonthEntry::lineText(VelEntryRef(&entry), marchDay(2)), QStringLiteral("Without a title"));
}

void VelMonthViewTest::mirroredViewShouldFindItsDays()
{
    MonthWindow window;
    window.view->setLayoutDirection(Qt::RightToLeft);
    QVERIFY(window.view->getRect(0, 0).left() > window.view->getRect(0, 6).right());
    window.click(17);
    window.key(Qt::Key_Left);
    QCOMPARE(window.selectedDay(), 18);
}

void VelMonthViewTest::dropShouldMoveAnOwnEntryToTheDay()
{
    MonthWindow window;
    const quint32 id = window.addEvent(QStringLiteral("own"), march(5, 22, 15), march(6, 3))->localid;
    window.app.setDraggedEntry(id);
    QVERIFY(window.drop(*window.app.doc.getEntry(id), 20));
    const VelEntry *moved = window.app.doc.getEntry(id);
    QCOMPARE(moved->getStart(), march(20, 22, 15));
    QCOMPARE(moved->getEnd(), march(21, 3));
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(1));
    QVERIFY(window.view->getRect(marchDay(20)).contains(window.placeOf(moved)));
}

void VelMonthViewTest::leavingDragShouldChangeNothing()
{
    MonthWindow window;
    const VelEntry *entry = window.addEvent(QStringLiteral("own"), march(5, 9), march(5, 10));
    const VelEntry before = *entry;
    const QImage picture = window.view->grab().toImage();
    const VelDrag data(*entry, 0);
    QDragEnterEvent enter(window.emptyPlace(20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.view, &enter);
    QVERIFY(window.view->grab().toImage() != picture);
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(window.view, &leave);
    QCOMPARE(window.view->grab().toImage(), picture);
    QVERIFY(*window.app.doc.getEntry(before.localid) == before);
}

void VelMonthViewTest::dropFromOutsideShouldAskWhere()
{
    const VelDateTime start = at(QDate(2026, 6, 8), 14);
    const VelEntry foreign = makeEvent(QStringLiteral("new"), start, start.addSecs(5400));
    const QString text =
        QStringLiteral("Original event starts: %1\nOriginal event ends: %2\nDo you want to drop this "
                       "event to the selected position or use original start and end date/time?");
    for (const Answer answer : {Answer::Yes, Answer::No}) {
        MonthWindow window;
        window.app.fakeMessages.orderAnswer(answer);
        QVERIFY(window.drop(foreign, 20));
        QTRY_COMPARE(window.app.doc.getEntryCount(), std::size_t(1));
        const FakeMessages::Message asked = window.app.fakeMessages.last();
        QCOMPARE(asked.caption, QStringLiteral("Dropping new entry"));
        QCOMPARE(asked.yes, QStringLiteral("Drop to this position"));
        QCOMPARE(asked.no, QStringLiteral("Use original dates and times"));
        QCOMPARE(asked.text, text.arg(VelText::getDateTime(start), VelText::getDateTime(foreign.getEnd())));
        const VelDateTime expected = answer == Answer::Yes ? march(20, 14) : start;
        QCOMPARE(window.app.doc.getEntry(1)->getStart(), expected);
        QCOMPARE(window.app.doc.getEntry(1)->getEnd(), expected.addSecs(5400));
        QCOMPARE(window.view->month().month(), expected.date().month());
    }
}

void VelMonthViewTest::nothingShouldChangeWhereNothingMay()
{
    for (const bool locked : {true, false}) { // else the right to read only
        MonthWindow window;
        const VelEntry before = *window.addEvent(QStringLiteral("event"), march(5, 9), march(5, 10));
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("read.xml"));
        QVERIFY(window.app.doc.writeCopy(path));
        QVERIFY(writeBytes(path, fileBytes(path).replace("<origright>4", "<origright>2")));
        QVERIFY(locked || window.app.doc.openDocument(QUrl::fromLocalFile(path)));
        window.app.isLocked = locked;
        window.view->updateView();
        QVERIFY(!window.drop(before, 20));
        window.drag(window.app.doc.getEntry(before.localid));
        QCOMPARE(window.app.lockCount, 0);
        QTest::mouseDClick(window.view, Qt::LeftButton, {}, window.emptyPlace(12));
        QVERIFY(!window.view->findChild<QLineEdit *>());
        QCoreApplication::processEvents();
        QCOMPARE(window.app.doc.getEntryCount(), std::size_t(1));
        QVERIFY(*window.app.doc.getEntry(before.localid) == before);
    }
}

void VelMonthViewTest::pasteShouldGoToTheStartOfTheWorkingDay()
{
    MonthWindow window;
    window.app.fakeSettings.workdayBegin = QTime(8, 0);
    QGuiApplication::clipboard()->setMimeData(
        new VelDrag(makeEvent(QStringLiteral("copied"), march(2, 13), march(2, 15)), 0));
    window.click(25);
    window.view->paste();
    const VelEntry *pasted = window.app.doc.getEntry(1);
    QVERIFY(pasted && window.view->getSelectedEntry() == pasted);
    QCOMPARE(pasted->getStart(), march(25, 8));
    QCOMPARE(pasted->getEnd(), march(25, 10));
}

void VelMonthViewTest::doubleClickShouldTakeANewEvent()
{
    MonthWindow window;
    const QSignalSpy next(window.view, &VelMonthView::nextWanted);
    window.app.show();
    QVERIFY(QTest::qWaitForWindowActive(&window.app));
    window.click(12);
    QTest::mouseDClick(window.view, Qt::LeftButton, {}, window.emptyPlace(12));
    auto *line = window.view->findChild<QLineEdit *>();
    QVERIFY(line);
    QTest::keyClicks(line, QStringLiteral("Lunch"));
    QTest::keyClick(line, Qt::Key_PageDown); // of no use to the line, and not meant for the month
    QCOMPARE(next.size(), 0);
    QTest::keyClick(line, Qt::Key_Return);
    const VelEntry *entry = window.app.doc.getEntry(1);
    QVERIFY(entry && window.view->getSelectedEntry() == entry);
    QCOMPARE(entry->getTitle(), QStringLiteral("Lunch"));
    QCOMPARE(entry->getStart(), march(12, 9));
    QCOMPARE(entry->getEnd(), march(12, 11));
}

void VelMonthViewTest::doubleClickOnAnEntryShouldOpenIt()
{
    MonthWindow window;
    const quint32 id = window.addEvent(QStringLiteral("event"), march(5, 9), march(5, 10))->localid;
    QTest::mouseDClick(window.view, Qt::LeftButton, {}, window.placeOf(window.app.doc.getEntry(id)));
    QCOMPARE(std::exchange(window.app.editedTitle, {}), QStringLiteral("event"));
    window.key(Qt::Key_Return);
    QCOMPARE(std::exchange(window.app.editedTitle, {}), QStringLiteral("event"));
    window.app.doc.changeEntry(id, [](VelEntry &entry) { entry.user = 99; });
    window.key(Qt::Key_Return); // somebody else's can only be read
    QCOMPARE(window.app.shownTitle, QStringLiteral("event"));
    QVERIFY(window.app.editedTitle.isEmpty());
    window.key(Qt::Key_Escape);
    QVERIFY(!window.view->hasSelectedEntry());
}

void VelMonthViewTest::rightPressShouldOpenTheFittingMenu()
{
    MonthWindow window;
    const VelEntry *entry = window.addEvent(QStringLiteral("event"), march(5, 9), march(5, 10));
    QTest::mousePress(window.view, Qt::RightButton, {}, window.emptyPlace(9));
    QVERIFY(!window.view->findChild<QMenu *>());
    QTest::mousePress(window.view, Qt::RightButton, {}, window.placeOf(entry));
    auto *entryMenu = window.view->findChild<QMenu *>();
    QVERIFY(entryMenu && entryMenu->isVisible());
    QCOMPARE(window.view->getSelectedEntry(), entry);
    entryMenu->hide();
    window.click(9);
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(window.view, &menuKey);
    const QList<QMenu *> menus = window.view->findChildren<QMenu *>();
    QCOMPARE(menus.size(), 2);
    QVERIFY(menus.last()->isVisible());
    menus.last()->hide();
}

void VelMonthViewTest::wheelAndKeysShouldTurnTheMonth()
{
    MonthWindow window;
    const QSignalSpy prev(window.view, &VelMonthView::prevWanted);
    const QSignalSpy next(window.view, &VelMonthView::nextWanted);
    for (const int angle : {-120, -50, -50, 0, -50, 60, 60, 240}) {
        QWheelEvent wheel(QPointF(), QPointF(), {}, QPoint(0, angle), {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.view, &wheel);
    }
    QCOMPARE(next.size(), 2);
    QCOMPARE(prev.size(), 3);
    window.key(Qt::Key_PageUp);
    QCOMPARE(prev.size(), 4);
}

void VelMonthViewTest::arrowsShouldMoveTheDayAcrossMonths()
{
    MonthWindow window;
    window.key(Qt::Key_Right);
    QCOMPARE(window.view->getSelectionStart().date(), today());
    window.key(Qt::Key_Right);
    window.key(Qt::Key_Down);
    QCOMPARE(window.selectedDay(), 10);
    window.key(Qt::Key_Up);
    window.key(Qt::Key_Up);
    QCOMPARE(window.view->month().month(), 2);
    QCOMPARE(window.view->getSelectionStart().date(), QDate(2026, 2, 24));
}

void VelMonthViewTest::tabShouldWalkTheEntriesAndLeave()
{
    MonthWindow window;
    window.app.show();
    window.view->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&window.app));
    const VelEntry *trip = window.addEvent(QStringLiteral("trip"), march(5, 9), march(6, 10));
    const VelEntry *call = window.addEvent(QStringLiteral("call"), march(6, 9), march(6, 10));
    QLineEdit other(&window.app);
    other.show();
    window.click(4);
    for (const VelEntry *expected : {trip, trip, call}) {
        window.key(Qt::Key_Tab);
        QCOMPARE(window.view->getSelectedEntry(), expected);
    }
    window.key(Qt::Key_Up);
    QCOMPARE(window.view->getSelectedEntry(), trip);
    window.key(Qt::Key_Right);
    QCOMPARE(window.selectedDay(), 7);
    window.key(Qt::Key_Tab);
    QVERIFY(other.hasFocus());
}

void VelMonthViewTest::partsShouldBeToldToScreenReaders()
{
    MonthWindow window;
    window.app.show();
    const VelEntry *entry = window.addEvent(QStringLiteral("event"), march(5, 9), march(5, 10));
    QVERIFY(window.view->accessibleItem(10).name.endsWith(QLatin1String(", 1 entry")));
    QTest::mouseClick(window.view, Qt::LeftButton, {}, window.placeOf(entry));
    QCOMPARE(window.view->accessibleFocus(), 42);
    QVERIFY(window.view->accessibleItem(42).name.startsWith(QLatin1String("event, ")));
}

void VelMonthViewTest::hidingShouldSelectNothing()
{
    MonthWindow window;
    window.app.show();
    window.view->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&window.app));
    window.addEvent(QStringLiteral("event"), march(5, 9), march(5, 10));
    window.click(4);
    window.view->hide();
    QVERIFY(!window.view->hasSelectedEntry());
    QCOMPARE(window.view->accessibleFocus(), -1);
}

void VelMonthViewTest::dragShouldHoldTheLockWhileItLasts()
{
    MonthWindow window;
    window.drag(window.addEvent(QStringLiteral("event"), march(5, 9), march(5, 10)));
    QCOMPARE(window.app.lockCount, 2);
    QVERIFY(!window.app.isLocked);
    QCOMPARE(window.app.getDraggedEntry(), 0U);
}

void VelMonthViewTest::todayShouldStayRedOnASunday()
{
    MonthWindow window;
    const auto redPixels = [&window](int day) {
        window.app.fakeNow = march(day, 10);
        const QImage cell = window.view->grab(window.view->getRect(marchDay(day))).toImage();
        int count = 0;
        for (int i = 0; i < cell.width() * cell.height(); ++i) {
            const QColor color = cell.pixelColor(i % cell.width(), i / cell.width());
            count += color.red() > color.green() + 90 && color.red() > color.blue() + 90 ? 1 : 0;
        }
        return count;
    };
    QCOMPARE(redPixels(7), 0);
    QVERIFY(redPixels(8) > 0);
}

QTEST_MAIN(VelMonthViewTest)

#include "velmonthviewtest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayview.h"
#include "document/veldrag.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "views/veldayband.h"
#include "views/veldayheader.h"
#include "views/veldocsource.h"
#include "views/velquickentry.h"

#include <QAccessible>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

using namespace TestCalendar;
using Answer = VelMessages::Answer;

namespace
{
/** A day view of five days from 2 March in a window of its own, as wide as the days are high. */
class Window
{
public:
    explicit Window(int height = 700)
        : source(app.doc)
        , view(new VelDayView(&app, VelDay::Calendar, source))
    {
        app.setCentralWidget(view);
        app.doc.addView(view);
        app.resize(900, height);
        app.show();
        view->setRange(today(), 5);
    }
    ~Window()
    {
        app.doc.removeView(view);
        delete view; // before the calendar that it shows
    }
    Q_DISABLE_COPY_MOVE(Window)

    const VelEntry *add(const VelDateTime &start, const VelDateTime &end)
    {
        VelEntry entry = makeEvent(QStringLiteral("meeting"), start, end);
        entry.dirty = 0;
        const quint32 id = TestCalendar::add(app.doc, entry)->localid;
        app.doc.changeEntry(id, [](VelEntry &stored) { stored.dirty = 0; });
        app.doc.slotUpdateAllViews(nullptr);
        app.doc.setModified(false);
        return app.doc.getEntry(id);
    }
    [[nodiscard]] VelDay *day(int march) const { return view->dayOf({2026, 3, march}); }
    [[nodiscard]] QRect rectOf(const VelEntry *entry, int march) const
    {
        const VelDay *column = day(march);
        const int index = column->indexOf(VelEntryRef(entry));
        return index < 0 ? QRect() : column->entry(index).rect();
    }
    /** The middle of the row that begins at that time. */
    [[nodiscard]] QPoint at(int march, int hour, int minute = 0) const
    {
        return day(march)->rowRect(QTime(hour, minute)).center();
    }
    void drag(VelDay *column, QPoint from, QPoint to) const
    {
        QTest::mousePress(column, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, column->mapToGlobal(to), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(column, &move);
    }

    FakeApp app{today()};
    VelDocSource source;
    VelDayView *view;
};

/** Sends what a drag over that point does, and drops. True when the column took it. */
bool drop(QWidget *target, QMimeData *data, QPoint pos)
{
    QDragEnterEvent enter(pos, Qt::CopyAction, data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(target, &enter);
    QDragMoveEvent move(pos, Qt::CopyAction, data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(target, &move);
    QDropEvent event(pos, Qt::CopyAction, data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(target, &event);
    return enter.isAccepted() && event.isAccepted();
}
} // namespace

Q_DECLARE_METATYPE(VelDateTime)

class VelDayViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rangeShouldShowItsDaysOnly();
    void headingsShouldStandOverTheirDays();
    void workShouldBeginNearTheTop();
    void pressAndDragShouldSelectTime();
    void gesturesShouldChangeTheRecord_data();
    void gesturesShouldChangeTheRecord();
    void gestureGivenUpShouldChangeNothing_data();
    void gestureGivenUpShouldChangeNothing();
    void lostReleaseShouldGiveUpTheGesture();
    void titleBeingTypedShouldNotBeLost();
    void nothingShouldMoveWhereItMayNot_data();
    void nothingShouldMoveWhereItMayNot();
    void ownEntryShouldMoveWhereItIsDropped();
    void foreignEntryShouldBeAskedAbout_data();
    void foreignEntryShouldBeAskedAbout();
    void pasteShouldGoToTheSelectedTime_data();
    void pasteShouldGoToTheSelectedTime();
    void doubleClickShouldOfferANewEntry();
    void entriesWithoutTimesShouldStandAboveTheHours();
    void keysShouldMoveSlotAndSelection();
    void columnShouldBeReadable();
};

void VelDayViewTest::rangeShouldShowItsDaysOnly()
{
    Window window;
    QSignalSpy prev(window.view, &VelDayView::prevWanted);
    QCOMPARE(window.view->findChildren<VelDay *>().size(), 7);
    const auto shown = [&] {
        int count = 0;
        for (const VelDayHeader *header : window.view->findChildren<VelDayHeader *>())
            count += header->isVisible() && window.view->dayOf(header->date())->isVisible() ? 1 : 0;
        return count;
    };
    QCOMPARE(shown(), 5);
    window.view->setRange(today(), 1);
    QCOMPARE(shown(), 1);
    QCOMPARE(window.day(2)->entryCount(), 0);
    QVERIFY(!window.view->dayOf({2026, 3, 3}));
    QTest::keyClick(window.view, Qt::Key_PageUp);
    QCOMPARE(prev.count(), 1);
}

void VelDayViewTest::headingsShouldStandOverTheirDays()
{
    Window window;
    for (const VelDayHeader *header : window.view->findChildren<VelDayHeader *>()) {
        if (!header->isVisible())
            continue;
        const VelDay *day = window.view->dayOf(header->date());
        QCOMPARE(header->mapTo(window.view, QPoint()).x(), day->mapTo(window.view, QPoint()).x());
        if (header->date() == QDate(2026, 3, 6))
            QVERIFY(header->width() < day->width());
        else
            QCOMPARE(header->width(), day->width());
    }
    QCOMPARE(window.day(2)->height(), 816);
}

void VelDayViewTest::workShouldBeginNearTheTop()
{
    const Window window(400);
    QCOMPARE(window.day(2)->visibleRegion().boundingRect().top(), 7 * 34);
}

void VelDayViewTest::pressAndDragShouldSelectTime()
{
    Window window;
    QSignalSpy changed(window.view, &VelDayView::selectionChanged);
    const QPoint from = window.at(3, 9);
    QTest::mousePress(window.day(3), Qt::LeftButton, {}, from);
    QCOMPARE(window.view->getSelectionStart(), march(3, 9));
    QCOMPARE(window.view->getSelectionEnd(), march(3, 9, 30));
    window.drag(window.day(3), from, from); // a press on the selection takes it away ...
    QVERIFY(!window.view->hasSelection());
    window.drag(window.day(3), from, window.at(3, 11)); // ... and the next begins anew
    QCOMPARE(window.view->getSelectionStart(), march(3, 9));
    QCOMPARE(window.view->getSelectionEnd(), march(3, 11, 30));
    QCOMPARE(changed.count(), 4);
    QTest::mouseRelease(window.day(3), Qt::LeftButton, {}, window.at(3, 11));
    const QImage picture = window.day(3)->grab().toImage();
    QCOMPARE(picture.pixelColor(window.at(3, 10) - QPoint(0, 3)), window.app.fakeLook.selection);
    QVERIFY(picture.pixelColor(window.at(3, 12) - QPoint(0, 3)) != window.app.fakeLook.selection);
    window.view->setRange(today(), 5);
    QVERIFY(!window.view->hasSelection());
}

void VelDayViewTest::gesturesShouldChangeTheRecord_data()
{
    QTest::addColumn<int>("lastDay");
    QTest::addColumn<QPoint>("grip"); // from the left and top edges; negative from the right and bottom
    QTest::addColumn<QPoint>("move");
    QTest::addColumn<VelDateTime>("start");
    QTest::addColumn<VelDateTime>("end");
    // An entry from Tuesday 10:00 to 12:00, 17 pixels to the half hour.
    QTest::newRow("top up") << 3 << QPoint(20, 1) << QPoint(0, -17) << march(3, 9, 30) << march(3, 12);
    QTest::newRow("top far down") << 3 << QPoint(20, 1) << QPoint(0, 200) << march(3, 11, 30) << march(3, 12);
    QTest::newRow("bottom down") << 3 << QPoint(20, -2) << QPoint(0, 34) << march(3, 10) << march(3, 13);
    QTest::newRow("left to the day before")
        << 3 << QPoint(2, 20) << QPoint(-20, 0) << march(2, 10) << march(3, 12);
    QTest::newRow("right to the day after")
        << 3 << QPoint(-2, 20) << QPoint(20, 0) << march(3, 10) << march(4, 12);
    QTest::newRow("left of two days back to one")
        << 4 << QPoint(2, 20) << QPoint(30, 0) << march(4, 10) << march(4, 12);
    QTest::newRow("ten minutes, hardly moved")
        << -1 << QPoint(20, -2) << QPoint(1, 0) << march(3, 10) << march(3, 10, 10);
    QTest::newRow("not far enough") << 3 << QPoint(20, 1) << QPoint(0, -6) << march(3, 10) << march(3, 12);
}

void VelDayViewTest::gesturesShouldChangeTheRecord()
{
    QFETCH(int, lastDay);
    QFETCH(QPoint, grip);
    QFETCH(QPoint, move);
    QFETCH(VelDateTime, start);
    QFETCH(VelDateTime, end);
    Window window;
    const VelEntry *entry =
        window.add(march(3, 10), lastDay < 0 ? march(3, 10, 10) : march(lastDay, 12)); // ten minutes for -1
    const QRect rect = window.rectOf(entry, 3);
    const QPoint from(grip.x() < 0 ? rect.right() + 1 + grip.x() : rect.left() + grip.x(),
                      grip.y() < 0 ? rect.bottom() + 1 + grip.y() : rect.top() + grip.y());
    window.drag(window.day(3), from, from + move);
    QVERIFY(window.app.isLocked);
    QTest::mouseRelease(window.day(3), Qt::LeftButton, {}, from + move);
    QCOMPARE(entry->getStart(), start);
    QCOMPARE(entry->getEnd(), end);
    const bool hasChanged = start != march(3, 10) || (lastDay >= 0 && end != march(lastDay, 12));
    QCOMPARE(entry->dirty, int(hasChanged));
    QCOMPARE(window.app.doc.isModified(), hasChanged);
    QVERIFY(!window.app.isLocked);
    QVERIFY(window.view->isSelectedEntry(entry));
}

void VelDayViewTest::gestureGivenUpShouldChangeNothing_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Escape") << true;
    QTest::newRow("let go outside the window") << false;
}

void VelDayViewTest::gestureGivenUpShouldChangeNothing()
{
    QFETCH(bool, byEscape);
    Window window;
    const VelEntry *entry = window.add(march(3, 10), march(3, 12));
    const QPoint from = window.rectOf(entry, 3).topLeft() + QPoint(20, 1);
    window.drag(window.day(3), from, from - QPoint(0, 40));
    QCOMPARE(entry->getStart(), march(3, 9));
    if (byEscape)
        QTest::keyClick(window.view, Qt::Key_Escape);
    else
        QTest::mouseRelease(window.day(3), Qt::LeftButton, {}, QPoint(20, -3000));
    QCOMPARE(entry->getStart(), march(3, 10));
    QCOMPARE(entry->dirty, 0);
    QVERIFY(!window.app.doc.isModified());
    QVERIFY(!window.app.isLocked);
    QTest::mouseMove(window.day(3), from - QPoint(0, 60));
    QCOMPARE(entry->getStart(), march(3, 10));
}

/** The button was let go in a box that came up, or the file was saved by itself in the middle of it. */
void VelDayViewTest::lostReleaseShouldGiveUpTheGesture()
{
    Window window;
    const VelEntry *entry = window.add(march(3, 10), march(3, 12));
    const QPoint from = window.rectOf(entry, 3).topLeft() + QPoint(20, 1);
    window.drag(window.day(3), from, from - QPoint(0, 40));
    window.app.doc.setModified(false); // as saving does
    QMouseEvent hover(QEvent::MouseMove, from, window.day(3)->mapToGlobal(from), Qt::NoButton, Qt::NoButton,
                      {});
    QCoreApplication::sendEvent(window.day(3), &hover);
    QCOMPARE(entry->getStart(), march(3, 10));
    QVERIFY(!window.app.isLocked);
    QVERIFY(window.app.doc.isModified()); // the file still has what was given up
    window.drag(window.day(3), from, from - QPoint(0, 40));
    window.view->setRange(today(), 1);
    QCOMPARE(entry->getStart(), march(3, 10));
    QVERIFY(!window.app.isLocked);
}

void VelDayViewTest::titleBeingTypedShouldNotBeLost()
{
    Window window;
    QTest::mouseDClick(window.day(4), Qt::LeftButton, {}, window.at(4, 13));
    QTest::keyClicks(window.view->findChild<VelQuickEntry *>(), QStringLiteral("Lunch"));
    window.view->setRange(today().addDays(7), 5);
    QCOMPARE(window.app.doc.getEntry(1)->getStart(), march(4, 13));
    QTRY_VERIFY(!window.view->findChild<VelQuickEntry *>());
}

void VelDayViewTest::nothingShouldMoveWhereItMayNot_data()
{
    QTest::addColumn<QString>("why");
    for (const char *why : {"locked", "recurring", "foreign"})
        QTest::newRow(why) << QString::fromLatin1(why);
}

void VelDayViewTest::nothingShouldMoveWhereItMayNot()
{
    QFETCH(QString, why);
    Window window;
    const VelEntry *entry = window.add(march(3, 10), march(3, 12));
    window.app.doc.changeEntry(entry->localid, [&why](VelEntry &changed) {
        if (why == QLatin1String("recurring"))
            changed.rule = dailyRule(1, 3);
        if (why == QLatin1String("foreign"))
            changed.user = 99;
    });
    window.app.isLocked = why == QLatin1String("locked");
    window.view->updateView();
    const QRect rect = window.rectOf(entry, 3);
    QTest::mouseMove(window.day(3), rect.topLeft() + QPoint(20, 1));
    QCOMPARE(window.day(3)->cursor().shape(), Qt::ArrowCursor);
    window.drag(window.day(3), rect.topLeft() + QPoint(20, 1), rect.topLeft() + QPoint(20, -40));
    QTest::mouseRelease(window.day(3), Qt::LeftButton, {}, rect.topLeft() + QPoint(20, -40));
    QCOMPARE(entry->getStart(), march(3, 10));
    QVERIFY(window.view->isSelectedEntry(entry));
    if (why == QLatin1String("locked")) {
        VelDrag data(makeEvent(QStringLiteral("x"), march(2, 9), march(2, 10)), 0);
        QVERIFY(!drop(window.day(3), &data, window.at(3, 14)));
    }
}

void VelDayViewTest::ownEntryShouldMoveWhereItIsDropped()
{
    Window window;
    const VelEntry *entry = window.add(march(3, 10), march(3, 12));
    VelDrag data(*entry, 0);
    window.app.isLocked = true; // by the drag itself
    window.app.setDraggedEntry(entry->localid);
    const QPoint pos = window.at(5, 14, 30);
    QDragEnterEvent enter(pos, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window.day(5), &enter);
    QDragMoveEvent move(pos, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window.day(5), &move);
    QVERIFY(window.day(5)->dragEntry());
    QCOMPARE(window.day(5)->dragEntry()->getStart(), march(5, 14, 30));
    QCOMPARE(window.day(5)->dragEntry()->getEnd(), march(5, 16, 30));
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(window.day(5), &leave);
    QVERIFY(!window.day(5)->dragEntry());
    QCOMPARE(entry->getStart(), march(3, 10));

    QVERIFY(drop(window.day(5), &data, pos));
    QCOMPARE(entry->getStart(), march(5, 14, 30));
    QCOMPARE(entry->getEnd(), march(5, 16, 30));
    QCOMPARE(entry->dirty, 1);
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(1));
    QVERIFY(window.app.fakeMessages.messages().empty());
}

void VelDayViewTest::foreignEntryShouldBeAskedAbout_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<VelDateTime>("start");
    QTest::newRow("here") << int(Answer::Yes) << march(4, 14);
    QTest::newRow("original dates") << int(Answer::No) << march(20, 9);
}

void VelDayViewTest::foreignEntryShouldBeAskedAbout()
{
    QFETCH(int, answer);
    QFETCH(VelDateTime, start);
    Window window;
    QSignalSpy dates(window.view, &VelView::setDateInternal);
    window.app.fakeMessages.orderAnswer(static_cast<Answer>(answer));
    VelEntry other = makeEvent(QStringLiteral("other"), march(20, 9), march(20, 10));
    other.localid = 1;
    other.globalid = 77;
    VelDrag data(other, 5);
    QVERIFY(drop(window.day(4), &data, window.at(4, 14)));
    QTRY_COMPARE(window.app.doc.getEntryCount(), std::size_t(1));
    const VelEntry *added = window.app.doc.getEntry(1);
    QCOMPARE(added->getStart(), start);
    QCOMPARE(added->getEnd(), start.addSecs(3600));
    QCOMPARE(added->globalid, 0U);
    QCOMPARE(dates.count(), answer == int(Answer::No) ? 1 : 0);
    const FakeMessages::Message asked = window.app.fakeMessages.last();
    QCOMPARE(asked.caption, QStringLiteral("Dropping new entry"));
    QCOMPARE(asked.yes, QStringLiteral("Drop to this position"));
    QCOMPARE(asked.no, QStringLiteral("Use original dates and times"));
    QCOMPARE(
        asked.text,
        QStringLiteral("Original event starts: 20 Mar 2026 09:00\nOriginal event ends: 20 Mar 2026 10:00\n"
                       "Do you want to drop this event to the selected position or use original start "
                       "and end date/time?"));
}

void VelDayViewTest::pasteShouldGoToTheSelectedTime_data()
{
    QTest::addColumn<bool>("notime");
    QTest::addColumn<bool>("cut");
    QTest::addColumn<bool>("mayPaste");
    QTest::addColumn<bool>("foreign"); // copied in the calendar of another user
    QTest::addColumn<bool>("locked");
    QTest::addColumn<VelDateTime>("start");
    QTest::newRow("copied") << false << false << true << false << false << march(5, 14);
    QTest::newRow("cut") << false << true << true << false << false << march(5, 14);
    QTest::newRow("without times") << true << false << true << false << false << march(5, 10);
    QTest::newRow("of another owner") << false << false << true << true << false << march(5, 14);
    QTest::newRow("nothing selected") << false << false << false << false << false << march(3, 10);
    QTest::newRow("may not be changed") << false << false << false << false << true << march(3, 10);
}

void VelDayViewTest::pasteShouldGoToTheSelectedTime()
{
    QFETCH(bool, notime);
    QFETCH(bool, cut);
    QFETCH(bool, mayPaste);
    QFETCH(bool, foreign);
    QFETCH(bool, locked);
    QFETCH(VelDateTime, start);
    Window window;
    const VelEntry *entry = window.add(march(3, 10), march(3, 12));
    const quint32 id = entry->localid;
    window.app.doc.changeEntry(id, [notime, foreign](VelEntry &changed) {
        changed.notime = notime;
        changed.globalid = 77;
        changed.user = foreign ? 99 : 0;
        VelAccount guest(QStringLiteral("Guest"), QString(), 7);
        guest.status = VelAccount::Accepted;
        changed.accounts.append(guest);
    });
    window.view->setSelectedEntry(entry, true);
    if (cut)
        window.view->cut();
    else
        window.view->copy();
    if (mayPaste || locked)
        window.view->setSelection(march(5, 14), march(5, 15), false, false);
    else
        window.view->clearSelection();
    window.app.isLocked = locked;
    QCOMPARE(window.view->mayPaste(), mayPaste);
    window.view->paste();
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(mayPaste && !cut ? 2 : 1));
    const VelEntry *pasted = window.app.doc.getEntry(mayPaste && !cut ? 2 : id);
    QCOMPARE(pasted->getStart(), start);
    QCOMPARE(pasted->getEnd(), start.addSecs(7200));
    QCOMPARE(pasted->globalid, mayPaste && !cut ? 0U : 77U);
    QCOMPARE(pasted->type, int(VelEntry::Event));
    QCOMPARE(pasted->user, window.app.doc.getUserId());
    QCOMPARE(pasted->getAccountStatus(7), foreign ? int(VelAccount::Unanswered) : int(VelAccount::Accepted));
}

void VelDayViewTest::doubleClickShouldOfferANewEntry()
{
    Window window;
    QTest::mouseDClick(window.day(4), Qt::LeftButton, {}, window.at(4, 13));
    auto *line = window.view->findChild<VelQuickEntry *>();
    QVERIFY(line);
    QTest::keyClicks(line, QStringLiteral("Lunch"));
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(1));
    const VelEntry *entry = window.app.doc.getEntry(1);
    QCOMPARE(entry->getTitle(), QStringLiteral("Lunch"));
    QCOMPARE(entry->getStart(), march(4, 13));
    QCOMPARE(entry->getEnd(), march(4, 13, 30));
    QCOMPARE(entry->dirty, 1);
    QVERIFY(window.view->isSelectedEntry(entry));
    QTRY_VERIFY(!window.view->findChild<VelQuickEntry *>());

    QTest::mouseDClick(window.day(4), Qt::LeftButton, {}, window.at(4, 17));
    line = window.view->findChild<VelQuickEntry *>();
    QTest::keyClicks(line, QStringLiteral("Never"));
    QTest::keyClick(line, Qt::Key_Escape);
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(1));
    window.app.isLocked = true;
    QTRY_VERIFY(!window.view->findChild<VelQuickEntry *>());
    QTest::mouseDClick(window.day(4), Qt::LeftButton, {}, window.at(4, 17));
    QVERIFY(!window.view->findChild<VelQuickEntry *>());
}

void VelDayViewTest::entriesWithoutTimesShouldStandAboveTheHours()
{
    Window window;
    for (int i = 0; i < 20; ++i)
        addTodo(window.app.doc, QStringLiteral("task"), QDate(2026, 3, 3));
    VelEntry task = makeTodo(QStringLiteral("long"), QDate(2026, 3, 2));
    task.setEnd(march(4));
    add(window.app.doc, task);
    window.view->updateView();
    QSignalSpy wanted(window.view, &VelDayView::dayWanted);
    const auto bandOf = [&](int march) {
        for (VelDayBand *band : window.view->findChildren<VelDayBand *>()) {
            if (band->isVisible() && band->date() == QDate(2026, 3, march))
                return band;
        }
        return static_cast<VelDayBand *>(nullptr);
    };
    QCOMPARE(window.day(3)->entryCount(), 0);
    VelDayBand *band = bandOf(3);
    QCOMPARE(band->entryCount(), 20);
    QVERIFY(band->hiddenCount() > 0);
    QCOMPARE(bandOf(2)->entryCount(), 0); // a task stands where it is due
    QCOMPARE(bandOf(4)->entryCount(), 1);
    QTest::mouseClick(band, Qt::LeftButton, {}, band->entry(1).rect().center());
    QCOMPARE(window.view->getSelectedEntry()->localid, band->entry(1).entry().getOriginal()->localid);
    QTest::mouseClick(band, Qt::LeftButton, {},
                      QPoint(band->width() / 2, band->height() - band->lineHeight() / 2));
    QCOMPARE(wanted.value(0).value(0).toDate(), QDate(2026, 3, 3));
    window.app.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window.app));
    window.view->setFocus();
    QTest::mouseClick(band, Qt::LeftButton, {}, band->entry(1).rect().center());
    for (int i = 2; i < 20; ++i) // the keyboard reaches those that have no line
        QTest::keyClick(window.view, Qt::Key_Down);
    QVERIFY(window.view->isSelectedEntry(band->entry(19).entry()));
    QVERIFY(band->entry(19).rect().isValid());
    QVERIFY(!band->entry(0).rect().isValid());
    const quint32 id = bandOf(4)->entry(0).entry().getOriginal()->localid;
    VelDrag data(*window.app.doc.getEntry(id), 0);
    window.app.setDraggedEntry(id);
    QVERIFY(drop(window.day(5), &data, window.at(5, 14)));
    QCOMPARE(window.app.doc.getEntry(id)->getEnd(), march(5)); // due on that day, but still at no time
    QCOMPARE(window.app.doc.getEntry(id)->getStart(), march(3));
}

void VelDayViewTest::keysShouldMoveSlotAndSelection()
{
    Window window;
    const VelEntry *first = window.add(march(2, 10), march(2, 11));
    const VelEntry *second = window.add(march(4, 9), march(5, 11));
    const VelEntry *third = window.add(march(5, 12), march(5, 13));
    QSignalSpy next(window.view, &VelDayView::nextWanted);
    window.app.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window.app));
    window.view->setFocus();
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window.view, key, modifiers);
    };
    press(Qt::Key_Down);
    QCOMPARE(window.view->getSelectionStart(), march(2, 9)); // where work begins today
    press(Qt::Key_Down);
    press(Qt::Key_Right);
    press(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(window.view->getSelectionStart(), march(3, 9, 30));
    QCOMPARE(window.view->getSelectionEnd(), march(3, 10, 30));
    press(Qt::Key_Tab);
    QVERIFY(window.view->isSelectedEntry(second));
    QVERIFY(!window.view->hasSelection());
    press(Qt::Key_Tab);
    QVERIFY(window.view->isSelectedEntry(third)); // the second goes on there, and is not met again
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    QVERIFY(window.view->isSelectedEntry(first));
    press(Qt::Key_Right);
    QVERIFY(window.view->isSelectedEntry(second));
    press(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(second->getStart(), march(4, 9, 30));
    press(Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(second->getEnd(), march(4, 11, 30));
    QVERIFY(window.view->isSelectedEntry(second));
    press(Qt::Key_Escape);
    QVERIFY(!window.view->hasSelectedEntry());
    window.view->setSelection(march(6, 9), march(6, 10), false, false);
    press(Qt::Key_Right);
    QCOMPARE(next.count(), 1);
    window.view->setSelection(march(2, 9), march(2, 10), false, false);
    QVERIFY(window.view->hasFocus());
    window.view->hide();
    QVERIFY(!window.view->hasSelectedEntry());
}

void VelDayViewTest::columnShouldBeReadable()
{
    Window window;
    VelEntry entry = makeEvent(QStringLiteral("Budget"), march(2, 10), march(2, 11));
    entry.access = VelEntry::Private;
    entry.reminder = 10;
    entry.rule = dailyRule(1, 2);
    add(window.app.doc, entry);
    window.view->updateView();
    QAccessibleInterface *column = QAccessible::queryAccessibleInterface(window.day(3));
    QCOMPARE(column->role(), QAccessible::List);
    QCOMPARE(column->text(QAccessible::Name), QStringLiteral("Tuesday, 3 March 2026, 1 entry"));
    QCOMPARE(column->childCount(), 1);
    QAccessibleInterface *child = column->child(0);
    QCOMPARE(child->text(QAccessible::Name),
             QStringLiteral(
                 "Budget, Tuesday, 3 March 2026, 10:00 to 11:00, private, recurring, reminder 10 minutes"));
    QCOMPARE(child->rect().size(), window.day(3)->entry(0).rect().size());
    QCOMPARE(column->childAt(child->rect().center().x(), child->rect().center().y()), child);
    QCOMPARE(column->indexOfChild(child), 0);
    QVERIFY(!child->state().selected);
    window.view->setSelectedEntry(window.day(3)->entry(0).entry().getEntry(), true);
    QVERIFY(child->state().selected);
    QCOMPARE(column->focusChild(), child);
}

QTEST_MAIN(VelDayViewTest)

#include "veldayviewtest.moc"

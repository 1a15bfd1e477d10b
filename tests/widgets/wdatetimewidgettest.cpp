// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wdatetimewidget.h"
#include "widgets/wdateinput.h"
#include "widgets/wdatepickerframe.h"
#include "widgets/wtimeinput.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCalendarWidget>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace
{
/** A wall clock time that the local clocks skip. */
const QDateTime Start(QDate(2026, 3, 29), QTime(3, 30), Qt::UTC);

void type(QComboBox *input, const QString &text)
{
    input->setFocus();
    input->lineEdit()->selectAll();
    QTest::keyClick(input, Qt::Key_Delete);
    QTest::keyClicks(input, text);
}
} // namespace

class WDateTimeWidgetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldTakeTypedTextWhenComplete_data();
    void shouldTakeTypedTextWhenComplete();
    void unreadableTextShouldWaitForItsCorrection();
    void timeShouldStepAndComeFromTheList();
    void shouldTellOfChangesOnce();
    void shouldAskForTimesAlone();
    void shouldKeepTheTimeThatItHides();
    void shouldTakeADayFromTheCalendar();
    void calendarShouldGoWithItsInput();
    void shouldPlaceTheCalendarOnTheScreen();

private:
    void takeTypedText(int way);
};

void WDateTimeWidgetTest::shouldTakeTypedTextWhenComplete_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("isTime");
    QTest::addColumn<QString>("shown"); // or nothing for what cannot be read
    QTest::newRow("a day") << "5.11.2031" << false << "05.11.2031";
    QTest::newRow("a day of the clock") << "tomorrow" << false << "02.01.2030";
    QTest::newRow("half a day") << "05.1" << false << "05.01.2026";
    QTest::newRow("a day that no month has") << "31.02.2026" << false << "";
    QTest::newRow("no day") << "" << false << "";
    QTest::newRow("a time") << "230pm" << true << "14:30";
    QTest::newRow("the same time") << "3.30" << true << "03:30";
    QTest::newRow("an impossible time") << "25:99" << true << "";
}

void WDateTimeWidgetTest::shouldTakeTypedTextWhenComplete()
{
    for (int way = 0; way < 3; ++way) // to be done with an input
        takeTypedText(way);
}

void WDateTimeWidgetTest::takeTypedText(int way)
{
    QFETCH(QString, typed);
    QFETCH(bool, isTime);
    QFETCH(QString, shown);
    QWidget window;
    QLineEdit other(&window);
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime, &window);
    window.setLocale(QLocale(QLocale::German));
    input.setClock([] { return QDate(2030, 1, 1); });
    input.setDateTime(Start.addSecs(59));
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy changes(&input, &WDateTimeWidget::dateChanged);
    WTypedInput *place = input.findChild<WDateInput *>();
    WTypedInput *untouched = input.findChild<WTimeInput *>();
    if (isTime)
        std::swap(place, untouched);
    type(place, typed);
    QCOMPARE(changes.count(), 0);
    if (way == 0)
        QTest::keyClick(place, Qt::Key_Return);
    else if (way == 1)
        other.setFocus();
    const bool isRead = !shown.isEmpty();
    QCOMPARE(input.finishInput(), isRead);
    QCOMPARE(place->currentText(), isRead ? shown : typed);
    QCOMPARE(untouched->currentText(), QLatin1String(isTime ? "29.03.2026" : "03:30"));
    const QString value =
        QLocale(QLocale::German).toString(input.getDateTime(), QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    QVERIFY(value.contains(isRead ? shown : QStringLiteral("29.03.2026 03:30:00")));
    QCOMPARE(changes.count(), isRead && input.getDateTime() != Start ? 1 : 0);
    QCOMPARE(place->lineEdit()->palette().color(QPalette::Text) == input.palette().color(QPalette::Text),
             isRead);
    const auto *label = input.findChild<QLabel *>();
    QCOMPARE(label && label->isVisible() && !label->text().isEmpty(), !isRead);
}

void WDateTimeWidgetTest::unreadableTextShouldWaitForItsCorrection()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime);
    input.setLocale(QLocale(QLocale::German));
    input.setDateTime(Start);
    input.show();
    QVERIFY(QTest::qWaitForWindowActive(&input));
    auto *time = input.findChild<WTimeInput *>();
    type(time, QStringLiteral("9:99"));
    input.moveTo(Start.addDays(1)); // another input moves it meanwhile
    QTest::keyClick(time, Qt::Key_Up);
    QTest::keyClick(time, Qt::Key_F4); // the list fills without showing its first time
    time->hidePopup();
    QCOMPARE(time->currentText(), QStringLiteral("9:99"));
    QVERIFY(!input.getProblem().isEmpty() && input.getDateTime() == Start.addDays(1));
    input.hideTime();
    QVERIFY(input.finishInput());
    input.hideTime(false);
    QVERIFY(!input.finishInput());
    QTest::keyClick(time, Qt::Key_Backspace);
    QVERIFY(input.getProblem().isEmpty() && !input.findChild<QLabel *>()->isVisible()); // "9:9" as it stands
    QTest::keyClicks(time, QStringLiteral("x"));
    QVERIFY(!input.finishInput());
    input.setDateTime(Start);
    QVERIFY(input.finishInput() && time->currentText() == QLatin1String("03:30"));
}

void WDateTimeWidgetTest::timeShouldStepAndComeFromTheList()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::Time);
    input.setLocale(QLocale::c());
    input.show();
    auto *time = input.findChild<WTimeInput *>();
    QCOMPARE(time->currentText(), QStringLiteral("00:00"));
    type(time, QStringLiteral("907"));
    QTest::keyClick(time, Qt::Key_Up);
    QCOMPARE(input.getTime(), QTime(9, 22));
    QTest::keyClick(time, Qt::Key_PageDown);
    QTest::keyClick(time, Qt::Key_Down);
    QCOMPARE(input.getTime(), QTime(8, 7));
    QTest::keyClick(time, Qt::Key_F4);
    QTest::keyClick(time->view(), Qt::Key_Down);
    QTest::keyClick(time->view(), Qt::Key_Return);
    QCOMPARE(input.getTime(), QTime(8, 15));
    QCOMPARE(time->currentText(), QStringLiteral("08:15"));
}

void WDateTimeWidgetTest::shouldTellOfChangesOnce()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::Date);
    QSignalSpy changes(&input, &WDateTimeWidget::dateChanged);
    for (const QDateTime &value : {Start, Start.addSecs(60), QDateTime()})
        input.setDateTime(value);
    QTest::keyClick(input.findChild<WDateInput *>(), Qt::Key_Up);
    const QDateTime midnight(Start.date(), QTime(0, 0), Qt::UTC);
    QCOMPARE(input.getDateTime(), midnight.addDays(1));
    QCOMPARE(changes.count(), 2);
    QCOMPARE(changes.at(1), QVariantList({midnight, midnight.addDays(1)}));
}

void WDateTimeWidgetTest::shouldAskForTimesAlone()
{
    QWidget window;
    WDateTimeWidget input(WDateTimeWidget::Kind::Time, &window);
    QSignalSpy changes(&input, &WDateTimeWidget::dateChanged);
    input.setDateTime(Start);
    input.setTime(QTime());
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(!input.findChild<WDateInput *>()->isVisible());
    input.setFocus();
    auto *time = qobject_cast<WTimeInput *>(window.focusWidget());
    QVERIFY(time);
    time->lineEdit()->selectAll();
    QTest::keyClicks(time, QLocale().toString(QTime(17, 5), QLocale::ShortFormat));
    QTest::keyClick(time, Qt::Key_Return);
    const QDateTime afternoon(Start.date(), QTime(17, 5), Qt::UTC);
    QCOMPARE(input.getDateTime(), afternoon);
    QCOMPARE(changes.value(1), QVariantList({Start, afternoon}));
}

void WDateTimeWidgetTest::shouldKeepTheTimeThatItHides()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime);
    input.setDateTime(Start);
    input.show();
    const auto *time = input.findChild<WTimeInput *>();
    QVERIFY(time->isVisible());
    input.hideTime(true);
    QVERIFY(!time->isVisible());
    QTest::keyClick(input.findChild<WDateInput *>(), Qt::Key_Up);
    input.hideTime(false);
    QVERIFY(time->isVisible());
    QCOMPARE(input.getDateTime(), Start.addDays(1));
    QCOMPARE(time->getTime(), Start.time());
}

void WDateTimeWidgetTest::shouldTakeADayFromTheCalendar()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime);
    input.setDateTime(Start);
    input.show();
    for (const auto &[key, expected] :
         {std::pair(Qt::Key_Escape, Start), std::pair(Qt::Key_Return, Start.addDays(7))}) {
        QTest::keyClick(input.findChild<WDateInput *>(), Qt::Key_F4);
        const auto *frame = input.findChild<WDatePickerFrame *>();
        QVERIFY(frame->isVisible());
        QWidget *focused = frame->focusWidget();
        QTest::keyClick(focused, Qt::Key_Down);
        QTest::keyClick(focused, key);
        QVERIFY(!frame->isVisible());
        QCOMPARE(input.getDateTime(), expected);
    }
}

void WDateTimeWidgetTest::calendarShouldGoWithItsInput()
{
    for (const bool isHidden : {false, true}) {
        WDateTimeWidget input(WDateTimeWidget::Kind::Date);
        input.show();
        QTest::keyClick(input.findChild<WDateInput *>(), Qt::Key_F4);
        const auto *frame = input.findChild<WDatePickerFrame *>();
        QVERIFY(frame->isVisible());
        if (isHidden)
            input.hide();
        else
            input.setEnabled(false);
        QVERIFY(!frame->isVisible());
    }
}

void WDateTimeWidgetTest::shouldPlaceTheCalendarOnTheScreen()
{
    const auto place = [](int x, int y, Qt::LayoutDirection direction) {
        return WDatePickerFrame::placeFor({200, 150}, {x, y, 100, 20}, {1000, 0, 800, 500}, direction);
    };
    QCOMPARE(place(1200, 50, Qt::LeftToRight), QPoint(1200, 70));
    QCOMPARE(place(1200, 50, Qt::RightToLeft), QPoint(1100, 70));
    QCOMPARE(place(1200, 400, Qt::LeftToRight), QPoint(1200, 250)); // no room below
    QCOMPARE(place(1010, 50, Qt::RightToLeft), QPoint(1000, 70));
    QCOMPARE(place(1700, 50, Qt::LeftToRight), QPoint(1600, 70));
}

QTEST_MAIN(WDateTimeWidgetTest)

#include "wdatetimewidgettest.moc"

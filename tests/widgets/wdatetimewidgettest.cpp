// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wdatetimewidget.h"
#include "widgets/wdatepickerframe.h"

#include <KDateComboBox>
#include <KTimeComboBox>

#include <QCalendarWidget>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace
{
/** A wall clock time that the local clocks skip. */
const QDateTime Start(QDate(2026, 3, 29), QTime(3, 30), Qt::UTC);
const char StartText[] = "29.03.2026 03:30:00";
} // namespace

class WDateTimeWidgetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldTakeTypedTextWhenComplete_data();
    void shouldTakeTypedTextWhenComplete();
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
    QTest::addColumn<QString>("expected");
    QTest::newRow("a day") << "05.11.2031" << QStringLiteral("05.11.2031 03:30:00");
    QTest::newRow("half a day") << "05.1" << StartText;
    QTest::newRow("a day that no month has") << "31.02.2026" << StartText;
    QTest::newRow("no day") << "" << StartText;
    QTest::newRow("a time") << "23:17" << QStringLiteral("29.03.2026 23:17:00");
    QTest::newRow("an impossible time") << "25:00" << StartText;
}

void WDateTimeWidgetTest::shouldTakeTypedTextWhenComplete()
{
    for (int way = 0; way < 3; ++way) // to be done with an input
        takeTypedText(way);
}

void WDateTimeWidgetTest::takeTypedText(int way)
{
    QFETCH(QString, typed);
    QFETCH(QString, expected);
    QWidget window;
    QLineEdit other(&window);
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime, &window);
    window.setLocale(QLocale(QLocale::German));
    input.setDateTime(Start.addSecs(59));
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy changes(&input, &WDateTimeWidget::dateChanged);
    QComboBox *day = input.findChild<KDateComboBox *>();
    QComboBox *time = input.findChild<KTimeComboBox *>();
    const bool asTime = typed.contains(QLatin1Char(':'));
    QComboBox *place = asTime ? time : day;
    place->setFocus();
    place->lineEdit()->selectAll();
    QTest::keyClick(place, Qt::Key_Delete);
    QTest::keyClicks(place, typed);
    QCOMPARE(changes.count(), 0);
    if (way == 0)
        QTest::keyClick(place, Qt::Key_Return);
    else if (way == 1)
        other.setFocus();
    else
        input.finishInput();
    QCOMPARE(day->currentText() + QLatin1Char(' ') + time->currentText() + QLatin1String(":00"), expected);
    QCOMPARE(input.getDateTime().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")), expected);
    QCOMPARE(changes.count(), expected == QLatin1String(StartText) ? 0 : 1);
}

void WDateTimeWidgetTest::shouldTellOfChangesOnce()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::Date);
    QSignalSpy changes(&input, &WDateTimeWidget::dateChanged);
    for (const QDateTime &value : {Start, Start.addSecs(60), QDateTime()})
        input.setDateTime(value);
    QTest::keyClick(input.findChild<KDateComboBox *>(), Qt::Key_Up);
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
    QVERIFY(!input.findChild<KDateComboBox *>()->isVisible());
    input.setFocus();
    auto *time = qobject_cast<KTimeComboBox *>(window.focusWidget());
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
    const auto *time = input.findChild<KTimeComboBox *>();
    QVERIFY(time->isVisible());
    input.hideTime(true);
    QVERIFY(!time->isVisible());
    QTest::keyClick(input.findChild<KDateComboBox *>(), Qt::Key_Up);
    input.hideTime(false);
    QVERIFY(time->isVisible());
    QCOMPARE(input.getDateTime(), Start.addDays(1));
    QCOMPARE(time->time(), Start.time());
}

void WDateTimeWidgetTest::shouldTakeADayFromTheCalendar()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime);
    input.setDateTime(Start);
    input.show();
    for (const auto &[key, expected] :
         {std::pair(Qt::Key_Escape, Start), std::pair(Qt::Key_Return, Start.addDays(7))}) {
        QTest::keyClick(input.findChild<KDateComboBox *>(), Qt::Key_F4);
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
        QTest::keyClick(input.findChild<KDateComboBox *>(), Qt::Key_F4);
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

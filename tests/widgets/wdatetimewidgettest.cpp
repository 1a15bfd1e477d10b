// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wdatetimewidget.h"

#include <KDateComboBox>
#include <KTimeComboBox>

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace
{
const QDate Day(2026, 3, 28);
const QTime Time(14, 5);

/** A window with the input and another one to move the focus to. */
struct Form {
    explicit Form(WDateTimeWidget::Kind kind)
        : input(new WDateTimeWidget(kind, &window))
        , other(new QLineEdit(&window))
    {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(input);
        layout->addWidget(other);
        window.setLocale(QLocale(QLocale::German));
        input->setDateTime(QDateTime(Day, Time, Qt::UTC));
        window.show();
        window.activateWindow();
    }

    [[nodiscard]] KDateComboBox *dateInput() const { return input->findChild<KDateComboBox *>(); }
    [[nodiscard]] KTimeComboBox *timeInput() const { return input->findChild<KTimeComboBox *>(); }

    static void type(QComboBox *where, const QString &text)
    {
        where->setFocus();
        where->lineEdit()->selectAll();
        QTest::keyClick(where, Qt::Key_Delete);
        QTest::keyClicks(where, text);
    }

    QWidget window;
    WDateTimeWidget *input;
    QLineEdit *other;
};
} // namespace

class WDateTimeWidgetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldWriteLocaleFormatWithFullYear_data();
    void shouldWriteLocaleFormatWithFullYear();
    void shouldTakeTypedDayWhenComplete_data();
    void shouldTakeTypedDayWhenComplete();
    void shouldTakeTypedTimeWhenComplete_data();
    void shouldTakeTypedTimeWhenComplete();
    void shouldStepWithArrowsAndWheel();
    void shouldTellOfChangesOnly();
    void shouldKeepValueWhenGivenInvalidOne();
    void shouldKeepWallClockWhereLocalClocksSkipAnHour();
    void shouldKeepDayWhenNoneIsChosen();
    void shouldPassFocusToDay();
};

void WDateTimeWidgetTest::shouldWriteLocaleFormatWithFullYear_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("German") << QLocale(QLocale::German);
    QTest::newRow("American") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("Swedish") << QLocale(QLocale::Swedish);
    QTest::newRow("Japanese") << QLocale(QLocale::Japanese);
}

void WDateTimeWidgetTest::shouldWriteLocaleFormatWithFullYear()
{
    QFETCH(QLocale, locale);
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime);
    input.setLocale(locale);
    input.setDateTime(QDateTime(Day, Time, Qt::UTC));
    const QString date = input.findChild<KDateComboBox *>()->currentText();
    QVERIFY2(date.contains(QLatin1String("2026")), qPrintable(date));
    QCOMPARE(input.findChild<KTimeComboBox *>()->currentText(), locale.toString(Time, QLocale::ShortFormat));
}

void WDateTimeWidgetTest::shouldTakeTypedDayWhenComplete_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("withReturn");
    QTest::addColumn<QDate>("expected");
    for (const bool withReturn : {false, true}) {
        const char *how = withReturn ? "with Return" : "when left";
        QTest::addRow("a day, %s", how) << "05.11.2031" << withReturn << QDate(2031, 11, 5);
        QTest::addRow("the same day, %s", how) << "28.3.2026" << withReturn << Day;
        QTest::addRow("half a day, %s", how) << "05.1" << withReturn << Day;
        QTest::addRow("a day that no month has, %s", how) << "31.02.2026" << withReturn << Day;
        QTest::addRow("no day, %s", how) << "nonsense" << withReturn << Day;
        QTest::addRow("nothing, %s", how) << "" << withReturn << Day;
    }
}

void WDateTimeWidgetTest::shouldTakeTypedDayWhenComplete()
{
    QFETCH(QString, typed);
    QFETCH(bool, withReturn);
    QFETCH(QDate, expected);
    Form form(WDateTimeWidget::Kind::Date);
    QVERIFY(QTest::qWaitForWindowActive(&form.window));
    QSignalSpy changes(form.input, &WDateTimeWidget::dateChanged);
    Form::type(form.dateInput(), typed);
    QCOMPARE(changes.count(), 0);
    if (withReturn) {
        QTest::keyClick(form.dateInput(), Qt::Key_Return);
    } else {
        form.other->setFocus();
    }
    QCOMPARE(form.input->date(), expected);
    QCOMPARE(form.dateInput()->currentText(), expected.toString(QStringLiteral("dd.MM.yyyy")));
    QCOMPARE(changes.count(), expected == Day ? 0 : 1);
}

void WDateTimeWidgetTest::shouldTakeTypedTimeWhenComplete_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QTime>("expected");
    QTest::newRow("a time") << "23:17" << QTime(23, 17);
    QTest::newRow("no time") << "25:00" << Time;
    QTest::newRow("nothing") << "" << Time;
}

void WDateTimeWidgetTest::shouldTakeTypedTimeWhenComplete()
{
    QFETCH(QString, typed);
    QFETCH(QTime, expected);
    Form form(WDateTimeWidget::Kind::DateTime);
    QVERIFY(QTest::qWaitForWindowActive(&form.window));
    QSignalSpy days(form.input, &WDateTimeWidget::dateChanged);
    QSignalSpy changes(form.input, &WDateTimeWidget::dateTimeChanged);
    Form::type(form.timeInput(), typed);
    form.other->setFocus();
    QCOMPARE(form.input->dateTime(), QDateTime(Day, expected, Qt::UTC));
    QCOMPARE(form.timeInput()->currentText(), expected.toString(QStringLiteral("HH:mm")));
    QCOMPARE(changes.count(), expected == Time ? 0 : 1);
    QCOMPARE(days.count(), 0);
}

void WDateTimeWidgetTest::shouldStepWithArrowsAndWheel()
{
    Form form(WDateTimeWidget::Kind::Date);
    QSignalSpy changes(form.input, &WDateTimeWidget::dateChanged);
    QTest::keyClick(form.dateInput(), Qt::Key_Up);
    QCOMPARE(form.input->date(), Day.addDays(1));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().first().toDate(), Day.addDays(1));
    const QPoint pos = form.dateInput()->rect().center();
    QWheelEvent wheel(pos, form.dateInput()->mapToGlobal(pos), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(form.dateInput(), &wheel);
    QCOMPARE(form.input->date(), Day);
    QCOMPARE(changes.count(), 2);
}

void WDateTimeWidgetTest::shouldTellOfChangesOnly()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::Date);
    QSignalSpy days(&input, &WDateTimeWidget::dateChanged);
    QSignalSpy changes(&input, &WDateTimeWidget::dateTimeChanged);
    input.setDate(Day);
    input.setDate(Day);
    input.setDateTime(QDateTime(Day, Time, Qt::UTC));
    QCOMPARE(days.count(), 1);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(input.dateTime(), QDateTime(Day, QTime(0, 0), Qt::UTC));
    input.blockSignals(true);
    input.setDate(Day.addDays(1));
    QCOMPARE(days.count(), 1);
}

void WDateTimeWidgetTest::shouldKeepValueWhenGivenInvalidOne()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime);
    const QDateTime value(Day, Time, Qt::UTC);
    input.setDateTime(value);
    input.setDate(QDate());
    input.setDateTime(QDateTime());
    QCOMPARE(input.dateTime(), value);
}

void WDateTimeWidgetTest::shouldKeepWallClockWhereLocalClocksSkipAnHour()
{
    WDateTimeWidget input(WDateTimeWidget::Kind::DateTime);
    input.setDateTime(QDateTime(QDate(2026, 3, 29), QTime(3, 30, 59), Qt::UTC));
    QCOMPARE(input.dateTime(), QDateTime(QDate(2026, 3, 29), QTime(3, 30), Qt::UTC));
    QCOMPARE(input.dateTime().timeSpec(), Qt::UTC);
    QCOMPARE(input.findChild<KTimeComboBox *>()->time(), QTime(3, 30));
}

void WDateTimeWidgetTest::shouldKeepDayWhenNoneIsChosen()
{
    Form form(WDateTimeWidget::Kind::Date);
    QSignalSpy changes(form.input, &WDateTimeWidget::dateChanged);
    form.dateInput()->setDate(QDate());
    Q_EMIT form.dateInput()->dateEntered(QDate());
    QCOMPARE(form.input->date(), Day);
    QCOMPARE(form.dateInput()->date(), Day);
    QCOMPARE(changes.count(), 0);
}

void WDateTimeWidgetTest::shouldPassFocusToDay()
{
    Form form(WDateTimeWidget::Kind::DateTime);
    QVERIFY(QTest::qWaitForWindowActive(&form.window));
    form.other->setFocus();
    form.input->setFocus();
    QVERIFY(form.dateInput()->hasFocus());
}

QTEST_MAIN(WDateTimeWidgetTest)

#include "wdatetimewidgettest.moc"

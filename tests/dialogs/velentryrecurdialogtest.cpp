// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentryrecurdialog.h"
#include "dialogs/velreminderwidget.h"

#include <KMessageWidget>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>

Q_DECLARE_METATYPE(VelRecurrenceRule)

namespace
{
using Rule = VelRecurrenceRule;

/** A Monday, the first of its month. */
const QDate Start(2026, 3, 2);

/** The button, or what else has a text, that says that (mnemonics aside). */
template <class Widget>
Widget *findText(const QWidget &window, const char *text)
{
    for (Widget *widget : window.findChildren<Widget *>()) {
        if (widget->text().remove(QLatin1Char('&')) == QLatin1String(text))
            return widget;
    }
    return nullptr;
}

/** The choice that begins with that item. */
QComboBox *findCombo(const QWidget &window, const char *first)
{
    for (QComboBox *combo : window.findChildren<QComboBox *>()) {
        if (combo->itemText(0) == QLatin1String(first))
            return combo;
    }
    return nullptr;
}

/** The texts that stand in the dialog for the user to see. */
QString shownTexts(const QWidget &window)
{
    QString texts;
    for (const QLabel *label : window.findChildren<QLabel *>())
        texts += label->isVisible() ? label->text() : QString();
    return texts;
}
} // namespace

class VelEntryRecurDialogTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // Where weeks begin on Sunday that day comes first among the controls, and still last in the rule.
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
    void shouldShowEveryRuleAndGiveItBack_data();
    void shouldShowEveryRuleAndGiveItBack();
    void shouldMakeRulesOfControls();
    void shouldRefuseRulesThatCannotBeFollowed();
    void shouldGoBackOnCancel();
    void shouldNameTheNextDates();
    void shouldLeadTheKeyboardDownwards();
    void shouldConvertReminders_data();
    void shouldConvertReminders();
};

void VelEntryRecurDialogTest::shouldShowEveryRuleAndGiveItBack_data()
{
    QTest::addColumn<Rule>("rule");
    QTest::addColumn<Rule>("expected");
    const auto same = [](const char *name, const Rule &rule) { QTest::newRow(name) << rule << rule; };
    const auto other = [](const char *name, const Rule &rule, const Rule &expected) {
        QTest::newRow(name) << rule << expected;
    };
    const QDate end(2026, 12, 24);
    same("every day", {Rule::Daily, 1, {}, 0, {}, 0});
    same("more days than the arrows reach", {Rule::Daily, 4711, {}, 0, {}, 12345});
    same("every other week", {Rule::Weekly, 2, {1, 4, 7}, 0, end, 0});
    same("a day of the month", {Rule::Monthly, 3, {31}, 0, {}, 1});
    for (int ordinal = 1; ordinal <= 4; ++ordinal)
        same(qPrintable(QString::number(ordinal)), {Rule::Monthly, 1, {ordinal + 1}, ordinal, end, 0});
    same("the last Sunday", {Rule::Monthly, 1, {7}, -1, {}, 0});
    same("every year", {Rule::Yearly, 1, {}, 0, {}, 3});
    other("no rule", {}, {Rule::Daily, 1, {}, 0, {}, 0});
    other("an unknown rule", {5, 7, {3}, 1, end, 2}, {Rule::Daily, 1, {}, 0, {}, 0});
    other("days that a daily rule does not need", {Rule::Daily, 1, {3}, 2, {}, 0}, {1, 1, {}, 0, {}, 0});
    other("weekdays in disorder", {Rule::Weekly, 1, {7, 9, 2}, 4, {}, 0}, {2, 1, {2, 7}, 0, {}, 0});
    other("no weekday", {Rule::Weekly, 1, {}, 0, {}, 0}, {2, 1, {1}, 0, {}, 0});
    other("no day of the month", {Rule::Monthly, 1, {}, 0, {}, 0}, {3, 1, {2}, 0, {}, 0});
    other("no weekday of the month", {Rule::Monthly, 1, {8}, 2, {}, 0}, {3, 1, {1}, 2, {}, 0});
    other("the fifth is the last", {Rule::Monthly, 1, {2}, 5, {}, 0}, {3, 1, {2}, -1, {}, 0});
    other("two ends, no interval", {Rule::Daily, 0, {}, 0, end, 4}, {1, 1, {}, 0, {}, 4});
}

void VelEntryRecurDialogTest::shouldShowEveryRuleAndGiveItBack()
{
    QFETCH(Rule, rule);
    QFETCH(Rule, expected);
    VelEntryRecurDialog dialog(Start, nullptr);
    dialog.setRule({Rule::Monthly, 9, {2}, 3, Start, 0}, Start.addDays(4)); // Nothing of it may stay.
    dialog.setRule(rule, Start);
    QCOMPARE(dialog.getRule().occurdays, expected.occurdays);
    QVERIFY(dialog.getRule() == expected);
    QCOMPARE(findText<QRadioButton>(dialog, "Never")->isChecked(),
             expected.occurendcount == 0 && expected.occurenddate.isNull());
    QCOMPARE(findText<QRadioButton>(dialog, "Repeat")->isChecked(), expected.occurendcount > 0);
    QCOMPARE(findText<QRadioButton>(dialog, "End date")->isChecked(), expected.occurenddate.isValid());
}

void VelEntryRecurDialogTest::shouldMakeRulesOfControls()
{
    VelEntryRecurDialog dialog(Start, nullptr);
    dialog.show();
    findCombo(dialog, "day(s)")->setCurrentIndex(2);
    findText<QRadioButton>(dialog, "weekday of the month")->click();
    findCombo(dialog, "First")->setCurrentIndex(4);
    findText<QRadioButton>(dialog, "Repeat")->click();
    QVERIFY(findCombo(dialog, "First")->isVisible());
    QVERIFY(!findText<QCheckBox>(dialog, "Tue")->isVisible());
    QVERIFY((dialog.getRule() == Rule{Rule::Monthly, 1, {1}, -1, {}, 10}));
    findCombo(dialog, "day(s)")->setCurrentIndex(1);
    findText<QCheckBox>(dialog, "Tue")->click();
    findText<QRadioButton>(dialog, "End date")->click();
    QVERIFY((dialog.getRule() == Rule{Rule::Weekly, 1, {1, 2}, 0, Start.addYears(1), 0}));
}

void VelEntryRecurDialogTest::shouldRefuseRulesThatCannotBeFollowed()
{
    VelEntryRecurDialog dialog(Start, nullptr);
    const auto *ok = dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    const auto *problem = dialog.findChild<KMessageWidget *>();
    dialog.setRule({Rule::Weekly, 1, {1}, 0, {}, 0}, Start);
    dialog.show();
    QVERIFY(ok->isEnabled() && !problem->isVisible());
    findText<QCheckBox>(dialog, "Mon")->click();
    QVERIFY(!ok->isEnabled() && problem->isVisible());
    dialog.accept();
    QVERIFY(dialog.isVisible());
    dialog.setRule({Rule::Daily, 1, {}, 0, Start.addDays(-1), 0}, Start);
    QVERIFY(!ok->isEnabled() && problem->isVisible());
    findText<QRadioButton>(dialog, "Never")->click();
    QVERIFY(ok->isEnabled() && !problem->isVisible());
}

void VelEntryRecurDialogTest::shouldGoBackOnCancel()
{
    VelEntryRecurDialog dialog(Start, nullptr);
    dialog.setRule({Rule::Weekly, 2, {1, 3}, 0, {}, 0}, Start);
    findText<QCheckBox>(dialog, "Sun")->click();
    dialog.reject();
    QCOMPARE(dialog.getRule().occurdays, QVector<int>({1, 3}));
    findText<QCheckBox>(dialog, "Sun")->click();
    dialog.accept();
    findText<QCheckBox>(dialog, "Mon")->click();
    dialog.reject();
    QCOMPARE(dialog.getRule().occurdays, QVector<int>({1, 3, 7}));
}

void VelEntryRecurDialogTest::shouldNameTheNextDates()
{
    VelEntryRecurDialog dialog(Start.addDays(10), nullptr);
    const Rule rule{Rule::Daily, 7, {}, 0, {}, 4};
    dialog.setRule(rule, Start);
    dialog.show();
    QVERIFY(shownTexts(dialog).contains(rule.getRecurrenceText(Start)));
    const VelNextDates next(rule, Start, Start.addDays(10));
    QCOMPARE(next.dates, QVector<QDate>({Start.addDays(14), Start.addDays(21)}));
    QVERIFY(VelNextDates({Rule::Daily, 1, {}, 0, {}, 7}, Start, Start).isMore);
    QVERIFY(!VelNextDates({Rule::Daily, 1, {}, 0, {}, 6}, Start, Start).isMore);
    QVERIFY(shownTexts(dialog).contains(QStringLiteral("Next dates: Mon\u00a0")));
    dialog.setRule({Rule::Daily, 7, {}, 0, {}, 1}, Start);
    QVERIFY(shownTexts(dialog).contains(QStringLiteral("no further dates")));
}

void VelEntryRecurDialogTest::shouldLeadTheKeyboardDownwards()
{
    VelEntryRecurDialog dialog(Start, nullptr);
    dialog.setRule({Rule::Monthly, 1, {2}, 2, Start.addDays(1), 0}, Start);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    const QWidget *first = dialog.focusWidget();
    QPoint last;
    int stops = 0;
    do {
        const QWidget *stop = dialog.focusWidget();
        const QPoint place = stop->mapTo(&dialog, stop->rect().center());
        QVERIFY(place.y() >= last.y() + stop->height() / 2 || place.x() > last.x());
        QVERIFY(place.y() > last.y() - stop->height() / 2);
        last = place;
        ++stops;
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    } while (dialog.focusWidget() != first);
    QCOMPARE(stops, 9); // Two of the frequency, three of the month, two of the end, two buttons.
}

void VelEntryRecurDialogTest::shouldConvertReminders_data()
{
    QTest::addColumn<quint32>("minutes");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none") << 0U << QStringLiteral("1 minutes");
    QTest::newRow("90") << 90U << QStringLiteral("90 minutes");
    QTest::newRow("120") << 120U << QStringLiteral("2 hours");
    QTest::newRow("1440") << 1440U << QStringLiteral("1 days");
    QTest::newRow("too many") << 0xffffffffU << QStringLiteral("32000 minutes");
}

void VelEntryRecurDialogTest::shouldConvertReminders()
{
    QFETCH(quint32, minutes);
    VelReminderWidget always(nullptr, false);
    always.setReminder(minutes);
    QCOMPARE(always.getReminder(), qBound(1U, minutes, 32000U));
    VelReminderWidget input(nullptr, true);
    input.setReminder(minutes);
    const auto *value = input.findChild<QSpinBox *>();
    const auto *unit = input.findChild<QComboBox *>();
    QTEST(QString(value->text() + QLatin1Char(' ') + unit->currentText()), "shown");
    QCOMPARE(input.getReminder(), qMin(minutes, 32000U));
    QCOMPARE(value->isEnabled() && unit->isEnabled(), minutes != 0);
    input.findChild<QCheckBox *>()->setChecked(false);
    input.setDefault(15);
    QVERIFY(!value->isEnabled() && !unit->isEnabled());
    QCOMPARE(input.getReminder(), 0U);
    QCOMPARE(value->value(), 15);
}

QTEST_MAIN(VelEntryRecurDialogTest)

#include "velentryrecurdialogtest.moc"

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentryrecurdialog.h"

#include "model/veltext.h"
#include "views/velweekdaywidget.h"
#include "widgets/wdatetimewidget.h"

#include <KAcceleratorManager>
#include <KLocalizedString>
#include <KMessageWidget>

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
VelEntryRecurDialog::Page pageOf(int rule)
{
    switch (rule + 1) {
    case VelRecurrenceRule::Weekly:
        return VelEntryRecurDialog::WeekPage;
    case VelRecurrenceRule::Monthly:
        return VelEntryRecurDialog::MonthPage;
    default:
        return VelEntryRecurDialog::NoPage;
    }
}

QString problemText(VelRecurChoice::Problem problem)
{
    switch (problem) {
    case VelRecurChoice::Problem::NoWeekday:
        return i18n("Check at least one day of the week.");
    case VelRecurChoice::Problem::EndBeforeStart:
        return i18n("The end date may not be earlier than the start of the event.");
    case VelRecurChoice::Problem::None:
        break;
    }
    return {};
}

QString dateText(QDate date)
{
    QString text =
        i18nc("weekday and date", "%1 %2",
              QLocale().standaloneDayName(date.dayOfWeek(), QLocale::ShortFormat), VelText::getDay(date));
    // Lines break between dates, not within them.
    return text.replace(QLatin1Char(' '), QChar(QChar::Nbsp));
}

/** A number that the input would not offer is still shown as it is, and not changed behind the user's back. */
void showNumber(QSpinBox *input, int number)
{
    input->setMaximum(std::max(VelEntryRecurDialog::UsualMaximum, number));
    input->setValue(number);
}
} // namespace

VelEntryRecurDialog::VelEntryRecurDialog(QDate today, QWidget *parent)
    : QDialog(parent)
    , m_today(today)
    , m_every(new QSpinBox(this))
    , m_rule(new QComboBox(this))
    , m_weekdays(new VelWeekDayWidget(this))
    , m_monthBy(new QButtonGroup(this))
    , m_dayOfMonth(new QSpinBox(this))
    , m_ordinal(new QComboBox(this))
    , m_weekday(new QComboBox(this))
    , m_end(new QButtonGroup(this))
    , m_count(new QSpinBox(this))
    , m_endDate(new WDateTimeWidget(WDateTimeWidget::Kind::Date, this))
    , m_sentence(new QLabel(this))
    , m_dates(new QLabel(this))
    , m_problem(new KMessageWidget(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(i18nc("@title:window", "Recurrence"));
    m_endDate->setClock([today] { return today; });
    m_endDate->leaveProblem();
    setModal(true);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(makeFrequencyRow());
    m_pages = makePages(); // NOLINT(cppcoreguidelines-prefer-member-initializer): below what is made first
    layout->addWidget(m_pages);
    layout->addWidget(makeEndBox());
    m_preview = makePreview(); // NOLINT(cppcoreguidelines-prefer-member-initializer)
    layout->addWidget(m_preview, 1);
    layout->addWidget(m_buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    orderTabs();
    connectInputs();
    setRule({}, today);
    KAcceleratorManager::manage(this);
    m_every->setFocus();
}

void VelEntryRecurDialog::connectInputs()
{
    for (QSpinBox *input : {m_every, m_dayOfMonth, m_count})
        connect(input, QOverload<int>::of(&QSpinBox::valueChanged), this, &VelEntryRecurDialog::slotChanged);
    for (QComboBox *input : {m_rule, m_ordinal, m_weekday})
        connect(input, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &VelEntryRecurDialog::slotChanged);
    for (QButtonGroup *group : {m_monthBy, m_end})
        connect(group, &QButtonGroup::idToggled, this, &VelEntryRecurDialog::slotChanged);
    for (QCheckBox *day : m_weekdays->findChildren<QCheckBox *>())
        connect(day, &QCheckBox::toggled, this, &VelEntryRecurDialog::slotChanged);
    connect(m_endDate, &WDateTimeWidget::dateChanged, this, &VelEntryRecurDialog::slotChanged);
    connect(m_endDate, &WDateTimeWidget::problemChanged, this, &VelEntryRecurDialog::slotChanged);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &VelEntryRecurDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &VelEntryRecurDialog::reject);
}

void VelEntryRecurDialog::setRule(const VelRecurrenceRule &rule, QDate start)
{
    m_start = start.isValid() ? start : m_today;
    m_accepted = VelRecurChoice::fromRule(rule, m_start);
    showChoice(m_accepted);
}

VelRecurrenceRule VelEntryRecurDialog::getRule() const
{
    return getChoice().toRule();
}

void VelEntryRecurDialog::accept()
{
    const bool isRead = m_endDate->finishInput();
    const VelRecurChoice choice = getChoice();
    if (!isRead)
        m_endDate->focusProblem();
    if (!isRead || choice.getProblem(m_start) != VelRecurChoice::Problem::None)
        return;
    m_accepted = choice;
    QDialog::accept();
}

void VelEntryRecurDialog::reject()
{
    showChoice(m_accepted);
    QDialog::reject();
}

VelRecurChoice VelEntryRecurDialog::getChoice() const
{
    VelRecurChoice choice;
    choice.rule = m_rule->currentIndex();
    choice.every = m_every->value();
    choice.weekdays = m_weekdays->getList();
    choice.monthBy = static_cast<VelRecurChoice::MonthBy>(m_monthBy->checkedId());
    choice.dayOfMonth = m_dayOfMonth->value();
    choice.ordinal = m_ordinal->currentIndex();
    choice.weekday = m_weekday->currentIndex();
    choice.end = static_cast<VelRecurChoice::End>(m_end->checkedId());
    choice.count = m_count->value();
    choice.endDate = m_endDate->getDate();
    return choice;
}

void VelEntryRecurDialog::showChoice(const VelRecurChoice &choice)
{
    {
        const QScopedValueRollback<bool> filling(m_isFilling, true);
        m_rule->setCurrentIndex(choice.rule);
        showNumber(m_every, choice.every);
        m_weekdays->setList(choice.weekdays);
        m_monthBy->button(static_cast<int>(choice.monthBy))->setChecked(true);
        m_dayOfMonth->setValue(choice.dayOfMonth);
        m_ordinal->setCurrentIndex(choice.ordinal);
        m_weekday->setCurrentIndex(choice.weekday);
        m_end->button(static_cast<int>(choice.end))->setChecked(true);
        showNumber(m_count, choice.count);
        m_endDate->setDate(choice.endDate);
    }
    slotChanged();
}

void VelEntryRecurDialog::slotChanged()
{
    if (m_isFilling)
        return;
    const VelRecurChoice choice = getChoice();
    enableInputs(choice);
    const QString unread = m_endDate->getProblem();
    const QString problem = unread.isEmpty() ? problemText(choice.getProblem(m_start)) : unread;
    m_problem->setText(problem);
    m_preview->setCurrentIndex(problem.isEmpty() ? SentencePage : ProblemPage);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(problem.isEmpty());
    const VelRecurrenceRule rule = choice.toRule();
    m_sentence->setText(rule.getRecurrenceText(m_start));
    showDates(rule);
}

void VelEntryRecurDialog::enableInputs(const VelRecurChoice &choice)
{
    m_pages->setCurrentIndex(pageOf(choice.rule));
    const bool isByDay = choice.monthBy == VelRecurChoice::MonthBy::Day;
    m_dayOfMonth->setEnabled(isByDay);
    m_ordinal->setEnabled(!isByDay);
    m_weekday->setEnabled(!isByDay);
    m_count->setEnabled(choice.end == VelRecurChoice::End::Count);
    m_endDate->setEnabled(choice.end == VelRecurChoice::End::Date);
}

void VelEntryRecurDialog::showDates(const VelRecurrenceRule &rule)
{
    const VelNextDates next(rule, m_start, m_today);
    if (next.dates.isEmpty()) {
        m_dates->setText(i18n("There are no further dates."));
        return;
    }
    QStringList texts;
    for (const QDate &date : next.dates)
        texts.append(dateText(date));
    const QString list = texts.join(i18nc("between dates", ", "));
    m_dates->setText(next.isMore ? i18n("Next dates: %1, ...", list) : i18n("Next dates: %1", list));
}

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentryrecurdialog.h"

#include "model/veltext.h"
#include "views/velweekdaywidget.h"
#include "widgets/wdatetimewidget.h"

#include <KLocalizedString>
#include <KMessageWidget>

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStackedWidget>

namespace
{
/** Room for the usual texts, in characters and lines: with them the dialog keeps its size. */
constexpr int PreviewWidth = 60;
constexpr int SentenceLines = 3;
constexpr int DatesLines = 2;

void setHelp(QWidget *input, const QString &text)
{
    input->setToolTip(text);
    input->setWhatsThis(text);
}

QRadioButton *addRadio(QButtonGroup *group, int id, const QString &text, QWidget *parent)
{
    auto *button = new QRadioButton(text, parent);
    group->addButton(button, id);
    return button;
}

void wrap(QLabel *label, int lines)
{
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    label->setTextFormat(Qt::PlainText);
    label->setMinimumSize(label->fontMetrics().averageCharWidth() * PreviewWidth,
                          label->fontMetrics().lineSpacing() * lines);
}
} // namespace

QHBoxLayout *VelEntryRecurDialog::makeFrequencyRow()
{
    auto *label = new QLabel(i18n("Repeat event every"), this);
    label->setBuddy(m_every);
    m_every->setRange(1, UsualMaximum);
    m_every->setWhatsThis(
        i18n("How many days, weeks, months or years lie between one time and the next: 2 is every other."));
    m_rule->addItems({i18n("day(s)"), i18n("week(s)"), i18n("month(s)"), i18n("year(s)")});
    m_rule->setAccessibleName(i18n("Unit of the interval"));
    m_rule->setWhatsThis(i18n("Choose whether the event repeats by days, weeks, months or years."));
    for (QWidget *input : {static_cast<QWidget *>(m_every), static_cast<QWidget *>(m_rule)})
        input->setToolTip(i18n("How often the event repeats."));
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_every);
    row->addWidget(m_rule);
    row->addStretch();
    return row;
}

QWidget *VelEntryRecurDialog::makeWeekPage()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_weekdays);
    layout->addStretch();
    m_weekdays->setToolTip(i18n("Days of the week on which the event repeats."));
    m_weekdays->setWhatsThis(i18n("The event repeats on each of these days. Of the week in which it starts, "
                                  "the days after its own are left out if its own is checked, too."));
    return page;
}

QWidget *VelEntryRecurDialog::makeMonthPage()
{
    m_dayOfMonth->setRange(1, 31);
    m_dayOfMonth->setAccessibleName(i18n("day of the month"));
    m_dayOfMonth->setToolTip(i18n("Day of the month on which the event repeats."));
    m_dayOfMonth->setWhatsThis(i18n("In a month that has no such day the event is on an earlier one."));
    m_ordinal->addItems({i18n("First"), i18n("Second"), i18n("Third"), i18n("Fourth"), i18n("Last")});
    m_ordinal->setAccessibleName(i18n("Which weekday of the month"));
    for (int day = 1; day <= 7; ++day)
        m_weekday->addItem(VelText::getWeekDay(day));
    m_weekday->setAccessibleName(i18n("Weekday"));
    for (QComboBox *input : {m_ordinal, m_weekday})
        setHelp(input, i18n("Weekday of the month on which the event repeats."));
    auto *page = new QWidget;
    auto *grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(
        addRadio(m_monthBy, static_cast<int>(VelRecurChoice::MonthBy::Day), i18n("day of the month"), page),
        0, 0);
    grid->addWidget(m_dayOfMonth, 0, 1);
    grid->addWidget(addRadio(m_monthBy, static_cast<int>(VelRecurChoice::MonthBy::Weekday),
                             i18n("weekday of the month"), page),
                    1, 0);
    grid->addWidget(m_ordinal, 1, 1);
    grid->addWidget(m_weekday, 1, 2);
    grid->setColumnStretch(3, 1);
    return page;
}

QStackedWidget *VelEntryRecurDialog::makePages()
{
    auto *pages = new QStackedWidget(this);
    pages->insertWidget(NoPage, new QWidget);
    pages->insertWidget(WeekPage, makeWeekPage());
    pages->insertWidget(MonthPage, makeMonthPage());
    return pages;
}

QGroupBox *VelEntryRecurDialog::makeEndBox()
{
    auto *box = new QGroupBox(i18n("End of the recurrence"), this);
    const auto add = [this, box](VelRecurChoice::End end, const QString &text) {
        return addRadio(m_end, static_cast<int>(end), text, box);
    };
    m_count->setRange(1, UsualMaximum);
    m_count->setAccessibleName(i18n("How many times"));
    setHelp(m_count, i18n("How many times the event takes place, the first time included."));
    setHelp(m_endDate, i18n("The event repeats before this date, and not on it any more."));
    auto *grid = new QGridLayout(box);
    grid->addWidget(add(VelRecurChoice::End::Never, i18nc("end of a recurrence", "Never")), 0, 0);
    grid->addWidget(add(VelRecurChoice::End::Count, i18nc("so many times", "Repeat")), 1, 0);
    grid->addWidget(m_count, 1, 1);
    grid->addWidget(new QLabel(i18n("time(s)"), box), 1, 2);
    grid->addWidget(add(VelRecurChoice::End::Date, i18n("End date")), 2, 0);
    grid->addWidget(m_endDate, 2, 1, 1, 2);
    grid->setColumnStretch(3, 1);
    return box;
}

QStackedWidget *VelEntryRecurDialog::makePreview()
{
    auto *preview = new QStackedWidget(this);
    auto *page = new QWidget(preview);
    wrap(m_sentence, SentenceLines);
    wrap(m_dates, DatesLines);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_sentence);
    layout->addWidget(m_dates, 1);
    m_problem->setMessageType(KMessageWidget::Warning);
    m_problem->setCloseButtonVisible(false);
    m_problem->setWordWrap(true);
    preview->insertWidget(SentencePage, page);
    preview->insertWidget(ProblemPage, m_problem);
    return preview;
}

/** From top to bottom, whatever was made first. */
void VelEntryRecurDialog::orderTabs()
{
    QVector<QWidget *> order{m_every, m_rule};
    for (QCheckBox *day : m_weekdays->findChildren<QCheckBox *>())
        order.append(day);
    order += QVector<QWidget *>{m_monthBy->button(static_cast<int>(VelRecurChoice::MonthBy::Day)),
                                m_dayOfMonth,
                                m_monthBy->button(static_cast<int>(VelRecurChoice::MonthBy::Weekday)),
                                m_ordinal,
                                m_weekday,
                                m_end->button(static_cast<int>(VelRecurChoice::End::Never)),
                                m_end->button(static_cast<int>(VelRecurChoice::End::Count)),
                                m_count,
                                m_end->button(static_cast<int>(VelRecurChoice::End::Date)),
                                m_endDate,
                                m_buttons->button(QDialogButtonBox::Ok),
                                m_buttons->button(QDialogButtonBox::Cancel)};
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

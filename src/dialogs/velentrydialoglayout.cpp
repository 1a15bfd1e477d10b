// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentrydialog.h"
#include "dialogs/velentryrecurdialog.h"
#include "dialogs/velpeoplepage.h"
#include "dialogs/velreminderwidget.h"
#include "hub/velapp.h"
#include "widgets/wdatetimewidget.h"

#include <KLocalizedString>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace
{
/** Side by side, as one row of a form. */
QHBoxLayout *inRow(std::initializer_list<QWidget *> widgets)
{
    auto *row = new QHBoxLayout;
    for (QWidget *widget : widgets)
        row->addWidget(widget);
    row->addStretch(1);
    return row;
}

/** A row of several widgets, to the first of which the label's letter leads. */
void addRow(QFormLayout *layout, const QString &text, std::initializer_list<QWidget *> widgets)
{
    auto *label = new QLabel(text);
    QWidget *first = *widgets.begin();
    label->setBuddy(first->focusProxy() ? first->focusProxy() : first); // it passes over what leads on
    layout->addRow(label, inRow(widgets));
}

void explainAs(QWidget *widget, const QString &text)
{
    widget->setToolTip(text);
    widget->setWhatsThis(text);
}
} // namespace

void VelEntryDialog::makeLayout()
{
    auto *layout = new QVBoxLayout(this);
    auto *general = new QWidget(this);
    if (isEvent()) {
        m_pages = new QTabWidget(this);
        m_pages->addTab(general, i18n("&General"));
        m_people = new VelPeoplePage(m_book, m_pages);
        m_pages->addTab(m_people, i18n("Atten&dees"));
        connect(m_people, &VelPeoplePage::plannerWanted, this, &VelEntryDialog::slotFindDialog);
        layout->addWidget(m_pages);
    } else {
        layout->addWidget(general);
    }
    auto *form = new QFormLayout(general);
    m_title = new QLineEdit(general);
    m_title->setObjectName(QStringLiteral("title"));
    form->addRow(i18n("&Title:"), m_title);
    makeTimes(form);
    if (isEvent())
        makeEventControls(form);
    else
        makeTodoControls(form);
    m_reminder = new VelReminderWidget(general, true);
    form->addRow(i18n("Reminder:"), m_reminder);
    m_description = new QPlainTextEdit(general);
    m_description->setTabChangesFocus(true);
    form->addRow(i18n("De&scription:"), m_description);
    makeButtons();
    layout->addWidget(m_buttons);
}

void VelEntryDialog::makeTimes(QFormLayout *layout)
{
    m_start = new WDateTimeWidget(WDateTimeWidget::Kind::DateTime, this);
    m_noTimes = new QCheckBox(i18n("&No times"), this);
    m_end = new WDateTimeWidget(WDateTimeWidget::Kind::DateTime, this);
    addRow(layout, i18n("Start ti&me:"), {m_start, m_noTimes});
    addRow(layout, isEvent() ? i18n("&End time:") : i18n("&Due time:"), {m_end});
    for (WDateTimeWidget *input : {m_start, m_end})
        input->setClock([&app = m_app] { return app.now().date(); });
    m_start->setObjectName(QStringLiteral("start"));
    m_noTimes->setObjectName(QStringLiteral("noTimes"));
    m_end->setObjectName(QStringLiteral("end"));
    connect(m_noTimes, &QCheckBox::toggled, this, &VelEntryDialog::slotNoTime);
    connect(m_start, &WDateTimeWidget::dateChanged, this, &VelEntryDialog::slotStartChanged);
}

void VelEntryDialog::makeEventControls(QFormLayout *layout)
{
    m_recurring = new QCheckBox(i18n("&Recurring event"), this);
    m_setRecurrence = new QPushButton(i18n("Set re&currence"), this);
    m_setRecurrence->setAutoDefault(false);
    m_recurring->setObjectName(QStringLiteral("recurring"));
    m_setRecurrence->setObjectName(QStringLiteral("setRecurrence"));
    m_recurrenceText = new QLabel(this);
    m_recurrenceText->setWordWrap(true);
    m_recurDialog = new VelEntryRecurDialog(m_app.now().date(), this);
    layout->addRow(QString(), inRow({m_recurring, m_setRecurrence}));
    layout->addRow(QString(), m_recurrenceText);
    connect(m_recurring, &QCheckBox::toggled, this, &VelEntryDialog::slotRecurring);
    connect(m_setRecurrence, &QPushButton::clicked, this, &VelEntryDialog::slotRecurDialog);

    m_access = new QComboBox(this);
    m_access->addItems({i18n("Public"), i18n("Private")});
    m_display = new QComboBox(this);
    m_display->addItems({i18n("Busy"), i18n("Free"), i18n("Tentative")});
    addRow(layout, i18n("&Access:"), {m_access});
    addRow(layout, i18n("S&how time as:"), {m_display});
}

void VelEntryDialog::makeTodoControls(QFormLayout *layout)
{
    m_complete = new QCheckBox(i18n("Comp&lete"), this);
    m_priority = new QSpinBox(this);
    m_priority->setRange(0, 9);
    m_priority->setSpecialValueText(i18nc("no priority", "None"));
    layout->addRow(QString(), m_complete);
    addRow(layout, i18n("&Priority:"), {m_priority});
}

void VelEntryDialog::makeButtons()
{
    m_buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel, this);
    m_buttons->setObjectName(QStringLiteral("buttons"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &VelEntryDialog::slotOk);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &VelEntryDialog::slotCancel);
    connect(m_buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &VelEntryDialog::slotApply);
    m_buttons->button(QDialogButtonBox::Ok)->setDefault(true);
}

void VelEntryDialog::explain()
{
    explainAs(m_title, i18n("Short title for the entry."));
    explainAs(m_start, i18n("Start date (and optionally time) for the entry."));
    explainAs(m_end, i18n("End date (and optionally time) for the entry."));
    explainAs(m_noTimes, i18n("Hide start and end time making the entry last whole day(s)."));
    explainAs(m_description, i18n("A longer description for the event."));
    explainAs(m_reminder,
              i18n("Set a reminder to alert you some minutes, hours or days before the start time."));
    if (isEvent()) {
        explainAs(m_recurring, i18n("Click the checkbox to indicate a recurring event."));
        explainAs(m_setRecurrence, i18n("Click to set recurrence for the event."));
        explainAs(
            m_access,
            i18n("Access level limits the way other users may see your event<ul><li>Public access means that "
                 "other users may read the event info.<li>Private access will hide the event details from "
                 "other users.</ul>"));
        explainAs(
            m_display,
            i18n("Governs the event is displayed<ul><li>Busy means other users see the event time as "
                 "unavailable.<li>Tentative means that you are not necessarely attending the event.<li>Free "
                 "means that other users see the event time as available.</ul>"));
    } else {
        explainAs(m_complete, i18n("Click the checkbox to indicate that the To-Do task is completed."));
        explainAs(m_priority,
                  i18n("Task priority in relation to other tasks. 1 means very important, 9 means "
                       "unimportant."));
    }
}

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velreminderdialog.h"

#include "hub/velapp.h"
#include "model/veltext.h"
#include "widgets/wpixmapwidget.h"

#include <KLocalizedString>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace
{
constexpr int SecondsPerMinute = 60;
constexpr int TextWidth = 44; // average characters
constexpr int LongestTitle = 400; // characters, so that the buttons stay on the screen

VelEntry withShortTitle(VelEntry entry)
{
    if (entry.getTitle().size() > LongestTitle)
        entry.setTitle(entry.getTitle().left(LongestTitle) + QChar(0x2026));
    return entry;
}
} // namespace

VelReminderDialog::VelReminderDialog(QWidget *parent, const VelReminderNotice &notice)
    : QDialog(parent)
    , m_text(new QLabel(this))
    , m_waiting(new QLabel(this))
    , m_snooze(new QComboBox(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok, this))
{
    setWindowTitle(i18nc("@title:window", "Reminder"));
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(makeTexts(), 1);
    layout->addLayout(makeSnoozeRow(notice.workdayBegin));
    layout->addWidget(m_buttons);
    makeButtons();
    setNotice(notice);
}

QLayout *VelReminderDialog::makeTexts()
{
    auto *icon = new WPixmapWidget(QStyle::PM_MessageBoxIconSize, this);
    icon->setIcon(VelApp::getIcon(QStringLiteral("reminder")));
    for (QLabel *label : {m_text, m_waiting}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    // Not wider for a long word, which a label does not break.
    m_text->setMinimumWidth(TextWidth * fontMetrics().averageCharWidth());
    auto *texts = new QVBoxLayout;
    texts->addWidget(m_text, 1);
    texts->addWidget(m_waiting);
    auto *row = new QHBoxLayout;
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    return row;
}

QLayout *VelReminderDialog::makeSnoozeRow(QTime workdayBegin)
{
    auto *again = new QPushButton(i18n("&Remind me again in"), this);
    again->setObjectName(QStringLiteral("snooze"));
    again->setAutoDefault(false);
    again->setToolTip(i18n("Closes the reminder and shows it again later"));
    again->setWhatsThis(
        i18n("Closes the reminder and shows it again after the time beside this button, or, when the "
             "program is started again before that, at its start."));
    connect(again, &QPushButton::clicked, this, [this] { done(Snooze); });
    m_snooze->addItem(i18n("5 minutes"), FiveMinutes);
    m_snooze->addItem(i18n("15 minutes"), QuarterHour);
    m_snooze->addItem(i18n("1 hour"), OneHour);
    m_snooze->addItem(
        i18nc("when to remind again; %1 is a time", "tomorrow at %1", VelText::getTime(workdayBegin)),
        Tomorrow);
    m_snooze->setAccessibleName(i18n("Remind me again in"));
    m_snooze->setToolTip(i18n("When the reminder is shown again"));
    m_snooze->setWhatsThis(m_snooze->toolTip());
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(again);
    row->addWidget(m_snooze);
    return row;
}

void VelReminderDialog::makeButtons()
{
    QPushButton *ok = m_buttons->button(QDialogButtonBox::Ok);
    ok->setDefault(true);
    ok->setToolTip(i18n("Closes the reminder for good"));
    ok->setFocus();
    connect(ok, &QPushButton::clicked, this, [this] { done(Ok); });
    m_show = m_buttons->addButton(QString(), QDialogButtonBox::ActionRole);
    m_show->setObjectName(QStringLiteral("show"));
    m_show->setToolTip(i18n("Closes the reminder and shows what it is about"));
    connect(m_show, &QPushButton::clicked, this, [this] { done(Show); });
    m_dismissAll = m_buttons->addButton(i18n("Dismiss &all"), QDialogButtonBox::DestructiveRole);
    m_dismissAll->setObjectName(QStringLiteral("dismissAll"));
    m_dismissAll->setToolTip(i18n("Closes this reminder and all others that are due"));
    connect(m_dismissAll, &QPushButton::clicked, this, [this] { done(DismissAll); });
    for (QPushButton *button : {m_show, m_dismissAll})
        button->setAutoDefault(false);
    for (QPushButton *button : {ok, m_show, m_dismissAll})
        button->setWhatsThis(button->toolTip());
}

void VelReminderDialog::setNotice(const VelReminderNotice &notice)
{
    m_text->setText(reminderText(withShortTitle(notice.entry), notice.now));
    m_show->setText(showText(notice.entry));
    m_waiting->setText(waitingText(notice.waiting));
    m_waiting->setVisible(notice.waiting > 0);
    m_dismissAll->setVisible(notice.waiting > 0);
}

VelReminderDialog::SnoozeTime VelReminderDialog::getSnoozeTime() const
{
    return static_cast<SnoozeTime>(m_snooze->currentData().toInt());
}

void VelReminderDialog::setSnoozeTime(SnoozeTime time)
{
    m_snooze->setCurrentIndex(m_snooze->findData(time));
}

QString VelReminderDialog::reminderText(const VelEntry &entry, const VelDateTime &now)
{
    return entry.getTitle() + QLatin1Char('\n') + statusText(entry, now);
}

QString VelReminderDialog::statusText(const VelEntry &entry, const VelDateTime &now)
{
    const bool isEvent = entry.type == VelEntry::Event;
    const qint64 minutes = now.secsTo(entry.getStart()) / SecondsPerMinute;
    if (minutes <= 0)
        return isEvent ? i18n("Event has already started.") : i18n("Task is overdue.");
    const QString lead = VelReminder::toString(
        static_cast<quint32>(std::min<qint64>(minutes, std::numeric_limits<quint32>::max())));
    return isEvent ? i18nc("%1 is a number and a unit", "Event is starting in %1", lead)
                   : i18nc("%1 is a number and a unit", "Task is due in %1", lead);
}

QString VelReminderDialog::showText(const VelEntry &entry)
{
    return entry.type == VelEntry::Event ? i18n("&Show event") : i18n("&Show task");
}

QString VelReminderDialog::waitingText(int waiting)
{
    return waiting <= 0 ? QString()
                        : i18np("One more reminder is due.", "%1 more reminders are due.", waiting);
}

VelDateTime VelReminderDialog::snoozedUntil(SnoozeTime time, const VelDateTime &now, QTime workdayBegin)
{
    switch (time) {
    case FiveMinutes:
        return now.addSecs(5 * SecondsPerMinute);
    case QuarterHour:
        return now.addSecs(15 * SecondsPerMinute);
    case OneHour:
        return now.addSecs(60 * SecondsPerMinute);
    case Tomorrow:
        break;
    }
    return now.withTime(workdayBegin).addDays(1);
}

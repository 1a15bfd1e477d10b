// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velalarm.h"

#include "document/veldoc.h"
#include "model/velsettings.h"

#include <QDBusConnection>
#include <QPointer>

#include <utility>

namespace
{
/** The path of a URL that is set and well formed, else nothing. */
QString pathOf(const QUrl &url)
{
    return url.isValid() ? url.path(QUrl::FullyDecoded) : QString();
}
} // namespace

VelAlarm::VelAlarm(VelDoc &doc, const VelSettings &settings, Now now, VelAlertSurface &surface,
                   VelGivenReminders given)
    : m_doc(doc)
    , m_settings(settings)
    , m_now(std::move(now))
    , m_surface(surface)
    , m_given(std::move(given))
{
    connect(&doc, &VelDoc::alarm, this, &VelAlarm::slotAlarm);
    connect(&doc, &VelDoc::alarmUpdated, this, &VelAlarm::slotAlarmUpdated);
    connect(&doc, &VelDoc::alarmEnded, this, [this] { m_surface.closeReminder(); });
    connect(&doc, &VelDoc::remindersGiven, this, &VelAlarm::slotGiven);
    watchSleep();
}

VelAlarm::~VelAlarm() = default;

/** Where there is no login service, or no bus, the document notices within a minute by itself. */
void VelAlarm::watchSleep()
{
    const QString service = QStringLiteral("org.freedesktop.login1");
    // The leading digit marks a slot: the bus takes no function pointers.
    QDBusConnection::systemBus().connect(
        service, QStringLiteral("/org/freedesktop/login1"), QStringLiteral("org.freedesktop.login1.Manager"),
        QStringLiteral("PrepareForSleep"), this, "1slotPrepareForSleep(bool)");
}

void VelAlarm::slotPrepareForSleep(bool begins)
{
    if (!begins)
        m_doc.updateAlarm();
}

VelReminderNotice VelAlarm::notice(const VelEntry &entry) const
{
    return {entry, m_now(), m_doc.getWaitingReminders(), m_settings.workdayBegin};
}

void VelAlarm::slotAlarm(quint32 localid)
{
    if (!m_doc.isWritable())
        skipGiven();
    // It is not any more when it was among those, or when the calendar is another one.
    if (!m_isHeld && m_doc.getAlarmEntry() == localid)
        give(localid);
}

void VelAlarm::resume()
{
    if (std::exchange(m_isHeld, false) && m_doc.getAlarmEntry() != 0)
        slotAlarm(m_doc.getAlarmEntry());
}

void VelAlarm::skipGiven()
{
    const VelDateTime now = m_now();
    for (const quint32 localid : m_doc.getDueReminders()) {
        if (m_given.isGiven(m_doc, *m_doc.getEntry(localid), now))
            m_doc.skipReminder(localid);
    }
}

/** In the file, without a word, where that takes along nothing else; what cannot be saved there is remembered here. */
void VelAlarm::slotGiven(const std::vector<quint32> &localids)
{
    const QPointer<VelAlarm> self(this);
    const bool isSaved = !m_doc.isModified() && m_doc.saveQuietly();
    if (self && !isSaved)
        m_given.add(m_doc, localids, m_now());
}

void VelAlarm::give(quint32 localid)
{
    startProgram();
    playSound();
    const VelEntry *entry = m_doc.getEntry(localid);
    if (!m_settings.doReminderDialog || !entry) {
        m_doc.dismissReminder(localid);
        return;
    }
    m_surface.showReminder(
        notice(*entry), [this, localid](const VelReminderAnswer &answer) { slotAnswered(localid, answer); });
}

void VelAlarm::slotAlarmUpdated()
{
    if (const VelEntry *entry = m_doc.getEntry(m_doc.getAlarmEntry()))
        m_surface.updateReminder(notice(*entry));
}

void VelAlarm::slotAnswered(quint32 localid, const VelReminderAnswer &answer)
{
    const VelDateTime now = m_now();
    const QPointer<VelAlarm> self(this);
    m_isHeld = answer.result == VelReminderDialog::Show;
    switch (answer.result) {
    case VelReminderDialog::Snooze:
        if (!m_doc.snoozeReminder(
                localid, VelReminderDialog::snoozedUntil(answer.snooze, now, m_settings.workdayBegin)))
            m_doc.dismissReminder(localid);
        break;
    case VelReminderDialog::DismissAll:
        m_doc.dismissDueReminders();
        break;
    case VelReminderDialog::Ok:
    case VelReminderDialog::Show:
        m_doc.dismissReminder(localid);
        break;
    }
    if (self && answer.result == VelReminderDialog::Show)
        Q_EMIT showWanted(localid);
}

void VelAlarm::startProgram()
{
    if (!m_settings.doReminderExec)
        return;
    QStringList words = pathOf(m_settings.reminderExec).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty())
        return;
    const QString program = words.takeFirst();
    m_surface.startProgram(program, words);
}

void VelAlarm::playSound()
{
    const QString file = m_settings.doReminderSound ? pathOf(m_settings.reminderSound) : QString();
    if (!file.isEmpty())
        m_surface.playSound(file);
}

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"

#include "model/velsettings.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace
{
/** Sleep and a clock that is set go unnoticed by a timer, so none runs longer. In milliseconds. */
constexpr qint64 LongestWait = 60000;
constexpr qint64 MsecsPerDay = 24 * 60 * 60 * 1000;

qint64 msecsTo(const VelDateTime &from, const VelDateTime &to)
{
    const qint64 days = qint64(to.julianDay()) - from.julianDay();
    return days * MsecsPerDay + from.time().msecsTo(to.time());
}
} // namespace

void VelDoc::initAlarm()
{
    m_alarmTimer.setSingleShot(true);
    m_alarmTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_alarmTimer, &QTimer::timeout, this, &VelDoc::slotAlarm);
}

/** Later: whoever changes the calendar is not done when the first entry has changed. */
void VelDoc::requestAlarmUpdate()
{
    if (m_isAlarmRequested)
        return;
    m_isAlarmRequested = true;
    m_alarmTimer.start(0);
}

/** A colleague's reminders ring where the colleague is: given here, they would count as given there. */
bool VelDoc::hasReminders() const
{
    return m_meta.userid == 0 || m_settings.origUserid == 0 || m_meta.userid == m_settings.origUserid;
}

std::optional<VelReminders::Alert> VelDoc::dueReminder() const
{
    if (!hasReminders())
        return std::nullopt;
    const auto next = m_alarmEntry == 0 ? m_reminders.next() : std::nullopt;
    return next && next->time <= m_now() ? next : std::nullopt;
}

void VelDoc::updateAlarm()
{
    m_isAlarmRequested = false;
    m_alarmTimer.stop();
    if (m_alarmEntry != 0) {
        const VelEntry *entry = getEntry(m_alarmEntry);
        const VelDateTime time = entry ? m_reminders.ringingTime(*entry) : VelDateTime();
        if (time.isValid() && time <= m_now())
            Q_EMIT alarmUpdated();
        else
            endAlarm();
    }
    if (dueReminder())
        slotAlarm();
    else
        armAlarm();
}

void VelDoc::armAlarm()
{
    const auto next = m_reminders.next();
    if (m_alarmEntry != 0)
        m_alarmTimer.start(LongestWait); // for alarmUpdated()
    else if (next && hasReminders())
        m_alarmTimer.start(
            static_cast<int>(std::clamp(msecsTo(m_now(), next->time), qint64(0), LongestWait)));
}

void VelDoc::slotAlarm()
{
    // A receiver that answers at once gets one after another here, not one inside the other.
    if (m_isInAlarm)
        return;
    if (!dueReminder()) {
        updateAlarm();
        return;
    }
    m_isInAlarm = true;
    const QPointer<VelDoc> self(this);
    while (const auto due = dueReminder()) {
        m_alarmEntry = due->localid;
        Q_EMIT alarm(due->localid);
        if (!self)
            return;
    }
    m_isInAlarm = false;
    updateAlarm();
}

void VelDoc::endAlarm()
{
    if (std::exchange(m_alarmEntry, 0) != 0)
        Q_EMIT alarmEnded();
}

int VelDoc::getWaitingReminders() const
{
    const std::vector<quint32> due = m_reminders.due(m_now());
    return static_cast<int>(due.size() - std::count(due.begin(), due.end(), m_alarmEntry));
}

/** Nothing that is shown or worked out depends on the flag, so that pointers to occurrences stay good. */
bool VelDoc::markFired(quint32 localid)
{
    const auto found = m_entries.find(localid);
    if (found == m_entries.end() || found->second.entry->isDeleted())
        return false;
    if (isWritable())
        recordForExchange(localid);
    VelEntry &entry = *found->second.entry;
    m_reminders.remove(entry);
    entry.reminderfired = true;
    if (isWritable())
        entry.uDirty(1);
    m_reminders.insert(entry);
    return true;
}

/** The server would refuse what is sent to it of a calendar that may only be read. */
void VelDoc::keepGiven(const std::vector<quint32> &localids)
{
    if (localids.empty())
        return;
    if (isWritable())
        setModified(true);
    else
        Q_EMIT remindersGiven(localids);
}

void VelDoc::dismissReminder(quint32 localid)
{
    const bool isMarked = markFired(localid);
    if (localid == m_alarmEntry)
        endAlarm();
    requestAlarmUpdate();
    if (isMarked)
        keepGiven({localid});
}

void VelDoc::dismissDueReminders()
{
    std::vector<quint32> given = getDueReminders();
    // It may have been put off, and so not be due.
    if (std::find(given.begin(), given.end(), m_alarmEntry) == given.end())
        given.push_back(m_alarmEntry);
    std::erase_if(given, [this](quint32 localid) { return !markFired(localid); });
    endAlarm();
    requestAlarmUpdate();
    keepGiven(given);
}

void VelDoc::skipReminder(quint32 localid)
{
    markFired(localid);
    if (localid == m_alarmEntry)
        endAlarm();
    requestAlarmUpdate();
}

bool VelDoc::snoozeReminder(quint32 localid, const VelDateTime &until)
{
    const VelEntry *entry = getEntry(localid);
    if (!entry || !until.isValid() || until <= m_now())
        return false;
    m_reminders.snooze(*entry, until);
    if (localid == m_alarmEntry)
        endAlarm();
    requestAlarmUpdate();
    return true;
}

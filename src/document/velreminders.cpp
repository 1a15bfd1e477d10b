// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velreminders.h"

#include "model/velentry.h"

namespace
{
constexpr qint64 SecondsPerMinute = 60;
} // namespace

VelDateTime VelReminders::alertTime(const VelEntry &entry)
{
    if (entry.reminder == 0 || entry.reminderfired || entry.isDeleted())
        return {};
    const VelDateTime &time = entry.type == VelEntry::Todo ? entry.getEnd() : entry.getStart();
    return time.addSecs(-SecondsPerMinute * entry.reminder);
}

VelDateTime VelReminders::ringingTime(const VelEntry &entry) const
{
    const VelDateTime alert = alertTime(entry);
    const auto snoozed = m_snoozed.find(entry.localid);
    return snoozed != m_snoozed.end() && snoozed->second.alert == alert ? snoozed->second.until : alert;
}

bool VelReminders::insert(const VelEntry &entry)
{
    const VelDateTime alert = alertTime(entry);
    const auto snoozed = m_snoozed.find(entry.localid);
    if (snoozed != m_snoozed.end() && snoozed->second.alert != alert)
        m_snoozed.erase(snoozed);
    return alert.isValid() && m_alerts.insert({ringingTime(entry), entry.localid}).second;
}

bool VelReminders::remove(const VelEntry &entry)
{
    return m_alerts.erase({ringingTime(entry), entry.localid}) != 0;
}

void VelReminders::clear()
{
    m_alerts.clear();
    m_snoozed.clear();
}

void VelReminders::snooze(const VelEntry &entry, const VelDateTime &until)
{
    if (!remove(entry))
        return;
    m_snoozed[entry.localid] = {alertTime(entry), until};
    insert(entry);
}

std::optional<VelReminders::Alert> VelReminders::next() const
{
    return m_alerts.empty() ? std::nullopt : std::optional(*m_alerts.begin());
}

std::vector<quint32> VelReminders::due(const VelDateTime &now) const
{
    std::vector<quint32> found;
    for (auto alert = m_alerts.begin(); alert != m_alerts.end() && alert->time <= now; ++alert)
        found.push_back(alert->localid);
    return found;
}

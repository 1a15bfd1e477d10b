// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velownbusytimes.h"

#include "document/veldoc.h"

#include <algorithm>

namespace
{
constexpr int DaysPerWeek = 7;
} // namespace

void VelOwnBusyTimes::reset(const VelEntry &planned, quint32 owner)
{
    m_weeks.clear();
    m_planned = planned.localid;
    m_owner = owner;
}

bool VelOwnBusyTimes::takesTime(const VelEntryRef &ref) const
{
    const VelEntry &entry = *ref.getOriginal();
    const bool isPlanned = m_planned != 0 && entry.localid == m_planned;
    const bool hasLength =
        entry.notime ? ref.getStart().julianDay() <= ref.getEnd().julianDay() : ref.getStart() < ref.getEnd();
    return !isPlanned && hasLength && !entry.isDeleted() && entry.display != VelEntry::Free
        && entry.getAccountStatus(m_doc.getUserId()) != VelAccount::Declined;
}

std::unique_ptr<VelEntry> VelOwnBusyTimes::busyTime(const VelEntryRef &ref) const
{
    auto busy = std::make_unique<VelEntry>(*ref.getOriginal());
    const bool notime = busy->notime;
    busy->setStart(notime ? ref.getStart().withTime(QTime(0, 0)) : ref.getStart());
    busy->setEnd(notime ? ref.getEnd().withTime(QTime(23, 59)) : ref.getEnd());
    busy->user = m_owner; // whoever invited to it
    return busy;
}

const VelOwnBusyTimes::Week &VelOwnBusyTimes::weekOf(QDate date)
{
    const QDate monday = date.addDays(Qt::Monday - date.dayOfWeek());
    const auto [found, isNew] = m_weeks.try_emplace(monday.toJulianDay());
    Week &week = found->second;
    if (!isNew)
        return week;
    VelEntryList entries = m_doc.getEntries(monday, VelEntry::Event, true, monday.addDays(DaysPerWeek - 1));
    std::erase_if(entries, [this](const VelEntryRef &ref) { return !takesTime(ref); });
    week.reserve(entries.size());
    for (const VelEntryRef &ref : entries)
        week.push_back(busyTime(ref));
    std::stable_sort(week.begin(), week.end(),
                     [](const auto &a, const auto &b) { return a->getStart() < b->getStart(); });
    return week;
}

VelEntryList VelOwnBusyTimes::getEntries(QDate date)
{
    VelEntryList entries;
    if (!date.isValid())
        return entries;
    const auto day = static_cast<qint32>(date.toJulianDay());
    for (const std::unique_ptr<VelEntry> &entry : weekOf(date)) {
        if (entry->getStart().julianDay() <= day && day <= entry->getEnd().julianDay())
            entries.emplace_back(entry.get());
    }
    return entries;
}

VelEntryList VelOwnBusyTimes::mergedInto(const VelEntryList &fetched, QDate date)
{
    const VelEntryList own = getEntries(date);
    VelEntryList merged;
    merged.reserve(own.size() + fetched.size());
    auto next = own.begin();
    for (const VelEntryRef &ref : fetched) {
        const VelEntry &entry = *ref.getOriginal();
        if (m_owner != 0 && entry.user == m_owner && m_doc.getLocalId(entry.globalid) != 0)
            continue;
        for (; next != own.end() && next->getStart() < ref.getStart(); ++next)
            merged.push_back(*next);
        merged.push_back(ref);
    }
    merged.insert(merged.end(), next, own.end());
    return merged;
}

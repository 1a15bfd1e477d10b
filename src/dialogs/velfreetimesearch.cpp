// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velfreetimesearch.h"

#include <QDebug>

namespace
{
constexpr int SecondsPerHour = 3600;
const QTime Midnight(0, 0);
const QTime LastMinute(23, 59);

/** What the entry takes of @p day. A time that is missing is where the day begins or ends. */
VelTimeSlot busyOn(const VelEntry &entry, QDate day)
{
    const QTime start = entry.getStartTime(day);
    const QTime end = entry.getEndTime(day);
    return {start.isValid() ? start : Midnight, end.isValid() ? end : LastMinute};
}
} // namespace

int VelFreeTimeSearch::Terms::seconds() const
{
    return unit == Unit::Days ? begin.secsTo(end) : length * SecondsPerHour;
}

VelFreeTimeSearch::Outcome VelFreeTimeSearch::find(const Terms &terms, QDate today)
{
    m_isSearching = true;
    m_foundDays = 0;
    if (terms.from != terms.proposedStart.date())
        return searchFreeTime(terms, terms.from, {}, today);
    return searchFreeTime(terms, terms.proposedEnd.date(), terms.proposedEnd.time(), today);
}

VelFreeTimeSearch::Outcome VelFreeTimeSearch::resume(const Terms &terms, QDate today)
{
    if (!m_isSearching)
        return {};
    return searchFreeTime(terms, m_pendingDate, m_pendingTime, today);
}

VelFreeTimeSearch::Outcome VelFreeTimeSearch::searchFreeTime(const Terms &terms, QDate day, QTime time,
                                                             QDate today)
{
    QDate seen; // showing each day on the way would only take time: nobody could see it
    for (;; day = day.addDays(1)) {
        qCDebug(velPlannerLog) << "search: " << day << time;
        if (terms.isWorkDaysOnly && !m_source.isWorkingDay(day))
            continue;
        if (day > today.addDays(LastDay)) {
            m_isSearching = false;
            show(seen); // not the day after the limit, which would be fetched for nothing
            return {Result::Exhausted, {}, {}};
        }
        if (m_source.isWaiting(day)) {
            show(seen);
            suspend(terms, day, time);
            return {Result::Suspended, {}, {}};
        }
        seen = day;
        const VelTimeSlots slots = freeSlots(terms, day, time);
        if (slots.empty())
            continue;
        const Outcome outcome = takeDay(terms, day, slots.front());
        if (outcome.result == Result::Proposal) {
            m_isSearching = false;
            show(day);
            return outcome;
        }
    }
}

/** The rest is noted before the request goes out: it may be answered, or fail, at once. */
void VelFreeTimeSearch::suspend(const Terms &terms, QDate day, QTime time)
{
    m_pendingDate = day;
    m_pendingTime = day == terms.from ? time : QTime();
    (void)m_source.getBusyEntries(day);
}

void VelFreeTimeSearch::show(QDate day)
{
    if (day.isValid())
        m_source.showDay(day);
}

VelTimeSlots VelFreeTimeSearch::freeSlots(const Terms &terms, QDate day, QTime time) const
{
    const bool isContinued = day == terms.from && terms.from == terms.proposedStart.date() && time.isValid();
    const VelEntryList entries = m_source.getBusyEntries(day);
    VelTimeSlots busy;
    busy.reserve(entries.size());
    for (const VelEntryRef &entry : entries)
        busy.push_back(busyOn(*entry.getOriginal(), day));
    return velFreeSlots({isContinued ? time : terms.begin, terms.end}, busy, terms.seconds());
}

/** Counts a free day. It is a proposal when it is the last one needed, or has room for the hours. */
VelFreeTimeSearch::Outcome VelFreeTimeSearch::takeDay(const Terms &terms, QDate day, const VelTimeSlot &slot)
{
    ++m_foundDays;
    if (terms.unit == Unit::Days) {
        if (m_foundDays < terms.length)
            return {};
        return {Result::Proposal, VelDateTime(day.addDays(1 - terms.length), slot.start),
                VelDateTime(day, slot.end)};
    }
    const QTime end = slot.start.addSecs(terms.length * SecondsPerHour); // goes round at midnight
    if (terms.end < end)
        return {};
    return {Result::Proposal, VelDateTime(day, slot.start), VelDateTime(day, end)};
}

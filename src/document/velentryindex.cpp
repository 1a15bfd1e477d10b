// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velentryindex.h"

#include <algorithm>
#include <bit>

namespace
{
/** 0 for entries of one day, else one more for each doubling of the days they span. */
qint32 levelOf(qint32 span)
{
    return span <= 0 ? 0 : static_cast<qint32>(std::bit_width(static_cast<quint32>(span)));
}

/** The longest span of a level, in days. */
qint32 longestSpan(std::size_t level)
{
    return static_cast<qint32>((1U << level) - 1);
}

/**
 * The end a range query goes by: starting or ending late enough is the same once an end is not before its
 * start.
 */
bool reaches(qint32 start, qint32 end, qint32 from)
{
    return start >= from || end >= from;
}
} // namespace

void VelEntryIndex::insert(const VelEntry &entry, Slot &slot)
{
    const qint32 day = entry.getStart().julianDay();
    slot.m_day = day;
    slot.m_level = levelOf(entry.getSpan());
    m_levels[static_cast<std::size_t>(slot.m_level)][day].push_back(
        {&entry, entry.getEnd().julianDay(), entry.type});
    const VelRecurrence &recurrence = entry.getRecurrence();
    slot.m_series = Slot::NoSeries;
    if (recurrence.isEmpty())
        return;
    slot.m_series = m_series.size();
    const qint32 lastStart = recurrence.startDay(recurrence.count());
    m_series.push_back(
        {recurrence, &entry, &slot, entry.type, lastStart + std::max(0, recurrence.spanDays())});
}

void VelEntryIndex::remove(const VelEntry &entry, Slot &slot)
{
    if (slot.m_level < 0)
        return;
    Buckets &buckets = m_levels[static_cast<std::size_t>(slot.m_level)];
    const auto bucket = buckets.find(slot.m_day);
    if (bucket != buckets.end()) {
        std::erase_if(bucket->second, [&entry](const Item &item) { return item.entry == &entry; });
        if (bucket->second.empty())
            buckets.erase(bucket);
    }
    if (slot.m_series != Slot::NoSeries) {
        m_series[slot.m_series] = m_series.back();
        m_series[slot.m_series].slot->m_series = slot.m_series;
        m_series.pop_back();
    }
    slot = Slot();
}

void VelEntryIndex::clear()
{
    for (Buckets &buckets : m_levels)
        buckets.clear();
    m_series.clear();
}

template <typename Test>
void VelEntryIndex::findEntries(qint32 from, qint32 to, Filter filter, VelEntryList &list, Test test) const
{
    for (std::size_t level = 0; level < LevelCount; ++level) {
        const Buckets &buckets = m_levels[level];
        auto bucket = buckets.lower_bound(from - longestSpan(level));
        for (; bucket != buckets.end() && bucket->first <= to; ++bucket) {
            for (const Item &item : bucket->second) {
                if ((filter.type == 0 || item.type == filter.type) && test(bucket->first, item.endDay))
                    list.emplace_back(item.entry, 0, bucket->first);
            }
        }
    }
}

template <typename Test>
void VelEntryIndex::findOccurrences(qint32 from, qint32 to, Filter filter, VelEntryList &list,
                                    Test test) const
{
    const VelJulianDay fromDay(from);
    for (const Series &series : m_series) {
        if (series.recurrence.entryDay() >= to || series.lastEnd < from
            || (filter.type != 0 && series.type != filter.type))
            continue;
        const VelRecurrence &recurrence = series.recurrence;
        const qint32 span = recurrence.spanDays();
        quint32 number =
            span > 0 ? recurrence.firstFrom(VelJulianDay(from - span)) : recurrence.firstFrom(fromDay);
        for (; number <= recurrence.count(); ++number) {
            const qint32 day = recurrence.startDay(number);
            if (day > to)
                break;
            if (test(day, day + span))
                list.emplace_back(series.entry, number, day);
        }
    }
}

void VelEntryIndex::find(qint32 from, qint32 to, Filter filter, VelEntryList &list) const
{
    const auto test = [from](qint32 start, qint32 end) { return reaches(start, end, from); };
    findEntries(from, to, filter, list, test);
    if (filter.withRecurrences)
        findOccurrences(from, to, filter, list, test);
}

void VelEntryIndex::find(qint32 day, Filter filter, VelEntryList &list) const
{
    const auto test = [day](qint32, qint32 end) { return end >= day; };
    findEntries(day, day, filter, list, test);
    if (filter.withRecurrences)
        findOccurrences(day, day, filter, list, test);
}

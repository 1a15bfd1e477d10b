// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthentries.h"

#include "views/veldaysource.h"

#include <algorithm>
#include <tuple>

namespace
{
/** What decides the order within a day, looked up once: a busy month has many thousands of comparisons. */
struct Candidate {
    int start; // milliseconds of the day
    quint32 localid;
    quint32 number;
    const VelEntryRef *ref;

    bool operator<(const Candidate &other) const
    {
        return std::tie(start, localid, number) < std::tie(other.start, other.localid, other.number);
    }
};
using Days = std::vector<std::vector<Candidate>>;

Days candidatesOf(const VelEntryList &list, const VelMonthLayout &grid)
{
    Days days(static_cast<std::size_t>(grid.dayCount()));
    const auto gridStart = static_cast<int>(grid.startDate().toJulianDay());
    for (const VelEntryRef &ref : list) {
        const VelEntry *entry = ref.getOriginal();
        if (entry->isDeleted())
            continue;
        const VelDaySource::Days shown = VelDaySource::shownDays(ref);
        const int start = ref.getStartDay() - gridStart;
        const int end = std::min(shown.last - gridStart, grid.dayCount() - 1);
        const int startTime = entry->getStart().time().msecsSinceStartOfDay();
        for (int day = std::max(0, shown.first - gridStart); day <= end; ++day)
            days[static_cast<std::size_t>(day)].push_back(
                {day == start ? startTime : 0, entry->localid, ref.getNumber(), &ref});
    }
    return days;
}
} // namespace

VelMonthEntries::VelMonthEntries(const VelEntryList &list, const VelMonthLayout &grid, int linesPerCell)
    : m_start(grid.startDate())
{
    QDate date = m_start;
    for (std::vector<Candidate> &day : candidatesOf(list, grid)) {
        const auto count = static_cast<int>(day.size());
        const int fitting = std::clamp(linesPerCell, 0, count);
        std::partial_sort(day.begin(), day.begin() + fitting, day.end());
        m_counts.push_back(count);
        m_firstLines.push_back(static_cast<int>(m_lines.size()));
        for (int line = 0; line < fitting; ++line)
            m_lines.push_back({*day[static_cast<std::size_t>(line)].ref, date, line + 1});
        date = date.addDays(1);
    }
    m_firstLines.push_back(static_cast<int>(m_lines.size()));
}

int VelMonthEntries::dayOf(QDate date) const
{
    const qint64 day = m_start.isValid() && date.isValid() ? m_start.daysTo(date) : -1;
    return day < static_cast<qint64>(m_counts.size()) ? static_cast<int>(std::max<qint64>(day, -1)) : -1;
}

int VelMonthEntries::count(QDate date) const
{
    const int day = dayOf(date);
    return day < 0 ? 0 : m_counts[static_cast<std::size_t>(day)];
}

int VelMonthEntries::shown(QDate date) const
{
    const int day = dayOf(date);
    if (day < 0)
        return 0;
    const auto index = static_cast<std::size_t>(day);
    return m_firstLines[index + 1] - m_firstLines[index];
}

int VelMonthEntries::find(quint32 localid, quint32 number, QDate date) const
{
    int found = -1;
    for (std::size_t index = 0; index < m_lines.size(); ++index) {
        const Line &line = m_lines[index];
        if (line.ref.getOriginal()->localid != localid || line.ref.getNumber() != number)
            continue;
        if (line.date == date)
            return static_cast<int>(index);
        if (found < 0)
            found = static_cast<int>(index);
    }
    return found;
}

int VelMonthEntries::neighbour(int current, QDate date, bool forward) const
{
    const int lineCount = static_cast<int>(m_lines.size());
    int next = current + (forward ? 1 : -1);
    if (current < 0) {
        const int day = dayOf(date);
        const int first = day >= 0 ? m_firstLines[static_cast<std::size_t>(day)] : forward ? 0 : lineCount;
        next = forward ? first : first - 1;
    }
    return next >= 0 && next < lineCount ? next : -1;
}

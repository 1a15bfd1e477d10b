// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldaycolumns.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <set>
#include <utility>

namespace
{
qint64 numberOf(const VelDateTime &moment)
{
    constexpr qint64 more = qint64(1) << 32; // than milliseconds in a day
    const QTime time = moment.time();
    return moment.julianDay() * more + (time.isValid() ? time.msecsSinceStartOfDay() : -1);
}

/** Where a search for the width of a span has come to while it goes through what the span overlaps. */
struct Crowd {
    int overlaps = 0;
    int maxColumn = 0;

    void add(int column)
    {
        maxColumn = std::max(maxColumn, column);
        if (overlaps <= maxColumn)
            ++overlaps;
    }
};

/** The columns that are taken at one moment of a sweep from the earliest start to the latest. */
class Taken
{
public:
    /** The first free one from 1 on. */
    [[nodiscard]] int firstFree() const { return m_free.empty() ? m_end : *m_free.begin(); }
    [[nodiscard]] int highest() const { return m_taken.empty() ? 0 : *m_taken.rbegin(); }

    void take(int column)
    {
        m_taken.insert(column);
        for (; m_end < column; ++m_end)
            m_free.insert(m_free.end(), m_end);
        if (m_end == column)
            ++m_end;
        else
            m_free.erase(column);
    }
    void release(int column)
    {
        m_taken.erase(m_taken.find(column));
        if (column > 0 && m_taken.find(column) == m_taken.end())
            m_free.insert(column);
    }

private:
    std::multiset<int> m_taken;
    std::set<int> m_free; // from 1 up to m_end
    int m_end = 1;
};

/**
 * Goes from start to start. What lasts is told from what takes no time: the latter stands in the way of nothing but
 * what starts with it.
 */
class Sweep
{
public:
    void goTo(qint64 start)
    {
        if (m_hasBegun && start == m_start)
            return;
        m_hasBegun = true;
        m_start = start;
        for (const int column : m_moments)
            m_taken.release(column);
        m_moments.clear();
        while (!m_lasting.empty() && m_lasting.top().first <= start) {
            m_taken.release(m_lasting.top().second);
            m_lasting.pop();
        }
        // What goes on here overlaps each other, so that no two of it share a column, and each one counts.
        m_crowd = {static_cast<int>(m_lasting.size()), m_taken.highest()};
        m_before = placed(m_crowd);
    }
    /** For a span that begins where the sweep is, and lasts. */
    [[nodiscard]] VelOl placeLasting() const { return placed(m_crowd); }
    /** For one that takes no time: it overlaps nothing but what began before. */
    [[nodiscard]] VelOl placeMoment() const { return m_before; }

    void add(const VelDayColumns::Span &span, int column)
    {
        m_taken.take(column);
        m_crowd.add(column);
        if (span.start < span.end)
            m_lasting.emplace(span.end, column);
        else
            m_moments.push_back(column);
    }

private:
    using Ending = std::pair<qint64, int>; // when, and the column

    [[nodiscard]] VelOl placed(const Crowd &crowd) const
    {
        const int column = crowd.overlaps == 0 ? 0 : m_taken.firstFree();
        return {std::max(crowd.overlaps, column), column};
    }

    qint64 m_start = 0;
    bool m_hasBegun = false;
    Taken m_taken;
    std::priority_queue<Ending, std::vector<Ending>, std::greater<>> m_lasting; // the one to end first on top
    std::vector<int> m_moments; // columns of what takes no time and begins here
    Crowd m_crowd;
    VelOl m_before; // of what overlaps all that began before, and nothing else
};
} // namespace

VelDayColumns::Span::Span(const VelDateTime &from, const VelDateTime &to)
    : start(numberOf(from))
    , end(numberOf(to))
{
}

VelDayColumns::VelDayColumns(const std::vector<Span> &spans)
    : m_spans(spans)
    , m_records(spans.size())
    , m_seen(spans.size() + 2)
{
}

std::vector<VelOl> VelDayColumns::calcOverlaps(const std::vector<Span> &spans)
{
    VelDayColumns columns(spans);
    if (columns.isSorted()) {
        columns.placeSorted();
        columns.narrowSorted();
    } else {
        for (std::size_t i = 0; i < spans.size(); ++i)
            columns.placeByLooking(i);
    }
    return std::move(columns.m_records);
}

bool VelDayColumns::isSorted() const
{
    return std::is_sorted(m_spans.begin(), m_spans.end(),
                          [](const Span &a, const Span &b) { return a.start < b.start; });
}

void VelDayColumns::placeByLooking(std::size_t index)
{
    const Span span = m_spans[index];
    std::vector<std::size_t> overlapping;
    Crowd crowd;
    for (std::size_t i = 0; i < index; ++i) {
        if (!span.overlaps(m_spans[i]))
            continue;
        const int column = m_records[i].column;
        overlapping.push_back(i);
        crowd.add(column);
        m_seen[static_cast<std::size_t>(column)] = index + 1;
    }
    int column = 0;
    if (crowd.overlaps != 0) {
        // Column 0 counts as taken by whoever overlaps anything.
        for (column = 1; m_seen[static_cast<std::size_t>(column)] == index + 1; ++column) { }
    }
    m_records[index] = {std::max(crowd.overlaps, column), column};
    for (const std::size_t i : overlapping)
        m_records[i].overlaps = std::max(m_records[i].overlaps, column);
}

void VelDayColumns::placeSorted()
{
    Sweep sweep;
    for (std::size_t i = 0; i < m_spans.size(); ++i) {
        const Span &span = m_spans[i];
        sweep.goTo(span.start);
        if (span.end < span.start)
            placeByLooking(i); // it may reach what the sweep has left behind
        else
            m_records[i] = span.start < span.end ? sweep.placeLasting() : sweep.placeMoment();
        sweep.add(span, m_records[i].column);
    }
}

/**
 * Each is as narrow as the highest column among those after it that overlap it: those that start with it, or before it
 * ends. The ones that take no time and start with it do not, but stand in no higher column either.
 */
void VelDayColumns::narrowSorted()
{
    std::vector<std::size_t> higher; // of those after it, each higher than all between; the nearest last
    for (std::size_t i = m_spans.size(); i-- > 0;) {
        const Span &span = m_spans[i];
        const auto isBeyond = [&](std::size_t other) {
            return m_spans[other].start >= span.end && m_spans[other].start > span.start;
        };
        const auto farthest = std::partition_point(higher.begin(), higher.end(), isBeyond);
        if (farthest != higher.end())
            m_records[i].overlaps = std::max(m_records[i].overlaps, m_records[*farthest].column);
        if (span.end < span.start)
            continue; // it was looked at with all that it overlaps
        while (!higher.empty() && m_records[higher.back()].column <= m_records[i].column)
            higher.pop_back();
        higher.push_back(i);
    }
}

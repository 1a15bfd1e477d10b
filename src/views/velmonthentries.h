// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"
#include "views/velmonthlayout.h"

#include <vector>

/**
 * Which entries stand in which cell of a month's grid, and in which line of it. Pure arithmetic.
 *
 * Only what fits is kept: the first entries of each day, by their start on that day (00:00 when they began before
 * it), then by id, then by the number of the occurrence. Of the rest there is but a count.
 */
class VelMonthEntries
{
public:
    struct Line {
        VelEntryRef ref;
        QDate date;
        int line = 1; ///< from 1; line 0 holds the day's number
    };

    VelMonthEntries() = default;
    /** Hands out @p list, which holds what touches the days of @p grid in any order; notices of deletion are left out. */
    VelMonthEntries(const VelEntryList &list, const VelMonthLayout &grid, int linesPerCell);

    /** All lines, by day and from top to bottom. */
    [[nodiscard]] const std::vector<Line> &lines() const { return m_lines; }
    /** How many entries the day has, those without a line too; 0 outside the grid. */
    [[nodiscard]] int count(QDate date) const;
    /** How many of them have a line. */
    [[nodiscard]] int shown(QDate date) const;
    [[nodiscard]] int hidden(QDate date) const { return count(date) - shown(date); }

    /**
     * The line of that entry or occurrence on @p date, or else its first one; -1 when it has none.
     * @p number is 0 for the entry itself.
     */
    [[nodiscard]] int find(quint32 localid, quint32 number, QDate date) const;
    /**
     * The line after (or before) line @p current. When that is -1, the first line of @p date or later, or the last one
     * before it; without a date the first or last of all. -1 when there is none.
     */
    [[nodiscard]] int neighbour(int current, QDate date, bool forward) const;

private:
    [[nodiscard]] int dayOf(QDate date) const;

    QDate m_start;
    std::vector<Line> m_lines;
    std::vector<int> m_counts; // by day
    std::vector<int> m_firstLines; // by day, and one more for the end
};

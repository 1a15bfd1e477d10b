// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"

/**
 * The one contiguous range of time that is selected in the days shown, and how rows join and leave it.
 *
 * A row is a range as long as the grid's interval.
 */
class VelDaySelection
{
public:
    [[nodiscard]] bool isEmpty() const { return !m_start.isValid(); }
    [[nodiscard]] const VelDateTime &start() const { return m_start; }
    [[nodiscard]] const VelDateTime &end() const { return m_end; }
    /** True when @p moment lies in the range; its end does not. */
    [[nodiscard]] bool contains(const VelDateTime &moment) const
    {
        return !isEmpty() && m_start <= moment && moment < m_end;
    }

    void clear();
    /** Grows the range to take in the row. */
    void add(const VelDateTime &start, const VelDateTime &end);
    /**
     * Takes the row out. At an edge the range shrinks by it or starts again with it; @p keepEnd says which edge gives
     * way when both are as near. True, unless the row lay further inside: then the nearer part goes.
     */
    bool remove(const VelDateTime &start, const VelDateTime &end, bool keepEnd, int intervalMinutes);
    /** Adds the row when its start is not selected, which gives false, or removes it. */
    bool toggle(const VelDateTime &start, const VelDateTime &end, bool keepEnd, int intervalMinutes);

    bool operator==(const VelDaySelection &) const = default;

private:
    VelDateTime m_start;
    VelDateTime m_end;
};

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayselection.h"

#include <cstdlib>

namespace
{
constexpr qint64 SecondsPerMinute = 60;
}

void VelDaySelection::clear()
{
    m_start = {};
    m_end = {};
}

void VelDaySelection::add(const VelDateTime &start, const VelDateTime &end)
{
    if (isEmpty() || start < m_start)
        m_start = start;
    if (!m_end.isValid() || end > m_end)
        m_end = end;
}

bool VelDaySelection::remove(const VelDateTime &start, const VelDateTime &end, bool keepEnd,
                             int intervalMinutes)
{
    const qint64 fromStart = std::llabs(start.secsTo(m_start));
    const qint64 fromEnd = std::llabs(end.secsTo(m_end));
    const qint64 interval = intervalMinutes * SecondsPerMinute;
    bool isAtEdge = true;
    if (fromStart > interval || fromEnd > interval) {
        isAtEdge = false;
        if (fromStart >= fromEnd)
            m_end = end;
        else
            m_start = start;
    } else if (fromStart != fromEnd) {
        m_start = start;
        m_end = end;
    } else if (keepEnd) {
        m_start = start;
    } else {
        m_end = end;
    }
    if (m_start == m_end)
        clear();
    return isAtEdge;
}

bool VelDaySelection::toggle(const VelDateTime &start, const VelDateTime &end, bool keepEnd,
                             int intervalMinutes)
{
    if (contains(start))
        return remove(start, end, keepEnd, intervalMinutes);
    add(start, end);
    return false;
}

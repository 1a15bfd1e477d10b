// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"

/** Where the column of a day gets its entries from: the calendar, or the busy times of those who are invited. */
class VelDaySource
{
public:
    virtual ~VelDaySource() = default;

    /**
     * True for what views show on @p day: events that touch it, and to-dos that are due on it. A task that may be done
     * over weeks would else stand before the appointments of each of their days.
     */
    [[nodiscard]] static bool isShownOn(const VelEntryRef &entry, QDate day)
    {
        const VelEntry &original = *entry.getOriginal();
        if (original.type == VelEntry::Todo)
            return entry.getEnd().date() == day;
        const QDate start = entry.getStart().date();
        return !original.isDeleted() && (start == day || (start < day && day <= entry.getEnd().date()));
    }

    /** What is shown on @p day, in the order in which it is laid out. */
    [[nodiscard]] virtual VelEntryList getEntries(QDate day) const = 0;

    /** Of a source that gives each person a column of their own: how many there are. */
    [[nodiscard]] virtual int getVisibleCount() const { return 0; }
    /** The column of that account, or -1. */
    [[nodiscard]] virtual int getColumn(quint32) const { return -1; }
};

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"

#include <algorithm>

/** Where the column of a day gets its entries from: the calendar, or the busy times of those who are invited. */
class VelDaySource
{
public:
    virtual ~VelDaySource() = default;

    /** Julian days, both included. */
    struct Days {
        qint32 first;
        qint32 last;
    };
    /**
     * The days on which views show it: all that an event touches, and of a to-do the one on which it is due. A task
     * that may be done over weeks would else stand before the appointments of each of their days. What ends before it
     * starts stands where it starts.
     */
    [[nodiscard]] static Days shownDays(const VelEntryRef &entry)
    {
        const VelEntry &original = *entry.getOriginal();
        const qint32 last = entry.getStartDay() + std::max(0, original.getSpan());
        return {original.type == VelEntry::Todo ? last : entry.getStartDay(), last};
    }
    /** True for what views show on @p day; never for the notice of a deletion. */
    [[nodiscard]] static bool isShownOn(const VelEntryRef &entry, QDate day)
    {
        const Days shown = shownDays(entry);
        return !entry.getOriginal()->isDeleted() && shown.first <= day.toJulianDay()
            && day.toJulianDay() <= shown.last;
    }

    /** What is shown on @p day, in the order in which it is laid out. */
    [[nodiscard]] virtual VelEntryList getEntries(QDate day) const = 0;

    /** True for what does not take the time of its day for certain, and is shown so. */
    [[nodiscard]] virtual bool isTentative(const VelEntry &entry) const { return entry.isTentative(); }

    /** Of a source that gives each person a column of their own: how many there are. */
    [[nodiscard]] virtual int getVisibleCount() const { return 0; }
    /** The column of that account, or -1. */
    [[nodiscard]] virtual int getColumn(quint32) const { return -1; }
    /** The name of the person whose column it is. */
    [[nodiscard]] virtual QString getColumnName(int) const { return {}; }
};

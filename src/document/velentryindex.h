// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"

#include <array>
#include <map>
#include <vector>

/**
 * Finds the entries and occurrences of some days without looking at the others.
 *
 * Entries stand in buckets by their start date, apart for each magnitude of their length in days, so that one
 * long entry makes no search look far back for the short ones. Repeating entries stand in one dense array
 * beside that; where their occurrences fall is computed. Owns no entries.
 */
class VelEntryIndex
{
public:
    /** Where an entry stands. Kept by the owner of the entry, at an address that does not change. */
    class Slot
    {
        friend class VelEntryIndex;
        static constexpr std::size_t NoSeries = static_cast<std::size_t>(-1);

        qint32 m_day = 0;
        qint32 m_level = -1;
        std::size_t m_series = NoSeries;
    };

    /** What a search leaves out. */
    struct Filter {
        int type = 0; ///< only entries of this type; 0 for all
        bool withRecurrences = true;
    };

    /**
     * Takes in @p entry by its dates, type and occurrences as they are now. Call remove() before they change.
     */
    void insert(const VelEntry &entry, Slot &slot);
    void remove(const VelEntry &entry, Slot &slot);
    void clear();

    /**
     * Appends what starts or ends on @p from or later and starts on @p to or earlier (Julian days). What
     * spans both days is in.
     */
    void find(qint32 from, qint32 to, Filter filter, VelEntryList &list) const;
    /** Appends what touches @p day (a Julian day). */
    void find(qint32 day, Filter filter, VelEntryList &list) const;

private:
    struct Item {
        const VelEntry *entry = nullptr;
        qint32 endDay = 0;
        qint32 type = 0;
    };
    struct Series {
        VelRecurrence recurrence;
        const VelEntry *entry = nullptr;
        Slot *slot = nullptr;
        qint32 type = 0;
        qint32 lastEnd = 0; // Julian day of the last end
    };
    using Buckets = std::map<qint32, std::vector<Item>>;

    static constexpr std::size_t LevelCount = 24; // lengths of up to 2^23 days, more than all supported years

    template <typename Test>
    void findEntries(qint32 from, qint32 to, Filter filter, VelEntryList &list, Test test) const;
    template <typename Test>
    void findOccurrences(qint32 from, qint32 to, Filter filter, VelEntryList &list, Test test) const;

    std::array<Buckets, LevelCount> m_levels;
    std::vector<Series> m_series;
};

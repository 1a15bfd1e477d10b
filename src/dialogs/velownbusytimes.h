// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"

#include <map>
#include <memory>
#include <vector>

class VelDoc;

/**
 * When the owner of a calendar is busy, by what stands in it: worked out week by week, and kept, as copies.
 *
 * Events take their time unless they are shown as free, were declined, or end where they begin; those without times take
 * the whole day. Tasks take none.
 */
class VelOwnBusyTimes
{
public:
    /** Keeps a reference to @p doc. */
    explicit VelOwnBusyTimes(const VelDoc &doc)
        : m_doc(doc)
    {
    }

    /** Forgets what was worked out. From now on it is the time of account @p owner, and @p planned is left out. */
    void reset(const VelEntry &planned, quint32 owner);
    [[nodiscard]] quint32 owner() const { return m_owner; }

    /** What takes time on @p date, by start. Valid until reset(). */
    [[nodiscard]] VelEntryList getEntries(QDate date);
    /**
     * @p fetched, what the server told of @p date, with these among it by their starts; where the server tells of the
     * owner what the calendar holds itself, the calendar's counts. The order of what was fetched stays.
     */
    [[nodiscard]] VelEntryList mergedInto(const VelEntryList &fetched, QDate date);

private:
    using Week = std::vector<std::unique_ptr<VelEntry>>;

    [[nodiscard]] const Week &weekOf(QDate date);
    [[nodiscard]] bool takesTime(const VelEntryRef &ref) const;
    [[nodiscard]] std::unique_ptr<VelEntry> busyTime(const VelEntryRef &ref) const;

    const VelDoc &m_doc;
    quint32 m_owner = 0;
    quint32 m_planned = 0; // local id, 0 for none
    std::map<qint64, Week> m_weeks; // by the Julian day of Monday
};

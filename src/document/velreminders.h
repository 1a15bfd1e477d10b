// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"

#include <map>
#include <optional>
#include <set>
#include <vector>

class VelEntry;

/**
 * Which reminder rings next.
 *
 * Entries stand in the order of their alert times, and those of one time by local id, as in the calendar's file.
 * Times are those of the clock on the wall, as they are in entries. Repeating entries ring for their first date
 * only.
 *
 * A snoozed reminder has a later alert time that is kept here and nowhere else. Its entry stays unfired, in the
 * calendar's file too, so that after a restart it is overdue and rings at once: it may come early, but never gets
 * lost. The later time is good for the alert that was put off; once the entry's own alert time changes, that counts.
 */
class VelReminders
{
public:
    struct Alert {
        VelDateTime time;
        quint32 localid = 0;
        auto operator<=>(const Alert &other) const = default;
    };

    /**
     * The lead time before the end of a to-do, or the start of anything else. Invalid for an entry that does not ring:
     * without a reminder, with one that has been given, deleted, or without that time.
     */
    [[nodiscard]] static VelDateTime alertTime(const VelEntry &entry);
    /** The same, or the time that the reminder was put off to. */
    [[nodiscard]] VelDateTime ringingTime(const VelEntry &entry) const;

    /** Takes in @p entry as it is now. Call remove() before it changes. True when it is going to ring. */
    bool insert(const VelEntry &entry);
    /** True when it was going to ring. */
    bool remove(const VelEntry &entry);
    void clear();

    /** Has the entry, which is in here, ring at @p until in place of its alert time. */
    void snooze(const VelEntry &entry, const VelDateTime &until);

    /** The first to ring, overdue or not. */
    [[nodiscard]] std::optional<Alert> next() const;
    /** The local ids of those whose time has come at @p now, in the order in which they ring. */
    [[nodiscard]] std::vector<quint32> due(const VelDateTime &now) const;

private:
    struct Snooze {
        VelDateTime alert; ///< that was put off
        VelDateTime until;
    };

    std::set<Alert> m_alerts;
    std::map<quint32, Snooze> m_snoozed; // by local id; may hold entries that are gone, should they come back
};

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"

#include <KConfigGroup>

#include <vector>

class VelDoc;
class VelEntry;

/**
 * Remembers in the configuration which reminders have been given, for calendars that may not be changed and have no file
 * to keep it in. A reminder that is given another time is another one.
 *
 * What is long past is forgotten, and not reminded of in such a calendar, so that what is remembered stays little.
 */
class VelGivenReminders
{
public:
    /** What began, or was due, so many days ago is long past. */
    static constexpr int KeptDays = 30;
    /** No more are remembered of one calendar; the oldest go first. */
    static constexpr int MostPerCalendar = 1000;

    explicit VelGivenReminders(KConfigGroup group);

    /** True when the reminder has been given, or its entry is long past at @p now. */
    [[nodiscard]] bool isGiven(const VelDoc &doc, const VelEntry &entry, const VelDateTime &now) const;
    /** Remembers those entries of @p doc, and forgets what is long past at @p now. */
    void add(const VelDoc &doc, const std::vector<quint32> &localids, const VelDateTime &now);

private:
    KConfigGroup m_group; // for each calendar a list
};

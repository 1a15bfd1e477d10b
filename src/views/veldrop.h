// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <memory>
#include <vector>

class VelDoc;
class VelMessages;

/** What becomes of entries that are dropped onto a day. */
namespace VelDrop
{
/**
 * Where an entry starts that is put onto @p day at @p time. One without times keeps its own, and a to-do comes to be
 * due on that day, as that is where it is shown.
 */
[[nodiscard]] VelDateTime startOn(const VelEntry &entry, QDate day, QTime time);

/** What a drop left in the calendar. */
struct Result {
    const VelEntry *entry = nullptr; ///< null when nothing was changed
    bool hasKeptDates = false; ///< it stands where it stood where it comes from
};

/**
 * Moves a stored entry to @p start and keeps its length. Refuses repeating entries, those of other owners, and
 * what would leave the dates that there are.
 */
Result move(VelDoc &doc, quint32 localid, const VelDateTime &start);

/**
 * Takes in what comes from outside the calendar. A single entry goes to @p start or, if the user would rather, keeps
 * its dates; several keep theirs.
 */
Result takeIn(VelDoc &doc, VelMessages &messages, std::vector<std::unique_ptr<VelEntry>> entries,
              const VelDateTime &start);
} // namespace VelDrop

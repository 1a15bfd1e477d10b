// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <memory>

class VelDoc;

/** How entries that come from outside - clipboard, drag, file - become entries of a calendar. */
namespace VelPaste
{
/** Moves the entry to @p start and keeps its length; one without times of day goes to that date only. */
void moveTo(VelEntry &entry, const VelDateTime &start);

/**
 * Adds what was pasted: under its own ids when it was cut from this calendar and the notice of that is still
 * there, else as a new entry. It becomes the calendar owner's. @p wasCut is for what was cut and is pasted for the
 * first time: that moves it, and a reminder that has been given stays so. Never null.
 */
const VelEntry *addPasted(VelDoc &doc, std::unique_ptr<VelEntry> entry, bool wasCut = false);

/** Adds the entry as a new one that the server has never seen and whose reminder is still to be given. Never null. */
const VelEntry *addCopy(VelDoc &doc, std::unique_ptr<VelEntry> entry);

/** The same for one of a file, which may hold years: nobody is reminded of what isOver(). Never null. */
const VelEntry *addImported(VelDoc &doc, std::unique_ptr<VelEntry> entry);

/**
 * True when the entry, and the last date of a series, has come to its end at @p now: days without times at midnight. A
 * series without an end never has.
 */
[[nodiscard]] bool isOver(const VelEntry &entry, const VelDateTime &now);
} // namespace VelPaste

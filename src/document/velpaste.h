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
 * there, else as a new entry. It becomes the calendar owner's. Never null.
 */
const VelEntry *addPasted(VelDoc &doc, std::unique_ptr<VelEntry> entry);

/** Adds the entry as a new one that the server has never seen. Never null. */
const VelEntry *addCopy(VelDoc &doc, std::unique_ptr<VelEntry> entry);
} // namespace VelPaste

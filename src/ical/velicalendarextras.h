// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <KCalendarCore/Incidence>

/**
 * What iCalendar has no place for, as X-DELMAST- properties.
 *
 * Each replaces one field that was read from the ordinary properties, and says by a checksum which value it replaces:
 * when another program has changed that, the extra property is out of date and does not count.
 */
namespace VelICalendarExtras
{
/** Adds a property for each field of @p entry that differs from @p readBack, what a reader of @p incidence would get. */
void write(const VelEntry &entry, const VelEntry &readBack, KCalendarCore::Incidence &incidence);

/** Refines what was read from the incidence, but for the recurrence rule. */
void readFields(const KCalendarCore::Incidence &incidence, VelEntry &entry);
/** Refines the rule that was read from the incidence. True when there was something to refine. */
bool readRule(const KCalendarCore::Incidence &incidence, VelEntry &entry);
} // namespace VelICalendarExtras

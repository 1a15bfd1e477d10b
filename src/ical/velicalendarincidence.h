// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <KCalendarCore/Incidence>

#include <QTimeZone>

/**
 * An entry as an incidence, and back: everything but the recurrence rule, and what only extra properties can carry.
 *
 * Incidences made here have the wall clock marked as UTC: no rule of any zone can then move or refuse a time.
 */
namespace VelICalendarIncidence
{
/** The wall clock of @p zone; of a floating time what it says. */
[[nodiscard]] VelDateTime toWallClock(const QDateTime &time, const QTimeZone &zone);

/** @p userid is the calendar's user: the owner of an entry that names none. Null for what is neither event nor to-do. */
[[nodiscard]] KCalendarCore::Incidence::Ptr toIncidence(const VelEntry &entry, quint32 userid);

/** A new, dirty entry. Its start or end may be missing. */
[[nodiscard]] VelEntry toEntry(const KCalendarCore::Incidence &incidence, const QTimeZone &zone);
} // namespace VelICalendarIncidence

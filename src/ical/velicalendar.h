// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velforeigncontent.h"
#include "model/velentrylist.h"

#include <QByteArray>
#include <QStringList>
#include <QTimeZone>

/**
 * Entries as iCalendar (RFC 5545), for other calendar programs.
 *
 * All times are floating: what the clock on the wall shows. Fields for which iCalendar has no place travel as X-DELMAST-
 * properties, which count only as long as no other program has changed what they refine. What write() wrote reads back
 * equal, except for `localid`, `globalid`, `originalid`, `dirty` (read entries are new and dirty), `reminderfired`,
 * milliseconds and the order of the entries.
 *
 * Recurrence rules differ from ours in three ways, which write() makes up for with EXDATE, RDATE and BYSETPOS: the days
 * of the first week or month that our rules pass over, starts that are no day of their own rule, and days that short
 * months lack. See VelICalendarRule for what read() makes of rules that ours cannot express.
 */
namespace VelICalendar
{
/** No more bytes than this are read. */
constexpr int MaximumSize = 64 << 20;

/**
 * The entries of the list in its order; occurrences belong to their series and are not written, nor are deletion notices
 * and entries without a start and an end. @p userid is the calendar's user: the owner of an entry that names none.
 * @p today limits the few open series that have to be written day by day. @p leftOut, unless null, gets the titles of
 * entries with a date that cannot be said there: the toolkit writes none after the year 3000.
 */
[[nodiscard]] QByteArray write(const VelEntryList &entries, quint32 userid, QDate today,
                               QStringList *leftOut = nullptr);

/**
 * All entries of a text, by their start. UTC times and those of other zones become the wall clock of @p zone. Not readable
 * is what is no iCalendar at all, or too long.
 */
[[nodiscard]] VelForeignContent read(const QByteArray &bytes,
                                     const QTimeZone &zone = QTimeZone::systemTimeZone());

/** True when the text says that it is a calendar of version 2.0; vCalendar text is of version 1.0. */
[[nodiscard]] bool isICalendar(const QByteArray &bytes);
} // namespace VelICalendar

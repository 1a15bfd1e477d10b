// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"

#include <QString>

/** What printouts say of an entry. Entries may be occurrences. */
namespace VelPrintText
{
/** Minutes since the day's midnight: 0 to 1440. */
struct Span {
    int begin;
    int end;
};

/** The title in one line, never empty. */
[[nodiscard]] QString title(const VelEntry &entry);
/** The part of @p day that a timed entry takes; its end is never before its begin. */
[[nodiscard]] Span span(const VelEntryRef &ref, QDate day);
/** Without times of day, or longer than @p day at both ends. */
[[nodiscard]] bool isAllDay(const VelEntryRef &ref, QDate day);
/** An event that has times but ended in the midnight with which @p day begins: it is no more on that day. */
[[nodiscard]] bool isOver(const VelEntryRef &ref, QDate day);
/** Begin and end on @p day in the user's format; "All day" for an entry without times. */
[[nodiscard]] QString times(const VelEntryRef &ref, QDate day);
/** One letter in brackets for each of: private, repeating, with a reminder. Empty for none. */
[[nodiscard]] QString marks(const VelEntry &entry);
/** What the letters mean. */
[[nodiscard]] QString legend();
} // namespace VelPrintText

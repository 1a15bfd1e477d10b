// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"

#include <QString>

/** What an entry is, in words: for screen readers, tool tips and lists on paper. */
namespace VelEntryText
{
/** The title as far as it is shown, or words in its place. */
[[nodiscard]] QString title(const VelEntry &entry);
/** From and to, with dates where they are others than @p day. Empty for an entry of that day alone without times. */
[[nodiscard]] QString times(const VelEntryRef &entry, QDate day);
/** "private, tentative, recurring, reminder 10 minutes, completed task": what applies, empty for nothing. */
[[nodiscard]] QString marks(const VelEntry &entry);
/** One sentence: title, day, times and marks. */
[[nodiscard]] QString describe(const VelEntryRef &entry, QDate day);
/** The same as a tool tip of some lines, with the owner's name where @p owner is not empty. */
[[nodiscard]] QString toolTip(const VelEntryRef &entry, QDate day, const QString &owner);
/** The day in full: weekday and date. */
[[nodiscard]] QString dayName(QDate day);
/** The month in full with its year. */
[[nodiscard]] QString monthName(QDate month);
} // namespace VelEntryText

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDate>
#include <QString>

class VelDoc;

/** Copies of a calendar as it was before a synchronisation took entries away, for somebody to find them in again. */
namespace VelKeptCopy
{
/** So many are kept of one calendar. */
constexpr int MostCopies = 10;

/**
 * Writes what is in memory, marked as an archive, under a name of its own beside the calendar's file; where that cannot be,
 * or there is no local file, into @p folder, which is made when it is missing. Only the newest copies stay. Returns the path,
 * or nothing when none could be written.
 */
[[nodiscard]] QString write(const VelDoc &doc, QDate today, const QString &folder);
} // namespace VelKeptCopy

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <memory>

/**
 * How two changes of the same entry are brought together: the table by which everybody who merges goes.
 *
 * What only one side changed is taken from that side, what both changed from the replayed one. What makes sense only
 * together is taken together from one side: start, end and `notime`; the six fields of the rule; the reminder and the mark
 * that it was given; who is invited in which role, while each answer stands for itself. Times and rule come from different sides only where the rule does not care: when the series goes by
 * weekdays, by days of the month or ends on a date, and the two sides start on different days, both come from the
 * replayed side. Of two that were moved, one that ends before it starts never displaces one that does not.
 */
namespace VelReplay
{
/**
 * Everything of @p current, and in it the difference between @p from and @p to. The ids and the mark of what is still to
 * be sent stay those of @p current; occurrences are not worked out.
 */
[[nodiscard]] std::unique_ptr<VelEntry> replayed(const VelEntry &current, const VelEntry &from,
                                                 const VelEntry &to);
} // namespace VelReplay

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <memory>

/** How two changes of the same entry are brought together. */
namespace VelReplay
{
/**
 * Everything of @p current, and in it the difference between @p from and @p to, field by field. The ids and the mark of what
 * is still to be sent stay those of @p current; occurrences are not worked out.
 */
[[nodiscard]] std::unique_ptr<VelEntry> replayed(const VelEntry &current, const VelEntry &from,
                                                 const VelEntry &to);
} // namespace VelReplay

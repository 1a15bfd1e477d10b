// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/** The ranges of preferences, both for what a configuration file says and for what a user can choose. */
namespace VelLimits
{
constexpr int HighestPort = 65535;
constexpr int LongestInterval = 7 * 24 * 60; ///< minutes
constexpr int LongestReminder = 32000 * 24 * 60; ///< minutes: the most that the reminder's input can say
} // namespace VelLimits

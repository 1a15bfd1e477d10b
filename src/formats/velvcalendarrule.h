// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velrecurrencerule.h"

#include <QTimeZone>

#include <optional>
#include <string_view>

/** Recurrence rules in the grammar of vCalendar 1.0, for example "W2 MO TH #5". */
namespace VelVCalendarRule
{
/**
 * The rule of an entry that starts on @p start, with its end: the end date at midnight, which is exclusive,
 * or else the number of instances, 0 for an open rule. Empty for no rule, and for one that names no day where
 * it needs one.
 */
[[nodiscard]] QString toText(const VelRecurrenceRule &rule, QDate start);

struct Reading {
    VelRecurrenceRule rule;
    bool isExact = true; ///< false when the text says more than the rule
};

/**
 * The rule that @p text describes; none when it is no rule, or one with an interval of 0.
 *
 * Of several days of the month, or several positions in it, the first counts. Days that the text does not
 * name are those of @p start. Every yearly kind repeats on the date of the start. An end at midnight is
 * exclusive, as toText() writes it; with another time of day, or without any, its day is part of the series.
 * A text without an end has two instances, as vCalendar 1.0 lays down. UTC ends become the wall clock of @p
 * zone.
 */
[[nodiscard]] std::optional<Reading> fromText(std::string_view text, QDate start, const QTimeZone &zone);
} // namespace VelVCalendarRule

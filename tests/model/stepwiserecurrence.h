// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velrecurrencerule.h"

#include <QString>

#include <vector>

class QRandomGenerator;

/** A rule at work, with all that decides its occurrences. */
struct RecurrenceCase {
    VelRecurrenceRule rule;
    QDate start;
    QDate today;

    /** For the message of a failing test. */
    [[nodiscard]] QString describe() const;
};

/** The occurrences as they follow one from another, the slow way. */
struct StepwiseRecurrence {
    /**
     * Steps through the rule from occurrence to occurrence, and gives up after @p most. Slow, but each line
     * says what the calendar promises; the numbered series has to agree with it.
     */
    StepwiseRecurrence(const RecurrenceCase &recurrence, std::size_t most);

    std::vector<qint64> days; ///< Julian days
    bool isComplete = true; ///< false when there would have been more than was asked for
};

/** The five ways to repeat. */
enum class RuleKind { Daily, Weekly, MonthlyByDay, MonthlyByWeekday, Yearly };

/**
 * A case with the corners of the calendar well represented: ends of months, leap days, rules that cannot be
 * followed.
 */
[[nodiscard]] RecurrenceCase randomCase(RuleKind kind, QRandomGenerator &random);

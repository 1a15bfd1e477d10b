// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velrecurrencerule.h"

/**
 * What the controls of the recurrence editor show, and how that and a rule follow from each other.
 *
 * Controls that a rule does not need have a value too, the one that suits the start of the event: it is what
 * the user meets first when turning to another kind of rule.
 */
struct VelRecurChoice {
    enum class MonthBy { Day, Weekday };
    enum class End { Never, Count, Date };
    /** Why a rule cannot be followed. */
    enum class Problem { None, NoWeekday, EndBeforeStart };

    /** The index of "Last" among "First", "Second", "Third", "Fourth", "Last". */
    static constexpr int LastOrdinal = 4;

    /**
     * How to show @p rule for an event that starts on @p start, which must be valid.
     *
     * Without a rule: every day, for ever. A rule with a count and an end date shows the count, as the
     * sentence does that describes it; days out of range give way to those of the start.
     */
    [[nodiscard]] static VelRecurChoice fromRule(const VelRecurrenceRule &rule, QDate start);
    /** The rule as it is stored, with nothing in it that its kind does not need. */
    [[nodiscard]] VelRecurrenceRule toRule() const;
    [[nodiscard]] Problem getProblem(QDate start) const;

    bool operator==(const VelRecurChoice &other) const = default;

    int rule = 0; ///< index among "day(s)", "week(s)", "month(s)", "year(s)"
    int every = 1;
    QVector<int> weekdays; ///< 1 = Monday to 7 = Sunday
    MonthBy monthBy = MonthBy::Day;
    int dayOfMonth = 1;
    int ordinal = 0; ///< index, see LastOrdinal
    int weekday = 0; ///< index, 0 = Monday
    End end = End::Never;
    int count = 10; ///< times in all, the event itself included
    QDate endDate; ///< the first day without an occurrence
};

/** The dates on which an event starts again. */
struct VelNextDates {
    /** The first of them on or after @p today, for a rule of an event that starts on @p start. */
    VelNextDates(const VelRecurrenceRule &rule, QDate start, QDate today);

    /** So many dates give a picture of a rule. */
    static constexpr int MaximumCount = 5;

    QVector<QDate> dates; ///< MaximumCount at most
    bool isMore = false; ///< others follow
};

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QLoggingCategory>
#include <QTime>

#include <vector>

/** The trace of a search for free time. Off unless it is asked for. */
Q_DECLARE_LOGGING_CATEGORY(velPlannerLog)

/** A span of time within one day, free or busy: from `start` up to, and without, `end`. */
struct VelTimeSlot {
    /** Negative when it ends before it starts. */
    [[nodiscard]] int seconds() const { return start.secsTo(end); }
    bool operator==(const VelTimeSlot &) const = default;

    QTime start;
    QTime end;
};

using VelTimeSlots = std::vector<VelTimeSlot>;

/**
 * What is left of @p list beside one busy time, as slots of at least @p seconds. The later part of a slot that is cut in
 * two goes to the end of the list. A busy time that ends before it starts takes no time.
 *
 * A busy time that begins after a slot has ended moves that slot's end up to its own start: past the range that was asked
 * for, and over a busy time that came before. It looks odd and is kept on purpose, as it decides what is proposed.
 */
void velCutSlots(VelTimeSlots &list, const VelTimeSlot &busy, int seconds);

/** The free slots of a day that begins as @p first, cut by the busy times one after the other; none if it is too short. */
[[nodiscard]] VelTimeSlots velFreeSlots(const VelTimeSlot &first, const VelTimeSlots &busy, int seconds);

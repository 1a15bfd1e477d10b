// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"
#include "views/veldayrows.h"

#include <QPoint>
#include <QSize>

/** What the mouse does with an entry in the column of a day, as pure arithmetic. */
namespace VelDayDrag
{
enum Mode {
    NoMode = 0,
    ResizeStart = 1, ///< top edge: the time at which it starts
    ResizeEnd = 2, ///< bottom edge: the time at which it ends
    MoveStartDay = 3, ///< the edge where reading begins: the day on which it starts
    MoveEndDay = 4, ///< the other side: the day on which it ends
    Drag = 5 ///< the whole entry
};

/** An entry as one column shows it. */
struct Shape {
    QSize size; ///< pixels
    bool isFirstDay = true; ///< the column is the day on which it starts
    bool isLastDay = true;
    bool hasTimes = true;
};

/** What a press at @p point of the shape takes hold of; x runs in the direction of reading. */
[[nodiscard]] Mode hitZone(QPoint point, const Shape &shape);

struct Times {
    VelDateTime start;
    VelDateTime end;
    bool operator==(const Times &) const = default;
};

/**
 * Follows the pointer at @p y of the column with the start (ResizeStart) or the end (ResizeEnd), in whole intervals
 * and within that edge's own day. The entry never gets shorter than one interval; a step that would make it so is
 * not taken.
 */
[[nodiscard]] Times resized(Mode mode, const Times &times, int y, const VelDayRows &rows);

/**
 * Follows the pointer with the day of the start (MoveStartDay) or end (MoveEndDay). @p x is counted from the dragged edge
 * of the entry as it was when pressed, in the direction of reading; a column is @p columnWidth pixels wide. @p hasTimes
 * is false for an entry that counts days only.
 */
[[nodiscard]] Times movedDays(Mode mode, const Times &pressed, int x, int columnWidth, bool hasTimes,
                              int intervalMinutes);
} // namespace VelDayDrag

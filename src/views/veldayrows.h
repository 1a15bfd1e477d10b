// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QTime>

/**
 * The rows of a day's column: pixels from its top to times of day and back. Pure arithmetic.
 *
 * Conversions truncate, so that what is selected, drawn and hit by the mouse is always the same.
 */
struct VelDayRows {
    int pixelsPerHour = 0;
    int interval = 30; ///< minutes in a row

    /** The beginning of the row at @p y, which is taken into the day when it lies outside. */
    [[nodiscard]] QTime getTime(int y) const;
    /** The end of the row that begins at @p time; 23:59 instead of midnight, so that no range wraps. */
    [[nodiscard]] QTime addInterval(QTime time) const;
    /** @p rows rows later, or earlier when negative, but within the day; 23:59 stands for its end. */
    [[nodiscard]] QTime stepped(QTime time, int rows) const;
    /** Pixels from the top to @p time. */
    [[nodiscard]] int top(QTime time) const;
    /** Height of one row. */
    [[nodiscard]] int rowHeight() const;
    /** How many rows an hour has. */
    [[nodiscard]] int rowsPerHour() const;
};

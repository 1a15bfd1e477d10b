// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QList>

class KConfigGroup;

/**
 * How a user has arranged the columns of a table, as it is kept in the configuration. All lists go by logical
 * column.
 */
struct WTableArrangement {
    /** 1 for a shown, 0 for a hidden column; empty when the configuration says nothing. */
    QList<int> actives;
    /**
     * Pixels; hidden columns have the width that they come back with. Empty when the configuration says
     * nothing.
     */
    QList<int> widths;
    /** The display column of each logical column; empty for the order in which the columns were set up. */
    QList<int> positions;
    int sortColumn = 0;
    bool ascending = true;

    /**
     * Reads the arrangement of a table with @p columns columns. A sort column that does not exist and
     * positions that are no permutation are ignored; the lengths of the other lists are for the table to
     * judge.
     */
    [[nodiscard]] static WTableArrangement read(const KConfigGroup &group, int columns);
    void write(KConfigGroup &group) const;
};

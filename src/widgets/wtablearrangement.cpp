// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtablearrangement.h"

#include <KConfigGroup>

namespace
{
constexpr char ActivesKey[] = "ActiveColumns";
constexpr char WidthsKey[] = "Widths";
constexpr char SortColumnKey[] = "SortColumn";
constexpr char SortOrderKey[] = "SortOrder";
/** The logical columns, and in the same places of the second list their display columns. */
constexpr char LogicalKey[] = "ColumnOrder1";
constexpr char DisplayKey[] = "ColumnOrder2";

/** The pairs as a list by logical column; empty when they do not name each column and each place once. */
QList<int> positionsFrom(const QList<int> &logical, const QList<int> &display, int columns)
{
    if (logical.count() != columns || display.count() != columns) {
        return {};
    }
    QList<int> result;
    for (int column = 0; column < columns; ++column) {
        const int pair = int(logical.indexOf(column));
        if (pair < 0 || !display.contains(column)) {
            return {};
        }
        result.append(display.at(pair));
    }
    return result;
}
} // namespace

WTableArrangement WTableArrangement::read(const KConfigGroup &group, int columns)
{
    WTableArrangement result;
    result.actives = group.readEntry(ActivesKey, QList<int>());
    result.widths = group.readEntry(WidthsKey, QList<int>());
    result.positions = positionsFrom(group.readEntry(LogicalKey, QList<int>()),
                                     group.readEntry(DisplayKey, QList<int>()), columns);
    const int sortColumn = group.readEntry(SortColumnKey, 0);
    result.sortColumn = sortColumn >= 0 && sortColumn < columns ? sortColumn : 0;
    result.ascending = group.readEntry(SortOrderKey, true);
    return result;
}

void WTableArrangement::write(KConfigGroup &group) const
{
    QList<int> logical;
    for (int column = 0; column < positions.count(); ++column) {
        logical.append(column);
    }
    group.writeEntry(ActivesKey, actives);
    group.writeEntry(WidthsKey, widths);
    group.writeEntry(LogicalKey, logical);
    group.writeEntry(DisplayKey, positions);
    group.writeEntry(SortColumnKey, sortColumn);
    group.writeEntry(SortOrderKey, ascending);
}

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"

#include <cstddef>
#include <vector>

/** Where an entry stands among those that it shares time with. */
struct VelOl {
    int overlaps = 0; ///< highest column in use around it: it is one of `overlaps` + 1 columns wide
    int column = 0; ///< 0 is where the line of reading begins
    bool operator==(const VelOl &) const = default;
};

/**
 * Gives spans of time, one after the other, columns in which none overlaps another.
 *
 * A span that overlaps none before it stands in column 0, every other in the first column from 1 on that is free of
 * those that it overlaps. In the order of their starts, as the views have them, this takes little more time for each
 * span than it takes to sort it; in any other order, and for a span that ends before it starts, all before it are
 * looked at.
 */
class VelDayColumns
{
public:
    /** Two moments as plain numbers, of which only the order counts: looking at each with each compares a lot. */
    struct Span {
        Span(const VelDateTime &from, const VelDateTime &to);

        /** As VelEntry::overlap(): not the same both ways when one of the two takes no time. */
        [[nodiscard]] bool overlaps(const Span &other) const
        {
            return (start <= other.start && other.start < end) || (start < other.end && other.end <= end)
                || (other.start < start && other.end > end);
        }

        qint64 start;
        qint64 end; ///< may lie before the start in a faulty entry
    };

    /** One record for each span, in their order. */
    [[nodiscard]] static std::vector<VelOl> calcOverlaps(const std::vector<Span> &spans);

private:
    explicit VelDayColumns(const std::vector<Span> &spans);

    [[nodiscard]] bool isSorted() const;
    void placeByLooking(std::size_t index);
    void placeSorted();
    void narrowSorted();

    const std::vector<Span> &m_spans;
    std::vector<VelOl> m_records;
    std::vector<std::size_t> m_seen; // by column: for which span, counted from 1, it was last found taken
};

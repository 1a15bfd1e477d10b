// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <map>
#include <vector>

/**
 * What was sent to the server and not taken as it was sent, in words for the user: somebody thinks that it is so.
 *
 * What stays unsent goes with every synchronisation, and is told only once unless somebody asks.
 */
class VelNotTaken
{
public:
    enum class Fate {
        Unsent, ///< not mentioned: it stays in the calendar, and goes with the next synchronisation
        Replaced, ///< by the server's version
        Deleted ///< there, and therefore here
    };
    struct Item {
        VelEntry entry; ///< as it was sent
        Fate fate;
        bool operator==(const Item &) const = default;
    };

    /**
     * True when @p came says of the calendar of @p userid what @p sent did. What only the server knows does not count: ids,
     * the answers of others, and what a message cannot carry.
     */
    [[nodiscard]] static bool isTaken(const VelEntry &sent, const VelEntry &came, quint32 userid);

    /**
     * What the user is to be told after a synchronisation that did not take @p items, empty for nothing. What was told
     * before and stands as it did is told again only when @p isAsked.
     */
    [[nodiscard]] QString tell(const std::vector<Item> &items, bool isAsked);
    /** Another calendar is shown. */
    void clear() { m_told.clear(); }

private:
    std::map<quint32, Item> m_told; // by local id
};

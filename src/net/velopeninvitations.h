// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "net/velmerge.h"

#include <map>
#include <optional>
#include <vector>

/**
 * The invitations that wait for the user's answer.
 *
 * A new one is not in the calendar before it is answered, and the server sends it again with every answer. A changed one is,
 * with its new times and the answer that was given before, until the user says otherwise. Neither is written to a file.
 */
class VelOpenInvitations
{
public:
    [[nodiscard]] int count() const { return int(m_items.size()); }
    /** Their global ids, in the order of their starts. */
    [[nodiscard]] std::vector<quint32> ids() const;

    /** Takes over what a merge left open, and forgets what it has settled, or what is over. */
    void take(const VelMerge::Report &report, const VelDoc &doc);
    /** Forgets what has been answered or has gone in another way. */
    void prune(const VelDoc &doc);
    void clear() { m_items.clear(); }

    /** What the user is to be asked; none when that invitation does not wait any more. */
    [[nodiscard]] std::optional<VelMerge::Question> question(quint32 globalid, const VelDoc &doc) const;
    /**
     * The user's answer: a value of VelAccount::Status, Unanswered when they took note of a change and stay with the answer
     * given before. True when the calendar has changed: the answer is to be sent. The views are the caller's to update.
     */
    bool answer(VelDoc &doc, quint32 globalid, int answer);

private:
    struct Item {
        VelMerge::Question question;
        std::optional<int>
            status; ///< the user's own in the calendar's copy, when it began to wait; none without a copy
    };
    using Items = std::map<quint32, Item>; // by global id

    [[nodiscard]] static std::optional<int> statusIn(const VelDoc &doc, quint32 globalid);
    static bool storeAnswered(VelDoc &doc, const VelEntry &invitation, int answer);

    Items m_items;
};

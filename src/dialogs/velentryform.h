// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

/** What the entry editor has in its controls, and how it comes into an entry. */
struct VelEntryForm {
    /** What an entry has, as the editor begins with it. */
    [[nodiscard]] static VelEntryForm of(const VelEntry &entry);

    /** True when it starts no later than it ends. */
    [[nodiscard]] bool isInOrder() const { return start <= end; }
    /**
     * Writes everything into @p entry and marks it changed: what only events or only to-dos have goes into those. A
     * reminder that rang stays so unless its lead time is another one.
     */
    void applyTo(VelEntry &entry) const;

    QString title;
    QString description;
    VelDateTime start;
    VelDateTime end;
    quint32 reminder = 0; ///< minutes, 0 for none
    bool notime = false;

    /** @name Of events */
    /// @{
    VelAccountList accounts;
    int access = VelEntry::Public;
    int display = VelEntry::Busy;
    VelRecurrenceRule rule; ///< none when it does not repeat
    /// @}

    /** @name Of to-dos */
    /// @{
    bool complete = false;
    int priority = 0;
    /// @}
};

/**
 * The end that belongs to a start which the user moved: it moves along when the start gets later, and stays when it
 * gets earlier. That makes appointments longer at the front on purpose.
 */
[[nodiscard]] VelDateTime velEndForStart(const VelDateTime &oldStart, const VelDateTime &newStart,
                                         const VelDateTime &end);

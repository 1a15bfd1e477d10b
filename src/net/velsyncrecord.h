// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"

#include <QString>

/**
 * How the synchronisations of a calendar went, and what of it the user is to see all the time.
 *
 * Nobody waits for what runs by itself, so that its failures show no box. One of them is soon made up for; from the second
 * in a row on the calendar is not what the user takes it for.
 */
class VelSyncRecord
{
public:
    enum class Outcome {
        Good,
        Failed,
        Undecided ///< given up by the user, or of a calendar that is not open any more
    };

    /** @p reason says in words why it failed. */
    void note(Outcome outcome, bool isByItself, const VelDateTime &now, const QString &reason = {});
    /** Nothing is known any more: another calendar is shown, or nothing is to happen by itself. */
    void clear() { *this = {}; }
    /** What is to be seen until a synchronisation succeeds, empty for nothing. @p today is left out of its time. */
    [[nodiscard]] QString warning(QDate today) const;

private:
    VelDateTime m_since; // the last good one, or else the first that failed
    QString m_reason;
    int m_failures = 0; // in a row, of those that ran by themselves
};

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QStringList>

#include <memory>
#include <vector>

/** What was read from a file, or a drag, that another program may have written. */
struct VelForeignContent {
    /** Adds @p entry, and a copy of it without a rule for each of @p days, days of its series that its rule passes over. */
    void add(std::unique_ptr<VelEntry> entry, const QVector<QDate> &days);

    std::vector<std::unique_ptr<VelEntry>> entries; ///< without ids
    QStringList simplified; ///< titles of entries that repeat otherwise than the file says, or not at all
    int singles = 0; ///< of the entries: stand for one day of another's series
    int leftOut = 0; ///< entries that are incomplete, cancelled, or have no date
    int passedOver = 0; ///< parts of entries that are larger, or more, than any program writes
    bool isReadable = true; ///< false when nothing could be made of the whole
};

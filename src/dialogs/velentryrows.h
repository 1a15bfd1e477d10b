// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velanswer.h"
#include "model/velaccount.h"

#include <QString>

#include <vector>

class VelDoc;

/** What there is to read about an entry: a heading, and a text or some people. */
struct VelEntryRow {
    QString heading;
    QString text;
    VelAccountList people = {}; ///< with their answers; where there are any, there is no text
};

/** The rows that show @p entry of the calendar @p doc, from top to bottom. @p organizer is its owner's name. */
[[nodiscard]] std::vector<VelEntryRow> velEntryRows(const VelDoc &doc, const VelEntry &entry,
                                                    VelAnswer::Mode mode, const QString &organizer);

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velforeigncontent.h"

void VelForeignContent::add(std::unique_ptr<VelEntry> entry, const QVector<QDate> &days)
{
    const VelEntry series = *entry;
    entries.push_back(std::move(entry));
    for (const QDate day : days) {
        const VelDateTime end = series.getEnd().addDays(series.getStart().date().daysTo(day));
        if (!end.isValid())
            continue; // behind the last date that there is
        auto single = std::make_unique<VelEntry>(series);
        single->rule.clear();
        single->setStart({day, series.getStart().time()});
        single->setEnd(end);
        entries.push_back(std::move(single));
        ++singles;
    }
}

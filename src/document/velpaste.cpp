// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velpaste.h"

#include "document/veldoc.h"

namespace
{
/** From one occurrence to the next. */
constexpr int MostYears = 100;

/** What somebody else organised becomes the user's own when they put it into their calendar. */
void takeOver(const VelDoc &doc, VelEntry &entry)
{
    if (doc.isOwner(&entry))
        return;
    entry.user = doc.getUserId();
    entry.clearAccountStatuses();
}

bool isCutFrom(const VelDoc &doc, const VelEntry &entry)
{
    const VelEntry *stored = doc.getEntry(entry.localid);
    // Other calendars use the same small local ids: the notice must be about the very same entry.
    return stored && stored->isDeleted() && entry.globalid != 0 && stored->globalid == entry.globalid;
}

/** Undo may have brought back what was cut. */
bool isStillThere(const VelDoc &doc, const VelEntry &entry)
{
    const VelEntry *stored = doc.getEntry(entry.localid);
    return stored && !stored->isDeleted() && stored->globalid == entry.globalid
        && stored->getTitle() == entry.getTitle();
}

const VelEntry *addNew(VelDoc &doc, std::unique_ptr<VelEntry> entry)
{
    takeOver(doc, *entry);
    entry->localid = 0;
    entry->globalid = 0;
    entry->originalid = 0;
    entry->uDirty(1);
    return doc.addEntry(doc.newEntry(std::move(entry)));
}
} // namespace

namespace VelPaste
{
void moveTo(VelEntry &entry, const VelDateTime &start)
{
    const VelDateTime newStart = entry.notime ? start.withTime(entry.getStart().time()) : start;
    const VelDateTime newEnd = newStart.addSecs(entry.getStart().secsTo(entry.getEnd()));
    if (!newEnd.isValid())
        return; // it would end after the last date there is
    entry.setStart(newStart);
    entry.setEnd(newEnd);
}

const VelEntry *addPasted(VelDoc &doc, std::unique_ptr<VelEntry> entry, bool wasCut)
{
    if (!isCutFrom(doc, *entry)) {
        return wasCut && !isStillThere(doc, *entry) ? addNew(doc, std::move(entry))
                                                    : addCopy(doc, std::move(entry));
    }
    takeOver(doc, *entry);
    entry->originalid = 0;
    entry->uDirty(1);
    return doc.addEntry(std::move(entry));
}

const VelEntry *addCopy(VelDoc &doc, std::unique_ptr<VelEntry> entry)
{
    entry->reminderfired = false;
    return addNew(doc, std::move(entry));
}

const VelEntry *addImported(VelDoc &doc, std::unique_ptr<VelEntry> entry)
{
    entry->reminderfired = entry->reminder != 0 && isOver(*entry, doc.now());
    return addNew(doc, std::move(entry));
}

bool isOver(const VelEntry &entry, const VelDateTime &now)
{
    VelDateTime end = entry.getEnd();
    if (entry.notime)
        end = end.withTime(QTime(0, 0)).addDays(1);
    // Of a series without an end the calendar works out only the near future.
    const VelRecurrence series(entry.rule, entry.getStart().date(), entry.getSpan(),
                               now.date().addYears(MostYears));
    if (!series.isEmpty())
        end = end.addDays(series.startDay(series.count()) - series.entryDay());
    return end <= now;
}
} // namespace VelPaste

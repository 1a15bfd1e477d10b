// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentryform.h"

#include <algorithm>

VelEntryForm VelEntryForm::of(const VelEntry &entry)
{
    VelEntryForm form;
    form.title = entry.getTitle();
    form.description = entry.getDescription();
    form.start = entry.getStart();
    form.end = entry.getEnd();
    form.reminder = entry.reminder;
    form.notime = entry.notime;
    form.accounts = entry.accounts;
    // The inputs have no place for what is not set, nor for values from elsewhere that nobody knows.
    form.access = std::clamp(entry.access, int(VelEntry::Public), int(VelEntry::Private));
    form.display = std::clamp(entry.display, int(VelEntry::Busy), int(VelEntry::TentativeTime));
    form.rule = entry.rule;
    form.complete = entry.complete;
    form.priority = entry.priority;
    return form;
}

void VelEntryForm::applyTo(VelEntry &entry) const
{
    entry.setTitle(title);
    entry.setStart(start);
    entry.setEnd(end);
    entry.setDescription(description);
    entry.notime = notime;
    if (entry.reminder != reminder)
        entry.reminderfired = false;
    entry.reminder = reminder;
    if (entry.type == VelEntry::Event) {
        entry.accounts = accounts;
        entry.access = access;
        entry.display = display;
        entry.rule = rule;
    } else if (entry.type == VelEntry::Todo) {
        entry.complete = complete;
        entry.priority = priority;
    }
    entry.uDirty(1);
}

VelDateTime velEndForStart(const VelDateTime &oldStart, const VelDateTime &newStart, const VelDateTime &end)
{
    if (!(oldStart < newStart))
        return end;
    const VelDateTime moved = newStart.addSecs(oldStart.secsTo(end));
    return moved.isValid() ? moved : end;
}

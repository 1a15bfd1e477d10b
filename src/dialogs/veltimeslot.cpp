// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/veltimeslot.h"

#include <QDebug>

Q_LOGGING_CATEGORY(velPlannerLog, "delmast.planner", QtWarningMsg)

namespace
{
void trace(const char *what, const VelTimeSlot &slot)
{
    qCDebug(velPlannerLog) << what << slot.start << slot.end;
}

/** Takes the busy time off a slot. What is left behind it, if that is long enough, goes to the end of @p list. */
VelTimeSlot cut(VelTimeSlots &list, VelTimeSlot slot, const VelTimeSlot &busy, int seconds)
{
    const VelTimeSlot before = slot;
    if (slot.start < busy.start) {
        if (busy.end < slot.end) {
            const VelTimeSlot rest{busy.end, slot.end};
            if (rest.seconds() >= seconds) {
                trace("add ", rest);
                list.push_back(rest);
            }
        }
        slot.end = busy.start;
    } else if (slot.start < busy.end && busy.end < slot.end) {
        slot.start = busy.end;
    }
    if (slot != before)
        trace("chg ", slot);
    return slot;
}
} // namespace

void velCutSlots(VelTimeSlots &list, const VelTimeSlot &busy, int seconds)
{
    if (busy.end < busy.start)
        return;
    for (std::size_t i = 0; i < list.size();) { // the parts that are added get their turn
        trace("slot ", list[i]);
        const VelTimeSlot slot = cut(list, list[i], busy, seconds);
        list[i] = slot;
        if (slot.seconds() < seconds || (busy.start <= slot.start && slot.end <= busy.end)) {
            trace("rem ", slot);
            list.erase(list.begin() + static_cast<VelTimeSlots::difference_type>(i));
        } else {
            ++i;
        }
    }
}

VelTimeSlots velFreeSlots(const VelTimeSlot &first, const VelTimeSlots &busy, int seconds)
{
    trace("startslot: ", first);
    VelTimeSlots list;
    if (first.seconds() >= seconds)
        list.push_back(first);
    for (const VelTimeSlot &each : busy) {
        trace("entry: ", each);
        velCutSlots(list, each, seconds);
    }
    return list;
}

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velentrylist.h"

#include <algorithm>

void VelEntryList::sort()
{
    std::stable_sort(begin(), end(), [](const VelEntryRef &a, const VelEntryRef &b) {
        return a.getStartDay() != b.getStartDay() ? a.getStartDay() < b.getStartDay()
                                                  : a.getStart() < b.getStart();
    });
}

const VelEntry *VelEntryList::getByGlobalId(quint32 id) const
{
    const auto found = std::find_if(
        begin(), end(), [id](const VelEntryRef &ref) { return ref.getOriginal()->globalid == id; });
    return found == end() ? nullptr : found->getEntry();
}

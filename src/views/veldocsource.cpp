// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldocsource.h"

#include "document/veldoc.h"

#include <algorithm>
#include <tuple>

VelEntryList VelDocSource::getEntries(QDate day) const
{
    // As a range of days: what ends before it starts is found on a single one by its end only.
    VelEntryList list = m_doc.getEntries(day, 0, true, day);
    std::erase_if(list, [day](const VelEntryRef &ref) { return !isShownOn(ref, day); });
    const auto key = [](const VelEntryRef &ref) {
        return std::make_tuple(ref.getStart(), ref.getOriginal()->localid, ref.getNumber());
    };
    std::sort(list.begin(), list.end(),
              [&key](const VelEntryRef &a, const VelEntryRef &b) { return key(a) < key(b); });
    return list;
}

bool VelDocSource::isTentative(const VelEntry &entry) const
{
    return m_doc.isTentative(entry);
}

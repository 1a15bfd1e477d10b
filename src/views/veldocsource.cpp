// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldocsource.h"

#include "document/veldoc.h"

#include <algorithm>
#include <tuple>

VelEntryList VelDocSource::getEntries(QDate day) const
{
    VelEntryList list = m_doc.getEntries(day, 0, true, QDate());
    std::erase_if(list, [](const VelEntryRef &ref) { return ref.getOriginal()->isDeleted(); });
    std::sort(list.begin(), list.end(), [](const VelEntryRef &a, const VelEntryRef &b) {
        return std::tuple(a.getOriginal()->localid, a.getNumber())
            < std::tuple(b.getOriginal()->localid, b.getNumber());
    });
    list.sort(); // by start; equal starts keep their order
    return list;
}

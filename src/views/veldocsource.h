// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/veldaysource.h"

class VelDoc;

/** The entries of a calendar, day by day. */
class VelDocSource : public VelDaySource
{
public:
    /** Keeps a reference to @p doc. */
    explicit VelDocSource(const VelDoc &doc)
        : m_doc(doc)
    {
    }

    /** By start, then by id, so that the same calendar is always laid out the same way. */
    [[nodiscard]] VelEntryList getEntries(QDate day) const override;
    /** As the calendar's owner sees it: by what an own entry shows, and by the answer to an invitation. */
    [[nodiscard]] bool isTentative(const VelEntry &entry) const override;

private:
    const VelDoc &m_doc;
};

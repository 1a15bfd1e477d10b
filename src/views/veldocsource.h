// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/veldaysource.h"

class VelDoc;

/** The entries and occurrences of a calendar, in an order that does not depend on chance. */
class VelDocSource : public VelDaySource
{
public:
    /** Keeps a reference to @p doc. */
    explicit VelDocSource(const VelDoc &doc)
        : m_doc(doc)
    {
    }

    /** By start, then in the order in which they were made. */
    [[nodiscard]] VelEntryList getEntries(QDate day) const override;

private:
    const VelDoc &m_doc;
};

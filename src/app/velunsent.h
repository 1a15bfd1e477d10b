// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QStringList>

#include <vector>

class VelDoc;

/** What has been changed in a calendar that only the server keeps, and is not there. */
class VelUnsent
{
public:
    /** Keeps a reference. */
    explicit VelUnsent(VelDoc &doc);

    [[nodiscard]] bool hasAny() const;
    /** That these changes would be lost, with the titles of the first few. */
    [[nodiscard]] QString lossText() const;
    /** The server has sent its own version of what was changed here as @p sent; the calendar has that one now. */
    void noteOverruled(const VelEntry &sent) { m_overruled.push_back(sent); }
    /** Puts what was overruled beside what came instead, as new entries. Returns their local ids. */
    std::vector<quint32> addOverruled();
    /** Nothing was overruled in the calendar that is there now. */
    void clear() { m_overruled.clear(); }

private:
    [[nodiscard]] QStringList titles() const;

    VelDoc &m_doc;
    std::vector<VelEntry> m_overruled;
};

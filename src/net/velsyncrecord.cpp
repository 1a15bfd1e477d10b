// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velsyncrecord.h"

#include "model/veltext.h"

#include <KLocalizedString>

namespace
{
/** So many failures go by without a word. */
constexpr int Unmentioned = 1;
} // namespace

void VelSyncRecord::note(Outcome outcome, bool isByItself, const VelDateTime &now, const QString &reason)
{
    if (outcome == Outcome::Undecided)
        return;
    const bool isGood = outcome == Outcome::Good;
    if (isGood || !m_since.isValid())
        m_since = now;
    if (isGood)
        m_failures = 0;
    else if (isByItself)
        ++m_failures;
    m_reason = reason;
}

QString VelSyncRecord::warning(QDate today) const
{
    if (m_failures <= Unmentioned)
        return {};
    const QString since =
        m_since.date() == today ? VelText::getTime(m_since.time()) : VelText::getDateTime(m_since);
    return i18nc("since when, and why", "Not synchronised since %1: %2", since, m_reason);
}

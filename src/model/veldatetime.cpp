// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/veldatetime.h"

namespace
{
constexpr qint64 MsecsPerDay = 24LL * 60 * 60 * 1000;
}

VelDateTime VelDateTime::addSecs(qint64 seconds) const
{
    // Nothing supported is further apart than this; beyond it the product below could overflow.
    constexpr qint64 limit = 400LL * 366 * 10000 * 24 * 60 * 60;
    if (!isValid() || seconds > limit || seconds < -limit)
        return {};
    const qint64 total = m_msecs + seconds * 1000;
    qint64 days = total / MsecsPerDay;
    qint64 rest = total % MsecsPerDay;
    if (rest < 0) {
        rest += MsecsPerDay;
        --days;
    }
    const VelDateTime result(date().addDays(days), QTime::fromMSecsSinceStartOfDay(static_cast<int>(rest)));
    return result.isValid() ? result : VelDateTime();
}

qint64 VelDateTime::secsTo(VelDateTime other) const
{
    if (!isValid() || !other.isValid())
        return 0;
    const qint64 days = static_cast<qint64>(other.m_day) - m_day;
    return (days * MsecsPerDay + other.m_msecs - m_msecs) / 1000;
}

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velrecurrencerule.h"

#include <QMetaType>

Q_DECLARE_METATYPE(VelRecurrenceRule)

/** Rules as a table of cases writes them. */
namespace Rules
{
inline VelRecurrenceRule make(int type, int every, const QVector<int> &days = {}, int dayNumber = 0)
{
    VelRecurrenceRule rule;
    rule.recurringtype = type;
    rule.occurevery = every;
    rule.occurdays = days;
    rule.occurdaynumber = dayNumber;
    return rule;
}

inline VelRecurrenceRule daily(int every)
{
    return make(VelRecurrenceRule::Daily, every);
}

inline VelRecurrenceRule weekly(int every, const QVector<int> &weekdays)
{
    return make(VelRecurrenceRule::Weekly, every, weekdays);
}

inline VelRecurrenceRule monthly(int every, int dayOfMonth)
{
    return make(VelRecurrenceRule::Monthly, every, {dayOfMonth});
}

/** @p which as in occurdaynumber: 1 first, negative last. */
inline VelRecurrenceRule monthlyWeekday(int every, int which, int weekday)
{
    return make(VelRecurrenceRule::Monthly, every, {weekday}, which);
}

inline VelRecurrenceRule yearly(int every)
{
    return make(VelRecurrenceRule::Yearly, every);
}

inline VelRecurrenceRule times(VelRecurrenceRule rule, int count)
{
    rule.occurendcount = count;
    return rule;
}

inline VelRecurrenceRule until(VelRecurrenceRule rule, QDate endDate)
{
    rule.occurenddate = endDate;
    return rule;
}
} // namespace Rules

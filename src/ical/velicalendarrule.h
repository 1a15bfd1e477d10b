// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <KCalendarCore/Incidence>

#include <QTimeZone>
#include <QVector>

/** Recurrence rules of RFC 5545, with EXDATE and RDATE, and what they are in our terms. */
namespace VelICalendarRule
{
/** A series that no rule expresses is written day by day, up to this many. */
constexpr quint32 MaximumDates = 5000;
/** An open one of that kind goes on for so many days after today, or after its start. */
constexpr int OpenDays = 750;

/**
 * Writes the days of the entry's series. Times are marked as UTC though they are those of the wall clock. A series
 * without any occurrence is not written.
 */
void write(const VelEntry &entry, QDate today, KCalendarCore::Incidence &incidence);

struct Reading {
    VelRecurrenceRule rule;
    QVector<QDate> days; ///< of the series, that the rule passes over
    bool isExact = true; ///< false when the series has other days than the file says
};

/** Where an incidence starts, once its times are those of the wall clock. */
struct Place {
    VelDateTime start;
    int dayShift = 0; ///< days from the date in the file to that on the wall clock
    QVector<QDate> replacedDays; ///< days of the series that the file describes on their own
    QTimeZone zone;
};

/**
 * The rule of an incidence. A rule that passes over days at the start of its series only is kept; the days are told. One
 * that would have wrong days later on (cancelled days, several days of a month, days that short months lack, hours)
 * is dropped: what is left is its first day.
 */
[[nodiscard]] Reading read(const KCalendarCore::Incidence &incidence, const Place &place);
} // namespace VelICalendarRule

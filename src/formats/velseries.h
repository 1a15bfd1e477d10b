// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velrecurrence.h"

#include <QVector>

/**
 * The occurrences of one of our rules, seen against those of the rule of other programs (RFC 5545, vCalendar 1.0) that
 * looks like it.
 *
 * The two differ only before our first occurrence, and where a month lacks the day. A weekly rule of ours on several days
 * begins again, a whole period later, with the weekday of the start: the days between are none of ours. A monthly rule
 * begins in the first month after that of the start.
 */
class VelSeries
{
public:
    /** What the RFC 5545 rule does where a month lacks the day. */
    enum class Form {
        Plain, ///< passes the month over
        Clipped ///< takes the month's last day; of 29 February always the 28th
    };

    /** A rule as other programs mean it, in our terms. */
    struct Adopted {
        VelRecurrenceRule rule;
        QVector<QDate> days; ///< of the series, that our rule passes over; the start is none of them
    };
    /** @p rule, whose count also counts the days that ours passes over. */
    [[nodiscard]] static Adopted adopted(VelRecurrenceRule rule, QDate start, Form form);

    /** The series of an entry that starts on @p start; one without an end goes on to the end of year 9999. */
    VelSeries(const VelRecurrenceRule &rule, QDate start);

    [[nodiscard]] bool isOpen() const;
    /** How many occurrences there are besides the entry itself. */
    [[nodiscard]] quint32 count() const { return m_bounded.count(); }
    /** The day of occurrence @p number, from 1 to count(). */
    [[nodiscard]] QDate day(quint32 number) const { return QDate::fromJulianDay(m_bounded.startDay(number)); }
    /** True for the day of an occurrence; the start is none. */
    [[nodiscard]] bool contains(QDate day) const { return isIn(m_bounded, day); }

    /** True when a rule of that form has all occurrences, and none between them. */
    [[nodiscard]] bool follows(Form form) const;
    /** True when a rule of that form has the start itself. */
    [[nodiscard]] bool hasStart(Form form) const { return periodDays(form).contains(m_start); }
    /** What a rule of that form has between the start and our first occurrence, ascending. */
    [[nodiscard]] QVector<QDate> skipped(Form form) const;

private:
    [[nodiscard]] static bool isIn(const VelRecurrence &recurrence, QDate day);
    /** The days of the rule near the start: of the start's week and that of the next step, else of the month or year. */
    [[nodiscard]] QVector<QDate> periodDays(Form form) const;
    [[nodiscard]] QDate expected(QDate day, Form form) const;
    [[nodiscard]] QDate monthWeekday() const;
    [[nodiscard]] bool isByDayOfMonth() const;

    const VelRecurrenceRule m_rule;
    const QDate m_start;
    const VelRecurrence m_bounded;
    const VelRecurrence m_endless;
};

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velrecurrencerule.h"

#include <array>

/** A day as queries over many series need it: its number and its parts, taken apart once. */
struct VelJulianDay {
    explicit VelJulianDay(qint32 julianDay)
        : number(julianDay)
    {
        QDate::fromJulianDay(julianDay).getDate(&year, &month, &day);
    }

    qint32 number; ///< Julian day
    int year = 0;
    int month = 0;
    int day = 0;
};

/**
 * The occurrences of one repeating entry, worked out rather than stored.
 *
 * Occurrences are numbered 1, 2, 3 ... in time; the entry itself is none of them. Where one starts follows
 * directly from its number, so a series takes the same memory whether it has three occurrences or a million.
 */
class VelRecurrence
{
public:
    /** No series has more occurrences than this. */
    static constexpr quint32 MaximumCount = 999999;
    /** A rule without an end date has no occurrence this many days after today, or later. */
    static constexpr int HorizonDays = 750;

    /** No occurrences. */
    VelRecurrence() = default;

    /**
     * The occurrences of an entry that starts on @p start and ends @p spanDays days later.
     *
     * @p today fixes the horizon of a rule without an end date. A rule that cannot be followed (an interval
     * below 1, a weekday or day of month out of range, no day where one is needed) has no occurrences.
     * Weekdays count in ascending order, however they are stored.
     */
    VelRecurrence(const VelRecurrenceRule &rule, QDate start, int spanDays, QDate today);

    [[nodiscard]] bool isEmpty() const { return m_count == 0; }

    /** How many occurrences there are; their numbers run from 1 to this. */
    [[nodiscard]] quint32 count() const { return m_count; }

    /** The Julian day on which occurrence @p number (1 to count()) starts. */
    [[nodiscard]] qint32 startDay(quint32 number) const;

    /** The first number whose occurrence starts on @p day or later; count() + 1 when none does. */
    [[nodiscard]] quint32 firstFrom(const VelJulianDay &day) const;

    /** Days from the start date to the end date of each occurrence; negative in a faulty entry. */
    [[nodiscard]] int spanDays() const { return m_span; }

    /** The Julian day of the entry itself. */
    [[nodiscard]] qint32 entryDay() const { return m_start; }

private:
    enum class Kind : quint8 { None, Daily, Weekly, MonthDay, MonthWeekday, Yearly };

    [[nodiscard]] static Kind kindOf(const VelRecurrenceRule &rule);
    void setWeekdays(const VelRecurrenceRule &rule, int startWeekday);
    void setYearlyClip();
    void setCount(const VelRecurrenceRule &rule, QDate today);
    [[nodiscard]] qint64 lastNumberUpToPeriodOf(const VelJulianDay &day) const;
    [[nodiscard]] qint64 firstWeeklyFrom(qint32 day) const;
    [[nodiscard]] qint32 weeklyDay(qint64 number) const;
    [[nodiscard]] qint32 monthDay(qint64 number) const;
    [[nodiscard]] qint32 monthWeekday(qint64 number) const;
    [[nodiscard]] qint32 yearlyDay(qint64 number) const;
    [[nodiscard]] qint64 monthIndex(qint64 number) const;

    qint32 m_start = 0;
    qint32 m_span = 0;
    qint32 m_every = 0;
    quint32 m_count = 0;
    qint32 m_startYear = 0;
    qint32 m_firstMonday = 0; // weekly: the Monday of the week of position 0
    qint32 m_clipFrom = 0; // yearly from 29 February: the first number that falls on the 28th; 0 is none
    Kind m_kind = Kind::None;
    quint8 m_startMonth = 0;
    quint8 m_startDayOfMonth = 0;
    quint8 m_day = 0; // monthly: day of month, or weekday
    qint8 m_weekOfMonth = 0; // monthly by weekday: 1 first ... 5, the last at the latest; negative the last
    quint8 m_weekdayCount = 0; // weekly
    quint8 m_firstPosition = 0; // weekly: position in m_weekdays of occurrence 1
    std::array<quint8, 7> m_weekdays{};
};

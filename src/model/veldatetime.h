// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDate>
#include <QDateTime>
#include <QTime>

#include <compare>
#include <limits>

/**
 * A wall-clock date and time without a zone.
 *
 * Entries say what the clock on the wall shows. The toolkit's local-time QDateTime will not do: it calls a
 * time that daylight saving skips invalid, or moves it, and it makes midnight of a missing time. Here the two
 * parts are kept as they were given, each possibly missing. Eight bytes, as a calendar holds hundreds of
 * thousands.
 */
class VelDateTime
{
public:
    /** Neither date nor time. */
    constexpr VelDateTime() = default;

    /**
     * The parts as given; an invalid date, or one outside isSupported(), is a missing one; likewise the time.
     */
    VelDateTime(QDate date, QTime time)
        : m_day(isSupported(date) ? static_cast<qint32>(date.toJulianDay()) : NoDay)
        , m_msecs(time.isValid() ? time.msecsSinceStartOfDay() : NoTime)
    {
    }

    /** The date and the time that @p other shows, in whatever zone it shows them. */
    static VelDateTime fromQDateTime(const QDateTime &other) { return {other.date(), other.time()}; }

    /** Carries the wall clock through toolkit interfaces, marked as UTC so that no zone rule touches it. */
    [[nodiscard]] QDateTime toQDateTime() const { return {date(), time(), Qt::UTC}; }

    /** Dates with a year from 1 to 9999: what four digits can say. */
    [[nodiscard]] static bool isSupported(QDate date)
    {
        return date.isValid() && date.year() >= 1 && date.year() <= 9999;
    }

    [[nodiscard]] QDate date() const { return m_day == NoDay ? QDate() : QDate::fromJulianDay(m_day); }
    [[nodiscard]] QTime time() const
    {
        return m_msecs == NoTime ? QTime() : QTime::fromMSecsSinceStartOfDay(m_msecs);
    }

    /** The Julian day number of the date; below every valid one when there is no date. */
    [[nodiscard]] constexpr qint32 julianDay() const { return m_day; }

    [[nodiscard]] constexpr bool isValid() const { return m_day != NoDay && m_msecs != NoTime; }

    /** This date, another time of day. */
    [[nodiscard]] VelDateTime withTime(QTime time) const { return {date(), time}; }

    /** Invalid when this is, or when the result's year leaves 1 to 9999. */
    [[nodiscard]] VelDateTime addSecs(qint64 seconds) const;
    [[nodiscard]] VelDateTime addDays(qint64 days) const { return {date().addDays(days), time()}; }

    /** Seconds on the wall clock from this to @p other, truncated; 0 when either is invalid. */
    [[nodiscard]] qint64 secsTo(VelDateTime other) const;

    /** By date, then time; a missing part sorts first. */
    constexpr auto operator<=>(const VelDateTime &other) const = default;

private:
    static constexpr qint32 NoDay = std::numeric_limits<qint32>::min();
    static constexpr qint32 NoTime = -1;

    qint32 m_day = NoDay;
    qint32 m_msecs = NoTime;
};

Q_DECLARE_TYPEINFO(VelDateTime, Q_MOVABLE_TYPE);

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/veltimeslot.h"
#include "model/velentrylist.h"

/**
 * The search for the next time at which everybody is free, day after day.
 *
 * It rests while busy times are being fetched, and goes on where it was when they have come. What the user asks for is
 * handed in each time, as it may have been changed meanwhile. No day later than a year from today is proposed.
 */
class VelFreeTimeSearch
{
public:
    static constexpr int LastDay = 365; ///< days from today

    enum class Unit { Hours, Days };

    /** What the user asks for. */
    struct Terms {
        int length = 1;
        Unit unit = Unit::Hours;
        QTime begin; ///< the earliest time of day
        QTime end; ///< the latest
        QDate from; ///< the day to begin with
        bool isWorkDaysOnly = true;
        VelDateTime proposedStart; ///< what was proposed last
        VelDateTime proposedEnd;

        /** How long a day must be free: of a meeting of some days, its whole range. */
        [[nodiscard]] int seconds() const;
    };

    /** What the search goes by. */
    class Source
    {
    public:
        virtual ~Source() = default;
        [[nodiscard]] virtual bool isWorkingDay(QDate day) const = 0;
        /** True while the busy times of @p day are not there, or others are on their way. */
        [[nodiscard]] virtual bool isWaiting(QDate day) const = 0;
        /** What takes time on @p day, in the order in which it came. Asks for it when nobody has yet. */
        [[nodiscard]] virtual VelEntryList getBusyEntries(QDate day) = 0;
        /** Shows the day that the search has come to. */
        virtual void showDay(QDate day) = 0;
    };

    enum class Result { Proposal, Suspended, Exhausted };
    struct Outcome {
        Result result = Result::Exhausted;
        VelDateTime start; ///< of a proposal
        VelDateTime end;
    };

    /** Keeps a reference to @p source. */
    explicit VelFreeTimeSearch(Source &source)
        : m_source(source)
    {
    }

    /**
     * Begins on the day to begin with; when the last proposal stands on that day, after the proposal. @p today sets the
     * limit.
     */
    [[nodiscard]] Outcome find(const Terms &terms, QDate today);
    /** Goes on after a rest; does nothing when there is no search. */
    [[nodiscard]] Outcome resume(const Terms &terms, QDate today);
    /** Gives the search up. */
    void stop() { m_isSearching = false; }
    /** True from find() until there is a proposal, the limit is reached, or the search is given up. */
    [[nodiscard]] bool isSearching() const { return m_isSearching; }

private:
    [[nodiscard]] Outcome searchFreeTime(const Terms &terms, QDate day, QTime time, QDate today);
    [[nodiscard]] VelTimeSlots freeSlots(const Terms &terms, QDate day, QTime time) const;
    [[nodiscard]] Outcome takeDay(const Terms &terms, QDate day, const VelTimeSlot &slot);
    void suspend(const Terms &terms, QDate day, QTime time);
    void show(QDate day);

    Source &m_source;
    bool m_isSearching = false;
    int m_foundDays = 0; // free days of this search, which need not follow one another
    QDate m_pendingDate; // where it goes on
    QTime m_pendingTime;
};

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velvcalendarsource.h"
#include "model/velentry.h"

#include <QTimeZone>

#include <memory>
#include <optional>

/**
 * Reads entries out of vCalendar text, whoever wrote it.
 *
 * Takes what other programs write: see VelVCalendarSource for lines, VelVCalendarLine for encodings and
 * VelVCalendarRule for recurrence rules, with or without "RRULE:" in front. Properties and components that
 * have no place in an entry are passed over. A date without a time of day makes an entry with dates only; its
 * DTEND is then exclusive (RFC 5545). An alarm counts by its distance from the start, before or behind, at
 * least one minute. A missing end, or one before the start, is the start; a missing start is the end. Broken
 * text costs the entries that it breaks, no others.
 */
class VelVCalendarReader
{
public:
    /** UTC times become the wall clock of @p zone. */
    explicit VelVCalendarReader(const QByteArray &bytes, const QTimeZone &zone = QTimeZone::systemTimeZone());

    /** The next entry: new, dirty and without ids. Null when there are no more. */
    std::unique_ptr<VelEntry> fromvCalendar();

    /** How many entries were passed over so far, as they were incomplete or had no date. */
    [[nodiscard]] int leftOut() const { return m_leftOut; }
    /** How many entries repeat otherwise than the text says: by a rule, or with exceptions, that ours do not know. */
    [[nodiscard]] int simplified() const { return m_simplified; }

private:
    struct Moment {
        VelDateTime time;
        bool isDate = false;
    };
    /** What was read of an entry before it is known to be whole. */
    struct Draft {
        VelEntry entry;
        Moment start;
        Moment end;
        Moment due;
        VelDateTime alarm;
        std::optional<qint64> duration; // seconds
        std::string rule;
        QString title;
        QString description;
        bool hasExceptions = false;
        bool isBroken = false;
    };
    using PropertyReader = void (VelVCalendarReader::*)(const VelVCalendarLine &);

    void begin(const VelVCalendarLine &line);
    std::unique_ptr<VelEntry> end(const VelVCalendarLine &line);
    void abandon();
    void readProperty(const VelVCalendarLine &line);
    [[nodiscard]] static PropertyReader readerOf(const VelVCalendarLine &line);

    void readStart(const VelVCalendarLine &line) { m_draft->start = toMoment(line); }
    void readEnd(const VelVCalendarLine &line) { m_draft->end = toMoment(line); }
    void readDue(const VelVCalendarLine &line) { m_draft->due = toMoment(line); }
    void readDuration(const VelVCalendarLine &line);
    void readSummary(const VelVCalendarLine &line) { m_draft->title = line.text(); }
    void readDescription(const VelVCalendarLine &line) { m_draft->description = line.text(); }
    void readClass(const VelVCalendarLine &line);
    void readPriority(const VelVCalendarLine &line);
    void readCompleted(const VelVCalendarLine &line);
    void readStatus(const VelVCalendarLine &line);
    void readTransparency(const VelVCalendarLine &line);
    void readAlarm(const VelVCalendarLine &line);
    void readAttendee(const VelVCalendarLine &line);
    void readRule(const VelVCalendarLine &line);
    void readException(const VelVCalendarLine &) { m_draft->hasExceptions = true; }
    void setRule(VelEntry &entry);

    [[nodiscard]] Moment toMoment(const VelVCalendarLine &line) const;
    std::unique_ptr<VelEntry> finished();
    void setTimes();

    VelVCalendarSource m_source;
    const QTimeZone m_zone;
    std::optional<Draft> m_draft;
    int m_depth = 0; // of unknown components within the entry
    int m_leftOut = 0;
    int m_simplified = 0;
};

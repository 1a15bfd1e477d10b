// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velforeigncontent.h"
#include "formats/velvcalendarsource.h"
#include "model/velentry.h"

#include <QTimeZone>

#include <optional>

/**
 * Reads entries out of vCalendar text, whoever wrote it.
 *
 * Takes what other programs write: see VelVCalendarSource for lines, VelVCalendarLine for encodings and
 * VelVCalendarRule for recurrence rules, with or without "RRULE:" in front. Properties and components that
 * have no place in an entry are passed over. A date without a time of day makes an entry with dates only; its
 * DTEND is then exclusive (RFC 5545). An alarm counts by its distance from the start, before or behind, at
 * least one minute. A missing end, or one before the start, is the start; a missing start is the end. Days of a series
 * that a rule of ours passes over at its start become entries of their own. Broken text costs the entries that it breaks,
 * no others.
 */
class VelVCalendarReader
{
public:
    /** UTC times become the wall clock of @p zone. */
    explicit VelVCalendarReader(const QByteArray &bytes, const QTimeZone &zone = QTimeZone::systemTimeZone());

    /** Reads on for about @p size bytes; false when that was all. */
    bool readSome(std::size_t size);

    /** How many bytes have been read. */
    [[nodiscard]] std::size_t position() const { return m_source.position(); }
    /** What has been read by now: entries new, dirty and without ids, in the order of the text. */
    [[nodiscard]] const VelForeignContent &content() const { return m_content; }
    [[nodiscard]] VelForeignContent takeContent() { return std::move(m_content); }

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
        QVector<QDate> exceptions; // of the series
        QString title;
        QString description;
        bool isOwnRule = false; // means what it means here
        bool isSimplified = false;
        bool isBroken = false;
    };
    using PropertyReader = void (VelVCalendarReader::*)(const VelVCalendarLine &);

    void begin(const VelVCalendarLine &line);
    void end(const VelVCalendarLine &line);
    void abandon();
    void readLine(const VelVCalendarLine &line);
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
    void readException(const VelVCalendarLine &line);
    void readAddition(const VelVCalendarLine &) { m_draft->isSimplified = true; }
    QVector<QDate> setRule(VelEntry &entry);

    [[nodiscard]] Moment toMoment(const VelVCalendarLine &line) const;
    void finish();
    void setTimes();

    VelVCalendarSource m_source;
    const QTimeZone m_zone;
    std::optional<Draft> m_draft;
    int m_depth = 0; // of unknown components within the entry
    VelForeignContent m_content;
};

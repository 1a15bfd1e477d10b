// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <vector>

/**
 * An entry, or one occurrence of a repeating entry, named rather than copied.
 *
 * The record of an occurrence is made only when getEntry() asks for it; its times cost nothing.
 */
class VelEntryRef
{
public:
    /** The entry itself. */
    explicit VelEntryRef(const VelEntry *entry)
        : m_entry(entry)
        , m_startDay(entry->getStart().julianDay())
    {
    }

    /** Occurrence @p number of @p entry, which starts on the Julian day @p startDay. */
    VelEntryRef(const VelEntry *entry, quint32 number, qint32 startDay)
        : m_entry(entry)
        , m_number(number)
        , m_startDay(startDay)
    {
    }

    /** The entry that is stored: for an occurrence the one that repeats. Never null. */
    [[nodiscard]] const VelEntry *getOriginal() const { return m_entry; }
    /** The entry, or the occurrence's record. */
    [[nodiscard]] const VelEntry *getEntry() const
    {
        return m_number == 0 ? m_entry : m_entry->getOccurrence(m_number);
    }
    /** 0 for the entry itself, else the number of the occurrence. */
    [[nodiscard]] quint32 getNumber() const { return m_number; }
    /** Julian day of the start. */
    [[nodiscard]] qint32 getStartDay() const { return m_startDay; }

    [[nodiscard]] VelDateTime getStart() const { return shifted(m_entry->getStart()); }
    [[nodiscard]] VelDateTime getEnd() const { return shifted(m_entry->getEnd()); }

    bool operator==(const VelEntryRef &other) const
    {
        return m_entry == other.m_entry && m_number == other.m_number;
    }

private:
    [[nodiscard]] VelDateTime shifted(const VelDateTime &time) const
    {
        return m_number == 0 ? time : time.addDays(m_startDay - m_entry->getStart().julianDay());
    }

    const VelEntry *m_entry;
    quint32 m_number = 0;
    qint32 m_startDay;
};

/** Entries on their way between parts of the program. Owns none of them. */
class VelEntryList : public std::vector<VelEntryRef>
{
public:
    using std::vector<VelEntryRef>::vector;

    /** By start; equal starts keep their order. */
    void sort();

    /** The first member with that id on the server, or null. */
    [[nodiscard]] const VelEntry *getByGlobalId(quint32 id) const;
};

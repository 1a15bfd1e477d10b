// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velaccount.h"
#include "model/veldatetime.h"
#include "model/velrecurrence.h"

#include <QString>

#include <memory>

/**
 * One event or to-do task of a calendar, or the notice that one was deleted.
 *
 * The record carries what files, messages and the clipboard carry. Its copies are values of their own; copies
 * of texts and attendees share memory until one is changed.
 */
class VelEntry
{
public:
    enum Type { Deleted = -1, NoType = 0, Event = 1, Todo = 2 };
    enum Access { NoAccess = 0, Public = 1, Private = 2 };
    enum Display { NoDisplay = 0, Busy = 1, Free = 2, TentativeTime = 3 };

    VelEntry();
    /** An entry made here and now: dirty, and without times of day when it is a to-do. */
    VelEntry(quint32 localid, int type, const VelDateTime &start, const VelDateTime &end);
    /** Copies everything but the worked-out occurrences: updRecurrence() makes them anew. */
    VelEntry(const VelEntry &other);
    VelEntry &operator=(const VelEntry &other);
    VelEntry(VelEntry &&other) noexcept;
    VelEntry &operator=(VelEntry &&other) noexcept;
    ~VelEntry();

    /** Equal in all that is stored; worked-out occurrences do not count. */
    bool operator==(const VelEntry &other) const;

    [[nodiscard]] const QString &getTitle() const { return m_title; }
    [[nodiscard]] const QString &getDescription() const { return m_description; }
    [[nodiscard]] const VelDateTime &getStart() const { return m_start; }
    [[nodiscard]] const VelDateTime &getEnd() const { return m_end; }

    /** These four also mark the entry dirty. */
    void setTitle(const QString &title);
    void setDescription(const QString &description);
    void setStart(const VelDateTime &start);
    void setEnd(const VelDateTime &end);

    /** Stores the four values without marking the entry, for readers that keep `dirty` as it was written. */
    void setStored(const QString &title, const QString &description, const VelDateTime &start,
                   const VelDateTime &end);

    /** Sets `dirty`, but never on an occurrence: what changes is its series. */
    void uDirty(int value);

    /** True for an occurrence that was worked out from another entry. */
    [[nodiscard]] bool isOccurrence() const { return originalid != 0; }
    /** Repeats, or is an occurrence of an entry that does. */
    [[nodiscard]] bool isRecurring() const { return rule.recurringtype > 0 || isOccurrence(); }
    [[nodiscard]] bool isDeleted() const { return type == Deleted; }

    /** "Public", "Private" or empty. */
    [[nodiscard]] QString getAccessStr() const;
    /** "Busy", "Free", "Tentative" or empty. */
    [[nodiscard]] QString getDisplayStr() const;
    [[nodiscard]] bool isTentative() const { return display == TentativeTime; }

    /** The answer of account @p id, or of the owner when @p id is 0; 0 when it is not invited. */
    [[nodiscard]] int getAccountStatus(quint32 id) const;
    /** The same answer in words; empty when it is not invited. */
    [[nodiscard]] QString getAccountStatusStr(quint32 id) const;
    void clearAccountStatuses();

    /** The date, and the time unless the entry has dates only, in the user's format. */
    [[nodiscard]] QString getStartStr() const;
    [[nodiscard]] QString getEndStr() const;

    /** Where the entry begins on @p day: 00:00 when it started earlier. */
    [[nodiscard]] QTime getStartTime(QDate day) const;
    /** Where the entry ends on @p day: 23:59 when it goes on. */
    [[nodiscard]] QTime getEndTime(QDate day) const;

    /** True when it ends on another date than it starts. */
    [[nodiscard]] bool spanDays() const;
    /** Days from the start date to the end date. */
    [[nodiscard]] int getSpan() const;
    [[nodiscard]] bool isValid() const { return m_start.isValid() && m_end.isValid(); }
    /** True when the two share time; to touch is not to overlap. */
    [[nodiscard]] bool overlap(const VelEntry &other) const
    {
        return overlap(m_start, m_end, other.m_start, other.m_end);
    }
    /** The same of two spans of time. */
    [[nodiscard]] static bool overlap(const VelDateTime &start, const VelDateTime &end,
                                      const VelDateTime &otherStart, const VelDateTime &otherEnd)
    {
        return (start <= otherStart && otherStart < end) || (start < otherEnd && otherEnd <= end)
            || (otherStart < start && otherEnd > end);
    }

    /** Works the occurrences out anew; those handed out before are gone. Occurrences have none themselves. */
    void updRecurrence(QDate today);
    void clearRecurring();
    /** The rule in words, empty without one. */
    [[nodiscard]] QString getRecurrenceText() const { return rule.getRecurrenceText(m_start.date()); }

    [[nodiscard]] const VelRecurrence &getRecurrence() const;

    /**
     * Occurrence @p number (from 1) as a record: this entry on the occurrence's dates. Made when first asked
     * for, owned by this entry, and valid until updRecurrence() or clearRecurring(). Null when there is no
     * such occurrence.
     */
    [[nodiscard]] const VelEntry *getOccurrence(quint32 number) const;

    quint32 localid = 0; ///< in the document, 0 when in none; of an occurrence its number
    quint32 globalid = 0; ///< on the server, 0 when never synchronised
    quint32 user = 0; ///< account id of the owner, 0 for the local user
    int dirty = 0; ///< 1 when changed here and not yet sent
    int type = NoType;
    int access = NoAccess;
    int display = NoDisplay;
    int priority = 0; ///< 0 none, else 1 to 9
    quint32 reminder = 0; ///< lead time in minutes, 0 for none
    quint32 originalid = 0; ///< of an occurrence the local id of its entry, else 0
    bool notime = false; ///< dates only
    bool complete = false;
    bool reminderfired = false;
    VelAccountList accounts;
    VelRecurrenceRule rule;

private:
    struct Occurrences;

    QString m_title;
    QString m_description;
    VelDateTime m_start;
    VelDateTime m_end;
    std::unique_ptr<Occurrences> m_occurrences;
};

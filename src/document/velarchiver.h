// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/veldoc.h"

#include <vector>

/**
 * Moves entries that are over from a calendar into another calendar file, the archive.
 *
 * The archive is on the disk before anything leaves the calendar. What breaks off in between leaves entries in both;
 * the next time they only leave the calendar, so that nothing is lost and nothing is archived twice.
 */
class VelArchiver
{
public:
    enum class Result {
        Archived, ///< at least one entry has left the calendar, which is not saved yet
        Nothing, ///< no entry is old enough
        Failed ///< the reason has been told; the calendar is as it was
    };

    /** Archives from @p calendar. Failures and questions go through @p messages. All must outlive this. */
    VelArchiver(VelDoc &calendar, VelMessages &messages, const VelSettings &settings);

    /** Two names of one file: by suffix, by way of links, or because they are equal. */
    [[nodiscard]] static bool isSameFile(const QUrl &a, const QUrl &b);
    /**
     * True when the entry ended before the day @p limit began, a repeating one with its last occurrence. One that
     * repeats without end never did, nor did the notice of a deletion.
     */
    [[nodiscard]] static bool isOver(const VelEntry &entry, QDate limit);
    /** The local ids of all entries of @p calendar that are over. */
    [[nodiscard]] static std::vector<quint32> findEntries(const VelDoc &calendar, QDate limit);

    /**
     * Opens the archive, or begins a new one where there is no such file; @p url gets the suffix of calendars. False
     * when it cannot be used, which has been told.
     */
    bool open(const QUrl &url);
    /** The archive's file, once it is open. */
    [[nodiscard]] QUrl URL() const { return m_url; }

    /** Stores the entries that are over, then removes them from the calendar. */
    Result archive(QDate limit);
    /** How many entries left the calendar. */
    [[nodiscard]] int getCount() const { return m_count; }

    /** Puts those entries into the archive and saves it. False when that failed. The calendar stays as it is. */
    bool store(const std::vector<quint32> &localids);

private:
    [[nodiscard]] static const VelEntry *takeStored(const VelEntry &entry,
                                                    std::vector<const VelEntry *> &candidates);
    [[nodiscard]] bool isMeantAsArchive();
    void put(const VelEntry &entry, const VelEntry *stored);

    VelDoc &m_calendar;
    VelMessages &m_messages;
    VelDoc m_archive;
    QUrl m_url;
    bool m_isNew = true; // there is no file yet
    int m_count = 0;
};

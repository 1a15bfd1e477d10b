// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velforeigncontent.h"
#include "ical/velicalendarfilter.h"
#include "ical/velicalendarsplitter.h"
#include "ical/velicalendarzones.h"

#include <KCalendarCore/Incidence>

#include <QByteArray>
#include <QHash>
#include <QTimeZone>
#include <QVector>

#include <optional>
#include <vector>

/**
 * Reads iCalendar text in pieces, so that a long one can be shown on its way and stopped.
 *
 * Takes time in proportion to the text, whatever it holds. An entry that cannot be read costs no other.
 */
class VelICalendarReader
{
public:
    /** UTC times and those of other zones become the wall clock of @p zone. */
    VelICalendarReader(const QByteArray &bytes, const QTimeZone &zone);
    // What has been found points into the bytes.
    Q_DISABLE_COPY_MOVE(VelICalendarReader)

    /** Reads on for some hundreds of entries; false when that was all. */
    bool readSome();
    /** How much has been done, in thousandths. */
    [[nodiscard]] int progress() const;
    /** What has been read; once all is, the entries are in the order of their start. */
    [[nodiscard]] VelForeignContent takeContent();

private:
    enum class Phase { Splitting, Parsing, Converting, Done };
    struct Found {
        KCalendarCore::Incidence::Ptr incidence;
        QByteArray uid; ///< as it stands in the text
    };

    void split();
    void parse();
    void parseBatch(const QByteArray &text, std::size_t begin, std::size_t end);
    [[nodiscard]] KCalendarCore::Incidence::List parsed(const QByteArray &components) const;
    void add(const KCalendarCore::Incidence::Ptr &incidence);
    void convert();
    void convert(const Found &found);
    [[nodiscard]] std::optional<QVector<QDate>> setRule(const Found &found, VelEntry &entry) const;

    const QByteArray m_bytes;
    const QTimeZone m_zone;
    VelICalendarSplitter m_splitter;
    VelICalendarZones m_zones;
    VelICalendarFilter m_filter;
    Phase m_phase = Phase::Splitting;
    std::size_t m_next = 0; // of what the phase goes through
    std::vector<QByteArray> m_uids; // of all components
    std::vector<Found> m_found;
    QHash<QByteArray, std::size_t> m_places; // in m_found, of what has an id
    QHash<QByteArray, QVector<QDate>> m_replacedDays; // of a series, that have an incidence of their own
    VelForeignContent m_content;
};

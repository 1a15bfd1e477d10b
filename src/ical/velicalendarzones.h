// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QHash>

#include <string_view>

/**
 * What the time zones are that an iCalendar text names: the system's where it knows the name, else the one that is like the
 * definition in the text. Each definition is worked out once, when it is first asked for, and all of them together only as
 * far as MaximumChanges: what makes more of them is no zone of any place.
 */
class VelICalendarZones
{
public:
    static constexpr std::size_t MaximumSize = 64 << 10; ///< bytes of one definition
    static constexpr int MaximumChanges = 50000; ///< of the clock, in all definitions
    static constexpr int MaximumNames = 1000; ///< with a definition

    /** Takes in a VTIMEZONE component. Of several with the same name the first counts. */
    void add(std::string_view component);

    /** The system's id of the zone; empty when neither the system nor a definition knows it. */
    [[nodiscard]] QByteArray id(const QByteArray &name);

    /** How many definitions were too large, or said more than a zone can. */
    [[nodiscard]] int passedOver() const { return m_passedOver; }

private:
    [[nodiscard]] QByteArray found(const QByteArray &name);

    QHash<QByteArray, QByteArray> m_definitions;
    QHash<QByteArray, QByteArray> m_ids;
    int m_changes = 0;
    int m_passedOver = 0;
};

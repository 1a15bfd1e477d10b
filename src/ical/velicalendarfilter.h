// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>

#include <string_view>

class VelICalendarZones;

/**
 * Makes the events and to-dos of iCalendar text safe for the toolkit's parser, in one pass each: leaves out what entries
 * have no use for, and what costs the parser time with the square of its length, or depth of stack, or much memory, beyond
 * the limits below, which no calendar program reaches.
 *
 * Each gets an id of its own, as the parser takes time with the square of those that share one; and its times name zones
 * that the system knows, so that their definitions need not be read with every piece of a text.
 *
 * COMPLETED becomes Completed: the toolkit takes it as an order to work out, one after the other, all occurrences of a
 * repeating to-do up to now.
 */
class VelICalendarFilter
{
public:
    static constexpr int MaximumValues = 10000; ///< dates and attendees of one component
    static constexpr int MaximumProperties = 12000; ///< of one component, those with it
    static constexpr std::size_t MaximumHead =
        4096; ///< bytes of a property's name and parameters, or of a rule
    static constexpr std::size_t MaximumProperty = 1 << 20; ///< bytes of a property with all it says
    static constexpr int MaximumDepth = 8; ///< components within components
    /** The name that COMPLETED is given. */
    static constexpr const char *Completed = "X-DELMAST-COMPLETED";

    /** @p zones must outlive this. */
    explicit VelICalendarFilter(VelICalendarZones &zones)
        : m_zones(zones)
    {
    }

    /** The text for the parser of one component, which now has the id @p uid. */
    [[nodiscard]] QByteArray filtered(std::string_view component, const QByteArray &uid);
    /** The id that the last component had, empty if it had none. */
    [[nodiscard]] const QByteArray &uid() const { return m_uid; }
    /** How many properties were beyond the limits, in all components. */
    [[nodiscard]] int passedOver() const { return m_passedOver; }

    /** Lines that continue others put in their place, and all of them with a line feed alone. */
    [[nodiscard]] static QByteArray unfolded(std::string_view text);

private:
    void addProperty(std::string_view property);
    void keep(std::string_view property, std::string_view name);
    void addTime(std::string_view property);
    void addUid(const QByteArray &uid);
    [[nodiscard]] bool isWithinLimits(std::string_view property, std::string_view name);

    VelICalendarZones &m_zones;
    QByteArray m_result;
    QByteArray m_uid;
    int m_values = 0; // of the current component
    int m_properties = 0;
    int m_depth = 0;
    int m_skippedFrom = 0; // depth of the component that is left out, 0 for none
    int m_passedOver = 0;
};

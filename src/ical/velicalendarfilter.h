// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>

#include <string_view>

/**
 * Makes iCalendar text safe for the toolkit's parser, in one pass: leaves out what entries have no use for, and what costs
 * the parser time with the square of its length, or depth of stack, beyond the limits below, which no calendar program
 * reaches.
 *
 * COMPLETED becomes Completed: the toolkit takes it as an order to work out, one after the other, all occurrences of a
 * repeating to-do up to now.
 */
class VelICalendarFilter
{
public:
    static constexpr int MaximumValues = 10000; ///< dates and attendees of one component
    static constexpr std::size_t MaximumHead =
        4096; ///< bytes of a property's name and parameters, or of a rule
    static constexpr std::size_t MaximumProperty = 1 << 20; ///< bytes of a property with all it says
    static constexpr int MaximumDepth = 8; ///< components within components
    /** The name that COMPLETED is given. */
    static constexpr const char *Completed = "X-DELMAST-COMPLETED";

    /** The text for the parser. */
    [[nodiscard]] static QByteArray filtered(const QByteArray &text);

private:
    void addProperty(std::string_view property);
    [[nodiscard]] bool isKept(std::string_view property, std::string_view name);

    QByteArray m_result;
    int m_values = 0; // of the current component
    int m_depth = 0;
};

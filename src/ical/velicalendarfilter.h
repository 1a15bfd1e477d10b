// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>

#include <string_view>

/**
 * Makes iCalendar text safe for the toolkit's parser, in one pass.
 *
 * COMPLETED becomes Completed: the toolkit takes it as an order to work out, one after the other, all occurrences of a
 * repeating to-do up to now. And components with more dates or attendees than MaximumValues lose the rest, as the
 * toolkit takes time with the square of their number.
 */
class VelICalendarFilter
{
public:
    static constexpr int MaximumValues = 10000;
    /** The name that COMPLETED is given. */
    static constexpr const char *Completed = "X-DELMAST-COMPLETED";

    /** The text for the parser. */
    [[nodiscard]] static QByteArray filtered(const QByteArray &text);

private:
    void addLine(std::string_view line);
    void beginProperty(std::string_view line);

    QByteArray m_result;
    int m_values = 0; // of the current component
    bool m_isList = false;
    bool m_isKept = true;
};

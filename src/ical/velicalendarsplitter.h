// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/**
 * Finds the components of an iCalendar text that matter to entries, in one pass. What it finds points into the text, which
 * must outlive it.
 */
class VelICalendarSplitter
{
public:
    explicit VelICalendarSplitter(std::string_view text)
        : m_text(text)
    {
    }

    /** Reads on for about @p size bytes; false when that was all. */
    bool readSome(std::size_t size);
    [[nodiscard]] std::size_t position() const { return m_position; }

    /** Events and to-dos, each from its first line to its last. */
    [[nodiscard]] const std::vector<std::string_view> &entries() const { return m_entries; }
    /** Definitions of time zones, in the same way. */
    [[nodiscard]] const std::vector<std::string_view> &zones() const { return m_zones; }
    /** The line that names the program that wrote the text; empty without one. */
    [[nodiscard]] std::string_view product() const { return m_product; }
    /** Components that have no end, and journals. */
    [[nodiscard]] int leftOut() const { return m_leftOut; }

private:
    enum class Kind { None, Entry, Zone, Other };

    void readLine(std::string_view line, std::size_t begin);
    void beginComponent(std::string_view name, std::size_t begin);
    void endComponent(std::string_view name);
    void close();
    void abandon();

    const std::string_view m_text;
    std::size_t m_position = 0;
    Kind m_kind = Kind::None;
    std::string_view m_name; // of the open component
    std::size_t m_begin = 0;
    std::vector<std::string_view> m_entries;
    std::vector<std::string_view> m_zones;
    std::string_view m_product;
    int m_leftOut = 0;
};

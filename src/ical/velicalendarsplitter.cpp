// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarsplitter.h"

#include "formats/velvcalendarline.h"

#include <algorithm>

namespace
{
bool is(std::string_view text, std::string_view capitals)
{
    return VelVCalendarLine::equals(text, capitals);
}

/** What follows @p capitals and a colon; none when the line does not begin so. */
bool takeValue(std::string_view line, std::string_view capitals, std::string_view &value)
{
    if (line.size() <= capitals.size() || line[capitals.size()] != ':'
        || !is(line.substr(0, capitals.size()), capitals))
        return false;
    value = line.substr(capitals.size() + 1);
    value = value.substr(0, value.find_last_not_of(" \t\r") + 1);
    return true;
}

bool isEntry(std::string_view name)
{
    return is(name, "VEVENT") || is(name, "VTODO");
}
} // namespace

bool VelICalendarSplitter::readSome(std::size_t size)
{
    const std::size_t limit = m_position + std::min(size, m_text.size() - m_position);
    while (m_position < limit) {
        const std::size_t begin = m_position;
        const std::size_t end = std::min(m_text.find('\n', begin), m_text.size() - 1) + 1;
        m_position = end;
        readLine(m_text.substr(begin, end - begin - (m_text[end - 1] == '\n' ? 1 : 0)), begin);
    }
    if (m_position < m_text.size())
        return true;
    abandon();
    return false;
}

void VelICalendarSplitter::readLine(std::string_view line, std::size_t begin)
{
    std::string_view value;
    if (takeValue(line, "BEGIN", value))
        beginComponent(value, begin);
    else if (takeValue(line, "END", value))
        endComponent(value);
    else if (m_kind == Kind::None && m_product.empty() && takeValue(line, "PRODID", value))
        m_product = line;
}

/** Entries, zones and calendars do not stand within others: where one begins, the end of that other is missing. */
void VelICalendarSplitter::beginComponent(std::string_view name, std::size_t begin)
{
    const bool isZone = is(name, "VTIMEZONE");
    const bool isOwn = isEntry(name) || isZone || is(name, "VCALENDAR");
    if (m_kind != Kind::None && !isOwn)
        return;
    abandon();
    if (is(name, "VCALENDAR"))
        return;
    m_kind = isEntry(name) ? Kind::Entry : isZone ? Kind::Zone : Kind::Other;
    m_leftOut += is(name, "VJOURNAL") ? 1 : 0;
    m_name = name;
    m_begin = begin;
}

void VelICalendarSplitter::endComponent(std::string_view name)
{
    if (m_kind != Kind::None && name.size() == m_name.size()
        && std::equal(name.begin(), name.end(), m_name.begin(),
                      [](char a, char b) { return (a | 0x20) == (b | 0x20); }))
        close();
    else if (isEntry(name) || is(name, "VTIMEZONE") || is(name, "VCALENDAR"))
        abandon();
}

void VelICalendarSplitter::close()
{
    const std::string_view component = m_text.substr(m_begin, m_position - m_begin);
    if (m_kind == Kind::Entry)
        m_entries.push_back(component);
    else if (m_kind == Kind::Zone)
        m_zones.push_back(component);
    m_kind = Kind::None;
}

void VelICalendarSplitter::abandon()
{
    m_leftOut += m_kind == Kind::Entry ? 1 : 0;
    m_kind = Kind::None;
}

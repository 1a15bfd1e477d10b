// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarfilter.h"

#include "formats/velvcalendarline.h"
#include "model/compat.h"

#include <algorithm>
#include <array>

namespace
{
bool isName(std::string_view line, std::string_view name)
{
    const bool isLonger = line.size() > name.size() && (line[name.size()] == ':' || line[name.size()] == ';');
    return isLonger && VelVCalendarLine::equals(line.substr(0, name.size()), name);
}

/** Properties that the toolkit keeps in order, or compares with each other. */
bool isListed(std::string_view line)
{
    static constexpr std::array<std::string_view, 4> names{"EXDATE", "RDATE", "ATTENDEE", "RRULE"};
    return std::any_of(names.begin(), names.end(),
                       [line](std::string_view name) { return isName(line, name); });
}
} // namespace

QByteArray VelICalendarFilter::filtered(const QByteArray &text)
{
    VelICalendarFilter filter;
    filter.m_result.reserve(text.size());
    std::string_view rest(text.constData(), static_cast<std::size_t>(text.size()));
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find('\n'), rest.size() - 1) + 1;
        filter.addLine(rest.substr(0, length));
        rest.remove_prefix(length);
    }
    return filter.m_result;
}

void VelICalendarFilter::addLine(std::string_view line)
{
    const bool isContinued = line.front() == ' ' || line.front() == '\t';
    if (!isContinued)
        beginProperty(line);
    if (m_isList)
        m_values += static_cast<int>(std::count(line.begin(), line.end(), ',')) + (isContinued ? 0 : 1);
    if (m_isKept)
        m_result.append(line.data(), static_cast<VelSize>(line.size()));
}

void VelICalendarFilter::beginProperty(std::string_view line)
{
    if (isName(line, "BEGIN"))
        m_values = 0;
    m_isList = isListed(line);
    m_isKept = !m_isList || m_values < MaximumValues;
    if (isName(line, "COMPLETED"))
        m_result += "X-DELMAST-";
}

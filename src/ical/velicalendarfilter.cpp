// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarfilter.h"

#include "formats/velvcalendarline.h"
#include "model/compat.h"

#include <algorithm>
#include <initializer_list>

namespace
{
using Names = std::initializer_list<std::string_view>;

bool isIn(const Names &names, std::string_view name)
{
    return std::any_of(names.begin(), names.end(),
                       [name](std::string_view one) { return VelVCalendarLine::equals(name, one); });
}

/** What an entry is made of, its alarm, and the time zones that its times refer to. */
bool isUseful(std::string_view name)
{
    static const Names names{
        "BEGIN",       "END",     "VERSION",        "UID",          "SEQUENCE",   "SUMMARY",
        "DESCRIPTION", "DTSTART", "DTEND",          "DUE",          "DURATION",   "CLASS",
        "TRANSP",      "STATUS",  "PRIORITY",       "COMPLETED",    "ATTENDEE",   "PERCENT-COMPLETE",
        "ORGANIZER",   "RRULE",   "EXRULE",         "RDATE",        "EXDATE",     "ACTION",
        "TRIGGER",     "TZID",    "RECURRENCE-ID",  "TZOFFSETFROM", "TZOFFSETTO", "TZNAME",
        "TZUNTIL",     "PRODID",  "X-LIC-LOCATION", "CALSCALE",     "METHOD",     "X-KDE-KCALCORE-ENABLED"};
    constexpr std::string_view own = "X-DELMAST-";
    return isIn(names, name) || VelVCalendarLine::equals(name.substr(0, own.size()), own);
}

bool isRule(std::string_view name)
{
    return isIn({"RRULE", "EXRULE"}, name);
}

bool isListed(std::string_view name)
{
    return isIn({"EXDATE", "RDATE", "ATTENDEE"}, name) || isRule(name);
}

/** Up to the colon; one within quotes is none. */
std::size_t headLength(std::string_view property)
{
    bool isQuoted = false;
    const auto *const colon = std::find_if(property.begin(), property.end(), [&isQuoted](char c) {
        isQuoted = isQuoted != (c == '"');
        return c == ':' && !isQuoted;
    });
    return static_cast<std::size_t>(colon - property.begin());
}

/** A line and those that continue it, each with its end. */
std::size_t propertyLength(std::string_view text)
{
    std::size_t length = 0;
    do {
        length = std::min(text.find('\n', length), text.size() - 1) + 1;
    } while (length < text.size() && (text[length] == ' ' || text[length] == '\t'));
    return length;
}
} // namespace

QByteArray VelICalendarFilter::filtered(const QByteArray &text)
{
    VelICalendarFilter filter;
    filter.m_result.reserve(text.size());
    std::string_view rest(text.constData(), static_cast<std::size_t>(text.size()));
    while (!rest.empty()) {
        const std::size_t length = propertyLength(rest);
        filter.addProperty(rest.substr(0, length));
        rest.remove_prefix(length);
    }
    return filter.m_result;
}

void VelICalendarFilter::addProperty(std::string_view property)
{
    const std::string_view name = property.substr(0, property.find_first_of(":;"));
    const bool isBegin = VelVCalendarLine::equals(name, "BEGIN");
    m_depth += isBegin ? 1 : 0;
    m_values = isBegin ? 0 : m_values;
    if (isKept(property, name)) {
        if (VelVCalendarLine::equals(name, "COMPLETED"))
            m_result += "X-DELMAST-";
        m_result.append(property.data(), static_cast<VelSize>(property.size()));
    }
    if (VelVCalendarLine::equals(name, "END") && m_depth > 0)
        --m_depth;
}

bool VelICalendarFilter::isKept(std::string_view property, std::string_view name)
{
    if (m_depth > MaximumDepth || !isUseful(name) || property.size() > MaximumProperty)
        return false;
    if (headLength(property) > MaximumHead)
        return false;
    if (isRule(name) && property.size() > MaximumHead)
        return false;
    if (!isListed(name))
        return true;
    m_values += 1 + static_cast<int>(std::count(property.begin(), property.end(), ','));
    return m_values <= MaximumValues;
}

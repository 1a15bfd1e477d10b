// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarfilter.h"

#include "formats/velvcalendarline.h"
#include "ical/velicalendarzones.h"
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

/** What an entry is made of, and its alarm. */
bool isUseful(std::string_view name)
{
    static const Names names{"BEGIN",
                             "END",
                             "UID",
                             "SEQUENCE",
                             "SUMMARY",
                             "DESCRIPTION",
                             "DTSTART",
                             "DTEND",
                             "DUE",
                             "DURATION",
                             "CLASS",
                             "TRANSP",
                             "STATUS",
                             "PRIORITY",
                             "COMPLETED",
                             "ATTENDEE",
                             "ORGANIZER",
                             "RRULE",
                             "EXRULE",
                             "RDATE",
                             "EXDATE",
                             "ACTION",
                             "TRIGGER",
                             "RECURRENCE-ID",
                             "PERCENT-COMPLETE",
                             "X-KDE-KCALCORE-ENABLED"};
    constexpr std::string_view own = "X-DELMAST-";
    return isIn(names, name) || VelVCalendarLine::equals(name.substr(0, own.size()), own);
}

bool isTime(std::string_view name)
{
    return isIn({"DTSTART", "DTEND", "DUE", "RDATE", "EXDATE", "RECURRENCE-ID"}, name);
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

QByteArray VelICalendarFilter::unfolded(std::string_view text)
{
    QByteArray result;
    result.reserve(static_cast<VelSize>(text.size()));
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isContinued =
            text[i] == '\n' && i + 1 < text.size() && (text[i + 1] == ' ' || text[i + 1] == '\t');
        i += isContinued ? 1 : 0;
        if (!isContinued && text[i] != '\r')
            result += text[i];
    }
    return result;
}

QByteArray VelICalendarFilter::filtered(std::string_view component, const QByteArray &uid)
{
    m_result.clear();
    m_uid.clear();
    m_values = 0;
    m_properties = 0;
    m_depth = 0;
    m_skippedFrom = 0;
    m_result.reserve(static_cast<VelSize>(component.size()));
    while (!component.empty()) {
        const std::size_t length = propertyLength(component);
        addProperty(component.substr(0, length));
        component.remove_prefix(length);
        if (m_properties == 1)
            addUid(uid);
    }
    return m_result;
}

/** Right behind the line that begins the component. */
void VelICalendarFilter::addUid(const QByteArray &uid)
{
    ++m_properties;
    m_result += "UID:" + uid + '\n';
}

void VelICalendarFilter::addProperty(std::string_view property)
{
    const std::string_view name = property.substr(0, property.find_first_of(":;\r\n"));
    const bool isBegin = VelVCalendarLine::equals(name, "BEGIN");
    const bool isEnd = VelVCalendarLine::equals(name, "END");
    m_depth += isBegin ? 1 : 0;
    if (m_skippedFrom == 0 && isUseful(name)) {
        const bool isKept = isEnd || isWithinLimits(property, name);
        m_passedOver += isKept ? 0 : 1;
        m_skippedFrom = isBegin && !isKept ? m_depth : 0;
        if (isKept)
            keep(property, name);
    }
    if (!isEnd)
        return;
    m_skippedFrom = m_skippedFrom == m_depth ? 0 : m_skippedFrom;
    m_depth = std::max(0, m_depth - 1);
}

void VelICalendarFilter::keep(std::string_view property, std::string_view name)
{
    ++m_properties;
    if (VelVCalendarLine::equals(name, "UID"))
        m_uid = m_depth == 1 && m_uid.isEmpty() ? unfolded(property) : m_uid;
    else if (isTime(name))
        addTime(property);
    else if (VelVCalendarLine::equals(name, "COMPLETED"))
        m_result += Completed + QByteArray(":1\n");
    else
        m_result.append(property.data(), static_cast<VelSize>(property.size()));
}

/** With the zone under its name in the system. */
void VelICalendarFilter::addTime(std::string_view property)
{
    const QByteArray line = unfolded(property);
    const std::string_view text(line.constData(), static_cast<std::size_t>(line.size()));
    const VelVCalendarLine parts(text, headLength(text));
    const std::string_view named = parts.parameter("TZID");
    const QByteArray name(named.data(), static_cast<VelSize>(named.size()));
    const QByteArray id = named.empty() ? QByteArray() : m_zones.id(name);
    if (id.isEmpty() || id == name) {
        m_result += line;
        return;
    }
    const auto begin = static_cast<VelSize>(named.data() - text.data());
    const bool isQuoted = line.at(begin - 1) == '"';
    m_result += line.left(begin) + (isQuoted ? id : '"' + id + '"') + line.mid(begin + name.size());
}

bool VelICalendarFilter::isWithinLimits(std::string_view property, std::string_view name)
{
    if (m_depth > MaximumDepth || m_properties >= MaximumProperties)
        return false;
    if (property.size() > MaximumProperty || headLength(property) > MaximumHead)
        return false;
    if (isRule(name) && property.size() > MaximumHead)
        return false;
    if (!isListed(name))
        return true;
    m_values += 1 + static_cast<int>(std::count(property.begin(), property.end(), ','));
    return m_values <= MaximumValues;
}

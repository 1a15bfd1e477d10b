// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarzones.h"

#include "ical/velicalendarfilter.h"
#include "model/compat.h"

#include <KCalendarCore/Event>
#include <KCalendarCore/ICalFormat>
#include <KCalendarCore/MemoryCalendar>

#include <QList>
#include <QTimeZone>

#include <algorithm>
#include <array>

namespace
{
/** The toolkit works changes of the clock out up to about here. */
constexpr int LastYear = 2040;

QByteArray valueOf(const QByteArray &line)
{
    return line.mid(line.indexOf(':') + 1).trimmed();
}

bool isNamed(const QByteArray &line, const char *name)
{
    const auto length = static_cast<VelSize>(qstrlen(name));
    return line.size() > length && (line.at(length) == ':' || line.at(length) == ';')
        && qstrnicmp(line.constData(), name, static_cast<uint>(length)) == 0;
}

/** Changes in a year, or none for a rule that no zone has. */
int changesPerYear(const QByteArray &rule)
{
    bool isYearly = false;
    int changes = 1;
    const QList<QByteArray> parts = rule.toUpper().split(';');
    for (const QByteArray &part : parts) {
        const QByteArray key = part.left(part.indexOf('='));
        const bool isPlain =
            QList<QByteArray>{"FREQ", "INTERVAL", "UNTIL", "COUNT", "BYMONTH", "BYSETPOS", "WKST"}.contains(
                key);
        const bool isDay = key == "BYDAY" || key == "BYMONTHDAY";
        constexpr int weekLength = 7;
        if ((!isPlain && !isDay) || (isPlain && part.contains(',')) || part.count(',') > weekLength)
            return 0;
        isYearly = isYearly || part == "FREQ=YEARLY";
        const QByteArray value = part.mid(key.size() + 1);
        const bool isMany = key == "BYDAY" && value.size() == 2;
        if (isDay && (isMany || value.contains(',')))
            changes = weekLength + 1;
    }
    const bool hasMonth = rule.toUpper().contains("BYMONTH=");
    return isYearly && (hasMonth || changes == 1) ? changes : 0;
}

/** Of a definition what tells when the clock changes, and how often it does; -1 when it says more than a zone can. */
int essentials(const QByteArray &definition, QByteArray &text)
{
    static const std::array<const char *, 8> names{"BEGIN",        "END",        "TZID",  "DTSTART",
                                                   "TZOFFSETFROM", "TZOFFSETTO", "RRULE", "RDATE"};
    int changes = 0;
    int years = 1;
    const QList<QByteArray> lines = definition.split('\n');
    for (const QByteArray &line : lines) {
        if (std::none_of(names.begin(), names.end(),
                         [&line](const char *name) { return isNamed(line, name); }))
            continue;
        text += line + '\n';
        changes +=
            isNamed(line, "BEGIN") || isNamed(line, "RDATE") ? 1 + static_cast<int>(line.count(',')) : 0;
        if (isNamed(line, "DTSTART"))
            years = std::clamp(LastYear - valueOf(line).left(4).toInt(), 1, LastYear);
        if (!isNamed(line, "RRULE"))
            continue;
        const int perYear = changesPerYear(valueOf(line));
        if (perYear == 0)
            return -1;
        changes += perYear * years;
    }
    return changes;
}

/** The system's zone that the toolkit finds to be like the definition. */
QByteArray matching(const QByteArray &definition, const QByteArray &name)
{
    const QByteArray text = "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:x\n" + definition
        + "BEGIN:VEVENT\nUID:1\nDTSTART;TZID=\"" + name + "\":20000101T000000\nEND:VEVENT\nEND:VCALENDAR\n";
    const KCalendarCore::MemoryCalendar::Ptr calendar(new KCalendarCore::MemoryCalendar(QTimeZone::utc()));
    KCalendarCore::ICalFormat format;
    if (!format.fromRawString(calendar, text) || calendar->rawEvents().isEmpty())
        return {};
    const QDateTime start = calendar->rawEvents().first()->dtStart();
    return start.timeSpec() == Qt::TimeZone ? start.timeZone().id() : QByteArray();
}
} // namespace

void VelICalendarZones::add(std::string_view component)
{
    if (component.size() > MaximumSize || m_definitions.size() >= MaximumNames) {
        ++m_passedOver;
        return;
    }
    const QByteArray definition = VelICalendarFilter::unfolded(component);
    const QList<QByteArray> lines = definition.split('\n');
    const auto named = std::find_if(lines.begin(), lines.end(),
                                    [](const QByteArray &line) { return isNamed(line, "TZID"); });
    if (named == lines.end() || m_definitions.contains(valueOf(*named)))
        return;
    m_definitions.insert(valueOf(*named), definition);
}

QByteArray VelICalendarZones::id(const QByteArray &name)
{
    const auto known = m_ids.constFind(name);
    if (known != m_ids.constEnd())
        return *known;
    const QByteArray id = found(name);
    m_ids.insert(name, id);
    return id;
}

QByteArray VelICalendarZones::found(const QByteArray &name)
{
    if (QTimeZone::isTimeZoneIdAvailable(name))
        return name;
    const QByteArray fromElsewhere = QTimeZone::windowsIdToDefaultIanaId(name);
    const auto definition = m_definitions.constFind(name);
    if (!fromElsewhere.isEmpty() || definition == m_definitions.constEnd())
        return fromElsewhere;
    QByteArray text;
    const int changes = essentials(*definition, text);
    if (changes < 0 || m_changes + changes > MaximumChanges) {
        ++m_passedOver;
        return {};
    }
    m_changes += changes;
    return matching(text, name);
}

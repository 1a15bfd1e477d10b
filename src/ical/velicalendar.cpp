// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendar.h"

#include "formats/velvcalendarsource.h"
#include "ical/velicalendarextras.h"
#include "ical/velicalendarfilter.h"
#include "ical/velicalendarincidence.h"
#include "ical/velicalendarrule.h"
#include "model/compat.h"

#include <KCalendarCore/ICalFormat>
#include <KCalendarCore/MemoryCalendar>

#include <QHash>
#include <QSet>
#include <QUuid>

#include <algorithm>
#include <iterator>

using namespace KCalendarCore;

namespace
{
/** The days of each series that have an incidence of their own, by the id that they share. */
using ReplacedDays = QHash<QString, QVector<QDate>>;

// --- writing

/** What a reader gets who takes the time to be one of the system's zone, where daylight saving may leave it out. */
VelDateTime asReadBack(const VelDateTime &time)
{
    const QDateTime local(time.date(), time.time());
    return local.isValid() ? VelDateTime::fromQDateTime(local) : VelDateTime();
}

/** The parser drops blanks at the ends of a text. */
QString asReadBack(const QString &text)
{
    const auto isBlank = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); };
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    return text.mid(static_cast<VelSize>(first - text.begin()), static_cast<VelSize>(last - first));
}

/** True for names that every parser of parameters keeps as they are. */
bool isPlainName(const QString &name)
{
    return name == name.simplified() && std::all_of(name.begin(), name.end(), [](QChar c) {
               return c.isLetterOrNumber() || QStringLiteral(" .,-'_").contains(c);
           });
}

VelEntry readBack(const Incidence &incidence, const VelEntry &entry)
{
    VelEntry result = VelICalendarIncidence::toEntry(incidence, QTimeZone::utc());
    result.setTitle(asReadBack(result.getTitle()));
    result.setDescription(asReadBack(result.getDescription()));
    for (VelAccount &account : result.accounts) {
        if (!isPlainName(account.name))
            account.name.clear();
    }
    const VelICalendarRule::Place place{entry.getStart(), 0, {}, QTimeZone::utc()};
    result.rule = VelICalendarRule::read(incidence, place).rule;
    if (!entry.notime) {
        result.setStart(asReadBack(result.getStart()));
        result.setEnd(asReadBack(result.getEnd()));
        // The toolkit puts the one in place of the other, of an event and of a repeating to-do.
        if (!result.getEnd().isValid() && entry.type == VelEntry::Event)
            result.setEnd(result.getStart());
        if (!result.getStart().isValid() && entry.type == VelEntry::Todo && incidence.recurs())
            result.setStart(result.getEnd());
    }
    return result;
}

/** The same for the same entry, so that a program that reads a calendar again knows its entries. */
QString uidFor(const VelEntry &entry, quint32 userid, QSet<QString> &used)
{
    static const QUuid space(0x6f2c1b0e, 0x93d7, 0x4d58, 0xa1, 0x0b, 0x5e, 0x7d, 0x24, 0xc8, 0x91, 0x3f);
    for (int copy = 0;; ++copy) {
        const QString number = QStringLiteral("%1/%2/%3/%4/%5/")
                                   .arg(userid)
                                   .arg(entry.globalid)
                                   .arg(entry.localid)
                                   .arg(copy)
                                   .arg(entry.getStart().julianDay());
        const QString name = number + entry.getTitle();
        QString uid = QUuid::createUuidV5(space, name).toString(QUuid::WithoutBraces);
        if (used.contains(uid))
            continue;
        used.insert(uid);
        return uid;
    }
}

/** Incidences here have the wall clock marked as UTC. Without the mark it is what RFC 5545 calls a floating time. */
QByteArray withFloatingTimes(const QByteArray &text)
{
    static const QList<QByteArray> properties{
        "DTSTART", "DTEND", "DUE", "EXDATE", "RDATE", "RRULE", "X-KDE-LIBKCAL-DTRECURRENCE"};
    QByteArray result;
    result.reserve(text.size());
    for (QByteArray line : text.split('\n')) {
        const bool isTime =
            std::any_of(properties.begin(), properties.end(), [&line](const QByteArray &property) {
                const char end = line.size() > property.size() ? line.at(property.size()) : '\0';
                return line.startsWith(property) && (end == ':' || end == ';');
            });
        if (line.endsWith('\r'))
            line.chop(1);
        if (isTime && line.endsWith('Z'))
            line.chop(1);
        if (line.startsWith("RRULE:"))
            line.replace("Z;", ";");
        if (!line.isEmpty())
            result += line + "\r\n";
    }
    return result;
}

Incidence::Ptr written(const VelEntry &entry, quint32 userid, QDate today)
{
    Incidence::Ptr incidence = VelICalendarIncidence::toIncidence(entry, userid);
    if (!incidence)
        return {};
    VelICalendarRule::write(entry, today, *incidence);
    VelICalendarExtras::write(entry, readBack(*incidence, entry), *incidence);
    return incidence;
}

// --- reading

ReplacedDays replacedDays(const Incidence::List &incidences, const QTimeZone &zone)
{
    ReplacedDays days;
    for (const Incidence::Ptr &incidence : incidences) {
        if (incidence->hasRecurrenceId())
            days[incidence->uid()].append(
                VelICalendarIncidence::toWallClock(incidence->recurrenceId(), zone).date());
    }
    return days;
}

/** Of a text that was cut off, what is whole: the parser takes all or nothing. */
QByteArray withoutOpenEnd(const QByteArray &text)
{
    const QByteArray event = "\nEND:VEVENT";
    const QByteArray todo = "\nEND:VTODO";
    const auto end = std::max(text.lastIndexOf(event), text.lastIndexOf(todo));
    if (end < 0)
        return {};
    return text.left(end) + (text.mid(end).startsWith(event) ? event : todo) + "\nEND:VCALENDAR\n";
}

class IncidenceReader
{
public:
    IncidenceReader(const ReplacedDays &replaced, const QTimeZone &zone, VelICalendar::Result &result)
        : m_replaced(replaced)
        , m_zone(zone)
        , m_result(result)
    {
    }

    void read(const Incidence &incidence);

private:
    bool readRule(const Incidence &incidence, VelEntry &entry) const;

    const ReplacedDays &m_replaced;
    const QTimeZone &m_zone;
    VelICalendar::Result &m_result;
};

void completeTimes(VelEntry &entry)
{
    if (!entry.getStart().isValid())
        entry.setStart(entry.notime ? entry.getEnd().withTime(QTime(0, 0)) : entry.getEnd());
    if (!entry.getEnd().isValid() && entry.notime)
        entry.setEnd(entry.getStart().withTime(QTime(23, 59)));
    if (!entry.getEnd().isValid() || entry.getEnd() < entry.getStart())
        entry.setEnd(entry.getStart());
}

void IncidenceReader::read(const Incidence &incidence)
{
    const bool isWanted =
        incidence.type() == IncidenceBase::TypeEvent || incidence.type() == IncidenceBase::TypeTodo;
    if (!isWanted || incidence.status() == Incidence::StatusCanceled) {
        ++m_result.leftOut;
        return;
    }
    auto entry = std::make_unique<VelEntry>(VelICalendarIncidence::toEntry(incidence, m_zone));
    VelICalendarExtras::readFields(incidence, *entry);
    completeTimes(*entry);
    if (!entry->isValid()) {
        ++m_result.leftOut;
        return;
    }
    m_result.simplified += readRule(incidence, *entry) ? 0 : 1;
    entry->dirty = 1;
    m_result.entries.push_back(std::move(entry));
}

/** False when the entry repeats otherwise than the incidence. */
bool IncidenceReader::readRule(const Incidence &incidence, VelEntry &entry) const
{
    if (incidence.hasRecurrenceId())
        return true;
    const QDate written = incidence.dtStart().date();
    const auto shift = written.isValid() ? written.daysTo(entry.getStart().date()) : 0;
    const VelICalendarRule::Place place{entry.getStart(), static_cast<int>(shift),
                                        m_replaced.value(incidence.uid()), m_zone};
    const VelICalendarRule::Reading reading = VelICalendarRule::read(incidence, place);
    entry.rule = reading.rule;
    return VelICalendarExtras::readRule(incidence, entry) || reading.isExact;
}
} // namespace

namespace VelICalendar
{
QByteArray write(const VelEntryList &entries, quint32 userid, QDate today)
{
    QByteArray text = "BEGIN:VCALENDAR\r\nPRODID:-//Ulmacor/Delmast Time 1.0//EN\r\nVERSION:2.0\r\n";
    ICalFormat format;
    QSet<QString> uids;
    for (const VelEntryRef &ref : entries) {
        const VelEntry &entry = *ref.getOriginal();
        if (ref.getNumber() != 0 || !entry.isValid())
            continue;
        const Incidence::Ptr incidence = written(entry, userid, today);
        if (!incidence)
            continue;
        incidence->setUid(uidFor(entry, userid, uids));
        text += withFloatingTimes(format.toRawString(incidence));
    }
    return text + "END:VCALENDAR\r\n";
}

Result read(const QByteArray &bytes, const QTimeZone &zone)
{
    Result result;
    if (bytes.size() > MaximumSize || !isICalendar(bytes))
        return result;
    const QByteArray text = VelICalendarFilter::filtered(bytes);
    const MemoryCalendar::Ptr calendar(new MemoryCalendar(zone));
    ICalFormat format;
    result.isCalendar = format.fromRawString(calendar, text);
    if (!result.isCalendar) {
        const QByteArray whole = withoutOpenEnd(text);
        result.isCalendar = !whole.isEmpty() && format.fromRawString(calendar, whole);
        result.leftOut = result.isCalendar ? 1 : 0;
    }
    Incidence::List incidences = calendar->rawIncidences();
    std::sort(incidences.begin(), incidences.end(),
              [](const Incidence::Ptr &a, const Incidence::Ptr &b) { return a->uid() < b->uid(); });
    const ReplacedDays replaced = replacedDays(incidences, zone);
    IncidenceReader reader(replaced, zone, result);
    for (const Incidence::Ptr &incidence : incidences)
        reader.read(*incidence);
    std::stable_sort(result.entries.begin(), result.entries.end(),
                     [](const auto &a, const auto &b) { return a->getStart() < b->getStart(); });
    return result;
}

bool isICalendar(const QByteArray &bytes)
{
    VelVCalendarSource source(bytes);
    VelVCalendarLine line;
    bool isInCalendar = false;
    while (source.next(line)) {
        if (line.is("BEGIN") && VelVCalendarLine::equals(VelVCalendarLine::trimmed(line.value), "VCALENDAR"))
            isInCalendar = true;
        else if (line.is("BEGIN"))
            return false;
        else if (isInCalendar && line.is("VERSION"))
            return VelVCalendarLine::trimmed(line.value) == "2.0";
    }
    return false;
}
} // namespace VelICalendar

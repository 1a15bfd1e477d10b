// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendar.h"

#include "formats/velvcalendarsource.h"
#include "ical/velicalendarextras.h"
#include "ical/velicalendarincidence.h"
#include "ical/velicalendarreader.h"
#include "ical/velicalendarrule.h"
#include "model/compat.h"

#include <KCalendarCore/ICalFormat>

#include <QSet>
#include <QUuid>

#include <algorithm>
#include <iterator>

using namespace KCalendarCore;

namespace
{
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

/** How the toolkit writes a time that it cannot say: those after the year 3000 are among them. */
constexpr const char *NoDate = "00000000";

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
        // When it was done matters less than that it was.
        const bool isUndated = line.startsWith("COMPLETED:") && line.contains(NoDate);
        if (!line.isEmpty() && !isUndated)
            result += line + "\r\n";
    }
    return result;
}

bool saysItsDates(const QByteArray &lines)
{
    static const QList<QByteArray> properties{"DTSTART", "DTEND", "DUE", "EXDATE", "RDATE"};
    const QList<QByteArray> all = lines.split('\n');
    return std::none_of(all.begin(), all.end(), [](const QByteArray &line) {
        const auto nameEnd =
            std::find_if(line.begin(), line.end(), [](char c) { return c == ':' || c == ';'; });
        return properties.contains(line.left(static_cast<VelSize>(nameEnd - line.begin())))
            && line.contains(NoDate);
    });
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
} // namespace

namespace VelICalendar
{
QByteArray write(const VelEntryList &entries, quint32 userid, QDate today, QStringList *leftOut)
{
    QByteArray text = "BEGIN:VCALENDAR\r\nPRODID:-//Ulmacor/Delmast Time 1.0//EN\r\nVERSION:2.0\r\n";
    ICalFormat format;
    QSet<QString> uids;
    for (const VelEntryRef &ref : entries) {
        const VelEntry &entry = *ref.getOriginal();
        if (ref.getNumber() != 0)
            continue;
        const Incidence::Ptr incidence = entry.isValid() ? written(entry, userid, today) : Incidence::Ptr();
        if (entry.isValid() && !incidence)
            continue;
        QByteArray lines;
        if (incidence) {
            incidence->setUid(uidFor(entry, userid, uids));
            lines = withFloatingTimes(format.toRawString(incidence));
        }
        if (!lines.isEmpty() && saysItsDates(lines))
            text += lines;
        else if (leftOut)
            leftOut->append(entry.getTitle());
    }
    return text + "END:VCALENDAR\r\n";
}

VelForeignContent read(const QByteArray &bytes, const QTimeZone &zone)
{
    VelICalendarReader reader(bytes, zone);
    while (reader.readSome()) { }
    return reader.takeContent();
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

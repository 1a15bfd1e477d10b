// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarincidence.h"

#include "ical/velicalendarfilter.h"
#include "model/compat.h"

#include <KCalendarCore/Alarm>
#include <KCalendarCore/Attendee>
#include <KCalendarCore/Event>
#include <KCalendarCore/Todo>

#include <algorithm>
#include <limits>

using namespace KCalendarCore;

namespace
{
constexpr int LastMinuteOfDay = 23 * 60 + 59;

/** Line ends as iCalendar has them, and no control characters: parsers refuse them. */
QString cleaned(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    const auto isForbidden = [](QChar c) {
        const char16_t unit = c.unicode();
        return unit < 0x20 && unit != u'\n' && unit != u'\t';
    };
    const auto *const end = std::remove_if(text.begin(), text.end(), isForbidden);
    text.truncate(static_cast<VelSize>(end - text.constBegin()));
    return text;
}

/** For a parameter, in which a backslash at the end would swallow the closing quote. */
QString oneLine(const QString &text)
{
    return cleaned(text)
        .replace(QLatin1Char('\n'), QLatin1Char(' '))
        .replace(QLatin1Char('\\'), QLatin1Char('/'));
}

Attendee::PartStat toPartStat(int status)
{
    switch (status) {
    case VelAccount::Accepted:
        return Attendee::Accepted;
    case VelAccount::Tentative:
        return Attendee::Tentative;
    case VelAccount::Declined:
        return Attendee::Declined;
    default:
        return Attendee::NeedsAction;
    }
}

int toStatus(Attendee::PartStat status)
{
    switch (status) {
    case Attendee::Accepted:
    case Attendee::Completed:
        return VelAccount::Accepted;
    case Attendee::Tentative:
    case Attendee::InProcess:
        return VelAccount::Tentative;
    case Attendee::Declined:
        return VelAccount::Declined;
    default:
        return VelAccount::Unanswered;
    }
}

bool isResource(const VelAccount &account)
{
    return account.type == VelAccount::Resource || account.attendee == VelAccount::ResourceAttendee;
}

Attendee toAttendee(const VelAccount &account)
{
    const bool isOptional = account.attendee == VelAccount::OptionalAttendee;
    const bool isAsked = account.status < VelAccount::Declined;
    Attendee attendee(oneLine(account.name), oneLine(account.email), isAsked, toPartStat(account.status),
                      isOptional ? Attendee::OptParticipant : Attendee::ReqParticipant,
                      QString::number(account.id));
    attendee.setCuType(isResource(account) ? Attendee::Resource : Attendee::Individual);
    return attendee;
}

/** Calendar files know nobody without a name. */
QString nameOf(const QString &name, const QString &email)
{
    return name.isEmpty() ? email : name;
}

VelAccount toAccount(const Attendee &attendee)
{
    VelAccount account(nameOf(attendee.name(), attendee.email()), attendee.email(), 0);
    const bool isResource = attendee.cuType() == Attendee::Resource || attendee.cuType() == Attendee::Room;
    const bool isOptional =
        attendee.role() == Attendee::OptParticipant || attendee.role() == Attendee::NonParticipant;
    account.type = isResource ? VelAccount::Resource : VelAccount::Person;
    account.status = toStatus(attendee.status());
    if (isResource)
        account.attendee = VelAccount::ResourceAttendee;
    else if (isOptional)
        account.attendee = VelAccount::OptionalAttendee;
    return account;
}

void addAttendees(const VelEntry &entry, quint32 owner, Incidence &incidence)
{
    for (const VelAccount &account : entry.accounts) {
        if (account.email.isEmpty())
            continue; // iCalendar knows people by their address alone
        incidence.addAttendee(toAttendee(account), false);
        if (account.id != 0 && account.id == owner)
            incidence.setOrganizer(Person(oneLine(account.name), oneLine(account.email)));
    }
}

void addAlarm(const VelEntry &entry, Incidence &incidence)
{
    constexpr quint32 longest = std::numeric_limits<int>::max() / 60;
    if (entry.reminder == 0)
        return;
    const int seconds = 60 * static_cast<int>(std::min(entry.reminder, longest));
    const Alarm::Ptr alarm = incidence.newAlarm();
    alarm->setDisplayAlarm(incidence.summary());
    alarm->setStartOffset(Duration(-seconds));
    alarm->setEnabled(true);
}

Incidence::Ptr toEvent(const VelEntry &entry)
{
    const Event::Ptr event(new Event);
    event->setAllDay(entry.notime);
    event->setDtStart(entry.getStart().toQDateTime());
    event->setDtEnd(entry.getEnd().toQDateTime());
    event->setTransparency(entry.display == VelEntry::Free ? Event::Transparent : Event::Opaque);
    if (entry.isTentative())
        event->setStatus(Incidence::StatusTentative);
    return event;
}

Incidence::Ptr toTodo(const VelEntry &entry)
{
    const Todo::Ptr todo(new Todo);
    todo->setAllDay(entry.notime);
    todo->setDtStart(entry.getStart().toQDateTime());
    todo->setDtDue(entry.getEnd().toQDateTime());
    // To complete a repeating one means, to other programs, that its next occurrence is due.
    if (entry.complete && entry.rule.recurringtype == VelRecurrenceRule::None)
        todo->setCompleted(
            QDateTime(entry.getEnd().date(), entry.getEnd().time(), QTimeZone::systemTimeZone()).toUTC());
    return todo;
}

void readEvent(const Event &event, const QTimeZone &zone, VelEntry &entry)
{
    entry.type = VelEntry::Event;
    entry.display = event.transparency() == Event::Transparent ? VelEntry::Free : VelEntry::Busy;
    if (event.status() == Incidence::StatusTentative)
        entry.display = VelEntry::TentativeTime;
    entry.setStart(VelICalendarIncidence::toWallClock(event.dtStart(), zone));
    entry.setEnd(VelICalendarIncidence::toWallClock(event.dtEnd(), zone));
}

void readTodo(const Todo &todo, const QTimeZone &zone, VelEntry &entry)
{
    entry.type = VelEntry::Todo;
    entry.complete =
        todo.isCompleted() || !todo.nonKDECustomProperty(VelICalendarFilter::Completed).isEmpty();
    // The first ones: of a repeating to-do the toolkit also knows those that come next.
    if (todo.hasStartDate())
        entry.setStart(VelICalendarIncidence::toWallClock(todo.dtStart(true), zone));
    if (todo.hasDueDate())
        entry.setEnd(VelICalendarIncidence::toWallClock(todo.dtDue(true), zone));
}

/** Minutes before the start; an alarm at the start or behind it still has to go off. */
quint32 leadTime(const Alarm &alarm, const VelEntry &entry, const QTimeZone &zone)
{
    qint64 seconds = 0;
    if (alarm.hasStartOffset())
        seconds = -static_cast<qint64>(alarm.startOffset().asSeconds());
    else if (alarm.hasEndOffset())
        seconds = -entry.getStart().secsTo(entry.getEnd()) - alarm.endOffset().asSeconds();
    else
        seconds = VelICalendarIncidence::toWallClock(alarm.time(), zone).secsTo(entry.getStart());
    return static_cast<quint32>(
        std::clamp<qint64>((seconds + 59) / 60, 1, std::numeric_limits<quint32>::max()));
}

void readAlarms(const Incidence &incidence, const QTimeZone &zone, VelEntry &entry)
{
    const Alarm::List alarms = incidence.alarms();
    const auto first =
        std::find_if(alarms.begin(), alarms.end(), [](const Alarm::Ptr &alarm) { return alarm->enabled(); });
    if (first != alarms.end())
        entry.reminder = leadTime(**first, entry, zone);
}

void readAttendees(const Incidence &incidence, VelEntry &entry)
{
    const Attendee::List attendees = incidence.attendees();
    for (const Attendee &attendee : attendees)
        entry.accounts.append(toAccount(attendee));
    const Person organizer = incidence.organizer();
    const bool isListed =
        std::any_of(entry.accounts.begin(), entry.accounts.end(), [&](const VelAccount &account) {
            return account.email.compare(organizer.email(), Qt::CaseInsensitive) == 0;
        });
    if (organizer.email().isEmpty() || isListed)
        return;
    VelAccount account(nameOf(organizer.name(), organizer.email()), organizer.email(), 0);
    account.type = VelAccount::Person;
    account.status = VelAccount::Accepted;
    entry.accounts.append(account);
}
} // namespace

namespace VelICalendarIncidence
{
VelDateTime toWallClock(const QDateTime &time, const QTimeZone &zone)
{
    if (!time.isValid())
        return {};
    return VelDateTime::fromQDateTime(time.timeSpec() == Qt::LocalTime ? time : time.toTimeZone(zone));
}

Incidence::Ptr toIncidence(const VelEntry &entry, quint32 userid)
{
    if (entry.type != VelEntry::Event && entry.type != VelEntry::Todo)
        return {};
    Incidence::Ptr incidence = entry.type == VelEntry::Event ? toEvent(entry) : toTodo(entry);
    // Plain, as the toolkit would guess otherwise.
    incidence->setSummary(cleaned(entry.getTitle()), false);
    incidence->setDescription(cleaned(entry.getDescription()), false);
    if (entry.access == VelEntry::Private)
        incidence->setSecrecy(Incidence::SecrecyPrivate);
    incidence->setPriority(std::clamp(entry.priority, 0, 9));
    addAttendees(entry, entry.user != 0 ? entry.user : userid, *incidence);
    addAlarm(entry, *incidence);
    return incidence;
}

VelEntry toEntry(const Incidence &incidence, const QTimeZone &zone)
{
    VelEntry entry;
    // Dates without times are the same everywhere.
    const QTimeZone ownZone = incidence.allDay() ? incidence.dtStart().timeZone() : zone;
    if (incidence.type() == IncidenceBase::TypeEvent)
        readEvent(static_cast<const Event &>(incidence), ownZone, entry);
    else if (incidence.type() == IncidenceBase::TypeTodo)
        readTodo(static_cast<const Todo &>(incidence), ownZone, entry);
    entry.notime = incidence.allDay();
    if (entry.notime) {
        entry.setStart(entry.getStart().withTime(QTime(0, 0)));
        entry.setEnd(entry.getEnd().withTime(QTime::fromMSecsSinceStartOfDay(LastMinuteOfDay * 60 * 1000)));
    }
    entry.setTitle(incidence.summary());
    entry.setDescription(incidence.description());
    entry.access = incidence.secrecy() == Incidence::SecrecyPublic ? VelEntry::Public : VelEntry::Private;
    entry.priority = std::clamp(incidence.priority(), 0, 9);
    readAlarms(incidence, zone, entry);
    readAttendees(incidence, entry);
    return entry;
}
} // namespace VelICalendarIncidence

// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velvcalendarreader.h"

#include "formats/velseries.h"
#include "formats/velvcalendar.h"
#include "formats/velvcalendarrule.h"
#include "model/compat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

namespace
{
constexpr qint64 SecondsPerDay = 24 * 60 * 60;
/** More cancelled days of a series than this only make it one that differs. */
constexpr int MaximumExceptions = 10000;

int componentType(std::string_view name)
{
    if (VelVCalendarLine::equals(name, "VEVENT"))
        return VelEntry::Event;
    return VelVCalendarLine::equals(name, "VTODO") ? VelEntry::Todo : VelEntry::NoType;
}

/** ISO 8601 also knows dates as 2002-03-05 and times as 09:05:00. */
std::string withoutSeparators(std::string_view text)
{
    std::string result(text.substr(0, 32));
    if (result.size() > 4 && result[4] == '-')
        result.erase(
            std::remove_if(result.begin(), result.end(), [](char c) { return c == '-' || c == ':'; }),
            result.end());
    return result;
}

/** A duration such as P1DT2H or PT30M in seconds; none when it is none, or not forward. */
std::optional<qint64> toSeconds(std::string_view text)
{
    if (text.empty() || text.front() != 'P')
        return {};
    text.remove_prefix(1);
    qint64 seconds = 0;
    bool isTime = false;
    while (!text.empty()) {
        if (text.front() == 'T') {
            isTime = true;
            text.remove_prefix(1);
            continue;
        }
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        if (error != std::errc() || text.empty() || number < 0)
            return {};
        constexpr std::string_view units = "WDHMS";
        constexpr std::array<qint64, 5> lengths{7 * SecondsPerDay, SecondsPerDay, 3600, 60, 1};
        const std::size_t unit = units.find(text.front());
        if (unit == std::string_view::npos || isTime != (unit >= 2))
            return {};
        seconds += number * lengths[unit];
        text.remove_prefix(1);
    }
    return seconds;
}

/** The zone that the system knows by that name, if any. */
QTimeZone toZone(std::string_view name)
{
    constexpr std::size_t longest = 64;
    if (name.empty() || name.size() > longest || name.find("..") != std::string_view::npos)
        return {};
    return QTimeZone(QByteArray(name.data(), static_cast<VelSize>(name.size())));
}

/** Our own rule lines have no property name: a kind, an interval, and more behind a blank. */
bool looksLikeRule(std::string_view text)
{
    const std::size_t kind = text.find_first_not_of("DWMPY");
    return kind >= 1 && kind <= 2 && text[kind] >= '0' && text[kind] <= '9';
}

int attendeeStatus(std::string_view text)
{
    using Line = VelVCalendarLine;
    if (Line::equals(text, "ACCEPTED") || Line::equals(text, "CONFIRMED"))
        return VelAccount::Accepted;
    if (Line::equals(text, "TENTATIVE"))
        return VelAccount::Tentative;
    return Line::equals(text, "DECLINED") ? VelAccount::Declined : VelAccount::Unanswered;
}

/** "Name <address>", a bare address, one with "MAILTO:", or a bare name. */
VelAccount toAccount(const QString &text)
{
    const bool hasBrackets = text.endsWith(QLatin1Char('>')) && text.contains(QLatin1Char('<'));
    if (hasBrackets) {
        const VelSize blank = text.lastIndexOf(QLatin1String(" <"));
        const VelSize bracket = blank >= 0 ? blank + 1 : text.lastIndexOf(QLatin1Char('<'));
        const QString email = text.mid(bracket + 1, text.size() - bracket - 2);
        return {text.left(blank >= 0 ? blank : bracket), email, 0};
    }
    const QString trimmed = text.trimmed();
    const QLatin1String mailto("mailto:");
    if (trimmed.startsWith(mailto, Qt::CaseInsensitive))
        return {QString(), trimmed.mid(mailto.size()), 0};
    return trimmed.contains(QLatin1Char('@')) ? VelAccount(QString(), trimmed, 0)
                                              : VelAccount(trimmed, QString(), 0);
}

/** The distance in minutes, rounded up; an alarm at the very start still has to go off. */
quint32 leadTime(const VelDateTime &start, const VelDateTime &alarm)
{
    const qint64 minutes = (qAbs(start.secsTo(alarm)) + 59) / 60;
    return static_cast<quint32>(std::clamp<qint64>(minutes, 1, std::numeric_limits<quint32>::max()));
}
} // namespace

VelVCalendarReader::VelVCalendarReader(const QByteArray &bytes, const QTimeZone &zone)
    : m_source(bytes)
    , m_zone(zone)
{
}

bool VelVCalendarReader::readSome(std::size_t size)
{
    const std::size_t limit = m_source.position() + size;
    VelVCalendarLine line;
    while (m_source.position() < limit) {
        if (!m_source.next(line)) {
            abandon();
            return false;
        }
        readLine(line);
    }
    return true;
}

void VelVCalendarReader::readLine(const VelVCalendarLine &line)
{
    if (line.is("BEGIN"))
        begin(line);
    else if (line.is("END"))
        end(line);
    else if (m_draft && m_depth == 0)
        readProperty(line);
}

void VelVCalendarReader::begin(const VelVCalendarLine &line)
{
    const int type = componentType(VelVCalendarLine::trimmed(line.value));
    if (type == VelEntry::NoType) {
        m_depth += m_draft ? 1 : 0;
        return;
    }
    abandon(); // entries do not nest: the end of that one is missing
    m_draft = Draft();
    m_draft->entry.type = type;
}

void VelVCalendarReader::end(const VelVCalendarLine &line)
{
    const std::string_view component = VelVCalendarLine::trimmed(line.value);
    const int type = componentType(component);
    if (m_draft && type == m_draft->entry.type)
        finish();
    else if (type != VelEntry::NoType || VelVCalendarLine::equals(component, "VCALENDAR"))
        abandon();
    else if (m_depth > 0)
        --m_depth;
}

void VelVCalendarReader::abandon()
{
    m_content.leftOut += m_draft ? 1 : 0;
    m_draft.reset();
    m_depth = 0;
}

void VelVCalendarReader::readProperty(const VelVCalendarLine &line)
{
    if (line.isTooLong) {
        m_draft->isBroken = true;
        return;
    }
    if (const PropertyReader reader = readerOf(line))
        (this->*reader)(line);
}

VelVCalendarReader::PropertyReader VelVCalendarReader::readerOf(const VelVCalendarLine &line)
{
    using Reader = VelVCalendarReader;
    static constexpr std::array<std::pair<std::string_view, PropertyReader>, 17> readers{
        {{"DTSTART", &Reader::readStart},
         {"DTEND", &Reader::readEnd},
         {"DUE", &Reader::readDue},
         {"DURATION", &Reader::readDuration},
         {"SUMMARY", &Reader::readSummary},
         {"DESCRIPTION", &Reader::readDescription},
         {"CLASS", &Reader::readClass},
         {"PRIORITY", &Reader::readPriority},
         {"COMPLETED", &Reader::readCompleted},
         {"STATUS", &Reader::readStatus},
         {"TRANSP", &Reader::readTransparency},
         {"DALARM", &Reader::readAlarm},
         {"AALARM", &Reader::readAlarm},
         {"ATTENDEE", &Reader::readAttendee},
         {"EXDATE", &Reader::readException},
         {"RDATE", &Reader::readAddition},
         {"RRULE", &Reader::readRule}}};
    if (line.name.empty())
        return looksLikeRule(line.value) ? &Reader::readRule : nullptr;
    const auto *const found =
        std::find_if(readers.begin(), readers.end(), [&line](const auto &one) { return line.is(one.first); });
    return found == readers.end() ? nullptr : found->second;
}

void VelVCalendarReader::readDuration(const VelVCalendarLine &line)
{
    m_draft->duration = toSeconds(VelVCalendarLine::trimmed(line.value));
}

/** "CONFIDENTAL" is how some programs spell it. */
void VelVCalendarReader::readClass(const VelVCalendarLine &line)
{
    const std::string_view value = VelVCalendarLine::trimmed(line.value);
    const bool isPrivate = VelVCalendarLine::equals(value, "PRIVATE")
        || VelVCalendarLine::equals(value, "CONFIDENTIAL") || VelVCalendarLine::equals(value, "CONFIDENTAL");
    m_draft->entry.access = isPrivate ? VelEntry::Private : VelEntry::Public;
}

void VelVCalendarReader::readPriority(const VelVCalendarLine &line)
{
    const std::string_view value = VelVCalendarLine::trimmed(line.value);
    int priority = 0;
    const auto result = std::from_chars(value.data(), value.data() + value.size(), priority);
    if (result.ec == std::errc())
        m_draft->entry.priority = std::clamp(priority, 0, 9);
}

void VelVCalendarReader::readCompleted(const VelVCalendarLine &line)
{
    m_draft->entry.complete = !VelVCalendarLine::trimmed(line.value).empty();
}

void VelVCalendarReader::readStatus(const VelVCalendarLine &line)
{
    const std::string_view value = VelVCalendarLine::trimmed(line.value);
    if (VelVCalendarLine::equals(value, "COMPLETED"))
        m_draft->entry.complete = true;
    else if (VelVCalendarLine::equals(value, "TENTATIVE"))
        m_draft->entry.display = VelEntry::TentativeTime;
}

/** 0 takes the time, anything above leaves it free. */
void VelVCalendarReader::readTransparency(const VelVCalendarLine &line)
{
    const std::string_view value = VelVCalendarLine::trimmed(line.value);
    const bool isBusy = value == "0" || VelVCalendarLine::equals(value, "OPAQUE");
    if (!value.empty() && m_draft->entry.display == VelEntry::NoDisplay)
        m_draft->entry.display = isBusy ? VelEntry::Busy : VelEntry::Free;
}

/** The first of several alarms: an entry has one reminder. */
void VelVCalendarReader::readAlarm(const VelVCalendarLine &line)
{
    if (!m_draft->alarm.isValid())
        m_draft->alarm = toMoment(line).time;
}

void VelVCalendarReader::readAttendee(const VelVCalendarLine &line)
{
    VelAccount account = toAccount(line.text());
    VelVCalendarLine commonName = line;
    commonName.value = line.parameter("CN");
    if (!commonName.value.empty())
        account.name = commonName.text();
    const std::string_view status = line.parameter("STATUS");
    account.status = attendeeStatus(status.empty() ? line.parameter("PARTSTAT") : status);
    if (VelVCalendarLine::equals(line.parameter("EXPECT"), "FYI")
        || VelVCalendarLine::equals(line.parameter("ROLE"), "OPT-PARTICIPANT"))
        account.attendee = VelAccount::OptionalAttendee;
    // Calendar files know nobody without a name.
    if (account.name.isEmpty())
        account.name = account.email;
    if (!account.name.isEmpty())
        m_draft->entry.accounts.append(account);
}

/** The first of several rules: an entry has one. */
void VelVCalendarReader::readRule(const VelVCalendarLine &line)
{
    if (!m_draft->rule.empty()) {
        m_draft->isSimplified = true;
        return;
    }
    m_draft->rule = VelVCalendarLine::trimmed(line.value);
    // Nobody else leaves its name out.
    m_draft->isOwnRule = line.isOwn || line.name.empty();
}

/** One day or several, with semicolons between them. */
void VelVCalendarReader::readException(const VelVCalendarLine &line)
{
    VelVCalendarLine one = line;
    std::string_view rest = line.value;
    while (!rest.empty() && m_draft->exceptions.size() < MaximumExceptions) {
        one.value = rest.substr(0, rest.find_first_of(";,"));
        rest.remove_prefix(std::min(one.value.size() + 1, rest.size()));
        m_draft->exceptions.append(toMoment(one).time.date());
    }
    m_draft->isSimplified = m_draft->isSimplified || !rest.empty();
}

VelVCalendarReader::Moment VelVCalendarReader::toMoment(const VelVCalendarLine &line) const
{
    const std::string_view first = line.value.substr(0, line.value.find(';'));
    std::string text = withoutSeparators(VelVCalendarLine::trimmed(first));
    constexpr std::size_t dateLength = 8;
    const bool isDate = text.size() == dateLength;
    if (isDate)
        text += "T000000";
    const VelDateTime time = VelVCalendar::fromISO8601(text, m_zone);
    if (isDate || !time.isValid() || text.back() == 'Z')
        return {time, isDate};
    const QTimeZone named = toZone(line.parameter("TZID"));
    if (!named.isValid())
        return {time, false};
    return {VelDateTime::fromQDateTime(QDateTime(time.date(), time.time(), named).toTimeZone(m_zone)), false};
}

void VelVCalendarReader::finish()
{
    if (!m_draft->isBroken)
        setTimes();
    if (m_draft->isBroken || !m_draft->start.time.isValid()) {
        abandon();
        return;
    }
    auto entry = std::make_unique<VelEntry>(std::move(m_draft->entry));
    const VelDateTime start = m_draft->start.time;
    entry->setStored(m_draft->title, m_draft->description, start, m_draft->end.time);
    entry->dirty = 1;
    if (m_draft->alarm.isValid())
        entry->reminder = leadTime(start, m_draft->alarm);
    const QVector<QDate> days = setRule(*entry);
    if (m_draft->isSimplified)
        m_content.simplified.append(entry->getTitle());
    m_content.add(std::move(entry), days);
    m_draft.reset();
    m_depth = 0;
}

/** Returns the days of the series that are to be entries of their own. */
QVector<QDate> VelVCalendarReader::setRule(VelEntry &entry)
{
    if (m_draft->rule.empty())
        return {};
    const QDate start = entry.getStart().date();
    const auto reading = VelVCalendarRule::fromText(m_draft->rule, start, m_zone);
    if (!reading) {
        m_draft->isSimplified = true;
        return {};
    }
    VelSeries::Adopted adopted{reading->rule, {}};
    if (!m_draft->isOwnRule) {
        adopted = VelSeries::adopted(reading->rule, start, VelSeries::Form::Plain);
        m_draft->isSimplified = m_draft->isSimplified || !reading->isExact;
    }
    entry.rule = adopted.rule;
    QVector<QDate> days = adopted.days;
    for (const QDate day : m_draft->exceptions) {
        m_draft->isSimplified = m_draft->isSimplified || !adopted.days.contains(day);
        days.removeAll(day);
    }
    return days;
}

void VelVCalendarReader::setTimes()
{
    Draft &draft = *m_draft;
    const bool isTodo = draft.entry.type == VelEntry::Todo;
    const bool useDue = draft.due.time.isValid() && (isTodo || !draft.end.time.isValid());
    Moment &start = draft.start;
    Moment &end = useDue ? draft.due : draft.end;
    if (!start.time.isValid())
        start = end;
    else if (!end.time.isValid() && draft.duration)
        end = {start.time.addSecs(*draft.duration), start.isDate};
    // A date as the end of an event is the first day after it, as a due date it is the last one.
    if (end.isDate && !isTodo && end.time > start.time)
        end.time = end.time.addDays(-1);
    if (end.isDate || (start.isDate && !end.time.isValid()))
        end.time = (end.time.isValid() ? end.time : start.time).withTime(QTime(23, 59));
    if (!end.time.isValid() || end.time < start.time)
        end.time = start.time;
    draft.end = end;
    const bool fillsDays = start.time.time() == QTime(0, 0) && end.time.time() == QTime(23, 59);
    draft.entry.notime = isTodo || start.isDate || fillsDays;
}

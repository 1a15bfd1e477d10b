// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarrule.h"

#include "formats/velseries.h"
#include "formats/velvcalendar.h"
#include "ical/velicalendarincidence.h"

#include <KCalendarCore/Recurrence>

#include <algorithm>
#include <optional>

using KCalendarCore::Recurrence;
using KCalendarCore::RecurrenceRule;
using Form = VelSeries::Form;

namespace
{
constexpr int LastWeek = -1;
constexpr int MaximumInterval = 9999;

// --- ours to theirs

class RuleWriter
{
public:
    RuleWriter(const VelEntry &entry, Recurrence *recurrence)
        : m_entry(entry)
        , m_rule(entry.rule)
        , m_series(entry.rule, entry.getStart().date())
        , m_recurrence(recurrence)
    {
    }

    void write(QDate today);

private:
    void writeRule(Form form);
    void setPattern(RecurrenceRule *rule, Form form) const;
    void setMonthly(RecurrenceRule *rule, Form form) const;
    void setEnd(RecurrenceRule *rule, Form form) const;
    void writeDates(QDate today);
    void addDate(QDate day);
    void addException(QDate day);
    VelDateTime onDay(QDate day) const { return {day, m_entry.getStart().time()}; }

    const VelEntry &m_entry;
    const VelRecurrenceRule &m_rule;
    const VelSeries m_series;
    Recurrence *const m_recurrence;
};

void RuleWriter::write(QDate today)
{
    if (m_series.count() == 0)
        return;
    if (m_series.follows(Form::Plain))
        writeRule(Form::Plain);
    else if (m_series.follows(Form::Clipped))
        writeRule(Form::Clipped);
    else
        writeDates(today);
}

void RuleWriter::writeRule(Form form)
{
    auto *rule = new RecurrenceRule; // the recurrence takes it over
    rule->setStartDt(m_entry.getStart().toQDateTime());
    rule->setAllDay(m_entry.notime);
    rule->setFrequency(m_rule.occurevery);
    setPattern(rule, form);
    setEnd(rule, form);
    m_recurrence->addRRule(rule);
    for (const QDate day : m_series.skipped(form))
        addException(day);
    if (!m_series.hasStart(form))
        addDate(m_entry.getStart().date());
}

void RuleWriter::setPattern(RecurrenceRule *rule, Form form) const
{
    switch (m_rule.recurringtype) {
    case VelRecurrenceRule::Weekly: {
        QList<RecurrenceRule::WDayPos> days;
        for (const int day : m_rule.occurdays)
            days.append(RecurrenceRule::WDayPos(0, static_cast<short>(day)));
        rule->setRecurrenceType(RecurrenceRule::rWeekly);
        rule->setByDays(days);
        break;
    }
    case VelRecurrenceRule::Monthly:
        rule->setRecurrenceType(RecurrenceRule::rMonthly);
        setMonthly(rule, form);
        break;
    case VelRecurrenceRule::Yearly:
        rule->setRecurrenceType(RecurrenceRule::rYearly);
        if (form == Form::Clipped) {
            rule->setByMonths({2});
            rule->setByMonthDays({28});
        }
        break;
    default:
        rule->setRecurrenceType(RecurrenceRule::rDaily);
    }
}

void RuleWriter::setMonthly(RecurrenceRule *rule, Form form) const
{
    const int day = m_rule.occurdays.first();
    if (m_rule.occurdaynumber != 0) {
        const bool isLast = m_rule.occurdaynumber < 0 || m_rule.occurdaynumber > 4;
        const int position = isLast ? LastWeek : m_rule.occurdaynumber;
        rule->setByDays({RecurrenceRule::WDayPos(position, static_cast<short>(day))});
    } else if (form == Form::Plain) {
        rule->setByMonthDays({day});
    } else if (day == 31) {
        rule->setByMonthDays({-1});
    } else {
        QList<int> days; // the last of them that the month has
        for (int candidate = 28; candidate <= day; ++candidate)
            days.append(candidate);
        rule->setByMonthDays(days);
        rule->setBySetPos({-1});
    }
}

/**
 * A count also counts the days that only the RFC 5545 rule has. Programs disagree on whether it counts a start that is no
 * day of the rule, so then the last day is said instead.
 */
void RuleWriter::setEnd(RecurrenceRule *rule, Form form) const
{
    const QTime endOfDay(23, 59, 59);
    const bool hasDate = VelDateTime::isSupported(m_rule.occurenddate);
    if (m_rule.occurendcount <= 0 && !hasDate) {
        rule->setDuration(-1);
    } else if (!hasDate && m_series.hasStart(form)) {
        rule->setDuration(m_rule.occurendcount + static_cast<int>(m_series.skipped(form).size()));
    } else {
        const bool isCounted = m_rule.occurendcount > 0;
        const QDate last = isCounted ? m_series.day(m_series.count()) : m_rule.occurenddate.addDays(-1);
        rule->setEndDt(VelDateTime(last, endOfDay).toQDateTime());
    }
}

void RuleWriter::writeDates(QDate today)
{
    const QDate start = m_entry.getStart().date();
    const QDate last = std::max(today, start).addDays(VelICalendarRule::OpenDays);
    addDate(start);
    for (quint32 number = 1; number <= std::min(m_series.count(), VelICalendarRule::MaximumDates); ++number) {
        const QDate day = m_series.day(number);
        if (m_series.isOpen() && day > last)
            break;
        addDate(day);
    }
}

void RuleWriter::addDate(QDate day)
{
    if (m_entry.notime)
        m_recurrence->addRDate(day);
    else
        m_recurrence->addRDateTime(onDay(day).toQDateTime());
}

void RuleWriter::addException(QDate day)
{
    if (m_entry.notime)
        m_recurrence->addExDate(day);
    else
        m_recurrence->addExDateTime(onDay(day).toQDateTime());
}

// --- theirs to ours

struct Candidate {
    VelRecurrenceRule rule;
    Form form = Form::Plain;
};

class RuleReader
{
public:
    RuleReader(const Recurrence &recurrence, const VelICalendarRule::Place &place)
        : m_recurrence(recurrence)
        , m_place(place)
        , m_start(place.start.date())
    {
    }

    VelICalendarRule::Reading read() const;

private:
    std::optional<Candidate> toCandidate(const RecurrenceRule &rule) const;
    std::optional<Candidate> toDaily(const RecurrenceRule &rule) const;
    std::optional<Candidate> toWeekly(const RecurrenceRule &rule) const;
    std::optional<Candidate> toMonthly(const RecurrenceRule &rule) const;
    std::optional<Candidate> toMonthWeekday(const RecurrenceRule &rule) const;
    std::optional<Candidate> toYearly(const RecurrenceRule &rule) const;
    QVector<int> weekdays(const RecurrenceRule &rule) const;
    void setEnd(VelRecurrenceRule &ours, const RecurrenceRule &theirs) const;
    QDate firstDayAfter(const RecurrenceRule &rule) const;
    bool onlyStartIn(const QVector<QDate> &days) const;
    QVector<QDate> addedDays() const;
    QVector<QDate> removedDays() const;
    QVector<QDate> toDays(const QList<QDateTime> &times, const KCalendarCore::DateList &dates) const;

    const Recurrence &m_recurrence;
    const VelICalendarRule::Place &m_place;
    const QDate m_start;
};

VelICalendarRule::Reading RuleReader::read() const
{
    const VelICalendarRule::Reading dropped{{}, {}, false};
    const RecurrenceRule::List rules = m_recurrence.rRules();
    const QVector<QDate> added = addedDays();
    const QVector<QDate> removed = removedDays();
    if (rules.isEmpty() && m_recurrence.exRules().isEmpty())
        return {{}, {}, onlyStartIn(added)};
    if (rules.size() != 1 || !m_recurrence.exRules().isEmpty())
        return dropped;
    std::optional<Candidate> candidate = toCandidate(*rules.first());
    if (!candidate)
        return dropped;

    setEnd(candidate->rule, *rules.first());
    VelSeries::Adopted adopted = VelSeries::adopted(candidate->rule, m_start, candidate->form);
    const VelSeries series(adopted.rule, m_start);
    const bool isCancelled = std::any_of(removed.begin(), removed.end(),
                                         [&](QDate day) { return day == m_start || series.contains(day); });
    const bool isExtended = std::any_of(added.begin(), added.end(), [&](QDate day) {
        return day != m_start && !series.contains(day) && !adopted.days.contains(day);
    });
    if (isCancelled || isExtended || !series.follows(candidate->form))
        return dropped;
    for (const QDate day : removed)
        adopted.days.removeAll(day);
    return {series.count() > 0 ? adopted.rule : VelRecurrenceRule(), adopted.days, true};
}

std::optional<Candidate> RuleReader::toCandidate(const RecurrenceRule &rule) const
{
    const bool hasHours =
        !rule.byHours().isEmpty() || !rule.byMinutes().isEmpty() || !rule.bySeconds().isEmpty();
    const bool isOdd = hasHours || !rule.byYearDays().isEmpty() || !rule.byWeekNumbers().isEmpty();
    if (isOdd || rule.frequency() < 1 || rule.frequency() > MaximumInterval)
        return {};
    switch (rule.recurrenceType()) {
    case RecurrenceRule::rDaily:
        return toDaily(rule);
    case RecurrenceRule::rWeekly:
        return toWeekly(rule);
    case RecurrenceRule::rMonthly:
        return m_place.dayShift == 0 && rule.byMonths().isEmpty() ? toMonthly(rule) : std::nullopt;
    case RecurrenceRule::rYearly:
        return toYearly(rule);
    default:
        return {};
    }
}

VelRecurrenceRule simpleRule(int type, const RecurrenceRule &rule)
{
    VelRecurrenceRule result;
    result.recurringtype = type;
    result.occurevery = static_cast<int>(rule.frequency());
    return result;
}

std::optional<Candidate> RuleReader::toDaily(const RecurrenceRule &rule) const
{
    if (!rule.byMonths().isEmpty() || !rule.byMonthDays().isEmpty() || !rule.bySetPos().isEmpty())
        return {};
    if (rule.byDays().isEmpty())
        return Candidate{simpleRule(VelRecurrenceRule::Daily, rule)};
    return rule.frequency() == 1 ? toWeekly(rule) : std::nullopt;
}

/** Empty when a weekday has a position. */
QVector<int> RuleReader::weekdays(const RecurrenceRule &rule) const
{
    QVector<int> days;
    for (const RecurrenceRule::WDayPos &day : rule.byDays()) {
        if (day.pos() != 0)
            return {};
        const int shifted = (day.day() - 1 + m_place.dayShift % 7 + 7) % 7 + 1;
        if (!days.contains(shifted))
            days.append(shifted);
    }
    if (rule.byDays().isEmpty())
        days.append(m_start.dayOfWeek());
    std::sort(days.begin(), days.end());
    return days;
}

std::optional<Candidate> RuleReader::toWeekly(const RecurrenceRule &rule) const
{
    Candidate candidate{simpleRule(VelRecurrenceRule::Weekly, rule)};
    const QVector<int> days = weekdays(rule);
    if (days.isEmpty() || !rule.byMonths().isEmpty() || !rule.byMonthDays().isEmpty()
        || !rule.bySetPos().isEmpty())
        return {};
    // Our weeks begin on Monday. Where weeks are left out, it matters where theirs begin.
    const bool isOneDay = days.size() == 1 && days.first() == m_start.dayOfWeek();
    const bool hasSunday = days.contains(Qt::Sunday) || m_start.dayOfWeek() == Qt::Sunday;
    const bool isSameWeek = rule.weekStart() == Qt::Monday || (rule.weekStart() == Qt::Sunday && !hasSunday);
    if (rule.frequency() > 1 && !isOneDay && (!isSameWeek || m_place.dayShift != 0))
        return {};
    candidate.rule.occurdays = days;
    return candidate;
}

std::optional<Candidate> RuleReader::toMonthly(const RecurrenceRule &rule) const
{
    Candidate candidate{simpleRule(VelRecurrenceRule::Monthly, rule)};
    if (!rule.byDays().isEmpty())
        return rule.byMonthDays().isEmpty() ? toMonthWeekday(rule) : std::nullopt;
    const QList<int> &days = rule.byMonthDays();
    if (rule.bySetPos() == QList<int>{-1} && days.size() > 1) {
        for (int i = 0; i < static_cast<int>(days.size()); ++i) {
            if (days.at(i) != 28 + i)
                return {};
        }
        candidate.form = Form::Clipped;
        candidate.rule.occurdays = {days.last()};
        return candidate;
    }
    if (!rule.bySetPos().isEmpty() || days.size() > 1)
        return {};
    const int day = days.isEmpty() ? m_start.day() : days.first();
    if (day < 1 && day != -1)
        return {};
    candidate.form = day == -1 ? Form::Clipped : Form::Plain;
    candidate.rule.occurdays = {day == -1 ? 31 : day};
    return candidate;
}

/** The position stands with the weekday, or on its own as BYSETPOS. */
std::optional<Candidate> RuleReader::toMonthWeekday(const RecurrenceRule &rule) const
{
    if (rule.byDays().size() != 1 || rule.bySetPos().size() > 1)
        return {};
    const RecurrenceRule::WDayPos day = rule.byDays().first();
    const bool hasOwnPosition = day.pos() != 0;
    if (hasOwnPosition != rule.bySetPos().isEmpty())
        return {};
    const int position = hasOwnPosition ? day.pos() : rule.bySetPos().first();
    if (position < LastWeek || position > 4)
        return {};
    Candidate candidate{simpleRule(VelRecurrenceRule::Monthly, rule)};
    candidate.rule.occurdays = {day.day()};
    candidate.rule.occurdaynumber = position;
    return candidate;
}

std::optional<Candidate> RuleReader::toYearly(const RecurrenceRule &rule) const
{
    Candidate candidate{simpleRule(VelRecurrenceRule::Yearly, rule)};
    const bool isPlain = rule.byMonths().isEmpty() && rule.byMonthDays().isEmpty();
    const bool isInMonth = rule.byMonths() == QList<int>{m_start.month()};
    if (!rule.byDays().isEmpty()) {
        std::optional<Candidate> monthly =
            isInMonth && m_place.dayShift == 0 ? toMonthly(rule) : std::nullopt;
        if (monthly)
            monthly->rule.occurevery *= 12;
        return monthly;
    }
    if (!rule.bySetPos().isEmpty())
        return {};
    if (isPlain
        || (m_place.dayShift == 0 && isInMonth
            && (rule.byMonthDays().isEmpty() || rule.byMonthDays() == QList<int>{m_start.day()})))
        return candidate;
    const bool isLeapDay = m_start.month() == 2 && m_start.day() == 29;
    if (!isLeapDay || m_place.dayShift != 0 || !isInMonth || rule.byMonthDays() != QList<int>{28})
        return {};
    candidate.form = Form::Clipped;
    return candidate;
}

void RuleReader::setEnd(VelRecurrenceRule &ours, const RecurrenceRule &theirs) const
{
    if (theirs.duration() > 0)
        ours.occurendcount = theirs.duration();
    else if (theirs.duration() == 0)
        ours.occurenddate = firstDayAfter(theirs);
}

/** The end as the text has it: the toolkit's time is one of the system's zone, whatever the text means. */
QDate RuleReader::firstDayAfter(const RecurrenceRule &rule) const
{
    const QByteArray text = rule.rrule().toLatin1();
    const QByteArray key = "UNTIL=";
    const int begin = static_cast<int>(text.indexOf(key));
    VelDateTime until = VelICalendarIncidence::toWallClock(rule.endDt(), m_place.zone);
    bool isDate = m_recurrence.allDay();
    if (begin >= 0) {
        const QByteArray value = text.mid(begin + key.size()).split(';').first();
        isDate = value.size() == 8;
        until = VelVCalendar::fromISO8601((isDate ? value + QByteArray("T000000") : value).toStdString(),
                                          m_place.zone);
    }
    if (isDate)
        return until.date().addDays(m_place.dayShift + 1);
    return until.time() >= m_place.start.time() ? until.date().addDays(1) : until.date();
}

bool RuleReader::onlyStartIn(const QVector<QDate> &days) const
{
    return std::all_of(days.begin(), days.end(), [this](QDate day) { return day == m_start; });
}

QVector<QDate> RuleReader::addedDays() const
{
    return toDays(m_recurrence.rDateTimes(), m_recurrence.rDates());
}

QVector<QDate> RuleReader::removedDays() const
{
    return toDays(m_recurrence.exDateTimes(), m_recurrence.exDates()) + m_place.replacedDays;
}

QVector<QDate> RuleReader::toDays(const QList<QDateTime> &times, const KCalendarCore::DateList &dates) const
{
    QVector<QDate> days;
    for (const QDateTime &time : times)
        days.append(VelICalendarIncidence::toWallClock(time, m_place.zone).date());
    for (const QDate date : dates)
        days.append(date.addDays(m_place.dayShift));
    return days;
}
} // namespace

namespace VelICalendarRule
{
void write(const VelEntry &entry, QDate today, KCalendarCore::Incidence &incidence)
{
    RuleWriter(entry, incidence.recurrence()).write(today);
}

Reading read(const KCalendarCore::Incidence &incidence, const Place &place)
{
    const Recurrence *recurrence = incidence.recurrence(); // made when first asked for, never null
    return RuleReader(*recurrence, place).read();
}
} // namespace VelICalendarRule
